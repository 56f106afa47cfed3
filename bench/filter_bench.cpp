#include <QElapsedTimer>
#include <ctime>

#include "bench.h"
#include "filters/backtest.h"
#include "filters/condition_store.h"
#include "filters/filter_run.h"
#include "history/history_queries.h"
#include "pipeline/ticket_init.h"
#include "screen/shared_state.h"
#include "screen/ticket_page.h"
#include "store/store.h"

namespace {

using namespace dovrex;

constexpr IssueNumber kNext = bench::kNextIssue;

int ticketCount() {
    return store().scalar(QStringLiteral("select count(*) from 日志表 where 期号=?"), {kNext}).toInt();
}

// 20 red drags and two blues of the parity the latest draw's blue lacks: 77,520 tickets, none of
// which can equal the latest draw's parity pattern.
int expand() {
    store_Execute(QStringLiteral("DELETE FROM 日志表"));
    bench::blankRoutine();
    set_GuoLvFanWei(1, 20, 1);
    const int blue =
        store().scalar(QStringLiteral("select 蓝球 from 历史记录 where 期号=?"), {latest_QiHao()}).toInt();
    set_GuoLvTiaoJian(blue % 2 ? 102 : 101, 1);
    set_GuoLvTiaoJian(blue % 2 ? 104 : 103, 1);
    return init_TouZhu(kNext);
}

void timeRun(const QString& what) {
    const int before = ticketCount();
    QElapsedTimer t;
    t.start();
    const std::clock_t cpu = std::clock();
    run_GuoLv(kNext);
    const double ms = double(t.nsecsElapsed()) / 1e6;
    const double cpuMs = double(std::clock() - cpu) * 1000.0 / CLOCKS_PER_SEC;
    bench::report(QStringLiteral("run_GuoLv, %1, %2 -> %3 tickets").arg(what).arg(before).arg(ticketCount()),
                  ms, QStringLiteral("ms"));
    bench::report(QStringLiteral("  of it processor time"), cpuMs, QStringLiteral("ms"));
    t.start();
    load_TouZhuBiao(kNext);
    bench::report(QStringLiteral("  of it binding the tickets left to the grid (load_TouZhuBiao)"),
                  double(t.nsecsElapsed()) / 1e6, QStringLiteral("ms"));
}

void everySwitchOn() {
    store_Execute(QStringLiteral("UPDATE 过滤条件使用情况 SET 使用情况=1 WHERE 条件<>45"));
    // Up to 30 recent draws, none of which lies within the picked reds (so none is removed).
    const int latest = latest_QiHao();
    int low = latest;
    for (auto c = store_Query(QStringLiteral("select TOP 30 期号,红球6 from 历史记录 order by 期号 DESC"));
         !c->eof() && c->intValue(1) > 20; c->moveNext())
        low = c->intValue(0);
    store_Execute(QStringLiteral("UPDATE 历史数据过滤 SET 使用状态=1, 最小值=?, 最大值=?, 匹配值=6"),
                  {low, latest});
}

const bench::Register permissive("filters", [] {
    bench::ShippedStore shipped;
    expand();
    everySwitchOn();
    // Every value allowed; position tolerance 0 with every number allowed everywhere; the parity
    // patterns ask for the blue parity that no ticket has.
    bench::everyValueAllowed();
    const int blue =
        store().scalar(QStringLiteral("select 蓝球 from 历史记录 where 期号=?"), {latest_QiHao()}).toInt();
    for (int slot = 1; slot <= 5; ++slot) {
        set_GuoLvFanWei(5001 + 10 * slot, 5006 + 10 * slot, 2);
        set_GuoLvTiaoJian(5007 + 10 * slot, blue % 2);
    }
    timeRun(QStringLiteral("every condition on and permissive"));
    timeRun(QStringLiteral("again on the same tickets"));

    // Typical settings: a middle band of each common measure, the last draw's parity excluded.
    expand();
    bench::typicalConditions();
    set_ShiYongQingKuang(70, 1);
    timeRun(QStringLiteral("typical settings"));
    clearTicketTable();
});

// 条件回测 of the whole shipped history with every condition switched on (the history match over
// every draw before each issue), as permissive as the factory rows leave them.
const bench::Register backtest("backtest", [] {
    bench::ShippedStore store;
    dovrex::store_Execute(QStringLiteral("UPDATE 过滤条件使用情况 SET 使用情况=1"));
    dovrex::store_Execute(
        QStringLiteral("UPDATE 历史数据过滤 SET 使用状态=1, 最小值=2003001, 最大值=2099001, 匹配值=6"));
    const dovrex::IssueNumber from = dovrex::earliest_QiHao(), to = dovrex::latest_QiHao();
    QElapsedTimer timer;
    timer.start();
    const dovrex::BacktestResult r = dovrex::run_Backtest(from, to);
    bench::report(QStringLiteral("条件回测 of %1 draws, every condition on: %2 survived")
                      .arg(r.draws.size())
                      .arg(r.survived),
                  double(timer.nsecsElapsed()) / 1e6, QStringLiteral("ms"));
});

}  // namespace
