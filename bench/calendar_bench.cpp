#include <QElapsedTimer>
#include <ctime>

#include "bench.h"
#include "calendar/almanac.h"
#include "calendar/bazi_haoma.h"
#include "calendar/calendar_text.h"
#include "calendar/nongli.h"

namespace {

// What the calendar control does for one month: the grid and the lunar line of every day in it.
int monthGridTexts(int year, int month) {
    dovrex::build_MonthGrid(year, month);
    int characters = 0;
    for (const std::int16_t day : dovrex::RiLiGeZi)
        if (day > 0) characters += int(dovrex::calendarCellText(QDate(year, month, day)).size());
    return characters;
}

const bench::Register almanacYear("calendar", [] {
    dovrex::init_NongLiTables();
    dovrex::getJieQi1(2023);  // the libraries' tables are set up on first use
    QElapsedTimer t;
    t.start();
    const std::clock_t cpu = std::clock();
    const QString text = dovrex::getJieQi1(2024);
    bench::report(QStringLiteral("almanac table of one year (%1 characters)").arg(text.size()),
                  double(t.nsecsElapsed()) / 1e6, QStringLiteral("ms"));
    // The processor time says what a busy machine hides in the wall time.
    bench::report(QStringLiteral("almanac table of one year, processor time"),
                  double(std::clock() - cpu) * 1000 / CLOCKS_PER_SEC, QStringLiteral("ms"));

    // Years nobody asked for yet: the first month shown in a year pays for that year's terms.
    t.restart();
    monthGridTexts(2031, 2);
    bench::report(QStringLiteral("month grid of a year not shown before"), double(t.nsecsElapsed()) / 1e6,
                  QStringLiteral("ms"));
    t.restart();
    monthGridTexts(2031, 3);
    bench::report(QStringLiteral("month grid of the same year again"), double(t.nsecsElapsed()) / 1e6,
                  QStringLiteral("ms"));
    t.restart();
    dovrex::BaziState state;
    dovrex::make_BaziReport(dovrex::naiveDateTime(QDate(1987, 8, 8), 9 * 3600), QDate(2024, 6, 1),
                            dovrex::getJieQistr(1987, QStringLiteral("小寒"), -1, true), state);
    bench::report(QStringLiteral("birth-chart report of a year not asked before"),
                  double(t.nsecsElapsed()) / 1e6, QStringLiteral("ms"));

    t.restart();
    qsizetype characters = 0;
    for (int year = 1901; year <= 2100; ++year) characters += dovrex::getJieQi1(year).size();
    bench::report(QStringLiteral("almanac tables of 1901..2100 (%1 characters)").arg(characters),
                  double(t.nsecsElapsed()) / 1e6, QStringLiteral("ms"));

    t.restart();
    int cells = 0;
    for (int year = 1901; year <= 2100; ++year)
        for (int month = 1; month <= 12; ++month) cells += monthGridTexts(year, month);
    bench::report(QStringLiteral("month grids of 1901..2100 (%1 characters)").arg(cells),
                  double(t.nsecsElapsed()) / 1e6, QStringLiteral("ms"));

    t.restart();
    int days = 0;
    for (QDate d(1901, 1, 1); d <= QDate(2100, 12, 31); d = d.addDays(1), ++days) dovrex::solar2Lunar(d);
    bench::report(QStringLiteral("solar2Lunar over 1901..2100 (%1 days)").arg(days),
                  double(t.nsecsElapsed()) / 1e6, QStringLiteral("ms"));
});

}  // namespace
