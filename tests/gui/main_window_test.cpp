#include <QAction>
#include <QApplication>
#include <QDateEdit>
#include <QFile>
#include <QFileInfo>
#include <QLineEdit>
#include <QMessageBox>
#include <QRadioButton>
#include <QTableView>
#include <QTimer>

#include "app/app_flow.h"
#include "filters/condition_files.h"
#include "gui/answering_screen.h"
#include "gui/seeded_program.h"
#include "history/draw_download.h"
#include "history/draw_list.h"
#include "history/history_display.h"
#include "history/history_queries.h"
#include "screen/control_roles.h"
#include "support/draw_list_server.h"
#include "support/test_support.h"
#include "ui/history/history_page.h"
#include "ui/shell/help_page.h"
#include "ui/shell/main_window.h"
#include "users/users.h"
#include "widgets/cursor_model.h"

using namespace dovrex;

namespace {

// Answers every yes/no box with `answer` (no, unless a test says yes) and keeps what it was shown
// instead of opening boxes.
class LoginScreen : public AnsweringScreen {
  public:
    LoginScreen() { answer = false; }
    // The first-run choice and the login, answered without their windows.
    int mode = 1;
    QString user, password;
    int ui_ChooseUserMode() override { return mode; }
    bool ui_Login() override {
        const bool saved = answer;
        answer = true;  // a new user is created without asking twice
        const bool ok = login_Submit(user, password) == LoginResult::LoggedIn;
        answer = saved;
        return ok;
    }
};

constexpr int kShippedDraws = 3493;

// The program started on the seeded folder; a test may start more sessions with makeSession.
class MainWindowTest : public StartedProgramTest<LoginScreen> {};
// The seeded folder, nothing started yet: the first start is the test's own.
class FirstStartTest : public SeededProgramTest {};

TEST_F(MainWindowTest, StartShowsEveryDrawAndAnUpToDateStatus) {
    FormMain* w = window_;
    ASSERT_TRUE(w->isVisible());
    EXPECT_EQ(w->windowTitle(), QStringLiteral("双色球 dovrex"));
    EXPECT_EQ(shared().g_MainCaption, w->windowTitle());
    EXPECT_FALSE(w->windowIcon().isNull());

    const QStringList tabs{QStringLiteral("过滤条件"), QStringLiteral("其它"), QStringLiteral("历史数据"),
                           QStringLiteral("投注号码"), msg::kHelpTab};
    ASSERT_EQ(w->tabStrip()->count(), tabs.size());
    for (int i = 0; i < tabs.size(); ++i) EXPECT_EQ(w->tabStrip()->tabText(i), tabs[i]);
    EXPECT_EQ(w->tabStrip()->objectName(), QStringLiteral("TabStrip_Top"));

    // The grid, found by its role the way the logic finds it.
    CursorModel* model = screen_->gridModel(role::TDBGridHistory);
    ASSERT_NE(model, nullptr);
    EXPECT_EQ(model->rowCount(), kShippedDraws);
    QTableView* grid = w->historyPage()->grid();
    const int issue = columnOf(model, QStringLiteral("期号"));
    const int date = columnOf(model, QStringLiteral("开奖日期"));
    ASSERT_TRUE(issue >= 0 && date >= 0);  // the shipped rows: ShippedStoreTest.FactoryRowsAndTheHistory
    EXPECT_EQ(std::pair(grid->columnWidth(issue), grid->columnWidth(date)), std::pair(75, 94));
    for (const char* hidden : {"已完成", "总期号", "遗漏数据"})
        EXPECT_TRUE(grid->isColumnHidden(columnOf(model, QString::fromUtf8(hidden)))) << hidden;
    EXPECT_FALSE(grid->isColumnHidden(columnOf(model, QStringLiteral("红球1"))));
    EXPECT_EQ(
        model->index(0, columnOf(model, QStringLiteral("蓝球"))).data(Qt::ForegroundRole).value<QColor>(),
        QColor(Qt::blue));
    EXPECT_EQ(grid->currentIndex().row(), kShippedDraws - 1);

    // The draw of 2026/08/20 is followed by the one of Sunday 08/23: not stale on the 21st.
    EXPECT_EQ(screen_->statusText(1), msg::kHistoryUpToDate);
    EXPECT_TRUE(screen_->statusText(3).contains(
        QStringLiteral("最新：2026096 期 2026/08/20 开奖  │  下期：2026097 期 2026/08/23 开奖")));
    EXPECT_TRUE(screen_->asked.isEmpty());
}

// Every control the logic names reaches a control or a menu entry of the main window, and a name
// the window lacks is reported instead of being dropped.
TEST_F(MainWindowTest, EveryDeclaredRoleReachesAControl) {
    for (const QString& name : role::all()) EXPECT_TRUE(screen_->reaches(name)) << name.toStdString();

    static QStringList unknown;
    unknown.clear();
    const auto before = GuiScreen::setUnknownRoleHandler([](const QString& name) { unknown << name; });
    screen_->ui_Set(QStringLiteral("List_NoSuchControl"), QStringLiteral("enabled"), false);
    screen_->ui_Grid(QStringLiteral("TDBGrid_NoSuchGrid"), nullptr);
    GuiScreen::setUnknownRoleHandler(before);
    EXPECT_EQ(unknown,
              QStringList({QStringLiteral("List_NoSuchControl"), QStringLiteral("TDBGrid_NoSuchGrid")}));
}

TEST_F(MainWindowTest, StaleHistoryOffersTheDownload) {
    // A list served on the loopback: the newest draws come back after they were lost.
    DrawListServer server;
    ASSERT_TRUE(server.start());
    server.setPage(QStringLiteral("/ssq.txt"), format_DrawList(read_DrawRecords(store())));
    store_Execute(QStringLiteral("DELETE FROM 历史记录 WHERE 期号>=2026090"));
    const QString url = server.url(QStringLiteral("/ssq.txt"));
    save_MirrorAddresses({url, url, url});
    screen_->answer = true;
    ASSERT_TRUE(exitProgram());

    Clock::setToday(QDate(2027, 3, 1));
    LoginScreen* screen = nullptr;
    auto s = makeSession(screen);
    screen->answer = true;
    ASSERT_TRUE(s->start());
    EXPECT_EQ(screen->asked, QStringList{msg::kStaleHistory});
    EXPECT_EQ(screen->shown, QStringList{msg::kDownloadDone});
    EXPECT_EQ(latest_QiHao(), 2026096);
    // The entry row moves on to the draw after the newest, and the page shows the distribution.
    HistoryPage* page = s->window()->historyPage();
    EXPECT_EQ(std::tuple(page->entryBox(0)->text(), page->datePicker()->date(), page->view()),
              std::tuple(QStringLiteral("2026097"), QDate(2026, 8, 23), HistoryView::Distribution));
    // Still stale in 2027: the list ends in 2026.
    EXPECT_TRUE(screen->statusText(1).startsWith(msg::kHistoryStale));
}

TEST_F(MainWindowTest, ExitWritesThePackAndARestartFindsTheChanges) {
    store_Execute(QStringLiteral("DELETE FROM 历史记录 WHERE 期号=2026096"));
    window_->historyPage()->setMode(HistoryShowMode::Newest100);
    EXPECT_EQ(screen_->gridModel(role::TDBGridHistory)->rowCount(), 100);
    // The exit asks first (its box: RunProgramClosesThroughTheRealConfirmBox).
    screen_->answer = true;
    ASSERT_TRUE(exitProgram());
    EXPECT_TRUE(QFileInfo::exists(paths_.bakPack()));

    startProgram();
    EXPECT_EQ(latest_QiHao(), 2026095);
    CursorModel* model = screen_->gridModel(role::TDBGridHistory);
    EXPECT_EQ(model->rowCount(), 100);
    EXPECT_EQ(model->index(99, 0).data().toString(), QStringLiteral("2026095"));
    EXPECT_TRUE(window_->findChild<QRadioButton*>(QStringLiteral("Option_historyShow(1)"))->isChecked());
    // Without the draw of the 20th the history is a draw behind on the 21st.
    EXPECT_EQ(screen_->statusText(1), msg::historyMissingText(1));
}

TEST_F(MainWindowTest, StartsThatMustStopSayWhy) {
    LoginScreen* second = nullptr;
    auto s = makeSession(second);
    EXPECT_FALSE(s->start());
    EXPECT_EQ(second->shown, QStringList{msg::kAlreadyRunning});
    EXPECT_EQ(&screen(), screen_);  // the first instance keeps its screen (the rule: AppFlowTest)
    session_.reset();

    ASSERT_TRUE(test::writeFile(paths_.dataPack(), "ab"));
    s = makeSession(second);
    EXPECT_FALSE(s->start());
    EXPECT_EQ(second->shown, QStringList{msg::kDataPackUnreadable});
}

TEST_F(MainWindowTest, CheckpointPacksOnlyAnIdleWindow) {
    ProgramSession* s = session_.get();
    s->flow().setCheckpointInterval(0);
    const auto packBytes = [&] { return test::fileBytes(paths_.dataPack()); };
    s->checkpointIfIdle();
    const QByteArray before = packBytes();
    store_Execute(QStringLiteral("DELETE FROM 历史记录 WHERE 期号>2026090"));

    // Not inside a command, nor inside a pass that lets events run.
    shared().commandDepth = 1;
    EXPECT_EQ(s->checkpointIfIdle(), SaveOutcome::Busy);
    shared().commandDepth = 0;
    SaveOutcome duringPass = SaveOutcome::Saved;
    QTest::qWait(2 * GuiScreen::kPumpIntervalMs);
    QTimer::singleShot(0, [&] { duringPass = s->checkpointIfIdle(); });
    screen_->ui_Pump();
    EXPECT_EQ(duringPass, SaveOutcome::Busy);
    EXPECT_EQ(packBytes(), before);

    EXPECT_EQ(s->checkpointIfIdle(), SaveOutcome::Saved);
    EXPECT_NE(packBytes(),
              before);  // what the pack then holds: AppFlowTest.CheckpointKeepsTheWorkOfACrashedRun
}

TEST_F(MainWindowTest, NewestHundredWithFewerDrawsShowsThemAll) {
    store_Execute(QStringLiteral("DELETE FROM 历史记录 WHERE 期号<2026047"));
    window_->historyPage()->setMode(HistoryShowMode::Newest100);
    EXPECT_EQ(screen_->gridModel(role::TDBGridHistory)->rowCount(), 50);
    EXPECT_EQ(read_HistoryShowMode(), HistoryShowMode::Newest100);

    store_Execute(QStringLiteral("DELETE FROM 历史记录"));
    window_->historyPage()->setMode(HistoryShowMode::All);
    EXPECT_EQ(screen_->gridModel(role::TDBGridHistory)->rowCount(), 0);
    EXPECT_EQ(read_HistoryShowMode(), HistoryShowMode::All);
}

// The whole program with its real boxes, answered the way a player would: Escape first, which is
// no, then yes.
TEST_F(FirstStartTest, RunProgramClosesThroughTheRealConfirmBox) {
    int boxes = 0;
    QStringList texts;
    QTimer player;
    player.setInterval(40);
    bool askedMode = false;
    QObject::connect(&player, &QTimer::timeout, [&] {
        QWidget* modal = QApplication::activeModalWidget();
        if (modal && modal->objectName() == QLatin1String("frmFirstrun")) {
            askedMode = true;  // the first start asks for the mode: single-user
            modal->findChild<QPushButton*>(QStringLiteral("cmdOK"))->click();
            return;
        }
        if (auto* box = qobject_cast<QMessageBox*>(modal)) {
            texts << box->text();
            if (boxes++ == 0)
                QTest::keyClick(box, Qt::Key_Escape);
            else
                box->button(QMessageBox::Yes)->click();
            return;
        }
        for (QWidget* top : QApplication::topLevelWidgets())
            if (top->objectName() == QLatin1String("Form_main") && top->isVisible() && boxes < 2)
                // Queued: a box opened inside this handler would never see this timer again.
                QMetaObject::invokeMethod(top, &QWidget::close, Qt::QueuedConnection);
    });
    player.start();
    const int rc = runProgram(*qobject_cast<QApplication*>(QCoreApplication::instance()), paths_);
    player.stop();
    EXPECT_EQ(rc, 0);
    EXPECT_TRUE(askedMode);
    EXPECT_EQ(texts, QStringList({msg::kConfirmExit, msg::kConfirmExit}));
    EXPECT_TRUE(QFileInfo::exists(paths_.bakPack()));
}

TEST_F(FirstStartTest, FirstRunModeAndLogin) {
    LoginScreen* screen = nullptr;
    // A session whose first-run question is answered `mode`, its login alice's.
    const auto session = [&](int mode) {
        auto s = makeSession(screen);
        screen->mode = mode;
        screen->user = QStringLiteral("alice");
        screen->password = QStringLiteral("pw");
        return s;
    };
    // Leaving at the first-run question ends the start and writes nothing.
    const QByteArray pack = test::fileBytes(paths_.dataPack());
    EXPECT_FALSE(session(0)->start());
    EXPECT_EQ(test::fileBytes(paths_.dataPack()), pack);

    // Multi-user mode: the login names the user in the caption and shows the switch entry.
    auto s = session(2);
    ASSERT_TRUE(s->start());
    EXPECT_EQ(s->window()->windowTitle(), QStringLiteral("双色球 dovrex  —— alice"));
    QAction* switchUser = s->window()->findChild<QAction*>(QStringLiteral("mnu_UserQiehuan"));
    ASSERT_NE(switchUser, nullptr);
    EXPECT_TRUE(switchUser->isVisible());
    store_Execute(QStringLiteral("UPDATE 过滤条件 SET VALUE=1 WHERE ID=1100"));
    screen->answer = true;
    s->window()->close();  // saves alice's set at exit
    EXPECT_TRUE(QFile::exists(userFilePath(QStringLiteral("alice"))));
    s.reset();

    // The mode is asked once (0 would leave); alice finds her set again at the next start.
    s = session(0);
    ASSERT_TRUE(s->start());
    EXPECT_EQ(store().scalar(QStringLiteral("select VALUE from 过滤条件 where ID=1100")).toInt(), 1);
}

}  // namespace
