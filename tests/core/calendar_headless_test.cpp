#include <gtest/gtest.h>

#include <QRegularExpression>
#include <cmath>

#include "calendar/almanac.h"
#include "domain/date_value.h"
#include "support/headless_script.h"

namespace dovrex {
namespace {

QStringList run(const QString& script, int expectedCode = 0) {
    const QStringList out = test::runHeadless(script, expectedCode);
    Clock::useSystemClock();
    return out;
}

TEST(CalendarHeadless, LunarAlmanacAndBirthChart) {
    QStringList out = run(QStringLiteral("lunar 2023/03/22\n"));
    EXPECT_TRUE(out.contains(QStringLiteral("120230201 农历(闰)癸卯年二月初一 闰二月 星期三 白羊座")));

    out = run(QStringLiteral("today 2024/06/01\nbazi 1990/05/17 08:30\n"));
    EXPECT_TRUE(out.contains(QStringLiteral("庚午 辛巳 壬午 甲辰")));
    EXPECT_TRUE(out.contains(QStringLiteral("ticket 01 08 14 15 23 24+02")));

    EXPECT_EQ(run(QStringLiteral("lunar 1900/12/31\n"), 1).last(),
              QStringLiteral("FAILED outside 1901/01/01..2100/12/31: 1900/12/31"));
    EXPECT_EQ(run(QStringLiteral("bazi 2000/01/01 25:00\n"), 1).last(),
              QStringLiteral("FAILED not a time: 25:00"));
    EXPECT_TRUE(
        run(QStringLiteral("almanac 2101\n"), 1).last().startsWith(QStringLiteral("FAILED year outside")));
}

TEST(CalendarHeadless, TermsOfEveryYearComeFromTheSun) {
    // 2024 and 2026 have no leap month (their tables have 12 rows), 2023 has one: every term the
    // runner gives lies within 60 s of the sun's own search for its longitude.
    const int years[] = {2023, 2024, 2026};
    QString script;
    for (int year : years) script += QStringLiteral("almanac %1\n").arg(year);
    const QStringList lists = run(script).filter(QRegularExpression(QStringLiteral("^terms ")));
    ASSERT_EQ(lists.size(), 3);
    for (int y = 0; y < 3; ++y) {
        const QStringList terms = lists[y].mid(6).split(u',');
        ASSERT_EQ(terms.size(), 24) << years[y];
        for (int k = 0; k < 24; ++k) {
            // From a fortnight before the term's mean date (小寒 at 285 degrees, then every 15).
            const double from = QDate(2000, 1, 1).daysTo(QDate(years[y] - 1, 12, 22)) + 15.2 * k;
            const double td = almanac::jiaoCal(from, std::fmod(285 + 15 * k, 360), 0);
            const QDateTime sun = QDateTime::fromString(almanac::beijingTimeText(td).trimmed(),
                                                        QStringLiteral("yyyy-MM-dd HH:mm:ss"));
            const QDateTime given = QDateTime::fromString(terms[k], QStringLiteral("yyyy-MM-dd HH:mm:ss"));
            ASSERT_TRUE(sun.isValid() && given.isValid()) << terms[k].toStdString();
            EXPECT_LE(std::abs(sun.secsTo(given)), 60) << years[y] << ' ' << k;
        }
    }

    // 小暑 2024 fell at 22:19:58 (the formula says 23:55): the month pillar turns there.
    const QStringList out =
        run(QStringLiteral("today 2024/06/01\nbazi 2024/07/06 22:19\nbazi 2024/07/06 22:30\n"));
    EXPECT_EQ(out.filter(QStringLiteral("甲辰 庚午 ")).size(), 1);
    EXPECT_EQ(out.filter(QStringLiteral("甲辰 辛未 ")).size(), 1);
}

}  // namespace
}  // namespace dovrex
