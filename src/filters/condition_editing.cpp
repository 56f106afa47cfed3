#include "filters/condition_editing.h"

#include <algorithm>

#include "domain/condition_catalogue.h"
#include "domain/metrics.h"
#include "filters/condition_pages.h"
#include "filters/condition_store.h"
#include "filters/history_range.h"
#include "history/history_queries.h"
#include "screen/shared_state.h"
#include "store/store.h"

namespace dovrex {

namespace {

// The condition whose value list a page shows alone; nullptr for the other pages.
const ConditionEntry* listConditionOf(int tab) {
    const ConditionEntry* found = nullptr;
    for (const ConditionEntry& c : conditionCatalogue()) {
        if (c.tab != tab || c.lines == LineKind::None) continue;
        if (found) return nullptr;
        found = &c;
    }
    return found;
}

}  // namespace

QString conditionSummary(int tab) {
    const ConditionEntry* condition = listConditionOf(tab);
    if (!condition) return {};
    if (condition->report == ReportKind::Runs)
        return to_QuanJiao(
            rangeRuns(condition->minId, condition->maxId, condition->minId, QStringLiteral(" , ")));
    const QList<ConditionList> lists = conditionLists(tab);
    const ConditionList& list = lists[0];
    const int first = list.lines.first().id;
    const int last = list.lines.last().id;
    if (condition->lines != LineKind::Numbers) {
        QString out;
        auto c = store_Query(
            QStringLiteral("select ID, VALUE from 过滤条件 where ID>=%1 and ID<=%2 order by ID asc")
                .arg(first)
                .arg(last));
        for (; !c->eof(); c->moveNext()) {
            if (c->intValue(1) <= 0) continue;
            const int index = c->intValue(0) - first;
            QString key = list.lines.value(index).text;
            key = key.mid(key.indexOf(u'=') + 1);
            out += QStringLiteral("（") + key + QStringLiteral("）");
        }
        return out;
    }
    // Values counted from the first line's number.
    const QString firstText = list.lines.first().text;
    const int firstValue = firstText.mid(firstText.indexOf(u'=') + 1).toInt();
    return to_QuanJiao(rangeRuns(first, last, first - firstValue, QStringLiteral(" , ")));
}

std::array<bool, 34> haoMaTeXing(const QString& column) {
    std::array<bool, 34> members{};
    auto c = store_Query(QStringLiteral("select 号码, [%1] from 号码特性 order by 号码 asc").arg(column));
    for (; !c->eof(); c->moveNext()) {
        const int n = c->intValue(0);
        if (n >= 1 && n <= kRedCount) members[n] = c->intValue(1) != 0;
    }
    return members;
}

bool toggleNumberTrait(const QString& column, int n) {
    auto c = store_Query(QStringLiteral("select [%1] from 号码特性 where 号码=%2").arg(column).arg(n));
    if (c->recordCount() == 0) return false;
    const bool now = c->intValue(0) == 0;
    store_Execute(QStringLiteral("UPDATE 号码特性 SET [%1]=? WHERE 号码=?").arg(column), {now ? 1 : 0, n});
    return now;
}

void setNumberTrait(const QString& column, const std::array<bool, 34>& members) {
    Transaction tx(store());
    for (int n = 1; n <= kRedCount; ++n)
        store_Execute(QStringLiteral("UPDATE 号码特性 SET [%1]=? WHERE 号码=?").arg(column),
                      {members[n] ? 1 : 0, n});
}

void clearIntervalPartition() {
    {
        Transaction tx(store());
        store_Execute(QStringLiteral("UPDATE 号码特性 SET 区间1=0, 区间2=0, 区间3=0, 区间4=0"));
        for (int n = 16; n <= 19; ++n) set_ShiYongQingKuang(n, 0);
    }
    screen().ui_Message(QStringLiteral("请注意，重新划分区间后需要重新设置“区间过滤”的过滤条件。"));
}

QString quJianHaoMa(int k) {
    const auto members = haoMaTeXing(QStringLiteral("区间%1").arg(k));
    QStringList texts;
    for (int n = 1; n <= kRedCount; ++n)
        if (members[n]) texts << to_QuanJiao(twoDigits(n));
    return texts.join(u' ');
}

QString customGroupColumn(int k) {
    return QStringLiteral("自定义组%1").arg(k);
}

int customGroupSwitch(int k) {
    const ConditionEntry* c = conditionOfFilter(QStringLiteral("filter_ZiDingYiZu"), k);
    return c ? c->switchNo : 0;
}

int customGroupBase(int k) {
    const ConditionEntry* c = conditionOfFilter(QStringLiteral("filter_ZiDingYiZu"), k);
    return c ? c->minId : 0;
}

QString zdyAlias(int k) {
    auto c = store_Query(QStringLiteral("select 别名 from 自定义别名 where 序号=%1").arg(k));
    return c->recordCount() > 0 ? c->value(0).toString() : customGroupColumn(k);
}

bool renameCustomGroup(int k, const QString& alias) {
    if (alias.isEmpty()) return false;
    auto c = store_Query(QStringLiteral("select * from 自定义别名 where 序号=%1").arg(k));
    if (c->recordCount() == 0) return false;
    c->setValue(QStringLiteral("别名"), alias);
    c->update();
    return true;
}

void clearCustomGroup(int k) {
    Transaction tx(store());
    store_Execute(QStringLiteral("UPDATE 号码特性 SET [%1]=0").arg(customGroupColumn(k)));
    set_GuoLvFanWei(customGroupBase(k), customGroupBase(k) + 9, 0);
    store_Execute(QStringLiteral("UPDATE 自定义别名 SET 别名=自定义名称 WHERE 序号=?"), {k});
}

int zdyAllowedCounts(int k) {
    return store()
        .scalar(QStringLiteral("select count(*) from 过滤条件 where ID>=? and ID<=? and VALUE>0"),
                {customGroupBase(k), customGroupBase(k) + 6})
        .toInt();
}

std::array<int, 7> readParityPatterns(int slot) {
    std::array<int, 7> values{};
    for (int p = 1; p <= 7; ++p) values[p - 1] = get_GuoLvTiaoJian(5000 + 10 * slot + p);
    return values;
}

std::array<int, 7> shangQiDanShuang() {
    std::array<int, 7> values;
    values.fill(-1);
    auto c = store_Query(QStringLiteral("select top 1 * from 历史记录 order by 期号 desc"));
    if (c->recordCount() == 0) return values;
    for (int p = 1; p <= 6; ++p) values[p - 1] = c->intValue(QStringLiteral("红球%1").arg(p)) % 2;
    values[6] = c->intValue(QStringLiteral("蓝球")) % 2;
    return values;
}

LiShiGuoLv readHistoryMatch() {
    LiShiGuoLv s;
    auto c = store_Query(QStringLiteral("select * from 历史数据过滤"));
    if (c->recordCount() == 0) return s;
    s.on = c->intValue(QStringLiteral("使用状态")) == 1;
    s.low = c->intValue(QStringLiteral("最小值"));
    s.high = c->intValue(QStringLiteral("最大值"));
    s.match = c->intValue(QStringLiteral("匹配值"));
    return s;
}

void writeHistoryMatch(const LiShiGuoLv& s) {
    auto c = store_Query(QStringLiteral("select * from 历史数据过滤"));
    if (c->recordCount() == 0) {
        store_Execute(
            QStringLiteral("INSERT INTO 历史数据过滤 (使用状态, 最小值, 最大值, 匹配值) VALUES (?,?,?,?)"),
            {s.on ? 1 : 0, s.low, s.high, s.match});
        return;
    }
    c->setValue(QStringLiteral("使用状态"), s.on ? 1 : 0);
    c->setValue(QStringLiteral("最小值"), s.low);
    c->setValue(QStringLiteral("最大值"), s.high);
    c->setValue(QStringLiteral("匹配值"), s.match);
    c->update();
}

void follow_NewestDraw(IssueNumber newestBefore) {
    const IssueNumber newest = latest_QiHao();
    if (newest <= newestBefore ||
        store().scalar(QStringLiteral("select count(*) from 历史数据过滤")).toInt() == 0)
        return;
    LiShiGuoLv s = readHistoryMatch();
    if (s.high != newestBefore) return;
    const int draws = std::max(1, countIssues(s.low, s.high));
    s.high = newest;
    s.low = top_QiHao(newest, draws);
    writeHistoryMatch(s);
}

int countIssues(IssueNumber low, IssueNumber high) {
    return store()
        .scalar(QStringLiteral("select count(*) from 历史记录 where 期号>=? and 期号<=?"), {low, high})
        .toInt();
}

}  // namespace dovrex
