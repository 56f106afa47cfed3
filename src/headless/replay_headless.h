#pragma once

namespace dovrex {

class HeadlessRunner;
struct HeadlessArgs;

// replay <from> <to> [<seed>] [select <n>] [budget <seconds>]: 回测收益 over the draws of a range, one
// line a draw, then the totals, the random player and the exact expectation (see docs/headless.md).
bool headless_Replay(HeadlessRunner& r, const HeadlessArgs& a);

}  // namespace dovrex
