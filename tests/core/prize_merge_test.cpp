#include <QDir>
#include <set>

#include "core/pipeline_fixture.h"
#include "pipeline/random_pick.h"
#include "pipeline/ticket_merge.h"
#include "results/prize_check.h"
#include "results/ticket_export.h"

namespace dovrex::test {
namespace {

constexpr IssueNumber kIssue = 2008118;

TEST(PrizeTier, EveryHitCountByTheTable) {
    // {red hits, blue hit, tier}
    const int table[][3] = {{6, 1, 1}, {6, 0, 2}, {5, 1, 3}, {5, 0, 4}, {4, 1, 4}, {4, 0, 5}, {3, 1, 5},
                            {2, 1, 6}, {1, 1, 6}, {0, 1, 6}, {3, 0, 0}, {2, 0, 0}, {1, 0, 0}, {0, 0, 0}};
    for (const auto& row : table) EXPECT_EQ(prize_Tier(row[0], row[1]), row[2]) << row[0] << "+" << row[1];
}

class CheckMergeTest : public PipelineTest {
  protected:
    CheckMergeTest() { shared().paths = paths(); }
    static std::pair<int, int> hits(int serial) {
        auto c = store_Query(QStringLiteral("select 红球中,蓝球中 from 日志表 where 序号=?"), {serial});
        return {c->intValue(0), c->intValue(1)};
    }
};

TEST_F(CheckMergeTest, CheckWritesHitsReportsTiersAndMarksTheGrid) {
    addDraw(kIssue, QStringLiteral("2008/10/09"), makeReds(4, 9, 16, 27, 31, 33), 1);
    // Tickets with the red and blue hits each must get; the order in a ticket does not matter.
    const struct {
        Reds reds;
        int blue, redHits, blueHit;
    } cases[] = {{makeReds(33, 4, 9, 16, 27, 2), 1, 5, 1}, {makeReds(4, 9, 16, 27, 31, 33), 2, 6, 0},
                 {makeReds(4, 9, 16, 1, 2, 3), 1, 3, 1},   {makeReds(4, 9, 16, 27, 2, 3), 5, 4, 0},
                 {makeReds(4, 9, 16, 1, 2, 3), 5, 3, 0},   {makeReds(1, 2, 3, 5, 6, 7), 1, 0, 1}};
    for (const auto& c : cases) addTicket(kIssue, c.reds, c.blue);
    const int other = addTicket(kIssue + 1, makeReds(4, 9, 16, 27, 31, 33), 1);
    load_TouZhuBiao(kIssue);
    shared().operationLog = QStringLiteral("old");

    cmmTouZhu_Click(kCmdPrizeCheck);
    for (int i = 0; i < 6; ++i)
        EXPECT_EQ(hits(i + 1), std::make_pair(cases[i].redHits, cases[i].blueHit)) << i;
    EXPECT_EQ(hits(other), std::make_pair(0, 0));  // another issue is not checked
    const QString report = QStringLiteral(
        "开奖核对结果如下——\r\n\r\n第 ２００８１１８ 期开奖：０４ ０９ １６ ２７ ３１ ３３ + ０１\r\n\r\n"
        "一等奖： ０ 注\r\n\r\n二等奖： １ 注\r\n\r\n三等奖： １ 注\r\n\r\n"
        "四等奖： ０ 注\r\n\r\n五等奖： ２ 注\r\n\r\n六等奖： １ 注\r\n\r\n"
        "二等奖： 1 注 × 奖金未知\r\n\r\n三等奖： 1 注 × 3000 元 = 3000 元\r\n\r\n"
        "五等奖： 2 注 × 10 元 = 20 元\r\n\r\n六等奖： 1 注 × 5 元 = 5 元\r\n\r\n"
        "中奖合计： 3025 元（另有奖金未知的奖级）\r\n\r\n投注成本： 12 元\r\n\r\n\r\n\r\nold");
    EXPECT_EQ(shared().operationLog, report);
    EXPECT_EQ(ui().messages(), QStringList{msg::kCheckDone});
    EXPECT_TRUE(ui().lines().contains(QStringLiteral("DRAWN TDBGrid_RZ 04 09 16 27 31 33 + 01")));
    EXPECT_EQ(std::pair(prize_DrawnNumbers().issue, prize_DrawnNumbers().blue), std::pair(kIssue, 1));

    // Checking again gives the same columns and the report twice.
    EXPECT_EQ(check_KaiJiang(kIssue), 6);
    EXPECT_EQ(hits(1), std::make_pair(5, 1));
    EXPECT_EQ(shared().operationLog.count(QStringLiteral("开奖核对结果如下")), 2);

    // Once the draw's notice is in, tier 2 has its prize; a blank tier 1 stays unknown.
    store_Execute(QStringLiteral("INSERT INTO 奖级奖金 VALUES (?, 1, 0, NULL), (?, 2, 97, 201346)"),
                  {kIssue, kIssue});
    const PrizeMoney money = prize_MoneyOfChecked(kIssue);  // {tier 1, total, unknown, cost}
    EXPECT_EQ(std::tuple(money.prize[1], money.total, money.unknown, money.cost),
              std::tuple(-1, 201346 + 3025, false, 12));
    // Tier 1 from the notice like the others.
    addTicket(kIssue, makeReds(4, 9, 16, 27, 31, 33), 1);
    store_Execute(QStringLiteral("UPDATE 奖级奖金 SET 注数=3, 奖金=6821493 WHERE 奖级=1"));
    check_KaiJiang(kIssue);
    EXPECT_TRUE(logContains(u"一等奖： 1 注 × 6821493 元 = 6821493 元"));
    EXPECT_EQ(prize_MoneyOfChecked(kIssue).total, 6821493 + 201346 + 3025);
}

TEST_F(CheckMergeTest, CheckWithoutADrawOrAHit) {
    const int t = addTicket(kIssue, makeReds(1, 2, 3, 4, 5, 6), 1);
    store_Execute(QStringLiteral("UPDATE 日志表 SET 红球中=9, 蓝球中=9"));
    EXPECT_EQ(check_KaiJiang(kIssue), 0);
    EXPECT_EQ(ui().messages(),
              QStringList{QStringLiteral("当前表格或历史开奖数据中没有第２００８１１８期的数据！\\n\\n"
                                         "          无法核对哦^_^！！")});
    EXPECT_EQ(ui().messageTitles(), QStringList{QStringLiteral("出错啦!")});
    EXPECT_EQ(hits(t), std::make_pair(9, 9));
    EXPECT_TRUE(ui().linesStartingWith(QStringLiteral("DRAWN")).isEmpty());
    // A draw but nothing hit: no success box, the report in the log only.
    addDraw(kIssue, QStringLiteral("2008/10/09"), makeReds(20, 21, 22, 23, 24, 25), 16);
    ui().clear();
    load_TouZhuBiao(kIssue);
    cmmTouZhu_Click(kCmdPrizeCheck);
    EXPECT_TRUE(ui().messages().isEmpty());
    EXPECT_EQ(hits(t), std::make_pair(0, 0));
}

TEST_F(CheckMergeTest, MergeKeepsTheFirstOfEqualRedsAcrossBluesAndIssues) {
    const int first = addTicket(kIssue, makeReds(1, 2, 3, 4, 5, 6), 1);
    addTicket(kIssue, makeReds(1, 2, 3, 4, 5, 6), 9);
    const int swapped = addTicket(kIssue, makeReds(2, 1, 3, 4, 5, 6), 1);  // positions differ: kept
    addTicket(kIssue + 1, makeReds(1, 2, 3, 4, 5, 6), 1);
    const int other = addTicket(kIssue + 1, makeReds(7, 8, 9, 10, 11, 12), 3);
    addTicket(kIssue, makeReds(7, 8, 9, 10, 11, 12), 4);
    EXPECT_EQ(hebingxt_Click(), 3);
    std::vector<int> serials;
    for (const auto& t : tickets()) serials.push_back(t.serial);
    EXPECT_EQ(serials, (std::vector<int>{first, swapped, other}));
    EXPECT_EQ(ui().messages(), QStringList{msg::mergeLeft(3)});
    // The result replaces the in-progress lines.
    EXPECT_FALSE(logContains(u"合并相同注正在进行中"));
    EXPECT_TRUE(logEndsWith(u"合并相同注后余：３ 注"));
    EXPECT_EQ(ui().lines().filter(QStringLiteral("GRID TDBGrid_RZ")).last(),
              QStringLiteral("GRID TDBGrid_RZ 3 rows"));
    // Not renumbered.
    EXPECT_EQ(intScalar(QStringLiteral("select max(序号) from 日志表")), other);
}

TEST_F(CheckMergeTest, MergeStoppedKeepsTheWalksDone) {
    for (int copy = 0; copy < 2; ++copy)
        for (int k = 1; k <= 3; ++k) addTicket(kIssue, makeReds(k, 10, 11, 12, 13, 14), 1);
    ui().stopAfterPumps(1);
    EXPECT_EQ(merge_XiangTongZhu(), 5);  // only the first set of reds was walked
    EXPECT_EQ(shared().tingZhi, 0);
    EXPECT_EQ(merge_XiangTongZhu(), 3);
    // An empty table.
    store_Execute(QStringLiteral("DELETE FROM 日志表"));
    ui().clear();
    EXPECT_EQ(hebingxt_Click(), 0);
    EXPECT_EQ(ui().messages(), QStringList{msg::mergeLeft(0)});
}

TEST(RandomPick, CountOfTheAnswer) {
    const std::pair<QString, int> answers[] = {{"9", 5}, {"3", 3},   {" 2.7 ", 2}, {"4注", 4}, {"0", 0},
                                               {{}, 0},  {"abc", 0}, {"-3", 0},    {"0.5", 0}};
    for (const auto& [text, count] : answers) EXPECT_EQ(jiXuan_ZhuShu(text), count) << text.toStdString();
}

TEST(RandomPick, BallsComeOneByOneWithoutRepeatInATicket) {
    std::set<std::vector<int>> seen;
    for (uint64_t seed = 1; seed <= 200; ++seed) {
        JiXuanDraw draw(5, seed);
        int ticket = 0, column = 0, calls = 0, lastTicket = 0;
        while (draw.next(ticket, column)) {
            // The blue comes first, then the six reds, ticket after ticket.
            EXPECT_EQ(column, calls % 7 == 0 ? 6 : calls % 7 - 1);
            EXPECT_GE(ticket, lastTicket);
            lastTicket = ticket;
            ++calls;
        }
        EXPECT_EQ(calls, 35);
        for (const auto& row : draw.hao()) {
            const std::set<int> reds(row.begin(), row.begin() + 6);
            EXPECT_TRUE(reds.size() == 6 && *reds.begin() >= 1 && *reds.rbegin() <= 33) << seed;
            EXPECT_TRUE(row[6] >= 1 && row[6] <= 16) << seed;
            seen.insert(std::vector<int>(row.begin(), row.end()));
        }
    }
    EXPECT_GT(seen.size(), 990u);  // the seeds give different tickets
    JiXuanDraw none(0, 1);
    int t = 0, c = 0;
    EXPECT_FALSE(none.next(t, c));
}

TEST_F(CheckMergeTest, RandomPickExportGivesOneLineATicket) {
    JiXuanHao hao{};
    hao[0] = {5, 1, 33, 2, 3, 4, 7};
    hao[1] = {10, 11, 12, 13, 14, 15, 16};
    hao[2] = {20, 21, 22, 23, 24, 25, 1};
    EXPECT_EQ(jiXuan_Text(hao),
              QStringLiteral("05 01 33 02 03 04+07\n10 11 12 13 14 15+16\n20 21 22 23 24 25+01"));
    jiXuan_Export(hao);
    const QString path = QDir(paths().programDir).filePath(kDaoChuFileName);
    EXPECT_EQ(QString::fromUtf8(fileBytes(path)).split(u'\n').size(), 3);
    EXPECT_TRUE(ui().lines().contains(QStringLiteral("OPENFILE ") + path));
    EXPECT_EQ(ui().messages(), QStringList{ScriptedScreen::oneLine(msg::jiXuanExported(path))});
    // Nothing drawn: nothing happens.
    ui().clear();
    jiXuan_Export(JiXuanHao{});
    EXPECT_TRUE(ui().lines().isEmpty());
}

}  // namespace
}  // namespace dovrex::test
