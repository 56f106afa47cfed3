#include <algorithm>

#include "core/pipeline_fixture.h"
#include "pipeline/selection.h"
#include "pipeline/shrink.h"
#include "pipeline/ticket_init.h"
#include "pipeline/weights.h"

namespace dovrex::test {
namespace {

constexpr IssueNumber kIssue = 2008118;

class SelectionTest : public PipelineTest {
  protected:
    // Twelve draws before the issue, 2008106..2008117.
    static void addHistory() {
        for (int i = 0; i < 12; ++i) {
            const int d = 1 + (i * 7) % 20;
            addDraw(2008106 + i, QStringLiteral("2008/10/%1").arg(1 + i, 2, 10, QLatin1Char('0')),
                    Reds{0, d, d + 2, d + 5, d + 7, d + 10, d + 13}, 1 + (i * 5) % 16);
        }
    }
    // The ten draws alike below and the 14 tickets of reds 1..7 with blues 1 and 2.
    static void sameDrawsAndTickets() {
        addDraw(2008107, QStringLiteral("2008/09/28"), Reds{0, 7, 8, 9, 10, 11, 12}, 9);
        for (int i = 0; i < 10; ++i)
            addDraw(2008108 + i, QStringLiteral("2008/10/%1").arg(1 + i, 2, 10, QLatin1Char('0')),
                    Reds{0, 1, 2, 3, 4, 5, 6}, 1);
        pickDrags(7, 2);
        ASSERT_EQ(init_TouZhu(kIssue), 14);
    }
    static std::vector<std::pair<int, int>> serialAndScratch() {
        std::vector<std::pair<int, int>> out;
        auto c = store_Query(QStringLiteral("select 序号,临时数据 from 日志表 order by 序号"));
        for (; !c->eof(); c->moveNext()) out.emplace_back(c->intValue(0), c->intValue(1));
        return out;
    }
};

TEST_F(SelectionTest, DifferencesAndScoresKeepTheirPositions) {
    // Row r of the block holds 10r + c: every difference names its row.
    ChaZhiBlock a{};
    for (int r = 1; r <= 10; ++r)
        for (int c = 1; c <= 7; ++c) a[size_t(r)][size_t(c)] = 10 * r + c;
    const ChaZhiMoShi m = calc_ChaZhiMoShi(a);
    // Position (r, c, k) of the first block: A[r][c] - A[1][k], r from 2; then the newest draw
    // within itself; the last position stays 0.
    // clang-format off
    const std::pair<int, int> at[] = {{0, 10}, {1, 9}, {7, 11}, {49, 20}, {440, 90}, {441, -1}, {461, -1},
                                      {462, 0}};
    // clang-format on
    for (const auto& [position, value] : at) EXPECT_EQ(m[size_t(position)], value) << position;
    // A ticket of 0 + c is the row before the newest: each of its differences to rows 1..9 is the
    // block's from rows 2..10, so all 463 positions match. One of 10 + c matches only within itself.
    std::array<int, 8> t{}, newest{};
    for (int c = 1; c <= 7; ++c) {
        t[size_t(c)] = c;
        newest[size_t(c)] = 10 + c;
    }
    EXPECT_EQ(calc_PiPeiShu(a, m, t), 463);
    EXPECT_EQ(calc_PiPeiShu(a, m, newest), 1 + 21);

    // The block of an issue: the newest draw before it in row 1, the tenth before it in row 10.
    addHistory();
    const ChaZhiBlock block = loadDifferenceBlock(kIssue);
    EXPECT_EQ(block[1][1], 1 + (11 * 7) % 20);  // 2008117
    EXPECT_EQ(block[10][7], 1 + (2 * 5) % 16);  // 2008108
}

// Ten draws alike, 1 2 3 4 5 6 + 1, before the issue, and the tickets of the reds 1..7 with blues
// 1 and 2. A ticket then scores 1, plus 63 for each ball in the draw's place, plus 1 for each pair
// of its balls as far apart as in the draw. By 序号 (the red left out from 7 down, blue 1 then 2):
const int kScores[15] = {0, 463, 394, 394, 327, 327, 262, 262, 199, 199, 138, 138, 79, 79, 22};

TEST_F(SelectionTest, SelectionKeepsTheLowestScores) {
    sameDrawsAndTickets();
    ui().answerText(QStringLiteral("2"));
    cmmTouZhu_Click(kCmdSelect);
    // 22 and the first of the two 79s; 序号 keeps its gaps.
    EXPECT_EQ(serialAndScratch(), (std::vector<std::pair<int, int>>{{12, 999}, {14, 999}}));
    EXPECT_EQ(ui().messages().last(), msg::kSelectDone);
    // The result replaces the in-progress line and gives what the tickets left cost.
    EXPECT_TRUE(logEndsWith(u"\r\n\r\n[ 精选号码 ] 完 成 ，共 ２ 注，４ 元"));
    EXPECT_FALSE(logContains(u"分析正在进行中"));
    // More than there are: all stay. Zero or a cancel: nothing runs.
    ui().answerText(QStringLiteral("100"));
    cmmTouZhu_Click(kCmdSelect);
    ui().answerText(QString());
    cmmTouZhu_Click(kCmdSelect);
    EXPECT_EQ(serialAndScratch().size(), 2u);

    // Tickets tied with the last one kept on score and 序号 stay too.
    store_Execute(QStringLiteral("DELETE FROM 日志表"));
    init_TouZhu(kIssue);
    store_Execute(QStringLiteral("UPDATE 日志表 SET 序号=1"));
    run_JingXuan(kIssue, 2);
    EXPECT_EQ(scalar(QStringLiteral("select count(*)||' '||sum(红球1=1) from 日志表")),
              QStringLiteral("3 1"));
}

TEST_F(SelectionTest, SmartOptimisationZeroesTheLowestSixtyPerCent) {
    sameDrawsAndTickets();
    // Switch off, or t 7: nothing written.
    store_Execute(QStringLiteral("UPDATE 日志表 SET 临时数据=-5"));
    run_ZhiNengYouHua(kIssue, 6);
    Check_auto_Click(true);
    run_ZhiNengYouHua(kIssue, 7);
    EXPECT_EQ(intScalar(QStringLiteral("select count(*) from 日志表 where 临时数据<>-5")), 0);

    // The nine lowest of 14 (60 per cent, rounded up) go to 0, the rest keep their scores.
    run_ZhiNengYouHua(kIssue, 6);
    std::vector<std::pair<int, int>> expected;
    for (int serial = 1; serial <= 14; ++serial)
        expected.emplace_back(serial, serial <= 5 ? kScores[serial] : 0);
    EXPECT_EQ(serialAndScratch(), expected);
    EXPECT_TRUE(logEndsWith(u"[ 智能优化 ] 完 成 "));
}

TEST_F(SelectionTest, WeightPresetsAndSums) {
    auto& w = shared().quanZhong;
    EXPECT_FALSE(run_QuanZhong(kIssue));  // all 0
    // {preset, a number, its weight, a number weighing nothing}
    const int presets[][4] = {{1, 1, 32, 33}, {2, 1, 33, 2}, {7, 2, 31, 3}, {10, 33, 33, 32}};
    for (const auto& p : presets) {
        cmmQZfenpei_Click(p[0]);
        EXPECT_EQ(w[size_t(p[1])], p[2]) << p[0];
        EXPECT_EQ(w[size_t(p[3])], 0) << p[0];
    }
    const auto before = w;
    cmmQZfenpei_Click(6);  // by hand: nothing changes
    EXPECT_EQ(w, before);
    EXPECT_EQ(ui().messages().last(), msg::kWeightsByHand);
    // 平均 with no pick, then with six: the middle of the pick weighs most.
    cmmQZfenpei_Click(4);
    EXPECT_EQ((std::vector<int>{w[16], w[17], w[33]}), (std::vector<int>{16, 16, 0}));
    cmmQZfenpei_Click(5);
    for (int n : {3, 5, 8, 13, 21, 30, 101}) set_GuoLvTiaoJian(n, kPickDrag);
    cmmQZfenpei_Click(4);
    EXPECT_EQ((std::vector<int>{w[3], w[4], w[5], w[8], w[13], w[21], w[30]}),
              (std::vector<int>{1, 0, 2, 3, 2, 1, 0}));
    EXPECT_TRUE(
        ui().lines().last().startsWith(QStringLiteral("SET FrameHaomaQuanzongValue.weights = 0 0 1 0 2")));

    init_TouZhu(kIssue);
    EXPECT_TRUE(run_QuanZhong(kIssue));
    EXPECT_EQ(serialAndScratch()[0].second, 9);
    SliderQuanZong_Change(30, 10);
    SliderQuanZong_Change(34, 10);  // no such number: ignored
    EXPECT_TRUE(run_QuanZhong(kIssue));
    EXPECT_EQ(serialAndScratch()[0].second, 19);
    EXPECT_TRUE(logEndsWith(u"号码权重设置完成！"));
}

}  // namespace
}  // namespace dovrex::test
