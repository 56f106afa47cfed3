#pragma once

#include <QTimer>
#include <memory>

#include "app/app_flow.h"
#include "screen/app_paths.h"
#include "ui/shell/gui_screen.h"

namespace dovrex {

class FormMain;

// One run of the program around its window: the start-up sequence up to a ready main window, and
// the screen that the logic talks to meanwhile. The exit sequence runs when the window closes.
class ProgramSession {
  public:
    // The screen may be a subclass (tests answer the boxes with one); a plain GuiScreen by default.
    explicit ProgramSession(AppPaths paths, std::unique_ptr<GuiScreen> screen = {});
    ~ProgramSession();
    ProgramSession(const ProgramSession&) = delete;
    ProgramSession& operator=(const ProgramSession&) = delete;

    // Runs the start-up. False when it stopped; the reason has been shown.
    bool start();

    AppFlow& flow() { return flow_; }
    // The checkpoint of the work: packs the store when it changed, provided no command or pass runs
    // and no box waits for an answer. The session's timer calls it every few seconds.
    SaveOutcome checkpointIfIdle();
    GuiScreen& screen() { return *screen_; }
    FormMain* window() const { return window_.get(); }

  private:
    StartOutcome openStore();
    void offerDownload();
    // First-run mode choice and, in multi-user mode, the login. False when the player left.
    bool chooseUser();

    AppFlow flow_;
    std::unique_ptr<GuiScreen> screen_;
    std::unique_ptr<FormMain> window_;
    QTimer checkpointTimer_;
    // A failed checkpoint is told once, not every minute, until one succeeds again.
    bool checkpointFailureShown_ = false;
};

}  // namespace dovrex
