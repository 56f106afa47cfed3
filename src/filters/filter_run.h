#pragma once

#include <vector>

#include "domain/game.h"
#include "filters/filter_loop.h"
#include "screen/run_panel.h"
#include "screen/shared_state.h"

namespace dovrex {

// One step of the filter run: one filter, or the filters of a looped one (区间, 自定义组, 单双组合).
struct FilterStep {
    int step = 0;
    std::vector<FilterDef> filters;
};

// The fixed order of the filter run, with each filter's label, switch and condition rows. A family
// joins the run by filling `prepare` (or `run`) of its entries in filter_steps.cpp.
const std::vector<FilterStep>& filterSteps();

// State of the run beside shared(): raised by the history-relative filters that were on, so that
// the closing line says the result holds for this issue only.
inline FilterRunState& filterRun() {
    return shared().filterRun;
}

// Runs one filter: its own pass, the shared loop, or, for a family not in this build, a log line
// when its switch is on and tickets are left (otherwise it stays silent, as every filter does).
int filter_Run(IssueNumber issue, const FilterDef& def);

// 第2步：过滤: clears the marks, runs every filter in order, rebinds the ticket grid and closes the
// log with the count left. Stop ends it between or inside filters, keeping what was done.
void run_GuoLv(IssueNumber issue);

namespace msg {
// The line a switched-on filter writes when its family is not in this build.
inline QString filterNotProvided(const QString& label) {
    return label + QStringLiteral("该条件的过滤在这个版本中还不能使用，未过滤．");
}
// The lines of the run's log, wherever tickets are filtered (the rows, 容错, 大底): what a filter
// leaves; with a tolerance, what each condition failed and what the tolerance removed; the close.
inline QString filterLeft(const QString& label, long long left) {
    return label + QStringLiteral("过滤后余：") + to_QuanJiao(left) + QStringLiteral(" 注");
}
inline QString filterMisses(const QString& label, long long misses) {
    return label + QStringLiteral("未通过：") + to_QuanJiao(misses) + QStringLiteral(" 注");
}
inline QString toleranceRemoved(int k, long long removed, long long left) {
    return QStringLiteral("[容错值=") + to_QuanJiao(k) + QStringLiteral("]失败超过") + to_QuanJiao(k) +
           QStringLiteral("个条件的号码已删除：") + to_QuanJiao(removed) + QStringLiteral(" 注，余：") +
           to_QuanJiao(left) + QStringLiteral(" 注");
}
// The closing line; a run with history-relative filters holds for its issue only.
inline QString filterRunDone(long long left, IssueNumber issue, bool historyRelative) {
    QString line = QStringLiteral("全部条件过滤完成,余：") + to_QuanJiao(left) + QStringLiteral(" 注");
    if (historyRelative)
        line +=
            kCrLf2 + QStringLiteral("【此结果仅适用于 ") + to_QuanJiao(issue) + QStringLiteral(" 期！！！】");
    return line;
}
}  // namespace msg

}  // namespace dovrex
