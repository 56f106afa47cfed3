#pragma once

#include <functional>
#include <vector>

#include "domain/game.h"
#include "pipeline/space_filter.h"

namespace dovrex {

// The shrink and the selection on tickets held in memory, giving what run_SuoShui after a filter
// run and run_JingXuan give on the same tickets in 日志表, and writing nothing. The tickets come in
// the order and numbering the filter run leaves (序号 1, 2, 3 ...); the result is the indices of the
// tickets kept, ascending, which is also the order of 序号 after the pass.

struct ShrinkChoice {
    int t = 7;               // 保N型; 7 and anything outside 3..6 keep every ticket
    bool optimised = false;  // 优化缩水 after the plain scan
    int budgetMs = 1000;     // its time limit
};

// The smart optimisation (switch 45) and the number weights are read as run_SuoShui reads them.
// `stopped` is asked now and then; a stopped shrink returns nothing useful and says so in `wasStopped`.
std::vector<int> shrink_HeldTickets(const std::vector<SpaceTicket>& tickets, IssueNumber issue,
                                    const ShrinkChoice& choice, const std::function<bool()>& stopped = {},
                                    bool* wasStopped = nullptr);

// 精选号码 of `n` (the n lowest scores, 序号 breaking ties); every ticket when n is 0 or not below
// the count.
std::vector<int> select_HeldTickets(const std::vector<SpaceTicket>& tickets, IssueNumber issue, int n);

}  // namespace dovrex
