#pragma once

#include <QString>
#include <functional>
#include <vector>

#include "domain/game.h"
#include "pipeline/ticket_init.h"

namespace dovrex {

// 大底: the tickets the stored picks expand to, judged in memory by the switched-on conditions of
// the filter run before anything is written.

struct SpaceTicket {
    Reds reds{};
    int blue = 0;
    // 缩水公式 by the ticket's place in the full expansion; 0 when the picks use no formula
    int formula = kOutsideFormula;
};

struct SpaceRemoval {
    QString label;          // as the filter run's log names the condition
    long long removed = 0;  // the run's count: tickets it removed (with a tolerance, tickets it failed)
    long long passed = -1;  // tickets of the whole space it keeps on its own; -1 when not measured
};

struct SpaceResult {
    long long space = 0;  // tickets the stored picks expand to
    long long redSets = 0;
    long long kept = 0;                   // survivors of every switched-on condition (容错 included)
    std::vector<SpaceTicket> tickets;     // the survivors in the order 第1步 + 第2步 give them; filled
                                          // only when kept <= limit
    std::vector<SpaceRemoval> removedBy;  // per switched-on condition, in the run's order
    int tolerance = 0;
    bool stopped = false;
};

// Progress of a pass over the space: red sets done of all; returns true to stop. Called from the
// calling thread only, often enough to keep a window live.
using SpaceProgress = std::function<bool(long long redSetsDone, long long redSetsTotal)>;

// Expands the stored picks for `issue` and applies the filter run's switched-on conditions to each
// ticket in memory. Writes nothing. With `eachCondition` every condition judges every ticket and
// `passed` of each is measured (slower when the conditions remove much).
SpaceResult filter_Space(IssueNumber issue, long long limit, const SpaceProgress& progress = {},
                         bool eachCondition = false);

}  // namespace dovrex
