#pragma once

#include <vector>

#include "domain/game.h"
#include "filters/filter_loop.h"
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
}  // namespace msg

}  // namespace dovrex
