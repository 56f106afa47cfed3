#include "filters/condition_store.h"

#include <QHash>
#include <cstdint>
#include <map>
#include <stdexcept>

#include "domain/record_checks.h"
#include "screen/prepared.h"
#include "screen/shared_state.h"

namespace dovrex {

namespace {

// The copy a ConditionReadCache keeps; null when none lives.
struct CachedConditions {
    std::map<int, int> values;  // 过滤条件: ID -> VALUE
    QHash<int, int> switches;   // 过滤条件使用情况: 条件 -> 使用情况
    void reload() {
        values.clear();
        switches.clear();
        for (Prepared q(QStringLiteral("SELECT ID, VALUE FROM 过滤条件")); q.next();)
            values[q.intColumn(0)] = q.intColumn(1);
        for (Prepared q(QStringLiteral("SELECT 条件, 使用情况 FROM 过滤条件使用情况")); q.next();)
            switches[q.intColumn(0)] = q.intColumn(1);
    }
};
CachedConditions* cached = nullptr;

}  // namespace

ConditionReadCache::ConditionReadCache() {
    cached = new CachedConditions;
    cached->reload();
}

ConditionReadCache::~ConditionReadCache() {
    delete cached;
    cached = nullptr;
}

void load_GuoLvFanWei(int minId, int maxId) {
    auto& values = shared().guoLvShuZu;
    if (cached) {
        std::uint8_t index = std::uint8_t(minId % 10);
        for (auto it = cached->values.lower_bound(minId); it != cached->values.end() && it->first <= maxId;
             ++it) {
            if (index >= values.size())
                throw StoreError(QStringLiteral("guoLvShuZu: index %1 out of range").arg(index));
            values[index++] = it->second;
        }
        return;
    }
    Prepared rows(QStringLiteral("SELECT VALUE FROM 过滤条件 WHERE ID>=? AND ID<=? ORDER BY ID ASC"));
    rows.bind(1, minId).bind(2, maxId);
    std::uint8_t index = std::uint8_t(minId % 10);
    while (rows.next()) {
        if (index >= values.size())
            throw StoreError(QStringLiteral("guoLvShuZu: index %1 out of range").arg(index));
        values[index++] = rows.intColumn(0);
    }
}

namespace {
// Every writer of 过滤条件 holds the rows to their ranges (rows the program does not know are
// left to the UPDATE, which finds none of them).
void requireFits(int minId, int maxId, int value) {
    for (int id = minId; id <= maxId; ++id) {
        int low = 0, high = 0;
        if (conditionValueRange(id, low, high) && !conditionValueFits(id, value))
            throw std::invalid_argument(QStringLiteral("过滤条件 %1 不能取值 %2（%3..%4）")
                                            .arg(id)
                                            .arg(value)
                                            .arg(low)
                                            .arg(high)
                                            .toStdString());
    }
}
}  // namespace

void set_GuoLvFanWei(int minId, int maxId, int value) {
    requireFits(minId, maxId, value);
    store_Execute(QStringLiteral("UPDATE 过滤条件 SET VALUE=? WHERE ID>=? AND ID<=?"), {value, minId, maxId});
    if (cached) cached->reload();
}

int get_GuoLvTiaoJian(int id) {
    if (cached) {
        const auto it = cached->values.find(id);
        return it == cached->values.end() ? 0 : it->second;
    }
    return store().scalar(QStringLiteral("select VALUE from 过滤条件 where ID=?"), {id}).toInt();
}

void set_GuoLvTiaoJian(int id, int value) {
    requireFits(id, id, value);
    store_Execute(QStringLiteral("UPDATE 过滤条件 SET VALUE=? WHERE ID=?"), {value, id});
    if (cached && cached->values.count(id)) cached->values[id] = value;
}

void resetRedPicks() {
    store_Execute(QStringLiteral("UPDATE 过滤条件 SET VALUE=0 WHERE ID<40"));
    if (cached) cached->reload();
}
void resetBluePicks() {
    store_Execute(QStringLiteral("UPDATE 过滤条件 SET VALUE=0 WHERE ID>100 and ID<200"));
    if (cached) cached->reload();
}
void resetConditionSet() {
    store_Execute(QStringLiteral("UPDATE 过滤条件 SET VALUE=0 WHERE ID>500"));
    if (cached) cached->reload();
}

namespace {

int countRows(const QString& where) {
    Prepared c(QStringLiteral("SELECT count(*) FROM 过滤条件 WHERE ") + where);
    return c.next() ? c.intColumn(0) : 0;
}

int countBlue(int upper, int value) {
    Prepared c(QStringLiteral("SELECT count(*) FROM 过滤条件 WHERE ID>100 and ID<=? and VALUE=?"));
    c.bind(1, upper).bind(2, value);
    return c.next() ? c.intColumn(0) : 0;
}

}  // namespace

int count_HongTuo() {
    return countRows(QStringLiteral("ID<40 and VALUE=1"));
}
int count_HongDan() {
    return countRows(QStringLiteral("ID<40 and VALUE=2"));
}
int count_LanTuo(int upper) {
    return countBlue(upper, 1);
}
int count_LanDan(int upper) {
    return countBlue(upper, 2);
}

int get_ShiYongQingKuang(int n) {
    if (cached) {
        const auto it = cached->switches.constFind(n);
        if (it == cached->switches.cend())
            throw StoreError(QStringLiteral("过滤条件使用情况: no row %1").arg(n));
        return it.value();
    }
    auto c = store_Query(QStringLiteral("select * from 过滤条件使用情况 where 条件=?"), {n});
    if (c->recordCount() == 0) throw StoreError(QStringLiteral("过滤条件使用情况: no row %1").arg(n));
    return c->intValue(QStringLiteral("使用情况"));
}

void set_ShiYongQingKuang(int n, int value) {
    if (!switchValueFits(value))
        throw std::invalid_argument(QStringLiteral("开关 %1 只能是 0 或 1").arg(n).toStdString());
    if (store_Execute(QStringLiteral("UPDATE 过滤条件使用情况 SET 使用情况=? WHERE 条件=?"), {value, n}) == 0)
        throw StoreError(QStringLiteral("过滤条件使用情况: no row %1").arg(n));
    if (cached) cached->switches[n] = value;
}

}  // namespace dovrex
