#include <gtest/gtest.h>

#include <random>

#include "filters/backtest.h"
#include "filters/condition_store.h"
#include "filters/filter_run.h"
#include "history/history_queries.h"
#include "pipeline/selection.h"
#include "pipeline/shrink.h"
#include "pipeline/ticket_init.h"
#include "results/prize_check.h"
#include "results/replay.h"
#include "support/headless_script.h"
#include "support/random_routine.h"
#include "support/table_rows.h"
#include "support/test_support.h"

namespace dovrex::test {
namespace {

// The rows a replay must leave as they were (and the condition array), one line each.
std::string playerState() {
    QStringList rows;
    for (const char16_t* table : {u"过滤条件", u"过滤条件使用情况", u"历史数据过滤", u"日志表"})
        rows << tableRows(store(), QString::fromUtf16(table));
    for (int v : shared().guoLvShuZu) rows << QString::number(v);
    return rows.join(u'\n').toStdString();
}

// One line a ticket: the replay's, and those 日志表 holds for the issue in 序号 order.
QStringList ticketsText(const std::vector<SpaceTicket>& tickets) {
    QStringList lines;
    for (const SpaceTicket& t : tickets) {
        QStringList balls;
        for (int i = 1; i <= 6; ++i) balls << QString::number(t.reds[size_t(i)]);
        lines << (balls << QString::number(t.blue)).join(u'|');
    }
    return lines;
}
QStringList storedText(IssueNumber issue) {
    return queryLines(
        store(),
        QStringLiteral("select 红球1,红球2,红球3,红球4,红球5,红球6,蓝球 from 日志表 where 期号=? "
                       "order by 序号"),
        {issue});
}

using ReplayTest = ShippedStoreTest;

// Each draw's tickets are those that 第1步 + 第2步 + 第3步 + 精选 leave in 日志表 for its issue, its
// money what 开奖核对 finds for them, and the replay changes no ticket, condition or pick.
TEST_F(ReplayTest, EachDrawIsWhatThePipelineOnTheTableLeavesAndPays) {
    std::mt19937 random(31);
    const IssueNumber latest = latest_QiHao();
    int shrunk = 0, selected = 0, won = 0;
    for (int trial = 0; trial < 20; ++trial) {
        const IssueNumber issue = prev_QiHao(latest, int(random() % 300));
        const RandomRoutine routine = randomRoutine(random, issue);
        ReplaySettings settings;
        settings.shrink.t = routine.shrinkType;
        settings.select = routine.select;
        settings.trials = 0;
        const std::string before = playerState();
        const ReplayResult r = run_Replay(issue, issue, settings);
        const ReplayTickets played = replay_Tickets(issue, settings);
        EXPECT_EQ(playerState(), before) << "trial " << trial;
        ASSERT_EQ(r.draws.size(), 1);

        init_TouZhu(issue);
        run_GuoLv(issue);
        if (routine.shrinkType < 7) shrunk += run_SuoShui(routine.shrinkType, issue) > 0;
        if (routine.select > 0) selected += (run_JingXuan(issue, routine.select), 1);
        ASSERT_EQ(ticketsText(played.tickets), storedText(issue)) << "trial " << trial << " issue " << issue;

        check_KaiJiang(issue);
        const PrizeMoney money = prize_MoneyOfChecked(issue);
        const ReplayDraw& d = r.draws[0];
        EXPECT_EQ(std::tuple(d.tickets, d.tiers, d.won, d.cost),
                  std::tuple(int(played.tickets.size()), money.tickets, money.total, money.cost))
            << "trial " << trial;
        won += d.won > 0;
    }
    EXPECT_GT(shrunk, 3);
    EXPECT_GT(selected, 2);
    EXPECT_GT(won, 2);
}

// Stop keeps the draws done; the headless command prints one line a draw and the totals.
TEST(ReplayHeadless, StopKeepsTheDrawsDoneAndTheCommandPrintsThem) {
    SharedStateGuard guard;
    TempFolders folders;
    const QString file = folders.path(QStringLiteral("replay.dat"));
    IssueNumber from = 0, to = 0;
    {
        ScopedStore shipped(ScopedStore::Kind::Shipped, file);
        switchAllOff();
        set_GuoLvTiaoJian(kShrinkTypeId, 7);
        resetRedPicks();
        resetBluePicks();
        set_GuoLvFanWei(1, 8, 1);
        set_GuoLvTiaoJian(101, 1);
        to = latest_QiHao();
        from = prev_QiHao(to, 4);
        const ReplayResult stopped =
            run_Replay(from, to, replay_DefaultSettings(), [](int done, int) { return done >= 2; });
        EXPECT_TRUE(stopped.stopped);
        EXPECT_EQ(stopped.draws.size(), 2);
        EXPECT_EQ(stopped.cost, 2 * 28 * kTicketPrice);
    }
    const QStringList out =
        runHeadless(QStringLiteral("open-store %1\nreplay %2 %3 9\n").arg(file).arg(from).arg(to));
    const int at = int(out.indexOf(QRegularExpression(
        QStringLiteral("^draw %1 tickets 28 cost 56 won \\d+ tiers \\d+(,\\d+){5}$").arg(from))));
    ASSERT_GE(at, 0) << out.join(u'\n').toStdString();
    EXPECT_TRUE(out.value(at + 5).startsWith(QStringLiteral("total cost 280 won ")));
    EXPECT_TRUE(out.value(at + 6).contains(QRegularExpression(QStringLiteral("^random mean [\\d.]+ band "))));
}

// How many of the 17,721,088 tickets reach each tier against one draw: none; 6 + 1; 6 + 0 (15);
// 5 + 1 (6 x 27); 5 + 0 and 4 + 1; 4 + 0 and 3 + 1; 2, 1 or 0 reds + 1.
TEST(ReplayRandomPlayer, TierCountsAreThoseOfEveryTicketAgainstADraw) {
    EXPECT_EQ(tier_TicketCounts(), (std::array<long long, 7>{16532100, 1, 15, 162, 7695, 137475, 1043640}));
}

// The random player is repeatable for a seed, and its mean return agrees with the exact expectation
// within a small part of its band, for many tickets a draw and for few.
TEST(ReplayRandomPlayer, IsRepeatableAndMeetsTheExactExpectation) {
    for (const auto& [draws, tickets] : {std::pair{60, 2000}, {30, 20}}) {
        ReplayResult r;
        for (int i = 0; i < draws; ++i) {
            ReplayDraw& d = r.draws.emplace_back();
            d.tickets = tickets;
            d.prize = kFixedPrize;
            d.cost = qint64(tickets) * kTicketPrice;
            r.cost += d.cost;
        }
        ReplayResult again = r, other = r;
        replay_RandomPlayer(r, 7, 200);
        replay_RandomPlayer(again, 7, 200);
        replay_RandomPlayer(other, 8, 200);
        EXPECT_EQ(std::pair(r.randomMean, r.draws.back().randomHigh),
                  std::pair(again.randomMean, again.draws.back().randomHigh));
        EXPECT_NE(r.randomMean, other.randomMean);
        EXPECT_NEAR(r.expectedReturn, 8617950.0 / kAllTickets / kTicketPrice, 1e-12);
        EXPECT_TRUE(r.randomLow <= r.expectedReturn && r.expectedReturn <= r.randomHigh);
        // The mean of 200 players strays from the expectation by about a thirtieth of the band.
        EXPECT_NEAR(r.randomMean, r.expectedReturn, (r.randomHigh - r.randomLow) / 8) << tickets;
    }
}

}  // namespace
}  // namespace dovrex::test
