#include <gtest/gtest.h>

#include <QSet>

#include "calendar/nongli.h"

using namespace dovrex;

namespace {

class NongLi : public ::testing::Test {
  protected:
    static void SetUpTestSuite() { init_NongLiTables(); }
};

QDateTime at(int y, int m, int d, int h = 0, int mi = 0) {
    return naiveDateTime(QDate(y, m, d), h * 3600 + mi * 60);
}

}  // namespace

TEST_F(NongLi, LunarDatesAtTheAnchorsAndInLeapMonths) {
    // clang-format off
    const std::pair<QDate, const char*> days[] = {
        {{1900, 1, 31}, "019000101"}, {{2000, 2, 5}, "020000101"}, {{2000, 2, 4}, "019991229"},
        {{2024, 9, 17}, "020240815"},
        {{2023, 3, 22}, "120230201"}, {{2023, 4, 19}, "120230229"}, {{2023, 4, 20}, "020230301"},  // 闰二月
        {{2020, 5, 23}, "120200401"},                                                              // 闰四月
    };
    // clang-format on
    for (const auto& [day, lunar] : days) EXPECT_EQ(solar2Lunar(day), lunar) << day.toString().toStdString();
    EXPECT_EQ(solar2Lunar(QDate(2100, 12, 31)).left(5), "02100");

    // 2033 carries its leap month in the seventh month, as its word says.
    QSet<QString> leapMonths;
    for (QDate d(2033, 1, 1); d.year() == 2033; d = d.addDays(1)) {
        const QString l = solar2Lunar(d);
        if (l.startsWith('1')) leapMonths.insert(l.mid(5, 2));
    }
    EXPECT_EQ(leapMonths, QSet<QString>{"07"});
}

TEST_F(NongLi, SpringFestivalOfManyYears) {
    const QDate days[] = {{1901, 2, 19}, {1912, 2, 18}, {1949, 1, 29}, {1966, 1, 21}, {1980, 2, 16},
                          {1996, 2, 19}, {2008, 2, 7},  {2021, 2, 12}, {2024, 2, 10}, {2025, 1, 29},
                          {2033, 1, 31}, {2050, 1, 23}, {2077, 1, 24}, {2100, 2, 9}};
    for (const QDate& d : days) {
        EXPECT_EQ(solar2Lunar(d), QStringLiteral("0%1").arg(d.year()) + "0101") << d.toString().toStdString();
        EXPECT_EQ(lunarHolidayName(d), "春节");
        EXPECT_EQ(lunarHolidayName(d.addDays(-1)), "除夕");
    }
}

TEST_F(NongLi, EveryDayFollowsTheDayBefore) {
    // Over the whole range each day is the next of its predecessor, months have the table's lengths
    // (29 or 30), the leap month comes right after the month of its number, and a lunar year has
    // 12 months, or 13 with a leap month, and the table's count of days.
    QString prev = solar2Lunar(QDate(1901, 1, 1));
    int monthsInYear = 0, daysInYear = 0;
    for (QDate d(1901, 1, 2); d <= QDate(2100, 12, 31); d = d.addDays(1)) {
        const QString cur = solar2Lunar(d);
        const int pd = prev.mid(7, 2).toInt(), cd = cur.mid(7, 2).toInt();
        ++daysInYear;
        if (cd != 1) {
            ASSERT_EQ(cur.left(7), prev.left(7)) << d.toString(Qt::ISODate).toStdString();
            ASSERT_EQ(cd, pd + 1);
        } else {
            ++monthsInYear;
            const int y = prev.mid(1, 4).toInt(), m = prev.mid(5, 2).toInt();
            const int len = prev.startsWith('1') ? get_LeapMonthDays(y) : get_LunarMonthDays(y, m);
            ASSERT_TRUE(len == 29 || len == 30);
            ASSERT_EQ(pd, len) << d.toString(Qt::ISODate).toStdString();
            if (cur.startsWith('1')) {
                ASSERT_EQ(cur.mid(1, 6), prev.mid(1, 6));
                ASSERT_EQ(get_LeapMonth(y), m);
            } else if (m == 12 && (!prev.startsWith('1') || get_LeapMonth(y) == 12)) {
                ASSERT_EQ(cur.mid(1, 6), QStringLiteral("%1").arg(y + 1) + "01");
                if (y > 1901) {  // 1901 starts in the middle of its year
                    ASSERT_EQ(monthsInYear, get_LeapMonth(y) ? 13 : 12) << y;
                    ASSERT_EQ(daysInYear, get_LunarYearDays(y)) << y;
                }
                monthsInYear = daysInYear = 0;
            } else if (!prev.startsWith('1')) {
                ASSERT_EQ(cur.mid(5, 2).toInt(), m + 1);
            }
        }
        prev = cur;
    }
}

TEST_F(NongLi, MonthTableLookups) {
    EXPECT_EQ(get_LeapMonth(1899), 0);
    EXPECT_EQ(get_LunarMonthDays(1899, 1), get_LunarMonthDays(1900, 1));
    EXPECT_THROW(get_LunarMonthDays(2101, 1), std::out_of_range);
    EXPECT_EQ(get_LeapMonthDays(1941), 30);  // 1D8A6
    EXPECT_EQ(get_LeapMonthDays(2024), 0);
    // The table as it stands decides, also where the sky would move a big month (see the almanac).
    EXPECT_EQ(NongLiXinXi[1954 - 1900], 0x0A5D0);
    EXPECT_EQ(NongLiXinXi[2085 - 1900], 0x06B55);
    EXPECT_EQ(get_LunarMonthDays(1954, 10), 30);
    EXPECT_EQ(get_LunarMonthDays(1954, 11), 29);
    EXPECT_EQ(get_LunarYearDays(2023), 384);
    EXPECT_EQ(get_LunarYearDays(2024), 354);
}

TEST_F(NongLi, Names) {
    EXPECT_EQ(get_GanZhiYear(2024, true), "甲辰年");
    EXPECT_EQ(get_GanZhiYear(1984, false), "甲子");
    EXPECT_EQ(get_ShengXiaoOfYear(2024), "龙");
    const std::pair<int, const char*> months[] = {{1, "一月"}, {10, "十月"}, {11, "十一月"}, {12, "十二月"}};
    for (const auto& [m, name] : months) EXPECT_EQ(get_LunarMonthName(m), name);
    const std::pair<int, const char*> days[] = {{1, "初一"},  {10, "初十"}, {11, "十一"},
                                                {20, "二十"}, {29, "廿九"}, {30, "三十"}};
    for (const auto& [d, name] : days) EXPECT_EQ(get_LunarDayName(d), name);
    const std::pair<const char*, const char*> naYin[] = {
        {"乙丑", "海中金"}, {"癸亥", "大海水"}, {"甲丑", ""}, {"", ""}};
    for (const auto& [ganZhi, name] : naYin) EXPECT_EQ(get_NaYin(ganZhi), name) << ganZhi;
}

TEST_F(NongLi, JiaZiTable) {
    // 金 木 水 火 土
    const auto elements = [](const JiaZiRecord& r) { return QList<int>{r.jin, r.mu, r.shui, r.huo, r.tu}; };
    const JiaZiRecord& bingYin = JiaZiBiao[3];
    EXPECT_EQ(QStringList({bingYin.ganZhi, bingYin.naYin, bingYin.naYinWuXing, bingYin.shengXiao}),
              QStringList({"丙寅", "炉中火", "火", "虎"}));
    EXPECT_EQ(elements(bingYin), QList<int>({0, 60, 0, 125, 15}));
    EXPECT_EQ(elements(JiaZiBiao[1]), QList<int>({0, 100, 100, 0, 0}));  // 甲子: 木 from 甲, 水 from 癸
    EXPECT_EQ(JiaZiBiao[60].ganZhi, "癸亥");
    for (int i = 1; i <= 60; ++i) {
        const JiaZiRecord& r = JiaZiBiao[i];
        EXPECT_EQ(r.xuHao, i);
        EXPECT_EQ(r.naYin.size(), 3) << i;
        EXPECT_EQ(r.jin + r.mu + r.shui + r.huo + r.tu, 200) << i;
    }

    set_JiaZiFanXu("甲辰");  // position 41
    for (const auto& [i, fanXu] : {std::pair{41, 1}, {40, 2}, {1, 41}, {60, 42}, {42, 60}})
        EXPECT_EQ(JiaZiBiao[i].fanXu, fanXu) << i;
    set_JiaZiFanXu("不是");
    EXPECT_EQ(JiaZiBiao[41].fanXu, 1);
}

TEST_F(NongLi, BirthPillars) {
    EXPECT_EQ(get_BaZi(at(2000, 1, 1, 12), 5, ""), "己卯年 丙子月 戊午日 戊午时");
    EXPECT_EQ(get_BaZi(at(1949, 10, 1, 15), 3, ""), "甲子");
    EXPECT_EQ(get_BaZi(at(1949, 10, 1, 15), 4, ""), "壬申");

    // The day changes at 23:00, and the hour is then the 子 hour of the next day.
    const QDateTime late = at(2014, 8, 8, 23, 30);
    EXPECT_EQ(get_BaZi(late, 3, ""), get_BaZi(at(2014, 8, 9, 12), 3, ""));
    EXPECT_NE(get_BaZi(at(2014, 8, 8, 22, 59), 3, ""), get_BaZi(late, 3, ""));
    EXPECT_EQ(get_BaZi(late, 4, ""), get_BaZi(at(2014, 8, 9, 0, 30), 4, ""));
    EXPECT_TRUE(get_BaZi(late, 4, "").endsWith("子"));

    // Year and month turn at the almanac's 立春 when no list is given...
    const QDateTime spring = solarTermTime(2023, 3);
    EXPECT_LT(std::abs(spring.secsTo(at(2023, 2, 4, 10, 42).addSecs(21))), 30);  // as published
    EXPECT_EQ(get_BaZi(spring.addSecs(-60), 1, ""), "壬寅");
    EXPECT_EQ(get_BaZi(spring.addSecs(-60), 2, ""), "癸丑");
    EXPECT_EQ(get_BaZi(spring, 1, ""), "癸卯");
    EXPECT_EQ(get_BaZi(spring, 2, ""), "甲寅");
    // ...and at the list's time when one is.
    QStringList terms;
    for (int i = 0; i < 24; ++i) terms << "2023-01-01 00:00:00";
    terms[2] = "2023-02-04 10:42:21";
    const QString list = terms.join(',');
    EXPECT_EQ(get_BaZi(at(2023, 2, 4, 10, 42), 1, list), "壬寅");
    EXPECT_EQ(get_BaZi(at(2023, 2, 4, 10, 43), 1, list), "癸卯");
    EXPECT_EQ(get_BaZi(at(2023, 2, 4, 10, 43), 2, list), "甲寅");
    // A January date before 立春 has the year before's pillar.
    EXPECT_EQ(get_BaZi(at(2024, 1, 20), 1, ""), "癸卯");
}

TEST_F(NongLi, TermsFromTheAlmanacAndTheFormulaBeyondIt) {
    // 立春 2024 was 16:27 on 4 February, 冬至 2024 17:20 on 21 December (Beijing).
    EXPECT_EQ(get_JieQiDate(2024, 3, false), naiveDateTime(QDate(2024, 2, 4)));
    EXPECT_LT(std::abs(get_JieQiDate(2024, 3, true).secsTo(at(2024, 2, 4, 16, 27))), 4 * 3600);
    EXPECT_LT(std::abs(get_JieQiDate(2024, 24, true).secsTo(at(2024, 12, 21, 17, 20))), 4 * 3600);
    EXPECT_EQ(get_JieQiDate(1900, 1, true), at(1900, 1, 6, 2, 5));

    // The almanac's own in a year of 12 rows, within seconds of the published 17:20:34.
    EXPECT_EQ(solarTermTime(2024, 24), at(2024, 12, 21, 17, 20).addSecs(29));
    EXPECT_EQ(solarTermDay(2024, 24), QDate(2024, 12, 21));
    // 白露 2022 fell at 23:32 on 7 September; the formula has it on the 8th.
    EXPECT_EQ(solarTermDay(2022, 17), QDate(2022, 9, 7));
    EXPECT_EQ(get_JieQiDate(2022, 17, false).date(), QDate(2022, 9, 8));
    // Beyond the almanac's years the formula stands in.
    EXPECT_EQ(solarTermTime(1899, 3), get_JieQiDate(1899, 3, true));
    EXPECT_EQ(solarTermDay(2101, 24), get_JieQiDate(2101, 24, false).date());
}

TEST_F(NongLi, Festivals) {
    EXPECT_EQ(solarHolidayName(QDate(2024, 10, 1)), "国庆节");
    EXPECT_EQ(solarHolidayName(QDate(2024, 12, 25)), "圣诞节");
    EXPECT_EQ(solarHolidayName(QDate(2024, 12, 24)), "");
    EXPECT_EQ(lunarHolidayName(QDate(2024, 9, 17)), "中秋节");
    EXPECT_EQ(lunarHolidayName(QDate(2024, 6, 10)), "端午节");
    EXPECT_EQ(lunarHolidayName(QDate(2024, 6, 11)), "");
    // No festival in a leap month: 2006 had a leap seventh month.
    QDate qiXi, leapQiXi;
    for (QDate d(2006, 7, 1); d.year() == 2006; d = d.addDays(1)) {
        if (solar2Lunar(d) == "020060707") qiXi = d;
        if (solar2Lunar(d) == "120060707") leapQiXi = d;
    }
    ASSERT_TRUE(qiXi.isValid() && leapQiXi.isValid());
    EXPECT_EQ(lunarHolidayName(qiXi), "七夕节");
    EXPECT_EQ(lunarHolidayName(leapQiXi), "");
}

TEST_F(NongLi, MonthGrid) {
    // The cell of the first (Sunday is cell 0) and the month's length: 2023/07 fills the last cell.
    const struct {
        int year, month, first, days;
    } months[] = {{2024, 2, 4, 29}, {2023, 7, 6, 31}, {2026, 2, 0, 28}};
    for (const auto& m : months) {
        build_MonthGrid(m.year, m.month);
        for (int i = 0; i < 37; ++i)
            EXPECT_EQ(RiLiGeZi[size_t(i)], i >= m.first && i < m.first + m.days ? i - m.first + 1 : 0)
                << m.year << '/' << m.month << " cell " << i;
    }
}
