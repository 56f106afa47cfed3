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
    dovrex::reset_HongQiu();
    dovrex::reset_LanQiu();
    dovrex::set_GuoLvFanWei(1, 20, 1);
    dovrex::set_GuoLvFanWei(101, 102, 1);
    for (bool filtered : {false, true}) {
        const QString set = filtered ? QStringLiteral("filtered set (red sum 55..71)")
                                     : QStringLiteral("20 red drags, 2 blue");
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
                                 ms(timer), floor.readMs + floor.scanMs, QStringLiteral("read+scan"));
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
    dovrex::clear_TouZhuBiao();
});

}  // namespace
