#pragma once

#include <QString>
#include <array>

#include "domain/game.h"
#include "screen/shared_state.h"

namespace dovrex {

// The prize tier (1..6) of a ticket with `redHits` reds and `blueHits` blues, 0 when it wins nothing.
// Tested in the order 6, 5, 4, 2, 3, 1 on the sum of hits.
int prize_Tier(int redHits, int blueHits);
// The log text of tier 1..6 ("一等奖： " ...).
const QString& prize_TierText(int tier);

// The draw the ticket grid was last checked against, for the ball cells; issue 0 before any check.
const DrawnNumbers& prize_DrawnNumbers();

// check_KaiJiang: counts the hits of every ticket of `issue` against its draw, writes 红球中 and 蓝球中,
// puts the tally of the six tiers in front of the operation log, rebinds the grid and shows the drawn
// numbers as balls in it. Returns the highest sum of hits, 0 when nothing could be checked or hit.
int check_KaiJiang(IssueNumber issue);

namespace msg {
inline const QString kNothingToCheck = QStringLiteral("没有要核对的号码！请先选号！");
inline const QString kCheckDone = QStringLiteral("开奖核对完成,结果请查看右边的操作提示！");
inline const QString kCheckReportHead = QStringLiteral("开奖核对结果如下——");
inline QString noDrawToCheck(IssueNumber issue) {
    return QStringLiteral("出错啦!\r\n\r\n当前表格或历史开奖数据中没有第") + to_QuanJiao(issue) +
           QStringLiteral("期的数据！\r\n\r\n          无法核对哦^_^！！");
}
}  // namespace msg

}  // namespace dovrex
