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
    static std::vector<std::pair<int, int>> serialAndScratch() {
        std::vector<std::pair<int, int>> out;
        auto c = store_Query(QStringLiteral("select 序号,临时数据 from 日志表 order by 序号"));
        for (; !c->eof(); c->moveNext()) out.emplace_back(c->intValue(0), c->intValue(1));
        return out;
    }
};

TEST_F(SelectionTest, DifferencesAndScoresKeepTheirPositions) {
    ChaZhiBlock a{};
    for (int r = 1; r <= 10; ++r)
        for (int c = 1; c <= 7; ++c) a[size_t(r)][size_t(c)] = r * 3 + c;
    const ChaZhiMoShi m = calc_ChaZhiMoShi(a);
    // Position (r, c, k) of the first block: A[r][c] - A[1][k], r from 2.
    EXPECT_EQ(m[0], a[2][1] - a[1][1]);
    EXPECT_EQ(m[1], a[2][1] - a[1][2]);
    EXPECT_EQ(m[7], a[2][2] - a[1][1]);
    EXPECT_EQ(m[49], a[3][1] - a[1][1]);
    EXPECT_EQ(m[440], a[10][7] - a[1][7]);
    // Then the newest draw within itself.
    EXPECT_EQ(m[441], a[1][1] - a[1][2]);
    EXPECT_EQ(m[461], a[1][6] - a[1][7]);
    EXPECT_EQ(m[462], 0);

    // A ticket equal to the newest draw of a block that repeats itself row by row, shifted by one:
    // every difference repeats, all 463 positions match.
    ChaZhiBlock same{};
    for (int r = 1; r <= 10; ++r)
        for (int c = 1; c <= 7; ++c) same[size_t(r)][size_t(c)] = c * 4;
    std::array<int, 8> t{};
    for (int c = 1; c <= 7; ++c) t[size_t(c)] = c * 4;
    EXPECT_EQ(calc_PiPeiShu(same, calc_ChaZhiMoShi(same), t), 463);
    // An empty block and a ticket of all-different values: only position 462 and the zero
    // differences of the block against it... none, since the ticket has no zero; the score is 1
    // plus the 21 inner differences that match the block's zeros: none.
    ChaZhiBlock empty{};
    std::array<int, 8> u{0, 1, 2, 3, 4, 5, 6, 7};
    EXPECT_EQ(calc_PiPeiShu(empty, calc_ChaZhiMoShi(empty), u), 1);
}

TEST_F(SelectionTest, SelectionKeepsTheLowestScores) {
    addHistory();
    pickRange(1, 7, kPickDrag);
    pickRange(101, 102, kPickDrag);
    EXPECT_EQ(init_TouZhu(kIssue), 14);
    // The scores as the routine computes them, per ticket.
    const ChaZhiBlock block = loadDifferenceBlock(kIssue);
    EXPECT_EQ(block[1][1], 1 + (11 * 7) % 20);  // newest: 2008117
    EXPECT_EQ(block[10][7], 1 + (2 * 5) % 16);  // oldest: 2008108
    const ChaZhiMoShi m = calc_ChaZhiMoShi(block);
    std::vector<std::pair<int, int>> expected;  // score, 序号
    for (const auto& t : tickets(kIssue)) {
        std::array<int, 8> v{};
        for (int i = 1; i <= 6; ++i) v[size_t(i)] = t.reds[size_t(i)];
        v[7] = t.blue;
        const int score = calc_PiPeiShu(block, m, v);
        EXPECT_GE(score, 1);
        expected.emplace_back(score, t.serial);
    }
    std::sort(expected.begin(), expected.end());
    // The three lowest, 序号 breaking ties on the score.
    std::vector<int> keep{expected[0].second, expected[1].second, expected[2].second};
    std::sort(keep.begin(), keep.end());

    ui().answerText(QStringLiteral("3"));
    cmmTouZhu_Click(kCmdSelect);
    std::vector<int> left;
    for (const auto& [serial, scratch] : serialAndScratch()) {
        left.push_back(serial);
        EXPECT_EQ(scratch, 999);
    }
    EXPECT_EQ(left, keep);  // 序号 keeps its gaps
    EXPECT_EQ(ui().messages().last(), msg::kSelectDone);
    // The result replaces the in-progress line and gives what the tickets left cost.
    EXPECT_TRUE(shared().operationLog.endsWith(
        QStringLiteral("\r\n\r\n[ 精选号码 ] 完 成 ，共 %1 注，%2 元")
            .arg(to_QuanJiao(int(keep.size())), to_QuanJiao(2 * int(keep.size())))));
    EXPECT_FALSE(shared().operationLog.contains(QStringLiteral("分析正在进行中")));

    // More than there are: all stay.
    ui().answerText(QStringLiteral("100"));
    cmmTouZhu_Click(kCmdSelect);
    EXPECT_EQ(serialAndScratch().size(), keep.size());
    // Tickets tied on score and 序号 at the cut all stay.
    int low = 1000, tied = 0;
    for (const auto& [score, serial] : expected)
        if (std::count(keep.begin(), keep.end(), serial)) low = std::min(low, score);
    for (const auto& [score, serial] : expected)
        tied += std::count(keep.begin(), keep.end(), serial) && score == low;
    store_Execute(QStringLiteral("UPDATE 日志表 SET 序号=1"));
    run_JingXuan(kIssue, 1);
    EXPECT_EQ(int(serialAndScratch().size()), tied);
    store_Execute(QStringLiteral("UPDATE 日志表 SET 序号=ID"));
    keep.resize(size_t(tied));
    // Zero or a cancel: nothing runs.
    ui().answerText(QString());
    cmmTouZhu_Click(kCmdSelect);
    EXPECT_EQ(serialAndScratch().size(), keep.size());
}

TEST_F(SelectionTest, SmartOptimisationScoresTheUpperFortyPerCent) {
    addHistory();
    pickRange(1, 8, kPickDrag);
    pickRange(101, 101, kPickDrag);
    EXPECT_EQ(init_TouZhu(kIssue), 28);
    // Switch off: nothing written.
    store_Execute(QStringLiteral("UPDATE 日志表 SET 临时数据=-5"));
    run_ZhiNengYouHua(kIssue, 6);
    for (const auto& [serial, scratch] : serialAndScratch()) EXPECT_EQ(scratch, -5);
    Check_auto_Click(true);
    run_ZhiNengYouHua(kIssue, 7);  // t 7: nothing either
    for (const auto& [serial, scratch] : serialAndScratch()) EXPECT_EQ(scratch, -5);

    run_ZhiNengYouHua(kIssue, 6);
    const auto scored = serialAndScratch();
    // 60 per cent of 28 rounds up to 17, plus the rows tied with the 17th: all at 0, the others
    // keep scores no lower than the cut.
    const int zeros = int(std::count_if(scored.begin(), scored.end(), [](auto p) { return p.second == 0; }));
    EXPECT_GE(zeros, 17);
    for (const auto& [serial, scratch] : scored) EXPECT_TRUE(scratch == 0 || scratch >= 1);
    EXPECT_TRUE(shared().operationLog.endsWith(QStringLiteral("[ 智能优化 ] 完 成 ")));
}

TEST_F(SelectionTest, WeightPresetsAndSums) {
    auto& w = shared().quanZhong;
    EXPECT_FALSE(run_QuanZhong(kIssue));  // all 0
    cmmQZfenpei_Click(1);
    EXPECT_EQ(w[1], 32);
    EXPECT_EQ(w[33], 0);
    cmmQZfenpei_Click(2);
    EXPECT_EQ(w[1], 33);
    EXPECT_EQ(w[2], 0);
    cmmQZfenpei_Click(7);
    EXPECT_EQ(w[2], 31);
    EXPECT_EQ(w[3], 0);
    cmmQZfenpei_Click(10);
    EXPECT_EQ(w[33], 33);
    EXPECT_EQ(w[32], 0);
    const auto before = w;
    cmmQZfenpei_Click(6);  // by hand: nothing changes
    EXPECT_EQ(w, before);
    EXPECT_EQ(ui().messages().last(), msg::kWeightsByHand);
    // 平均 with no pick, then with six: the middle of the pick weighs most.
    cmmQZfenpei_Click(4);
    EXPECT_EQ(w[16], 16);
    EXPECT_EQ(w[17], 16);
    EXPECT_EQ(w[33], 0);
    cmmQZfenpei_Click(5);
    for (int n : {3, 5, 8, 13, 21, 30}) set_GuoLvTiaoJian(n, kPickDrag);
    set_GuoLvTiaoJian(101, kPickDrag);
    cmmQZfenpei_Click(4);
    EXPECT_EQ((std::vector<int>{w[3], w[5], w[8], w[13], w[21], w[30]}),
              (std::vector<int>{1, 2, 3, 2, 1, 0}));
    EXPECT_EQ(w[4], 0);
    EXPECT_TRUE(
        ui().lines().last().startsWith(QStringLiteral("SET FrameHaomaQuanzongValue.weights = 0 0 1 0 2")));

    init_TouZhu(kIssue);
    EXPECT_TRUE(run_QuanZhong(kIssue));
    EXPECT_EQ(serialAndScratch()[0].second, 9);
    SliderQuanZong_Change(30, 10);
    SliderQuanZong_Change(34, 10);  // no such number: ignored
    EXPECT_TRUE(run_QuanZhong(kIssue));
    EXPECT_EQ(serialAndScratch()[0].second, 19);
    EXPECT_TRUE(shared().operationLog.endsWith(QStringLiteral("号码权重设置完成！")));
}

}  // namespace
}  // namespace dovrex::test
