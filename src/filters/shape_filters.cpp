// The filters that ask how the six reds spread over the groups of a partition of 01..33.

#include <QStringList>
#include <bit>
#include <cstdint>

#include "filters/filter_families.h"
#include "screen/shared_state.h"
#include "store/store.h"

namespace dovrex {

namespace {

struct ShapeKey {
    int maxCount, groups, index;
};

// The ten keys of the tail and step shapes. "5,1" sits at (5, 1), where no ticket can be: a ticket
// with five reds in one group and one in another finds no entry and reads index 0.
const ShapeKey kTenKeys[] = {{1, 6, 0}, {2, 5, 1}, {2, 4, 2}, {2, 3, 3}, {3, 4, 4},
                             {3, 3, 5}, {3, 2, 6}, {4, 3, 7}, {4, 2, 8}, {5, 1, 9}};
const ShapeKey kHeadKeys[] = {{2, 4, 0}, {2, 3, 1}, {3, 4, 2}, {3, 3, 3}, {3, 2, 4},
                              {4, 3, 5}, {4, 2, 6}, {5, 2, 7}, {6, 1, 8}};

struct ShapeSpec {
    const char16_t* name;
    const char16_t* prefix;  // group columns prefix0..prefix(groups-1)
    int groups;
    int maxCountLo, maxCountHi, groupsLo, groupsHi;  // the key table's bounds
    bool head;
};

const ShapeSpec kShapes[] = {
    {u"filter_WeiShuXingShi", u"尾", 10, 1, 4, 2, 6, false},
    {u"filter_JianJu9", u"九", 10, 1, 4, 2, 6, false},
    {u"filter_JianJu7", u"七", 10, 1, 5, 1, 6, false},
    {u"filter_JianJu11", u"十一", 11, 1, 4, 2, 6, false},
    {u"filter_JianJu12", u"十二", 12, 1, 4, 2, 6, false},
    {u"filter_TouShuXingShi", u"头", 10, 1, 6, 1, 6, true},
};

// The groups each number belongs to, and the key table over (maxCount, groups).
struct ShapeTables {
    // The groups of each number as a count of 1 in each group's four bits: the sum over a ticket's
    // six reds counts every group at once (no group can count more than six).
    std::array<std::uint64_t, 34> groupsOf{};
    int groupCount = 0;
    int keys[8][14] = {};
    ShapeSpec form{};
};

ShapeTables readShapeTables(const ShapeSpec& form) {
    ShapeTables t;
    t.form = form;
    t.groupCount = form.groups;
    QStringList cols;
    for (int k = 0; k < form.groups; ++k) cols << QString::fromUtf16(form.prefix) + QString::number(k);
    auto c =
        store_Query(QStringLiteral("select 号码,%1 from 号码特性  ORDER BY INDEX ASC").arg(cols.join(u',')));
    for (; !c->eof(); c->moveNext()) {
        const int x = c->intValue(0);
        if (x < 1 || x > kRedCount) continue;
        t.groupsOf[size_t(x)] = 0;
        for (int k = 0; k < form.groups; ++k)
            if (c->value(k + 1).toInt() != 0) t.groupsOf[size_t(x)] += std::uint64_t(1) << (4 * k);
    }
    // Keys outside the table's bounds are offered on the screen but never match.
    auto enter = [&](const ShapeKey& key) {
        if (key.maxCount >= form.maxCountLo && key.maxCount <= form.maxCountHi &&
            key.groups >= form.groupsLo && key.groups <= form.groupsHi)
            t.keys[key.maxCount][key.groups] = key.index;
    };
    if (form.head)
        for (const ShapeKey& key : kHeadKeys) enter(key);
    else
        for (const ShapeKey& key : kTenKeys) enter(key);
    return t;
}

int shapeIndex(const ShapeTables& t, const Reds& r) {
    std::uint64_t counts = 0;
    for (int i = 1; i <= 6; ++i) counts += t.groupsOf[size_t(r[size_t(i)])];
    // A group counts at least m when adding 8 - m to its four bits sets their top bit; no count
    // exceeds six, so no addition carries into the next group.
    constexpr std::uint64_t kOnes = 0x1111111111111111, kTops = 0x8888888888888888;
    auto atLeast = [counts](int m) { return (counts + std::uint64_t(8 - m) * kOnes) & kTops; };
    const int groups = std::popcount(atLeast(1));
    int maxCount = groups > 0 ? 1 : 0;
    while (maxCount < 6 && atLeast(maxCount + 1) != 0) ++maxCount;
    const ShapeSpec& s = t.form;
    if (maxCount < s.maxCountLo || maxCount > s.maxCountHi || groups < s.groupsLo || groups > s.groupsHi)
        throw StoreError(QStringLiteral("%1: shape (%2, %3) out of range")
                             .arg(QString::fromUtf16(s.name))
                             .arg(maxCount)
                             .arg(groups));
    return t.keys[maxCount][groups];
}

}  // namespace

bool attach_ShapeFilter(FilterDef& def) {
    for (const ShapeSpec& form : kShapes) {
        if (def.name != QString::fromUtf16(form.name)) continue;
        def.prepare = [form](FilterPass&) {
            auto t = std::make_shared<ShapeTables>(readShapeTables(form));
            return TicketTest{[t](const TicketBalls& b) { return shapeIndex(*t, b.reds); }, {}};
        };
        return true;
    }
    return false;
}

}  // namespace dovrex
