#pragma once

#include <QList>
#include <QPair>
#include <QString>

#include "domain/game.h"

namespace dovrex {

// One check for each kind of record the program stores: a ticket, a draw, a condition value. Every
// path that stores one (entry, import, download, condition files, the headless runner, init) asks
// here, so that no path takes what another refuses. Each returns an empty text for a record that
// can be stored, else what is wrong with it, for the player.

// The first draw of the game (issue 2003001) was on this day.
inline constexpr int kFirstDrawYear = 2003;
QDate firstDrawDate();
// More issues than three draws a week can give in a year; no issue number goes beyond.
inline constexpr int kIssuesPerYearMax = 200;

// An issue that can exist: year 2003 up to next year (tickets are bought ahead), number 1..200.
bool issueCanExist(long long issue);
// issueCanExist's refusal in words; empty when it can exist.
QString issueFault(long long issue);

// Six different reds 1..33 (positions 1..6 of `reds`), a blue 1..16, an issue that can exist.
QString ticketFault(const Reds& reds, int blue, long long issue);
// A ticket's checks, and a date in the issue's year, on or after the first draw, not after today.
QString drawFault(const Reds& reds, int blue, long long issue, const QDate& date);

// The values a row of 过滤条件 may hold: picks 0..2 (none, drag, banker), parity patterns 0..2,
// the shrink type 0 (none chosen) or 3..7, the tolerances in their ranges, the optimised shrink's
// time limit 0..kShrinkBudgetMax seconds, the history display mode 0..1, every other row (an allowed
// value) 0 or 1. False for an ID the program does not know.
bool conditionValueRange(int id, int& low, int& high);
bool conditionValueFits(int id, long long value);
// A switch of 过滤条件使用情况 is 0 or 1.
inline bool switchValueFits(long long value) {
    return value == 0 || value == 1;
}

// How the refused lines or records of a file are counted to the player: "已拒绝 3 行：第 2、5、9 行"
// (unit 行), or with 条 for records; at most the first five positions, "…" after them.
class RefusedRecords {
  public:
    explicit RefusedRecords(QString unit = QStringLiteral("行")) : unit_(std::move(unit)) {}
    void add(long long position);
    void add(const RefusedRecords& more);
    int count() const { return count_; }
    bool isEmpty() const { return count_ == 0; }
    QString text() const;  // empty when nothing was refused

  private:
    QString unit_;
    int count_ = 0;
    QList<long long> first_;
};

}  // namespace dovrex
