#pragma once

#include <QString>
#include <QStringList>
#include <QVariant>
#include <memory>

#include "screen/ticket_options.h"

namespace dovrex {

class Cursor;

enum class MessageKind { Information, Warning, Error };

// The buttons of a question box: 是/否, or 确定/取消 where the question is a go-ahead for a pass.
enum class ConfirmButtons { YesNo, OkCancel };

namespace msg {
// The title of the boxes that inform before they ask, and of the timed tips.
inline const QString kInfoTitle = QStringLiteral("信息提示");
}  // namespace msg

// Everything the logic asks of a window. The GUI implements it with real widgets; tests and the
// headless runner implement it with scripted answers. Role names are the control names the
// program has always used (LabelJindu, TDBGrid_RZ, cmmTouZhu, ...).
class Screen {
  public:
    virtual ~Screen() = default;

    // An information, warning or error box; an empty title gives the program's own.
    virtual void ui_Message(const QString& text, MessageKind kind = MessageKind::Information,
                            const QString& title = {}) = 0;
    // A question box; true for 是 or 确定. Closing it without an answer is no.
    virtual bool ui_Confirm(const QString& text, ConfirmButtons buttons = ConfirmButtons::YesNo,
                            const QString& title = {}) = 0;
    // A one-line input box; an empty reply means cancel.
    virtual QString ui_AskText(const QString& prompt, const QString& title, const QString& defaultText) = 0;
    // A choice among `items`, `current` proposed: the item chosen, empty for cancel. A screen without
    // a list of its own asks for the text, proposing the current item.
    virtual QString ui_AskChoice(const QString& prompt, const QString& title, const QStringList& items,
                                 int current) {
        return ui_AskText(prompt, title, items.value(current));
    }
    // The three-panel status line, panels 1..3.
    virtual void ui_Status(int panel, const QString& text) = 0;
    // The progress bar of the running pass.
    virtual void ui_Progress(int min, int max, int value, bool visible) = 0;
    // A file dialog; empty when cancelled. filter as "文本文件 (*.txt)".
    // askOverwrite false: the caller asks its own question about a file that exists.
    // start: the folder the dialog opens in, or the file a save proposes; empty for the dialog's own
    // last folder.
    virtual QString ui_PickFile(const QString& filter, bool save, bool askOverwrite = true,
                                const QString& start = {}) = 0;
    // Rebinds the named grid to a row set (null clears it).
    virtual void ui_Grid(const QString& name, std::shared_ptr<Cursor> cursor) = 0;
    // Lets pending events run during a long pass. Implementations may throttle by time.
    virtual void ui_Pump() = 0;

    // --- services of a window that later commands need ---

    // The operation log's whole text changed (TextChaoZuoTip); the caret goes to the end.
    virtual void ui_Log(const QString& /*wholeText*/) {}
    // Sets a property of a named control: text, enabled, visible, value, caption, checked ...
    virtual void ui_Set(const QString& /*role*/, const QString& /*property*/, const QVariant& /*value*/) {}
    // Puts text on the clipboard.
    virtual void ui_Clipboard(const QString& /*text*/) {}
    // Opens a file with the desktop's default application (the user's text editor for .txt).
    virtual void ui_OpenFile(const QString& /*path*/) {}
    // Opens a web address in the system browser.
    virtual void ui_OpenUrl(const QString& /*url*/) {}
    // A tip that closes itself after the given seconds, counting down.
    virtual void ui_TimedTip(const QString& text, int /*seconds*/) { ui_Message(text); }
    // Redraws the number buttons of the pick page from the store (after picks changed).
    virtual void ui_RefreshPicks() {}
    // Dresses a grid's columns: captions, widths in twips (15 to a pixel; 0 hides, negative leaves the
    // grid's own width), in column order.
    virtual void ui_DressGrid(const QString& /*name*/, const QStringList& /*captions*/,
                              const QList<int>& /*widths*/) {}
    // Brings a page of the main window to the front: a top page by its caption ("过滤条件", "投注号码",
    // ...) and, on 过滤条件, the condition tab 1..30 (0 keeps the tab shown).
    virtual void ui_ShowPage(const QString& /*topPage*/, int /*conditionTab*/) {}
    // The analysis tables of the selected tab are refilled from the store.
    virtual void ui_RefreshTables() {}

    // --- ticket files and the prize check ---

    // frmToFile, modal, opened on `options` and changing them; false when cancelled.
    virtual bool ui_ToFile(TicketExportOptions& /*options*/) { return false; }
    // frmFromFile, modal, opened on `options` and changing them; false when cancelled.
    virtual bool ui_FromFile(TicketImportOptions& /*options*/) { return false; }
    // The drawn numbers of a checked issue stand out as balls in the red and blue cells of a ticket
    // grid; no reds clears the marks.
    virtual void ui_MarkDrawn(const QString& /*grid*/, const QList<int>& /*reds*/, int /*blue*/) {}
};

// A screen that answers nothing and shows nothing: the default until a real one is installed.
class NullScreen : public Screen {
  public:
    void ui_Message(const QString&, MessageKind, const QString&) override {}
    bool ui_Confirm(const QString&, ConfirmButtons, const QString&) override { return false; }
    QString ui_AskText(const QString&, const QString&, const QString&) override { return {}; }
    void ui_Status(int, const QString&) override {}
    void ui_Progress(int, int, int, bool) override {}
    QString ui_PickFile(const QString&, bool, bool, const QString&) override { return {}; }
    void ui_Grid(const QString&, std::shared_ptr<Cursor>) override {}
    void ui_Pump() override {}
};

}  // namespace dovrex
