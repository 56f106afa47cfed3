#include "core/pipeline_fixture.h"
#include "domain/record_checks.h"
#include "pipeline/ticket_init.h"
#include "screen/run_panel.h"
#include "support/table_rows.h"

namespace dovrex::test {
namespace {

constexpr IssueNumber kIssue = 2008118;

using InitTest = PipelineTest;

TEST_F(InitTest, TenDragsTwoBluesInExactOrder) {
    pickDrags(10, 2);
    EXPECT_EQ(init_TouZhu(kIssue), 420);
    const auto rows = tickets();
    ASSERT_EQ(rows.size(), 420u);
    const auto sixes = sixesOf({1, 2, 3, 4, 5, 6, 7, 8, 9, 10});
    for (size_t i = 0; i < rows.size(); ++i) {
        EXPECT_TRUE(rows[i].id == int(i) + 1 && rows[i].serial == int(i) + 1 && rows[i].issue == kIssue) << i;
        EXPECT_EQ(rows[i].reds, sixes[i / 2]) << i;
        EXPECT_EQ(rows[i].blue, int(i % 2) + 1) << i;
        // Ten drags and no banker use the formula; an empty Ssgs puts every ticket outside it.
        EXPECT_EQ(rows[i].formula, kOutsideFormula);
    }
    EXPECT_EQ(ui().messages(), QStringList{QStringLiteral("初始化选号完成!共 ４２０ 注！")});
    EXPECT_EQ(shared().operationLog, QStringLiteral("初始化选号完成!共 ４２０ 注！\r\n\r\n\r\n"));
    EXPECT_EQ(get_BiaoGeQiHao(), kIssue);
    EXPECT_TRUE(ui().lines().contains(QStringLiteral("GRID TDBGrid_RZ 420 rows")));
    EXPECT_EQ(ui().lines().last(), QStringLiteral("LOG 初始化选号完成!共 ４２０ 注！\\n\\n\\n"));
    // The panel was up during the run and is down again.
    EXPECT_TRUE(ui().lines().contains(QStringLiteral("SET LabelJinduAll.text = 420")));
    EXPECT_TRUE(ui().lines().contains(QStringLiteral("SET FrameStop.visible = false")));
    EXPECT_EQ(ui().pumpCount(), 420);
}

TEST_F(InitTest, FormulaMarksItsTicketsBySequenceNumberAndBankersTurnItOff) {
    for (int x : {3, 7, 7, 100})
        store_Execute(QStringLiteral("INSERT INTO Ssgs (Haomagesu, Xuhao) VALUES (11, ?)"), {x});
    store_Execute(QStringLiteral("INSERT INTO Ssgs (Haomagesu, Xuhao) VALUES (12, 1)"));
    pickDrags(11, 1);
    EXPECT_EQ(init_TouZhu(kIssue), 462);
    // The second 7 never matches, so the formula stops there: 100 stays outside.
    for (const auto& t : tickets())
        EXPECT_EQ(t.formula, t.serial == 3 || t.serial == 7 ? t.serial : kOutsideFormula) << t.serial;
    // Bankers are in every ticket and turn the formula off.
    set_GuoLvFanWei(1, 33, kPickNone);
    set_GuoLvFanWei(1, 2, kPickBanker);
    set_GuoLvFanWei(3, 8, kPickDrag);
    EXPECT_EQ(init_TouZhu(kIssue), 15);
    for (const auto& t : tickets())
        EXPECT_TRUE(t.reds[1] == 1 && t.reds[2] == 2 && t.formula == 0) << t.serial;
    // Eleven drags with a banker: still no formula.
    set_GuoLvTiaoJian(1, kPickBanker);
    set_GuoLvFanWei(2, 12, kPickDrag);
    init_TouZhu(kIssue);
    for (const auto& t : tickets()) EXPECT_EQ(t.formula, 0);
    // Nine or 21 drags: no formula, the column keeps its default.
    set_GuoLvFanWei(1, 33, kPickNone);
    pickDrags(9, 1);
    init_TouZhu(kIssue);
    for (const auto& t : tickets()) EXPECT_EQ(t.formula, 0);
    pickDrags(21, 1);
    EXPECT_EQ(init_TouZhu(kIssue), 54264);
    EXPECT_EQ(intScalar(QStringLiteral("select count(*) from 日志表 where 缩水公式<>0")), 0);
}

TEST_F(InitTest, ExistingRowsGoOrStayAsAnswered) {
    pickDrags(6, 2);
    store_Execute(QStringLiteral("INSERT INTO 日志表 (ID, 期号, 序号) VALUES (50, 2008117, 1)"));
    EXPECT_EQ(init_TouZhu(kIssue), 2);
    EXPECT_EQ(intScalar(QStringLiteral("select count(*) from 日志表 where 期号=2008117")), 0);
    EXPECT_EQ(tickets().front().id, 1);  // other issues go before the running key is read
    ui().answerConfirm(false);
    EXPECT_EQ(init_TouZhu(kIssue), 4);
    EXPECT_TRUE(ui().lines().contains(QStringLiteral("CONFIRM ") +
                                      ScriptedScreen::oneLine(msg::kKeepOldTickets) +
                                      QStringLiteral(" | 信息提示 -> no")));
    // ID and 序号: 序号 starts again, so it occurs twice.
    EXPECT_EQ(queryLines(store(), QStringLiteral("select ID, 序号 from 日志表 order by ID")),
              words("1|1 2|2 3|1 4|2"));
    EXPECT_EQ(ui().messages().last(), QStringLiteral("初始化选号完成!共 ４ 注！"));
    ui().answerConfirm(true);
    EXPECT_EQ(init_TouZhu(kIssue), 2);
    // Behind the rows the answer deleted.
    EXPECT_EQ(columnValues(store(), QStringLiteral("select ID from 日志表 order by ID")), (QList<int>{5, 6}));
}

// Stop in the middle of the step, whether the old tickets were to go or to stay: every row of the
// table (another issue's included) is as it was, the grid is bound again to it, and the log says
// that nothing changed.
TEST_F(InitTest, StopTakesTheWholeStepBack) {
    for (bool replace : {true, false}) {
        store_Execute(QStringLiteral("DELETE FROM 日志表"));
        set_GuoLvFanWei(1, kRedCount, kPickNone);
        set_GuoLvFanWei(101, 100 + kBlueCount, kPickNone);
        pickDrags(7, 1);
        init_TouZhu(kIssue);
        store_Execute(QStringLiteral("UPDATE 日志表 SET 缩水标记=1, 临时数据=999 WHERE 序号=3"));
        store_Execute(QStringLiteral("INSERT INTO 日志表 (ID, 期号, 序号) VALUES (90, 2008117, 1)"));
        load_TouZhuBiao(-1);
        const QStringList before = tableRows(store(), QStringLiteral("日志表"));

        pickDrags(10, 2);
        ui().answerConfirm(replace);
        ui().stopAfterPumps(30);
        const int messages = int(ui().messages().size());
        EXPECT_EQ(init_TouZhu(kIssue), 7) << replace;
        EXPECT_EQ(tableRows(store(), QStringLiteral("日志表")), before) << replace;
        EXPECT_EQ(touZhuBiao()->recordCount(), 8);
        EXPECT_EQ(ui().messages().size(), messages);
        EXPECT_TRUE(logEndsWith(msg::kInitStopped));
        EXPECT_EQ(shared().tingZhi, 0);
        EXPECT_TRUE(ui().lines().contains(QStringLiteral("SET Pic_subTouZhu.enabled = true")));
    }
}

TEST_F(InitTest, TheLimitHoldsWhateverThePickRowsSay) {
    store_Execute(QStringLiteral("INSERT INTO 日志表 (ID, 期号, 序号) VALUES (1, 2008117, 1)"));
    // Rows no click would leave: every number picked (17,721,088 tickets). Refused before any
    // row changes, with the limit's message.
    pickDrags(kRedCount, kBlueCount);
    EXPECT_EQ(init_TouZhu(kIssue), 0);
    EXPECT_EQ(ui().messages(), QStringList{msg::kTicketLimit});
    EXPECT_EQ(tickets().size(), 1u);
    // A blue banker beside 15 blue drags: the banker is the only blue, as the count says.
    set_GuoLvFanWei(1, kRedCount, kPickNone);
    pickDrags(20, kBlueCount);
    set_GuoLvTiaoJian(102, kPickBanker);
    show_XuanHaoTongJi();
    EXPECT_EQ(init_TouZhu(kIssue), picks().zhuShu);
    EXPECT_EQ(intScalar(QStringLiteral("select count(*) from 日志表 where 蓝球<>2")), 0);
    EXPECT_EQ(tickets().size(), 38760u);
    // Rows kept at the question count towards the limit: exactly the limit is written, one more
    // is refused.
    set_GuoLvFanWei(101, 100 + kBlueCount, kPickNone);
    pickDrags(20, 1);
    for (const int kept : {kTicketLimit - 38760 + 1, kTicketLimit - 38760}) {
        store_Execute(QStringLiteral("DELETE FROM 日志表"));
        addTickets(kIssue, kept);
        ui().clear();
        ui().answerConfirm(false);
        const bool fits = kept + 38760 <= kTicketLimit;
        EXPECT_EQ(init_TouZhu(kIssue), fits ? kTicketLimit : kept);
        EXPECT_EQ(intScalar(QStringLiteral("select count(*) from 日志表")), fits ? kTicketLimit : kept);
        EXPECT_EQ(ui().messages().contains(msg::kTicketLimit), !fits);
    }
}

TEST(IssuePrompt, ReadsTheFirstSevenCharacters) {
    // clang-format off
    const std::pair<const char*, IssueNumber> cases[] = {
        {"2008118abc", 2008118}, {"  2008118  ", 2008118}, {"20081189", 2008118}, {"", 0}, {"abc", 0},
        {"-5", 0}, {"12 34", 1234}, {"2008.5", 2008}, {"2009.5", 2010}, {"2e3", 2000}};
    // clang-format on
    for (const auto& [text, issue] : cases) EXPECT_EQ(readIssue(QString::fromUtf8(text)), issue) << text;
    EXPECT_EQ(readIssue(QString()), 0);
}

using CommandsTest = InitTest;

TEST_F(CommandsTest, NothingToExpandAndAnEmptyGridRefuseTheSteps) {
    shared().biaoJiQingLing = 1;
    pickDrags(5, 1);
    EXPECT_EQ(init_TouZhu(kIssue), 0);
    EXPECT_EQ(ui().messages(), QStringList{msg::kPickFirst});
    EXPECT_EQ(shared().biaoJiQingLing, 0);
    ui().clear();
    for (int index : {kCmdFilter, kCmdSelect, kCmdPrizeCheck}) cmmTouZhu_Click(index);
    EXPECT_EQ(ui().messages(), QStringList(3, msg::kNoTickets));
    EXPECT_EQ(ui().lines().filter(QStringLiteral("SET Pic_subTouZhu.enabled = false")).size(), 3);
    EXPECT_EQ(ui().lines().filter(QStringLiteral("SET Pic_subTouZhu.enabled = true")).size(), 3);
    EXPECT_EQ(ui().lines().last(), QStringLiteral("SET Pic_subTouZhu.enabled = true"));
}

TEST_F(CommandsTest, FirstStepFromThePromptThenDelete) {
    pickDrags(6, 3);
    ui().answerText(QStringLiteral("2008118abc"));
    cmmTouZhu_Click(kCmdInit);
    const QStringList asks = ui().linesStartingWith(QStringLiteral("ASK "));
    ASSERT_EQ(asks.size(), 1);
    EXPECT_TRUE(asks[0].startsWith(QStringLiteral("ASK ") + ScriptedScreen::oneLine(msg::kAskIssue)));
    EXPECT_EQ(tickets(kIssue).size(), 3u);
    EXPECT_TRUE(ui().lines().contains(QStringLiteral("SET mnu_UserQiehuan.enabled = false")));
    // The marker columns stay out of sight.
    const QStringList dress = ui().linesStartingWith(QStringLiteral("DRESS TDBGrid_RZ"));
    ASSERT_FALSE(dress.isEmpty());
    for (const char* hidden :
         {"ID:0", "过滤标记:0", "缩水标记:0", "精选标记:0", "临时数据:0", "缩水公式:0", "序号:-1"})
        EXPECT_TRUE(dress.last().contains(QString::fromUtf8(hidden))) << hidden;

    ui().answerText(QString());  // cancel: nothing happens
    cmmTouZhu_Click(kCmdInit);
    EXPECT_EQ(tickets(kIssue).size(), 3u);

    ui().answerConfirm(false);
    cmmTouZhu_Click(kCmdDelete);
    EXPECT_EQ(tickets().size(), 3u);
    cmmTouZhu_Click(kCmdDelete);
    EXPECT_TRUE(tickets().empty());
    EXPECT_EQ(ui().messages().last(), msg::kTicketsDeleteDone);
    EXPECT_TRUE(logEndsWith(kCrLf2 + msg::kDeleteLogged));
    EXPECT_EQ(get_BiaoGeQiHao(), 0);
}

}  // namespace
}  // namespace dovrex::test
