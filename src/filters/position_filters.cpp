// The filters that look at a ticket position by position: 号码定位 and the parity patterns.

#include <QList>
#include <algorithm>

#include "domain/condition_catalogue.h"
#include "filters/condition_pages.h"
#include "filters/condition_store.h"
#include "filters/filter_families.h"
#include "history/history_queries.h"
#include "screen/run_panel.h"
#include "screen/shared_state.h"
#include "store/store.h"

namespace dovrex {

namespace {

// e[number][position] is 1 when the number is wrong at the position; a position that is off has
// no wrong number.
struct PositionErrors {
    int e[34][8] = {};
    int enabled = 0;
};

PositionErrors readPositionErrors() {
    PositionErrors p;
    int on[8] = {};
    {
        auto c = store_Query(QStringLiteral(
            "select 使用情况 from 过滤条件使用情况 where 条件>=30 and 条件<=36 order by 条件 asc"));
        for (int pos = 1; !c->eof() && pos <= 7; c->moveNext(), ++pos) on[pos] = c->intValue(0) == 1;
    }
    for (int pos = 1; pos <= 7; ++pos) {
        if (!on[pos]) continue;
        ++p.enabled;
        for (int n = 1; n <= kRedCount; ++n) p.e[n][pos] = 1;
        auto c = store_Query(QStringLiteral("select 号码 from 号码特性 where 第%1位 <>0").arg(pos));
        for (; !c->eof(); c->moveNext()) {
            const int x = c->intValue(0);
            if (x >= 1 && x <= kRedCount) p.e[x][pos] = 0;
        }
    }
    return p;
}

QString toleranceLabel(int t) {
    return QStringLiteral("[号码定位,容错值=") + to_QuanJiao(t) + QStringLiteral("]");
}

void attachDingWei(FilterDef& def) {
    auto errors = std::make_shared<PositionErrors>();
    auto tolerance = std::make_shared<int>(0);
    def.afterSwitch = [errors, tolerance](FilterPass& pass) {
        *errors = readPositionErrors();
        *tolerance = get_GuoLvTiaoJian(kToleranceId);
        if (errors->enabled == 0) return false;
        if (*tolerance >= errors->enabled) {
            // No ticket can fail: said, and no pass.
            log_Set(pass.savedLog + kCrLf2 + toleranceLabel(*tolerance) +
                    QStringLiteral(" <容错值太大无法过滤掉号码.>"));
            return false;
        }
        pass.resultLabel = toleranceLabel(*tolerance);
        return true;
    };
    def.prepare = [errors, tolerance](FilterPass&) {
        const PositionErrors e = *errors;
        const int t = *tolerance;
        bool blueMatters = false;  // only when the blue's position is on and refuses a blue
        for (int n = 1; n <= kBlueCount; ++n) blueMatters = blueMatters || e.e[n][7] != 0;
        return TicketTest{{},
                          [e, t](const TicketBalls& b) {
                              if (b.blue < 1 || b.blue > kRedCount)
                                  throw StoreError(QStringLiteral("蓝球 = %1 out of range").arg(b.blue));
                              int wrong = e.e[b.blue][7];
                              for (int i = 1; i <= 6; ++i) wrong += e.e[b.reds[size_t(i)]][i];
                              return wrong <= t;
                          },
                          blueMatters};
    };
}

QList<int> patternRows(int firstId) {
    QList<int> values;
    for (int i = 0; i < 7; ++i) values << get_GuoLvTiaoJian(firstId + i);
    return values;
}

void attachDanShuang(FilterDef& def) {
    const int slot = def.slot;
    auto pattern = std::make_shared<QString>();
    auto known = std::make_shared<bool>(true);
    if (slot == 0) {
        def.dependsOnIssue = true;
        // Before the switch: the rows follow the last run even while the slot is off.
        def.beforeSwitch = [pattern, known](FilterPass& pass) {
            *known = make_ShangQiDanShuang(prev_QiHao(pass.issue, 1), *pattern);
        };
    }
    def.afterSwitch = [slot, pattern, known, label = def.label, firstId = def.minId](FilterPass& pass) {
        if (!*known)
            throw StoreError(QStringLiteral("历史记录: no draw before %1 for its parity").arg(pass.issue));
        if (slot != 0) *pattern = text_DanShuang(patternRows(firstId));
        log_Set(pass.savedLog + kCrLf2 + label + QStringLiteral(" ") + *pattern);
        pass.resultLabel = label + QStringLiteral(" ") + *pattern + kCrLf2;
        return true;
    };
    // A ticket that equals the pattern goes; "*" equals either parity. The reds' parities and the
    // pattern are bit masks over the six places, "*" a place that does not matter.
    def.prepare = [](FilterPass&) {
        const ConditionArray& g = shared().guoLvShuZu;
        unsigned odd = 0, care = 0;
        for (int i = 1; i <= kRedsPerTicket; ++i) {
            if (g[size_t(i)] == 2) continue;
            care |= 1u << i;
            if (g[size_t(i)] == 1) odd |= 1u << i;
        }
        const int blue = g[7];
        TicketTest test;
        // A place holding anything but 0, 1 or 2 never equals a ticket's: nothing goes.
        if (std::any_of(g.begin() + 1, g.begin() + 8, [](int v) { return v < 0 || v > 2; })) {
            test.accept = [](const TicketBalls&) { return true; };
            return test;
        }
        auto redsDiffer = [odd, care](const TicketBalls& b) {
            unsigned parities = 0;
            for (int i = 1; i <= kRedsPerTicket; ++i) parities |= unsigned(b.reds[size_t(i)] & 1) << i;
            return ((parities ^ odd) & care) != 0;
        };
        test.accept = [redsDiffer, blue](const TicketBalls& b) {
            return redsDiffer(b) || (blue != 2 && (b.blue & 1) != blue);
        };
        test.readsBlue = blue != 2;
        if (test.readsBlue) test.redsPass = redsDiffer;
        return test;
    };
}

}  // namespace

bool make_ShangQiDanShuang(IssueNumber prevIssue, QString& text) {
    auto c = store_Query(QStringLiteral("select * from 历史记录 where 期号=?"), {prevIssue});
    if (c->eof()) return false;
    QList<int> values;
    for (int i = 1; i <= 6; ++i) values << c->intValue(QStringLiteral("红球%1").arg(i)) % 2;
    values << c->intValue(QStringLiteral("蓝球")) % 2;
    {
        Transaction tx(store());
        for (int i = 0; i < 7; ++i) set_GuoLvTiaoJian(kParityRowsFirstId + i, values[i]);
    }
    text = text_DanShuang(values);
    return true;
}

bool attach_PositionFilter(FilterDef& def) {
    if (def.name == u"filter_DingWei")
        attachDingWei(def);
    else if (def.name == u"filter_DanShuang")
        attachDanShuang(def);
    else
        return false;
    return true;
}

}  // namespace dovrex
