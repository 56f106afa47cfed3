#pragma once

#include "domain/game.h"

namespace dovrex {

// After a shrink: how many of the remaining tickets of `issue` hold each red number, appended to the
// operation log (numbers held by none are left out). A Stop leaves the log without the table.
void show_HaoMaFenBu(IssueNumber issue);

}  // namespace dovrex
