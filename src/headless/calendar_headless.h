#pragma once

namespace dovrex {

class HeadlessRunner;
struct HeadlessArgs;

// The headless runner's commands of the calendar (see docs/headless.md). None needs a store.
bool headless_Lunar(HeadlessRunner& r, const HeadlessArgs& a);    // lunar <yyyy/mm/dd>
bool headless_Almanac(HeadlessRunner& r, const HeadlessArgs& a);  // almanac <year>
bool headless_Bazi(HeadlessRunner& r, const HeadlessArgs& a);     // bazi <yyyy/mm/dd> <hh:mm>

}  // namespace dovrex
