#include "widgets/command_trap.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QButtonGroup>
#include <QPointer>
#include <QTimer>
#include <QWidget>
#include <exception>
#include <new>
#include <vector>

#include "analysis/jindu.h"
#include "screen/control_roles.h"
#include "screen/run_panel.h"
#include "screen/shared_state.h"
#include "store/store.h"
#include "widgets/jindu_panel.h"

namespace dovrex {

namespace {

// One running command: the entries it put to rest, and whether it did.
struct RunningCommand {
    bool rested = false;
    std::vector<QPointer<QObject>> restedEntries;
};

struct TrapState {
    std::vector<QPointer<QObject>> entries;
    std::vector<RunningCommand> running;
    std::function<void()> pendingExit;
    bool failed = false;  // a command of the current outermost one ended on an exception
};

TrapState& trap() {
    static TrapState state;
    return state;
}

bool entryEnabled(QObject* entry) {
    if (auto* action = qobject_cast<QAction*>(entry)) return action->isEnabled();
    if (auto* widget = qobject_cast<QWidget*>(entry)) return widget->isEnabled();
    return false;
}

void setEntryEnabled(QObject* entry, bool on) {
    if (auto* action = qobject_cast<QAction*>(entry))
        action->setEnabled(on);
    else if (auto* widget = qobject_cast<QWidget*>(entry))
        widget->setEnabled(on);
}

// What a pass shows while it runs, put back after one ended on an exception. The passes do so
// themselves on every way out they know of; this covers the ones they do not.
void restoreRunState() {
    Screen& ui = screen();
    ui.ui_Set(role::FrameStop, QStringLiteral("visible"), false);
    ui.ui_Set(role::Pic_subTouZhu, QStringLiteral("enabled"), true);
    ui.ui_Progress(0, 0, 0, false);
    for (QWidget* top : QApplication::topLevelWidgets())
        for (JinDuPanel* panel : top->findChildren<JinDuPanel*>())
            if (panel->state().visible()) panel->state().hide();
    if (!trap().pendingExit) shared().tingZhi = 0;
}

void report(const QString& text) {
    screen().ui_Message(text, MessageKind::Error);
}

// A command has returned: the entries it put to rest come back.
void commandEnded(RunningCommand& command) {
    for (const QPointer<QObject>& entry : command.restedEntries)
        if (entry) setEntryEnabled(entry, true);
}

}  // namespace

namespace command_entries {

void declare(QObject* sender) {
    if (auto* group = qobject_cast<QButtonGroup*>(sender)) {
        for (QAbstractButton* b : group->buttons()) declare(b);
        return;
    }
    if (!qobject_cast<QAction*>(sender) && !qobject_cast<QWidget*>(sender)) return;
    auto& entries = trap().entries;
    for (const QPointer<QObject>& e : entries)
        if (e == sender) return;
    entries.emplace_back(sender);
}

void passRunning() {
    auto& state = trap();
    if (state.running.empty() || state.running.back().rested) return;
    RunningCommand& command = state.running.back();
    command.rested = true;
    std::vector<QPointer<QObject>> alive;
    alive.reserve(state.entries.size());
    for (const QPointer<QObject>& entry : state.entries) {
        if (!entry) continue;
        alive.push_back(entry);
        if (!entryEnabled(entry)) continue;
        setEntryEnabled(entry, false);
        command.restedEntries.push_back(entry);
    }
    state.entries = std::move(alive);
}

}  // namespace command_entries

bool runCommand(const std::function<void()>& command) {
    TrapState& state = trap();
    state.running.emplace_back();
    ++shared().commandDepth;
    bool ok = false;
    try {
        command();
        ok = true;
    } catch (const std::bad_alloc&) {
        report(msg::kOutOfMemory);
    } catch (const StoreWriteError& e) {
        report(e.text);  // says itself that nothing was saved
    } catch (const StoreError& e) {
        report(msg::kCommandFailed + kCrLf2 + e.text);
    } catch (const std::exception& e) {
        report(msg::kCommandFailed + kCrLf2 + QString::fromLocal8Bit(e.what()));
    } catch (...) {
        report(msg::kCommandFailed);
    }
    if (!ok) state.failed = true;
    RunningCommand ended = std::move(state.running.back());
    state.running.pop_back();
    --shared().commandDepth;
    commandEnded(ended);
    if (shared().commandDepth > 0) return ok;

    if (state.failed) {
        state.failed = false;
        restoreRunState();
    }
    if (state.pendingExit) {
        // Queued, so that the exit runs from the event loop and not inside the signal that
        // started the command.
        QTimer::singleShot(0, qApp, [] {
            auto exit = std::exchange(trap().pendingExit, {});
            if (exit) exit();
        });
    }
    return ok;
}

bool deferCloseUntilIdle(std::function<void()> exit) {
    if (shared().commandDepth <= 0) return false;
    trap().pendingExit = std::move(exit);
    shared().tingZhi = 1;
    return true;
}

bool closePending() {
    return bool(trap().pendingExit);
}

}  // namespace dovrex
