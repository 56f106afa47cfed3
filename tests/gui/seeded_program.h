#pragma once

#include <gtest/gtest.h>

#include <QAbstractItemModel>
#include <QDate>
#include <QDir>
#include <QProgressBar>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <functional>
#include <memory>

#include "domain/date_value.h"
#include "filters/condition_store.h"
#include "screen/app_paths.h"
#include "screen/shared_state.h"
#include "ui/shell/form_main.h"
#include "ui/shell/program_session.h"
#include "ui/tickets/tickets_page.h"

namespace dovrex {

// The column of `model` headed `header`; -1 when there is none.
inline int columnOf(const QAbstractItemModel* model, const QString& header) {
    for (int c = 0; c < model->columnCount(); ++c)
        if (model->headerData(c, Qt::Horizontal).toString() == header) return c;
    return -1;
}

// DOVREX_SCREENSHOTS=<folder> keeps a picture of what a test looks at.
inline void keepPicture(QWidget* w, const QString& name) {
    const QString dir = qEnvironmentVariable("DOVREX_SCREENSHOTS");
    QCoreApplication::processEvents();
    if (!dir.isEmpty()) w->grab().save(QDir(dir).filePath(name + QStringLiteral(".png")));
}

// A program folder in a temporary folder, seeded from the build's default data, with "today" the
// day after the newest shipped draw, and the process state as a new process has it. Sessions on it
// have their boxes answered by a test screen.
class SeededProgramTest : public ::testing::Test {
  protected:
    void SetUp() override {
        // Every test starts on the state of a new process, whatever the one before left.
        reset_SharedState();
        ASSERT_TRUE(tmp_.isValid());
        paths_.programDir = tmp_.path() + QStringLiteral("/program");
        paths_.tempDir = tmp_.path() + QStringLiteral("/temp");
        ASSERT_TRUE(AppPaths::seedProgramDir(paths_.programDir, QStringLiteral(DOVREX_BUILD_DIR "/data")));
        Clock::setToday(QDate(2026, 8, 21));
    }
    void TearDown() override {
        session_.reset();
        Clock::useSystemClock();
    }
    // A session (not yet started) whose boxes `TestScreen` answers.
    template <class TestScreen>
    std::unique_ptr<ProgramSession> makeSession(TestScreen*& screen) {
        auto owned = std::make_unique<TestScreen>();
        screen = owned.get();
        return std::make_unique<ProgramSession>(paths_, std::move(owned));
    }

    QTemporaryDir tmp_;
    AppPaths paths_;
    std::unique_ptr<ProgramSession> session_;
};

// A program started on that folder, its boxes answered by `TestScreen`, with its main window and
// 投注号码 page at hand.
template <class TestScreen>
class StartedProgramTest : public SeededProgramTest {
  protected:
    void SetUp() override {
        SeededProgramTest::SetUp();
        startProgram();
    }
    // Starts the program on the folder: at SetUp, and again after exitProgram.
    void startProgram() {
        session_ = makeSession(screen_);
        ASSERT_TRUE(session_->start());
        window_ = session_->window();
        ticketsPage_ = qobject_cast<TicketsPage*>(window_->page(TopPage::Tickets));
        ASSERT_NE(ticketsPage_, nullptr);
    }
    // Closes the window as the player does; true when it closed and the exit saved the work.
    bool exitProgram() {
        bool saved = false;
        QObject::connect(window_, &FormMain::exited, [&](bool ok) { saved = ok; });
        const bool closed = window_->close();
        session_.reset();
        return closed && saved;
    }
    // Presses Stop once the running pass's bar reaches `rows`, however fast the machine is;
    // `atPress` looks at the window at that moment. True once pressed.
    std::shared_ptr<bool> pressStopAt(int rows, std::function<void()> atPress = {}) {
        auto pressed = std::make_shared<bool>(false);
        auto* bar = window_->findChild<QProgressBar*>(QStringLiteral("ProgressBar_TouZu_Busy"));
        EXPECT_NE(bar, nullptr);
        if (!bar) return pressed;
        QObject::connect(
            bar, &QProgressBar::valueChanged, ticketsPage_, [this, rows, atPress, pressed](int value) {
                if (*pressed || value < rows) return;
                *pressed = true;
                if (atPress) atPress();
                QMetaObject::invokeMethod(
                    ticketsPage_, [this] { QTest::mousePress(ticketsPage_->stopButton(), Qt::LeftButton); },
                    Qt::QueuedConnection);
            });
        return pressed;
    }
    // Turns to the 投注号码 page and clicks the command's button.
    void clickCommand(int index) {
        window_->selectPage(TopPage::Tickets);
        QTest::mouseClick(ticketsPage_->command(index), Qt::LeftButton);
    }
    // Writes a pick value (1 drag, 2 banker) into the rows from..to of 过滤条件.
    static void pickRange(int from, int to, int value) {
        for (int id = from; id <= to; ++id) set_GuoLvTiaoJian(id, value);
    }

    TestScreen* screen_ = nullptr;
    FormMain* window_ = nullptr;
    TicketsPage* ticketsPage_ = nullptr;
};

}  // namespace dovrex
