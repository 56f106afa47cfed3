#include "pipeline/shrink_optimise.h"

#include "pipeline/cover_bound.h"

#include <QElapsedTimer>
#include <algorithm>
#include <bit>
#include <map>
#include <queue>
#include <random>
#include <unordered_set>

namespace dovrex {

namespace {

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

namespace {

// The part of a problem made of the tickets `members` (ascending), with its own masks.
struct Part {
    std::vector<int> members;
    std::vector<std::uint64_t> masks;
    CoverProblem problem;
};

Part partOf(const CoverProblem& p, std::vector<int> members) {
    Part part;
    part.members = std::move(members);
    std::vector<int> at(p.masks->size(), -1);
    for (size_t k = 0; k < part.members.size(); ++k) {
        const int i = part.members[k];
        at[size_t(i)] = int(k);
        part.masks.push_back((*p.masks)[size_t(i)]);
        part.problem.mustCover.push_back(p.mustCover[size_t(i)]);
        part.problem.mayKeep.push_back(p.mayKeep[size_t(i)]);
    }
    for (int f : p.fixed)
        if (at[size_t(f)] >= 0) part.problem.fixed.push_back(at[size_t(f)]);
    part.problem.t = p.t;
    part.problem.masks = &part.masks;
    return part;
}

// Tickets fall apart into parts no ticket links: two tickets sharing t balls are in one part, so a
// kept ticket only ever covers tickets of its own part and each part is a covering of its own.
std::vector<std::vector<int>> independentParts(int n, NeighbourIndex& index) {
    std::vector<int> root(static_cast<size_t>(n));
    for (int i = 0; i < n; ++i) root[size_t(i)] = i;
    const auto find = [&](int i) {
        while (root[size_t(i)] != i) i = root[size_t(i)] = root[size_t(root[size_t(i)])];
        return i;
    };
    index.forEachGroup([&](const int* first, const int* last) {
        for (const int* m = first + 1; m < last; ++m) root[size_t(find(*m))] = find(*first);
    });
    std::vector<std::vector<int>> parts;
    std::vector<int> partOfRoot(size_t(n), -1);
    for (int i = 0; i < n; ++i) {
        int& part = partOfRoot[size_t(find(i))];
        if (part < 0) part = int(parts.size()), parts.emplace_back();
        parts[size_t(part)].push_back(i);
    }
    return parts;
}

constexpr std::uint64_t kRedBits = (std::uint64_t(1) << 34) - 1;  // bits 1..33: the reds

// The tickets of each blue, grouped where the blues hold the same tickets (the same reds, in the
// same order, owed and allowed alike): such a group is covered once and the cover repeated.
std::vector<std::vector<std::vector<int>>> blueClasses(const CoverProblem& p) {
    std::map<std::uint64_t, std::vector<int>> byBlue;
    for (size_t i = 0; i < p.masks->size(); ++i) byBlue[(*p.masks)[i] & ~kRedBits].push_back(int(i));
    std::map<std::vector<std::uint64_t>, int> classOf;
    std::vector<std::vector<std::vector<int>>> classes;
    std::vector<char> fixed(p.masks->size(), 0);
    for (int f : p.fixed) fixed[size_t(f)] = 1;
    for (const auto& [blue, members] : byBlue) {
        std::vector<std::uint64_t> key;
        for (int i : members)
            key.push_back(
                ((*p.masks)[size_t(i)] & kRedBits) | std::uint64_t(p.mustCover[size_t(i)] != 0) << 60 |
                std::uint64_t(p.mayKeep[size_t(i)] != 0) << 61 | std::uint64_t(fixed[size_t(i)]) << 62);
        auto [it, added] = classOf.emplace(std::move(key), int(classes.size()));
        if (added) classes.emplace_back();
        classes[size_t(it->second)].push_back(members);
    }
    return classes;
}

OptimiseEnd worse(OptimiseEnd a, OptimiseEnd b) {
    return std::max(a, b);
}

}  // namespace

OptimiseResult optimise_Cover(const CoverProblem& p, const std::vector<int>& start, int budgetMs,
                              const std::function<bool(const CoverProgress&)>& stopped) {
    QElapsedTimer clock;
    clock.start();
    OptimiseResult result;
    result.kept = start;
    if (start.empty()) {
        // No start given: every ticket that may stay (and the fixed ones) stands for it.
        for (size_t i = 0; i < p.masks->size(); ++i)
            if (p.mayKeep[i] || std::count(p.fixed.begin(), p.fixed.end(), int(i)))
                result.kept.push_back(int(i));
    }
    std::sort(result.kept.begin(), result.kept.end());
    std::vector<int>& best = result.kept;
    const int n = int(p.masks->size());
    const auto finish = [&](OptimiseEnd end) {
        result.end = end;
        result.optimal = result.optimal || int(best.size()) <= result.bound;
        if (result.optimal && end != OptimiseEnd::Stopped) result.end = OptimiseEnd::Proven;
        result.elapsedMs = int(clock.elapsed());
        return result;
    };
    if (n == 0 || p.t < 1) return finish(OptimiseEnd::Proven);
    NeighbourIndex index(*p.masks, p.t);
    CoverProblem problem = p;
    // A ticket that no other can cover (fewer balls than t) covers itself.
    for (int i = 0; i < n; ++i)
        if (problem.mustCover[size_t(i)] && !index.hasGroups(i)) problem.fixed.push_back(i);
    std::sort(problem.fixed.begin(), problem.fixed.end());
    problem.fixed.erase(std::unique(problem.fixed.begin(), problem.fixed.end()), problem.fixed.end());

    bool halted = false;
    qint64 deadline = budgetMs;
    const auto late = [&] {
        if (halted) return true;
        const CoverProgress progress{int(best.size()), int(clock.elapsed())};
        if (stopped && stopped(progress)) halted = true;
        return halted || clock.elapsed() >= deadline;
    };
    const auto improve = [&](std::vector<int> kept) {
        if (kept.size() >= best.size()) return false;
        std::sort(kept.begin(), kept.end());
        best = std::move(kept);
        result.bestAtMs = int(clock.elapsed());
        return true;
    };
    const auto endNow = [&] { return halted ? OptimiseEnd::Stopped : OptimiseEnd::TimeLimit; };
    // Sub-searches report the whole problem's best and time.
    const auto subStopped = [&](const CoverProgress&) {
        return late() && (halted || clock.elapsed() >= budgetMs);
    };

    // The bound first, with at most a tenth of the time: it also tells every later stage when to stop.
    deadline = budgetMs / 10;
    result.bound = lowerBound_SuoShui(problem, index, late).value();
    deadline = budgetMs;
    if (halted) return finish(OptimiseEnd::Stopped);
    if (int(best.size()) <= result.bound) return finish(OptimiseEnd::Proven);

    // Parts no ticket links are covered apart, each with a share of the time as large as its share
    // of the tickets; the bound and the proof are then the sums of the parts'.
    const std::vector<std::vector<int>> parts = independentParts(n, index);
    if (parts.size() > 1) {
        std::vector<int> kept;
        int bound = 0, ticketsLeft = n, bestAt = 0;
        bool optimal = true;
        OptimiseEnd end = OptimiseEnd::Proven;
        for (const std::vector<int>& members : parts) {
            Part part = partOf(problem, members);
            std::vector<int> partStart;
            std::vector<int> at(size_t(n), -1);
            for (size_t k = 0; k < members.size(); ++k) at[size_t(members[k])] = int(k);
            for (int i : best)
                if (at[size_t(i)] >= 0) partStart.push_back(at[size_t(i)]);
            const qint64 left = std::max<qint64>(0, budgetMs - clock.elapsed());
            const int share = int(left * qint64(members.size()) / std::max(1, ticketsLeft));
            ticketsLeft -= int(members.size());
            const OptimiseResult r = optimise_Cover(part.problem, partStart, share, subStopped);
            for (int i : r.kept) kept.push_back(members[size_t(i)]);
            bound += r.bound;
            optimal = optimal && r.optimal;
            bestAt = std::max(bestAt, int(clock.elapsed()) - r.elapsedMs + r.bestAtMs);
            // A part cut short by the whole search's time limit ran out of time, not into a Stop.
            end = worse(end, r.end == OptimiseEnd::Stopped && !halted ? OptimiseEnd::TimeLimit : r.end);
        }
        result.bound = std::max(result.bound, bound);
        if (improve(kept)) result.bestAtMs = bestAt;
        result.optimal = optimal && int(best.size()) == bound;
        return finish(halted ? OptimiseEnd::Stopped : end);
    }

    // Several blues over the same reds: the cover of one blue, repeated for each, is a cover (a
    // ticket meets its copy under its own blue in the same reds and the blue). At small t it is
    // often smaller than anything the search below finds on the whole set, and a good start there.
    const auto classes = blueClasses(problem);
    if (std::any_of(classes.begin(), classes.end(), [](const auto& c) { return c.size() > 1; })) {
        std::vector<int> kept;
        const qint64 share = std::max<qint64>(0, budgetMs - clock.elapsed()) * 2 / 5;
        int tickets = 0;
        for (const auto& blues : classes) tickets += int(blues.front().size());
        for (const auto& blues : classes) {
            if (late()) break;
            Part part = partOf(problem, blues.front());
            // The class is covered from scratch: its start is every ticket it may keep.
            std::vector<int> partStart;
            for (size_t k = 0; k < part.members.size(); ++k)
                if (part.problem.mayKeep[k] ||
                    std::binary_search(part.problem.fixed.begin(), part.problem.fixed.end(), int(k)))
                    partStart.push_back(int(k));
            const OptimiseResult r =
                optimise_Cover(part.problem, partStart,
                               int(share * qint64(blues.front().size()) / std::max(1, tickets)), subStopped);
            for (const std::vector<int>& members : blues)
                for (int i : r.kept) kept.push_back(members[size_t(i)]);
        }
        // Kept only if it covers: a ticket owed the guarantee but not allowed to stay may need
        // a ticket of another blue.
        if (!halted && kept.size() < best.size()) {
            Cover check(problem, index);
            for (int i : kept) check.add(i);
            if (check.uncovered() == 0) improve(kept);
        }
        if (halted) return finish(OptimiseEnd::Stopped);
        if (int(best.size()) <= result.bound) return finish(OptimiseEnd::Proven);
    }

    // The search stops when it meets the bound, or when a stretch of a fifth of the time (at least
    // a second) brings nothing smaller; the time limit stays the upper bound.
    const qint64 stretch = std::max<qint64>(1000, budgetMs / 5);
    // The stretch counts from the later of the last improvement and the start of the local search:
    // a greedy start that took most of the time must not count as time the search spent in vain.
    qint64 searchFrom = 0;
    const auto settled = [&] {
        return clock.elapsed() - std::max<qint64>(result.bestAtMs, searchFrom) >= stretch;
    };

    // The greedy cover may use most of what is left; the local search has the rest, and starts
    // from the best set so far when the greedy ran out of time.
    deadline = clock.elapsed() + (budgetMs - clock.elapsed()) * 3 / 5;
    {
        Cover greedy(problem, index);
        for (int f : problem.fixed) greedy.add(f);
        if (greedyCover(problem, index, greedy, late)) improve(greedy.list());
    }
    deadline = budgetMs;
    if (halted) return finish(OptimiseEnd::Stopped);
    if (int(best.size()) <= result.bound) return finish(OptimiseEnd::Proven);

    // The search starts from the best set; the fixed tickets are in it.
    Cover cover(problem, index);
    for (int i : best) cover.add(i);
    for (int f : problem.fixed)
        if (!cover.kept(f)) cover.add(f);
    if (cover.uncovered() > 0) return finish(endNow());  // the start was no cover: nothing to improve on

    // Small sets are searched exhaustively: the search ends with the proof of a minimum, or at the
    // time limit with the best it found. The local search gives it a small start.
    const bool exact = exactFits(problem);

    // Local search: take out a kept ticket; if one candidate covers everything it alone covered,
    // put that one in its place (a sideways step), and drop every kept ticket left covering
    // nothing alone (a step down). Otherwise put the ticket back.
    std::mt19937 random(20261124);
    std::vector<int> lost, count(size_t(n), 0), touched;
    std::vector<int> movable;
    // Before an exhaustive search the local search only gives it a small start: it ends after a
    // few thousand moves bring nothing smaller.
    if (exact) deadline = std::min<qint64>(budgetMs, clock.elapsed() + stretch / 2);
    int quietRounds = 0;
    OptimiseEnd end = OptimiseEnd::TimeLimit;
    searchFrom = clock.elapsed();
    while (!late() && !(exact && quietRounds > 100 + n / 4)) {
        if (int(best.size()) <= result.bound) break;
        if (settled()) {
            end = OptimiseEnd::Settled;
            break;
        }
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
        quietRounds = cover.uncovered() == 0 && improve(cover.list()) ? 0 : quietRounds + 1;
    }
    deadline = budgetMs;
    if (halted) return finish(OptimiseEnd::Stopped);
    if (int(best.size()) <= result.bound) return finish(OptimiseEnd::Proven);
    if (exact) {
        // The proof gets a stretch too: a set it cannot settle in that time is left as it stands.
        deadline = std::min<qint64>(budgetMs, clock.elapsed() + stretch);
        const ExactCover proof = exact_SuoShui(problem, index, best, late);
        deadline = budgetMs;
        improve(proof.kept);
        result.optimal = proof.proven;
        if (proof.proven) {
            result.bound = int(best.size());
            return finish(OptimiseEnd::Proven);
        }
        return finish(halted                        ? OptimiseEnd::Stopped
                      : clock.elapsed() >= budgetMs ? OptimiseEnd::TimeLimit
                                                    : OptimiseEnd::Settled);
    }
    return finish(halted ? OptimiseEnd::Stopped : end);
}

std::vector<int> optimise_SuoShui(const CoverProblem& p, const std::vector<int>& start, int budgetMs,
                                  const std::function<bool(const CoverProgress&)>& stopped) {
    return optimise_Cover(p, start, budgetMs, stopped).kept;
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
