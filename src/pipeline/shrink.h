#pragma once

#include <QString>
#include <cstdint>
#include <functional>
#include <vector>

#include "domain/condition_catalogue.h"
#include "domain/game.h"

namespace dovrex {

// The guarantee-N shrink (第3步：缩水). T is the number of balls of seven (the blue counts as the
// seventh) that a removed ticket shares at least with a kept one; it is the Value of 过滤条件 row
// kShrinkTypeId.

// The caption of Option_ShuoSuiLeiXing(t): "保三型" .. "保七型"; empty outside 3..7.
QString shrinkCaption(int t);

// The balls of a ticket as bits: red n is bit n (1..33), blue n is bit 33 + n (34..49), so that
// red 5 and blue 5 are different balls. A number outside its range is no ball and sets no bit.
inline std::uint64_t ballMask(const Reds& reds, int blue) {
    std::uint64_t m = 0;
    for (int i = 1; i <= 6; ++i)
        if (reds[size_t(i)] >= 1 && reds[size_t(i)] <= kRedCount) m |= std::uint64_t(1) << reds[size_t(i)];
    if (blue >= 1 && blue <= kBlueCount) m |= std::uint64_t(1) << (kRedCount + blue);
    return m;
}

// The scan itself, on tickets in scan order. marks are their 缩水标记 (0 not visited; a negative
// mark is never compared, so never removed nor chosen). The first `keptWhole` tickets (the shrink
// formula at t 6), or else the first ticket, are kept whatever their marks and never compared with
// each other; each kept ticket removes every later unremoved ticket with a mark of 0 or more that
// shares at least t balls with it; the next kept ticket is the first later one still at mark 0.
// `stopped` is asked now and then (it may pump the window); when it says yes the scan ends there.
struct ShrinkScan {
    std::vector<int> kept;     // indices, in scan order
    std::vector<int> removed;  // indices
    bool stopped = false;
};
ShrinkScan scan_SuoShui(const std::vector<std::uint64_t>& masks, const std::vector<int>& marks, int t,
                        const std::function<bool(int removedSoFar)>& stopped = {}, int keptWhole = 0);

// run_SuoShui: shrinks the tickets of `issue` at t (after the smart optimisation and the weights,
// which steer the scan order), renumbers 日志表 and logs the count. Returns the tickets kept.
// t 7 keeps everything. A Stop keeps what was done, without renumbering.
int run_SuoShui(int t, IssueNumber issue);

// The order of the scan, as the keys of its ORDER BY: with weights the heavier tickets first,
// otherwise the lower 临时数据 (the smart optimisation's score) first, 序号 breaking ties; at t 6 the
// tickets of the shrink formula (缩水公式 1..99999998) go in front when the issue has any.
QString shrinkOrder(int t, IssueNumber issue, bool weights);
// The issue's tickets of the shrink formula (缩水公式 1..99999998).
int formulaTickets(IssueNumber issue);
// The coverage report of the issue's tickets against the set its last shrink started from; empty
// when no shrink of that issue ran in this session.
QString coverage_OfIssue(IssueNumber issue);

// Option_ShuoSuiLeiXing_Click: the shrink type chosen. Check_auto_Click: the smart optimisation on/off.
void Option_ShuoSuiLeiXing_Click(int index);
void Check_auto_Click(bool checked);

// 优化缩水: after the plain scan, a search for a smaller set with the same guarantee within a time
// limit. Both live in 过滤条件 beside the shrink type, so that they last and travel with condition
// files; a limit of 0 reads as the default.
bool shrink_Optimised();
void set_ShrinkOptimised(bool on);
int shrink_BudgetSeconds();
void set_ShrinkBudgetSeconds(int seconds);

// TimerSuosuijinxingzong: each tick moves the bar shown in LabelJindu while a shrink has removed
// nothing yet. Returns the text shown.
QString TimerSuosuijinxingzong_Timer();

namespace msg {
inline const QString kShrinkNothingRemoved = QStringLiteral("保七型缩水保留全部号码，没有号码被删除！");
inline const QString kShrinkUserStop = QStringLiteral("用户停止！");
inline const QString kShrinkGuaranteeBroken = QStringLiteral(
    "程序错误：缩水后有 %1 注原号码没有任何保留号码能保证中奖，缩水的保证没有做到。请把这个情况告诉开发者。");
inline const QString kShrinkChooseType = QStringLiteral("请先在缩水设置里选择保Ｎ型缩水的类型！");
inline QString shrinkConfirm(int t, int count) {
    return QStringLiteral("表格中共有 ") + to_QuanJiao(count) + QStringLiteral(" 注号码，即将进行保") +
           to_QuanJiao(t) + QStringLiteral("型缩水！");
}
}  // namespace msg

}  // namespace dovrex
