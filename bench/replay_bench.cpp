#include <QElapsedTimer>

#include "bench.h"
#include "filters/condition_store.h"
#include "filters/filter_run.h"
#include "floor.h"
#include "history/history_queries.h"
#include "pipeline/shrink.h"
#include "pipeline/ticket_init.h"
#include "results/prize_check.h"
#include "results/replay.h"
#include "screen/scripted_screen.h"
#include "screen/shared_state.h"
#include "screen/ticket_page.h"
#include "store/store.h"

namespace {

using namespace dovrex;

// 20 red drags and blues 1 and 2 (77,520 tickets) under a middle band of the common measures: about
// 5,000 to 7,000 tickets left before the shrink, by draw.
void typicalRoutine() {
    bench::blankRoutine();
    set_GuoLvFanWei(1, 20, 1);
    set_GuoLvFanWei(101, 102, 1);
    bench::typicalConditions();
    set_GuoLvTiaoJian(kShrinkTypeId, 5);
}

// 回测收益 of the last 30 draws at 保五型 (plain), beside the same routine run through 日志表 for
// the newest draw (第1步 + 第2步 + 第3步 + 开奖核对), times 30.
const bench::Register replay("replay", [] {
    bench::ShippedStore store;
    ScriptedScreen ui;
    Screen* before = shared().screen;
    shared().screen = &ui;
    typicalRoutine();
    const IssueNumber to = latest_QiHao(), from = prev_QiHao(to, 29);
    ReplaySettings settings = replay_DefaultSettings();
    QElapsedTimer t;
    t.start();
    long long kept = 0;
    const ReplayResult r = run_Replay(from, to, settings, [&](int, int) { return false; });
    const double replayMs = double(t.nsecsElapsed()) / 1e6;
    for (const ReplayDraw& d : r.draws) kept += d.kept;

    t.start();
    init_TouZhu(to);
    run_GuoLv(to);
    run_SuoShui(5, to);
    check_KaiJiang(to);
    const double oneDrawMs = double(t.nsecsElapsed()) / 1e6;
    bench::reportAgainst(QStringLiteral("回测收益 of %1 draws, %2 tickets a draw before 保五型, %3 after")
                             .arg(r.draws.size())
                             .arg(r.draws.isEmpty() ? 0 : kept / r.draws.size())
                             .arg(r.draws.isEmpty() ? 0 : r.cost / kTicketPrice / r.draws.size()),
                         replayMs, oneDrawMs * double(r.draws.size()),
                         QStringLiteral("the pipeline on 日志表"));
    clearTicketTable();
    shared().screen = before;
});

}  // namespace
