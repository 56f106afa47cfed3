#pragma once

#include <QString>

#include "domain/game.h"

namespace dovrex {

// Two line ends: the separator of every line of the operation log and of the program's messages.
inline const QString kCrLf = QStringLiteral("\r\n");
inline const QString kCrLf2 = QStringLiteral("\r\n\r\n");

// The operation log (TextChaoZuoTip), kept in shared().operationLog and shown through ui_Log.
// log_CaoZuo: without keep the log holds only the text and two line ends; with keep the text and two
// line ends go in front of the old content.
void log_CaoZuo(const QString& text, bool keep);
// Appends a line behind two line ends, as the long passes do.
void log_Append(const QString& line);
// Replaces the whole text.
void log_Set(const QString& wholeText);

// The log as it stood when a pass began. The pass shows its in-progress line behind it, then
// replaces that line with its result instead of adding the result below it.
class PassLog {
  public:
    PassLog();
    // The saved text, two line ends and the line.
    void show(const QString& line) const;

  private:
    QString saved_;
};

// "M 元": what a count of tickets costs at the price of a ticket.
QString ticketsCost(int tickets);
// "共 N 注，M 元": a count of tickets with what they cost.
QString ticketsAndCost(int tickets);
// "第 I 期，共 N 注，M 元": the heading of an issue's tickets, over the ticket grid and on paper.
QString issueTicketsAndCost(IssueNumber issue, int tickets);

// The progress panel of a pass over the tickets: ProgressBar_TouZu_Busy from 0 to the total,
// LabelJindu the value, LabelJinduAll the total, FrameStop shown with cmm_stop enabled and the
// command buttons (Pic_subTouZhu) disabled while it lives; all restored when it goes, on every way
// out. step() is meant to be called once a row: it forwards to the screen only when the shown value
// moves by a visible amount, so the cost of a row stays that of the row.
class RunPanel {
  public:
    explicit RunPanel(int total);
    // A panel whose total is a text (LabelJinduAll "操作进行中。。。"); the bar stays at 0..0.
    explicit RunPanel(const QString& totalText);
    ~RunPanel();
    RunPanel(const RunPanel&) = delete;
    RunPanel& operator=(const RunPanel&) = delete;

    // Sets the maximum (and LabelJinduAll) once the total is known.
    void setTotal(int total);
    // Value after each row; throttled.
    void step(int value) {
        if (value >= next_ || value >= total_) show(value);
    }
    // Value now, unthrottled.
    void show(int value);

  private:
    int total_ = 0;
    int next_ = 0;
};

}  // namespace dovrex
