#pragma once

#include <QObject>
#include <QString>
#include <functional>
#include <type_traits>
#include <utility>

namespace dovrex {

namespace msg {
inline const QString kCommandFailed = QStringLiteral("操作出错，已中止。此前完成的部分已保留。");
inline const QString kOutOfMemory =
    QStringLiteral("内存不足，操作已中止。此前完成的部分已保留；请减少所选号码或条件后再试。");
}  // namespace msg

// Every command the window starts (a button, a menu entry, a timer, a dialog, a list click that
// writes) runs through runCommand: it is counted in shared().commandDepth, any exception it throws
// ends it with a message and the window's run state put back (Stop panels, command buttons,
// progress bars), and what it wrote stays written. False when it ended on an exception.
bool runCommand(const std::function<void()>& command);

// The entries that start commands. While a command runs a pass (it lets the window's events run
// through ui_Pump), every declared entry rests, so that no command starts inside another; each
// comes back as it was when the command ends.
namespace command_entries {
// Declares a button, a menu entry or any widget whose signal starts a command. Other senders
// (timers, models) are ignored.
void declare(QObject* sender);
// Called by every ui_Pump: the first of the running command rests the entries.
void passRunning();
}  // namespace command_entries

// A close request while a command runs: the command is told to stop (as Stop does) and `exit`
// runs once the last command has returned. Returns false when no command runs (close now).
bool deferCloseUntilIdle(std::function<void()> exit);
// A close has been deferred and has not run yet: every pass started meanwhile stops at once.
bool closePending();

// Connects a signal to a command: the slot runs through runCommand, and the sender is declared a
// command entry. The slot may take the signal's arguments or none.
template <class Sender, class Signal, class Slot>
QMetaObject::Connection connectCommand(Sender* sender, Signal signal, const QObject* context, Slot slot) {
    command_entries::declare(sender);
    return QObject::connect(sender, signal, context, [slot = std::move(slot)](auto&&... args) mutable {
        runCommand([&] {
            if constexpr (std::is_invocable_v<Slot&, decltype(args)...>)
                slot(std::forward<decltype(args)>(args)...);
            else
                slot();
        });
    });
}

}  // namespace dovrex
