#pragma once

#include <QHash>
#include <QQueue>
#include <QString>
#include <QStringList>
#include <functional>
#include <optional>

#include "screen/screen.h"

namespace dovrex {

// A screen without a window, for the tests and the headless runner. Every ui_* call becomes one
// line of text ("MESSAGE <text>", "CONFIRM <text> -> yes", "STATUS 1 <text>", ...), kept in order
// and handed to an optional listener as it happens. Questions are answered from queues filled in
// advance; an empty queue gives the answer a user pressing Enter would give: yes, the proposed
// text, the file a save dialog proposes, else no file.
class ScriptedScreen : public Screen {
  public:
    void ui_Message(const QString& text, MessageKind kind = MessageKind::Information,
                    const QString& title = {}) override;
    bool ui_Confirm(const QString& text, ConfirmButtons buttons = ConfirmButtons::YesNo,
                    const QString& title = {}) override;
    QString ui_AskText(const QString& prompt, const QString& title, const QString& defaultText) override;
    void ui_Status(int panel, const QString& text) override;
    void ui_Progress(int min, int max, int value, bool visible) override;
    QString ui_PickFile(const QString& filter, bool save, bool askOverwrite = true,
                        const QString& start = {}) override;
    void ui_Grid(const QString& name, std::shared_ptr<Cursor> cursor) override;
    void ui_Pump() override;
    void ui_Log(const QString& wholeText) override;
    void ui_Set(const QString& role, const QString& property, const QVariant& value) override;
    void ui_Clipboard(const QString& text) override;
    void ui_OpenFile(const QString& path) override;
    void ui_OpenUrl(const QString& url) override;
    void ui_TimedTip(const QString& text, int seconds) override;
    void ui_RefreshPicks() override;
    void ui_DressGrid(const QString& name, const QStringList& captions, const QList<int>& widths) override;
    void ui_ShowPage(const QString& topPage, int conditionTab) override;
    void ui_RefreshTables() override;
    bool ui_ToFile(TicketExportOptions& options) override;
    bool ui_FromFile(TicketImportOptions& options) override;
    void ui_MarkDrawn(const QString& grid, const QList<int>& reds, int blue) override;

    // --- answers ---
    void answerConfirm(bool yes) { confirms_.enqueue(yes); }
    void answerText(const QString& text) { texts_.enqueue(text); }
    void answerFile(const QString& path) { files_.enqueue(path); }
    // The next frmToFile / frmFromFile: the options given, or cancel (nullopt). Unanswered, the
    // dialog is accepted as it opened.
    void answerToFile(std::optional<TicketExportOptions> options) { toFile_.enqueue(std::move(options)); }
    void answerFromFile(std::optional<TicketImportOptions> options) { fromFile_.enqueue(std::move(options)); }
    bool defaultConfirm = true;
    // Raises shared().tingZhi at the n-th ui_Pump from now (n >= 1); 0 disarms it.
    void stopAfterPumps(int n);
    // A close request (the window's close box) at the n-th ui_Pump from now (n >= 1); 0 disarms it.
    // It calls closeRequested, which decides whether the close goes ahead.
    void closeAfterPumps(int n);
    std::function<void()> closeRequested;
    // A close is under way: every ui_Pump raises shared().tingZhi until the running command returns.
    bool closing = false;

    // --- what happened ---
    const QStringList& lines() const { return lines_; }
    // The texts of every message box and timed tip, of any kind, in order.
    const QStringList& messages() const { return messages_; }
    // The title of every message box in order; empty for the program's own.
    const QStringList& messageTitles() const { return messageTitles_; }
    // The lines that start with `prefix` (e.g. "STATUS 1 ").
    QStringList linesStartingWith(const QString& prefix) const;
    int pumpCount() const { return pumps_; }
    QString lastStatus(int panel) const;
    struct Progress {
        int min = 0, max = 0, value = 0;
        bool visible = false;
    };
    const Progress& progress() const { return progress_; }
    void clear();

    // Every progress call becomes a line when set; otherwise only those that show or hide the bar,
    // change its range, or bring it to either end (a pass over thousands of rows stays readable).
    bool progressDetail = false;
    // Called with each line as it is recorded.
    std::function<void(const QString&)> listener;

    // One line of text for a multi-line value: line ends become "\n".
    static QString oneLine(const QString& text);

  private:
    void record(const QString& line);

    QStringList lines_;
    QQueue<bool> confirms_;
    QStringList messages_, messageTitles_;
    QQueue<QString> texts_, files_;
    QQueue<std::optional<TicketExportOptions>> toFile_;
    QQueue<std::optional<TicketImportOptions>> fromFile_;
    int pumps_ = 0;
    int stopAt_ = 0;
    int closeAt_ = 0;
    Progress progress_;
    QHash<int, QString> status_;
};

}  // namespace dovrex
