// 大底: the whole expansion judged in memory must give exactly what writing every ticket and
// filtering the rows gives, and its counts must agree with counts made another way.

#include <random>

#include "domain/condition_catalogue.h"
#include "filters/backtest.h"
#include "filters/condition_editing.h"
#include "filters/condition_store.h"
#include "filters/filter_run.h"
#include "history/history_queries.h"
#include "pipeline/space_init.h"
#include "screen/ticket_page.h"
#include "support/table_rows.h"
#include "support/test_support.h"

namespace dovrex::test {
namespace {

constexpr IssueNumber kIssue = 2026150;  // after every shipped draw

class SpaceFilterTest : public ShippedStoreTest {
  protected:
    // 期号, 序号, reds, blue, 缩水公式 of every row, in the table's order.
    static QStringList rows() {
        return queryLines(store(), QStringLiteral("select 期号,序号,红球1,红球2,红球3,红球4,红球5,红球6,蓝球,"
                                                  "缩水公式 from 日志表 order by ID"));
    }
    static void pickAll() {
        set_GuoLvFanWei(1, kRedCount, 1);
        set_GuoLvFanWei(101, 100 + kBlueCount, 1);
    }
    // Random picks that expand to a few thousand tickets, random switches and rows, sometimes the
    // history match and a tolerance.
    void randomScenario(unsigned seed) {
        std::mt19937 rng(seed);
        auto chance = [&](double p) { return std::uniform_real_distribution<>(0, 1)(rng) < p; };
        resetRedPicks();
        resetBluePicks();
        switchAllOff();
        std::vector<int> numbers(kRedCount);
        std::iota(numbers.begin(), numbers.end(), 1);
        std::shuffle(numbers.begin(), numbers.end(), rng);
        const int reds = 7 + int(rng() % 7), bankers = chance(0.3) ? 1 + int(rng() % 2) : 0;
        for (int i = 0; i < reds; ++i) set_GuoLvTiaoJian(numbers[size_t(i)], i < bankers ? 2 : 1);
        for (int b = 0, blues = 1 + int(rng() % 3); b < blues; ++b)
            set_GuoLvTiaoJian(101 + int(rng() % 16), 1);
        for (int n : switchNumbers())
            if (n != kSmartSwitch) set_ShiYongQingKuang(n, chance(0.35) ? 1 : 0);
        for (const ConditionEntry& c : conditionCatalogue())
            for (int id = c.minId; id <= c.maxId; ++id) set_GuoLvTiaoJian(id, chance(0.8) ? 1 : 0);
        if (chance(0.3)) writeHistoryMatch({true, prev_QiHao(kIssue, 200), kIssue, 3 + int(rng() % 4)});
        set_FilterTolerance(seed % 3 == 0 ? 1 + int(rng() % 3) : 0);
    }
};

TEST_F(SpaceFilterTest, WritesExactlyTheRowsOfInitAndFilter) {
    for (unsigned seed = 1; seed <= 54; ++seed) {
        SCOPED_TRACE(seed);
        randomScenario(seed);
        clearTicketTable();
        set_SpaceMode(false);
        init_TouZhu(kIssue);
        run_GuoLv(kIssue);
        const auto expected = rows();
        clearTicketTable();
        set_SpaceMode(true);
        EXPECT_EQ(init_TouZhu(kIssue), int(expected.size()));
        EXPECT_EQ(rows(), expected);
    }
}

// Counted over every six of 33 by number: how many have a sum and an odd count within the ranges.
long long countBySumAndOdds(int sumLo, int sumHi, int oddLo, int oddHi) {
    static long long ways[7][200][7];  // [reds][sum][odds]
    std::memset(ways, 0, sizeof ways);
    ways[0][0][0] = 1;
    for (int n = 1; n <= kRedCount; ++n)
        for (int k = 5; k >= 0; --k)
            for (int s = 0; s + n < 200; ++s)
                for (int o = 0; o < 6; ++o) ways[k + 1][s + n][o + n % 2] += ways[k][s][o];
    long long total = 0;
    for (int s = sumLo; s <= sumHi; ++s)
        for (int o = oddLo; o <= oddHi; ++o) total += ways[6][s][o];
    return total * kBlueCount;
}

TEST_F(SpaceFilterTest, CountsTheWholeSpaceAsAnIndependentCount) {
    const long long drawn = intScalar(QStringLiteral(
        "select count(*) from (select distinct 红球1,红球2,红球3,红球4,红球5,红球6 from 历史记录)"));
    struct Case {
        int sumLo, sumHi, oddLo, oddHi;
        bool history;
    };
    // clang-format off
    const Case cases[] = {{21, 183, 0, 6, false}, {90, 110, 0, 6, false}, {80, 120, 2, 4, false},
                          {21, 183, 0, 6, true}};
    // clang-format on
    pickAll();
    for (const Case& c : cases) {
        switchAllOff();
        set_GuoLvFanWei(1000, 1183, 0);
        set_GuoLvFanWei(1000 + c.sumLo, 1000 + c.sumHi, 1);
        set_GuoLvFanWei(3640, 3649, 0);
        set_GuoLvFanWei(3640 + c.oddLo, 3640 + c.oddHi, 1);
        for (int n : {1, 10}) set_ShiYongQingKuang(n, 1);
        if (c.history) writeHistoryMatch({true, earliest_QiHao(), kIssue, 6});
        const SpaceResult r = filter_Space(kIssue, kTicketLimit);
        EXPECT_EQ(r.space, 17721088);
        const long long expected =
            countBySumAndOdds(c.sumLo, c.sumHi, c.oddLo, c.oddHi) - (c.history ? drawn * kBlueCount : 0);
        EXPECT_EQ(r.kept, expected) << c.sumLo << ".." << c.sumHi;
    }
}

TEST_F(SpaceFilterTest, AStoppedOrRefusedStepChangesNothing) {
    resetBluePicks();
    set_GuoLvFanWei(1, 10, 1);
    set_GuoLvTiaoJian(101, 1);
    init_TouZhu(kIssue);
    const auto before = rows();
    pickAll();
    switchAllOff();
    set_SpaceMode(true);
    shared().tingZhi = 1;
    init_TouZhu(kIssue);
    EXPECT_EQ(rows(), before);
    EXPECT_TRUE(ui().messages().contains(msg::kSpaceStopped));
    init_TouZhu(kIssue);  // every ticket survives: far over the limit
    EXPECT_EQ(rows(), before);
    EXPECT_TRUE(ui().messages().last().contains(QStringLiteral("17,721,088")));
}

}  // namespace
}  // namespace dovrex::test
