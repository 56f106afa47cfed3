// 条件回测 and 容错 from the window, on a started program with the shipped history.
#include <gtest/gtest.h>

#include <QAction>
#include <QLabel>
#include <QPushButton>
#include <QSpinBox>
#include <QTableWidget>

#include "domain/condition_catalogue.h"
#include "filters/backtest.h"
#include "filters/condition_store.h"
#include "gui/answering_screen.h"
#include "gui/seeded_program.h"
#include "ui/conditions/backtest_window.h"
#include "ui/shell/form_main.h"
#include "ui/shell/gui_screen.h"

namespace dovrex {
namespace {

using SilentScreen = AnsweringScreen;

class BacktestWindowTest : public SeededProgramTest {};

// The tolerance beside the condition tabs writes its row; the menu opens the window, which measures
// the newest hundred draws with the conditions on and shows a row for each draw and condition.
TEST_F(BacktestWindowTest, ToleranceAndTheNewestHundredDraws) {
    SilentScreen* screen = nullptr;
    session_ = makeSession(screen);
    ASSERT_TRUE(session_->start());
    FormMain* w = session_->window();

    auto* tolerance = w->findChild<QSpinBox*>(QStringLiteral("Spin_RongCuo"));
    ASSERT_NE(tolerance, nullptr);
    tolerance->setValue(2);
    EXPECT_EQ(filter_Tolerance(), 2);

    set_ShiYongQingKuang(1, 1);  // 和值 within 100..130 only
    set_GuoLvFanWei(1000, 1183, 0);
    set_GuoLvFanWei(1100, 1130, 1);
    w->findChild<QAction*>(QStringLiteral("mnu_TiaoJianHuiCe"))->trigger();
    auto* window = w->findChild<BacktestWindow*>(QStringLiteral("frmTiaoJianHuiCe"));
    ASSERT_NE(window, nullptr);
    ASSERT_TRUE(window->isVisible());
    window->run();
    const BacktestResult& r = window->result();
    EXPECT_EQ(r.draws.size(), 100);
    EXPECT_EQ(r.tolerance, 2);
    EXPECT_EQ(r.survived, 100);  // one condition can never fail more than two
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

}  // namespace
}  // namespace dovrex
