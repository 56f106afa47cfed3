#pragma once

#include <array>
#include <vector>

#include "domain/game.h"

namespace dovrex {

// What 第1步 expands from the pick rows of 过滤条件: the reds (Value 1 or more), the red bankers (2)
// and the blues. A blue banker is the only blue, whatever other blue rows say.
struct PickSet {
    bool red[kRedCount + 1] = {};
    bool banker[kRedCount + 1] = {};
    int reds = 0;
    int bankers = 0;
    std::vector<int> blues;
    long long tickets = 0;  // the tickets the picks expand to

    int drags() const { return reds - bankers; }
    // With no red bankers and 10..20 red drags the shrink formula of that size marks its tickets.
    bool usesFormula() const { return bankers == 0 && drags() >= 10 && drags() <= 20; }
};

// Read through guoLvShuZu, which is left holding the blue rows (as 第1步 leaves it).
PickSet read_PickSet();

// Xuhao of the shrink formula for `drags` red numbers, ascending, with one spare 0 behind (no 序号
// is 0).
std::vector<int> read_ShrinkFormula(int drags);

// The red sets the picks expand to, in the order of the expansion (lexicographic), each holding
// every banker; six reds ascending per set.
using RedSet = std::array<unsigned char, kRedsPerTicket>;
std::vector<RedSet> expand_RedSets(const PickSet& picks);

}  // namespace dovrex
