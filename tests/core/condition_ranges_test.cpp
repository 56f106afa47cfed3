// A run of values ticked in one gesture, and the sums' chart drawn whole in its frame.

#include <gtest/gtest.h>

#include "analysis/trend_chart.h"
#include "filters/condition_editing.h"
#include "filters/condition_pages.h"
#include "support/test_support.h"

namespace dovrex {
namespace {

class ConditionRangesTest : public test::ShippedStoreTest {};

TEST_F(ConditionRangesTest, ARunOfLinesIsWrittenAtOnce) {
    const ConditionList sums = load_TiaoJianLieBiao(2);
    ASSERT_TRUE(sums.numbered);
    QList<ConditionLine> run;
    for (const ConditionLine& line : sums.lines)
        if (line.value >= 80 && line.value <= 120) run << line;
    ASSERT_EQ(run.size(), 41);
    set_ConditionLines(run, true);
    EXPECT_EQ(conditionSummary(2), to_QuanJiao(QStringLiteral("[80-120]")));
    set_ConditionLines(run.mid(10, 5), false);
    EXPECT_EQ(conditionSummary(2), to_QuanJiao(QStringLiteral("[80-89] , [95-120]")));
    EXPECT_FALSE(load_TiaoJianLieBiao(7).numbered);  // 连号's lines are patterns: no from-to entry
}

// The whole range and a hundred draws in a frame of 1366x768's chart: every mark and join inside
// the rows' part, columns at least a digit wide, captions apart, labels a line apart, no text on a
// mark. The highest possible sum still has its column.
TEST_F(ConditionRangesTest, TheSumsChartFitsItsFrame) {
    const TrendSpec sum = trendSpecOfTab(QStringLiteral("和值过滤"));
    QList<TrendRow> rows = trendRows(sum, kTrendPeriods);
    ASSERT_EQ(rows.size(), kTrendPeriods);
    rows.last().column = 183 - sum.first;
    const TrendMetrics m{.charW = 7, .charH = 15, .width = 1040};
    const double height = 590;
    const TrendChart c =
        draw_TrendFitted(sum, rows, kTrendPeriods, m, height, QStringLiteral("范围"), {59, 60});
    EXPECT_GT(c.band, 1);
    for (int k = 1; k < c.colX.size(); ++k) EXPECT_GE(c.colX[k] - c.colX[k - 1], m.charW);
    EXPECT_LE(c.bodyBottom, height - 3 * m.charH + 1e-9);
    double lastCaptionEnd = -1, lastLabelY = -1e9;
    int marks = 0, joins = 0;
    for (const TrendOp& op : c.ops) {
        const bool inBody =
            op.x >= c.colX.first() && op.x <= m.width && op.y >= c.bodyTop && op.y <= c.bodyBottom;
        switch (op.role) {
            case TrendOp::Mark:
                ++marks;
                EXPECT_TRUE(inBody && op.y - op.r >= c.bodyTop && op.y + op.r <= c.bodyBottom)
                    << op.x << "," << op.y;
                break;
            case TrendOp::Join:
                ++joins;
                EXPECT_TRUE(inBody && op.x2 <= m.width && op.y2 <= c.bodyBottom);
                break;
            case TrendOp::Caption:
                EXPECT_GT(op.x, lastCaptionEnd);
                lastCaptionEnd = op.x + op.text.size() * m.charW;
                EXPECT_LE(lastCaptionEnd, m.width);
                break;
            case TrendOp::Issue:  // drawn newest first, upwards
                EXPECT_LE(op.y + m.charH, lastLabelY < -1e8 ? height : lastLabelY + 1e-9);
                EXPECT_GE(op.y, c.bodyTop);
                lastLabelY = op.y;
                break;
            case TrendOp::MarkText:
                ADD_FAILURE() << "text on a mark";
                break;
            default:
                break;
        }
    }
    EXPECT_EQ(std::pair(marks, joins), std::pair(kTrendPeriods, kTrendPeriods - 1));
}

}  // namespace
}  // namespace dovrex
