// Commands from the window: a fault of any kind in one leaves the window usable with what it wrote,
// no command starts inside another, and a close during a pass stops the pass and runs the exit
// once the pass has returned.

#include <QAction>
#include <QTimer>
#include <new>
#include <stdexcept>

#include "app/app_flow.h"
#include "app/pipeline_commands.h"
#include "domain/condition_catalogue.h"
#include "gui/answering_screen.h"
#include "gui/seeded_program.h"
#include "history/draw_download.h"
#include "history/draw_list.h"
#include "pipeline/pick_state.h"
#include "pipeline/ticket_init.h"
#include "support/draw_list_server.h"
#include "ui/analysis/combination_page.h"
#include "ui/analysis/other_page.h"
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
  protected:
    static void pick(int from, int to) { pickRange(from, to, kPickDrag); }
    static int count(const char* sql) { return store().scalar(QString::fromUtf8(sql)).toInt(); }
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

// A close while a pass runs: the exit waits for the pass, which stops, and saves what it did.
class CloseDuringPassTest : public CommandTrapTest {
  protected:
    // Closes the window at a yield of the pass that `start` begins (in the download, the fourth
    // new draw); then the pack holds more than `low` and fewer than `high` rows of `countSql`.
    void closeDuringPass(const std::function<void()>& start, const char* countSql, int low, int high) {
        bool exited = false, saved = false;
        QObject::connect(window_, &FormMain::exited, [&](bool ok) {
            exited = true;
            saved = ok;
        });
        screen_->pumps = 0;
        screen_->closeAtPump = 15;
        start();
        ASSERT_TRUE(QTest::qWaitFor([&] { return exited; }, 20000));
        EXPECT_TRUE(saved);
        EXPECT_GT(screen_->depthAtClose, 0) << "the close came after the pass";
        session_.reset();

        AppFlow flow(paths_);
        ASSERT_EQ(flow.start(), StartOutcome::Ready);
        const int kept = count(countSql);
        EXPECT_GT(kept, low);
        EXPECT_LT(kept, high);
        flow.abandon();
    }
    // 924 tickets of issue 2026097: twelve red drags and one blue.
    static void ticketsOf13() {
        pick(1, 12);
        pick(101, 101);
        init_TouZhu(2026097);
    }
};

TEST_F(CloseDuringPassTest, Filter) {
    ticketsOf13();
    closeDuringPass([this] { clickCommand(kCmdFilter); }, "select count(*) from 日志表", 0, 925);
}

TEST_F(CloseDuringPassTest, Shrink) {
    ticketsOf13();
    set_GuoLvTiaoJian(kShrinkTypeId, 6);
    const auto openSettingsAndRun = [this] {
        clickCommand(kCmdShrink);
        clickCommand(kCmdShrink);
    };
    closeDuringPass(openSettingsAndRun, "select count(*) from 日志表", 0, 925);
}

// The shipped history and twenty draws after it, served on every mirror.
TEST_F(CloseDuringPassTest, Download) {
    QList<DrawRecord> draws = read_DrawRecords(store());
    for (int i = 1; i <= 20; ++i) {
        DrawRecord d = draws.last();
        d.issue += 1;
        d.date += 2;
        draws << d;
    }
    Clock::setToday(toQDate(draws.last().date));  // the new draws are no later than today
    DrawListServer server;
    ASSERT_TRUE(server.start());
    server.setPage(QStringLiteral("/list.txt"), format_DrawList(draws));
    const QString url = server.url(QStringLiteral("/list.txt"));
    save_MirrorAddresses({url, url, url});
    set_PageTimeout(5000);
    window_->selectPage(TopPage::History);
    auto* update = window_->findChild<QPushButton*>(QStringLiteral("cmmUpdateHistory(1)"));
    closeDuringPass([update] { QTest::mouseClick(update, Qt::LeftButton); }, "select count(*) from 历史记录",
                    int(draws.size()) - 20, int(draws.size()));
    set_PageTimeout(30000);
}

// The close lands in the table of draws the statistics start from; the page is shown first, so
// that the yields counted are the statistics' own.
TEST_F(CloseDuringPassTest, PairOmission) {
    const int draws = count("select count(*) from 历史记录");
    window_->selectPage(TopPage::Other);
    window_->otherPage()->setCurrentWidget(window_->findChild<CombinationPage*>());
    QTest::qWait(200);
    closeDuringPass([this] { action("mnu_ZuHeYiLou2")->trigger(); }, "select count(*) from TBLhmYLTJfenbu", 0,
                    draws);
}

}  // namespace
