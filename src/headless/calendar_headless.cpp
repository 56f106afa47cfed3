#include "headless/calendar_headless.h"

#include <QTime>

#include "calendar/almanac.h"
#include "calendar/bazi_haoma.h"
#include "calendar/calendar_text.h"
#include "calendar/nongli.h"
#include "domain/date_value.h"
#include "headless/headless_runner.h"

namespace dovrex {

namespace {

// A date of the calendar's range, or a failure printed.
bool dateArg(HeadlessRunner& r, const QString& text, QDate& date) {
    const auto day = parseDateText(text);
    if (!day) return r.fail(QStringLiteral("not a date: ") + text);
    date = toQDate(*day);
    if (!inCalendarRange(date)) return r.fail(QStringLiteral("outside 1901/01/01..2100/12/31: ") + text);
    return true;
}

void printLines(HeadlessRunner& r, const QString& text) {
    for (const QString& line : text.split(QStringLiteral("\r\n"))) r.print(line);
}

}  // namespace

bool headless_Lunar(HeadlessRunner& r, const HeadlessArgs& a) {
    QDate date;
    if (!dateArg(r, a.words.value(0), date)) return false;
    init_NongLiTables();
    r.print(solar2Lunar(date) + QLatin1Char(' ') + get_NongLiText(date) + QLatin1Char(' ') +
            calendarCellText(date) + QLatin1Char(' ') + get_XingQi(date) + QLatin1Char(' ') +
            get_XingZuo(date));
    return true;
}

bool headless_Almanac(HeadlessRunner& r, const HeadlessArgs& a) {
    int year = 0;
    if (!a.intAt(r, 0, year)) return false;
    if (year < kCalendarFirst.year() || year > kCalendarLast.year())
        return r.fail(QStringLiteral("year outside 1901..2100: ") + a.words.value(0));
    printLines(r, getJieQi1(year));
    r.print(QStringLiteral("terms ") + getJieQistr(year, QStringLiteral("小寒"), -1, true));
    return true;
}

bool headless_Bazi(HeadlessRunner& r, const HeadlessArgs& a) {
    QDate date;
    if (!dateArg(r, a.words.value(0), date)) return false;
    const QTime time = QTime::fromString(a.words.value(1, QStringLiteral("00:00")), QStringLiteral("H:mm"));
    if (!time.isValid()) return r.fail(QStringLiteral("not a time: ") + a.words.value(1));
    init_NongLiTables();
    const QDateTime birth = naiveDateTime(date, time.msecsSinceStartOfDay() / 1000);
    BaziState state;
    printLines(r, make_BaziReport(birth, Clock::today(),
                                  getJieQistr(date.year(), QStringLiteral("小寒"), -1, true), state));
    r.print(QStringLiteral("ticket ") + make_BaziHaoMa(state));
    return true;
}

}  // namespace dovrex
