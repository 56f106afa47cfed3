#include <gtest/gtest.h>

#include "calendar/calendar_text.h"
#include "calendar/nongli.h"

using namespace dovrex;

TEST(CalendarText, StarSignsAtTheirBorders) {
    const std::pair<QDate, const char*> cases[] = {
        {{2024, 3, 20}, "双鱼座"},  {{2024, 3, 21}, "白羊座"},  {{2024, 4, 19}, "白羊座"},
        {{2024, 4, 20}, "金牛座"},  {{2024, 6, 22}, "巨蟹座"},  {{2024, 8, 23}, "处女座"},
        {{2024, 10, 23}, "天秤座"}, {{2024, 10, 24}, "天蝎座"}, {{2024, 12, 21}, "射手座"},
        {{2024, 12, 22}, "魔羯座"}, {{2025, 1, 1}, "魔羯座"},   {{2025, 1, 19}, "魔羯座"},
        {{2025, 1, 20}, "水瓶座"},  {{2025, 2, 18}, "水瓶座"},  {{2025, 2, 19}, "双鱼座"}};
    for (const auto& [date, sign] : cases)
        EXPECT_EQ(get_XingZuo(date), sign) << date.toString().toStdString();
}

TEST(CalendarText, WeekdaysAndLunarText) {
    EXPECT_EQ(get_XingQi(QDate(2024, 6, 2)), "星期日");
    EXPECT_EQ(get_XingQi(QDate(2024, 6, 3)), "星期一");
    EXPECT_EQ(get_XingQi(QDate(2024, 6, 8), 1), "星期陆");
    EXPECT_EQ(get_XingQi(QDate(2024, 6, 5), 1), "星期叁");

    EXPECT_EQ(get_NongLiText(QDate(2024, 9, 17)), "农历甲辰年八月十五");
    EXPECT_EQ(get_NongLiText(QDate(2023, 3, 22)), "农历(闰)癸卯年二月初一");
    EXPECT_EQ(get_NongLiMonthText(QDate(2024, 12, 1)), "十一月");
    EXPECT_EQ(get_NongLiDayText(QDate(2024, 12, 1)), "初一");
    EXPECT_EQ(get_NongLiDayText(QDate(2024, 11, 20)), "二十");
}

TEST(CalendarText, CellTextPrefersTermsThenFestivals) {
    EXPECT_EQ(calendarCellText(QDate(2024, 2, 4)), "立春");  // also 腊月廿五
    // 白露 2022 fell at 23:32 on 7 September (a year of 12 rows); the formula has it the day after.
    EXPECT_EQ(calendarCellText(QDate(2022, 9, 7)), "白露");
    EXPECT_EQ(calendarCellText(QDate(2022, 9, 8)), "十三");
    const std::pair<QDate, const char*> cells[] = {{{2024, 2, 10}, "春节"},   {{2024, 2, 9}, "除夕"},
                                                   {{2024, 2, 14}, "情人节"}, {{2024, 3, 10}, "二月"},
                                                   {{2023, 3, 22}, "闰二月"}, {{2024, 3, 11}, "初二"}};
    for (const auto& [day, text] : cells) EXPECT_EQ(calendarCellText(day), text) << text;
    EXPECT_TRUE(isRiLiSpecialDay(QDate(2024, 10, 1)));
    EXPECT_FALSE(isRiLiSpecialDay(QDate(2024, 10, 2)));
}

TEST(CalendarText, StepsKeepTheDayAndStopAtTheRange) {
    // {from, button, landing}: 1 year up, 2 year down, 3 month down, 4 month up; none past the range.
    const std::tuple<QDate, int, std::optional<QDate>> steps[] = {
        {{2024, 1, 31}, 4, QDate(2024, 2, 29)},  {{2024, 3, 31}, 3, QDate(2024, 2, 29)},
        {{2024, 2, 29}, 1, QDate(2025, 2, 28)},  {{2024, 12, 15}, 4, QDate(2025, 1, 15)},
        {{2024, 1, 15}, 3, QDate(2023, 12, 15)}, {{2100, 11, 30}, 4, QDate(2100, 12, 30)},
        {{2100, 12, 31}, 4, std::nullopt},       {{2100, 1, 31}, 1, std::nullopt},
        {{1901, 1, 1}, 3, std::nullopt},         {{1901, 12, 1}, 2, std::nullopt}};
    for (const auto& [from, button, to] : steps)
        EXPECT_EQ(stepCalendar(from, button), to) << from.toString().toStdString() << " " << button;
    EXPECT_TRUE(inCalendarRange(QDate(1901, 1, 1)));
    for (const QDate& outside : {QDate(1900, 12, 31), QDate(2101, 1, 1), QDate()})
        EXPECT_FALSE(inCalendarRange(outside)) << outside.toString().toStdString();
}
