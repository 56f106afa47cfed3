#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <array>
#include <functional>
#include <vector>

#include "domain/game.h"
#include "pipeline/space_filter.h"
#include "pipeline/ticket_passes.h"

namespace dovrex {

// 回测收益: the player's whole routine (picks, conditions, 容错, shrink, 精选) replayed on past draws
// in money, beside a player who buys as many tickets at random.

// Every ticket of the game: C(33, 6) × 16.
inline constexpr long long kAllTickets = 17721088;
// How many of all tickets reach each prize tier against any one draw (index = tier, 0 = no prize).
const std::array<long long, 7>& tier_TicketCounts();

struct ReplaySettings {
    ShrinkChoice shrink;  // t 7 keeps every ticket
    int select = 0;       // 精选 N after the shrink; 0 for none
    quint64 seed = 1;     // of the random player
    int trials = 200;     // random players
};
// The shrink as the ticket page has it set (保N型, 优化缩水), 1 s a draw for 优化缩水, no 精选.
ReplaySettings replay_DefaultSettings();

// The routine's tickets for one issue, as 第1步 + 第2步 + 第3步 (+ 精选) would leave them.
struct ReplayTickets {
    long long space = 0;     // tickets the picks expand to
    long long kept = 0;      // left by the conditions
    bool overLimit = false;  // more than kTicketLimit left: the routine cannot be played that draw
    std::vector<SpaceTicket> tickets;
    bool stopped = false;
};
ReplayTickets replay_Tickets(IssueNumber issue, const ReplaySettings& settings,
                             const std::function<bool()>& stopped = {});

struct ReplayDraw {
    IssueNumber issue = 0;
    Reds reds{};
    int blue = 0;
    long long kept = 0;  // left by the conditions, before the shrink
    bool overLimit = false;
    int tickets = 0;
    std::array<int, 7> tiers{};     // tickets per tier 1..6
    std::array<qint64, 7> prize{};  // prize of one ticket per tier, -1 not known
    qint64 cost = 0;
    qint64 won = 0;        // of the known prizes
    bool unknown = false;  // a winning tier without a known prize (奖金未知)
    // The random players' money won up to this draw: mean and the 5 % and 95 % points.
    double randomMean = 0, randomLow = 0, randomHigh = 0;
    int bestTier() const;  // 0 when nothing was won
};

struct ReplayResult {
    QList<ReplayDraw> draws;  // oldest first
    qint64 cost = 0;
    qint64 won = 0;
    bool unknown = false;
    int bestTier = 0;
    double expectedReturn = 0;  // of one random ticket over these draws, from the prizes known
    double randomMean = 0, randomLow = 0, randomHigh = 0;  // the random players' return
    int overLimit = 0;                                     // draws the routine could not be played
    bool stopped = false;
    double routineReturn() const { return cost > 0 ? double(won) / double(cost) : 0.0; }
};

// Replays the draws of `from`..`to`. `progress(draws done, draws)` is called often (also inside a
// draw) and may pump the window; true stops, keeping the draws done. Writes nothing: the tickets,
// conditions and picks stay as they were.
ReplayResult run_Replay(IssueNumber from, IssueNumber to, const ReplaySettings& settings,
                        const std::function<bool(int, int)>& progress = {});

// The random player beside the draws (their tickets and prizes): `trials` players, each buying the
// same number of tickets as the routine at each draw, every ticket uniform over all of the game.
// Fills the random fields of the draws and of the result, and the exact expectation.
void replay_RandomPlayer(ReplayResult& r, quint64 seed, int trials);

// The one sentence that places the routine against the random band.
QString replay_Verdict(const ReplayResult& r);
// One line a draw and the totals, UTF-8 with a byte order mark.
QByteArray replay_Csv(const ReplayResult& r);

}  // namespace dovrex
