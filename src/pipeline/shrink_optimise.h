#pragma once

#include <QString>
#include <cstdint>
#include <functional>
#include <vector>

#include "pipeline/cover_problem.h"

namespace dovrex {

struct CoverProgress {
    int best = 0;  // tickets in the best valid set so far
    int elapsedMs = 0;
};

// 优化缩水: the same guarantee as the plain scan with fewer tickets kept. In turn: a proven lower
// bound (lowerBound_SuoShui); parts no ticket links covered apart; with several blues over the same
// reds, the cover of one blue repeated for each; a greedy cover, then a local search (drop what is
// redundant, swap one kept ticket for one that covers what it alone covered); for small sets an
// exhaustive search that proves its minimum. Starts from `start` (a valid cover: the plain scan's
// result) and never returns more tickets than it. The result is valid and in scan order.
// It ends as soon as the set meets the bound or is proven smallest, when a fifth of the budget (at
// least a second) has passed without a smaller set, when `budgetMs` is spent, or when `stopped`
// says yes (the best set so far is kept).
enum class OptimiseEnd { Proven, Settled, TimeLimit, Stopped };
struct OptimiseResult {
    std::vector<int> kept;
    int bound = 0;         // no cover keeps fewer tickets
    bool optimal = false;  // kept.size() is the minimum
    OptimiseEnd end = OptimiseEnd::Proven;
    int bestAtMs = 0;   // when the kept set was found
    int elapsedMs = 0;  // when the search ended
};
OptimiseResult optimise_Cover(const CoverProblem& problem, const std::vector<int>& start, int budgetMs,
                              const std::function<bool(const CoverProgress&)>& stopped = {});
// The kept set alone.
std::vector<int> optimise_SuoShui(const CoverProblem& problem, const std::vector<int>& start, int budgetMs,
                                  const std::function<bool(const CoverProgress&)>& stopped = {});

// Proof of the guarantee: the tickets of `original` that share fewer than t balls with every kept
// ticket. Empty when the shrink kept its promise.
std::vector<int> uncovered_Tickets(const std::vector<std::uint64_t>& original,
                                   const std::vector<std::uint64_t>& kept, int t);

// How many tickets of `original` meet a kept ticket in 7, 6, 5 and 4 balls at best: the chance of
// each prize class if the draw is among the original tickets. The line of the log:
// "若开奖号码在过滤后的 N 注之中: 中7球 a 注 (x%), 中6球 ...".
// Matches are told apart from `lowest` balls up (at most 4); a ticket meeting every kept one in
// fewer counts in best[0].
struct CoverageReport {
    int original = 0;
    int kept = 0;
    int best[8] = {};  // best[k]: tickets whose best match with a kept ticket is k balls
};
CoverageReport coverage_Report(const std::vector<std::uint64_t>& original,
                               const std::vector<std::uint64_t>& kept, int lowest = 4);
QString coverage_Line(const CoverageReport& report);

}  // namespace dovrex
