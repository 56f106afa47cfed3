// The rows a new store and the shipped files start with.
#include <QFile>
#include <QSet>

#include "domain/condition_catalogue.h"
#include "domain/date_value.h"
#include "filters/condition_pages.h"
#include "filters/filter_run.h"
#include "store/pack.h"
#include "support/table_rows.h"
#include "support/test_support.h"

namespace dovrex::test {
namespace {

QList<int> allConditionIds() {
    QList<int> ids;
    for (const auto& [lo, hi] : conditionIdRanges())
        for (int id = lo; id <= hi; ++id) ids << id;
    return ids;
}

// Each id once, nothing else, every value at 0: a neutral start in which no filter runs.
void expectConditionTables(Store& s, bool withDefaults) {
    QStringList tables{QStringLiteral("过滤条件")};
    if (withDefaults) tables << QStringLiteral("默认过滤条件");
    for (const QString& t : tables) {
        SCOPED_TRACE(t.toStdString());
        const QList<int> ids = columnValues(s, QStringLiteral("select ID from %1 order by ID asc").arg(t));
        EXPECT_EQ(ids, allConditionIds());
        // The picks' rows run whole from 1 to 39 (the hidden buttons 34..38 included): the red
        // reset and counts read ID<40.
        EXPECT_EQ(ids.mid(0, 39).last(), 39);
        EXPECT_EQ(s.scalar(QStringLiteral("select count(*) from %1 where VALUE<>0").arg(t)).toInt(), 0);
    }
    QStringList switches{QStringLiteral("过滤条件使用情况")};
    if (withDefaults) switches << QStringLiteral("默认过滤条件使用情况");
    for (const QString& t : switches) {
        SCOPED_TRACE(t.toStdString());
        EXPECT_EQ(columnValues(s, QStringLiteral("select 条件 from %1 order by 条件 asc").arg(t)),
                  switchNumbers());
        EXPECT_EQ(s.scalar(QStringLiteral("select count(*) from %1 where 使用情况<>0").arg(t)).toInt(), 0);
    }
    EXPECT_EQ(s.scalar(QStringLiteral("select count(*) from 历史数据过滤")).toInt(), 1);
    EXPECT_EQ(s.scalar(QStringLiteral("select count(*) from 历史数据过滤 where 使用状态<>0")).toInt(), 0);
}

// The shipped partitions: big 17..33, low tail 0-4, ten tail groups, heads 0-9 10-19 20-29 30-33,
// steps of 7, 9, 11, 12 counted from 1, each number in one of four intervals, every position open.
void expectNumberTraits(Store& s) {
    auto c = s.query(QStringLiteral("select * from 号码特性 ORDER BY INDEX ASC"));
    ASSERT_EQ(c->recordCount(), 33);
    for (int n = 1; !c->eof(); c->moveNext(), ++n) {
        SCOPED_TRACE(n);
        auto flag = [&](const QString& name) { return c->intValue(name) != 0; };
        EXPECT_EQ(c->intValue(QStringLiteral("号码")), n);
        EXPECT_EQ(c->intValue(QStringLiteral("INDEX")), n);
        EXPECT_EQ(flag(QStringLiteral("大数")), n >= 17);
        EXPECT_EQ(flag(QStringLiteral("低尾码")), n % 10 <= 4);
        EXPECT_EQ(flag(QStringLiteral("高尾码")), n % 10 >= 5);
        // clang-format off
        const struct { const char16_t* prefix; int groups, group; } partitions[] = {
            {u"尾", 10, n % 10}, {u"头", 10, n / 10}, {u"七", 10, (n - 1) % 7}, {u"九", 10, (n - 1) % 9},
            {u"十一", 11, (n - 1) % 11}, {u"十二", 12, (n - 1) % 12}};
        // clang-format on
        for (const auto& p : partitions)
            for (int k = 0; k < p.groups; ++k)
                EXPECT_EQ(flag(QString::fromUtf16(p.prefix) + QString::number(k)), k == p.group)
                    << QString::fromUtf16(p.prefix).toStdString() << k;
        int intervals = 0;
        for (int k = 1; k <= 4; ++k) intervals += flag(QStringLiteral("区间%1").arg(k));
        EXPECT_EQ(intervals, 1);
        for (int k = 1; k <= 20; ++k) EXPECT_FALSE(flag(QStringLiteral("自定义组%1").arg(k)));
        for (int k = 1; k <= 7; ++k) EXPECT_TRUE(flag(QStringLiteral("第%1位").arg(k)));
    }
    // The intervals run in order: 区间1 holds the smallest numbers, 区间4 the largest.
    int last = 0;
    for (int k = 1; k <= 4; ++k) {
        const int lo =
            s.scalar(QStringLiteral("select min(号码) from 号码特性 where 区间%1=1").arg(k)).toInt();
        EXPECT_GT(lo, last) << k;
        last = s.scalar(QStringLiteral("select max(号码) from 号码特性 where 区间%1=1").arg(k)).toInt();
    }
    EXPECT_EQ(last, 33);
}

void expectStoreRows(Store& s) {
    expectConditionTables(s, true);
    expectNumberTraits(s);
    EXPECT_EQ(
        s.scalar(QStringLiteral("select count(*)||' '||count(distinct 号码)||' '||min(号码)||' '||max(号码) "
                                "from BallColor")),
        QStringLiteral("33 33 1 33"));
    EXPECT_EQ(columnValues(s, QStringLiteral("select 模式 from 用户模式")), QList<int>{0});
    EXPECT_EQ(s.scalar(QStringLiteral("select count(*) from 用户表 where 用户名='临时用户'")).toInt(), 1);
    // The 和值 range already reaches 1190, so the start-up migration finds its rows.
    EXPECT_EQ(s.query(QStringLiteral("select * from 过滤条件 where ID>=1171 and ID<=1190"))->recordCount(),
              20);
    EXPECT_EQ(
        s.scalar(QStringLiteral("select 范围max from 快速设置 where 菜单ID=2 and 条件名称='和值'")).toInt(),
        1183);
    EXPECT_EQ(columnValues(s, QStringLiteral("select 序号 from 自定义别名 order by 序号")).size(), 20);
    // The quick settings offer their conditions with the catalogue's switch and rows.
    for (auto q =
             s.query(QStringLiteral("select 条件编号, 范围min, 范围max, 菜单ID, 条件名称 from 快速设置"));
         !q->eof(); q->moveNext()) {
        const QString name = q->value(4).toString();
        bool found = false;
        for (const ConditionEntry& c : conditionCatalogue())
            found |= c.quick && c.switchNo == q->intValue(0) && c.minId == q->intValue(1) &&
                     c.maxId == q->intValue(2) && c.tab == q->intValue(3) && c.quickName() == name;
        EXPECT_TRUE(found) << name.toStdString();
    }
}

// Faults of the catalogue that would show only in a run, a page or a file: rows claimed twice,
// a range the shared array cannot hold, a line outside its rows, a filter no family takes, a
// switch the store lacks.
TEST(ConditionCatalogue, RangesLinesFiltersAndSwitchesFitTogether) {
    const QList<QPair<int, int>> ranges = conditionIdRanges();
    for (int i = 1; i < ranges.size(); ++i)
        EXPECT_GT(ranges[i].first, ranges[i - 1].second) << "rows claimed twice at " << ranges[i].first;
    const QList<int> ids = allConditionIds();
    for (const auto& [lo, hi] : laterConditionRows())
        for (int id = lo; id <= hi; ++id) EXPECT_TRUE(ids.contains(id)) << "the upgrade adds row " << id;

    QList<int> switches = switchNumbers();
    EXPECT_EQ(QSet<int>(switches.begin(), switches.end()).size(), switches.size()) << "a switch used twice";

    for (const ConditionEntry& c : conditionCatalogue()) {
        SCOPED_TRACE(QString::fromUtf16(c.name).toStdString());
        if (c.hasRows()) EXPECT_LE(c.minId % 10 + c.maxId - c.minId, 199);
        for (const ConditionList& list : conditionLists(c.tab)) {
            if (list.switchNo != c.switchNo) continue;
            for (const ConditionLine& line : list.lines) {
                EXPECT_GE(line.id, c.minId) << line.text.toStdString();
                EXPECT_LE(line.id, c.maxId) << line.text.toStdString();
                // The tick reads the entry the row was loaded into.
                EXPECT_EQ(c.minId % 10 + line.id - c.minId, line.value) << line.text.toStdString();
            }
        }
    }

    // Every filter of the run is taken by its family, and every switch of a filter is in the store.
    int filters = 0;
    for (const FilterStep& step : filterSteps())
        for (const FilterDef& d : step.filters) {
            ++filters;
            EXPECT_TRUE(d.provided()) << d.name.toStdString() << " " << d.slot;
            if (d.switchNo != 0) EXPECT_TRUE(switches.contains(d.switchNo)) << d.name.toStdString();
        }
    EXPECT_EQ(filters, std::count_if(conditionCatalogue().begin(), conditionCatalogue().end(),
                                     [](const ConditionEntry& c) { return c.filter != nullptr; }));
}

TEST_F(FreshStoreTest, FactoryRows) {
    expectStoreRows(db());
}

TEST_F(ShippedStoreTest, FactoryRowsAndTheHistory) {
    expectStoreRows(db());
    // The second file of the pack travels along.
    EXPECT_FALSE(isPlainStoreFile(shippedPackPath()));

    // Every line of the published list is a row, date and numbers as written there.
    QFile tsv(QStringLiteral(DOVREX_HISTORY_TSV));
    ASSERT_TRUE(tsv.open(QIODevice::ReadOnly | QIODevice::Text));
    QStringList lines = QString::fromUtf8(tsv.readAll()).split(u'\n', Qt::SkipEmptyParts);
    lines.removeFirst();  // the head line
    auto c = store_Query(
        QStringLiteral("select 期号,开奖日期,红球1,红球2,红球3,红球4,红球5,红球6,蓝球 from 历史记录 "
                       "order by 期号 asc"));
    ASSERT_EQ(c->recordCount(), lines.size());
    for (const QString& line : std::as_const(lines)) {
        const QStringList cells = line.trimmed().split(u'\t');
        ASSERT_EQ(cells.size(), 9) << line.toStdString();
        QStringList stored{c->value(0).toString(), dateText(c->value(1).toDouble())};
        for (int i = 2; i < 9; ++i) stored << twoDigits(c->intValue(i));
        ASSERT_EQ(stored, (QStringList{cells[0], cells[1]} << cells.mid(2)));
        c->moveNext();
    }
}

TEST(ShippedFiles, TemplateAndGuestHoldTheFourConditionTables) {
    for (const QString& name : {kTemplateFileName, kGuestFileName}) {
        SCOPED_TRACE(name.toStdString());
        const QString path = QStringLiteral(DOVREX_BUILD_DIR "/data/") + name;
        ASSERT_TRUE(isPlainStoreFile(path));
        auto s = Store::open(path);
        const QList<QString> tables = columnValues<QString>(
            *s, QStringLiteral("select name from sqlite_master where type='table' order by name"));
        EXPECT_EQ(QSet<QString>(tables.begin(), tables.end()),
                  (QSet<QString>{QStringLiteral("过滤条件"), QStringLiteral("过滤条件使用情况"),
                                 QStringLiteral("历史数据过滤"), QStringLiteral("号码特性")}));
        expectConditionTables(*s, false);
        expectNumberTraits(*s);
    }
}

}  // namespace
}  // namespace dovrex::test
