#include "screen/run_panel.h"

#include "domain/game.h"
#include "screen/control_roles.h"
#include "screen/shared_state.h"

namespace dovrex {

void log_Set(const QString& wholeText) {
    shared().operationLog = wholeText;
    screen().ui_Log(shared().operationLog);
}

void log_CaoZuo(const QString& text, bool keep) {
    log_Set(keep ? text + kCrLf2 + shared().operationLog : text + kCrLf2);
}

void log_Append(const QString& line) {
    log_Set(shared().operationLog + kCrLf2 + line);
}

PassLog::PassLog() : saved_(shared().operationLog) {}

void PassLog::show(const QString& line) const {
    log_Set(saved_ + kCrLf2 + line);
}

QString ticketsCost(int tickets) {
    return QStringLiteral("%1 元").arg(qint64(tickets) * kTicketPrice);
}

QString ticketsAndCost(int tickets) {
    return QStringLiteral("共 %1 注，").arg(tickets) + ticketsCost(tickets);
}

QString issueTicketsAndCost(IssueNumber issue, int tickets) {
    return QStringLiteral("第 %1 期，").arg(issue) + ticketsAndCost(tickets);
}

namespace {

void openPanel() {
    Screen& ui = screen();
    ui.ui_Set(role::FrameStop, QStringLiteral("visible"), true);
    ui.ui_Set(role::cmm_stop, QStringLiteral("enabled"), true);
    ui.ui_Set(role::Pic_subTouZhu, QStringLiteral("enabled"), false);
}

}  // namespace

RunPanel::RunPanel(int total) {
    openPanel();
    setTotal(total);
}

RunPanel::RunPanel(const QString& totalText) {
    openPanel();
    screen().ui_Progress(0, 0, 0, true);
    screen().ui_Set(role::LabelJindu, QStringLiteral("text"), QStringLiteral("0"));
    screen().ui_Set(role::LabelJinduAll, QStringLiteral("text"), totalText);
}

RunPanel::~RunPanel() {
    Screen& ui = screen();
    ui.ui_Set(role::FrameStop, QStringLiteral("visible"), false);
    ui.ui_Set(role::Pic_subTouZhu, QStringLiteral("enabled"), true);
}

void RunPanel::setTotal(int total) {
    total_ = total;
    screen().ui_Set(role::LabelJinduAll, QStringLiteral("text"), QString::number(total));
    show(0);
}

void RunPanel::show(int value) {
    screen().ui_Progress(0, total_, value, true);
    screen().ui_Set(role::LabelJindu, QStringLiteral("text"), QString::number(value));
    // About 250 visible steps a pass: more cannot be seen, and each costs the window a repaint.
    next_ = value + (total_ >= 250 ? total_ / 250 : 1);
}

}  // namespace dovrex
