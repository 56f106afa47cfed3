#include <gtest/gtest.h>

#include "analysis/history_tables.h"
#include "support/test_support.h"

namespace dovrex {
namespace {

using test::addDraw;
using test::intScalar;
using test::scalar;

class AnalysisTables : public test::FreshStoreTest {
  protected:
    void SetUp() override {
        Clock::setToday(QDate(2024, 1, 20));
        addDraw(2024001, QStringLiteral("2024/01/02"), makeReds(1, 5, 9, 17, 25, 33), 3);
        addDraw(2024002, QStringLiteral("2024/01/04"), makeReds(2, 5, 10, 18, 26, 32), 16);
        addDraw(2024003, QStringLiteral("2024/01/07"), makeReds(3, 6, 11, 19, 27, 31), 3);
    }
    void pick(int id, int value) {
        store_Execute(QStringLiteral("UPDATE 过滤条件 SET VALUE=? WHERE ID=?"), {value, id});
    }
    // One cell of an analysis table.
    static QVariant cell(const char* table, const char* column, IssueNumber issue) {
        return scalar(QStringLiteral("select %1 from %2 where 期号=?").arg(column, table), {issue});
    }
};

TEST_F(AnalysisTables, DistributionRowsAndThePickRow) {
    pick(7, 1);
    pick(8, 2);
    pick(105, 1);
    EXPECT_EQ(fill_HaoMaFenBu(2024001, 2024002), 2);
    EXPECT_EQ(intScalar(QStringLiteral("select count(*) from 号码分布")), 3);
    EXPECT_EQ(cell("号码分布", "k05", 2024002).toInt(), 5);
    EXPECT_EQ(cell("号码分布", "k36", 2024001).toInt(), 3);  // blue 3
    EXPECT_EQ(cell("号码分布", "k49", 2024002).toInt(), 16);
    EXPECT_TRUE(cell("号码分布", "k03", 2024001).isNull());
    // The pick row: the next issue, "*" for a drag and "+" for a banker, as the grid's clicks set them.
    EXPECT_EQ(cell("号码分布", "k07||k08||k38", 2024004).toString(), QStringLiteral("*+*"));

    // An empty range still has the pick row.
    EXPECT_EQ(fill_HaoMaFenBu(2025001, 2025010), 0);
    EXPECT_EQ(intScalar(QStringLiteral("select count(*) from 号码分布")), 1);
    EXPECT_EQ(ui().lastStatus(1), QString());
}

TEST_F(AnalysisTables, GroupsSortTheRedsOfEachDraw) {
    // 5 in groups 1 and 2, 9 in group 1, 33 in group 20; the others in none.
    store_Execute(QStringLiteral("UPDATE 分析表号码组 SET 号码组合1=0, 号码组合2=0, 号码组合20=0"));
    store_Execute(QStringLiteral("UPDATE 分析表号码组 SET 号码组合1=1, 号码组合2=1 WHERE 号码=5"));
    store_Execute(QStringLiteral("UPDATE 分析表号码组 SET 号码组合1=1 WHERE 号码=9"));
    store_Execute(QStringLiteral("UPDATE 分析表号码组 SET 号码组合20=1 WHERE 号码=33"));
    EXPECT_EQ(fill_FenXiBiao(2024001, 2024003), 3);
    EXPECT_EQ(cell("分析表", "号码组合1", 2024001).toString(), QStringLiteral("05 09 "));
    EXPECT_EQ(cell("分析表", "号码组合2", 2024002).toString(), QStringLiteral("05 "));
    EXPECT_EQ(cell("分析表", "号码组合20", 2024001).toString(), QStringLiteral("33 "));
    EXPECT_TRUE(cell("分析表", "号码组合1", 2024003).isNull());
    const QStringList captions = fenXiBiao_Captions(false);
    ASSERT_EQ(captions.size(), 21);
    EXPECT_EQ(QStringList({captions[1], captions[20]}), QStringList({"05 09", "33"}));

    store_Execute(QStringLiteral("UPDATE 号码特性 SET 自定义组3=1 WHERE 号码 IN (6, 31)"));
    EXPECT_EQ(fill_ZiDingYiBiao(2024001, 2024003), 3);
    EXPECT_EQ(cell("自定义表", "自定义组3", 2024003).toString(), QStringLiteral("06 31 "));
    EXPECT_EQ(intScalar(QStringLiteral("select count(*) from 自定义表 where 自定义组3 is not null")), 1);
}

TEST_F(AnalysisTables, RecentHitsAndTheDefaultRange) {
    const auto red = calc_RedRecentHits(2024002, 2024003);
    ASSERT_EQ(red.size(), 33u);
    EXPECT_EQ(std::pair(red[4].label, red[4].count), std::pair(QStringLiteral("红球:05"), 1));
    EXPECT_EQ(red[0].count, 0);  // 01 only in 2024001
    const auto blue = calc_BlueRecentHits(2024001, 2024003);
    ASSERT_EQ(blue.size(), 16u);
    EXPECT_EQ(std::pair(blue[2].label, blue[2].count), std::pair(QStringLiteral("蓝球:03"), 2));
    EXPECT_EQ(calc_RedRecentHits(2024003, 2024001)[5].count, 0);  // from above to: empty

    IssueRange range = fill_IssueCombos();
    EXPECT_EQ(range.issues, QStringList({"2024003", "2024002", "2024001"}));
    EXPECT_EQ(std::tuple(range.fromIndex, range.toIndex), std::tuple(2, 0));
    for (int i = 4; i <= 12; ++i)
        addDraw(2024000 + i, QStringLiteral("2024/02/%1").arg(i), makeReds(1, 2, 3, 4, 5, 6), 1);
    range = fill_IssueCombos();
    EXPECT_EQ(range.issues[range.fromIndex], QStringLiteral("2024003"));  // the newest ten
}

}  // namespace
}  // namespace dovrex
