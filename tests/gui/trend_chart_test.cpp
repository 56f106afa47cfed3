// The trend chart beside a condition list, as a player reads it in a window of 1366x768.

#include <gtest/gtest.h>

#include <QComboBox>
#include <QCoreApplication>
#include <QScrollArea>
#include <QScrollBar>

#include "analysis/trend_chart.h"
#include "gui/answering_screen.h"
#include "gui/seeded_program.h"
#include "ui/conditions/conditions_page.h"
#include "widgets/trend_panel.h"

using namespace dovrex;

namespace {

int tabOf(const QString& caption) {
    for (int tab = 1; tab <= ConditionsPage::kTabs; ++tab)
        if (ConditionsPage::tabCaption(tab) == caption) return tab;
    return 0;
}
const int kSumTab = tabOf(QStringLiteral("和值过滤"));

class TrendChartTest : public StartedProgramTest<AnsweringScreen> {
  protected:
    TrendPanel* open(int tab) {
        window_->resize(1366, 768);
        window_->show();
        window_->selectPage(TopPage::Conditions);
        window_->conditionsPage()->selectTab(tab);
        QCoreApplication::processEvents();
        auto* panel = window_->conditionsPage()->tab(tab)->findChild<TrendPanel*>();
        if (panel) QCoreApplication::processEvents();
        return panel;
    }
    // True when the strip lies wholly inside the panel and is shown.
    static bool inView(QWidget* strip, QWidget* panel) {
        const QRect r(strip->mapTo(panel, QPoint(0, 0)), strip->size());
        return strip->isVisible() && panel->rect().contains(r);
    }
};

// Every chart opens on the newest issues: its head, the issue column and the condition line in
// view without scrolling, the newest row at the bottom of the body. Scrolling the body leaves the
// head and the foot where they are and moves the issue column with it.
TEST_F(TrendChartTest, HeadIssuesAndConditionStayInViewWhileTheBodyScrolls) {
    int charts = 0;
    for (int tab = 1; tab <= ConditionsPage::kTabs; ++tab) {
        const TrendSpec chart = trendSpecOfTab(ConditionsPage::tabCaption(tab));
        if (chart.family == TrendFamily::None || chart.family == TrendFamily::Grid) continue;
        TrendPanel* panel = open(tab);
        ASSERT_NE(panel, nullptr) << tab;
        ++charts;
        const std::string name = ConditionsPage::tabCaption(tab).toStdString();
        ASSERT_EQ(panel->rows().size(), kTrendPeriods) << name;
        for (QWidget* strip : {static_cast<QWidget*>(panel->head()), static_cast<QWidget*>(panel->foot()),
                               static_cast<QWidget*>(panel->left()), static_cast<QWidget*>(panel->area())})
            EXPECT_TRUE(inView(strip, panel)) << name << " " << strip->objectName().toStdString();
        QScrollBar* down = panel->area()->verticalScrollBar();
        EXPECT_EQ(down->value(), down->maximum()) << name;
        // The head is as wide as the panel, and the body fills it or scrolls only sideways.
        EXPECT_GE(panel->surface()->width(), panel->area()->viewport()->width()) << name;

        const QPoint headAt = panel->head()->mapTo(panel, QPoint(0, 0));
        const QPoint footAt = panel->foot()->mapTo(panel, QPoint(0, 0));
        down->setValue(0);
        panel->area()->horizontalScrollBar()->setValue(panel->area()->horizontalScrollBar()->maximum());
        QCoreApplication::processEvents();
        EXPECT_EQ(panel->head()->mapTo(panel, QPoint(0, 0)), headAt) << name;
        EXPECT_EQ(panel->foot()->mapTo(panel, QPoint(0, 0)), footAt) << name;
        EXPECT_TRUE(inView(panel->head(), panel)) << name;
    }
    EXPECT_GE(charts, 15);
}

// The chooser ends the chart at an earlier issue.
TEST_F(TrendChartTest, TheChooserEndsTheChartAtTheChosenIssue) {
    TrendPanel* panel = open(kSumTab);
    ASSERT_NE(panel, nullptr);
    QComboBox* chooser = panel->issueChooser();
    ASSERT_EQ(chooser->count(), kTrendChooserIssues);
    EXPECT_EQ(chooser->currentText().toInt(), panel->rows().last().issue);
    chooser->setCurrentIndex(10);
    emit chooser->activated(10);
    ASSERT_EQ(panel->rows().size(), kTrendPeriods);
    EXPECT_EQ(panel->rows().last().issue, chooser->itemText(10).toInt());
}

}  // namespace
