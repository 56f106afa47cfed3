#pragma once

#include "domain/game.h"

namespace dovrex {

// The range of 历史数据过滤 as draws are added: a range that ended at the newest draw
// (`newestBefore`, taken before draws were added) ends at the newest draw now and holds as many
// draws as before. Any other range is the player's own and stays.
void follow_NewestDraw(IssueNumber newestBefore);

}  // namespace dovrex
