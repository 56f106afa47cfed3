// 条件回测, 容错 and 回测收益 from the window, on a started program with the shipped history. What the
// passes find is held by BacktestTest and ReplayTest.

#include <QAction>
#include <QLabel>
#include <QSpinBox>
#include <QTabWidget>
#include <QTableWidget>

#include "domain/condition_catalogue.h"
#include "gui/answering_screen.h"
#include "gui/seeded_program.h"
#include "pipeline/pick_state.h"
#include "support/test_support.h"
#include "ui/analysis/replay_window.h"
#include "ui/conditions/backtest_window.h"

namespace dovrex {
namespace {

class BacktestWindowTest : public StartedProgramTest<AnsweringScreen> {
  protected:
    void trigger(const char* entry) { window_->findChild<QAction*>(QLatin1String(entry))->trigger(); }
};

// The tolerance beside the condition tabs writes its row; the menu opens the window, which measures
// the newest hundred draws with the conditions on and shows a row for each draw and condition.
TEST_F(BacktestWindowTest, ToleranceAndTheNewestHundredDraws) {
    auto* tolerance = window_->findChild<QSpinBox*>(QStringLiteral("Spin_RongCuo"));
    ASSERT_NE(tolerance, nullptr);
    tolerance->setValue(2);
    EXPECT_EQ(filter_Tolerance(), 2);

    set_ShiYongQingKuang(1, 1);  // 和值 within 100..130 only
    set_GuoLvFanWei(1000, 1183, 0);
    set_GuoLvFanWei(1100, 1130, 1);
    trigger("mnu_TiaoJianHuiCe");
    auto* window = window_->findChild<BacktestWindow*>(QStringLiteral("frmTiaoJianHuiCe"));
    ASSERT_NE(window, nullptr);
    ASSERT_TRUE(window->isVisible());
    window->run();
    const BacktestResult& r = window->result();
    EXPECT_EQ(std::pair(int(r.draws.size()), r.tolerance), std::pair(100, 2));  // what it finds: BacktestTest
    QTableWidget *draws = nullptr, *conditions = nullptr;
    for (auto* t : window->findChildren<QTableWidget*>()) (t->columnCount() == 3 ? draws : conditions) = t;
    ASSERT_TRUE(draws && conditions);
    EXPECT_EQ(draws->rowCount(), 100);
    EXPECT_EQ(draws->item(0, 0)->text(), QString::number(r.draws.last().issue));  // the newest first
    ASSERT_EQ(conditions->rowCount(), 1);
    EXPECT_EQ(conditions->item(0, 0)->text(), QStringLiteral("[ 和 值 ]"));
    EXPECT_TRUE(window->findChild<QLabel*>(QStringLiteral("Label_HuiCeJieGuo"))
                    ->text()
                    .contains(QStringLiteral("回测 100 期")));
}

// The menu and the back-test window's button open the one replay window; it replays the draws asked
// for and shows a row a draw, the verdict and the chart.
TEST_F(BacktestWindowTest, MenuAndBacktestButtonOpenTheReplayWhichShowsEachDraw) {
    test::switchAllOff();
    set_GuoLvTiaoJian(kShrinkTypeId, 7);
    resetRedPicks();
    resetBluePicks();
    pickRange(1, 9, kPickDrag);
    pickRange(101, 101, kPickDrag);

    trigger("mnu_HuiCeShouYi");
    auto* window = window_->findChild<ReplayWindow*>(QStringLiteral("frmHuiCeShouYi"));
    ASSERT_NE(window, nullptr);
    EXPECT_TRUE(window->isVisible());
    window->hide();
    trigger("mnu_TiaoJianHuiCe");
    window_->findChild<BacktestWindow*>()
        ->findChild<QPushButton*>(QStringLiteral("cmd_HuiCeShouYi"))
        ->click();
    EXPECT_EQ(window_->findChildren<ReplayWindow*>().size(), 1);
    EXPECT_TRUE(window->isVisible());

    auto* draws = window->findChild<QSpinBox*>(QStringLiteral("Spin_HuiCeQiShu"));
    EXPECT_EQ(draws->value(), 30);
    draws->setValue(12);
    window->run();
    // The picks of the page: 84 tickets a draw.
    EXPECT_EQ(std::tuple(window->result().draws.size(), window->result().cost), std::tuple(12, 12 * 84 * 2));
    EXPECT_EQ(window->findChild<QTableWidget*>()->rowCount(), 12);
    EXPECT_TRUE(window->findChild<QLabel*>(QStringLiteral("Label_HuiCeShouYi"))->text().contains(u'%'));
    for (int tab : {0, 1}) {
        window->findChild<QTabWidget*>()->setCurrentIndex(tab);
        keepPicture(window, QStringLiteral("replay-window-%1").arg(tab));
    }
}

}  // namespace
}  // namespace dovrex
