#include <QRandomGenerator>
#include <algorithm>
#include <numeric>
#include <set>

#include "core/pipeline_fixture.h"
#include "pipeline/distribution_report.h"
#include "pipeline/shrink.h"
#include "pipeline/shrink_optimise.h"
#include "pipeline/ticket_init.h"
#include "pipeline/ticket_rows.h"
#include "pipeline/weights.h"
#include "screen/run_panel.h"
#include "support/table_rows.h"

namespace dovrex::test {
namespace {

constexpr IssueNumber kIssue = 2008118;

using Row = PipelineTest::Ticket;
Row row(int serial, Reds reds, int blue, int shrinkMark = 0, int scratch = 0) {
    return {0, serial, kIssue, reds, blue, 0, 0, shrinkMark, scratch};
}

class ShrinkTest : public PipelineTest {
  protected:
    // Puts `rows` in 日志表 in place of what it held, IDs from 1.
    static void load(const std::vector<Row>& rows) {
        Transaction tx(store());
        store_Execute(QStringLiteral("DELETE FROM 日志表"));
        int id = 0;
        for (const Row& r : rows)
            store_Execute(
                QStringLiteral("INSERT INTO 日志表 (ID,序号,期号,红球1,红球2,红球3,红球4,红球5,红球6,蓝球,"
                               "缩水标记,临时数据) VALUES (?,?,?,?,?,?,?,?,?,?,?,?)"),
                {++id, r.serial, kIssue, r.reds[1], r.reds[2], r.reds[3], r.reds[4], r.reds[5], r.reds[6],
                 r.blue, r.shrinkMark, r.scratch});
    }
    static std::vector<Row> rows() { return tickets(kIssue); }
    // Whether every ticket of `all` shares t balls (red n and blue n apart) with one of `kept`.
    static bool covers(const std::vector<Row>& kept, const std::vector<Row>& all, int t) {
        return std::all_of(all.begin(), all.end(), [&](const Row& u) {
            return std::any_of(kept.begin(), kept.end(), [&](const Row& k) {
                int n = u.blue == k.blue;
                for (int i = 1; i <= 6; ++i)
                    n += std::count(k.reds.begin() + 1, k.reds.end(), u.reds[size_t(i)]);
                return n >= t;
            });
        });
    }

    // The scan written out plainly: a table of ball keys (red n, blue 100 + n), one lookup a ball, the
    // rows in the order of the scan without weights (临时数据, then 序号); returns the rows that stay,
    // by 序号.
    static std::vector<Row> referenceScan(std::vector<Row> order, int t) {
        std::stable_sort(order.begin(), order.end(), [](const Row& a, const Row& b) {
            return a.scratch != b.scratch ? a.scratch < b.scratch : a.serial < b.serial;
        });
        std::vector<bool> gone(order.size(), false);
        std::vector<int> mark;
        for (const Row& r : order) mark.push_back(r.shrinkMark);
        int jiHaoBiao[201] = {};
        size_t cur = 0;
        while (cur < order.size()) {
            mark[cur] = t;
            int keys[7];
            for (int i = 1; i <= 6; ++i) keys[i - 1] = order[cur].reds[size_t(i)];
            keys[6] = 100 + order[cur].blue;
            for (int k : keys) jiHaoBiao[k] = 1;
            for (size_t j = cur + 1; j < order.size(); ++j) {
                if (gone[j] || mark[j] < 0) continue;
                int sum = jiHaoBiao[100 + order[j].blue];
                for (int i = 1; i <= 6; ++i) sum += jiHaoBiao[order[j].reds[size_t(i)]];
                if (sum >= t) gone[j] = true;
            }
            for (int k : keys) jiHaoBiao[k] = 0;
            size_t next = 0;
            while (next < order.size() && (gone[next] || mark[next] != 0)) ++next;
            cur = next;
        }
        std::vector<Row> kept;
        for (size_t i = 0; i < order.size(); ++i)
            if (!gone[i]) kept.push_back(order[i]);
        std::stable_sort(kept.begin(), kept.end(),
                         [](const Row& a, const Row& b) { return a.serial < b.serial; });
        return kept;
    }

    static bool sameTickets(const std::vector<Row>& a, const std::vector<Row>& b) {
        return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                          [](const Row& x, const Row& y) { return x.reds == y.reds && x.blue == y.blue; });
    }
};

// Every six of n drags with blues 1..blues, in the order of the first step, random 临时数据.
std::vector<Row> fullSet(int drags, int blues, QRandomGenerator& rng, int scratchRange) {
    std::vector<int> reds;
    for (int n = 1; n <= drags; ++n) reds.push_back(n * 33 / drags);
    std::vector<Row> out;
    for (const Reds& six : sixesOf(reds))
        for (int b = 1; b <= blues; ++b)
            out.push_back(
                row(int(out.size()) + 1, six, b, 0, scratchRange ? int(rng.bounded(scratchRange)) : 0));
    return out;
}

TEST_F(ShrinkTest, RandomAndFilteredSetsMatchThePlainScanAndAreCovered) {
    QRandomGenerator rng(20081118);
    for (int round = 0; round < 16; ++round) {
        const int t = 3 + round % 4;
        std::vector<Row> set;
        switch (round % 4) {
            case 0:  // tickets drawn at random, serials with gaps
                for (int i = 0; i < 400; ++i) {
                    std::set<int> picked;
                    while (picked.size() < 6) picked.insert(int(rng.bounded(1, 34)));
                    Reds r{};
                    int k = 1;
                    for (int v : picked) r[size_t(k++)] = v;
                    set.push_back(row(i * 3 + 1, r, int(rng.bounded(1, 17)), 0, int(rng.bounded(5))));
                }
                break;
            case 1: {  // a full expansion with random holes, as a filter run leaves it
                for (Row r : fullSet(11, 2, rng, 3))
                    if (rng.bounded(100) < 55) set.push_back(r);
                break;
            }
            case 2: {  // a sum filter over 12 drags, one blue
                for (Row r : fullSet(12, 1, rng, 0)) {
                    const int sum = std::accumulate(r.reds.begin() + 1, r.reds.end(), 0);
                    if (sum >= 80 && sum <= 120) set.push_back(r);
                }
                break;
            }
            default: {  // some rows never compared (negative marks), some with a stale kept mark
                for (Row r : fullSet(10, 3, rng, 4)) {
                    const int roll = int(rng.bounded(20));
                    r.shrinkMark = roll == 0 ? -1 : roll == 1 ? 6 : 0;
                    set.push_back(r);
                }
            }
        }
        load(set);
        shared().biaoJiQingLing = 1;  // keep the 临时数据 written above
        ui().clear();
        const int kept = run_SuoShui(t, kIssue);
        const auto after = rows();
        // The shrink's own proof agrees, stale marks included.
        EXPECT_TRUE(ui().messages().isEmpty())
            << "round " << round << ": " << ui().messages().join(u' ').toStdString();
        EXPECT_TRUE(logContains(
            QStringLiteral("若开奖号码在过滤后的 %1 注之中")
                .arg(std::count_if(set.begin(), set.end(), [](const Row& r) { return r.shrinkMark >= 0; }))));
        EXPECT_EQ(kept, int(after.size())) << round;
        EXPECT_TRUE(sameTickets(after, referenceScan(set, t))) << "round " << round << " t " << t;
        for (size_t i = 0; i < after.size(); ++i) EXPECT_EQ(after[i].serial, int(i) + 1);
        // The guarantee: every ticket of the set before shares t balls with one still there.
        EXPECT_TRUE(covers(after, set, t)) << "round " << round;
    }
}

// The whole of 日志表 with the AUTOINCREMENT counter, as text, for comparing two write-backs.
QStringList tableDump() {
    const QString seq =
        scalar(QStringLiteral("select seq from sqlite_sequence where name='日志表'")).toString();
    return tableRows(store(), QStringLiteral("日志表")) << seq;
}

TEST_F(ShrinkTest, BulkDeleteAndRenumberMatchTheRowByRowWriteBack) {
    QRandomGenerator rng(23);
    for (int round = 0; round < 12; ++round) {
        // Two issues in half the rounds (the bulk delete names the issue), one in the others (the
        // table is rebuilt); few, half or most of the rows go.
        const bool twoIssues = round % 2 == 1;
        const int dropPercent = round % 3 == 0 ? 10 : round % 3 == 1 ? 50 : 97;
        auto fill = [&](quint32 seed) {
            QRandomGenerator r(seed);
            store_Execute(QStringLiteral("DELETE FROM sqlite_sequence"));
            load(fullSet(9, 2, r, 3));
            if (twoIssues)
                store_Execute(QStringLiteral("UPDATE 日志表 SET 期号=2008117, 序号=序号+7 WHERE ID%5=0"));
            store_Execute(QStringLiteral("UPDATE 日志表 SET 序号=序号*2 WHERE ID%7=0"));  // out of order
        };
        const quint32 seed = rng.generate();
        fill(seed);
        std::vector<long long> removed, survivors;
        for (const StoredTicket& t : read_StoredTickets(TicketQuery{}, kIssue))
            (int(rng.bounded(100)) < dropPercent ? removed : survivors).push_back(t.key);

        {  // the row-by-row write-back
            Transaction tx(store());
            for (long long id : removed)
                store_Execute(QStringLiteral("DELETE FROM 日志表 WHERE rowid=?"), {id});
            auto c = store_Query(QStringLiteral("select 序号 from 日志表 order by 序号 asc, ID asc"));
            for (int n = 1; !c->eof(); c->moveNext(), ++n) c->setValue(0, n);
        }
        store_Execute(QStringLiteral("INSERT INTO 日志表 (期号) VALUES (1)"));  // the counter moves on
        const QStringList expected = tableDump();

        fill(seed);
        {
            Transaction tx(store());
            delete_StoredTickets(kIssue, removed, survivors);
            EXPECT_EQ(renumber_StoredTickets(), intScalar(QStringLiteral("select count(*) from 日志表")));
        }
        store_Execute(QStringLiteral("INSERT INTO 日志表 (期号) VALUES (1)"));
        EXPECT_EQ(tableDump(), expected) << "round " << round;
    }
}

TEST_F(ShrinkTest, SmallCasesAndTheTypes) {
    const Reds a{0, 1, 2, 3, 4, 5, 6}, b{0, 1, 2, 3, 4, 5, 7};
    // One ticket: kept, 序号 1.
    load({row(5, a, 1)});
    EXPECT_EQ(run_SuoShui(6, kIssue), 1);
    EXPECT_EQ(queryLines(store(), QStringLiteral("select 序号, 缩水标记 from 日志表")), words("1|6"));
    EXPECT_TRUE(
        logContains(u"[保六型]缩水后余：１ 注，２ 元；已是最少注数\r\n\r\n若开奖号码在过滤后的 1 注之中: "
                    "中7球 1 注 (100.0%)"));
    // Differing in the blue only: T 6 removes the second, T 7 keeps both and says so.
    load({row(1, a, 1), row(2, a, 2)});
    ui().clear();
    EXPECT_EQ(run_SuoShui(7, kIssue), 2);
    EXPECT_EQ(ui().messages(), QStringList{msg::kShrinkNothingRemoved});
    EXPECT_TRUE(logEndsWith(u"[保七型]缩水后余：２ 注，４ 元"));
    EXPECT_EQ(run_SuoShui(6, kIssue), 1);
    EXPECT_EQ(rows()[0].blue, 1);
    // Red 5 and blue 5 are different balls: five reds alike and blue 5 against red 5 is not six.
    load({row(1, a, 9), row(2, Reds{0, 1, 2, 3, 4, 6, 7}, 5)});
    EXPECT_EQ(run_SuoShui(6, kIssue), 2);
    // A negative mark is never compared, so it stays; the scan keeps no other.
    load({row(1, a, 1), row(2, a, 1, -1), row(3, b, 1)});
    shared().biaoJiQingLing = 1;
    EXPECT_EQ(run_SuoShui(5, kIssue), 2);
    EXPECT_EQ(columnValues(store(), QStringLiteral("select 缩水标记 from 日志表 order by ID")),
              (QList<int>{5, -1}));
}

TEST_F(ShrinkTest, OrderFollowsWeightsAndTheFormula) {
    const Reds low{0, 1, 2, 3, 4, 5, 6}, high{0, 1, 2, 3, 4, 5, 33};
    load({row(1, low, 1), row(2, high, 1)});
    // With weights the heavier ticket goes first and wins.
    cmmQZfenpei_Click(0);
    EXPECT_EQ(run_SuoShui(6, kIssue), 1);
    EXPECT_EQ(rows()[0].reds, high);
    // The result line goes behind the log as it was before the weights were written.
    EXPECT_FALSE(logContains(u"号码权重设置完成！"));
    cmmQZfenpei_Click(5);
    // Without weights 序号 decides, and at T 5 the formula plays no part (FormulaInitTest keeps
    // the formula's tickets first at T 6).
    EXPECT_EQ(shrinkOrder(5, kIssue, false), QStringLiteral("临时数据 ASC, 序号 ASC, rowid ASC"));
    load({row(1, low, 1), row(2, high, 1)});
    store_Execute(QStringLiteral("UPDATE 日志表 SET 缩水公式=2 WHERE 序号=2"));
    EXPECT_EQ(run_SuoShui(5, kIssue), 1);
    EXPECT_EQ(rows()[0].reds, low);
}

TEST_F(ShrinkTest, StopKeepsWhatWasDoneWithoutRenumbering) {
    QRandomGenerator rng(7);
    load(fullSet(14, 2, rng, 0));  // 6006 tickets
    shared().biaoJiQingLing = 1;
    ui().stopAfterPumps(3);
    const int kept = run_SuoShui(6, kIssue);
    const auto after = rows();
    EXPECT_TRUE(logEndsWith(u"用户停止！"));
    EXPECT_GT(after.size(), size_t(kept));
    EXPECT_LT(after.size(), 6006u);
    // Kept rows are marked, the rest not yet reached are unmarked, and 序号 keeps its gaps.
    EXPECT_EQ(intScalar(QStringLiteral("select count(*) from 日志表 where 缩水标记=6")), kept);
    EXPECT_NE(after.back().serial, int(after.size()));
    EXPECT_TRUE(ui().lines().contains(QStringLiteral("SET TimerSuosuijinxingzong.enabled = false")));
    // The Stop stays raised, so the distribution report that follows a shrink is skipped.
    show_HaoMaFenBu(kIssue);
    EXPECT_TRUE(logEndsWith(u"用户停止！"));
}

// The screen of a player who presses Stop as soon as the optimiser starts, and how often the
// window was pumped after that.
struct StopAtTheOptimiser : ScriptedScreen {
    int pumpsAfterStop = 0;
    void ui_Set(const QString& role, const QString& property, const QVariant& value) override {
        ScriptedScreen::ui_Set(role, property, value);
        if (value == QStringLiteral("优化中")) shared().tingZhi = 1;
    }
    void ui_Pump() override {
        pumpsAfterStop += shared().tingZhi != 0;
        ScriptedScreen::ui_Pump();
    }
};

// The optimised shrink as the command runs it: fewer tickets than the plain scan, the guarantee
// proved, 序号 renumbered and the coverage of the issue at hand. A Stop during the search ends it
// at once with the best set so far, as a finished shrink.
TEST_F(ShrinkTest, OptimisedShrinkKeepsFewerTicketsAndItsStopFinishes) {
    QRandomGenerator rng(5);
    const std::vector<Row> set = fullSet(10, 2, rng, 0);  // 420 tickets
    load(set);
    shared().biaoJiQingLing = 1;
    const int plain = run_SuoShui(5, kIssue);
    set_ShrinkOptimised(true);
    set_ShrinkBudgetSeconds(1);
    StopAtTheOptimiser stopping;
    for (bool stop : {false, true}) {
        load(set);
        if (stop) shared().screen = &stopping;
        const int kept = run_SuoShui(5, kIssue);
        const auto after = rows();
        if (!stop) EXPECT_LT(kept, plain);
        ASSERT_EQ(int(after.size()), kept) << stop;
        for (size_t i = 0; i < after.size(); ++i) {
            EXPECT_EQ(after[i].serial, int(i) + 1);
            EXPECT_EQ(after[i].shrinkMark, 5);
        }
        EXPECT_TRUE(covers(after, set, 5)) << stop;
        const QString coverage = QStringLiteral("若开奖号码在过滤后的 420 注之中: 中7球 %1 注").arg(kept);
        EXPECT_TRUE(
            logContains(QStringLiteral("[保五型]缩水后余：") + to_QuanJiao(kept) + QStringLiteral(" 注，")))
            << stop;
        EXPECT_TRUE(logEndsWith(coverage_OfIssue(kIssue)));
        // A stopped search says what it kept and why.
        EXPECT_EQ(logContains(QStringLiteral("用户停止了优化，保留了停止前找到的最少注数")), stop);
        EXPECT_TRUE(coverage_OfIssue(kIssue).startsWith(coverage)) << coverage_OfIssue(kIssue).toStdString();
        EXPECT_EQ(shared().tingZhi, 0);
    }
    shared().screen = &ui();  // before `stopping` goes
    EXPECT_LE(stopping.pumpsAfterStop, 1);
}

TEST_F(ShrinkTest, CommandOpensSettingsThenRunsAndReports) {
    pickDrags(10, 1);
    init_TouZhu(kIssue);
    store_Execute(QStringLiteral("DELETE FROM Ssgs"));
    set_GuoLvTiaoJian(kShrinkTypeId, 5);
    ui().clear();
    cmmTouZhu_Click(kCmdShrink);  // opens the settings only
    EXPECT_TRUE(suoShuiSeZhiVisible());
    EXPECT_TRUE(ui().lines().contains(QStringLiteral("SET FrameSuosuiSezi.visible = true")));
    EXPECT_TRUE(ui().lines().contains(QStringLiteral("SET Option_ShuoSuiLeiXing.value = 5")));
    EXPECT_EQ(rows().size(), 210u);

    ui().answerConfirm(false);  // cancelled: nothing changes, the frame is closed
    cmmSS_Click(1);
    EXPECT_FALSE(suoShuiSeZhiVisible());
    EXPECT_EQ(rows().size(), 210u);

    cmmTouZhu_Click(kCmdShrink);
    cmmSS_Click(1);
    const auto after = rows();
    EXPECT_LT(after.size(), 210u);
    // The report counts each red over what is left, numbers held by none left out.
    const auto holding = [](const char* column, int red) {
        return to_QuanJiao(
            intScalar(QStringLiteral("select count(*) from 日志表 where %1=?").arg(column), {red}));
    };
    const QString log = shared().operationLog;
    EXPECT_TRUE(log.contains(QStringLiteral("[保五型]缩水后余：") + to_QuanJiao(int(after.size())) +
                             QStringLiteral(" 注")));
    EXPECT_TRUE(log.contains(
        QStringLiteral("所选红球号码分布情况——\r\n\r\n０１：%1 注.\r\n").arg(holding("红球1", 1))));
    EXPECT_FALSE(log.contains(QStringLiteral("１１：")));
    EXPECT_TRUE(log.endsWith(QStringLiteral("１０：%1 注.\r\n").arg(holding("红球6", 10))));
    // No type chosen: the command asks for one and removes nothing.
    set_GuoLvTiaoJian(kShrinkTypeId, 0);
    const size_t before = rows().size();
    cmmTouZhu_Click(kCmdShrink);
    cmmSS_Click(1);
    EXPECT_EQ(ui().messages().last(), msg::kShrinkChooseType);
    EXPECT_EQ(rows().size(), before);
}

TEST_F(ShrinkTest, MovingBarCyclesSeventeenFrames) {
    shared().suoShuiTimerAt = 0;
    QStringList seen;
    for (int i = 0; i < 17; ++i) seen << TimerSuosuijinxingzong_Timer();
    EXPECT_EQ(seen[0], QStringLiteral("      >>>>"));
    EXPECT_EQ(seen[16], QStringLiteral("     >>>>>"));  // back to the first frame
    EXPECT_EQ(seen.filter(QStringLiteral(">>>>      ")).size(), 3);
    EXPECT_EQ(ui().lines().last(), QStringLiteral("SET LabelJindu.text =      >>>>>"));
}

}  // namespace
}  // namespace dovrex::test
