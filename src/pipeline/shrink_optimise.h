#pragma once

#include <QString>
#include <cstdint>
#include <functional>
#include <vector>

namespace dovrex {

// 优化缩水: the same guarantee as the plain scan (every ticket shares at least t balls with a kept
// one) with fewer tickets kept. Tickets are ball masks (ballMask) in scan order; the order is the
// tie-break everywhere, so the weights and the smart optimisation's scores still decide which of
// two equal choices stays.
struct CoverProblem {
    const std::vector<std::uint64_t>* masks = nullptr;
    std::vector<char> mustCover;  // tickets the guarantee is owed to
    std::vector<char> mayKeep;    // tickets that may be kept
    std::vector<int> fixed;       // tickets kept whatever happens (the whole formula at t 6)
    int t = 5;
};

struct CoverProgress {
    int best = 0;  // tickets in the best valid set so far
    int elapsedMs = 0;
};

// A greedy cover (the candidate covering most still uncovered tickets first), then a local search
// (drop what is redundant, swap one kept ticket for one that covers what it alone covered) until
// `budgetMs` is spent or `stopped` says yes. Starts from `start` (a valid cover: the plain scan's
// result) and never returns more tickets than it. The result is valid and in scan order.
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
