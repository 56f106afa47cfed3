#include "app/app_activate.h"

#include "filters/condition_files.h"
#include "screen/shared_state.h"

namespace dovrex {

int pendingConditionTab(int command) {
    static const int tabs[] = {0, 0, 0, 0, 7, 21, 16, 18, 17, 19, 20, 28, 27, 0, 29, 15};
    return command >= 0 && command <= kPendingLast ? tabs[command] : 0;
}

void app_Activate() {
    SharedState& s = shared();
    if (s.g_TablesDirty) {
        s.g_TablesDirty = false;
        screen().ui_RefreshTables();
    }
    const int command = s.g_PendingCommand;
    s.g_PendingCommand = kPendingNone;
    switch (command) {
        case kPendingNone:
            return;
        case kPendingExport:
            daocu_Click();
            break;
        case kPendingImport:
            daoru_Click();
            break;
        case kPendingDefaults:
            huanyuan_Click();
            break;
        case 13:
            screen().ui_ShowPage(QStringLiteral("投注号码"), 0);
            return;
        default:
            if (const int tab = pendingConditionTab(command))
                screen().ui_ShowPage(QStringLiteral("过滤条件"), tab);
            return;
    }
    // The condition set changed under the pages: show it again.
    screen().ui_ShowPage(QStringLiteral("过滤条件"), 0);
}

}  // namespace dovrex
