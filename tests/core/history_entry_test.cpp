// Hand entry, deletion and search of 历史记录.
#include <gtest/gtest.h>

#include "domain/date_value.h"
#include "history/derived_columns.h"
#include "history/draw_records.h"
#include "history/history_display.h"
#include "history/history_queries.h"
#include "screen/control_roles.h"
#include "support/table_rows.h"
#include "support/test_support.h"

using namespace dovrex;
using namespace dovrex::test;

namespace {

DrawInput entry(const QString& issue, std::array<const char*, 7> balls, QDate date = QDate(2026, 8, 23)) {
    DrawInput in;
    in.boxes[0] = issue;
    for (int i = 0; i < 7; ++i) in.boxes[size_t(i + 1)] = QString::fromLatin1(balls[size_t(i)]);
    in.date = date;
    return in;
}

QVariantList rowOf(IssueNumber issue) {
    return queryRows(store(), QStringLiteral("select * from 历史记录 where 期号=?"), {issue}).value(0);
}

int historyCount() {
    return intScalar(QStringLiteral("select count(*) from 历史记录"));
}

}  // namespace

// The ranges are the record check's (RecordChecks); here the boxes' own reading.
TEST(CheckShuru, AcceptsTheWholeRangeAndRefusesWhatLiesOutside) {
    // clang-format off
    const struct { const char* what; QString issue; std::array<const char*, 7> balls; bool ok; } cases[] = {
        {"33 and blue 16", "2026097", {"33", "1", "2", "3", "4", "5", "16"}, true},
        {"red 34", "2026097", {"34", "1", "2", "3", "4", "5", "1"}, false},
        {"empty red", "2026097", {"", "1", "2", "3", "4", "5", "1"}, false},
        {"red twice", "2026097", {"7", "1", "2", "3", "7", "5", "1"}, false},
        {"no issue", "", {"6", "1", "2", "3", "4", "5", "1"}, false},
        {"issue 0", "0", {"6", "1", "2", "3", "4", "5", "1"}, false},
    };
    // clang-format on
    for (const auto& c : cases) {
        DrawInput in = entry(c.issue, c.balls);
        const DrawInput typed = in;
        EXPECT_EQ(check_Shuru(in), c.ok) << c.what;
        if (!c.ok) EXPECT_EQ(in.boxes, typed.boxes) << c.what << ": a refused entry stays as typed";
    }
    DrawInput in = entry(QStringLiteral("2026097"), {"33", "07", "1", "20", "12", "3", "9"});
    ASSERT_TRUE(check_Shuru(in));
    EXPECT_EQ(QStringList(in.boxes.begin() + 1, in.boxes.end()),
              (QStringList{"1", "3", "7", "12", "20", "33", "9"}));
}

class HistoryEntryTest : public ShippedStoreTest {};

TEST_F(HistoryEntryTest, ARefusedEntryShowsTheMessageAndStoresNothing) {
    const int before = historyCount();
    DrawInput in = entry(QStringLiteral("2026097"), {"34", "1", "2", "3", "4", "5", "1"});
    EXPECT_FALSE(storeEnteredDraw(in));
    EXPECT_EQ(ui().messages(), QStringList{msg::kBadEntry});
    EXPECT_TRUE(ui().lines().last().startsWith(QStringLiteral("ERROR ")));
    EXPECT_EQ(historyCount(), before);
}

TEST_F(HistoryEntryTest, ANewDrawIsStoredSortedWithItsColumnsAndTheBoxesMoveOn) {
    const IssueNumber latest = latest_QiHao();
    const QDate drawDay = toQDate(latest_KaiJiangRi()).addDays(3);
    DrawInput in = entry(QString::number(latest + 1), {"30", "2", "17", "9", "25", "11", "8"}, drawDay);
    ASSERT_TRUE(storeEnteredDraw(in));
    EXPECT_TRUE(ui().messages().isEmpty());

    // What the pass writes for the new row is what a recount of the whole history gives.
    const QVariantList stored = rowOf(latest + 1);
    ASSERT_FALSE(stored.isEmpty());
    recalc_LiShiLie(latest + 1, latest + 1, false);
    EXPECT_EQ(rowOf(latest + 1), stored);
    EXPECT_EQ(scalar(QStringLiteral("select 开奖日期 from 历史记录 where 期号=?"), {latest + 1}).toDouble(),
              toDateValue(drawDay));

    // The boxes: next issue, next draw day after the picker's, balls cleared; the grid was rebound.
    EXPECT_EQ(in.boxes[0], QString::number(latest + 2));
    EXPECT_EQ(in.date, toQDate(next_KaiJiangRi(shared().g_DrawDays, toDateValue(drawDay))));
    for (int i = 1; i <= 7; ++i) EXPECT_TRUE(in.boxes[size_t(i)].isEmpty());
    EXPECT_FALSE(ui().linesStartingWith(QStringLiteral("GRID ") + role::TDBGridHistory).isEmpty());
}

TEST_F(HistoryEntryTest, AnExistingIssueIsOverwrittenWithoutAsking) {
    const IssueNumber issue = 2010050;
    const int before = historyCount();
    const int oldSum = intScalar(QStringLiteral("select 和值 from 历史记录 where 期号=?"), {issue});
    DrawInput in = entry(QString::number(issue), {"1", "2", "3", "4", "5", "6", "7"}, QDate(2010, 5, 4));
    ASSERT_TRUE(storeEnteredDraw(in));
    EXPECT_TRUE(ui().linesStartingWith(QStringLiteral("CONFIRM")).isEmpty());
    EXPECT_EQ(historyCount(), before);
    EXPECT_NE(oldSum, 21);
    EXPECT_EQ(queryLines(store(), QStringLiteral("select 和值, 蓝球 from 历史记录 where 期号=?"), {issue}),
              QStringList{QStringLiteral("21|7")});
}

TEST_F(HistoryEntryTest, DeletionAsksForTheIssueAndSaysWhatHappened) {
    const IssueNumber latest = latest_QiHao();
    const IssueNumber before = prev_QiHao(latest, 1);
    const int count = historyCount();

    ui().answerText(QString());  // cancel
    EXPECT_EQ(cmm_scls(true), DeleteResult::Cancelled);
    ui().answerText(QStringLiteral("2003999"));
    EXPECT_EQ(cmm_scls(true), DeleteResult::Missing);
    EXPECT_EQ(ui().messages(), QStringList{msg::kDeleteMissing});
    EXPECT_EQ(historyCount(), count);
    EXPECT_TRUE(ui().lines().first().contains(QStringLiteral("| %1 ->").arg(latest)))
        << "the latest issue is proposed";

    ui().clear();
    EXPECT_EQ(cmm_scls(true), DeleteResult::Deleted);  // the proposed issue: the latest
    EXPECT_EQ(ui().messages(), QStringList{msg::kDrawDeleteDone});
    EXPECT_EQ(std::tuple(latest_QiHao(), historyCount()), std::tuple(before, count - 1));

    // The draw after a deleted one keeps its columns until a later pass.
    const QVariantList next = rowOf(2010051);
    ui().clear();
    ui().answerText(QStringLiteral("2010050"));
    EXPECT_EQ(cmm_scls(false), DeleteResult::Deleted);
    EXPECT_EQ(ui().messages(), QStringList{msg::kDrawDeleteDoneReload});
    EXPECT_EQ(rowOf(2010051), next);
}

TEST_F(HistoryEntryTest, SearchTermsAreBoundAndOnlyTheTablesColumnsCount) {
    const SearchCondition cond =
        buildDrawSearch({{QStringLiteral("红球1"), QStringLiteral("01")},
                         {QStringLiteral("蓝球"), QString()},
                         {QStringLiteral("期号\" = 1 OR 1=1 --"), QStringLiteral("1")},
                         {QStringLiteral("连号"), QStringLiteral("*连")},
                         {QStringLiteral("开奖日期"), QStringLiteral("2008/10/??")}});
    EXPECT_EQ(cond.where.count(QStringLiteral(" LIKE ?")), 3);
    EXPECT_EQ(cond.where.count(QStringLiteral(" AND ")), 2);
    EXPECT_FALSE(cond.where.contains(QStringLiteral("OR")));
    EXPECT_EQ(cond.params,
              (QVariantList{QStringLiteral("1"), QStringLiteral("%连"), QStringLiteral("2008/10/__")}));
    EXPECT_TRUE(buildDrawSearch({{QStringLiteral("红球1"), QStringLiteral("  ")}}).empty());
}

TEST_F(HistoryEntryTest, SearchBindsTheMatchesAndReportsTheirCount) {
    const int expected = intScalar(QStringLiteral("select count(*) from 历史记录 where 红球1=1 and 蓝球=16"));
    ASSERT_GT(expected, 0);
    SearchResult r = filterBegin(
        {{QStringLiteral("红球1"), QStringLiteral("1")}, {QStringLiteral("蓝球"), QStringLiteral("16")}});
    EXPECT_EQ(std::tuple(r.ran, r.count, r.clearRow), std::tuple(true, expected, false));
    EXPECT_EQ(shared().g_HistoryCursor->recordCount(), expected);
    EXPECT_EQ(ui().messages(), QStringList{msg::searchDoneText(expected)});
    EXPECT_TRUE(ui().messages().first().contains(to_QuanJiao(expected)));

    const int inOctober =
        intScalar(QStringLiteral("select count(*) from 历史记录 where 期号 between 2008116 and 2008128"));
    r = filterBegin({{QStringLiteral("开奖日期"), QStringLiteral("2008/10/%")}});
    EXPECT_EQ(r.count, inOctober);

    // No match: count 0, the row is cleared, the default view comes back; a quote changes nothing.
    ui().clear();
    const int all = historyCount();
    r = filterBegin({{QStringLiteral("红球1"), QStringLiteral("1' OR '1'='1")}});
    EXPECT_EQ(std::pair(r.count, r.clearRow), std::pair(0, true));
    EXPECT_EQ(ui().messages(), QStringList{QStringLiteral("搜索完成，符合条件的记录共：０ 条！")});
    EXPECT_EQ(historyCount(), all);
    EXPECT_EQ(shared().g_HistoryCursor->recordCount(),
              read_HistoryShowMode() == HistoryShowMode::All ? all : std::min(all, 100));

    ui().clear();
    EXPECT_FALSE(filterBegin({}).ran);
    EXPECT_TRUE(ui().messages().isEmpty());
}
