// The derived columns of 历史记录: hand-worked draws, the passes' edges, and the whole shipped
// history against a plain recomputation from the definitions.
#include <QMap>
#include <algorithm>
#include <set>
#include <vector>

#include "history/derived_columns.h"
#include "history/history_queries.h"
#include "support/test_support.h"

namespace dovrex::test {
namespace {

using Row = QMap<QString, QVariant>;

Row readRow(IssueNumber issue) {
    auto c = store_Query(QStringLiteral("select * from 历史记录 where 期号=?"), {issue});
    Row row;
    if (c->recordCount() == 0) return row;
    for (int i = 0; i < c->fieldCount(); ++i) row.insert(c->fieldName(i), c->value(i));
    return row;
}

// Column values written as one text: "和值=100 奇数和值=24 温度值5=NULL ...", compared by name.
void expectColumns(IssueNumber issue, const QString& expected) {
    const Row row = readRow(issue);
    ASSERT_FALSE(row.isEmpty()) << issue;
    for (const QString& pair : expected.split(u' ', Qt::SkipEmptyParts)) {
        const QString name = pair.section(u'=', 0, 0), value = pair.section(u'=', 1);
        ASSERT_TRUE(row.contains(name)) << name.toStdString();
        EXPECT_EQ(row[name].isNull() ? QStringLiteral("NULL") : row[name].toString(), value)
            << issue << " " << name.toStdString();
    }
}

const IssueNumber A = 2003001, B = 2003002, C = 2003003, D = 2003004;

class DerivedColumnsTest : public FreshStoreTest {
  protected:
    void fourDraws() {
        addDraw(A, QStringLiteral("2003/02/23"), makeReds(10, 11, 12, 13, 26, 28), 11);
        addDraw(B, QStringLiteral("2003/02/27"), makeReds(4, 9, 19, 20, 21, 26), 12);
        addDraw(C, QStringLiteral("2003/03/02"), makeReds(1, 8, 15, 22, 29, 30), 16);
        addDraw(D, QStringLiteral("2003/03/06"), makeReds(20, 21, 23, 25, 27, 29), 3);
    }
    // What a download does: the earliest alone, then the range.
    void recalcAll() {
        recalc_LiShiLie(earliest_QiHao(), earliest_QiHao(), false);
        recalc_LiShiLie(earliest_QiHao(), latest_QiHao(), false);
    }
};

// Worked by hand from the definitions, with the shipped partitions: big 17..33, low tail 0-4,
// intervals 1-8 9-16 17-24 25-33, groups of seven/nine/eleven/twelve by (x-1) mod step.
TEST_F(DerivedColumnsTest, HandWorkedDraws) {
    fourDraws();
    recalcAll();
    // 10 11 12 13 26 28, the first draw: nothing before it.
    expectColumns(
        A, QStringLiteral(
               "和值=100 奇数和值=24 偶数和值=76 奇数个数=2 偶数个数=4 大数个数=2 小数个数=4 高尾码个数=2 "
               "低尾码个数=4 区间1=0 区间2=4 区间3=0 区间4=2 自定义组1=0 自定义组10=0 跨度=18 最大间距=13 "
               "AC值=4 连号=4 重叠号=0 斜位码=0 尾数形式=1,1,1,1,1,1 间距七=2,1,1,1,1 间距九=2,1,1,1,1 "
               "间距十一=1,1,1,1,1,1 间距十二=1,1,1,1,1,1 头数形式=4,2 头数和值=8 尾数和值=20 温度值5=0 "
               "温度值10=0 已完成=Y"));
    // 04 09 19 20 21 26 after 10 11 12 13 26 28: 26 repeats, 9 sits beside 10.
    expectColumns(
        B, QStringLiteral(
               "和值=99 奇数和值=49 偶数和值=50 奇数个数=3 偶数个数=3 大数个数=4 小数个数=2 高尾码个数=3 "
               "低尾码个数=3 区间1=1 区间2=1 区间3=3 区间4=1 跨度=22 最大间距=10 AC值=7 连号=3 重叠号=1 "
               "斜位码=1 尾数形式=2,1,1,1,1 间距七=2,1,1,1,1 间距九=1,1,1,1,1,1 间距十一=2,2,1,1 "
               "间距十二=2,1,1,1,1 头数形式=3,2,1 头数和值=7 尾数和值=29 温度值5=1 温度值10=1"));
    // 01 08 15 22 29 30: five of six in one group of seven, which the table reads as all apart.
    expectColumns(C,
                  QStringLiteral("和值=105 连号=2 重叠号=0 斜位码=2 间距七=1,1,1,1,1,1 尾数形式=1,1,1,1,1,1 "
                                 "头数形式=2,2,1,1 温度值5=0"));
    // 20 21 23 25 27 29: six in one head group; 20 21 from B and 29 from C came up before; 21 23
    // beside 22 and 29 beside 30.
    expectColumns(D, QStringLiteral("头数形式=6 连号=2 重叠号=1 斜位码=3 头数和值=12 温度值5=3 温度值10=3"));
}

TEST_F(DerivedColumnsTest, TheRowBeforeFromIsOnlyThePredecessor) {
    fourDraws();
    recalc_LiShiLie(A, D, false);
    expectColumns(A, QStringLiteral("和值=NULL"));  // the earliest needs a pass of its own
    expectColumns(B, QStringLiteral("重叠号=1"));
    recalc_LiShiLie(A, A, false);
    expectColumns(A, QStringLiteral("和值=100"));
    // A range in the middle leaves the rows outside it alone; B serves as C's predecessor.
    store_Execute(QStringLiteral("UPDATE 历史记录 SET 和值=-1"));
    recalc_LiShiLie(C, C, false);
    expectColumns(B, QStringLiteral("和值=-1"));
    expectColumns(C, QStringLiteral("和值=105 斜位码=2"));
    expectColumns(D, QStringLiteral("和值=-1"));
}

TEST_F(DerivedColumnsTest, FromBeyondAllRowsRewritesTheLastWithoutPredecessor) {
    fourDraws();
    recalcAll();
    expectColumns(D, QStringLiteral("重叠号=1"));
    recalc_LiShiLie(2003010, 2003013, false);
    expectColumns(D, QStringLiteral("重叠号=0 斜位码=0 和值=145"));
    expectColumns(C, QStringLiteral("斜位码=2"));
    // Without a predecessor a 01 has no neighbour either.
    const IssueNumber E = 2003005;
    addDraw(E, QStringLiteral("2003/03/09"), makeReds(1, 5, 9, 14, 18, 33), 1);
    recalc_LiShiLie(2003010, 2003013, false);
    expectColumns(E, QStringLiteral("斜位码=0"));
}

TEST_F(DerivedColumnsTest, EmptyRangeWritesNothingAndShowsProgressOnlyWithRows) {
    recalc_LiShiLie(2003001, 2003100, true);
    EXPECT_TRUE(ui().linesStartingWith(QStringLiteral("PROGRESS")).isEmpty());
    fourDraws();
    recalc_LiShiLie(A, D, true);
    const QStringList progress = ui().linesStartingWith(QStringLiteral("PROGRESS"));
    ASSERT_GE(progress.size(), 3);
    EXPECT_EQ(progress.first(), QStringLiteral("PROGRESS 0..4 0 shown"));  // A, the predecessor, is counted
    EXPECT_EQ(progress.last(), QStringLiteral("PROGRESS 0..4 4 hidden"));  // the temperature pass: A..D
    EXPECT_FALSE(ui().progress().visible);
    EXPECT_GE(ui().pumpCount(), 6);
}

TEST_F(DerivedColumnsTest, IntervalsRecountedAfterTheyChange) {
    fourDraws();
    recalcAll();
    // Interval 1 now covers 1..20 and overlaps interval 2 and 3.
    store_Execute(QStringLiteral("UPDATE 号码特性 SET 区间1=1 WHERE 号码<=20"));
    // A custom group changed too: only a full pass touches it.
    store_Execute(QStringLiteral("UPDATE 号码特性 SET 自定义组1=1 WHERE 号码<=20"));
    recalc_QuJian(earliest_QiHao(), latest_QiHao());
    EXPECT_EQ(ui().messages(),
              QStringList{QStringLiteral("区间重新划分之后，各区间的开出号码个数需要重新计算。。。")});
    expectColumns(A, QStringLiteral("区间1=4 区间2=4 区间3=0 区间4=2 自定义组1=0"));
    expectColumns(B, QStringLiteral("区间1=4 区间2=1 区间3=3 区间4=1 自定义组1=0"));
    expectColumns(D, QStringLiteral("区间1=1 区间3=3 区间4=3"));
    recalc_LiShiLie(B, B, false);
    expectColumns(B, QStringLiteral("自定义组1=4"));
}

// A number out of range, and six reds that fold into one tail group (a repeated red, as a folded
// download value gives): the pass stops at that row with a store error, never another exception.
TEST_F(DerivedColumnsTest, BadDrawStopsThePassAtItsRow) {
    for (const char* bad : {"红球6=40", "红球1=1, 红球2=11, 红球3=21, 红球4=31, 红球5=1, 红球6=11"}) {
        SCOPED_TRACE(bad);
        store_ClearTable(QStringLiteral("历史记录"));
        fourDraws();
        store_Execute(QStringLiteral("UPDATE 历史记录 SET %1 WHERE 期号=?").arg(QString::fromUtf8(bad)), {C});
        recalc_LiShiLie(A, A, false);
        EXPECT_THROW(recalc_LiShiLie(A, D, false), StoreError);
        expectColumns(B, QStringLiteral("和值=99"));  // written before the fault, and kept
        expectColumns(C, QStringLiteral("和值=NULL"));
        expectColumns(D, QStringLiteral("和值=NULL"));
        EXPECT_THROW(recalc_LiShiLie(D, D, false), StoreError);  // C as the predecessor
    }
}

TEST_F(DerivedColumnsTest, TemperatureCountsOnlyTheDrawsBefore) {
    fourDraws();
    // {issue, draws before it, hot numbers}: with one draw C alone counts (29); 2003005 has no row.
    for (const auto& [issue, draws, hot] :
         {std::tuple{D, 5, 3}, {D, 1, 1}, {B, 10, 1}, {A, 5, 0}, {2003005, 5, 0}})
        EXPECT_EQ(calc_WenDu(issue, draws), hot) << issue << " " << draws;
    // The same number in several earlier draws counts each time.
    addDraw(2003005, QStringLiteral("2003/03/09"), makeReds(20, 21, 22, 23, 24, 25));
    EXPECT_EQ(calc_WenDu(2003005, 5), 2 + 2 + 1 + 1 + 0 + 1);
    EXPECT_EQ(calc_WenDu(2003005, 2), 1 + 1 + 1 + 1 + 0 + 1);
}

// ---- the shipped history ----

// The columns of one draw computed the plain way, straight from the definitions: the pattern text
// of a partition is its nonzero counts in falling order, except that five-and-one in a five-table
// partition reads as six apart; the run text is the runs of two or more in falling order.
QString falling(std::vector<int> counts, QChar separator) {
    std::sort(counts.rbegin(), counts.rend());
    QStringList parts;
    for (int n : counts) parts << QString::number(n);
    return parts.join(separator);
}

template <typename GroupOf>
QString plainPattern(const std::array<int, 6>& r, bool headTable, GroupOf groupOf) {
    QMap<int, int> counts;
    for (int x : r) ++counts[groupOf(x)];
    const QString text = falling({counts.begin(), counts.end()}, u',');
    return !headTable && text == QStringLiteral("5,1") ? QStringLiteral("1,1,1,1,1,1") : text;
}

QString plainRuns(const std::array<int, 6>& r) {
    std::vector<int> lengths;
    for (int i = 1, len = 1; i <= 6; ++i) {
        const bool goesOn = i < 6 && r[size_t(i)] == r[size_t(i - 1)] + 1;
        if (!goesOn && len >= 2) lengths.push_back(len);
        len = goesOn ? len + 1 : 1;
    }
    return lengths.empty() ? QStringLiteral("0") : falling(lengths, u'+');
}

TEST_F(ShippedStoreTest, EveryStoredColumnMatchesAPlainRecomputation) {
    // Interval membership as the shipped table holds it.
    std::array<std::array<bool, 4>, 34> inInterval{};
    for (auto c = store_Query(QStringLiteral("select 号码,区间1,区间2,区间3,区间4 from 号码特性")); !c->eof();
         c->moveNext())
        for (int k = 0; k < 4; ++k) inInterval[size_t(c->intValue(0))][size_t(k)] = c->intValue(k + 1) != 0;

    auto c = store_Query(QStringLiteral("select * from 历史记录 order by 期号 asc"));
    ASSERT_GT(c->recordCount(), 3000);
    std::vector<std::array<int, 6>> before;
    int mismatches = 0;
    for (; !c->eof(); c->moveNext()) {
        const IssueNumber issue = c->intValue(QStringLiteral("期号"));
        std::array<int, 6> r;
        for (int i = 0; i < 6; ++i) r[size_t(i)] = c->intValue(QStringLiteral("红球%1").arg(i + 1));
        ASSERT_TRUE(std::is_sorted(r.begin(), r.end())) << issue;

        int sum = 0, oddSum = 0, odd = 0, big = 0, low = 0, heads = 0, tails = 0;
        std::array<int, 4> intervals{};
        std::set<int> diffs;
        for (int i = 0; i < 6; ++i) {
            const int x = r[size_t(i)];
            sum += x;
            if (x % 2) oddSum += x, ++odd;
            if (x >= 17) ++big;
            if (x % 10 <= 4) ++low;
            heads += x / 10;
            tails += x % 10;
            for (int k = 0; k < 4; ++k) intervals[size_t(k)] += inInterval[size_t(x)][size_t(k)];
            for (int j = i + 1; j < 6; ++j) diffs.insert(r[size_t(j)] - x);
        }
        int gap = 0;
        for (int i = 0; i < 5; ++i) gap = std::max(gap, r[size_t(i + 1)] - r[size_t(i)]);
        int repeats = 0, diagonal = 0;
        if (!before.empty()) {
            const auto& p = before.back();
            auto has = [&](int x) { return std::find(p.begin(), p.end(), x) != p.end(); };
            for (int x : r) {
                repeats += has(x);
                diagonal += has(x - 1) || has(x + 1);
            }
        }
        // clang-format off
        Row want{{"和值", sum}, {"奇数和值", oddSum}, {"偶数和值", sum - oddSum}, {"奇数个数", odd},
                 {"偶数个数", 6 - odd}, {"大数个数", big}, {"小数个数", 6 - big}, {"低尾码个数", low},
                 {"高尾码个数", 6 - low}, {"头数和值", heads}, {"尾数和值", tails}, {"跨度", r[5] - r[0]},
                 {"最大间距", gap}, {"AC值", int(diffs.size()) - 5}, {"连号", plainRuns(r)},
                 {"重叠号", repeats}, {"斜位码", diagonal}, {"已完成", "Y"},
                 {"尾数形式", plainPattern(r, false, [](int x) { return x % 10; })},
                 {"间距七", plainPattern(r, false, [](int x) { return (x - 1) % 7; })},
                 {"间距九", plainPattern(r, false, [](int x) { return (x - 1) % 9; })},
                 {"间距十一", plainPattern(r, false, [](int x) { return (x - 1) % 11; })},
                 {"间距十二", plainPattern(r, false, [](int x) { return (x - 1) % 12; })},
                 {"头数形式", plainPattern(r, true, [](int x) { return x / 10; })}};
        // clang-format on
        for (int k = 0; k < 4; ++k) want[QStringLiteral("区间%1").arg(k + 1)] = intervals[size_t(k)];
        for (int k = 1; k <= 10; ++k) want[QStringLiteral("自定义组%1").arg(k)] = 0;
        for (int n : {5, 10}) {
            int hot = 0;
            const size_t first = before.size() > size_t(n) ? before.size() - size_t(n) : 0;
            for (size_t j = first; j < before.size(); ++j)
                for (int x : r) hot += int(std::count(before[j].begin(), before[j].end(), x));
            want[QStringLiteral("温度值%1").arg(n)] = hot;
        }

        for (auto it = want.cbegin(); it != want.cend(); ++it) {
            const QString got = c->value(it.key()).toString();
            if (got != it.value().toString() && ++mismatches <= 20)
                ADD_FAILURE() << issue << " " << it.key().toStdString() << ": stored " << got.toStdString()
                              << ", expected " << it.value().toString().toStdString();
        }
        before.push_back(r);
    }
    EXPECT_EQ(mismatches, 0);
}

}  // namespace
}  // namespace dovrex::test
