#pragma once

namespace dovrex {

// Commands that a secondary window leaves for the main window (shared().g_PendingCommand), because
// they must run there once that window has closed.
enum PendingCommand {
    kPendingNone = 0,
    kPendingExport = 1,
    kPendingImport = 2,
    kPendingDefaults = 3,
    // 4..12 and 15 bring a condition tab, 13 the prize table, 14 the shrink settings.
    kPendingLast = 15,
};

// The condition tab a pending command brings to the front, 0 for the others.
int pendingConditionTab(int command);

// Runs what waits for the main window each time it comes to the front: the analysis tables when
// they are stale, then the pending command, which is cleared first so that it runs once.
void app_Activate();

}  // namespace dovrex
