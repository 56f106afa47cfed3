#pragma once

#include <QList>
#include <QStringList>

#include "ui/shell/gui_screen.h"

namespace dovrex {

// The window's screen with its boxes answered from a script instead of opened: it keeps what the
// player would have been shown and asked, with each box's title and buttons.
class AnsweringScreen : public GuiScreen {
  public:
    QStringList shown, shownTitles;  // messages, and the title of each (empty: the program's own)
    QStringList asked, askedTitles;  // questions, likewise
    QList<ConfirmButtons> askedButtons;
    QList<bool> answers;  // the answers to the questions in turn; `answer` when they run dry
    bool answer = true;
    QStringList typed;  // the replies to input boxes in turn; then `reply`, or the proposed text
    QString reply;
    QString file;  // what every file dialog chooses; unset, a save takes the file it proposes

    void ui_Message(const QString& text, MessageKind, const QString& title) override {
        shown << text;
        shownTitles << title;
    }
    bool ui_Confirm(const QString& text, ConfirmButtons buttons, const QString& title) override {
        asked << text;
        askedTitles << title;
        askedButtons << buttons;
        return answers.isEmpty() ? answer : answers.takeFirst();
    }
    QString ui_AskText(const QString&, const QString&, const QString& proposed) override {
        if (!typed.isEmpty()) return typed.takeFirst();
        return reply.isNull() ? proposed : reply;
    }
    QString ui_AskChoice(const QString& prompt, const QString& title, const QStringList& items,
                         int current) override {
        return ui_AskText(prompt, title, items.value(current));
    }
    QString ui_PickFile(const QString&, bool save, bool, const QString& start) override {
        return file.isEmpty() && save ? start : file;
    }
    int ui_ChooseUserMode() override { return 1; }
};

}  // namespace dovrex
