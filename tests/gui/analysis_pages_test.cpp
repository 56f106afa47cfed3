#include <QComboBox>
#include <QTableWidget>

#include "analysis/history_tables.h"
#include "analysis/jindu.h"
#include "gui/answering_screen.h"
#include "gui/seeded_program.h"
#include "ui/analysis/combination_omission_window.h"
#include "ui/analysis/combination_page.h"
#include "ui/analysis/omission_chart.h"
#include "ui/analysis/omission_page.h"
#include "ui/analysis/other_page.h"
#include "ui/analysis/recent_hits_page.h"
#include "ui/history/analysis_groups_dialog.h"
#include "widgets/cursor_model.h"
#include "widgets/jindu_panel.h"

using namespace dovrex;

namespace {

class AnalysisPagesTest : public StartedProgramTest<AnsweringScreen> {
  protected:
    // Turns to the analysis page `Page` of 其它.
    template <class Page>
    Page* show() {
        Page* page = window_->otherPage()->findChild<Page*>();
        EXPECT_NE(page, nullptr);
        window_->selectPage(TopPage::Other);
        window_->otherPage()->setCurrentWidget(page);
        return page;
    }
};

TEST_F(AnalysisPagesTest, OmissionPageFillsOnFirstShowAndAnswersClicksAndTips) {
    OmissionPage* page = show<OmissionPage>();
    OmissionChart* chart = page->chart();
    ASSERT_TRUE(QTest::qWaitFor([&] { return chart->count() == 33; }, 3000));
    EXPECT_EQ(std::pair(page->issueCombo()->currentText(), page->issueCombo()->count()),
              std::pair(QStringLiteral("2026096"), 50));
    // The figures of 2026096: OmissionShipped.NewestIssueFiguresMatchTheDraws.
    EXPECT_EQ(chart->figures()[1].curGap, 0);

    // A click on a group shows its figures; the tip names the bar under the mouse.
    const QPoint inGroup3(int(chart->width() / 33.0 * 2.5), int(chart->height() * 0.8));
    QTest::mouseClick(chart, Qt::LeftButton, {}, inGroup3);
    ASSERT_EQ(screen_->shown.size(), 1);
    EXPECT_TRUE(screen_->shown[0].startsWith(QStringLiteral("红球号码０３ (截止 2026096 期)")));
    EXPECT_EQ(chart->groupAt(QPoint(2, 2)), 0);
    // Low in the group: the current bar of 03 stands there (its absence is above the average).
    EXPECT_EQ(chart->tipAt(inGroup3), omission_CurTip(QStringLiteral("2026096"), chart->figures()[3]));

    // The blue count, up to an older issue typed in the box.
    page->issueCombo()->setEditText(QStringLiteral("2026095"));
    page->itemCombo()->setCurrentIndex(1);
    ASSERT_EQ(chart->count(), 16);
    EXPECT_EQ(chart->figures()[16].curGap, 0);  // 2026095 drew the blue 16
    EXPECT_TRUE(chart->clickText(16).startsWith(QStringLiteral("蓝球号码１６ 截止 2026095 期")));
}

TEST_F(AnalysisPagesTest, RecentHitsCountTheNewestTenIssuesByDefault) {
    RecentHitsPage* page = show<RecentHitsPage>();
    ASSERT_EQ(page->bars().size(), 33u);
    EXPECT_EQ(QStringList({page->fromCombo()->currentText(), page->toCombo()->currentText()}),
              QStringList({"2026087", "2026096"}));
    EXPECT_EQ(page->bars()[0].label, QStringLiteral("红球:01"));
    // The counts themselves: AnalysisTables.RecentHitsAndTheDefaultRange.
    page->itemCombo()->setCurrentIndex(1);
    page->count();
    EXPECT_EQ(page->bars().size(), 16u);
}

TEST_F(AnalysisPagesTest, PairOmissionRunsBehindTheProgressPanelAndShowsTheMostOverdueFirst) {
    CombinationPage* page = show<CombinationPage>();
    screen_->answer = false;  // cancelled at the warning: no window
    EXPECT_EQ(page->run(2), -1);
    EXPECT_EQ(page->tableWindow(), nullptr);
    EXPECT_FALSE(page->panel()->isVisible());

    screen_->answer = true;
    EXPECT_EQ(page->run(2), 528);
    EXPECT_FALSE(page->panel()->isVisible());
    EXPECT_EQ(page->panel()->countText(), QStringLiteral("528/528"));
    CombinationOmissionWindow* window = page->tableWindow();
    ASSERT_NE(window, nullptr);
    EXPECT_EQ(window->windowTitle(), QStringLiteral("截止２０２６０９６期号码组合遗漏统计表"));
    auto* model = qobject_cast<CursorModel*>(window->grid()->model());
    ASSERT_EQ(model->rowCount(), 528);
    EXPECT_EQ(model->headerData(0, Qt::Horizontal).toString(), QStringLiteral("号码组合"));
    // Ordered by the present absence, the longest first.
    const int qs = 1;
    EXPECT_GE(model->index(0, qs).data().toInt(), model->index(1, qs).data().toInt());
    EXPECT_GE(model->index(1, qs).data().toInt(), model->index(527, qs).data().toInt());
    window->close();
}

TEST_F(AnalysisPagesTest, GroupOptionsWriteEachTickAtOnce) {
    AnalysisGroupsDialog dialog(window_);
    QTableWidget* table = dialog.table();
    ASSERT_EQ(table->rowCount(), 33);
    ASSERT_EQ(table->columnCount(), 20);
    // The shipped groups: 01..11 is the first, the odd numbers the fourth.
    EXPECT_EQ(std::pair(table->item(0, 0)->checkState(), table->item(1, 3)->checkState()),
              std::pair(Qt::Checked, Qt::Unchecked));
    EXPECT_FALSE(readAnalysisGroups()[33][8]);
    table->item(32, 7)->setCheckState(Qt::Checked);
    table->item(0, 0)->setCheckState(Qt::Unchecked);
    // What the groups then make: AnalysisTables.GroupsSortTheRedsOfEachDraw.
    EXPECT_EQ(std::pair(readAnalysisGroups()[33][8], readAnalysisGroups()[1][1]), std::pair(true, false));
}

TEST(JinDuPanelTest, ShowsTheStateAndStopsOnce) {
    myJinDuCTL state;
    JinDuPanel panel(state);
    state.show(QStringLiteral("正在统计，请稍候．．．"), 0, 10);
    EXPECT_TRUE(panel.isVisible());
    state.setValueJindu(7);
    EXPECT_EQ(panel.countText(), QStringLiteral("7/10"));
    panel.stopButton()->click();
    EXPECT_EQ(state.Tingzhi(), 1);
    EXPECT_FALSE(panel.stopButton()->isEnabled());
    state.hide();
    EXPECT_FALSE(panel.isVisible());
}

}  // namespace
