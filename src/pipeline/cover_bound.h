#pragma once

#include <algorithm>
#include <functional>
#include <vector>

#include "pipeline/cover_problem.h"

namespace dovrex {

// What any cover of a problem must keep at least, with a proof behind each figure. Both count the
// fixed tickets (and tickets too small for any other to cover them), which every cover keeps.
//  - packing: tickets owed the guarantee no two of which any one ticket covers together; each needs
//    a kept ticket of its own.
//  - fractional: a feasible solution of the dual of the covering's linear relaxation (a weight on
//    each ticket owed the guarantee, the weights a candidate covers summing to at most 1); its sum,
//    rounded up, bounds the relaxation and so every cover.
// `late` is asked now and then; when it says yes the passes end early and the figures stay valid,
// only weaker (a partial packing is still a packing; the fractional one is then left at 0).
//  - counting: the tickets owed the guarantee over the most of them any one candidate covers
//    (counted from the subsets of balls, without visiting neighbours: cheap on any set).
struct CoverBound {
    int counting = 0;
    int packing = 0;
    int fractional = 0;
    bool complete = true;
    int value() const { return std::max({counting, packing, fractional}); }
};
CoverBound lowerBound_SuoShui(const CoverProblem& problem, NeighbourIndex& index,
                              const std::function<bool()>& late = {});
// The same with an index of its own, within `budgetMs` (or until `stopped` says yes).
CoverBound lowerBound_SuoShui(const CoverProblem& problem, int budgetMs,
                              const std::function<bool()>& stopped = {});

// Sets no larger than this many tickets owed the guarantee (and as many candidates) are searched
// exhaustively; their adjacency is held as bit sets.
constexpr int kExactCoverLimit = 2500;
bool exactFits(const CoverProblem& problem);

// Branch and bound over the candidates of the ticket hardest to cover, pruned by a packing bound
// at every node. `incumbent` is a valid cover (or empty); the result is the smallest cover found,
// in scan order, fixed tickets included, and `proven` says that the search ended: no smaller cover
// exists. A search cut short by `late` returns its best without proof.
struct ExactCover {
    std::vector<int> kept;
    bool proven = false;
};
ExactCover exact_SuoShui(const CoverProblem& problem, NeighbourIndex& index,
                         const std::vector<int>& incumbent, const std::function<bool()>& late = {});

}  // namespace dovrex
