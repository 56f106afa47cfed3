#include "ui/shell/program_session.h"

#include <QApplication>
#include <QPointer>
#include <QScreen>

#include <QAction>

#include "app/status_line.h"
#include "filters/condition_files.h"
#include "pipeline/pick_state.h"
#include "screen/shared_state.h"
#include "screen/ticket_page.h"
#include "ui/conditions/conditions_page.h"
#include "ui/shell/form_main.h"
#include "ui/shell/gui_screen.h"
#include "ui/history/history_page.h"
#include "ui/shell/splash_window.h"
#include "users/users.h"

namespace dovrex {

namespace {

// How often the session looks for work to pack; AppFlow packs at most once a minute.
constexpr int kCheckpointPollMs = 5000;

// The old screens counted 15360 twips as the line between small and large ball faces.
bool isSmallScreen() {
    const QScreen* s = QGuiApplication::primaryScreen();
    return s && s->geometry().width() * 15 < 15360;
}

}  // namespace

ProgramSession::ProgramSession(AppPaths paths, std::unique_ptr<GuiScreen> screen)
    : flow_(std::move(paths)), screen_(screen ? std::move(screen) : std::make_unique<GuiScreen>()) {}

ProgramSession::~ProgramSession() {
    checkpointTimer_.stop();
    if (window_) screen_->releaseGrids();
    window_.reset();
    flow_.abandon();
    if (shared().screen == screen_.get()) shared().screen = nullptr;
}

bool ProgramSession::start() {
    // A second start must never reach the working copy of the one that runs.
    if (const StartOutcome locked = flow_.acquireInstance(); locked != StartOutcome::Ready) {
        screen_->ui_Message(startMessage(locked), locked == StartOutcome::AlreadyRunning
                                                      ? MessageKind::Warning
                                                      : MessageKind::Error);
        return false;
    }
    shared().screen = screen_.get();
    AppPaths::seedProgramDir(flow_.paths().programDir, AppPaths::shippedDataDir());
    if (const StartOutcome unpacked = flow_.app_Initialize(); unpacked != StartOutcome::Ready) {
        screen_->ui_Message(startMessage(unpacked), MessageKind::Error);
        return false;
    }

    QPointer<SplashWindow> splash = new SplashWindow;
    splash->showNow();
    const StartOutcome outcome = openStore();
    if (outcome != StartOutcome::Ready) {
        if (splash) splash->close();
        screen_->ui_Message(startMessage(outcome), MessageKind::Error);
        return false;
    }

    window_ = std::make_unique<FormMain>(flow_, *screen_);
    window_->fitToScreen();
    window_->historyPage()->showHistory();
    window_->selectPage(TopPage::History);

    if (splash) splash->close();
    window_->show();
    shared().g_MainCaption = window_->windowTitle();
    if (!chooseUser()) return false;

    if (flow_.history_Status() && downloadOfferDue(flow_.paths())) offerDownload();
    // Ready: the pick page, painted from the picks of the user now logged in.
    window_->selectPage(TopPage::Conditions);
    if (ConditionsPage* conditions = window_->conditionsPage()) conditions->selectTab(1);
    try {
        load_XuanHaoZhuangTai();
        // The tickets left from the last run, so that the next step can go on with them.
        load_TouZhuBiao(-1);
    } catch (const StoreError&) {
    }
    upgrade_TiaoJian();

    checkpointTimer_.setInterval(kCheckpointPollMs);
    QObject::connect(&checkpointTimer_, &QTimer::timeout, [this] { checkpointIfIdle(); });
    checkpointTimer_.start();
    return true;
}

SaveOutcome ProgramSession::checkpointIfIdle() {
    // Inside a command, a pass or a box the store is half way through a change.
    if (shared().commandDepth > 0 || screen_->pumping() || QApplication::activeModalWidget() ||
        !shared().g_Store)
        return SaveOutcome::Busy;
    const SaveOutcome outcome = flow_.checkpoint();
    const QString failure = saveMessage(outcome);
    if (!failure.isEmpty() && !checkpointFailureShown_) {
        checkpointFailureShown_ = true;
        screen_->ui_Message(failure, MessageKind::Error);
    }
    if (outcome == SaveOutcome::Saved) checkpointFailureShown_ = false;
    return outcome;
}

bool ProgramSession::chooseUser() {
    int mode = read_UserMode();
    if (mode == 0) {
        mode = screen_->ui_ChooseUserMode();
        if (mode == 0) return false;  // 退出系统: nothing is saved
        write_UserMode(mode);
    }
    shared().g_UserMode = mode;
    if (QAction* switchUser = window_->findChild<QAction*>(QStringLiteral("mnu_UserQiehuan")))
        switchUser->setVisible(mode >= kMultiUserMode);
    if (mode < kMultiUserMode) return true;
    if (!screen_->ui_Login()) return false;
    window_->setWindowTitle(mainCaptionForUser());
    return true;
}

StartOutcome ProgramSession::openStore() {
    return flow_.openStore(isSmallScreen());
}

void ProgramSession::offerDownload() {
    if (!screen_->ui_Confirm(msg::kStaleHistory)) return;
    window_->selectPage(TopPage::History);
    if (HistoryPage* page = window_->historyPage()) page->downloadDraws();
}

}  // namespace dovrex
