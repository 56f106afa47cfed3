#pragma once

#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <QTextStream>
#include <functional>
#include <memory>

#include "app/app_flow.h"
#include "pipeline/random_pick.h"
#include "screen/scripted_screen.h"

namespace dovrex {

class AppFlow;
class Store;
class HeadlessRunner;

// The words after a command's name.
struct HeadlessArgs {
    QString text;       // the rest of the line, trimmed
    QStringList words;  // the same split at blanks
    // The i-th word as a number; false (with a message printed) when it is missing or not one.
    bool intAt(HeadlessRunner& runner, int i, int& value) const;
    // The i-th word as an issue, or the ticket grid's issue when there are no more words.
    bool issueAt(HeadlessRunner& runner, int i, int& issue) const;
};

// One command of a script. `run` returns false when the command failed; the runner has then
// printed why, and the script stops.
struct HeadlessCommand {
    const char* name;
    const char* usage;
    bool (*run)(HeadlessRunner&, const HeadlessArgs&);
};

// The command table, in the order `help` lists it.
const QList<HeadlessCommand>& headlessCommands();

// Runs scripts of commands against a program folder or a bare store, without a window: the
// harness of dovrex-headless and of tests. While it lives, its ScriptedScreen is the program's
// screen and every ui_* call is printed as it happens. See docs/headless.md.
class HeadlessRunner {
  public:
    // `out` receives every line the run prints.
    explicit HeadlessRunner(std::function<void(const QString&)> out);
    ~HeadlessRunner();
    HeadlessRunner(const HeadlessRunner&) = delete;
    HeadlessRunner& operator=(const HeadlessRunner&) = delete;

    // Runs a whole script; 0 when every command succeeded, 1 when one failed (the rest is skipped).
    int runScript(const QString& script);
    int runScript(QTextStream& in);
    // One line of a script; false when its command failed.
    bool runLine(const QString& line);
    // `exit` ran: the rest of the script is ignored.
    bool finished() const { return finished_; }

    // --- for the commands ---
    void print(const QString& line);
    // Prints "FAILED <why>" and returns false.
    bool fail(const QString& why);
    // True when a store is open; otherwise fails with a message.
    bool requireStore();
    ScriptedScreen& screen() { return screen_; }
    AppFlow* flow() { return flow_.get(); }

    // The tickets of the last `jixuan`, for `jixuan-export`.
    JiXuanHao lastJiXuan{};

    bool openFolder(const QString& programDir, const QString& tempDir);
    bool openStore(const QString& file);
    bool save();
    bool exit();
    // The checkpoint after each command: packs when the store changed and the interval has passed.
    void checkpoint();
    void setCheckpointInterval(qint64 ms);
    // The size guard's limit for the next open-folder.
    void setStoreSizeLimit(qint64 bytes) { storeSizeLimit_ = bytes; }

  private:
    bool runCommand(const HeadlessCommand& command, const HeadlessArgs& args);
    // The close request of close-after, and the exit sequence once the running command returned.
    void requestClose();
    bool closeNow();
    bool finishExit(bool saved);
    void closeAll();

    std::function<void(const QString&)> out_;
    ScriptedScreen screen_;
    Screen* previousScreen_ = nullptr;
    std::unique_ptr<QTemporaryDir> ownTemp_;
    std::unique_ptr<AppFlow> flow_;
    std::unique_ptr<Store> bareStore_;
    bool finished_ = false;
    qint64 checkpointIntervalMs_ = kCheckpointIntervalMs;
    qint64 storeSizeLimit_ = -1;
};

}  // namespace dovrex
