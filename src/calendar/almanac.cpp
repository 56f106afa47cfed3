#include "calendar/almanac.h"

#include <erfa.h>
#include <libnova/lunar.h>

#include <QHash>
#include <QStringList>
#include <cmath>
#include <memory>
#include <mutex>

#include "calendar/nongli.h"

namespace dovrex {
namespace almanac {

namespace {

constexpr double kJ2000 = 2451545.0;
constexpr double kPi = 3.14159265358979323846;
constexpr double kTwoPi = 2 * kPi;
constexpr double kAuLightSeconds = 499.004782;  // light time for one astronomical unit
constexpr double kSecondsPerDay = 86400.0;
// Light time of the moon at its mean distance, in days: the moon is seen where it was then.
constexpr double kMoonLightTime = 384400.0 / 299792.458 / kSecondsPerDay;
// Terms of ELP 2000-82B below this size are left out; the loss is under 0.1".
constexpr double kElpPrecision = 1e-7;

double rad2mrad(double v) {
    v = std::fmod(v, kTwoPi);
    return v < 0 ? v + kTwoPi : v;
}

// Equator and equinox of date (bias, precession, nutation) and the true obliquity.
struct FrameOfDate {
    double rbpn[3][3];
    double obliquity;
};

FrameOfDate frameOfDate(double t) {
    FrameOfDate f;
    double dpsi, deps, epsa, rb[3][3], rp[3][3], rbp[3][3], rn[3][3];
    eraNut00b(kJ2000, t, &dpsi, &deps);
    eraPn06(kJ2000, t, dpsi, deps, &epsa, rb, rp, rbp, rn, f.rbpn);
    f.obliquity = epsa + deps;
    return f;
}

// Ecliptic longitude of date of a direction given in the celestial reference system.
double eclipticLongitude(FrameOfDate& f, double p[3]) {
    double q[3];
    eraRxp(f.rbpn, p, q);
    const double y = q[1] * std::cos(f.obliquity) + q[2] * std::sin(f.obliquity);
    return rad2mrad(std::atan2(y, q[0]));
}

// Direction of the sun from the earth's centre, with light time and aberration.
void apparentSun(double t, double out[3]) {
    double pvh[2][3], pvb[2][3];
    eraEpv00(kJ2000, t, pvh, pvb);
    double p[3] = {-pvh[0][0], -pvh[0][1], -pvh[0][2]};
    double dist, unit[3];
    eraPn(p, &dist, unit);
    double v[3];
    for (int i = 0; i < 3; ++i) v[i] = pvb[1][i] * kAuLightSeconds / kSecondsPerDay;
    eraAb(unit, v, dist, std::sqrt(1 - eraPdp(v, v)), out);
}

// Geocentric moon, mean ecliptic and equinox of J2000 (ELP), turned into the reference system.
void apparentMoon(double t, double out[3]) {
    static FrameOfDate eclipticJ2000 = [] {
        FrameOfDate m{};
        eraEcm06(kJ2000, 0, m.rbpn);
        return m;
    }();
    ln_rect_posn r;
    ln_get_lunar_geo_posn(kJ2000 + t - kMoonLightTime, &r, kElpPrecision);
    double e[3] = {r.X, r.Y, r.Z};
    eraTrxp(eclipticJ2000.rbpn, e, out);
}

double jiaoCai(int lx, double t, double jiao) {
    FrameOfDate f = frameOfDate(t);
    double sun[3];
    apparentSun(t, sun);
    const double sunLon = eclipticLongitude(f, sun);
    if (lx == 0) return rad2mrad(jiao - sunLon);
    double moon[3];
    apparentMoon(t, moon);
    return rad2mrad(jiao - (eclipticLongitude(f, moon) - sunLon));
}

double deltaT_days(double t) {
    return deltaT_seconds(t / 365.2425 + 2000) / kSecondsPerDay;
}

// Days since 2000-01-01 0:00 Beijing time, with the time of day as fraction.
double beijingDayValue(double t) {
    return t + 0.5 - deltaT_days(t) + 8.0 / 24;
}

// Civil date and time of a Julian day (the Gregorian reform included).
struct CivilTime {
    int y, m, d, h, mi;
    double s;
};

CivilTime fromJulianDay(double jd) {
    CivilTime c;
    jd += 0.5;
    double a = std::floor(jd);
    double f = jd - a;
    if (a > 2299161) {
        const double alpha = std::floor((a - 1867216.25) / 36524.25);
        a += 1 + alpha - std::floor(alpha / 4);
    }
    a += 1524;
    double y = std::floor((a - 122.1) / 365.25);
    const double rest = a - std::floor(365.25 * y);
    double m = std::floor(rest / 30.6001);
    c.d = int(rest - std::floor(m * 30.6001));
    y -= 4716;
    m -= 1;
    if (m > 12) m -= 12;
    if (m <= 2) y += 1;
    c.y = int(y);
    c.m = int(m);
    f *= 24;
    c.h = int(std::floor(f));
    f -= c.h;
    f *= 60;
    c.mi = int(std::floor(f));
    f -= c.mi;
    c.s = f * 60;
    return c;
}

const QStringList& jqB() {
    static const QStringList names = {
        QStringLiteral("春分"), QStringLiteral("清明"), QStringLiteral("谷雨"), QStringLiteral("立夏"),
        QStringLiteral("小满"), QStringLiteral("芒种"), QStringLiteral("夏至"), QStringLiteral("小暑"),
        QStringLiteral("大暑"), QStringLiteral("立秋"), QStringLiteral("处暑"), QStringLiteral("白露"),
        QStringLiteral("秋分"), QStringLiteral("寒露"), QStringLiteral("霜降"), QStringLiteral("立冬"),
        QStringLiteral("小雪"), QStringLiteral("大雪"), QStringLiteral("冬至"), QStringLiteral("小寒"),
        QStringLiteral("大寒"), QStringLiteral("立春"), QStringLiteral("雨水"), QStringLiteral("惊蛰")};
    return names;
}

const QStringList& yueMing() {
    static const QStringList names = {QStringLiteral("正"), QStringLiteral("二"), QStringLiteral("三"),
                                      QStringLiteral("四"), QStringLiteral("五"), QStringLiteral("六"),
                                      QStringLiteral("七"), QStringLiteral("八"), QStringLiteral("九"),
                                      QStringLiteral("十"), QStringLiteral("11"), QStringLiteral("12")};
    return names;
}

}  // namespace

double deltaT_seconds(double y) {
    // Espenak & Meeus, "Five Millennium Canon of Solar Eclipses" (NASA TP-2006-214141).
    if (y < 1860 || y >= 2150) {
        const double u = (y - 1820) / 100;
        return -20 + 32 * u * u;
    }
    if (y < 1900) {
        const double t = y - 1860;
        return 7.62 + 0.5737 * t - 0.251754 * t * t + 0.01680668 * t * t * t - 0.0004473624 * std::pow(t, 4) +
               std::pow(t, 5) / 233174;
    }
    if (y < 1920) {
        const double t = y - 1900;
        return -2.79 + 1.494119 * t - 0.0598939 * t * t + 0.0061966 * t * t * t - 0.000197 * std::pow(t, 4);
    }
    if (y < 1941) {
        const double t = y - 1920;
        return 21.20 + 0.84493 * t - 0.076100 * t * t + 0.0020936 * t * t * t;
    }
    if (y < 1961) {
        const double t = y - 1950;
        return 29.07 + 0.407 * t - t * t / 233 + t * t * t / 2547;
    }
    if (y < 1986) {
        const double t = y - 1975;
        return 45.45 + 1.067 * t - t * t / 260 - t * t * t / 718;
    }
    if (y < 2005) {
        const double t = y - 2000;
        return 63.86 + 0.3345 * t - 0.060374 * t * t + 0.0017275 * t * t * t + 0.000651814 * std::pow(t, 4) +
               0.00002373599 * std::pow(t, 5);
    }
    if (y < 2050) {
        const double t = y - 2000;
        return 62.92 + 0.32217 * t + 0.005589 * t * t;
    }
    const double u = (y - 1820) / 100;
    return -20 + 32 * u * u - 0.5628 * (2150 - y);
}

double sunApparentLongitude(double t) {
    return rad2mrad(-jiaoCai(0, t, 0));
}

double moonMinusSun(double t) {
    return rad2mrad(-jiaoCai(1, t, 0));
}

namespace {

// The first new moon after t (days from J2000, TD) from the mean lunation and its largest periodic
// terms (Meeus, Astronomical Algorithms, ch. 49): within a minute or two of the exact one.
double newMoonEstimate(double t) {
    constexpr double kSynodic = 29.530588861, kFirst = 2451550.09766, kDeg = kPi / 180;
    for (double k = std::ceil((t + kJ2000 - kFirst) / kSynodic) - 1;; ++k) {
        const double T = k / 1236.85, T2 = T * T;
        const double e = 1 - 0.002516 * T - 0.0000074 * T2;
        const double m = (2.5534 + 29.10535670 * k - 0.0000014 * T2) * kDeg;
        const double mp = (201.5643 + 385.81693528 * k + 0.0107582 * T2) * kDeg;
        const double f = (160.7108 + 390.67050284 * k - 0.0016118 * T2) * kDeg;
        const double om = (124.7746 - 1.56375588 * k + 0.0020672 * T2) * kDeg;
        const double jde = kFirst + kSynodic * k + 0.00015437 * T2 - 0.40720 * std::sin(mp) +
                           0.17241 * e * std::sin(m) + 0.01608 * std::sin(2 * mp) +
                           0.01039 * std::sin(2 * f) + 0.00739 * e * std::sin(mp - m) -
                           0.00514 * e * std::sin(mp + m) + 0.00208 * e * e * std::sin(2 * m) -
                           0.00111 * std::sin(mp - 2 * f) - 0.00057 * std::sin(mp + 2 * f) +
                           0.00056 * e * std::sin(2 * mp + m) - 0.00042 * std::sin(3 * mp) +
                           0.00042 * e * std::sin(m + 2 * f) + 0.00038 * e * std::sin(m - 2 * f) -
                           0.00024 * e * std::sin(2 * mp - m) - 0.00017 * std::sin(om);
        if (jde - kJ2000 >= t) return jde - kJ2000;
    }
}

// The first moment after t at which the sun's apparent longitude reaches jiao (radians), by the
// low-accuracy solar theory (Meeus, ch. 25): within a quarter of an hour of the exact one.
double solarTermEstimate(double t, double jiao) {
    auto longitude = [](double x) {
        const double T = x / 36525, deg = kPi / 180;
        const double m = (357.52911 + 35999.05029 * T - 0.0001537 * T * T) * deg;
        const double c = (1.914602 - 0.004817 * T - 0.000014 * T * T) * std::sin(m) +
                         (0.019993 - 0.000101 * T) * std::sin(2 * m) + 0.000289 * std::sin(3 * m);
        const double om = (125.04 - 1934.136 * T) * deg;
        return (280.46646 + 36000.76983 * T + 0.0003032 * T * T + c - 0.00569 - 0.00478 * std::sin(om)) * deg;
    };
    const double rate = kTwoPi / 365.2422;
    double x = t + rad2mrad(jiao - longitude(t)) / rate;
    for (int i = 0; i < 4; ++i) x += std::remainder(jiao - longitude(x), kTwoPi) / rate;
    return x;
}

// The secant from a first point, until the angle is met to 1e-8 radians for the moon and 1e-10
// for the sun (a few milliseconds either way, so the rounded second does not depend on the start).
double secant(int lx, double jiao, double tp, double vp, double t, double v) {
    const double tolerance = lx == 0 ? 1e-10 : 1e-8;
    for (int i = 0; i < 10 && std::fabs(v) >= tolerance; ++i) {
        const double k = (v - vp) / (t - tp);
        if (std::fabs(k) < 1e-15) break;
        tp = t;
        vp = v;
        t -= v / k;
        v = std::remainder(jiaoCai(lx, t, jiao), kTwoPi);
    }
    return t;
}

}  // namespace

double jiaoCal(double t1, double jiao, int lx) {
    // The first moment after t1 at the angle, by the secant. Terms and new moons start from their
    // estimates, within minutes, which saves evaluations of the series; any other angle, or an
    // estimate that lands before t1, starts from t1 with a step at the mean rate.
    const double meanRate = kTwoPi / (lx == 0 ? 365.2422 : 29.530589);
    jiao *= kPi / 180;
    if (lx == 0 || jiao == 0) {
        const double t0 = lx == 0 ? solarTermEstimate(t1, jiao) : newMoonEstimate(t1);
        const double v0 = std::remainder(jiaoCai(lx, t0, jiao), kTwoPi);
        const double t = t0 + v0 / meanRate;
        const double found = secant(lx, jiao, t0, v0, t, std::remainder(jiaoCai(lx, t, jiao), kTwoPi));
        if (found >= t1) return found;
    }
    const double vp = jiaoCai(lx, t1, jiao);  // still to go, 0..2 pi
    const double t = t1 + vp / meanRate;
    return secant(lx, jiao, t1, vp, t, std::remainder(jiaoCai(lx, t, jiao), kTwoPi));
}

int beijingDay(double t) {
    return int(std::floor(beijingDayValue(t)));
}

namespace {

// Beijing civil time of a dynamical time, the seconds rounded half up. Seconds carry into minutes
// and hours, never into the date, so 23:59:59.6 reads 24:00:00 of the same day.
CivilTime beijingCivilTime(double t) {
    const double jd = t + kJ2000 + 8.0 / 24;
    CivilTime c = fromJulianDay(jd - deltaT_days(jd - kJ2000));
    c.s = std::floor(c.s + 0.5);
    if (c.s >= 60) c.s -= 60, ++c.mi;
    if (c.mi >= 60) c.mi -= 60, ++c.h;
    return c;
}

}  // namespace

QString beijingTimeText(double t) {
    const CivilTime c = beijingCivilTime(t);
    auto two = [](int v) { return QStringLiteral("%1").arg(v, 2, 10, QLatin1Char('0')); };
    return QStringLiteral("%1-%2-%3 %4:%5:%6")
        .arg(c.y, 5)
        .arg(two(c.m), two(c.d), two(c.h), two(c.mi), two(int(c.s)));
}

namespace {

// Row i of a year's table holds a term at i * 30 - 105 degrees and a mid-term 15 degrees on, each
// searched from its own start; rows 1..12 are the year's 24 terms from 小寒 to 冬至.
double tableTerm(int year, int row, bool midTerm) {
    const double t1 = 365.2422 * (year - 2000) - 50;
    return jiaoCal(t1 + row * 30.4, row * 30 - (midTerm ? 90 : 105), 0);
}

YearTerms computeYearTerms(int year) {
    YearTerms y;
    for (int k = 0; k < 24; ++k) {
        y.td[k] = tableTerm(year, k / 2 + 1, k % 2 == 1);
        const CivilTime c = beijingCivilTime(y.td[k]);
        y.day[k] = QDate(c.y, c.m, c.d);
        y.moment[k] = naiveDateTime(y.day[k], c.h * 3600 + c.mi * 60 + qint64(c.s));
        y.text[k] = beijingTimeText(y.td[k]).trimmed();
    }
    return y;
}

}  // namespace

const YearTerms* yearTerms(int year) {
    if (year < kFirstTermYear || year > kLastTermYear) return nullptr;
    // Each year is computed once (about 3 ms) and kept: the month grid asks for a term on every
    // cell it draws. The entries never move, so a pointer handed out stays good.
    static std::mutex lock;
    static std::array<std::unique_ptr<const YearTerms>, kLastTermYear - kFirstTermYear + 1> years;
    const std::lock_guard<std::mutex> guard(lock);
    auto& slot = years[year - kFirstTermYear];
    if (!slot) slot = std::make_unique<const YearTerms>(computeYearTerms(year));
    return slot.get();
}

YearTable paiYue(int year) {
    YearTable r;
    r.year = year;
    // Rows 1..12 are the year's kept terms; the rows before and after are searched here.
    const YearTerms* own = yearTerms(year);
    for (int i = 0; i < 14; ++i) {
        const bool kept = own && i >= 1 && i <= 12;
        r.jq[i] = kept ? own->td[2 * i - 2] : tableTerm(year, i, false);
        r.zq[i] = kept ? own->td[2 * i - 1] : tableTerm(year, i, true);
    }
    // From 0 hours on the day after the winter solstice: 14 new moons.
    const double dayValue = beijingDayValue(r.zq[0]);
    const double dongZhiJia1 = r.zq[0] + 1 - (dayValue - std::floor(dayValue));
    r.hs[0] = jiaoCal(dongZhiJia1, 0, 1);
    for (int i = 1; i < 14; ++i) r.hs[i] = jiaoCal(r.hs[i - 1] + 25, 0, 1);

    int A[14], C[14];
    for (int i = 0; i < 14; ++i) {
        A[i] = beijingDay(r.zq[i]);
        C[i] = beijingDay(r.hs[i]);
    }
    int yn[13] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 0, 0};
    int tot = 12, nun = -1;
    if (C[12] <= A[12]) {
        yn[12] = 12;
        tot = 13;
        int i = 1;
        while (i < 13 && C[i] > A[i]) ++i;
        for (nun = i - 1; i < 13; ++i) --yn[i - 1];
    }
    r.rows = tot;

    QString text =
        QStringLiteral("节气    日期时间          中气    日期时间          农历月   初一的天文时间\r\n") +
        QString(79, QLatin1Char('-')) + QStringLiteral("\r\n");
    for (int i = 0; i < tot; ++i) {
        Month m;
        m.name = yueMing()[(yn[i] + 10) % 12];
        m.leap = i == nun;
        m.big = C[i + 1] - C[i] > 29;
        m.firstDay = C[i];
        r.months.push_back(m);
        const QString monthText = m.name + (m.leap ? QStringLiteral("闰") : QStringLiteral("月")) +
                                  (m.big ? QStringLiteral("大") : QStringLiteral("小"));
        text += jqB()[(i * 2 + 17) % 24] + QLatin1Char(':') + beijingTimeText(r.jq[i]) + QLatin1Char(' ') +
                jqB()[(i * 2 + 18) % 24] + QLatin1Char(':') + beijingTimeText(r.zq[i]) + QLatin1Char(' ') +
                monthText + QLatin1Char(':') + beijingTimeText(r.hs[i]) + QStringLiteral("\r\n");
    }
    r.text = text;
    return r;
}

}  // namespace almanac

QString getJieQi1(int year) {
    // A year's table never changes; the calendar and the birth chart ask for the same few years
    // again and again.
    static QHash<int, QString> recent;
    if (const auto it = recent.constFind(year); it != recent.constEnd()) return *it;
    if (recent.size() >= 16) recent.clear();
    const QString text = almanac::paiYue(year).text.trimmed();
    recent.insert(year, text);
    return text;
}

QString getJieQistr(int year, const QString& termName, int termIndex, bool allTerms) {
    const almanac::YearTerms* terms = almanac::yearTerms(year);
    if (!terms) return {};
    if (allTerms) {
        QStringList all;
        for (const QString& t : terms->text) all << t;
        return all.join(QLatin1Char(','));
    }
    const int k = (termIndex >= 1 && termIndex <= 24) ? termIndex - 1 : int(JieQiMing.indexOf(termName));
    return k < 0 ? QString() : terms->text[k];
}

}  // namespace dovrex
