#include <gtest/gtest.h>

#include "filters/filter_run.h"
#include "support/random_routine.h"
#include "support/test_support.h"

namespace dovrex::test {
namespace {

// The shipped history: the history-relative conditions need the draws before each issue.
class BacktestTest : public ShippedStoreTest {
  protected:
    // What a real filter run of the draw's own issue leaves of the drawn ticket: 1 or 0.
    static int survivesRealRun(const BacktestDraw& d) {
        store_Execute(QStringLiteral("DELETE FROM 日志表"));
        addTicket(d.issue, d.reds, d.blue);
        run_GuoLv(d.issue);
        return intScalar(QStringLiteral("select count(*) from 日志表 where 期号=?"), {d.issue});
    }
};

// The back-test and the filter run are one set of rules: a draw the back-test passes survives a
// real run of its issue, one it fails is removed; with a tolerance of k a draw failing exactly k
// conditions stays and one failing k + 1 goes.
TEST_F(BacktestTest, ItsVerdictIsTheFilterRunsOnTheDrawnTicket) {
    std::mt19937 random(2026);
    std::vector<IssueNumber> issues;
    for (auto c = store_Query(QStringLiteral("select 期号 from 历史记录 order by 期号")); !c->eof();
         c->moveNext())
        issues.push_back(c->intValue(0));
    ASSERT_GT(issues.size(), 400u);
    int failedSome = 0, tolerated = 0;
    for (int trial = 0; trial < 36; ++trial) {
        const size_t at = 20 + random() % (issues.size() - 20);
        const IssueNumber last = issues[at];
        const IssueNumber first = issues[at - random() % 3];
        randomConditions(random, first);
        set_FilterTolerance(0);
        const ConditionArray before = shared().guoLvShuZu;
        const BacktestResult r = run_Backtest(first, last);
        EXPECT_EQ(shared().guoLvShuZu, before) << "the array is put back";
        ASSERT_FALSE(r.draws.isEmpty());
        for (const BacktestDraw& d : r.draws) {
            EXPECT_EQ(survivesRealRun(d), d.failed.isEmpty() ? 1 : 0)
                << "trial " << trial << " draw " << d.issue << " failed "
                << d.failed.join(u',').toStdString();
            if (d.failed.isEmpty()) continue;
            ++failedSome;
            const int k = int(d.failed.size());
            if (k > kFilterToleranceMax) continue;
            set_FilterTolerance(k);
            EXPECT_EQ(survivesRealRun(d), 1) << "trial " << trial << " k " << k;
            set_FilterTolerance(k - 1);
            EXPECT_EQ(survivesRealRun(d), 0) << "trial " << trial << " k " << k - 1;
            set_FilterTolerance(0);
            ++tolerated;
        }
    }
    EXPECT_GT(failedSome, 5);
    EXPECT_GT(tolerated, 5);
}

// The tables of a range: each condition's passes, longest run of misses and draws since its last
// miss, and the survival count with the tolerance; the CSV files open in a spreadsheet.
TEST_F(BacktestTest, TheConditionTableCountsRunsOfMissesAndTheCsvCarriesABom) {
    switchAllOff();
    set_ShiYongQingKuang(1, 1);  // 和值 within 100..130 only
    set_GuoLvFanWei(1000, 1183, 0);
    set_GuoLvFanWei(1100, 1130, 1);
    const IssueNumber to = latest_QiHao();
    const IssueNumber from = prev_QiHao(to, 29);
    const BacktestResult r = run_Backtest(from, to);
    ASSERT_EQ(r.draws.size(), 30);
    ASSERT_EQ(r.conditions.size(), 1);
    const BacktestCondition& c = r.conditions[0];
    int passed = 0, run = 0, longest = 0, since = -1;
    for (int i = 0; i < r.draws.size(); ++i) {
        int sum = 0;
        for (int k = 1; k <= 6; ++k) sum += r.draws[i].reds[size_t(k)];
        const bool ok = sum >= 100 && sum <= 130;
        EXPECT_EQ(r.draws[i].failed.isEmpty(), ok) << r.draws[i].issue;
        passed += ok;
        run = ok ? 0 : run + 1;
        longest = std::max(longest, run);
        if (!ok) since = int(r.draws.size()) - 1 - i;
    }
    EXPECT_EQ(std::tuple(c.passed, c.total, c.longestMissRun, c.sinceLastMiss, r.survived),
              std::tuple(passed, 30, longest, since, passed));
    const QByteArray csv = backtest_ConditionsCsv(r);
    EXPECT_TRUE(csv.startsWith("\xEF\xBB\xBF"));
    EXPECT_TRUE(QString::fromUtf8(csv).contains(QStringLiteral("通过率")));
    EXPECT_EQ(backtest_DrawsCsv(r).count("\r\n"), 31);
}

}  // namespace
}  // namespace dovrex::test
