#include <gtest/gtest.h>

#include "domain/date_value.h"
#include "headless/headless_runner.h"

namespace dovrex {
namespace {

QStringList run(const QString& script, int expectedCode = 0) {
    QStringList out;
    HeadlessRunner runner([&out](const QString& line) { out << line; });
    EXPECT_EQ(runner.runScript(script), expectedCode) << out.join(u'\n').toStdString();
    Clock::useSystemClock();
    return out;
}

TEST(CalendarHeadless, LunarAlmanacAndBirthChart) {
    QStringList out = run(QStringLiteral("lunar 2023/03/22\n"));
    EXPECT_TRUE(out.contains(QStringLiteral("120230201 农历(闰)癸卯年二月初一 闰二月 星期三 白羊座")));

    out = run(QStringLiteral("almanac 2024\nalmanac 2023\n"));
    EXPECT_TRUE(out.contains(QStringLiteral("terms none")));
    EXPECT_EQ(out.filter(QStringLiteral("terms 2023-01-05 ")).size(), 1);

    out = run(QStringLiteral("today 2024/06/01\nbazi 1990/05/17 08:30\n"));
    EXPECT_TRUE(out.contains(QStringLiteral("庚午 辛巳 壬午 甲辰")));
    EXPECT_TRUE(out.contains(QStringLiteral("ticket 08 15 24 23 01 14+02")));

    EXPECT_EQ(run(QStringLiteral("lunar 1900/12/31\n"), 1).last(),
              QStringLiteral("FAILED outside 1901/01/01..2100/12/31: 1900/12/31"));
    EXPECT_EQ(run(QStringLiteral("bazi 2000/01/01 25:00\n"), 1).last(),
              QStringLiteral("FAILED not a time: 25:00"));
    EXPECT_TRUE(
        run(QStringLiteral("almanac 2101\n"), 1).last().startsWith(QStringLiteral("FAILED year outside")));
}

}  // namespace
}  // namespace dovrex
