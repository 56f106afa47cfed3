#include "pipeline/shrink_optimise.h"

#include <QElapsedTimer>
#include <algorithm>
#include <bit>
#include <queue>
#include <random>
#include <unordered_set>

namespace dovrex {

namespace {

// Two tickets share at least t balls exactly when they share a t-subset of their balls. Every
// ticket is filed under each of its t-subsets, so a ticket's neighbours (itself included) are the
// members of its groups: no pair of tickets is ever compared blindly.
class NeighbourIndex {
  public:
    NeighbourIndex(const std::vector<std::uint64_t>& masks, int t) : stamp_(masks.size(), 0) {
        const int n = int(masks.size());
        std::vector<std::pair<std::uint64_t, int>> filed;
        std::vector<int> balls;
        for (int i = 0; i < n; ++i) {
            balls.clear();
            for (std::uint64_t m = masks[size_t(i)]; m; m &= m - 1) balls.push_back(std::countr_zero(m));
            const int k = int(balls.size());
            if (t < 1 || k < t) continue;
            // Every t of the k balls, as a bit pattern over their positions.
            for (std::uint32_t pick = (1u << t) - 1; pick < (1u << k);) {
                std::uint64_t key = 0;
                for (int b = 0; b < k; ++b)
                    if (pick & (1u << b)) key |= std::uint64_t(1) << balls[size_t(b)];
                filed.emplace_back(key, i);
                const std::uint32_t low = pick & -pick, ripple = pick + low;
                pick = ripple | (((ripple ^ pick) >> 2) / low);
            }
        }
        std::sort(filed.begin(), filed.end());
        std::vector<std::vector<int>> groupsOf(static_cast<size_t>(n));
        for (size_t i = 0; i < filed.size();) {
            const int group = int(groupStart_.size());
            groupStart_.push_back(int(members_.size()));
            size_t j = i;
            for (; j < filed.size() && filed[j].first == filed[i].first; ++j) {
                members_.push_back(filed[j].second);
                groupsOf[size_t(filed[j].second)].push_back(group);
            }
            i = j;
        }
        groupStart_.push_back(int(members_.size()));
        for (int i = 0; i < n; ++i) {
            ticketStart_.push_back(int(ticketGroups_.size()));
            ticketGroups_.insert(ticketGroups_.end(), groupsOf[size_t(i)].begin(), groupsOf[size_t(i)].end());
        }
        ticketStart_.push_back(int(ticketGroups_.size()));
    }

    bool hasGroups(int i) const { return ticketStart_[size_t(i) + 1] > ticketStart_[size_t(i)]; }

    // The sum of the sizes of a ticket's groups: at least the number of its neighbours.
    int bound(int i) const {
        int sum = 0;
        for (int g = ticketStart_[size_t(i)]; g < ticketStart_[size_t(i) + 1]; ++g) {
            const int group = ticketGroups_[size_t(g)];
            sum += groupStart_[size_t(group) + 1] - groupStart_[size_t(group)];
        }
        return sum;
    }

    // Calls f once for each neighbour of ticket i. Not re-entrant: f must not enumerate.
    template <class F>
    void forNeighbours(int i, F&& f) {
        if (++now_ == 0) {
            std::fill(stamp_.begin(), stamp_.end(), 0);
            now_ = 1;
        }
        for (int g = ticketStart_[size_t(i)]; g < ticketStart_[size_t(i) + 1]; ++g) {
            const int group = ticketGroups_[size_t(g)];
            for (int m = groupStart_[size_t(group)]; m < groupStart_[size_t(group) + 1]; ++m) {
                const int j = members_[size_t(m)];
                if (stamp_[size_t(j)] == now_) continue;
                stamp_[size_t(j)] = now_;
                f(j);
            }
        }
    }

  private:
    std::vector<int> groupStart_, members_;        // group -> its tickets
    std::vector<int> ticketStart_, ticketGroups_;  // ticket -> its groups
    std::vector<std::uint32_t> stamp_;
    std::uint32_t now_ = 0;
};

// The kept set with, for every ticket, how many kept tickets cover it and the sum of their
// indices: where one ticket covers it, that sum names it without a search.
class Cover {
  public:
    Cover(const CoverProblem& p, NeighbourIndex& index)
        : p_(p),
          index_(index),
          n_(int(p.masks->size())),
          kept_(size_t(n_), 0),
          at_(size_t(n_), -1),
          count_(size_t(n_), 0),
          sum_(size_t(n_), 0),
          sole_(size_t(n_), 0) {
        for (int i = 0; i < n_; ++i) uncovered_ += p.mustCover[size_t(i)];
    }

    int size() const { return int(list_.size()); }
    int uncovered() const { return uncovered_; }
    bool kept(int i) const { return kept_[size_t(i)] != 0; }
    const std::vector<int>& list() const { return list_; }
    bool covered(int u) const { return count_[size_t(u)] > 0; }
    // Tickets the kept ticket k alone covers.
    int sole(int k) const { return sole_[size_t(k)]; }

    void add(int c) {
        kept_[size_t(c)] = 1;
        at_[size_t(c)] = int(list_.size());
        list_.push_back(c);
        index_.forNeighbours(c, [&](int u) {
            const int before = count_[size_t(u)]++;
            sum_[size_t(u)] += c;
            if (!p_.mustCover[size_t(u)]) return;
            if (before == 0) {
                --uncovered_;
                ++sole_[size_t(c)];
            } else if (before == 1) {
                const long long other = sum_[size_t(u)] - c;
                --sole_[size_t(other)];
            }
        });
    }

    // Removes k; the tickets it leaves uncovered are appended to `lost`.
    void remove(int k, std::vector<int>& lost) {
        kept_[size_t(k)] = 0;
        const int pos = at_[size_t(k)];
        list_[size_t(pos)] = list_.back();
        at_[size_t(list_.back())] = pos;
        list_.pop_back();
        at_[size_t(k)] = -1;
        sole_[size_t(k)] = 0;
        index_.forNeighbours(k, [&](int u) {
            const int after = --count_[size_t(u)];
            sum_[size_t(u)] -= k;
            if (!p_.mustCover[size_t(u)]) return;
            if (after == 0) {
                ++uncovered_;
                lost.push_back(u);
            } else if (after == 1) {
                ++sole_[size_t(sum_[size_t(u)])];
            }
        });
    }

  private:
    const CoverProblem& p_;
    NeighbourIndex& index_;
    int n_;
    std::vector<char> kept_;
    std::vector<int> at_;
    std::vector<int> list_;
    std::vector<int> count_;
    std::vector<long long> sum_;
    std::vector<int> sole_;
    int uncovered_ = 0;
};

bool isFixed(const CoverProblem& p, int i) {
    return std::binary_search(p.fixed.begin(), p.fixed.end(), i);
}

// Lazy greedy: a candidate's stale count only falls, so the top one whose fresh count still beats
// every stale one is the best. Ties go to the earlier ticket in scan order. False when out of time.
bool greedyCover(const CoverProblem& p, NeighbourIndex& index, Cover& cover,
                 const std::function<bool()>& late) {
    using Entry = std::pair<int, int>;  // count, -ticket
    std::priority_queue<Entry> queue;
    const int n = int(p.masks->size());
    for (int i = 0; i < n; ++i)
        if (p.mayKeep[size_t(i)] && !cover.kept(i)) queue.emplace(index.bound(i), -i);
    int checks = 0;
    while (cover.uncovered() > 0 && !queue.empty()) {
        const int c = -queue.top().second;
        queue.pop();
        int gain = 0;
        index.forNeighbours(c, [&](int u) { gain += p.mustCover[size_t(u)] && !cover.covered(u); });
        if (gain == 0) continue;
        if (queue.empty() || Entry(gain, -c) >= queue.top())
            cover.add(c);
        else
            queue.emplace(gain, -c);
        if (++checks % 256 == 0 && late()) return false;
    }
    return cover.uncovered() == 0;
}

}  // namespace

std::vector<int> optimise_SuoShui(const CoverProblem& p, const std::vector<int>& start, int budgetMs,
                                  const std::function<bool(const CoverProgress&)>& stopped) {
    QElapsedTimer clock;
    clock.start();
    std::vector<int> best = start;
    std::sort(best.begin(), best.end());
    const int n = int(p.masks->size());
    if (n == 0 || p.t < 1) return best;
    NeighbourIndex index(*p.masks, p.t);
    CoverProblem problem = p;
    std::sort(problem.fixed.begin(), problem.fixed.end());
    // A ticket that no other can cover (fewer balls than t) covers itself.
    for (int i = 0; i < n; ++i)
        if (problem.mustCover[size_t(i)] && !index.hasGroups(i)) problem.fixed.push_back(i);
    std::sort(problem.fixed.begin(), problem.fixed.end());
    problem.fixed.erase(std::unique(problem.fixed.begin(), problem.fixed.end()), problem.fixed.end());

    // The greedy cover may use most of the budget; the local search has the rest, and starts from
    // the plain scan's set when the greedy ran out of time.
    bool halted = false;
    qint64 deadline = budgetMs * 3 / 5;
    const auto late = [&] {
        if (halted) return true;
        const CoverProgress progress{int(best.size()), int(clock.elapsed())};
        if (stopped && stopped(progress)) halted = true;
        return halted || clock.elapsed() >= deadline;
    };

    {
        Cover greedy(problem, index);
        for (int f : problem.fixed) greedy.add(f);
        if (greedyCover(problem, index, greedy, late) && greedy.size() < int(best.size())) {
            best = greedy.list();
            std::sort(best.begin(), best.end());
        }
    }
    if (halted) return best;
    deadline = budgetMs;
    // The search starts from the better of the two; the fixed tickets are in either.
    Cover cover(problem, index);
    for (int i : best) cover.add(i);
    for (int f : problem.fixed)
        if (!cover.kept(f)) cover.add(f);
    if (cover.uncovered() > 0) return best;  // the start was no cover: nothing to improve on

    // Local search: take out a kept ticket; if one candidate covers everything it alone covered,
    // put that one in its place (a sideways step), and drop every kept ticket left covering
    // nothing alone (a step down). Otherwise put the ticket back.
    std::mt19937 random(20261124);
    std::vector<int> lost, count(size_t(n), 0), touched;
    std::vector<int> movable;
    while (!late()) {
        movable.clear();
        for (int k : cover.list())
            if (!isFixed(problem, k)) movable.push_back(k);
        if (movable.empty()) break;
        for (int round = 0; round < 64; ++round) {
            if (movable.empty()) break;
            const size_t pick = random() % movable.size();
            const int k = movable[pick];
            if (!cover.kept(k)) continue;
            lost.clear();
            cover.remove(k, lost);
            if (!lost.empty()) {
                // Candidates covering every lost ticket, counted from the lost tickets' side.
                touched.clear();
                for (int u : lost)
                    index.forNeighbours(u, [&](int c) {
                        if (!problem.mayKeep[size_t(c)] || c == k) return;
                        if (count[size_t(c)]++ == 0) touched.push_back(c);
                    });
                // The earliest full candidate in scan order half the time, so the weights steer the
                // walk, and a random one otherwise, so that it does not circle.
                const bool earliest = random() % 2 == 0;
                int chosen = -1, seen = 0;
                const int need = int(lost.size());
                for (int c : touched) {
                    if (count[size_t(c)] != need) continue;
                    ++seen;
                    if (earliest ? (chosen < 0 || c < chosen) : random() % unsigned(seen) == 0) chosen = c;
                }
                for (int c : touched) count[size_t(c)] = 0;
                cover.add(chosen >= 0 ? chosen : k);
                if (chosen >= 0) movable[pick] = chosen;
            }
            // Whatever covers nothing alone now goes.
            for (size_t i = 0; i < movable.size();) {
                const int m = movable[i];
                if (cover.kept(m) && cover.sole(m) == 0) {
                    lost.clear();
                    cover.remove(m, lost);
                    movable[i] = movable.back();
                    movable.pop_back();
                } else {
                    ++i;
                }
            }
        }
        if (cover.uncovered() == 0 && cover.size() < int(best.size())) {
            best = cover.list();
            std::sort(best.begin(), best.end());
        }
    }
    return best;
}

std::vector<int> uncovered_Tickets(const std::vector<std::uint64_t>& original,
                                   const std::vector<std::uint64_t>& kept, int t) {
    std::vector<int> out;
    for (int i = 0; i < int(original.size()); ++i) {
        const std::uint64_t m = original[size_t(i)];
        bool met = false;
        for (std::uint64_t k : kept)
            if (std::popcount(m & k) >= t) {
                met = true;
                break;
            }
        if (!met) out.push_back(i);
    }
    return out;
}

namespace {

// Calls f with every k-ball subset of a mask (as a mask).
template <class F>
void forEachSubset(std::uint64_t mask, int k, F&& f) {
    int balls[64];
    int n = 0;
    for (std::uint64_t m = mask; m; m &= m - 1) balls[n++] = std::countr_zero(m);
    if (k < 1 || k > n) return;
    for (std::uint32_t pick = (1u << k) - 1; pick < (1u << n);) {
        std::uint64_t sub = 0;
        for (int b = 0; b < n; ++b)
            if (pick & (1u << b)) sub |= std::uint64_t(1) << balls[b];
        f(sub);
        const std::uint32_t low = pick & -pick, ripple = pick + low;
        pick = ripple | (((ripple ^ pick) >> 2) / low);
    }
}

}  // namespace

CoverageReport coverage_Report(const std::vector<std::uint64_t>& original,
                               const std::vector<std::uint64_t>& kept, int lowest) {
    CoverageReport r;
    r.original = int(original.size());
    r.kept = int(kept.size());
    lowest = std::clamp(lowest, 1, 4);
    // A ticket meets a kept one in k balls exactly when they share a k-subset: the subsets of the
    // kept tickets are looked up instead of comparing every pair.
    std::vector<std::unordered_set<std::uint64_t>> subsets(8);
    for (int k = lowest; k <= 7; ++k) {
        subsets[size_t(k)].reserve(kept.size() * 35);
        for (std::uint64_t m : kept)
            forEachSubset(m, k, [&](std::uint64_t sub) { subsets[size_t(k)].insert(sub); });
    }
    for (std::uint64_t m : original) {
        int best = 0;
        for (int k = std::min(7, std::popcount(m)); k >= lowest && best == 0; --k) {
            bool met = false;
            forEachSubset(m, k, [&](std::uint64_t sub) { met = met || subsets[size_t(k)].count(sub) > 0; });
            if (met) best = k;
        }
        ++r.best[best];
    }
    return r;
}

QString coverage_Line(const CoverageReport& r) {
    QString line = QStringLiteral("若开奖号码在过滤后的 %1 注之中:").arg(r.original);
    for (int k = 7; k >= 4; --k) {
        const double percent = r.original > 0 ? 100.0 * r.best[k] / r.original : 0.0;
        line += QStringLiteral(" 中%1球 %2 注 (%3%)").arg(k).arg(r.best[k]).arg(percent, 0, 'f', 1);
        if (k > 4) line += QLatin1Char(',');
    }
    return line;
}

}  // namespace dovrex
