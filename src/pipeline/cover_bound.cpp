#include "pipeline/cover_bound.h"

#include <QElapsedTimer>
#include <bit>
#include <cmath>
#include <cstdint>
#include <utility>

namespace dovrex {

namespace {

// The tickets every cover keeps (the fixed ones, and those owed the guarantee that no ticket can
// cover, not even themselves), and which tickets owed the guarantee they leave to cover.
struct Residue {
    std::vector<int> fixed;
    std::vector<char> open;  // owed the guarantee and not covered by a fixed ticket
    std::vector<int> openList;
    std::vector<char> candidate;  // may be kept and not fixed
};

Residue residueOf(const CoverProblem& p, NeighbourIndex& index) {
    const int n = int(p.masks->size());
    Residue r;
    r.fixed = p.fixed;
    for (int i = 0; i < n; ++i)
        if (p.mustCover[size_t(i)] && !index.hasGroups(i)) r.fixed.push_back(i);
    std::sort(r.fixed.begin(), r.fixed.end());
    r.fixed.erase(std::unique(r.fixed.begin(), r.fixed.end()), r.fixed.end());
    r.open.assign(size_t(n), 0);
    for (int i = 0; i < n; ++i) r.open[size_t(i)] = p.mustCover[size_t(i)];
    r.candidate = p.mayKeep;
    r.candidate.resize(size_t(n), 0);
    for (int f : r.fixed) {
        r.candidate[size_t(f)] = 0;
        r.open[size_t(f)] = 0;
        index.forNeighbours(f, [&](int u) { r.open[size_t(u)] = 0; });
    }
    for (int i = 0; i < n; ++i)
        if (r.open[size_t(i)]) r.openList.push_back(i);
    // Tickets with few neighbours first: they are the hard ones, and the packing takes them early.
    std::stable_sort(r.openList.begin(), r.openList.end(),
                     [&](int a, int b) { return index.bound(a) < index.bound(b); });
    return r;
}

// Polls `late` every so many steps, and remembers that it said yes.
struct Clock {
    const std::function<bool()>& late;
    int steps = 0;
    bool out = false;
    bool tick() {
        if (!out && late && ++steps % 64 == 0) out = late();
        return out;
    }
};

// Counts of open tickets by the subsets of balls they hold, in an open-addressed table (subsets
// are never empty, so 0 marks a free slot).
class SubsetCounts {
  public:
    explicit SubsetCounts(size_t entries) {
        size_t size = 16;
        while (size < 2 * entries) size *= 2;
        keys_.assign(size, 0);
        counts_.assign(size, 0);
    }
    void add(std::uint64_t key) { ++counts_[slot(key)]; }
    int count(std::uint64_t key) const {
        const size_t at = slot(key);
        return keys_[at] == key ? counts_[at] : 0;
    }

  private:
    size_t slot(std::uint64_t key) const {
        size_t at = size_t((key * 0x9E3779B97F4A7C15ull) >> 20) & (keys_.size() - 1);
        while (keys_[at] != 0 && keys_[at] != key) at = (at + 1) & (keys_.size() - 1);
        return at;
    }
    size_t slot(std::uint64_t key) {
        size_t at = std::as_const(*this).slot(key);
        keys_[at] = key;
        return at;
    }
    std::vector<std::uint64_t> keys_;
    std::vector<int> counts_;
};

// Calls f with every subset of `mask` of j balls, j from `lowest` up.
template <class F>
void forSubsets(std::uint64_t mask, int lowest, F&& f) {
    int balls[64], n = 0;
    for (std::uint64_t m = mask; m; m &= m - 1) balls[n++] = std::countr_zero(m);
    for (std::uint32_t pick = 1; pick < (1u << n); ++pick) {
        const int j = std::popcount(pick);
        if (j < lowest) continue;
        std::uint64_t sub = 0;
        for (int b = 0; b < n; ++b)
            if (pick >> b & 1) sub |= std::uint64_t(1) << balls[b];
        f(sub, j);
    }
}

// How many open tickets each candidate covers, without visiting its neighbours: with a_j the sum,
// over the candidate's subsets S of j balls, of the open tickets holding S, a_j = sum over k of
// C(k, j) e_k, where e_k counts the open tickets meeting it in exactly k balls; solved from the top.
std::vector<int> coverCounts(const CoverProblem& p, const Residue& r) {
    const int n = int(p.masks->size()), t = std::max(1, p.t);
    size_t entries = 0;
    for (int u : r.openList) entries += size_t(1) << std::popcount((*p.masks)[size_t(u)]);
    SubsetCounts counts(entries);
    for (int u : r.openList)
        forSubsets((*p.masks)[size_t(u)], t, [&](std::uint64_t s, int) { counts.add(s); });
    std::vector<int> degree(size_t(n), 0);
    for (int c = 0; c < n; ++c) {
        if (!r.candidate[size_t(c)]) continue;
        long long a[65] = {};
        forSubsets((*p.masks)[size_t(c)], t, [&](std::uint64_t s, int j) { a[j] += counts.count(s); });
        long long e[65] = {}, covered = 0;
        const int top = std::popcount((*p.masks)[size_t(c)]);
        for (int k = top; k >= t; --k) {
            e[k] = a[k];
            long long choose = 1;  // C(k2, k) for k2 = k + 1, k + 2, ...
            for (int k2 = k + 1; k2 <= top; ++k2) {
                choose = choose * k2 / (k2 - k);
                e[k] -= choose * e[k2];
            }
            covered += e[k];
        }
        degree[size_t(c)] = int(covered);
    }
    return degree;
}

}  // namespace

CoverBound lowerBound_SuoShui(const CoverProblem& p, NeighbourIndex& index,
                              const std::function<bool()>& late) {
    CoverBound bound;
    const int n = int(p.masks->size());
    if (n == 0) return bound;
    const Residue r = residueOf(p, index);
    const int fixed = int(r.fixed.size());
    Clock clock{late};
    // No candidate covers more open tickets than the most any one covers.
    const std::vector<int> degree = coverCounts(p, r);
    const int most = std::max(1, *std::max_element(degree.begin(), degree.end()));
    bound.counting = fixed + (int(r.openList.size()) + most - 1) / most;

    // Packing: a ticket joins when none of its candidates serves one that joined before.
    std::vector<char> used(size_t(n), 0);
    int packed = 0;
    for (int u : r.openList) {
        if (clock.tick()) break;
        bool free = true;
        index.forNeighbours(u, [&](int c) { free = free && !(r.candidate[size_t(c)] && used[size_t(c)]); });
        if (!free) continue;
        ++packed;
        index.forNeighbours(u, [&](int c) {
            if (r.candidate[size_t(c)]) used[size_t(c)] = 1;
        });
    }
    bound.packing = fixed + packed;
    if (clock.out) {
        bound.complete = false;
        return bound;
    }

    // Dual of the relaxation: each open ticket starts at 1 over the largest load one of its
    // candidates carries (so no candidate exceeds 1), then each rises by the least slack left
    // among its candidates.
    std::vector<double> y(size_t(n), 0.0), load(size_t(n), 0.0);
    for (int u : r.openList) {
        if (clock.tick()) break;
        int largest = 0;
        index.forNeighbours(u, [&](int c) {
            if (r.candidate[size_t(c)]) largest = std::max(largest, degree[size_t(c)]);
        });
        if (largest > 0) y[size_t(u)] = 1.0 / largest;
        index.forNeighbours(u, [&](int c) {
            if (r.candidate[size_t(c)]) load[size_t(c)] += y[size_t(u)];
        });
    }
    for (int u : r.openList) {
        if (clock.tick()) break;
        double slack = 1.0;
        index.forNeighbours(u, [&](int c) {
            if (r.candidate[size_t(c)]) slack = std::min(slack, 1.0 - load[size_t(c)]);
        });
        if (slack <= 0) continue;
        y[size_t(u)] += slack;
        index.forNeighbours(u, [&](int c) {
            if (r.candidate[size_t(c)]) load[size_t(c)] += slack;
        });
    }
    if (clock.out) {
        bound.complete = false;
        return bound;
    }
    // Rounding may leave a load a hair above 1: scaling by the largest load makes the dual feasible
    // whatever happened, and the margin keeps an exact integer sum from rounding up past itself.
    double sum = 0, heaviest = 1.0;
    for (int u : r.openList) sum += y[size_t(u)];
    for (int c = 0; c < n; ++c) heaviest = std::max(heaviest, load[size_t(c)]);
    bound.fractional = fixed + int(std::ceil(sum / heaviest - 1e-6));
    return bound;
}

CoverBound lowerBound_SuoShui(const CoverProblem& p, int budgetMs, const std::function<bool()>& stopped) {
    QElapsedTimer clock;
    clock.start();
    NeighbourIndex index(*p.masks, p.t);
    return lowerBound_SuoShui(p, index,
                              [&] { return clock.elapsed() >= budgetMs || (stopped && stopped()); });
}

bool exactFits(const CoverProblem& p) {
    int must = 0, may = 0;
    for (size_t i = 0; i < p.masks->size(); ++i) {
        must += p.mustCover[i] != 0;
        may += p.mayKeep[i] != 0;
    }
    return must <= kExactCoverLimit && may <= kExactCoverLimit;
}

namespace {

using Words = std::vector<std::uint64_t>;

bool test(const std::uint64_t* w, int i) {
    return (w[i >> 6] >> (i & 63)) & 1;
}
void set(std::uint64_t* w, int i) {
    w[i >> 6] |= std::uint64_t(1) << (i & 63);
}

// The covering as bit sets: open tickets 0..m-1 (the rows), candidates 0..k-1 (the columns).
class ExactSearch {
  public:
    ExactSearch(const Residue& r, NeighbourIndex& index, int n, const std::function<bool()>& late)
        : clock_{late} {
        std::vector<int> rowOf(size_t(n), -1);
        for (int u : r.openList) {
            rowOf[size_t(u)] = int(rows_.size());
            rows_.push_back(u);
        }
        m_ = int(rows_.size());
        mw_ = (m_ + 63) / 64;
        // Candidates in scan order, without those another covers a superset of (the earlier of two
        // equal ones stays): a dominated candidate never makes a cover smaller.
        std::vector<Words> covers;
        std::vector<int> cands;
        for (int c = 0; c < n; ++c) {
            if (!r.candidate[size_t(c)]) continue;
            Words w(size_t(mw_), 0);
            bool any = false;
            index.forNeighbours(c, [&](int u) {
                if (rowOf[size_t(u)] >= 0) set(w.data(), rowOf[size_t(u)]), any = true;
            });
            if (any) covers.push_back(std::move(w)), cands.push_back(c);
        }
        std::vector<char> dominated(cands.size(), 0);
        if (cands.size() <= 1200) {
            for (size_t a = 0; a < cands.size(); ++a)
                for (size_t b = 0; b < cands.size() && !dominated[a]; ++b) {
                    if (a == b || dominated[b]) continue;
                    bool subset = true, equal = true;
                    for (int k = 0; k < mw_ && subset; ++k) {
                        subset = (covers[a][size_t(k)] & ~covers[b][size_t(k)]) == 0;
                        equal = equal && covers[a][size_t(k)] == covers[b][size_t(k)];
                    }
                    if (subset && (!equal || b < a)) dominated[a] = 1;
                }
        }
        for (size_t a = 0; a < cands.size(); ++a)
            if (!dominated[a]) {
                cols_.push_back(cands[a]);
                cover_.insert(cover_.end(), covers[a].begin(), covers[a].end());
            }
        k_ = int(cols_.size());
        kw_ = (k_ + 63) / 64;
        candOf_.assign(size_t(m_) * size_t(kw_), 0);
        for (int c = 0; c < k_; ++c)
            for (int u = 0; u < m_; ++u)
                if (test(coverOf(c), u)) set(candOf_.data() + size_t(u) * size_t(kw_), c);
        largest_ = 1;
        for (int c = 0; c < k_; ++c) {
            int size = 0;
            for (int w = 0; w < mw_; ++w) size += std::popcount(coverOf(c)[w]);
            largest_ = std::max(largest_, size);
        }
    }

    // Smallest cover of the rows by columns, if one below `limit` columns exists; false when cut short.
    bool run(int limit) {
        best_ = limit;
        improved_ = false;
        found_.clear();
        chosen_.clear();
        covered_.assign(size_t(mw_) * size_t(m_ + 1), 0);
        forbidden_.assign(size_t(kw_), 0);
        used_.assign(size_t(kw_), 0);
        search(0);
        return !clock_.out;
    }
    bool improved() const { return improved_; }
    // The candidates of the best cover found below the limit.
    std::vector<int> found() const {
        std::vector<int> out;
        for (int c : found_) out.push_back(cols_[size_t(c)]);
        return out;
    }

  private:
    const std::uint64_t* coverOf(int c) const { return cover_.data() + size_t(c) * size_t(mw_); }
    const std::uint64_t* candOf(int u) const { return candOf_.data() + size_t(u) * size_t(kw_); }

    // Open rows no two of which share a column still allowed, plus the count bound.
    int lowerBound(const std::uint64_t* covered, int open) {
        std::fill(used_.begin(), used_.end(), 0);
        int packed = 0;
        for (int u = 0; u < m_; ++u) {
            if (test(covered, u)) continue;
            const std::uint64_t* a = candOf(u);
            bool free = true;
            for (int w = 0; w < kw_ && free; ++w)
                free = (a[w] & ~forbidden_[size_t(w)] & used_[size_t(w)]) == 0;
            if (!free) continue;
            ++packed;
            for (int w = 0; w < kw_; ++w) used_[size_t(w)] |= a[w] & ~forbidden_[size_t(w)];
        }
        return std::max(packed, (open + largest_ - 1) / largest_);
    }

    void search(int depth) {
        if (clock_.tick()) return;
        const std::uint64_t* covered = covered_.data() + size_t(depth) * size_t(mw_);
        int open = m_;
        for (int w = 0; w < mw_; ++w) open -= std::popcount(covered[w]);
        if (open == 0) {
            if (int(chosen_.size()) < best_) best_ = int(chosen_.size()), found_ = chosen_, improved_ = true;
            return;
        }
        if (int(chosen_.size()) + lowerBound(covered, open) >= best_) return;
        // Branch on the open row with the fewest columns left.
        int row = -1, fewest = k_ + 1;
        for (int u = 0; u < m_ && fewest > 1; ++u) {
            if (test(covered, u)) continue;
            int count = 0;
            for (int w = 0; w < kw_; ++w) count += std::popcount(candOf(u)[w] & ~forbidden_[size_t(w)]);
            if (count < fewest) fewest = count, row = u;
        }
        if (fewest == 0) return;
        std::vector<std::pair<int, int>> options;  // -gain, column
        for (int c = 0; c < k_; ++c) {
            if (!test(candOf(row), c) || test(forbidden_.data(), c)) continue;
            int gain = 0;
            for (int w = 0; w < mw_; ++w) gain += std::popcount(coverOf(c)[w] & ~covered[w]);
            options.emplace_back(-gain, c);
        }
        std::sort(options.begin(), options.end());
        std::uint64_t* next = covered_.data() + size_t(depth + 1) * size_t(mw_);
        // Once a column's branch is done, its siblings need not take it again.
        std::vector<int> barred;
        for (const auto& [negGain, c] : options) {
            for (int w = 0; w < mw_; ++w) next[w] = covered[w] | coverOf(c)[w];
            chosen_.push_back(c);
            search(depth + 1);
            chosen_.pop_back();
            if (clock_.out) break;
            set(forbidden_.data(), c);
            barred.push_back(c);
            if (int(chosen_.size()) + 1 >= best_) break;
        }
        for (int c : barred) forbidden_[size_t(c >> 6)] &= ~(std::uint64_t(1) << (c & 63));
    }

    Clock clock_;
    std::vector<int> rows_, cols_;
    int m_ = 0, mw_ = 0, k_ = 0, kw_ = 0, largest_ = 1;
    Words cover_, candOf_;
    Words covered_, forbidden_, used_;
    std::vector<int> chosen_, found_;
    int best_ = 0;
    bool improved_ = false;
};

}  // namespace

ExactCover exact_SuoShui(const CoverProblem& p, NeighbourIndex& index, const std::vector<int>& incumbent,
                         const std::function<bool()>& late) {
    ExactCover out;
    out.kept = incumbent;
    std::sort(out.kept.begin(), out.kept.end());
    const int n = int(p.masks->size());
    if (n == 0 || !exactFits(p)) return out;
    const Residue r = residueOf(p, index);
    ExactSearch search(r, index, n, late);
    // Look for a cover of fewer candidates than the incumbent holds beside the fixed tickets.
    const int limit = incumbent.empty() ? n + 1 : int(incumbent.size()) - int(r.fixed.size());
    out.proven = search.run(limit);
    if (search.improved()) {
        const std::vector<int> found = search.found();
        out.kept = r.fixed;
        out.kept.insert(out.kept.end(), found.begin(), found.end());
        std::sort(out.kept.begin(), out.kept.end());
    }
    return out;
}

}  // namespace dovrex
