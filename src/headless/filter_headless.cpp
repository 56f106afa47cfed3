#include "headless/filter_headless.h"

#include "domain/condition_catalogue.h"
#include "filters/backtest.h"
#include "filters/filter_families.h"
#include "headless/headless_runner.h"
#include "pipeline/space_filter.h"
#include "screen/shared_state.h"
#include "screen/ticket_page.h"
#include "store/store.h"

namespace dovrex {

bool headless_HistoryFilter(HeadlessRunner& r, const HeadlessArgs& a) {
    if (!r.requireStore()) return false;
    const QString state = a.words.value(0);
    if (state != QLatin1String("on") && state != QLatin1String("off"))
        return r.fail(QStringLiteral("on or off?"));
    store_Execute(QStringLiteral("UPDATE 历史数据过滤 SET 使用状态=?"),
                  {state == QLatin1String("on") ? 1 : 0});
    if (a.words.size() > 1) {
        int low = 0, high = 0, match = 0;
        if (!a.intAt(r, 1, low) || !a.intAt(r, 2, high) || !a.intAt(r, 3, match)) return false;
        store_Execute(QStringLiteral("UPDATE 历史数据过滤 SET 最小值=?, 最大值=?, 匹配值=?"),
                      {low, high, match});
    }
    auto c = store_Query(QStringLiteral("select 使用状态,最小值,最大值,匹配值 from 历史数据过滤"));
    if (c->eof()) return r.fail(QStringLiteral("历史数据过滤 has no row"));
    r.print(QStringLiteral("history filter %1 %2..%3 match %4")
                .arg(c->intValue(0) == 1 ? QStringLiteral("on") : QStringLiteral("off"))
                .arg(c->intValue(1))
                .arg(c->intValue(2))
                .arg(c->intValue(3)));
    return true;
}

bool headless_GroupPreset(HeadlessRunner& r, const HeadlessArgs& a) {
    if (!r.requireStore()) return false;
    if (a.words.isEmpty()) {
        for (const QString& item : listGroupPresets()) r.print(item);
        return true;
    }
    int k = 0;
    if (!a.intAt(r, 0, k)) return false;
    if (k < 1 || k > 20) return r.fail(QStringLiteral("groups are 1..20"));
    const QString item = a.text.mid(a.words[0].size()).trimmed();
    if (!makeGroupPreset(k, item)) {
        r.print(QStringLiteral("unchanged"));
        return true;
    }
    QStringList members;
    for (auto c = store_Query(
             QStringLiteral("select 号码 from 号码特性 where [自定义组%1]<>0 order by 号码").arg(k));
         !c->eof(); c->moveNext())
        members << QString::number(c->intValue(0));
    r.print(QStringLiteral("group %1: %2").arg(k).arg(members.join(u' ')));
    return true;
}

bool headless_Backtest(HeadlessRunner& r, const HeadlessArgs& a) {
    int from = 0, to = 0;
    if (!r.requireStore() || !a.intAt(r, 0, from) || !a.intAt(r, 1, to)) return false;
    if (from > to) return r.fail(QStringLiteral("the range runs from the older issue to the newer"));
    const BacktestResult result = run_Backtest(from, to);
    for (const BacktestDraw& d : result.draws)
        r.print(d.failed.isEmpty() ? QStringLiteral("draw %1 ok").arg(d.issue)
                                   : QStringLiteral("draw %1 fail %2").arg(d.issue).arg(d.failed.join(u',')));
    // Beside each pass rate, what the condition keeps of the current picks' space for the issue.
    const SpaceResult space = filter_Space(get_BiaoGeQiHao(), 0, {}, true);
    for (const BacktestCondition& c : result.conditions) {
        long long kept = 0;
        for (const SpaceRemoval& s : space.removedBy)
            if (s.label == c.label) kept = s.passed;
        r.print(QStringLiteral("condition %1 %2/%3 space %4/%5")
                    .arg(c.label)
                    .arg(c.passed)
                    .arg(c.total)
                    .arg(kept)
                    .arg(space.space));
    }
    r.print(QStringLiteral("survived %1/%2").arg(result.survived).arg(result.draws.size()));
    return true;
}

bool headless_Tolerance(HeadlessRunner& r, const HeadlessArgs& a) {
    int k = 0;
    if (!r.requireStore() || !a.intAt(r, 0, k)) return false;
    if (k < 0 || k > kFilterToleranceMax)
        return r.fail(QStringLiteral("k is 0..%1").arg(kFilterToleranceMax));
    set_FilterTolerance(k);
    r.print(QStringLiteral("tolerance %1").arg(filter_Tolerance()));
    return true;
}

}  // namespace dovrex
