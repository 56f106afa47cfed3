#pragma once

namespace dovrex {

class HeadlessRunner;
struct HeadlessArgs;

// The headless runner's commands of the picks, the conditions and the pipeline (see docs/headless.md).
bool headless_Pick(HeadlessRunner& r, const HeadlessArgs& a);        // pick <value> <ids>
bool headless_Click(HeadlessRunner& r, const HeadlessArgs& a);       // click <index>
bool headless_Mode(HeadlessRunner& r, const HeadlessArgs& a);        // mode red|blue 1|2
bool headless_ClearPicks(HeadlessRunner& r, const HeadlessArgs& a);  // clear-picks red|blue
bool headless_Picks(HeadlessRunner& r, const HeadlessArgs& a);       // picks
bool headless_Condition(HeadlessRunner& r, const HeadlessArgs& a);   // condition <value> <ids>
bool headless_Switch(HeadlessRunner& r, const HeadlessArgs& a);      // switch <n...> on|off
bool headless_Init(HeadlessRunner& r, const HeadlessArgs& a);        // init <issue>
bool headless_Filter(HeadlessRunner& r, const HeadlessArgs& a);      // filter [<issue>]
bool headless_Delete(HeadlessRunner& r, const HeadlessArgs& a);      // delete [<issue>]
bool headless_Command(HeadlessRunner& r, const HeadlessArgs& a);     // command <index>
bool headless_Space(HeadlessRunner& r, const HeadlessArgs& a);       // space <0|1>
bool headless_SpaceCount(HeadlessRunner& r, const HeadlessArgs& a);  // space-count [<issue>]

}  // namespace dovrex
