#pragma once

#include "domain/game.h"

namespace dovrex {

// The derived columns of 历史记录: what each draw looks like, computed once when it arrives so
// that charts, searches and filters read plain columns.

// Recomputes every derived column of the draws from..to (both inclusive), then the temperatures.
// The draw before `from` only serves as the predecessor and is not rewritten, except when it is
// the only row found (see the notes in the source).
void recalc_LiShiLie(IssueNumber from, IssueNumber to, bool showProgress);
// 温度值5 and 温度值10 of the draws from..to.
void recalc_WenDu(IssueNumber from, IssueNumber to, bool showProgress);
// 区间1..区间4 alone, after the intervals were redrawn.
void recalc_QuJian(IssueNumber from, IssueNumber to);

// How many of the six reds of `issue`'s draw came up in the n draws before it (n = 5 or 10),
// counted per number; 0 when the issue has no row.
int calc_WenDu(IssueNumber issue, int n);

}  // namespace dovrex
