#include "filters/condition_store.h"

#include <cstdint>

#include "screen/prepared.h"
#include "screen/shared_state.h"

namespace dovrex {

void load_GuoLvFanWei(int minId, int maxId) {
    auto& values = shared().guoLvShuZu;
    Prepared rows(QStringLiteral("SELECT VALUE FROM 过滤条件 WHERE ID>=? AND ID<=? ORDER BY ID ASC"));
    rows.bind(1, minId).bind(2, maxId);
    std::uint8_t index = std::uint8_t(minId % 10);
    while (rows.next()) {
        if (index >= values.size())
            throw StoreError(QStringLiteral("guoLvShuZu: index %1 out of range").arg(index));
        values[index++] = rows.intColumn(0);
    }
}

void set_GuoLvFanWei(int minId, int maxId, int value) {
    store_Execute(QStringLiteral("UPDATE 过滤条件 SET VALUE=? WHERE ID>=? AND ID<=?"), {value, minId, maxId});
}

int get_GuoLvTiaoJian(int id) {
    return store().scalar(QStringLiteral("select VALUE from 过滤条件 where ID=?"), {id}).toInt();
}

void set_GuoLvTiaoJian(int id, int value) {
    store_Execute(QStringLiteral("UPDATE 过滤条件 SET VALUE=? WHERE ID=?"), {value, id});
}

void resetRedPicks() {
    store_Execute(QStringLiteral("UPDATE 过滤条件 SET VALUE=0 WHERE ID<40"));
}
void resetBluePicks() {
    store_Execute(QStringLiteral("UPDATE 过滤条件 SET VALUE=0 WHERE ID>100 and ID<200"));
}
void resetConditionSet() {
    store_Execute(QStringLiteral("UPDATE 过滤条件 SET VALUE=0 WHERE ID>500"));
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
    auto c = store_Query(QStringLiteral("select * from 过滤条件使用情况 where 条件=?"), {n});
    if (c->recordCount() == 0) throw StoreError(QStringLiteral("过滤条件使用情况: no row %1").arg(n));
    return c->intValue(QStringLiteral("使用情况"));
}

void set_ShiYongQingKuang(int n, int value) {
    if (store_Execute(QStringLiteral("UPDATE 过滤条件使用情况 SET 使用情况=? WHERE 条件=?"), {value, n}) == 0)
        throw StoreError(QStringLiteral("过滤条件使用情况: no row %1").arg(n));
}

}  // namespace dovrex
