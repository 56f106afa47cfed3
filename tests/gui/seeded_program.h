#pragma once

#include <gtest/gtest.h>

#include <QDate>
#include <QTemporaryDir>
#include <memory>

#include "domain/date_value.h"
#include "screen/app_paths.h"
#include "screen/shared_state.h"
#include "ui/shell/program_session.h"

namespace dovrex {

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

}  // namespace dovrex
