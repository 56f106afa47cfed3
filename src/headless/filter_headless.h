#pragma once

namespace dovrex {

class HeadlessRunner;
struct HeadlessArgs;

// The headless runner's commands of the filters (see docs/headless.md).
bool headless_HistoryFilter(HeadlessRunner& r,
                            const HeadlessArgs& a);  // history-filter on|off [<low> <high> <match>]
bool headless_Backtest(HeadlessRunner& r, const HeadlessArgs& a);     // backtest <from> <to>
bool headless_Tolerance(HeadlessRunner& r, const HeadlessArgs& a);    // tolerance <k>
bool headless_GroupPreset(HeadlessRunner& r, const HeadlessArgs& a);  // group-preset [<k> <item>]

}  // namespace dovrex
