#pragma once

#include <QDate>
#include <QDateTime>
#include <QString>
#include <QStringList>
#include <array>
#include <cstdint>

// The Chinese calendar: lunar dates from the month table, the sexagenary cycle, the four pillars,
// solar terms (the almanac's, the simple formula beyond its years), month grids and festivals.
// Pure date logic, no store, no window. Date-times are naive (QDateTime in UTC is used only as a
// zone-free carrier).
namespace dovrex {

// One position of the sexagenary cycle.
struct JiaZiRecord {
    std::int32_t xuHao = 0;  // 1..60
    QString ganZhi;          // stem + branch
    QString naYin;           // three characters
    QString naYinWuXing;     // last character of naYin
    QString shengXiao;       // animal of the branch
    std::int32_t fanXu = 0;  // order counted backward from the pillar given to set_JiaZiFanXu
    std::int32_t jin = 0, mu = 0, shui = 0, huo = 0, tu = 0;
};

// Name tables (filled by init_NongLiTables; the constant ones are usable at once).
extern const QStringList TianGan;    // 10
extern const QStringList DiZhi;      // 12
extern const QStringList ShengXiao;  // 12
extern const QStringList JieQiMing;  // 24, from 小寒
extern const std::array<double, 24> JieQiFenZhong;
extern const QStringList ShuZi;        // 11
extern const QStringList RiZiTou;      // 5
extern const QStringList GongLiJieRi;  // 17, "mmdd" + name
extern const QStringList NongLiJieRi;  // 10, "mmdd" + name; "0100" is the last day of the twelfth month
extern const std::array<std::int32_t, 201> NongLiXinXi;  // lunar years 1900..2100
extern std::array<JiaZiRecord, 61> JiaZiBiao;            // 1..60, entry 0 unused
extern std::array<std::int16_t, 37> RiLiGeZi;            // the month grid of build_MonthGrid

// Fills JiaZiBiao (names, 纳音, element strengths). Safe to call again; it resets fanXu.
void init_NongLiTables();

// Month table lookups. Years below 1900 read as 1900; above 2100 throw std::out_of_range.
int get_LunarMonthDays(int year, int month);
int get_LeapMonth(int year);
int get_LeapMonthDays(int year);
int get_LunarYearDays(int year);

// "L" + yyyy + mm + dd of the lunar date, L being 1 in a leap month.
QString solar2Lunar(const QDate& date);

QString get_GanZhiYear(int year, bool withSuffix);
QString get_LunarMonthName(int month);
QString get_LunarDayName(int day);
QString get_ShengXiaoOfYear(int year);
QString get_NaYin(const QString& ganZhi);

// Solar term n (1..24, in the order of JieQiMing) by the mean-year formula; no time zone.
// Without withTime the time of day is zero. Up to three hours off: only for years the almanac
// does not reach.
QDateTime get_JieQiDate(int year, int n, bool withTime);

// Solar term n (1..24, in the order of JieQiMing) of a year in Beijing time, to the second: the
// almanac's in its years (1900..2100), the formula's outside them. solarTermDay is the date it
// falls on, as the almanac's table prints it.
QDateTime solarTermTime(int year, int n);
QDate solarTermDay(int year, int n);

// The four pillars of a birth moment. termList is empty or the year's 24 term times
// ("yyyy-mm-dd hh:mm:ss" joined by commas, in the order of JieQiMing); when it is empty, the
// terms are solarTermTime's. which 1..4 gives one pillar (year, month, day, hour); anything else
// the whole text.
QString get_BaZi(const QDateTime& dateTime, int which, const QString& termList);
// Position 1..60 of a pillar in JiaZiBiao, 0 if it is none.
int findSexagenaryIndex(const QString& ganZhi);
// The year pillar's position for a moment, the spring term taken from termList or solarTermTime
// as in get_BaZi.
int nianZhuIndex(const QDateTime& dateTime, const QString& termList);

void set_JiaZiFanXu(const QString& ganZhi);

// Lays out a month on 37 cells, Sunday first, into RiLiGeZi.
void build_MonthGrid(int year, int month);

// Festival names of a date, empty when none. The lunar one is never given in a leap month.
QString solarHolidayName(const QDate& date);
QString lunarHolidayName(const QDate& date);

// A naive date-time helper: the date plus seconds of the day.
QDateTime naiveDateTime(const QDate& date, qint64 seconds = 0);

}  // namespace dovrex
