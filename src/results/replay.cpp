#include "results/replay.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <random>

#include "domain/condition_catalogue.h"
#include "filters/backtest.h"
#include "filters/condition_store.h"
#include "pipeline/shrink.h"
#include "results/prize_check.h"
#include "screen/prepared.h"
#include "screen/shared_state.h"

namespace dovrex {

namespace {

long long choose(int n, int k) {
    if (k < 0 || k > n) return 0;
    long long c = 1;
    for (int i = 1; i <= k; ++i) c = c * (n - k + i) / i;
    return c;
}

template <typename T>
std::vector<T> pick(const std::vector<T>& from, const std::vector<int>& indices) {
    std::vector<T> out;
    out.reserve(indices.size());
    for (int i : indices) out.push_back(from[size_t(i)]);
    return out;
}

// The value below which a share q of the sorted values lies, between neighbours.
double quantile(const std::vector<double>& sorted, double q) {
    if (sorted.empty()) return 0;
    const double at = q * double(sorted.size() - 1);
    const size_t lo = size_t(std::floor(at));
    const size_t hi = std::min(lo + 1, sorted.size() - 1);
    return sorted[lo] + (sorted[hi] - sorted[lo]) * (at - double(lo));
}

void spread(std::vector<double> values, double& mean, double& low, double& high) {
    if (values.empty()) return;
    double sum = 0;
    for (double v : values) sum += v;
    mean = sum / double(values.size());
    std::sort(values.begin(), values.end());
    low = quantile(values, 0.05);
    high = quantile(values, 0.95);
}

}  // namespace

const std::array<long long, 7>& tier_TicketCounts() {
    static const std::array<long long, 7> counts = [] {
        std::array<long long, 7> c{};
        for (int red = 0; red <= kRedsPerTicket; ++red)
            for (int blue = 0; blue <= 1; ++blue)
                c[size_t(prize_Tier(red, blue))] += choose(kRedsPerTicket, red) *
                                                    choose(kRedCount - kRedsPerTicket, kRedsPerTicket - red) *
                                                    (blue ? 1 : kBlueCount - 1);
        return c;
    }();
    return counts;
}

int ReplayDraw::bestTier() const {
    for (int tier = 1; tier <= 6; ++tier)
        if (tiers[size_t(tier)] > 0) return tier;
    return 0;
}

ReplaySettings replay_DefaultSettings() {
    ReplaySettings s;
    const int t = get_GuoLvTiaoJian(kShrinkTypeId);
    s.shrink.t = t >= 3 && t <= 6 ? t : 7;
    s.shrink.optimised = shrink_Optimised();
    return s;
}

ReplayTickets replay_Tickets(IssueNumber issue, const ReplaySettings& settings,
                             const std::function<bool()>& stopped) {
    ReplayTickets out;
    const KeepJudgingState keep;
    SpaceResult space =
        filter_Space(issue, kTicketLimit, [&](long long, long long) { return stopped && stopped(); });
    out.space = space.space;
    out.kept = space.kept;
    if (space.stopped) {
        out.stopped = true;
        return out;
    }
    // 第1步 refuses to write more tickets than the limit: that draw could not be played this way.
    if (space.kept > kTicketLimit) {
        out.overLimit = true;
        return out;
    }
    bool shrinkStopped = false;
    std::vector<SpaceTicket> tickets = pick(
        space.tickets, shrink_HeldTickets(space.tickets, issue, settings.shrink, stopped, &shrinkStopped));
    if (shrinkStopped) {
        out.stopped = true;
        return out;
    }
    out.tickets = pick(tickets, select_HeldTickets(tickets, issue, settings.select));
    return out;
}

ReplayResult run_Replay(IssueNumber from, IssueNumber to, const ReplaySettings& settings,
                        const std::function<bool(int, int)>& progress) {
    ReplayResult r;
    QList<ReplayDraw> draws;
    {
        Prepared q(
            QStringLiteral("SELECT 期号,红球1,红球2,红球3,红球4,红球5,红球6,蓝球 FROM 历史记录 "
                           "WHERE 期号>=? AND 期号<=? ORDER BY 期号 ASC"));
        q.bind(1, std::min(from, to)).bind(2, std::max(from, to));
        while (q.next()) {
            ReplayDraw& d = draws.emplace_back();
            d.issue = q.intColumn(0);
            for (int i = 1; i <= kRedsPerTicket; ++i) d.reds[size_t(i)] = q.intColumn(i);
            d.blue = q.intColumn(7);
        }
    }
    const int total = int(draws.size());
    for (int done = 0; done < total; ++done) {
        ReplayDraw d = draws[done];
        const auto stopped = [&] { return progress && progress(done, total); };
        if (stopped()) {
            r.stopped = true;
            break;
        }
        const ReplayTickets played = replay_Tickets(d.issue, settings, stopped);
        if (played.stopped) {
            r.stopped = true;
            break;
        }
        d.kept = played.kept;
        d.overLimit = played.overLimit;
        d.tickets = int(played.tickets.size());
        const std::uint64_t drawn = ballMask(d.reds, d.blue);
        const std::uint64_t blueBits = ~((std::uint64_t(1) << (kRedCount + 1)) - 1);
        for (const SpaceTicket& t : played.tickets) {
            const std::uint64_t hit = ballMask(t.reds, t.blue) & drawn;
            ++d.tiers[size_t(prize_Tier(std::popcount(hit & ~blueBits), std::popcount(hit & blueBits)))];
        }
        d.tiers[0] = 0;
        const PrizeMoney money = prize_Money(d.issue, d.tiers, d.tickets);
        d.prize = money.prize;
        d.cost = money.cost;
        d.won = money.total;
        d.unknown = money.unknown;
        r.cost += d.cost;
        r.won += d.won;
        r.unknown = r.unknown || d.unknown;
        r.overLimit += d.overLimit;
        const int best = d.bestTier();
        if (best > 0 && (r.bestTier == 0 || best < r.bestTier)) r.bestTier = best;
        r.draws.append(d);
    }
    if (progress) progress(int(r.draws.size()), total);
    replay_RandomPlayer(r, settings.seed, settings.trials);
    return r;
}

void replay_RandomPlayer(ReplayResult& r, quint64 seed, int trials) {
    const auto& counts = tier_TicketCounts();
    const int n = int(r.draws.size());
    double ticketsBought = 0, expectedWon = 0;
    for (const ReplayDraw& d : r.draws)
        for (int tier = 1; tier <= 6; ++tier)
            if (d.prize[size_t(tier)] >= 0)
                expectedWon += double(d.tickets) * double(counts[size_t(tier)]) / double(kAllTickets) *
                               double(d.prize[size_t(tier)]);
    for (const ReplayDraw& d : r.draws) ticketsBought += d.tickets;
    r.expectedReturn = ticketsBought > 0 ? expectedWon / (ticketsBought * kTicketPrice) : 0;
    if (trials < 1 || n == 0) return;

    // A ticket uniform over the whole game falls in tier k with the chance counts[k] / kAllTickets
    // against any draw, independently of the other tickets; so the tiers of n such tickets are one
    // multinomial draw, taken here tier by tier as binomials of what is left.
    std::mt19937_64 random(seed);
    std::vector<std::vector<double>> cumulative{size_t(n), std::vector<double>(size_t(trials))};
    std::vector<double> returns(static_cast<size_t>(trials));
    for (int trial = 0; trial < trials; ++trial) {
        double won = 0;
        for (int i = 0; i < n; ++i) {
            const ReplayDraw& d = r.draws[i];
            long long left = d.tickets;
            long long rest = kAllTickets;
            for (int tier = 1; tier <= 6 && left > 0; ++tier) {
                const long long c = counts[size_t(tier)];
                std::binomial_distribution<long long> hits(left, double(c) / double(rest));
                const long long k = hits(random);
                if (d.prize[size_t(tier)] >= 0) won += double(k) * double(d.prize[size_t(tier)]);
                left -= k;
                rest -= c;
            }
            cumulative[size_t(i)][size_t(trial)] = won;
        }
        returns[size_t(trial)] = r.cost > 0 ? won / double(r.cost) : 0;
    }
    for (int i = 0; i < n; ++i) {
        ReplayDraw& d = r.draws[i];
        spread(cumulative[size_t(i)], d.randomMean, d.randomLow, d.randomHigh);
    }
    spread(returns, r.randomMean, r.randomLow, r.randomHigh);
}

QString replay_Verdict(const ReplayResult& r) {
    const int n = int(r.draws.size());
    if (r.cost == 0) return QStringLiteral("这 %1 期里这套方法没有投注，无从与随机投注比较。").arg(n);
    const QString head = QStringLiteral("这 %1 期里这套方法投入 %2 元、中奖 %3 元，回报率 %4，")
                             .arg(n)
                             .arg(r.cost)
                             .arg(r.won)
                             .arg(percentText(r.routineReturn()));
    const QString expected =
        QStringLiteral("（随机一注的期望回报率为 %1）").arg(percentText(r.expectedReturn));
    const double ret = r.routineReturn();
    if (ret > r.randomHigh)
        return head +
               QStringLiteral(
                   "高于同样注数随机投注的 95% 分位 %1：这些期里它好于随机选号，但这也可能只是运气%2。")
                   .arg(percentText(r.randomHigh), expected);
    if (ret < r.randomLow)
        return head + QStringLiteral("低于同样注数随机投注的 5% 分位 %1：这些期里它不如随机选号%2。")
                          .arg(percentText(r.randomLow), expected);
    return head +
           QStringLiteral("落在同样注数随机投注的 5%–95% 区间（%1–%2）之内：与随机选号没有可分辨的差别%3。")
               .arg(percentText(r.randomLow), percentText(r.randomHigh), expected);
}

QByteArray replay_Csv(const ReplayResult& r) {
    QList<QStringList> rows{
        QStringLiteral(
            "期号,开奖号码,过滤后注数,投注注数,成本(元),一等奖,二等奖,三等奖,四等奖,五等奖,六等奖,"
            "中奖金额(元),奖金未知,累计成本(元),累计中奖(元),随机累计中奖均值(元),随机5%(元),随机95%(元)")
            .split(u',')};
    qint64 cost = 0, won = 0;
    for (const ReplayDraw& d : r.draws) {
        cost += d.cost;
        won += d.won;
        QStringList balls;
        for (int i = 1; i <= kRedsPerTicket; ++i) balls << QString::number(d.reds[size_t(i)]);
        QStringList cells{QString::number(d.issue),
                          balls.join(u' ') + QStringLiteral("+") + QString::number(d.blue),
                          d.overLimit ? QStringLiteral("超过%1").arg(kTicketLimit) : QString::number(d.kept),
                          QString::number(d.tickets), QString::number(d.cost)};
        for (int tier = 1; tier <= 6; ++tier) cells << QString::number(d.tiers[size_t(tier)]);
        cells << QString::number(d.won) << (d.unknown ? msg::kPrizeUnknown : QString())
              << QString::number(cost) << QString::number(won) << QString::number(d.randomMean, 'f', 1)
              << QString::number(d.randomLow, 'f', 1) << QString::number(d.randomHigh, 'f', 1);
        rows << cells;
    }
    QStringList total(rows.front().size());
    total[0] = QStringLiteral("合计");
    total[4] = QString::number(r.cost);
    total[11] = QString::number(r.won);
    total[12] = r.unknown ? msg::kPrizeUnknown : QString();
    rows << total;
    rows << QStringList{QStringLiteral("回报率"),       percentText(r.routineReturn()),
                        QStringLiteral("随机均值"),     percentText(r.randomMean),
                        QStringLiteral("随机5%"),       percentText(r.randomLow),
                        QStringLiteral("随机95%"),      percentText(r.randomHigh),
                        QStringLiteral("随机一注期望"), percentText(r.expectedReturn)};
    return csvBytes(rows);
}

}  // namespace dovrex
