// The filters that measure one number of the six reds against a set of allowed values.

#include <algorithm>

#include "domain/metrics.h"
#include "filters/filter_families.h"
#include "screen/shared_state.h"

namespace dovrex {

namespace {

int redSum(const TicketBalls& t) {
    const Reds& r = t.reds;
    return r[1] + r[2] + r[3] + r[4] + r[5] + r[6];
}

// A sum over a per-number table.
std::function<TicketTest(FilterPass&)> tableSum(int (*entry)(int)) {
    return [entry](FilterPass&) {
        NumberTable t{};
        for (int n = 1; n <= kRedCount; ++n) t[size_t(n)] = entry(n);
        return TicketTest{[t](const TicketBalls& b) { return sumOver(t, b.reds); }, {}};
    };
}

// Span and largest gap read the marked numbers, not the ticket's order.
int span(const TicketBalls& b) {
    const auto [lo, hi] = std::minmax_element(b.reds.begin() + 1, b.reds.end());
    return *hi - *lo;
}

int largestGap(const TicketBalls& b) {
    Reds r = b.reds;
    std::sort(r.begin() + 1, r.end());
    int gap = 0;
    for (int i = 1; i < 6; ++i) gap = std::max(gap, r[size_t(i + 1)] - r[size_t(i)]);
    return gap;
}

TicketTest plainValue(int (*value)(const TicketBalls&)) {
    return TicketTest{value, {}};
}

}  // namespace

bool attach_RangeFilter(FilterDef& def) {
    const QString& n = def.name;
    if (n == u"filter_HeZhi") {
        def.prepare = [](FilterPass&) { return plainValue(redSum); };
    } else if (n == u"filter_HeZhiWei") {
        def.prepare = [](FilterPass&) {
            return plainValue([](const TicketBalls& b) { return redSum(b) % 10; });
        };
    } else if (n == u"filter_TouShuHeZhi") {
        def.prepare = tableSum([](int x) { return x / 10; });
    } else if (n == u"filter_WeiShuHeZhi") {
        def.prepare = tableSum([](int x) { return x % 10; });
    } else if (n == u"filter_JiShuHeZhi") {
        def.prepare = tableSum([](int x) { return x % 2 ? x : 0; });
    } else if (n == u"filter_OuShuHeZhi") {
        def.prepare = tableSum([](int x) { return x % 2 ? 0 : x; });
    } else if (n == u"filter_KuaDu") {
        def.prepare = [](FilterPass&) { return plainValue(span); };
    } else if (n == u"filter_JianJuMax") {
        def.prepare = [](FilterPass&) { return plainValue(largestGap); };
    } else if (n == u"filter_LianHao") {
        // The run pattern code is the index of its key, 3450 + code.
        def.prepare = [](FilterPass&) {
            return plainValue([](const TicketBalls& b) { return calc_LianHaoMax(b.reds); });
        };
    } else if (n == u"filter_AC") {
        def.prepare = [](FilterPass&) {
            return plainValue([](const TicketBalls& b) { return calc_AC(b.reds); });
        };
    } else {
        return false;
    }
    return true;
}

}  // namespace dovrex
