#include <sys/resource.h>

#include <QElapsedTimer>
#include <algorithm>

#include "bench.h"
#include "filters/condition_store.h"
#include "floor.h"
#include "history/history_queries.h"
#include "pipeline/space_init.h"
#include "screen/prepared.h"
#include "screen/shared_state.h"
#include "store/store.h"

namespace {

using namespace dovrex;

constexpr IssueNumber kNext = bench::kNextIssue;

double peakMb() {
    rusage u{};
    getrusage(RUSAGE_SELF, &u);
    return double(u.ru_maxrss) / 1024.0;
}

// The floor of a pass over the whole space: every ticket visited in the expansion's order with one
// sum check, then as many rows inserted as the pass writes.
double floorMs(long long rowsWritten) {
    QElapsedTimer t;
    t.start();
    volatile long long kept = 0;  // the loop must run, not be folded away
    int r[7] = {};
    for (r[1] = 1; r[1] <= 28; ++r[1])
        for (r[2] = r[1] + 1; r[2] <= 29; ++r[2])
            for (r[3] = r[2] + 1; r[3] <= 30; ++r[3])
                for (r[4] = r[3] + 1; r[4] <= 31; ++r[4])
                    for (r[5] = r[4] + 1; r[5] <= 32; ++r[5])
                        for (r[6] = r[5] + 1; r[6] <= 33; ++r[6])
                            for (int b = 1; b <= kBlueCount; ++b)
                                kept = kept + ((r[1] + r[2] + r[3] + r[4] + r[5] + r[6] + b) % 7 != 0);
    {
        Transaction tx(store());
        Prepared insert(
            QStringLiteral("INSERT INTO 日志表 (ID,序号,期号,红球1,红球2,红球3,红球4,红球5,红球6,蓝球) "
                           "VALUES (?,?,?,1,2,3,4,5,6,1)"));
        for (long long i = 1; i <= rowsWritten; ++i)
            insert.bind(1, 10000000 + i).bind(2, i).bind(3, 1).exec();
        store_Execute(QStringLiteral("DELETE FROM 日志表 WHERE 期号=1"));
    }
    const double ms = double(t.nsecsElapsed()) / 1e6;
    if (kept < 0) bench::report(QStringLiteral("never"), 0, QString());  // keeps the loop
    return ms;
}

void timeSpace(const QString& what) {
    double best = 1e18;
    SpaceResult r;
    for (int run = 0; run < 3; ++run) {
        QElapsedTimer t;
        t.start();
        r = filter_Space(kNext, kTicketLimit);
        best = std::min(best, double(t.nsecsElapsed()) / 1e6);
    }
    const long long written = r.kept <= kTicketLimit ? r.kept : 0;
    double floor = 1e18;
    for (int run = 0; run < 3; ++run) floor = std::min(floor, floorMs(written));
    bench::reportAgainst(
        QStringLiteral("大底 filter_Space, 33 reds x 16 blues, %1: %2 -> %3 kept (%4 conditions), "
                       "best of 3")
            .arg(what)
            .arg(r.space)
            .arg(r.kept)
            .arg(r.removedBy.size()),
        best, floor, QStringLiteral("loop+insert"));
    bench::report(QStringLiteral("  its floor: a loop over every ticket with one sum check, %1 rows inserted")
                      .arg(written),
                  floor, QStringLiteral("ms"));
    QElapsedTimer t;
    t.start();
    const int rows = init_TouZhu(kNext);
    bench::report(QStringLiteral("  第1步 in 大底 mode, the same: %1 rows written").arg(rows),
                  double(t.nsecsElapsed()) / 1e6, QStringLiteral("ms"));
    bench::report(QStringLiteral("  peak memory of the process so far"), peakMb(), QStringLiteral("MB"));
}

const bench::Register space("space", [] {
    bench::ShippedStore shipped;
    store_Execute(QStringLiteral("DELETE FROM 日志表"));
    resetConditionSet();
    set_GuoLvFanWei(1, kRedCount, 1);
    set_GuoLvFanWei(101, 100 + kBlueCount, 1);
    set_SpaceMode(true);

    // Every condition on and permissive, as the filters group measures them.
    store_Execute(QStringLiteral("UPDATE 过滤条件使用情况 SET 使用情况=1 WHERE 条件<>45"));
    const int latest = latest_QiHao();
    store_Execute(QStringLiteral("UPDATE 历史数据过滤 SET 使用状态=1, 最小值=?, 最大值=?, 匹配值=6"),
                  {prev_QiHao(latest, 29), latest});
    bench::everyValueAllowed();
    for (int slot = 1; slot <= 5; ++slot) {
        // Six odd reds and an odd blue: the pattern that removes fewest (about one ticket in 120).
        set_GuoLvFanWei(5001 + 10 * slot, 5007 + 10 * slot, 1);
    }
    timeSpace(QStringLiteral("every condition on and permissive"));

    // The typical set: a middle band of each common measure.
    bench::blankRoutine();
    set_GuoLvFanWei(1, kRedCount, 1);
    set_GuoLvFanWei(101, 100 + kBlueCount, 1);
    set_SpaceMode(true);
    bench::typicalConditions();
    set_ShiYongQingKuang(70, 1);
    timeSpace(QStringLiteral("typical settings"));
    store_Execute(QStringLiteral("DELETE FROM 日志表"));
});

}  // namespace
