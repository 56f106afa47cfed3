#include <QElapsedTimer>

#include "bench.h"
#include "filters/condition_store.h"
#include "floor.h"
#include "pipeline/selection.h"
#include "pipeline/shrink.h"
#include "pipeline/ticket_init.h"
#include "screen/shared_state.h"
#include "screen/ticket_page.h"

namespace {

constexpr int kIssue = 2008118;

// 20 red drags and 2 blues: 77,520 tickets; `filtered` keeps those with a red sum of 55..71 (about
// half), as a filter run leaves them.
int expand(bool filtered) {
    dovrex::store_Execute(QStringLiteral("DELETE FROM 日志表"));
    dovrex::store_Execute(QStringLiteral("DELETE FROM Ssgs"));
    dovrex::init_TouZhu(kIssue);
    if (filtered)
        dovrex::store_Execute(QStringLiteral(
            "DELETE FROM 日志表 WHERE 红球1+红球2+红球3+红球4+红球5+红球6 NOT BETWEEN 55 AND 71"));
    dovrex::shared().biaoJiQingLing = 0;
    return dovrex::store().scalar(QStringLiteral("select count(*) from 日志表")).toInt();
}

double ms(const QElapsedTimer& t) {
    return double(t.nsecsElapsed()) / 1e6;
}

const bench::Register shrink("shrink", [] {
    bench::ShippedStore store;
    dovrex::store_Execute(QStringLiteral("UPDATE 过滤条件使用情况 SET 使用情况=0"));
    dovrex::resetRedPicks();
    dovrex::resetBluePicks();
    dovrex::set_GuoLvFanWei(1, 20, 1);
    dovrex::set_GuoLvFanWei(101, 102, 1);
    for (bool filtered : {false, true}) {
        const QString set = filtered ? QStringLiteral("filtered set (red sum 55..71)")
                                     : QStringLiteral("20 red drags, 2 blue");
        // A shrink reads the tickets, scans them, and writes every row back (the many it removes,
        // the few it keeps renumbered): its floor is those three plain passes.
        for (int t : {6, 5, 4}) {
            const int n = expand(filtered);
            const bench::Floor floor = bench::measureFloor(kIssue, t);
            QElapsedTimer timer;
            timer.start();
            const int kept = dovrex::run_SuoShui(t, kIssue);
            bench::reportAgainst(QStringLiteral("run_SuoShui T %1, %2: %3 tickets -> %4 kept")
                                     .arg(t)
                                     .arg(set)
                                     .arg(n)
                                     .arg(kept),
                                 ms(timer), floor.readMs + floor.scanMs + floor.writeMs,
                                 QStringLiteral("read+scan+write"));
        }
        const int n = expand(filtered);
        dovrex::Check_auto_Click(true);
        QElapsedTimer timer;
        timer.start();
        dovrex::run_ZhiNengYouHua(kIssue, 6);
        bench::report(QStringLiteral("run_ZhiNengYouHua, %1: %2 tickets").arg(set).arg(n), ms(timer),
                      QStringLiteral("ms"));
        dovrex::Check_auto_Click(false);
        const bench::Floor floor = bench::measureFloor(kIssue);
        timer.start();
        dovrex::run_JingXuan(kIssue, 5);
        bench::reportAgainst(QStringLiteral("run_JingXuan 5, %1: %2 tickets").arg(set).arg(n), ms(timer),
                             floor.readMs + floor.writeMs, QStringLiteral("read+write"));
    }
    dovrex::clearTicketTable();
});

// 优化缩水 beside the plain scan: complete picks of 12, 16 and 20 red drags with one and two
// blues, and the filtered set, at T 5 and T 4. DOVREX_BENCH_OPT_SECONDS sets the budget (10 s).
const bench::Register shrinkOptimised("shrink-opt", [] {
    bench::ShippedStore store;
    dovrex::store_Execute(QStringLiteral("UPDATE 过滤条件使用情况 SET 使用情况=0"));
    const int budget = qEnvironmentVariableIsSet("DOVREX_BENCH_OPT_SECONDS")
                           ? qEnvironmentVariableIntValue("DOVREX_BENCH_OPT_SECONDS")
                           : 10;
    struct Set {
        int drags, blues;
        bool filtered;
    };
    const Set sets[] = {{12, 1, false}, {12, 2, false}, {16, 1, false}, {16, 2, false},
                        {20, 1, false}, {20, 2, false}, {20, 2, true}};
    double plainSum = 0, optimisedSum = 0;
    for (const Set& set : sets) {
        dovrex::resetRedPicks();
        dovrex::resetBluePicks();
        dovrex::set_GuoLvFanWei(1, set.drags, 1);
        dovrex::set_GuoLvFanWei(101, 100 + set.blues, 1);
        const QString name = set.filtered
                                 ? QStringLiteral("filtered set (red sum 55..71)")
                                 : QStringLiteral("%1 red drags, %2 blue").arg(set.drags).arg(set.blues);
        for (int t : {5, 4}) {
            int counts[2] = {};
            double times[2] = {};
            for (int optimised : {0, 1}) {
                const int n = expand(set.filtered);
                Q_UNUSED(n);
                dovrex::set_ShrinkOptimised(optimised != 0);
                dovrex::set_ShrinkBudgetSeconds(budget);
                QElapsedTimer timer;
                timer.start();
                counts[optimised] = dovrex::run_SuoShui(t, kIssue);
                times[optimised] = ms(timer);
            }
            // Why the optimiser ended: the bound met or a proof, no smaller set for a while, or the limit.
            const dovrex::SharedState& state = dovrex::shared();
            const QString ending = state.shrinkOptimal               ? QStringLiteral("proven")
                                   : times[1] < budget * 1000.0 - 50 ? QStringLiteral("settled")
                                                                     : QStringLiteral("time limit");
            const QString bestAt = QString::number(state.shrinkBestAtMs / 1000.0, 'f', 1);
            dovrex::set_ShrinkOptimised(false);
            const double saved = 100.0 * (counts[0] - counts[1]) / std::max(1, counts[0]);
            plainSum += counts[0];
            optimisedSum += counts[1];
            bench::report(
                QStringLiteral("T %1, %2: plain %3 kept in %4 ms, optimised %5 kept (%6% fewer), bound %7, "
                               "best at %8 s, %9, ms")
                    .arg(t)
                    .arg(name)
                    .arg(counts[0])
                    .arg(times[0], 0, 'f', 0)
                    .arg(counts[1])
                    .arg(saved, 0, 'f', 1)
                    .arg(state.shrinkBound)
                    .arg(bestAt, ending),
                times[1], QStringLiteral("ms"));
        }
    }
    bench::report(QStringLiteral("optimised shrink, tickets kept against the plain scan over every set"),
                  100.0 * optimisedSum / std::max(1.0, plainSum), QStringLiteral("%"));
    dovrex::clearTicketTable();
});

}  // namespace
