#include "filters/filter_run.h"

#include "filters/backtest.h"

#include "screen/control_roles.h"
#include "screen/run_panel.h"
#include "screen/shared_state.h"
#include "screen/ticket_page.h"

namespace dovrex {

int filter_Run(IssueNumber issue, const FilterDef& def) {
    if (def.run) return def.run(issue, def);
    if (def.prepare) return filter_SharedLoop(issue, def);
    if (def.stopOnEntry && shared().tingZhi) return 0;
    // Like the loop, it has nothing to say when no ticket is left to look at.
    if (filter_SwitchedOn(def)) {
        const bool any = !tickets_InPlay(issue).rows.empty();
        tickets_Done(true);
        if (any) log_Append(msg::filterNotProvided(def.label));
    }
    return 0;
}

namespace {

// The user-switch menu is off for the whole run and the Stop flag down after it, on every way out.
struct RunGuard {
    RunGuard() {
        screen().ui_Set(role::mnu_UserQiehuan, QStringLiteral("enabled"), false);
        filterRun().liShiXiangGuan = false;
        shared().tingZhi = 0;
    }
    ~RunGuard() {
        shared().tingZhi = 0;
        screen().ui_Set(role::mnu_UserQiehuan, QStringLiteral("enabled"), true);
    }
};

}  // namespace

void run_GuoLv(IssueNumber issue) {
    RunGuard guard;
    SharedState& s = shared();
    if (!load_GuoLvShuJu(issue)) return;
    {
        TicketRunScope tickets;
        if (const int k = filter_Tolerance(); k > 0) {
            run_GuoLvWithTolerance(issue, k);
        } else {
            for (const FilterStep& step : filterSteps()) {
                for (const FilterDef& def : step.filters) filter_Run(issue, def);
                if (s.tingZhi) break;
            }
        }
    }
    const int left =
        store().scalar(QStringLiteral("select count(*) from 日志表 where 期号=?"), {issue}).toInt();
    load_TouZhuBiao(issue);
    log_Append(s.tingZhi ? QStringLiteral("用户中止,当前记录余：") + to_QuanJiao(left) + QStringLiteral(" 注")
                         : msg::filterRunDone(left, issue, filterRun().liShiXiangGuan));
}

}  // namespace dovrex
