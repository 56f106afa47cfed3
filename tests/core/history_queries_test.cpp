// Questions put to the history: a small history with holes, and an empty one (the fallbacks).
#include "history/history_queries.h"
#include "support/test_support.h"

namespace dovrex::test {
namespace {

class HistoryQueriesTest : public FreshStoreTest {
  protected:
    // Holes between 2010002 and 2010005 and after it; the old issue 2009150 was entered late with
    // the latest date of all.
    void fillWithHoles() {
        addDraw(2009150, QStringLiteral("2010/01/31"), makeReds(1, 2, 3, 4, 5, 6), 1);
        addDraw(2010001, QStringLiteral("2010/01/03"), makeReds(2, 3, 4, 5, 6, 7), 2);
        addDraw(2010002, QStringLiteral("2010/01/05"), makeReds(3, 4, 5, 6, 7, 8), 3);
        addDraw(2010005, QStringLiteral("2010/01/12"), makeReds(4, 5, 6, 7, 8, 9), 4);
        addDraw(2010009, QStringLiteral("2010/01/21"), makeReds(5, 6, 7, 8, 9, 10), 5);
    }
};

TEST_F(HistoryQueriesTest, EmptyHistoryGivesTheFallbacks) {
    EXPECT_EQ(latest_QiHao(), 2003001);
    EXPECT_EQ(earliest_QiHao(), 0);
    EXPECT_EQ(top_QiHao(2010001, 1), 2003001);
    EXPECT_EQ(prev_QiHao(2010001, 5), 2003001);
    EXPECT_EQ(next_QiHao_n(2010001, 1), 2003001);
    EXPECT_EQ(latest_KaiJiangRi(), 2003001.0);
    EXPECT_EQ(next_QiHao(QDate(2026, 3, 1)), 2026001);
    HistoryArray a{};
    a[10][1] = -1;
    EXPECT_EQ(getHistoryRecord(a, 2026001), 0);
    EXPECT_EQ(a[10][1], -1);
}

TEST_F(HistoryQueriesTest, NthDrawBeforeAndAfterOverHoles) {
    fillWithHoles();
    EXPECT_EQ(latest_QiHao(), 2010009);
    EXPECT_EQ(earliest_QiHao(), 2009150);

    EXPECT_EQ(top_QiHao(2010005, 1), 2010005);  // counts x itself
    EXPECT_EQ(top_QiHao(2010005, 3), 2010001);
    EXPECT_EQ(top_QiHao(2010004, 1), 2010002);   // x in a hole
    EXPECT_EQ(top_QiHao(2010005, 10), 2009150);  // fewer than n: the oldest
    EXPECT_EQ(top_QiHao(2009001, 1), 2003001);

    EXPECT_EQ(prev_QiHao(2010005, 1), 2010002);
    EXPECT_EQ(prev_QiHao(2010005, 2), 2010001);
    EXPECT_EQ(prev_QiHao(2010003, 1), 2010002);
    EXPECT_EQ(prev_QiHao(2010009, 99), 2009150);
    EXPECT_EQ(prev_QiHao(2009150, 1), 2003001);  // nothing before the oldest

    EXPECT_EQ(next_QiHao_n(2010002, 1), 2010005);
    EXPECT_EQ(next_QiHao_n(2010002, 2), 2010009);
    EXPECT_EQ(next_QiHao_n(2010002, 10), 2010009);
    EXPECT_EQ(next_QiHao_n(2010009, 1), 2010009);  // none after: the latest
    EXPECT_EQ(next_QiHao_n(2003001, 1), 2009150);
    // The latest date goes by date, not by issue.
    EXPECT_EQ(dateText(latest_KaiJiangRi()), QStringLiteral("2010/01/31"));
}

TEST(DrawDays, WeekdayAndNextDrawDate) {
    const std::array<bool, 7> days{true, false, true, false, true, false, false};
    EXPECT_EQ(calc_WeekDay(toDateValue(QDate(2000, 1, 2))), 0);
    EXPECT_EQ(calc_WeekDay(toDateValue(QDate(1999, 12, 31))), 5);  // a Friday, before the reference
    // Every day of one week, 2024/01/07 being a Sunday.
    const char* expected[] = {"2024/01/09", "2024/01/09", "2024/01/11", "2024/01/11",
                              "2024/01/14", "2024/01/14", "2024/01/14"};
    for (int i = 0; i < 7; ++i) {
        const QDate day = QDate(2024, 1, 7).addDays(i);
        EXPECT_EQ(calc_WeekDay(toDateValue(day)), day.dayOfWeek() % 7);
        EXPECT_EQ(dateText(next_KaiJiangRi(days, toDateValue(day))), QString::fromLatin1(expected[i])) << i;
    }
    // The time of day does not move the result.
    EXPECT_EQ(dateText(next_KaiJiangRi(days, toDateValue(QDate(2024, 1, 7)) + 0.9)),
              QStringLiteral("2024/01/09"));
    // Draws probably missing after a Sunday's draw: the draw days before today, today's not yet.
    const DateValue sunday = toDateValue(QDate(2024, 1, 7));
    EXPECT_EQ(missing_DrawCount(days, sunday, QDate(2024, 1, 9)), 0);
    EXPECT_EQ(missing_DrawCount(days, sunday, QDate(2024, 1, 10)), 1);
    EXPECT_EQ(missing_DrawCount(days, sunday, QDate(2024, 1, 15)), 3);
    EXPECT_EQ(missing_DrawCount(days, sunday, QDate(2023, 1, 1)), 0);
}

TEST_F(HistoryQueriesTest, NextIssueFollowsTheLatestOrStartsTheYear) {
    fillWithHoles();
    // The latest date lies in the latest issue's year: the next number.
    EXPECT_EQ(next_QiHao(QDate(2010, 2, 2)), 2010010);
    // After the last draw of a year the default is simply the old number plus one.
    store_Execute(QStringLiteral("DELETE FROM 历史记录 WHERE 期号>2009150"));
    store_Execute(QStringLiteral("UPDATE 历史记录 SET 开奖日期=#2009/12/31#"));
    EXPECT_EQ(next_QiHao(QDate(2010, 1, 3)), 2009151);
    // A draw dated in the new year under an old issue: the first issue of the picker's year.
    store_Execute(QStringLiteral("UPDATE 历史记录 SET 开奖日期=#2010/01/02#"));
    EXPECT_EQ(next_QiHao(QDate(2011, 1, 4)), 2011001);
}

TEST_F(HistoryQueriesTest, RecentDrawsArray) {
    // Twelve draws 2020001..2020012, blue = running number.
    for (int k = 1; k <= 12; ++k)
        addDraw(2020000 + k, QDate(2020, 1, 1).addDays(k * 2).toString(QStringLiteral("yyyy/MM/dd")),
                makeReds(k, k + 1, k + 2, k + 3, k + 4, k + 20), k);
    HistoryArray a{};
    for (auto& row : a) row.fill(-1);
    EXPECT_EQ(getHistoryRecord(a, 2020012), 10);
    // Row 1 the newest, row 10 the oldest of ten; row 0 and column 0 are not part of the array.
    EXPECT_EQ((QList<int>{a[1][7], a[10][7], a[10][1], a[10][6], a[0][1], a[5][0]}),
              (QList<int>{12, 3, 3, 23, -1, -1}));

    for (auto& row : a) row.fill(-1);
    EXPECT_EQ(getHistoryRecord(a, 2020004), 4);  // fewer than ten: the highest rows are filled
    EXPECT_EQ((QList<int>{a[10][7], a[7][7], a[6][7], a[1][7]}), (QList<int>{1, 4, -1, -1}));

    // An issue in a hole reads up to the draw before it.
    store_Execute(QStringLiteral("DELETE FROM 历史记录 WHERE 期号=2020008"));
    EXPECT_EQ(getHistoryRecord(a, 2020008), 7);
    EXPECT_EQ(a[4][7], 7);
}

TEST_F(HistoryQueriesTest, PrizeTableComesFromTheNoticeOrTheFixedPrizes) {
    // No notice downloaded: the fixed tiers, and the two that vary are unknown.
    EXPECT_EQ(
        prizeTableText(2026096),
        QStringLiteral("2026096 期奖金　一等奖：奖金未知　二等奖：奖金未知　三等奖：3000 元　四等奖：200 元"
                       "　五等奖：10 元　六等奖：5 元"));
    const QString insert =
        QStringLiteral("INSERT INTO 奖级奖金 (期号, 奖级, 注数, 奖金) VALUES (2026096, ?, ?, ?)");
    store_Execute(insert, {1, 8, 6821493});
    store_Execute(insert, {2, 152, 167436});
    store_Execute(insert, {6, 9141225, 5});
    const QString text = prizeTableText(2026096);
    for (const char* tier : {"一等奖：8 注 6821493 元", "二等奖：152 注 167436 元", "三等奖：3000 元",
                             "六等奖：9141225 注 5 元"})
        EXPECT_TRUE(text.contains(QString::fromUtf8(tier))) << text.toStdString();
}

}  // namespace
}  // namespace dovrex::test
