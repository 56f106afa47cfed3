#include <QDate>

#include "core/pipeline_fixture.h"
#include "history/history_queries.h"
#include "screen/run_panel.h"

namespace dovrex::test {
namespace {

using PicksTest = PipelineTest;

TEST(PickCount, CombinationsWithBankers) {
    // {numbers, taken, bankers among them, combinations}: 8 with 2 bankers is C(6,4).
    const int cases[][4] = {{5, 6, 0, 0},  {6, 6, 0, 1},   {8, 6, 6, 1}, {10, 6, 0, 210},
                            {8, 6, 2, 15}, {16, 1, 0, 16}, {0, 1, 0, 0}, {33, 6, 0, 1107568}};
    for (const auto& c : cases) EXPECT_EQ(calc_ZuHeShu(c[0], c[1], c[2]), c[3]) << c[0] << " " << c[2];
}

TEST_F(PicksTest, CountsTipTextAndTheLimit) {
    pickDrags(10, 2);
    show_XuanHaoTongJi();
    EXPECT_EQ(picks().zhuShu, 420);
    EXPECT_EQ(picks().tipText,
              QStringLiteral("已选红球“拖码”个数： １０\r\n\r\n已选红球“胆码”个数： ０\r\n\r\n"
                             "已选蓝球个数： ２\r\n\r\n所选号码组合共： ４２０  注"));
    EXPECT_TRUE(ui().lines().contains(QStringLiteral("SET Text_ChoseNumberTip.text = ") +
                                      ScriptedScreen::oneLine(picks().tipText)));
    // The history display mode at ID 39 lies in the red range and counts with the reds.
    set_GuoLvTiaoJian(39, 1);
    EXPECT_EQ(count_HongTuo(), 11);
    cmm_clsQ_Click();
    EXPECT_EQ(count_HongTuo(), 0);
    EXPECT_EQ(get_GuoLvTiaoJian(39), 0);
    EXPECT_EQ(picks().zhuShu, 0);
    EXPECT_EQ(count_LanTuo(), 2);
    cmm_clsH_Click();
    EXPECT_EQ(count_LanTuo(), 0);
    // The limit refuses the pick that would pass it.
    set_GuoLvFanWei(1, 20, kPickDrag);  // 38760 sixes
    cmm_C7_Click(101);
    cmm_C7_Click(102);
    EXPECT_EQ(picks().zhuShu, 77520);
    cmm_C7_Click(103);  // 116280: refused
    EXPECT_EQ(get_GuoLvTiaoJian(103), kPickNone);
    EXPECT_EQ(picks().zhuShu, 77520);
    EXPECT_EQ(ui().messages().last(), msg::kTicketLimit);
}

TEST_F(PicksTest, ClickTogglesAndAsksBeforeChangingKind) {
    cmm_C7_Click(5);  // drag mode
    EXPECT_EQ(get_GuoLvTiaoJian(5), kPickDrag);
    cmm_C7_Click(5);
    EXPECT_EQ(get_GuoLvTiaoJian(5), kPickNone);
    cmm_C7_Click(5);
    tabStrip_QiaQu_Click(2);
    ui().answerConfirm(false);
    cmm_C7_Click(5);
    EXPECT_EQ(get_GuoLvTiaoJian(5), kPickDrag);
    ui().answerConfirm(true);
    cmm_C7_Click(5);
    EXPECT_EQ(get_GuoLvTiaoJian(5), kPickBanker);
    tabStrip_QiaQu_Click(1);
    ui().answerConfirm(true);
    cmm_C7_Click(5);
    EXPECT_EQ(get_GuoLvTiaoJian(5), kPickDrag);
    // The blue question names the raw button index.
    tabStrip_HouQu_Click(2);
    cmm_C7_Click(105);
    tabStrip_HouQu_Click(1);
    ui().answerConfirm(false);
    cmm_C7_Click(105);
    EXPECT_EQ(get_GuoLvTiaoJian(105), kPickBanker);
    EXPECT_EQ(ui().linesStartingWith(QStringLiteral("CONFIRM")),
              (QStringList{
                  QStringLiteral("CONFIRM 号码：５之前已经被设为拖码，现在要把它改为胆码吗？ -> no"),
                  QStringLiteral("CONFIRM 号码：５之前已经被设为拖码，现在要把它改为胆码吗？ -> yes"),
                  QStringLiteral("CONFIRM 号码：０５之前已经被设为胆码，现在要把它改为拖码吗？ -> yes"),
                  QStringLiteral("CONFIRM 号码：１０５之前已经被设为胆码，现在要把它改为拖码吗？ -> no")}));
}

TEST_F(PicksTest, FiveRedBankersAtMostAndTabTipsOncePerRun) {
    tabStrip_QiaQu_Click(2);
    for (int n = 1; n <= 5; ++n) cmm_C7_Click(n);
    EXPECT_EQ(count_HongDan(), 5);
    EXPECT_TRUE(ui().messages().filter(QStringLiteral("最多")).isEmpty());
    cmm_C7_Click(6);  // was none: back to none
    EXPECT_EQ(get_GuoLvTiaoJian(6), kPickNone);
    EXPECT_EQ(ui().messages().last(), msg::kRedBankerLimit);
    tabStrip_QiaQu_Click(1);
    cmm_C7_Click(7);
    tabStrip_QiaQu_Click(2);
    ui().answerConfirm(true);
    cmm_C7_Click(7);  // was a drag: back to a drag
    EXPECT_EQ(get_GuoLvTiaoJian(7), kPickDrag);
    EXPECT_EQ(count_HongDan(), 5);
    // Each kind's tab tip comes once per run, the blue tabs' too.
    tabStrip_QiaQu_Click(1);
    tabStrip_HouQu_Click(2);
    EXPECT_EQ(ui().messages(),
              (QStringList{msg::kBankerTip, msg::kRedBankerLimit, msg::kDragTip, msg::kRedBankerLimit}));
}

TEST_F(PicksTest, OneBlueBankerExcludesTheOthers) {
    for (int n = 101; n <= 103; ++n) cmm_C7_Click(n);
    EXPECT_EQ(count_LanTuo(), 3);
    tabStrip_HouQu_Click(2);
    cmm_C7_Click(109);
    EXPECT_EQ(count_LanTuo(), 0);
    EXPECT_EQ(count_LanDan(), 1);
    for (int n = 1; n <= kBlueCount; ++n) EXPECT_EQ(picks().blueEnabled[size_t(n)], n == 9) << n;
    // A restart finds the same buttons enabled.
    picks() = PickState{};
    load_XuanHaoZhuangTai();
    for (int n = 1; n <= kBlueCount; ++n) EXPECT_EQ(picks().blueEnabled[size_t(n)], n == 9) << n;

    tabStrip_HouQu_Click(2);
    cmm_C7_Click(109);
    EXPECT_EQ(count_LanDan(), 0);
    for (int n = 1; n <= kBlueCount; ++n) EXPECT_TRUE(picks().blueEnabled[size_t(n)]) << n;
    // A drag turned into a banker clears the other blues too, and turned back frees the buttons.
    tabStrip_HouQu_Click(1);
    for (int n = 101; n <= 103; ++n) cmm_C7_Click(n);
    tabStrip_HouQu_Click(2);
    ui().answerConfirm(true);
    cmm_C7_Click(102);
    EXPECT_EQ(count_LanDan(), 1);
    EXPECT_EQ(count_LanTuo(), 0);
    for (int n = 1; n <= kBlueCount; ++n) EXPECT_EQ(picks().blueEnabled[size_t(n)], n == 2) << n;
    tabStrip_HouQu_Click(1);
    cmm_C7_Click(102);
    EXPECT_EQ(count_LanTuo(), 1);
    for (int n = 1; n <= kBlueCount; ++n) EXPECT_TRUE(picks().blueEnabled[size_t(n)]) << n;
}

TEST_F(PicksTest, UnlikelyNumberAsksFirst) {
    gaiLvBiaoJi().red[7] = true;
    gaiLvBiaoJi().issue = 30;
    ui().answerConfirm(false);
    cmm_C7_Click(7);
    EXPECT_EQ(get_GuoLvTiaoJian(7), kPickNone);
    EXPECT_EQ(ui().lines().filter(QStringLiteral("CONFIRM")).first(),
              QStringLiteral(
                  "CONFIRM 根据概率统计,号码 ０７ 在３０期中开出的机率很低！确实想要选取这个号码吗？\\n\\n"
                  "[注意,此概率算法以历史开奖记录为依据来分析,请确保历史记录的完整及正确！] -> no"));
    ui().answerConfirm(true);
    cmm_C7_Click(7);
    EXPECT_EQ(get_GuoLvTiaoJian(7), kPickDrag);
    cmm_C7_Click(7);  // taking it away asks nothing
    EXPECT_EQ(ui().lines().filter(QStringLiteral("CONFIRM")).size(), 2);
}

TEST_F(PicksTest, CheckWithoutPicksTurnsToThePickPage) {
    pickDrags(5, 1);
    EXPECT_FALSE(check_XuanHao(false));
    EXPECT_TRUE(ui().messages().isEmpty());
    EXPECT_FALSE(check_XuanHao(true));
    EXPECT_EQ(ui().messages(), QStringList{msg::kPickFirst});
    EXPECT_TRUE(ui().lines().contains(QStringLiteral("SET TabStrip_Top.currentIndex = 0")));
    EXPECT_TRUE(ui().lines().contains(QStringLiteral("SET TabStrip_TiaoJian.currentRow = 0")));
    set_GuoLvTiaoJian(6, kPickDrag);
    EXPECT_TRUE(check_XuanHao(true));
}

TEST_F(PicksTest, PickingInTheDistributionGrid) {
    Clock::setToday(QDate(2026, 3, 1));  // the row of the program's next issue takes picks, whatever the date
    const IssueNumber next = next_QiHao(Clock::today());
    store_Execute(QStringLiteral("INSERT INTO 号码分布 (期号) VALUES (?)"), {next});
    auto cell = [&](int column) {
        return scalar(QString::asprintf("select k%02d from 号码分布 where 期号=?", column), {next})
            .toString();
    };
    EXPECT_FALSE(tdbGrid_FenBu_MouseDown(next - 1, 5, true));
    EXPECT_TRUE(tdbGrid_FenBu_MouseDown(next, 5, true));
    EXPECT_EQ(cell(5), QStringLiteral("*"));
    EXPECT_EQ(get_GuoLvTiaoJian(5), kPickDrag);
    EXPECT_TRUE(tdbGrid_FenBu_MouseDown(next, 5, false));  // a filled cell empties
    EXPECT_EQ(cell(5), QString());
    EXPECT_EQ(get_GuoLvTiaoJian(5), kPickNone);

    for (int c = 1; c <= 5; ++c) tdbGrid_FenBu_MouseDown(next, c, false);
    EXPECT_EQ(count_HongDan(), 5);
    tdbGrid_FenBu_MouseDown(next, 6, false);
    EXPECT_EQ(cell(6), QString());
    EXPECT_EQ(get_GuoLvTiaoJian(6), kPickNone);
    EXPECT_EQ(ui().messages().last(), msg::kGridRedBankers);

    tdbGrid_FenBu_MouseDown(next, 35, false);  // blue 2: never a banker here
    EXPECT_EQ(cell(35), QStringLiteral("*"));
    EXPECT_EQ(get_GuoLvTiaoJian(102), kPickDrag);
    EXPECT_EQ(ui().messages().last(), msg::kGridBlueBanker);
    // Nor beside a drag picked here: a banker from the buttons becomes a drag too.
    store_Execute(QStringLiteral("UPDATE 号码分布 SET k35=NULL"));
    set_GuoLvTiaoJian(102, kPickNone);
    set_GuoLvTiaoJian(109, kPickBanker);
    tdbGrid_FenBu_MouseDown(next, 36, true);
    EXPECT_EQ(get_GuoLvTiaoJian(103), kPickDrag);
    EXPECT_EQ(get_GuoLvTiaoJian(109), kPickDrag);
    EXPECT_EQ(count_LanDan(), 0);
    EXPECT_TRUE(picks().blueEnabled[9] && picks().blueEnabled[3]);
}

}  // namespace
}  // namespace dovrex::test
