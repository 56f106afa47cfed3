// The filters that count how many of the six reds belong to a class of numbers.

#include "filters/filter_families.h"
#include "screen/shared_state.h"
#include "store/store.h"

namespace dovrex {

NumberTable traitTable(const QString& column, bool complement) {
    NumberTable t{};
    auto c = store_Query(QStringLiteral("select 号码,%1 from 号码特性  ORDER BY INDEX ASC").arg(column));
    for (; !c->eof(); c->moveNext()) {
        const int x = c->intValue(0);
        if (x < 1 || x > kRedCount) continue;
        const bool member = c->value(1).toInt() != 0;
        t[size_t(x)] = member != complement ? 1 : 0;
    }
    return t;
}

namespace {

std::function<TicketTest(FilterPass&)> countOf(const QString& column, bool complement) {
    return [column, complement](FilterPass&) {
        const NumberTable t = traitTable(column, complement);
        return TicketTest{[t](const TicketBalls& b) { return sumOver(t, b.reds); }, {}};
    };
}

std::function<TicketTest(FilterPass&)> parityCount(int odd) {
    return [odd](FilterPass&) {
        NumberTable t{};
        for (int n = 1; n <= kRedCount; ++n) t[size_t(n)] = n % 2 == odd ? 1 : 0;
        return TicketTest{[t](const TicketBalls& b) { return sumOver(t, b.reds); }, {}};
    };
}

}  // namespace

bool attach_CountFilter(FilterDef& def) {
    const QString& n = def.name;
    if (n == u"filter_JiShuGeShu") {
        def.prepare = parityCount(1);
    } else if (n == u"filter_OuShuGeShu") {
        def.prepare = parityCount(0);
    } else if (n == u"filter_DaShuGeShu") {
        def.prepare = countOf(QStringLiteral("大数"), false);
    } else if (n == u"filter_XiaoShuGeShu") {
        // The complement of 大数, so that 大数个数 + 小数个数 is always 6.
        def.prepare = countOf(QStringLiteral("大数"), true);
    } else if (n == u"filter_GaoWeiMaGeShu") {
        def.prepare = countOf(QStringLiteral("高尾码"), false);
    } else if (n == u"filter_DiWeiMaGeShu") {
        // The complement of 高尾码; the column 低尾码 is not read here.
        def.prepare = countOf(QStringLiteral("高尾码"), true);
    } else if (n == u"filter_QuJian") {
        if (def.slot < 1 || def.slot > 4) return false;
        def.prepare = countOf(QStringLiteral("区间%1").arg(def.slot), false);
    } else if (n == u"filter_ZiDingYiZu") {
        if (def.slot < 1 || def.slot > 20) return false;
        def.prepare = countOf(QStringLiteral("自定义组%1").arg(def.slot), false);
    } else {
        return false;
    }
    return true;
}

}  // namespace dovrex
