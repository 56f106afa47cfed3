// The 下载地址设置 entry of the 数据 menu.
#include <QMenu>

#include "ui/shell/form_main.h"

#include "ui/history/mirror_settings_dialog.h"
#include "ui/shell/window_parts.h"
#include "widgets/command_trap.h"

namespace dovrex {
void installMirrorSettings(FormMain& window) {
    QMenu* data = window.menu(QStringLiteral("数据(&D)"));
    data->addSeparator();
    QAction* action = data->addAction(QStringLiteral("下载地址设置..."));
    action->setObjectName(QStringLiteral("mnu_DownloadAddresses"));
    connectCommand(action, &QAction::triggered, &window, [&window] {
        MirrorSettingsDialog dialog(&window);
        dialog.exec();
    });
}

}  // namespace dovrex
