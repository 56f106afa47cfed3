#pragma once

#include <QDate>
#include <QString>
#include <optional>

namespace dovrex {

// A point in time as the store keeps it: days since 1899-12-30 with the time of day as fraction.
// No time zone is ever applied. Any whole number is a valid date (2003001 is a day in the year 7384),
// which the history queries rely on for their fallback date.
using DateValue = double;

DateValue toDateValue(const QDate& date);
QDate toQDate(DateValue value);
// "yyyy/mm/dd", the date text used throughout the program.
QString dateText(DateValue value);
QString dateText(const QDate& date);
// Accepts yyyy/m/d, yyyy-m-d and yyyy.m.d, with an optional time that is ignored; invalid gives nullopt.
std::optional<DateValue> parseDateText(const QString& text);

// The program's one notion of "today". Tests set it; everything else reads it.
class Clock {
  public:
    static QDate today();
    static void setToday(const QDate& date);
    static void useSystemClock();
};

}  // namespace dovrex
