#pragma once

#include <QDate>
#include <QString>
#include <QStringList>
#include <array>
#include <memory>

#include "domain/date_value.h"
#include "domain/game.h"

namespace dovrex {

class Cursor;

// Read-only questions put to 历史记录 through the shared store. Issues are not dense, so "the n-th
// draw before" always comes from the rows that exist. 2003001 stands in when there is no answer.

IssueNumber latest_QiHao();
// The earliest issue, or the row count (0) when the history is empty.
IssueNumber earliest_QiHao();
// Of the n newest draws up to and including x, the oldest.
IssueNumber top_QiHao(IssueNumber x, int n);
// Of the n newest draws before x, the oldest.
IssueNumber prev_QiHao(IssueNumber x, int n);
// Of the n oldest draws after x, the newest; latest_QiHao() when there is none.
IssueNumber next_QiHao_n(IssueNumber x, int n);
// The latest draw date by date order (not by issue); the date numbered 2003001 when empty.
DateValue latest_KaiJiangRi();
// Days since 2000-01-02 modulo 7; 0 is Sunday.
int calc_WeekDay(DateValue date);
// The first day after `date` whose weekday flag is set (the date itself never is). Gives the
// eighth day when no flag is set in the week.
DateValue next_KaiJiangRi(const std::array<bool, 7>& flags, DateValue date);
// The draw days after `latest` and before `today`: the draws a history ending at `latest` probably
// lacks (a draw of today may not have taken place yet).
int missing_DrawCount(const std::array<bool, 7>& flags, DateValue latest, const QDate& today);
// The default issue of the entry box: a new year's first issue when the latest draw's date lies
// in a later year than its issue says, otherwise the latest issue plus one.
IssueNumber next_QiHao(const QDate& pickerDate);

// The recent draws up to `issue`, at most ten: array(row, 1..7) holds reds 1..6 and the blue,
// row 10 the oldest and row 1 the newest. Rows not reached keep what they held. Returns the
// number of draws read.
using HistoryArray = std::array<std::array<short, 8>, 11>;
int getHistoryRecord(HistoryArray& array, IssueNumber issue);

// The prize table of a draw as the history page shows it: each tier with its winners and prize from
// the downloaded notice (奖级奖金); without a notice the fixed prizes of tiers 3 to 6 and "奖金未知"
// for 1 and 2.
QString prizeTableText(IssueNumber issue);

// Every stored issue, the newest first (the choosers of an issue range).
QList<IssueNumber> issues_NewestFirst();
// An issue chooser's list, newest first, and the text it shows.
// The chooser of the trend chart's last issue (Combo_TuBiaoQS): the newest n issues, and the first
// of them or, with no draw, earliest_QiHao().
struct IssueChoice {
    QString text;
    QStringList items;
};
IssueChoice fill_QiShuZuhe(int n);
// The count columns of every draw, the newest first, as the count page's grid lists them: 期号,
// odd, even, big, small, low-tail and high-tail counts, then the four zone counts.
std::shared_ptr<Cursor> open_CountColumns();

}  // namespace dovrex
