#pragma once

namespace dovrex {

class HeadlessRunner;
struct HeadlessArgs;

// The headless runner's commands of the draw history (see docs/headless.md).
bool headless_DrawAdd(HeadlessRunner& r, const HeadlessArgs& a);  // draw-add <issue> <date> <6 reds> <blue>
bool headless_DrawDelete(HeadlessRunner& r, const HeadlessArgs& a);    // draw-delete [<issue>]
bool headless_DrawSearch(HeadlessRunner& r, const HeadlessArgs& a);    // draw-search <column>=<text>...
bool headless_Download(HeadlessRunner& r, const HeadlessArgs& a);      // download [<url>]
bool headless_Lookup(HeadlessRunner& r, const HeadlessArgs& a);        // lookup [<issue>]
bool headless_DownloadFile(HeadlessRunner& r, const HeadlessArgs& a);  // download-file <file>
bool headless_Mirrors(HeadlessRunner& r, const HeadlessArgs& a);       // mirrors [<url1> <url2> <url3>]

}  // namespace dovrex
