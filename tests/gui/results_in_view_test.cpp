// The window shows each result where the player looks: the prize check's hits as numbers and its
// report in view, a status line that outlives every command, the entry row whole on a small screen.

#include <QAction>
#include <QDateEdit>
#include <QDialog>
#include <QMenu>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QStatusBar>
#include <QTableView>

#include "analysis/probability.h"
#include "app/pipeline_commands.h"
#include "gui/answering_screen.h"
#include "gui/seeded_program.h"
#include "history/draw_download.h"
#include "results/prize_check.h"
#include "screen/run_panel.h"
#include "ui/history/history_page.h"
#include "widgets/cursor_model.h"

namespace dovrex {
namespace {

// The window at 1366x768, as the pictures kept by keepPicture show it.
class ResultsInViewTest : public StartedProgramTest<AnsweringScreen> {
  protected:
    void SetUp() override {
        StartedProgramTest::SetUp();
        window_->resize(1366, 768);
    }
    int gridColumn(const QString& field) const { return columnOf(ticketsPage_->model(), field); }
};

TEST_F(ResultsInViewTest, PrizeCheckShowsHitCountsAsNumbersAndItsReportInView) {
    // Tickets of 2026096 holding its drawn reds 01 and 04 ...
    pickRange(1, 9, kPickDrag);
    pickRange(101, 101, kPickDrag);
    screen_->typed << QStringLiteral("2026096");
    clickCommand(kCmdInit);
    // ... and a log long enough to scroll, viewed at its end.
    for (int i = 0; i < 60; ++i) log_Append(QStringLiteral("第 %1 行").arg(i));
    QPlainTextEdit* log = ticketsPage_->log();
    ASSERT_GT(log->verticalScrollBar()->maximum(), 0);
    EXPECT_EQ(log->verticalScrollBar()->value(), log->verticalScrollBar()->maximum());

    clickCommand(kCmdPrizeCheck);
    EXPECT_TRUE(screen_->shown.contains(msg::kCheckDone));
    // The report went in front of the log: the view shows it from its start.
    EXPECT_TRUE(log->toPlainText().startsWith(msg::kCheckReportHead));
    EXPECT_EQ(log->verticalScrollBar()->value(), 0);
    // The drawn numbers are balls in the number columns; the hit counts stay numbers.
    QTableView* grid = ticketsPage_->grid();
    EXPECT_NE(grid->itemDelegateForColumn(gridColumn(QStringLiteral("红球1"))), nullptr);
    EXPECT_NE(grid->itemDelegateForColumn(gridColumn(QStringLiteral("蓝球"))), nullptr);
    for (const char* hits : {"红球中", "蓝球中"})
        EXPECT_EQ(grid->itemDelegateForColumn(gridColumn(QString::fromUtf8(hits))), nullptr) << hits;
    keepPicture(window_, QStringLiteral("prize-check"));
}

TEST_F(ResultsInViewTest, StatusLineOutlivesAnalysisAndAFailedDownload) {
    const QString history = screen_->statusText(1), draws = screen_->statusText(3);
    ASSERT_FALSE(history.isEmpty() || draws.isEmpty());  // what they say: MainWindowTest.StartShows...

    cmd_FX_Click();
    EXPECT_EQ(screen_->statusText(1), history);
    EXPECT_EQ(screen_->statusText(3), draws);
    // The analysis says it is done where it was started, in a tip over the window.
    EXPECT_FALSE(window_->findChildren<QDialog*>().isEmpty());

    const QString refused = QStringLiteral("http://127.0.0.1:9/x");  // nothing listens on port 9
    save_MirrorAddresses({refused, refused, refused});
    window_->historyPage()->downloadDraws();
    EXPECT_TRUE(screen_->shown.contains(msg::kDownloadFailed));
    EXPECT_EQ(screen_->statusText(1), history);
    EXPECT_EQ(screen_->statusText(3), draws);
    keepPicture(window_->statusBar(), QStringLiteral("status-line"));
}

TEST_F(ResultsInViewTest, SmallScreenKeepsTheEntryRowWholeAndUsersSwitchInTools) {
    window_->setMinimumSize(0, 0);
    window_->resize(963, 564);  // what the window takes of a 1024x600 screen
    window_->selectPage(TopPage::History);
    QApplication::processEvents();
    QDateEdit* date = window_->historyPage()->datePicker();
    EXPECT_GE(date->width(), date->sizeHint().width());
    EXPECT_LE(date->mapTo(window_, QPoint(date->width(), 0)).x(), window_->width());

    QAction* switchUser = window_->findChild<QAction*>(QStringLiteral("mnu_UserQiehuan"));
    ASSERT_NE(switchUser, nullptr);
    EXPECT_TRUE(window_->menu(QStringLiteral("工具(&T)"))->actions().contains(switchUser));
}

}  // namespace
}  // namespace dovrex
