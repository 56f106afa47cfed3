// Commands from the window: a fault of any kind in one leaves the window usable with what it wrote,
// no command starts inside another, and a close during a pass stops the pass and runs the exit
// once the pass has returned.
#include <gtest/gtest.h>

#include <QAction>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <functional>
#include <new>
#include <stdexcept>

#include "app/app_flow.h"
#include "app/pipeline_commands.h"
#include "domain/condition_catalogue.h"
#include "filters/condition_store.h"
#include "gui/answering_screen.h"
#include "gui/seeded_program.h"
#include "history/draw_download.h"
#include "history/draw_list.h"
#include "pipeline/pick_state.h"
#include "pipeline/ticket_init.h"
#include "screen/shared_state.h"
#include "store/store.h"
#include "support/draw_list_server.h"
#include "ui/analysis/combination_page.h"
#include "ui/analysis/other_page.h"
#include "ui/shell/form_main.h"
#include "ui/tickets/tickets_page.h"
#include "widgets/command_trap.h"

using namespace dovrex;

namespace {

// Boxes answered yes, the issue typed in advance; at a chosen yield of the running command it
// either throws or closes the window from a timer.
class TrapScreen : public AnsweringScreen {
  public:
    int pumps = 0;
    int closeAtPump = 0;
    int throwAtPump = 0;
    std::function<void()> fault;
    int depthAtClose = -1;

    TrapScreen() { reply = QStringLiteral("2026097"); }
    void ui_Pump() override {
        ++pumps;
        if (pumps == throwAtPump) fault();
        if (pumps == closeAtPump) {
            QTimer::singleShot(0, window(), [this] {
                depthAtClose = shared().commandDepth;
                window()->close();
            });
            QCoreApplication::processEvents();  // the close lands inside the pass, however fast it is
        }
        GuiScreen::ui_Pump();
    }
};

class CommandTrapTest : public StartedProgramTest<TrapScreen> {
  public:
    static void pick(int from, int to) { pickRange(from, to, kPickDrag); }
    static int count(const char* sql) { return store().scalar(QString::fromUtf8(sql)).toInt(); }
    void clickCommand(int index) { StartedProgramTest::clickCommand(index); }

  protected:
    QAction* action(const char* name) const { return window_->findChild<QAction*>(QLatin1String(name)); }
};

// An exception of any kind in the middle of a pass: the player is told (memory exhaustion in its
// own words), the window's run state comes back, the table is as the pass left it (the first step
// takes itself back whole), and the next command runs.
TEST_F(CommandTrapTest, AFaultInAPassLeavesTheWindowUsable) {
    pick(1, 20);
    pick(101, 102);
    const std::function<void()> faults[] = {
        [] { throw std::out_of_range("gesTable5: pattern out of range"); }, [] { throw std::bad_alloc(); }};
    for (const auto& fault : faults) {
        screen_->shown.clear();
        screen_->pumps = 0;
        screen_->throwAtPump = 500;
        bool restedDuringPass = false;
        screen_->fault = [&, fault] {
            restedDuringPass =
                !action("mnu_ShengCeng(1)")->isEnabled() && !action("mnu_ZuHeYiLou2")->isEnabled();
            fault();
        };
        clickCommand(kCmdInit);
        ASSERT_EQ(screen_->shown.size(), 1);
        EXPECT_TRUE(screen_->shown[0] == msg::kOutOfMemory ||
                    screen_->shown[0].startsWith(msg::kCommandFailed))
            << screen_->shown[0].toStdString();
        EXPECT_TRUE(restedDuringPass);
        EXPECT_EQ(shared().commandDepth, 0);
        EXPECT_EQ(shared().tingZhi, 0);
        EXPECT_TRUE(ticketsPage_->stopFrame()->isHidden());
        EXPECT_TRUE(ticketsPage_->commandBar()->isEnabled());
        EXPECT_TRUE(action("mnu_ShengCeng(1)")->isEnabled());
        EXPECT_TRUE(action("mnu_ZuHeYiLou2")->isEnabled());
        EXPECT_EQ(count("select count(*) from 日志表"), 0);
    }
    EXPECT_EQ(screen_->shown.last(), msg::kOutOfMemory);

    screen_->throwAtPump = 0;
    screen_->shown.clear();
    clickCommand(kCmdInit);
    EXPECT_EQ(count("select count(*) from 日志表 where 期号=2026097"), 77520);
}

// What each pass starts from, how the window starts it, and the count in the pack after the close:
// above `low` and below `high` (the pass was stopped, and what it had done was kept).
class CloseDuringPassTest;
struct ClosePass {
    const char* name;
    void (*setup)(CloseDuringPassTest&);
    void (*start)(CloseDuringPassTest&);
    const char* count;
    int high;
};

class CloseDuringPassTest : public CommandTrapTest, public ::testing::WithParamInterface<ClosePass> {
  public:
    FormMain* window() const { return window_; }
    DrawListServer server;
    int low = 0, high = 0;

    // 924 tickets of issue 2026097: twelve red drags and one blue.
    static void ticketsOf13(CloseDuringPassTest&) {
        pick(1, 12);
        pick(101, 101);
        init_TouZhu(2026097);
    }
    // The shipped history and twenty draws after it, served on every mirror.
    static void serveTwentyNewDraws(CloseDuringPassTest& t) {
        QList<DrawRecord> draws = read_DrawRecords(store());
        for (int i = 1; i <= 20; ++i) {
            DrawRecord d = draws.last();
            d.issue += 1;
            d.date += 2;
            draws << d;
        }
        Clock::setToday(toQDate(draws.last().date));  // the new draws are no later than today
        ASSERT_TRUE(t.server.start());
        t.server.setPage(QStringLiteral("/list.txt"), format_DrawList(draws));
        const QString url = t.server.url(QStringLiteral("/list.txt"));
        save_MirrorAddresses({url, url, url});
        set_PageTimeout(5000);
        t.low = int(draws.size()) - 20;
        t.high = int(draws.size());
    }
};

TEST_P(CloseDuringPassTest, TheExitWaitsForThePassAndSavesWhatItDid) {
    const ClosePass& pass = GetParam();
    high = pass.high;
    pass.setup(*this);
    bool exited = false, saved = false;
    QObject::connect(window_, &FormMain::exited, [&](bool ok) {
        exited = true;
        saved = ok;
    });
    screen_->pumps = 0;
    screen_->closeAtPump = 15;  // in the download, the fourth new draw
    pass.start(*this);
    ASSERT_TRUE(QTest::qWaitFor([&] { return exited; }, 20000));
    EXPECT_TRUE(saved);
    EXPECT_GT(screen_->depthAtClose, 0) << "the close came after the pass";
    session_.reset();

    AppFlow flow(paths_);
    ASSERT_EQ(flow.start(), StartOutcome::Ready);
    const int kept = count(pass.count);
    EXPECT_GT(kept, low);
    EXPECT_LT(kept, high);
    flow.abandon();
    set_PageTimeout(30000);
}

INSTANTIATE_TEST_SUITE_P(
    Passes, CloseDuringPassTest,
    ::testing::Values(
        ClosePass{"filter", CloseDuringPassTest::ticketsOf13,
                  [](CloseDuringPassTest& t) { t.clickCommand(kCmdFilter); }, "select count(*) from 日志表",
                  925},
        ClosePass{"shrink",
                  [](CloseDuringPassTest& t) {
                      CloseDuringPassTest::ticketsOf13(t);
                      set_GuoLvTiaoJian(kShrinkTypeId, 6);
                  },
                  [](CloseDuringPassTest& t) {
                      t.clickCommand(kCmdShrink);  // opens the settings
                      t.clickCommand(kCmdShrink);  // runs
                  },
                  "select count(*) from 日志表", 925},
        ClosePass{"download", CloseDuringPassTest::serveTwentyNewDraws,
                  [](CloseDuringPassTest& t) {
                      t.window()->selectPage(TopPage::History);
                      QTest::mouseClick(
                          t.window()->findChild<QPushButton*>(QStringLiteral("cmmUpdateHistory(1)")),
                          Qt::LeftButton);
                  },
                  "select count(*) from 历史记录", 0},
        ClosePass{"pair_omission",
                  // The close lands in the table of draws the statistics start from; the page is
                  // shown first, so that the yields counted are the statistics' own.
                  [](CloseDuringPassTest& t) {
                      t.high = CloseDuringPassTest::count("select count(*) from 历史记录");
                      t.window()->selectPage(TopPage::Other);
                      t.window()->otherPage()->setCurrentWidget(t.window()->findChild<CombinationPage*>());
                      QTest::qWait(200);
                  },
                  [](CloseDuringPassTest& t) {
                      t.window()->findChild<QAction*>(QStringLiteral("mnu_ZuHeYiLou2"))->trigger();
                  },
                  "select count(*) from TBLhmYLTJfenbu", 0}),
    [](const auto& info) { return std::string(info.param.name); });

}  // namespace
