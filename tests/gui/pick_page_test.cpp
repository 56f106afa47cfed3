#include <QAction>
#include <QApplication>
#include <QElapsedTimer>
#include <QLabel>
#include <QPlainTextEdit>
#include <QTabBar>
#include <cstdio>

#include "app/pipeline_commands.h"
#include "gui/answering_screen.h"
#include "gui/seeded_program.h"
#include "pipeline/pick_state.h"
#include "pipeline/ticket_init.h"
#include "screen/run_panel.h"
#include "screen/ticket_page.h"
#include "support/table_rows.h"
#include "support/test_support.h"
#include "ui/conditions/conditions_page.h"
#include "ui/conditions/pick_page.h"
#include "widgets/cursor_model.h"
#include "widgets/pick_button.h"

using namespace dovrex;

namespace {

// Questions answered from a queue (yes when empty), the issue typed in advance.
class PickPageTest : public StartedProgramTest<AnsweringScreen> {
  protected:
    void SetUp() override {
        StartedProgramTest::SetUp();
        screen_->reply = QStringLiteral("2026097");
        pickPage_ = qobject_cast<PickPage*>(window_->conditionsPage()->tab(1));
        ASSERT_NE(pickPage_, nullptr);
    }

    void click(int index) { QTest::mouseClick(pickPage_->button(index), Qt::LeftButton); }
    QString tipText() const {
        return window_->findChild<QPlainTextEdit*>(QStringLiteral("Text_ChoseNumberTip"))->toPlainText();
    }
    QAction* menuEntry(int index) const {
        return window_->findChild<QAction*>(QStringLiteral("mnu_ShengCeng(%1)").arg(index));
    }
    PickPage* pickPage_ = nullptr;
};

TEST_F(PickPageTest, OpensOnThePickPageWithTheStoredPicks) {
    EXPECT_EQ(window_->tabStrip()->currentIndex(), int(TopPage::Conditions));
    EXPECT_EQ(window_->conditionsPage()->currentTab(), 1);
    EXPECT_TRUE(pickPage_->isVisible());
    // 33 red (1..33) and 16 blue (101..116), found by the role names the logic uses.
    for (int n = 1; n <= 117; ++n) {
        const bool exists = window_->findChild<PickButton*>(QStringLiteral("cmm_C7(%1)").arg(n)) != nullptr;
        EXPECT_EQ(exists, n <= 33 || (n > 100 && n <= 116)) << n;
    }
    EXPECT_EQ(pickPage_->button(34), nullptr);
    EXPECT_TRUE(tipText().contains(QStringLiteral("所选号码组合共： ０  注")));
}

TEST_F(PickPageTest, ClicksWriteThePickRowsAtOnce) {
    click(5);
    EXPECT_EQ(get_GuoLvTiaoJian(5), kPickDrag);
    EXPECT_EQ(pickPage_->button(5)->pick(), kPickDrag);

    // Banker mode (its tip, the question, the limits: PicksTest): a drag turned banker once asked, a
    // refused click leaving the button as it was, a blue banker disabling the other blues.
    pickPage_->redTabs()->setCurrentIndex(1);
    EXPECT_EQ(screen_->shown.last(), msg::kBankerTip);
    click(5);
    EXPECT_EQ(screen_->asked.size(), 1);
    EXPECT_EQ(get_GuoLvTiaoJian(5), kPickBanker);
    EXPECT_EQ(pickPage_->button(5)->pick(), kPickBanker);
    for (int n : {1, 2, 3, 7, 9}) click(n);
    EXPECT_EQ(screen_->shown.last(), msg::kRedBankerLimit);
    EXPECT_EQ(pickPage_->button(9)->pick(), kPickNone);
    pickPage_->blueTabs()->setCurrentIndex(1);
    click(110);
    for (int n = 101; n <= 116; ++n) EXPECT_EQ(pickPage_->button(n)->isEnabled(), n == 110) << n;
    EXPECT_TRUE(tipText().contains(QStringLiteral("已选红球“胆码”个数： ５")));
    QTest::mouseClick(window_->findChild<QPushButton*>(QStringLiteral("cmm_clsQ")), Qt::LeftButton);
    QTest::mouseClick(window_->findChild<QPushButton*>(QStringLiteral("cmm_clsH")), Qt::LeftButton);
    for (int n = 1; n <= 33; ++n) EXPECT_EQ(pickPage_->button(n)->pick(), kPickNone);
    EXPECT_EQ(pickPage_->button(110)->pick(), kPickNone);
    EXPECT_EQ(count_HongDan() + count_HongTuo() + count_LanDan() + count_LanTuo(), 0);
}

// Picks written elsewhere (a condition file, another user's set, the distribution grid) show once
// the logic says the picks changed.
TEST_F(PickPageTest, RepaintsPicksAndMarksWrittenElsewhere) {
    pickRange(1, 6, kPickDrag);
    set_GuoLvTiaoJian(105, kPickBanker);
    screen_->ui_RefreshPicks();
    EXPECT_EQ(pickPage_->button(6)->pick(), kPickDrag);
    EXPECT_EQ(pickPage_->button(105)->pick(), kPickBanker);
    for (int n = 101; n <= 116; ++n) EXPECT_EQ(pickPage_->button(n)->isEnabled(), n == 105) << n;
    EXPECT_TRUE(tipText().contains(QStringLiteral("所选号码组合共： １  注")));

    // Numbers the analysis marks are struck through and ask first.
    gaiLvBiaoJi().red[9] = true;
    gaiLvBiaoJi().blue[3] = true;
    gaiLvBiaoJi().issue = 2026097;
    screen_->ui_RefreshPicks();  // what the analysis does when it ends
    EXPECT_TRUE(pickPage_->button(9)->isMarked());
    EXPECT_TRUE(pickPage_->button(103)->isMarked());
    EXPECT_FALSE(pickPage_->button(10)->isMarked());

    // Asked, and refused (the question: PicksTest.UnlikelyNumberAsksFirst).
    screen_->answers = {false};
    click(9);
    EXPECT_EQ(screen_->asked.size(), 1);
    EXPECT_EQ(get_GuoLvTiaoJian(9), kPickNone);

    // Both faces paint the mark without complaint.
    pickPage_->setBallFaces(true);
    EXPECT_TRUE(pickPage_->button(9)->ballFace());
    EXPECT_FALSE(pickPage_->button(9)->grab().isNull());
    click(10);  // a ball is clicked as its button is
    EXPECT_EQ(get_GuoLvTiaoJian(10), kPickDrag);
    EXPECT_EQ(pickPage_->button(10)->pick(), kPickDrag);
}

TEST_F(PickPageTest, KeyboardReachesEveryNumber) {
    QApplication::setActiveWindow(window_);
    pickPage_->button(1)->setFocus();
    // Each key pressed on `from` moves the focus to `to`; under red 24 sits blue 02.
    // clang-format off
    const struct { int from; Qt::Key key; int to; } moves[] = {
        {1, Qt::Key_Right, 2}, {2, Qt::Key_Space, 2}, {2, Qt::Key_Down, 13}, {13, Qt::Key_Down, 24},
        {24, Qt::Key_Down, 102}, {102, Qt::Key_Up, 24}, {24, Qt::Key_Left, 23}, {23, Qt::Key_Tab, 24}};
    // clang-format on
    for (const auto& m : moves) {
        QTest::keyClick(pickPage_->button(m.from), m.key);
        EXPECT_TRUE(pickPage_->button(m.to)->hasFocus()) << m.from << " -> " << m.to;
    }
    EXPECT_EQ(get_GuoLvTiaoJian(2), kPickDrag);  // the space picked it
}

TEST_F(PickPageTest, InitThroughTheButtonFillsTheGrid) {
    pickRange(1, 8, kPickDrag);
    pickRange(101, 101, kPickDrag);
    clickCommand(kCmdInit);

    CursorModel* model = screen_->gridModel(QStringLiteral("TDBGrid_RZ"));
    ASSERT_EQ(model, ticketsPage_->model());
    EXPECT_EQ(model->rowCount(), 28);
    EXPECT_EQ(get_BiaoGeQiHao(), 2026097);
    // The log and the head of the page say what was made and what it costs (InitTest).
    EXPECT_TRUE(ticketsPage_->log()->toPlainText().startsWith(screen_->shown.last()));
    EXPECT_EQ(ticketsPage_->findChild<QLabel*>(QStringLiteral("LabelTouZhuInfo"))->text(),
              QStringLiteral("第 2026097 期，共 28 注，56 元"));
    EXPECT_TRUE(ticketsPage_->commandBar()->isEnabled());
    EXPECT_TRUE(ticketsPage_->stopFrame()->isHidden());

    // The menu entry turns to the page first; 删除 empties the grid.
    window_->selectPage(TopPage::History);
    menuEntry(kCmdDelete)->trigger();
    EXPECT_EQ(window_->tabStrip()->currentIndex(), int(TopPage::Tickets));
    EXPECT_EQ(model->rowCount(), 0);
    EXPECT_EQ(screen_->shown.last(), msg::kTicketsDeleteDone);

    // With no picks the first step says so and turns to the pick page.
    QTest::mouseClick(window_->findChild<QPushButton*>(QStringLiteral("cmm_clsQ")), Qt::LeftButton);
    clickCommand(kCmdInit);
    EXPECT_EQ(screen_->shown.last(), msg::kPickFirst);
    EXPECT_EQ(window_->tabStrip()->currentIndex(), int(TopPage::Conditions));
    EXPECT_EQ(window_->conditionsPage()->currentTab(), 1);
}

// 77520 tickets (20 red drags, 2 blue); Stop is pressed with the mouse while the rows are written.
// The press is queued as a real one is: it waits for the pass's next yield. The time from the press
// to the end of the command is the delay the player sees.
TEST_F(PickPageTest, StopEndsTheInitialisationPromptly) {
    // An earlier set of the issue the step proposes, which the answer 是 would replace.
    for (int n = 6; n <= 8; ++n) test::addTicket(2026097, makeReds(1, 2, 3, 4, 5, n));
    load_TouZhuBiao(2026097);
    const QStringList before = test::tableRows(store(), QStringLiteral("日志表"));
    pickRange(1, 20, kPickDrag);
    pickRange(101, 102, kPickDrag);
    QAction* userSwitch = window_->findChild<QAction*>(QStringLiteral("mnu_UserQiehuan"));
    ASSERT_NE(userSwitch, nullptr);
    userSwitch->setVisible(true);  // as in multi-user mode: a hidden action never reads enabled
    auto* bar = window_->findChild<QProgressBar*>(QStringLiteral("ProgressBar_TouZu_Busy"));
    // The command bar, the menu entry and the user switch: resting while a pass runs.
    const auto commandsEnabled = [&] {
        return QList<bool>{ticketsPage_->commandBar()->isEnabled(), menuEntry(kCmdInit)->isEnabled(),
                           userSwitch->isEnabled()};
    };
    QList<bool> enabledDuringRun;
    bool panelShown = false;
    int rowsAtPress = -1;
    QElapsedTimer sincePress;
    pressStopAt(5000, [&] {
        enabledDuringRun = commandsEnabled();
        panelShown = ticketsPage_->stopFrame()->isVisible() && bar->maximum() == 77520;
        rowsAtPress = bar->value();
        sincePress.start();
    });
    clickCommand(kCmdInit);
    ASSERT_TRUE(sincePress.isValid()) << "the run ended before Stop was pressed";
    const double delay = sincePress.nsecsElapsed() / 1e6;
    QTest::mouseRelease(ticketsPage_->stopButton(), Qt::LeftButton);

    std::printf("[ stop ] Stop pressed near row %d of 77520, run ended %.1f ms after the press\n",
                rowsAtPress, delay);
    EXPECT_EQ(enabledDuringRun, QList<bool>({false, false, false}));
    EXPECT_TRUE(panelShown);
    // Taken back whole (the rule: InterruptedInitTest): the old tickets as they were, the head and the
    // log saying so.
    EXPECT_EQ(test::tableRows(store(), QStringLiteral("日志表")), before);
    EXPECT_EQ(window_->findChild<QLabel*>(QStringLiteral("LabelTouZhuInfo"))->text(),
              issueTicketsAndCost(2026097, 3));
    EXPECT_TRUE(ticketsPage_->log()->toPlainText().endsWith(msg::kInitStopped));
    EXPECT_EQ(shared().tingZhi, 0);
    EXPECT_TRUE(screen_->shown.filter(QStringLiteral("初始化选号完成")).isEmpty());
    EXPECT_EQ(commandsEnabled(), QList<bool>({true, true, true}));
    EXPECT_TRUE(ticketsPage_->stopFrame()->isHidden());

    // With the Stop panel down, progress of other passes goes to the status line's bar.
    auto* statusBar = window_->findChild<QProgressBar*>(QStringLiteral("ProgressBar_Status"));
    screen_->ui_Progress(0, 10, 4, true);
    EXPECT_EQ(statusBar->value(), 4);
    EXPECT_NE(bar->maximum(), 10);
}

}  // namespace
