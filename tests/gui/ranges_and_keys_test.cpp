// The window's side of the condition tabs and the keyboard: ranges in one gesture, the trend charts
// as a player reads them at 1366x768, keys and shortcuts. Each control reaches what the core does
// (ConditionRangesTest, the core's TrendChartTest).

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QMenu>
#include <QMouseEvent>
#include <QScrollArea>
#include <QScrollBar>
#include <QSet>
#include <QSpinBox>
#include <QTimer>

#include "analysis/trend_chart.h"
#include "app/pipeline_commands.h"
#include "gui/answering_screen.h"
#include "gui/seeded_program.h"
#include "ui/conditions/condition_list_page.h"
#include "ui/conditions/conditions_page.h"
#include "widgets/tick_list.h"
#include "widgets/trend_panel.h"
#include "widgets/window_keys.h"

using namespace dovrex;

namespace {

constexpr int kSumTab = 2;  // 和值过滤
constexpr int kSumBase = 1000;

class RangesAndKeysTest : public StartedProgramTest<AnsweringScreen> {
  protected:
    // A condition tab in the window at 1366x768.
    QWidget* openTab(int tab) {
        window_->resize(1366, 768);
        window_->show();
        window_->selectPage(TopPage::Conditions);
        window_->conditionsPage()->selectTab(tab);
        QCoreApplication::processEvents();
        return window_->conditionsPage()->tab(tab);
    }
    ConditionListPage* sumPage() { return qobject_cast<ConditionListPage*>(openTab(kSumTab)); }
    // The sums allowed in the store, as "a-b" runs would read them.
    static QList<int> allowedSums() {
        QList<int> out;
        for (int v = 0; v <= 183; ++v)
            if (get_GuoLvTiaoJian(kSumBase + v) > 0) out << v;
        return out;
    }
    static QList<int> run(int from, int to) {
        QList<int> out;
        for (int v = from; v <= to; ++v) out << v;
        return out;
    }
    // True when the strip lies wholly inside the panel and is shown.
    static bool inView(QWidget* strip, QWidget* panel) {
        const QRect r(strip->mapTo(panel, QPoint(0, 0)), strip->size());
        return strip->isVisible() && panel->rect().contains(r);
    }
    static void mouse(TickList* list, QEvent::Type type, int row, Qt::KeyboardModifiers keys = {}) {
        list->scrollToItem(list->item(row));
        const QPointF at = list->visualItemRect(list->item(row)).center();
        const Qt::MouseButtons held = type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton;
        QMouseEvent e(type, at, list->viewport()->mapToGlobal(at),
                      type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton, held, keys);
        QApplication::sendEvent(list->viewport(), &e);
    }
};

TEST_F(RangesAndKeysTest, ShiftClickDragAndFromToTickARun) {
    ConditionListPage* page = sumPage();
    ASSERT_NE(page, nullptr);
    TickList* list = page->list();
    const int first = page->rangeFrom()->minimum();
    auto row = [first](int value) { return value - first; };
    for (int v : allowedSums()) set_GuoLvTiaoJian(kSumBase + v, 0);

    QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                      list->visualItemRect(list->item(row(80))).center());
    mouse(list, QEvent::MouseButtonPress, row(120), Qt::ShiftModifier);
    mouse(list, QEvent::MouseButtonRelease, row(120), Qt::ShiftModifier);
    EXPECT_EQ(allowedSums(), run(80, 120));

    mouse(list, QEvent::MouseButtonPress, row(130));
    mouse(list, QEvent::MouseMove, row(133));
    mouse(list, QEvent::MouseMove, row(135));
    mouse(list, QEvent::MouseButtonRelease, row(135));
    EXPECT_EQ(allowedSums(), run(80, 120) + run(130, 135));

    page->rangeFrom()->setValue(100);
    page->rangeTo()->setValue(140);
    QTest::mouseClick(page->findChild<QPushButton*>(QStringLiteral("cmm_FanWeiQuXiao")), Qt::LeftButton);
    EXPECT_EQ(allowedSums(), run(80, 99));
    QTest::mouseClick(page->findChild<QPushButton*>(QStringLiteral("cmm_FanWeiGouXuan")), Qt::LeftButton);
    EXPECT_EQ(allowedSums(), run(80, 140));
    EXPECT_TRUE(list->isTicked(row(140)) && !list->isTicked(row(141)));
    keepPicture(window_, QStringLiteral("range-entry"));
}

// At 1366x768 the sums' chart shows its hundred draws and every value without scrolling; a double
// click reads it closer, scrolled; the chooser ends it at an earlier issue.
TEST_F(RangesAndKeysTest, TheSumsChartOpensWholeReadsCloserAndEndsAtTheChosenIssue) {
    TrendPanel* panel = sumPage()->chart();
    ASSERT_TRUE(panel->drawnWhole());
    EXPECT_EQ(panel->rows().size(), kTrendPeriods);
    const QSize view = panel->area()->viewport()->size();
    EXPECT_LE(panel->surface()->width(), view.width());
    EXPECT_LE(panel->surface()->height(), view.height());
    keepPicture(window_, QStringLiteral("sum-chart"));
    QTest::mouseDClick(panel->surface(), Qt::LeftButton);
    EXPECT_FALSE(panel->drawnWhole());
    EXPECT_GT(panel->surface()->height(), view.height());
    panel->wholeSwitch()->setChecked(true);
    EXPECT_TRUE(panel->drawnWhole());

    QComboBox* chooser = panel->issueChooser();
    ASSERT_EQ(chooser->count(), kTrendChooserIssues);
    EXPECT_EQ(chooser->currentText().toInt(), panel->rows().last().issue);
    chooser->setCurrentIndex(10);
    emit chooser->activated(10);
    ASSERT_EQ(panel->rows().size(), kTrendPeriods);
    EXPECT_EQ(panel->rows().last().issue, chooser->itemText(10).toInt());
}

// Every chart opens on the newest issues: its head, the issue column and the condition line in
// view without scrolling, the newest row at the bottom of the body. Scrolling the body leaves the
// head and the foot where they are and moves the issue column with it.
TEST_F(RangesAndKeysTest, ChartsKeepHeadIssuesAndConditionInViewWhileTheBodyScrolls) {
    int charts = 0;
    for (int tab = 1; tab <= ConditionsPage::kTabs; ++tab) {
        const TrendSpec chart = trendSpecOfTab(ConditionsPage::tabCaption(tab));
        if (chart.family == TrendFamily::None || chart.family == TrendFamily::Grid) continue;
        auto* panel = openTab(tab)->findChild<TrendPanel*>();
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

// The 投注 menu's entries have access keys, the steps shortcuts shown on their buttons.
TEST_F(RangesAndKeysTest, TicketMenuKeysAndStepShortcuts) {
    QMenu* menu = window_->menu(QStringLiteral("投注(&B)"));
    for (QAction* a : menu->actions())
        if (!a->isSeparator())
            EXPECT_TRUE(a->text().contains(QStringLiteral("(&"))) << a->text().toStdString();
    for (int step = 0; step < 3; ++step) {
        auto* a = window_->findChild<QAction*>(QStringLiteral("mnu_ShengCeng(%1)").arg(step));
        ASSERT_FALSE(a->shortcut().isEmpty());
        EXPECT_TRUE(
            ticketsPage_->command(step)->text().contains(a->shortcut().toString(QKeySequence::NativeText)));
    }
}

// Each window that opens takes the focus, has a button for Enter, and closes on Escape.
TEST_F(RangesAndKeysTest, WindowsTakeFocusAndAnswerEnterAndEscape) {
    window_->show();
    int opened = 0;
    QSet<QWidget*> before;
    for (QWidget* w : QApplication::topLevelWidgets())
        if (w->isVisible()) before << w;
    QTimer poll;
    poll.setInterval(50);
    QObject::connect(&poll, &QTimer::timeout, [&] {
        for (QWidget* w : QApplication::topLevelWidgets()) {
            if (!w->isVisible() || before.contains(w) || !w->isWindow()) continue;
            before << w;
            ++opened;
            QCoreApplication::processEvents();
            const std::string name = w->objectName().toStdString();
            EXPECT_TRUE(QApplication::activeWindow() == w && w->isAncestorOf(QApplication::focusWidget()))
                << name << " has no focus";
            EXPECT_NE(WindowKeys::defaultButton(w), nullptr) << name;
            QTest::keyClick(QApplication::focusWidget() ? QApplication::focusWidget() : w, Qt::Key_Escape);
            QCoreApplication::processEvents();
            EXPECT_FALSE(w->isVisible()) << name << " stays open after Escape";
        }
    });
    poll.start();
    const QStringList entries{QStringLiteral("mnu_TiaoJianHuiCe"), QStringLiteral("mnu_KuaiSuSheZhi"),
                              QStringLiteral("mnu_LuckyNumber"), QStringLiteral("mnu_JiXuan")};
    for (const QString& name : entries) {
        auto* a = window_->findChild<QAction*>(name);
        if (!a) ADD_FAILURE() << name.toStdString();
        if (a) a->trigger();
        QTest::qWait(120);
    }
    // 第3步's settings frame, a tool window rather than a dialog.
    QTest::mouseClick(ticketsPage_->command(kCmdShrink), Qt::LeftButton);
    QTest::qWait(120);
    EXPECT_GE(opened, entries.size() + 1);
}

}  // namespace
