#include <gtest/gtest.h>

#include <QRegularExpression>
#include <algorithm>

#include "calendar/almanac.h"
#include "calendar/bazi_haoma.h"
#include "calendar/nongli.h"

using namespace dovrex;

namespace {

class BaziPick : public ::testing::Test {
  protected:
    static void SetUpTestSuite() { init_NongLiTables(); }
    const QDate today{2024, 6, 1};  // a 甲辰 year

    QString pick(const QDateTime& birth, BaziState* out = nullptr) {
        BaziState state;
        report = make_BaziReport(birth, today, QString(), state);
        if (out) *out = state;
        return make_BaziHaoMa(state);
    }
    QString report;
};

QDateTime at(int y, int m, int d, int h, int mi) {
    return naiveDateTime(QDate(y, m, d), h * 3600 + mi * 60);
}

}  // namespace

TEST_F(BaziPick, ReportOfABirth) {
    BaziState s;  // its pillars and the report's head: FixedBirthsGiveFixedTickets
    pick(at(1990, 5, 17, 8, 30), &s);
    EXPECT_TRUE(report.contains("庚午年生——土命（路旁土）\r\n\r\n八字五行——\r\n\r\n金—— "));
    EXPECT_EQ(s.wuXingHe[1] + s.wuXingHe[2] + s.wuXingHe[3] + s.wuXingHe[4] + s.wuXingHe[5], 800);
    EXPECT_TRUE(report.contains(QString(54, '_') +
                                "\r\n\r\n甲辰年（今年）各号码五行属性——\r\n\r\n01(火)\r\n02(金)\r\n"));
    // From 甲辰 (41) down: 33 lines end at 壬申.
    EXPECT_EQ(report.count(QRegularExpression("\\d\\d\\([金木水火土]\\)")), 33);
    EXPECT_TRUE(report.endsWith("33(金)\r\n"));
}

TEST_F(BaziPick, EveryTicketIsWellFormed) {
    const QRegularExpression shape("^\\d\\d( \\d\\d){5}\\+\\d\\d$");
    for (QDate d(1950, 1, 3); d.year() < 2024; d = d.addDays(97)) {
        for (int h : {0, 7, 13, 23}) {
            const QString t = pick(naiveDateTime(d, h * 3600 + 1800));
            ASSERT_TRUE(shape.match(t).hasMatch()) << t.toStdString();
            const QStringList reds = t.left(17).split(' ');
            ASSERT_EQ(QSet<QString>(reds.begin(), reds.end()).size(), 6) << t.toStdString();
            ASSERT_TRUE(std::is_sorted(reds.begin(), reds.end())) << t.toStdString();  // the reds ascend
            for (const QString& r : reds) ASSERT_TRUE(r.toInt() >= 1 && r.toInt() <= 33);
            ASSERT_LE(t.right(2).toInt(), 16);
        }
    }
}

TEST_F(BaziPick, NumberingWrapsPastTheTableStart) {
    BaziState s;  // 2010 is 庚寅, position 27
    const QString r = make_BaziReport(at(1990, 5, 17, 8, 30), QDate(2010, 6, 1), QString(), s);
    EXPECT_TRUE(r.contains("27(金)\r\n28(水) 29(水) ")) << r.right(80).toStdString();
    EXPECT_TRUE(r.endsWith("33(火) "));
}

TEST_F(BaziPick, FixedBirthsGiveFixedTickets) {
    // Today pinned to 2024-06-01 (甲辰, number 01). 1990-05-17 08:30 is 庚午 辛巳 壬午 甲辰: 庚午 is
    // number 35 (08 and 15), 辛巳 24, 壬午 23, 甲辰 01; the elements rank 金 火 土 木 水, giving 14
    // and 23; the blue is the first 金 pillar below 33 from the table's end, 癸卯 = 02. The reds are
    // printed in ascending order.
    // clang-format off
    struct Case { QDateTime birth; const char* pillars; const char* ticket; };
    const Case cases[] = {
        {at(1990, 5, 17, 8, 30), "庚午辛巳壬午甲辰", "01 08 14 15 23 24+02"},
        {at(1984, 2, 4, 23, 30), "甲子丙寅己巳甲子", "04 05 09 12 18 27+05"},
        {at(2024, 2, 4, 16, 0), "癸卯乙丑戊戌庚申", "02 04 07 09 12 20+04"},  // 立春 came at 16:27
        {at(1965, 6, 1, 10, 0), "乙巳辛巳丙戌癸巳", "06 12 15 19 23 24+01"},
    };
    // clang-format on
    for (const Case& c : cases) {
        BaziState s;
        EXPECT_EQ(pick(c.birth, &s), c.ticket) << c.pillars;
        EXPECT_EQ(s.baZiZi, c.pillars);
    }
    // A birth in this year's own pillar (甲辰, number 01) gives 01.
    EXPECT_TRUE(pick(at(2024, 3, 10, 10, 0)).startsWith("01 "));
    pick(at(1965, 6, 1, 10, 0));
    EXPECT_TRUE(
        report.startsWith("出生日期时间：\r\n1965/06/01 10:00\r\n\r\n生辰八字(年月日时)：\r\n\r\n"
                          "乙巳 辛巳 丙戌 癸巳\r\n\r\n乙巳年生——火命（覆灯火）\r\n\r\n八字五行——\r\n\r\n"
                          "金—— 2\r\n木—— 1\r\n水—— 1\r\n火—— 2.95\r\n土—— 1.05\r\n\r\n"))
        << report.toStdString();
}

TEST_F(BaziPick, TermsOfTheAlmanacDecideYearAndMonth) {
    // 立春 2023 fell at 10:42:21.
    const QString terms2023 = getJieQistr(2023, "小寒", -1, true);
    BaziState before, after;
    make_BaziReport(at(2023, 2, 4, 10, 40), today, terms2023, before);
    make_BaziReport(at(2023, 2, 4, 10, 45), today, terms2023, after);
    EXPECT_TRUE(before.baZiZi.startsWith("壬寅癸丑"));
    EXPECT_TRUE(after.baZiZi.startsWith("癸卯甲寅"));

    // 2024 has no leap month (12 rows). 小暑 fell at 22:19:58 on 6 July; the formula puts it at
    // 23:55, after a birth at 22:30, which is in the 未 month all the same, list or no list.
    const QDateTime birth = at(2024, 7, 6, 22, 30);
    ASSERT_GT(get_JieQiDate(2024, 13, true), birth);
    for (const QString& terms : {getJieQistr(2024, "小寒", -1, true), QString()}) {
        EXPECT_EQ(get_BaZi(birth, 2, terms), "辛未");
        EXPECT_EQ(get_BaZi(at(2024, 7, 6, 22, 19), 2, terms), "庚午");
        BaziState s;
        make_BaziReport(birth, today, terms, s);
        EXPECT_TRUE(s.baZiZi.startsWith("甲辰辛未")) << s.baZiZi.toStdString();
    }
}

TEST_F(BaziPick, TicketChangesOnlyWithTheCurrentYearsPillar) {
    const QDateTime birth = at(1990, 5, 17, 8, 30);
    auto ticketOn = [&](const QDate& day) {
        BaziState s;
        make_BaziReport(birth, day, QString(), s);
        return make_BaziHaoMa(s);
    };
    // 立春 2024 fell on 4 February: the 甲辰 year runs from there to 立春 2025.
    const QString jiaChen = ticketOn(QDate(2024, 2, 5));
    EXPECT_EQ(jiaChen, ticketOn(QDate(2024, 12, 31)));
    EXPECT_EQ(jiaChen, ticketOn(QDate(2025, 1, 20)));
    EXPECT_NE(jiaChen, ticketOn(QDate(2024, 2, 3)));
    EXPECT_NE(jiaChen, ticketOn(QDate(2025, 2, 5)));
}
