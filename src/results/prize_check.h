#pragma once

#include <QString>
#include <QStringList>
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

// check_KaiJiang: counts the hits of every ticket of `issue` against the draw `drawIssue` (their own
// issue when 0), writes 红球中 and 蓝球中, puts the tally of the six tiers in front of the operation
// log, rebinds the grid and shows the drawn numbers as balls in it. The tickets keep their issue, so
// that tickets bought for the next draw can be tried against any earlier one. Returns the highest
// sum of hits, 0 when nothing could be checked or hit.
int check_KaiJiang(IssueNumber issue, IssueNumber drawIssue = 0);

// The draws a check of the tickets of `issue` may use, newest first, as "2026096 期  2026/08/20",
// and the one proposed: the tickets' own issue when it was drawn, else the newest draw. No items
// when the history is empty.
struct DrawChoice {
    QStringList items;
    int current = 0;
};
DrawChoice prize_DrawChoice(IssueNumber issue);

// What the tickets of a check won: the tickets per tier, the prize of one ticket in each tier (tiers
// 3..6 fixed, 1 and 2 from the draw's notice in 奖级奖金, -1 when it was not downloaded), the total
// of the known prizes and the cost of the tickets.
struct PrizeMoney {
    std::array<int, 7> tickets{};
    std::array<qint64, 7> prize{};
    qint64 total = 0;
    bool unknown = false;  // a tier with winning tickets has no known prize
    qint64 cost = 0;
};
PrizeMoney prize_Money(IssueNumber issue, const std::array<int, 7>& tickets, int ticketCount);
// The money of the last check of the tickets of `issue`, from the hits 日志表 holds, at the prizes
// of the draw they were checked against (`drawIssue`, their own issue when 0).
PrizeMoney prize_MoneyOfChecked(IssueNumber issue, IssueNumber drawIssue = 0);
// The lines of the report: per winning tier the count times the prize, the total, the cost.
QStringList prize_MoneyLines(const PrizeMoney& money);

namespace msg {
inline const QString kPrizeUnknown = QStringLiteral("奖金未知");
inline const QString kNothingToCheck = QStringLiteral("没有要核对的号码！请先选号！");
inline const QString kCheckDone = QStringLiteral("开奖核对完成,结果请查看右边的操作提示！");
inline const QString kCheckReportHead = QStringLiteral("开奖核对结果如下——");
inline const QString kCheckTitle = QStringLiteral("开奖核对");
inline const QString kAskDrawToCheck = QStringLiteral("用哪一期的开奖号码核对表格中的号码？");
inline const QString kNoDrawToCheckTitle = QStringLiteral("出错啦!");
inline QString noDrawToCheck(IssueNumber issue) {
    return QStringLiteral("当前表格或历史开奖数据中没有第") + to_QuanJiao(issue) +
           QStringLiteral("期的数据！\r\n\r\n          无法核对哦^_^！！");
}
}  // namespace msg

}  // namespace dovrex
