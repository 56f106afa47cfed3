#include "screen/scripted_screen.h"

#include <QFileInfo>

#include "screen/shared_state.h"
#include "store/store.h"

namespace dovrex {

namespace {
QString kindWord(MessageKind kind) {
    switch (kind) {
        case MessageKind::Warning:
            return QStringLiteral("WARNING");
        case MessageKind::Error:
            return QStringLiteral("ERROR");
        default:
            return QStringLiteral("MESSAGE");
    }
}
}  // namespace

QString ScriptedScreen::oneLine(const QString& text) {
    QString out = text;
    out.replace(QStringLiteral("\r\n"), QStringLiteral("\\n"));
    out.replace(u'\n', QStringLiteral("\\n"));
    out.replace(u'\r', QStringLiteral("\\n"));
    return out;
}

void ScriptedScreen::record(const QString& line) {
    lines_ << line;
    if (listener) listener(line);
}

// A title or the 确定/取消 buttons are written after the text, so that lines of plain boxes read
// as they always did.
void ScriptedScreen::ui_Message(const QString& text, MessageKind kind, const QString& title) {
    record(kindWord(kind) + u' ' + oneLine(text) +
           (title.isEmpty() ? QString() : QStringLiteral(" | ") + title));
    messages_ << oneLine(text);
    messageTitles_ << title;
}

bool ScriptedScreen::ui_Confirm(const QString& text, ConfirmButtons buttons, const QString& title) {
    const bool yes = confirms_.isEmpty() ? defaultConfirm : confirms_.dequeue();
    const bool ok = buttons == ConfirmButtons::OkCancel;
    record(QStringLiteral("CONFIRM %1%2%3 -> %4")
               .arg(oneLine(text), ok ? QStringLiteral(" [确定/取消]") : QString(),
                    title.isEmpty() ? QString() : QStringLiteral(" | ") + title,
                    yes ? (ok ? QStringLiteral("ok") : QStringLiteral("yes"))
                        : (ok ? QStringLiteral("cancel") : QStringLiteral("no"))));
    return yes;
}

QString ScriptedScreen::ui_AskText(const QString& prompt, const QString& title, const QString& defaultText) {
    const QString answer = texts_.isEmpty() ? defaultText : texts_.dequeue();
    record(QStringLiteral("ASK %1 | %2 | %3 -> %4").arg(oneLine(prompt), title, defaultText, answer));
    return answer;
}

void ScriptedScreen::ui_Status(int panel, const QString& text) {
    status_.insert(panel, text);
    record(QStringLiteral("STATUS %1 %2").arg(panel).arg(text));
}

void ScriptedScreen::ui_Progress(int min, int max, int value, bool visible) {
    const Progress before = progress_;
    progress_ = {min, max, value, visible};
    const bool notable =
        visible != before.visible || min != before.min || max != before.max || value == min || value == max;
    if (progressDetail || notable)
        record(QStringLiteral("PROGRESS %1..%2 %3 %4")
                   .arg(min)
                   .arg(max)
                   .arg(value)
                   .arg(visible ? QStringLiteral("shown") : QStringLiteral("hidden")));
}

QString ScriptedScreen::ui_PickFile(const QString& filter, bool save, bool, const QString& start) {
    const bool proposed = save && !start.isEmpty() && !QFileInfo(start).isDir();
    const QString answer = !files_.isEmpty() ? files_.dequeue() : proposed ? start : QString();
    record(QStringLiteral("FILE %1 %2%3 -> %4")
               .arg(save ? QStringLiteral("save") : QStringLiteral("open"), filter,
                    start.isEmpty() ? QString() : QStringLiteral(" in ") + start, answer));
    return answer;
}

void ScriptedScreen::ui_Grid(const QString& name, std::shared_ptr<Cursor> cursor) {
    record(cursor ? QStringLiteral("GRID %1 %2 rows").arg(name).arg(cursor->recordCount())
                  : QStringLiteral("GRID %1 cleared").arg(name));
}

void ScriptedScreen::ui_Pump() {
    ++pumps_;
    if (stopAt_ > 0 && pumps_ >= stopAt_) {
        stopAt_ = 0;
        shared().tingZhi = 1;
        record(QStringLiteral("STOP after %1 pumps").arg(pumps_));
    }
    if (closeAt_ > 0 && pumps_ >= closeAt_) {
        closeAt_ = 0;
        record(QStringLiteral("CLOSE after %1 pumps").arg(pumps_));
        if (closeRequested) closeRequested();
    }
    // A close under way stops every pass, also one that cleared the flag as it began.
    if (closing) shared().tingZhi = 1;
}

void ScriptedScreen::stopAfterPumps(int n) {
    stopAt_ = n > 0 ? pumps_ + n : 0;
}

void ScriptedScreen::closeAfterPumps(int n) {
    closeAt_ = n > 0 ? pumps_ + n : 0;
}

void ScriptedScreen::ui_Log(const QString& wholeText) {
    record(QStringLiteral("LOG ") + oneLine(wholeText));
}

void ScriptedScreen::ui_Set(const QString& role, const QString& property, const QVariant& value) {
    record(QStringLiteral("SET %1.%2 = %3").arg(role, property, oneLine(value.toString())));
}

void ScriptedScreen::ui_Clipboard(const QString& text) {
    record(QStringLiteral("CLIPBOARD ") + oneLine(text));
}

void ScriptedScreen::ui_OpenFile(const QString& path) {
    record(QStringLiteral("OPENFILE ") + path);
}

void ScriptedScreen::ui_OpenUrl(const QString& url) {
    record(QStringLiteral("OPENURL ") + url);
}

void ScriptedScreen::ui_TimedTip(const QString& text, int seconds) {
    record(QStringLiteral("TIP %1s %2").arg(seconds).arg(oneLine(text)));
    messages_ << oneLine(text);
}

void ScriptedScreen::ui_RefreshPicks() {
    record(QStringLiteral("REFRESH picks"));
}

void ScriptedScreen::ui_DressGrid(const QString& name, const QStringList& captions,
                                  const QList<int>& widths) {
    QStringList cols;
    for (int i = 0; i < captions.size(); ++i)
        cols << QStringLiteral("%1:%2").arg(captions[i]).arg(widths.value(i, -1));
    record(QStringLiteral("DRESS %1 %2").arg(name, cols.join(u' ')));
}

bool ScriptedScreen::ui_ToFile(TicketExportOptions& options) {
    std::optional<TicketExportOptions> answer = options;
    if (!toFile_.isEmpty()) answer = toFile_.dequeue();
    if (answer) options = *answer;
    const auto& on = options.daoChuXuanXiang;
    record(
        QStringLiteral("TOFILE 序号=%1 期号=%2 号码=%3 分隔行=%4 红球间隔符=\"%5\" 红蓝分隔符=\"%6\" -> %7")
            .arg(int(on[0]))
            .arg(int(on[1]))
            .arg(int(on[2]))
            .arg(int(on[3]))
            .arg(options.hongJianGe, options.hongLanJianGe,
                 answer ? QStringLiteral("ok") : QStringLiteral("cancel")));
    return answer.has_value();
}

bool ScriptedScreen::ui_FromFile(TicketImportOptions& options) {
    // As the dialog does: an answer it refuses shows why and the dialog stays for the next queued
    // answer; with none left it is cancelled. Each queued answer is taken once.
    bool first = true;
    for (;;) {
        std::optional<TicketImportOptions> answer;
        if (!fromFile_.isEmpty())
            answer = fromFile_.dequeue();
        else if (first)
            answer = options;  // Enter on the dialog as it opened
        first = false;
        if (answer) options = *answer;
        const QString refusal = answer ? import_InputError(options) : QString();
        record(QStringLiteral("FROMFILE layout=%1 issue=%2 -> %3")
                   .arg(options.daoRuGeShi)
                   .arg(options.daoRuQiHao, !answer             ? QStringLiteral("cancel")
                                            : refusal.isEmpty() ? QStringLiteral("ok")
                                                                : QStringLiteral("refused")));
        if (refusal.isEmpty()) return answer.has_value();
        ui_Message(refusal);
    }
}

void ScriptedScreen::ui_MarkDrawn(const QString& grid, const QList<int>& reds, int blue) {
    if (reds.isEmpty()) {
        record(QStringLiteral("DRAWN %1 cleared").arg(grid));
        return;
    }
    QStringList numbers;
    for (int n : reds) numbers << QStringLiteral("%1").arg(n, 2, 10, QLatin1Char('0'));
    record(
        QStringLiteral("DRAWN %1 %2 + %3").arg(grid, numbers.join(u' ')).arg(blue, 2, 10, QLatin1Char('0')));
}

QStringList ScriptedScreen::linesStartingWith(const QString& prefix) const {
    QStringList out;
    for (const QString& line : lines_)
        if (line.startsWith(prefix)) out << line;
    return out;
}

QString ScriptedScreen::lastStatus(int panel) const {
    return status_.value(panel);
}

void ScriptedScreen::clear() {
    lines_.clear();
    messages_.clear();
    messageTitles_.clear();
    status_.clear();
    pumps_ = 0;
    stopAt_ = 0;
    closeAt_ = 0;
}

void ScriptedScreen::ui_ShowPage(const QString& topPage, int conditionTab) {
    record(QStringLiteral("PAGE %1 %2").arg(topPage).arg(conditionTab));
}

void ScriptedScreen::ui_RefreshTables() {
    record(QStringLiteral("REFRESH tables"));
}

}  // namespace dovrex
