#include <QDir>
#include <QElapsedTimer>

#include "bench.h"
#include "filters/condition_store.h"
#include "floor.h"
#include "pipeline/ticket_init.h"
#include "pipeline/ticket_merge.h"
#include "results/prize_check.h"
#include "results/ticket_export.h"
#include "results/ticket_import.h"
#include "screen/scripted_screen.h"
#include "screen/shared_state.h"
#include "screen/ticket_page.h"

namespace {

double msSince(QElapsedTimer& t) {
    const double ms = double(t.nsecsElapsed()) / 1e6;
    t.start();
    return ms;
}

// 77,520 tickets (20 red drags, 2 blues) through export, import, prize check and merge; then the
// merge over 20,000 tickets that all differ, its worst case.
const bench::Register ticketFiles("results", [] {
    bench::ShippedStore store;
    dovrex::ScriptedScreen ui;
    dovrex::Screen* before = dovrex::shared().screen;
    dovrex::shared().screen = &ui;
    dovrex::store_Execute(QStringLiteral("DELETE FROM 日志表"));
    dovrex::resetRedPicks();
    dovrex::resetBluePicks();
    dovrex::set_GuoLvFanWei(1, 20, 1);
    dovrex::set_GuoLvFanWei(101, 102, 1);
    const int n = dovrex::init_TouZhu(2008118);
    const bench::Floor floor = bench::measureFloor(2008118);
    const double readWrite = floor.readMs + floor.writeMs;

    QElapsedTimer t;
    t.start();
    const int exported = dovrex::export_HaoMa(2008118);
    bench::report(QStringLiteral("export_HaoMa, %1 tickets").arg(exported), msSince(t), QStringLiteral("ms"));

    ui.answerFromFile(dovrex::TicketImportOptions{0, QStringLiteral("2008118")});
    ui.answerConfirm(false);
    const int imported =
        dovrex::import_HaoMa(QDir(dovrex::daoChu_Folder()).filePath(dovrex::kDaoChuFileName));
    bench::reportAgainst(QStringLiteral("import_HaoMa, %1 of %2 tickets").arg(imported).arg(n), msSince(t),
                         floor.insertMs, QStringLiteral("insert"));

    dovrex::load_TouZhuBiao(2008118);
    t.start();
    const int best = dovrex::check_KaiJiang(2008118);
    bench::reportAgainst(
        QStringLiteral("check_KaiJiang, %1 tickets (best %2 hits), grid bound").arg(imported).arg(best),
        msSince(t), readWrite, QStringLiteral("read+write"));

    const int left = dovrex::merge_XiangTongZhu();
    bench::reportAgainst(QStringLiteral("merge_XiangTongZhu, %1 tickets to %2").arg(imported).arg(left),
                         msSince(t), readWrite, QStringLiteral("read+write"));

    // 20,000 distinct sets of reds: every walk finds nothing to merge.
    dovrex::store_Execute(QStringLiteral("DELETE FROM 日志表 WHERE 序号>40000 OR 蓝球<>1"));
    const int distinct = dovrex::store().scalar(QStringLiteral("select count(*) from 日志表")).toInt();
    t.start();
    const int kept = dovrex::merge_XiangTongZhu();
    bench::report(QStringLiteral("merge_XiangTongZhu, %1 distinct tickets, %2 kept").arg(distinct).arg(kept),
                  msSince(t), QStringLiteral("ms"));

    dovrex::clearTicketTable();
    dovrex::shared().screen = before;
});

}  // namespace
