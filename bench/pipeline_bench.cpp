#include <QElapsedTimer>

#include "bench.h"
#include "filters/condition_store.h"
#include "filters/filter_run.h"
#include "floor.h"
#include "pipeline/ticket_init.h"
#include "screen/shared_state.h"
#include "screen/ticket_page.h"

namespace {

// 20 red drags and 2 blues: 77,520 tickets, then a filter run over them with every switch off
// (the marks are cleared row by row and each of the filters reads its switch).
const bench::Register expandAndFilter("pipeline", [] {
    bench::ShippedStore store;
    dovrex::store_Execute(QStringLiteral("DELETE FROM 日志表"));
    dovrex::store_Execute(QStringLiteral("UPDATE 过滤条件使用情况 SET 使用情况=0"));
    dovrex::store_Execute(QStringLiteral("UPDATE 历史数据过滤 SET 使用状态=0"));
    dovrex::resetRedPicks();
    dovrex::resetBluePicks();
    dovrex::set_GuoLvFanWei(1, 20, 1);
    dovrex::set_GuoLvFanWei(101, 102, 1);

    QElapsedTimer t;
    t.start();
    const int n = dovrex::init_TouZhu(2008118);
    const double initMs = double(t.nsecsElapsed()) / 1e6;
    const bench::Floor floor = bench::measureFloor(2008118);
    bench::reportAgainst(QStringLiteral("init_TouZhu, %1 tickets (20 red drags, 2 blue), grid bound").arg(n),
                         initMs, floor.insertMs, QStringLiteral("insert"));

    t.start();
    dovrex::run_GuoLv(2008118);
    bench::reportAgainst(QStringLiteral("run_GuoLv over them, every switch off, grid bound"),
                         double(t.nsecsElapsed()) / 1e6, floor.readMs + floor.writeMs,
                         QStringLiteral("read+write"));
    t.start();
    dovrex::load_TouZhuBiao(2008118);
    bench::report(QStringLiteral("of which binding them to the grid (load_TouZhuBiao)"),
                  double(t.nsecsElapsed()) / 1e6, QStringLiteral("ms"));
    dovrex::clearTicketTable();
});

}  // namespace
