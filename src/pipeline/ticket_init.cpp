#include "pipeline/ticket_init.h"

#include <vector>

#include "domain/record_checks.h"
#include "filters/condition_store.h"
#include "pipeline/pick_expansion.h"
#include "pipeline/pick_state.h"
#include "pipeline/space_init.h"
#include "screen/prepared.h"
#include "screen/run_panel.h"
#include "screen/shared_state.h"
#include "screen/ticket_page.h"
#include "store/all_or_nothing.h"

namespace dovrex {

namespace {

struct Expansion {
    IssueNumber issue = 0;
    long long key = 0;  // running ID
    int serial = 0;     // 序号 of the last row written
    int counter = 0;    // rows of the issue
    bool useFormula = false;
    std::vector<int> formula;  // see read_ShrinkFormula
    size_t formulaAt = 0;
};

// The Stop flag is down again when the step ends, on every way out.
struct LowerStopFlag {
    ~LowerStopFlag() { shared().tingZhi = 0; }
};

}  // namespace

int init_TouZhu(IssueNumber issue) {
    SharedState& s = shared();
    Screen& ui = screen();
    s.biaoJiQingLing = 0;
    if (const QString fault = issueFault(issue); !fault.isEmpty()) {
        ui.ui_Message(fault, MessageKind::Warning);
        return 0;
    }
    if (!check_XuanHao(true)) return 0;
    // Counted from the rows the loops will walk, not from the pick page: rows written by other
    // paths (an older store, an imported file) must not slip past the limit. 大底 counts what
    // survives instead.
    const bool space = space_Mode();
    const PickSet p = read_PickSet();
    if (!space && p.tickets > kTicketLimit) {
        ui.ui_Message(msg::kTicketLimit);
        return 0;
    }

    LowerStopFlag lowerStop;
    // The question comes before anything changes: the step either lands whole or leaves every
    // ticket as it was (Stop, a close, an error).
    const int existing =
        store().scalar(QStringLiteral("SELECT count(*) FROM 日志表 WHERE 期号=?"), {issue}).toInt();
    const bool replace =
        existing > 0 && ui.ui_Confirm(msg::kKeepOldTickets, ConfirmButtons::YesNo, msg::kInfoTitle);
    if (space) return init_FromSpace(issue, existing, replace);
    const int kept = replace ? 0 : existing;
    if (kept + p.tickets > kTicketLimit) {  // the kept rows count too
        ui.ui_Message(msg::kTicketLimit);
        return existing;
    }

    Expansion x;
    x.issue = issue;
    bool complete = false;
    {
        AllOrNothing change(store());
        store_Execute(QStringLiteral("DELETE FROM 日志表 WHERE 期号<>?"), {issue});
        x.key = store().scalar(QStringLiteral("SELECT max(ID) FROM 日志表")).toLongLong();
        if (replace) store_Execute(QStringLiteral("DELETE FROM 日志表 WHERE 期号=?"), {issue});
        x.counter = kept;

        x.useFormula = p.usesFormula();
        if (x.useFormula) x.formula = read_ShrinkFormula(p.drags());

        RunPanel panel(int(p.tickets));
        const auto& red = p.red;
        const auto& banker = p.banker;
        const int bankers = p.bankers;
        const std::vector<int>& blues = p.blues;

        Prepared insert(
            x.useFormula
                ? QStringLiteral("INSERT INTO 日志表 (ID,序号,期号,红球1,红球2,红球3,红球4,红球5,红球6,蓝球,"
                                 "缩水公式) VALUES (?,?,?,?,?,?,?,?,?,?,?)")
                : QStringLiteral("INSERT INTO 日志表 (ID,序号,期号,红球1,红球2,红球3,红球4,红球5,红球6,蓝球) "
                                 "VALUES (?,?,?,?,?,?,?,?,?,?)"));
        auto write = [&](const int(&r)[7]) {
            int held = 0;
            for (int i = 1; i <= 6; ++i) held += banker[r[i]];
            if (held < bankers) return;
            for (int b : blues) {
                ui.ui_Pump();
                ++x.serial;
                insert.bind(1, ++x.key).bind(2, x.serial).bind(3, issue);
                for (int i = 1; i <= 6; ++i) insert.bind(3 + i, r[i]);
                insert.bind(10, b);
                if (x.useFormula) {
                    int mark = kOutsideFormula;
                    if (x.formula[x.formulaAt] == x.serial) mark = x.formula[x.formulaAt++];
                    insert.bind(11, mark);
                }
                insert.exec();
                ++x.counter;
            }
        };
        int r[7] = {};
        for (r[1] = 1; r[1] <= 28; ++r[1]) {
            if (!red[r[1]]) continue;
            for (r[2] = r[1] + 1; r[2] <= 29; ++r[2]) {
                if (!red[r[2]]) continue;
                for (r[3] = r[2] + 1; r[3] <= 30; ++r[3]) {
                    if (!red[r[3]]) continue;
                    for (r[4] = r[3] + 1; r[4] <= 31; ++r[4]) {
                        if (!red[r[4]]) continue;
                        for (r[5] = r[4] + 1; r[5] <= 32; ++r[5]) {
                            if (!red[r[5]]) continue;
                            for (r[6] = r[5] + 1; r[6] <= 33; ++r[6])
                                if (red[r[6]]) write(r);
                            panel.show(x.counter);
                            if (s.tingZhi) goto stopped;
                        }
                    }
                }
            }
        }
        complete = true;
    stopped:
        if (complete) change.commit();
    }

    if (!complete) {
        // Taken back whole: the grid is bound again to the table as it stands, as at start.
        if (touZhuBiao()) load_TouZhuBiao(-1);
        log_Append(msg::kInitStopped);
        return existing;
    }
    const QString done = msg::initDone(x.counter);
    ui.ui_Message(done);
    load_TouZhuBiao(issue);
    log_CaoZuo(done + kCrLf, false);
    return x.counter;
}

}  // namespace dovrex
