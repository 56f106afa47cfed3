#include <gtest/gtest.h>

#include "analysis/trend_chart.h"
#include "support/test_support.h"

namespace dovrex {
namespace {

class TrendChartTest : public test::ShippedStoreTest {};

TEST_F(TrendChartTest, TabsReadTheirColumnAndPlaceEachDrawInItsColumn) {
    const TrendSpec sum = trendSpecOfTab(QStringLiteral("和值过滤"));
    EXPECT_EQ(sum.title, QStringLiteral("■ 和值走势"));
    EXPECT_EQ(sum.columns, 183 - 21 + 1);  // every sum six reds can make
    const QList<TrendRow> rows = trendRows(sum, kTrendPeriods);
    ASSERT_EQ(rows.size(), 100);
    EXPECT_EQ(std::tuple(rows.last().issue, rows.last().value, rows.last().column),
              std::tuple(2026096, QStringLiteral("100"), 100 - 21));

    const TrendSpec tail = trendSpecOfTab(QStringLiteral("和值尾"));
    EXPECT_EQ(trendRows(tail, 1).last().column, 0);  // 100 ends in 0: the first column
    const TrendSpec runs = trendSpecOfTab(QStringLiteral("连 号"));
    EXPECT_EQ(runs.title, QStringLiteral("■ 连号走势"));
    EXPECT_EQ(trendColumnCaptions(runs).value(2), QStringLiteral("2+2"));
    for (const TrendRow& r : trendRows(runs, 20))
        EXPECT_EQ(
            trendColumnCaptions(runs).indexOf(r.value) < 0 ? 0 : trendColumnCaptions(runs).indexOf(r.value),
            r.column);
    EXPECT_EQ(trendSpecOfTab(QStringLiteral("奇偶比")).family, TrendFamily::Grid);
    EXPECT_EQ(trendSpecOfTab(QStringLiteral("查看全部")).family, TrendFamily::None);

    EXPECT_EQ(trendConditionText(QStringLiteral("当前取值阅览：\r\n[１-３]"), TrendFamily::Range),
              QStringLiteral("当前取值范围：[１-３]"));
    EXPECT_EQ(trendConditionText(QStringLiteral("AC值1～3"), TrendFamily::Range),
              QStringLiteral("AC值范围=1～3"));
    EXPECT_EQ(trendConditionText(QStringLiteral("AC值1～3"), TrendFamily::Sum), QStringLiteral("AC值1～3"));
}

TEST_F(TrendChartTest, GeometryAndOrderOfTheDrawing) {
    const TrendSpec ac = trendSpecOfTab(QStringLiteral("AC值"));
    const TrendMetrics m{.charW = 10, .charH = 20, .width = 1000};
    // The frame alone: no row, no mark, no condition line.
    const TrendChart head = draw_TrendBody(ac, trendRows(ac, 100), 0, m, QStringLiteral("x"), {});
    EXPECT_DOUBLE_EQ(head.height, 100);
    for (const TrendOp& op : head.ops) EXPECT_NE(op.role, TrendOp::Mark);

    QList<TrendRow> rows{{2026001, QStringLiteral("0"), 0},
                         {2026002, QStringLiteral("7"), 7},
                         {2026003, QStringLiteral("99"), -1}};
    const TrendChart chart = draw_TrendBody(ac, rows, 100, m, QStringLiteral("范围"), {3});
    EXPECT_DOUBLE_EQ(chart.height, 20 * 105);
    const double x0 = 195;
    ASSERT_EQ(chart.colX.size(), 11);
    EXPECT_DOUBLE_EQ(chart.colX[0], x0);
    EXPECT_DOUBLE_EQ(chart.colX[10], x0 + 10 * (1000 - x0) / 11);
    EXPECT_DOUBLE_EQ(chart.rowY[1], 40);
    EXPECT_DOUBLE_EQ(chart.rowY[100], 2020);

    // Circles, then their values, then the joins; a value outside the columns is not marked.
    QList<TrendOp::Role> order;
    const TrendOp* firstMark = nullptr;
    const TrendOp* join = nullptr;
    int marks = 0, joins = 0;
    for (const TrendOp& op : chart.ops) {
        if (op.role == TrendOp::Mark || op.role == TrendOp::MarkText || op.role == TrendOp::Join) {
            if (order.isEmpty() || order.last() != op.role) order << op.role;
            if (op.role == TrendOp::Mark && !firstMark) firstMark = &op;
            if (op.role == TrendOp::Join) join = &op;
        }
        marks += op.role == TrendOp::Mark;
        joins += op.role == TrendOp::Join;
    }
    EXPECT_EQ(order, (QList<TrendOp::Role>{TrendOp::Mark, TrendOp::MarkText, TrendOp::Join}));
    ASSERT_TRUE(firstMark && join);
    const double r = 20.0 / 3;
    EXPECT_DOUBLE_EQ(firstMark->x, x0 + r);  // a value of 0 lies on the first column
    EXPECT_DOUBLE_EQ(firstMark->y, 40 + 0.8 * r);
    EXPECT_DOUBLE_EQ(join->x, x0 + 6);
    EXPECT_DOUBLE_EQ(join->y2, 60 + 6);
    EXPECT_EQ(std::pair(marks, joins), std::pair(2, 1));
}

}  // namespace
}  // namespace dovrex
