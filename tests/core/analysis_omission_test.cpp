#include <gtest/gtest.h>

#include "analysis/omission.h"
#include "support/test_support.h"

namespace dovrex {
namespace {

using test::addDraw;

// The figures in the order {maxGap, avgGap, curGap, lastGap, hitCount}.
void expectFigures(const OmissionRecord& r, const QList<int>& figures, const char* what) {
    EXPECT_EQ((QList<int>{r.maxGap, r.avgGap, r.curGap, r.lastGap, r.hitCount}), figures) << what;
}

class OmissionShipped : public test::ShippedStoreTest {};

// Figures worked by hand from the published draws (a separate recount of the same rules).
TEST_F(OmissionShipped, NewestIssueFiguresMatchTheDraws) {
    const OmissionTable red = calc_RedOmission(2026096);
    ASSERT_EQ(red.size(), 34u);
    expectFigures(red[1], {26, 4, 0, 11, 676}, "red 01, drawn in the issue");
    expectFigures(red[7], {24, 4, 8, 4, 655}, "red 07");
    expectFigures(red[33], {36, 5, 1, 2, 578}, "red 33");
    for (int n = 1; n <= 33; ++n) EXPECT_EQ(red[size_t(n)].allMax, 47);

    const OmissionTable blue = calc_BlueOmission(2026096);
    ASSERT_EQ(blue.size(), 17u);
    expectFigures(blue[4], {112, 15, 0, 13, 215}, "blue 04");
    expectFigures(blue[9], {94, 15, 3, 30, 214}, "blue 09");
    EXPECT_EQ(blue[1].allMax, 112);

    expectFigures(calc_RedOmission(2015100)[12], {26, 5, 3, 6, 326}, "red 12 at 2015100");
}

// The first four draws: 10 11 12 13 26 28 / 04 09 19 20 21 26 / 01 07 10 23 28 32 / 04 06 07 10 13 25.
TEST_F(OmissionShipped, EarlyIssueCarriesOverAndRoundsHalfToEven) {
    const OmissionTable red = calc_RedOmission(2003004);
    // 10 at 0, 2, 3: gaps 0, 1, 0; 1 / 2 = 0.5 rounds to 0.
    expectFigures(red[10], {1, 0, 0, 0, 3}, "red 10");
    expectFigures(red[11], {1, 0, 0, 0, 1}, "red 11: one hit, figures of 10");
    expectFigures(red[4], {1, 2, 0, 1, 2}, "red 04");
    expectFigures(red[5], {1, 2, 0, 1, 0}, "red 05: never drawn, figures of 04");
    expectFigures(red[1], {0, 0, 0, 0, 1}, "red 01: nothing before it");
    // The pass leaves each row's highest red in 遗漏数据 and numbers the rows from 0.
    EXPECT_EQ(test::scalar(QStringLiteral("select 遗漏数据||' '||总期号 from 历史记录 where 期号=2003004")),
              QStringLiteral("25 3"));
}

class OmissionSmall : public test::FreshStoreTest {
  protected:
    // 13 draws, 总期号 0..12. Red 1 and blue 7 at 3, 5, 10 (the worked example); red 2 once at 6;
    // red 3 at 1, 4, 7 (sum 5 over 2); red 4 at 0, 2, 9 (sum 7 over 2); red 5 at 11, 12.
    void SetUp() override {
        std::vector<std::vector<int>> hits(13);
        auto at = [&](int n, std::initializer_list<int> rows) {
            for (int r : rows) hits[size_t(r)].push_back(n);
        };
        at(1, {3, 5, 10});
        at(2, {6});
        at(3, {1, 4, 7});
        at(4, {0, 2, 9});
        at(5, {11, 12});
        for (int r = 0; r < 13; ++r) {
            auto& reds = hits[size_t(r)];
            for (int filler = 28; reds.size() < 6; ++filler) reds.push_back(filler);
            const int blue = (r == 3 || r == 5 || r == 10) ? 7 : 16;
            addDraw(2020001 + r, QStringLiteral("2020/01/%1").arg(r + 1),
                    makeReds(reds[0], reds[1], reds[2], reds[3], reds[4], reds[5]), blue);
        }
    }
};

TEST_F(OmissionSmall, WorkedExampleCarryOverAndHalfEven) {
    const OmissionTable red = calc_RedOmission(2020013);
    expectFigures(red[1], {4, 4, 2, 4, 3}, "worked example");
    expectFigures(red[2], {4, 4, 2, 4, 1}, "single hit keeps the figures of 01");
    expectFigures(red[3], {2, 2, 5, 2, 3}, "5 / 2 gives 2");
    expectFigures(red[4], {6, 4, 3, 6, 3}, "7 / 2 gives 4");
    expectFigures(red[5], {11, 11, 0, 0, 2}, "drawn in the issue");

    const OmissionTable blue = calc_BlueOmission(2020013);
    expectFigures(blue[7], {4, 4, 2, 4, 3}, "blue worked example");

    // Up to an earlier issue only the rows up to it count.
    expectFigures(calc_RedOmission(2020011)[1], {4, 4, 0, 4, 3}, "red 01 at its own last hit");
}

TEST_F(OmissionSmall, TextsOfTheClickAndTheTips) {
    const OmissionTable red = calc_RedOmission(2020013);
    const QString issue = QStringLiteral("2020013");
    EXPECT_EQ(omission_ClickText(0, 1, issue, red[1]),
              QStringLiteral(
                  "红球号码０１ (截止 2020013 期)\r\n_____________________\r\n\r\n总共开出：3 期 \r\n\r\n"
                  "历史遗漏最大值：4 期\r\n\r\n历史遗漏平均值：4 期\r\n\r\n最近一次的遗漏值：4 期\r\n\r\n"
                  "第2020013期遗漏值：2 期"));
    EXPECT_EQ(omission_ClickText(1, 2, issue, red[2]),
              QStringLiteral("(蓝球号码０２ 截止 2020013 期)  总共开出：1 期"));
    EXPECT_EQ(omission_ClickText(5, 2, issue, red[2]),
              QStringLiteral("(红球号码０２ 截止 2020013 期)  总共开出：1 期"));
    EXPECT_TRUE(omission_GroupTip(0, 1, issue, red[1])
                    .startsWith(QStringLiteral("红球号码 ０１\r\n\r\n总共开出：3 期")));
    EXPECT_EQ(omission_CurTip(issue, red[1]), QStringLiteral("第2020013期遗漏值：2 期"));
}

TEST(OmissionLayout, ScaleColourAndBall) {
    OmissionRecord empty;  // allMax 0: scaleMax is 1, every bar has height 0
    const auto g0 = draw_OmissionGroup(500, 3360, empty, 200);
    EXPECT_EQ(g0.maxBar.height(), 0);
    EXPECT_EQ(g0.curBar.bottom(), 3000);
    EXPECT_FALSE(g0.overdue);

    OmissionRecord r{9, 9, 3, 10, 4, 2};  // scaleMax (9 + 1) * 1.1 = 11, plot 3000
    const auto g = draw_OmissionGroup(500, 3360, r, 200);
    EXPECT_DOUBLE_EQ(g.maxBar.height(), 3000.0 / 11 * 9);
    EXPECT_DOUBLE_EQ(g.curBar.left(), 200);
    EXPECT_DOUBLE_EQ(g.curBar.width(), 240);
    EXPECT_TRUE(g.overdue);
    EXPECT_DOUBLE_EQ(g.ball.bottom(), g.curBar.top());
    EXPECT_DOUBLE_EQ(g.ball.center().x(), g.curBar.center().x());
    // A ball wider than the group shrinks to it and is centred in the group.
    const auto wide = draw_OmissionGroup(150, 3360, r, 200);
    EXPECT_EQ(wide.ball, QRectF(0, wide.curBar.top() - 150, 150, 150));
}

}  // namespace
}  // namespace dovrex
