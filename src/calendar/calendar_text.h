#pragma once

#include <QDate>
#include <QString>
#include <optional>

// What the calendar control says about a date: lunar text, star sign, weekday, the short text of a
// grid cell, and the steps of its buttons. Dates outside the control's range are the caller's
// business (see inCalendarRange).
namespace dovrex {

// The control shows 1901-01-01 to 2100-12-31.
inline const QDate kCalendarFirst{1901, 1, 1};
inline const QDate kCalendarLast{2100, 12, 31};
inline bool inCalendarRange(const QDate& date) {
    return date.isValid() && date >= kCalendarFirst && date <= kCalendarLast;
}

// "农历" + the year's stem and branch (behind "(闰)" in a leap month) + month name + day name.
QString get_NongLiText(const QDate& date);
QString get_NongLiMonthText(const QDate& date);
QString get_NongLiDayText(const QDate& date);
// Star sign by month and day.
QString get_XingZuo(const QDate& date);
// "星期日".."星期六"; style 1 gives the formal numerals "星期壹".."星期陆".
QString get_XingQi(const QDate& date, int style = 0);

// The lunar line of a grid cell: the solar term of the day, else a festival, else the lunar month
// name on the first of a month, else the lunar day name.
QString calendarCellText(const QDate& date);
// True when the cell text is a term or a festival (drawn in another colour).
bool isRiLiSpecialDay(const QDate& date);

// The buttons' steps: 1 year up, 2 year down, 3 month down, 4 month up. The day is kept if the
// month has it, else the month's last day. Nothing (the repeat stops) beyond the range.
std::optional<QDate> stepCalendar(const QDate& from, int mode);
// The date of another month, keeping the day as the steps do.
QDate moveToMonth(const QDate& from, int year, int month);

}  // namespace dovrex
