// 回测收益 from the window, on a started program with the shipped history.
#include <gtest/gtest.h>

#include <QAction>
#include <QLabel>
#include <QPushButton>
#include <QSpinBox>
#include <QTabWidget>
#include <QTableWidget>

#include "domain/condition_catalogue.h"
#include "filters/condition_store.h"
#include "gui/answering_screen.h"
#include "gui/seeded_program.h"
#include "ui/analysis/replay_window.h"
#include "ui/conditions/backtest_window.h"
#include "ui/shell/form_main.h"

namespace dovrex {
namespace {

class ReplayWindowTest : public SeededProgramTest {};

// The menu and the back-test window's button open the one window; it replays the draws asked for
// and shows a row a draw, the verdict and the chart.
TEST_F(ReplayWindowTest, MenuAndBacktestButtonOpenItAndItShowsEachDraw) {
    AnsweringScreen* screen = nullptr;
    session_ = makeSession(screen);
    ASSERT_TRUE(session_->start());
    FormMain* w = session_->window();
    store_Execute(QStringLiteral("UPDATE 过滤条件使用情况 SET 使用情况=0"));
    store_Execute(QStringLiteral("UPDATE 历史数据过滤 SET 使用状态=0"));
    set_GuoLvTiaoJian(kShrinkTypeId, 7);
    resetRedPicks();
    resetBluePicks();
    set_GuoLvFanWei(1, 9, 1);
    set_GuoLvTiaoJian(101, 1);

    w->findChild<QAction*>(QStringLiteral("mnu_HuiCeShouYi"))->trigger();
    auto* window = w->findChild<ReplayWindow*>(QStringLiteral("frmHuiCeShouYi"));
    ASSERT_NE(window, nullptr);
    EXPECT_TRUE(window->isVisible());
    window->hide();
    w->findChild<QAction*>(QStringLiteral("mnu_TiaoJianHuiCe"))->trigger();
    w->findChild<BacktestWindow*>()->findChild<QPushButton*>(QStringLiteral("cmd_HuiCeShouYi"))->click();
    EXPECT_EQ(w->findChildren<ReplayWindow*>().size(), 1);
    EXPECT_TRUE(window->isVisible());

    auto* draws = window->findChild<QSpinBox*>(QStringLiteral("Spin_HuiCeQiShu"));
    EXPECT_EQ(draws->value(), 30);
    draws->setValue(12);
    window->run();
    EXPECT_EQ(window->result().draws.size(), 12);
    EXPECT_EQ(window->result().cost, 12 * 84 * 2);
    EXPECT_EQ(window->findChild<QTableWidget*>()->rowCount(), 12);
    EXPECT_TRUE(window->findChild<QLabel*>(QStringLiteral("Label_HuiCeShouYi"))->text().contains(u'%'));
    // DOVREX_SCREENSHOTS=<folder> keeps a picture of the window.
    if (const QString dir = qEnvironmentVariable("DOVREX_SCREENSHOTS"); !dir.isEmpty())
        for (int tab : {0, 1}) {
            window->findChild<QTabWidget*>()->setCurrentIndex(tab);
            window->grab().save(dir + QStringLiteral("/replay-window-%1.png").arg(tab));
        }
}

}  // namespace
}  // namespace dovrex
