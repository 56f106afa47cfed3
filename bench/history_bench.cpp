#include <QElapsedTimer>

#include "bench.h"
#include "history/derived_columns.h"
#include "history/history_queries.h"
#include "screen/shared_state.h"

namespace {

const bench::Register recalcWholeHistory("history", [] {
    bench::ShippedStore store;
    const auto first = dovrex::earliest_QiHao();
    const auto last = dovrex::latest_QiHao();
    const int draws = dovrex::store_Query(QStringLiteral("select count(*) from 历史记录"))->intValue(0);
    QElapsedTimer t;
    t.start();
    dovrex::recalc_LiShiLie(first, last, false);
    bench::report(
        QStringLiteral("recalc_LiShiLie over the whole history (%1 draws, temperatures included)").arg(draws),
        double(t.nsecsElapsed()) / 1e6, QStringLiteral("ms"));
});

}  // namespace
