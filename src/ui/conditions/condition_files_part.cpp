// Menu entries of the condition sets and of the users: export, import and restore of the
// conditions, and the switch of users in multi-user mode.
#include <QAction>
#include <QMenu>

#include "filters/condition_files.h"
#include "screen/shared_state.h"
#include "ui/conditions/conditions_page.h"

#include "ui/shell/form_main.h"
#include "ui/shell/gui_screen.h"
#include "ui/shell/window_parts.h"
#include "users/users.h"
#include "widgets/command_trap.h"

namespace dovrex {

namespace {

// 切换用户: the current user's set is saved, another logs in, and the window shows their picks.
void mnu_UserQiehuan_Click(FormMain& window) {
    beginUserSwitch();
    window.guiScreen().ui_Login();
    window.setWindowTitle(mainCaptionForUser());
    window.selectPage(TopPage::Conditions);
    if (ConditionsPage* conditions = window.conditionsPage()) conditions->selectTab(1);
    window.guiScreen().ui_RefreshPicks();
}

}  // namespace
namespace {

QAction* addEntry(QMenu* menu, const QString& name, const QString& text, FormMain& window,
                  const std::function<void()>& run) {
    QAction* action = menu->addAction(text);
    action->setObjectName(name);
    connectCommand(action, &QAction::triggered, &window, run);
    return action;
}

}  // namespace

void installConditionFiles(FormMain& window) {
    QMenu* tools = window.menu(QStringLiteral("工具(&T)"));
    tools->addSeparator();
    addEntry(tools, QStringLiteral("mnu_TiaoJianDaochu"), QStringLiteral("导出过滤条件..."), window,
             [] { daocu_Click(); });
    addEntry(tools, QStringLiteral("mnu_TiaoJianDaoru"), QStringLiteral("导入过滤条件..."), window,
             [] { daoru_Click(); });
    addEntry(tools, QStringLiteral("mnu_TiaoJianHuanyuan"), QStringLiteral("还原默认过滤条件"), window,
             [] { huanyuan_Click(); });

    // Beside the condition files: switching users is switching condition sets.
    QAction* switchUser = tools->addAction(QStringLiteral("切换用户(&U)..."));
    switchUser->setObjectName(QStringLiteral("mnu_UserQiehuan"));
    switchUser->setVisible(false);  // shown in multi-user mode only
    connectCommand(switchUser, &QAction::triggered, &window, [&window] { mnu_UserQiehuan_Click(window); });
}

}  // namespace dovrex
