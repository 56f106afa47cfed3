#include <QElapsedTimer>
#include <ctime>

#include "bench.h"
#include "calendar/almanac.h"
#include "calendar/nongli.h"

namespace {

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

    t.restart();
    qsizetype characters = 0;
    for (int year = 1901; year <= 2100; ++year) characters += dovrex::getJieQi1(year).size();
    bench::report(QStringLiteral("almanac tables of 1901..2100 (%1 characters)").arg(characters),
                  double(t.nsecsElapsed()) / 1e6, QStringLiteral("ms"));

    t.restart();
    int days = 0;
    for (QDate d(1901, 1, 1); d <= QDate(2100, 12, 31); d = d.addDays(1), ++days) dovrex::solar2Lunar(d);
    bench::report(QStringLiteral("solar2Lunar over 1901..2100 (%1 days)").arg(days),
                  double(t.nsecsElapsed()) / 1e6, QStringLiteral("ms"));
});

}  // namespace
