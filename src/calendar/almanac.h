#pragma once

#include <QDate>
#include <QDateTime>
#include <QString>
#include <array>
#include <vector>

// The almanac: exact solar terms and new moons of a year, in Beijing time, and the lunar month
// layout that follows from them. The sun comes from VSOP87 (libnova), the moon from ELP 2000-82B
// (libnova), precession and nutation from the IAU 2006/2000B models (ERFA), ΔT from the
// Espenak–Meeus polynomials.
namespace dovrex {

namespace almanac {

// Days from J2000 (2000-01-01 12:00 TT) in dynamical time.
double deltaT_seconds(double year);
// Apparent geocentric longitude of the sun, radians, ecliptic and true equinox of date.
double sunApparentLongitude(double t);
// Apparent longitude of the moon minus that of the sun, radians.
double moonMinusSun(double t);
// The moment near t1 when the sun's longitude (lx 0) or the moon's elongation (lx 1) reaches
// jiao degrees.
double jiaoCal(double t1, double jiao, int lx);
// Beijing date-time text " yyyy-mm-dd hh:mm:ss" of a dynamical time (year padded to five places).
QString beijingTimeText(double t);
// Beijing day number (days since 2000-01-01) of a dynamical time.
int beijingDay(double t);

// One lunar month of the table: its name ("正".."十","11","12"), leap flag, 30 days or not,
// and the Beijing day number of its first day.
struct Month {
    QString name;
    bool leap = false;
    bool big = false;
    int firstDay = 0;
};

// The year's table as a whole: term rows, mid-term rows, months and new moons.
struct YearTable {
    int year = 0;
    double jq[14]{}, zq[14]{}, hs[14]{};
    int rows = 12;  // 12, or 13 with a leap month
    std::vector<Month> months;
    QString text;
};
YearTable paiYue(int year);

// The years whose solar terms come from the almanac: those of the lunar month table, over which
// the sun's series is fitted. Outside them the simple formula stands in.
constexpr int kFirstTermYear = 1900;
constexpr int kLastTermYear = 2100;

// The 24 solar terms of a year in the order of JieQiMing (小寒 first), each from the sun's
// longitude with the same search as the year's table, so the two agree to the second.
struct YearTerms {
    std::array<double, 24> td{};       // dynamical time, days from J2000
    std::array<QString, 24> text;      // "yyyy-mm-dd hh:mm:ss" as the table prints it
    std::array<QDateTime, 24> moment;  // the same in naive Beijing time (an hour of 24 carried over)
    std::array<QDate, 24> day;         // the Beijing date the term falls on
};
// Computed once per year and kept; nullptr outside kFirstTermYear..kLastTermYear.
const YearTerms* yearTerms(int year);

}  // namespace almanac

// The almanac text of a year, trimmed: head line, rule, and one row per lunar month.
QString getJieQi1(int year);
// One term's time "yyyy-mm-dd hh:mm:ss" (termIndex 1..24 in the order of JieQiMing picks the name,
// else termName decides), or with allTerms the 24 times joined by commas, in that order. Every
// year of the almanac has all 24, whether its table has 12 rows or 13; empty outside those years
// or for a name that is no term.
QString getJieQistr(int year, const QString& termName, int termIndex, bool allTerms);

}  // namespace dovrex
