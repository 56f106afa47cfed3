#pragma once

namespace dovrex {

class HeadlessRunner;
struct HeadlessArgs;

// The headless runner's commands of condition sets and users (see docs/headless.md).
bool headless_UserMode(HeadlessRunner& r, const HeadlessArgs& a);          // user-mode [1|2]
bool headless_Login(HeadlessRunner& r, const HeadlessArgs& a);             // login <name> [<password>]
bool headless_Users(HeadlessRunner& r, const HeadlessArgs& a);             // users
bool headless_ExportConditions(HeadlessRunner& r, const HeadlessArgs& a);  // export-conditions <file>
bool headless_ImportConditions(HeadlessRunner& r, const HeadlessArgs& a);  // import-conditions <file>
bool headless_RestoreDefaults(HeadlessRunner& r, const HeadlessArgs& a);   // restore-defaults

}  // namespace dovrex
