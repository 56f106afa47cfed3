#pragma once

#include <QString>
#include <array>

#include "domain/game.h"

namespace dovrex {

// The eight pipeline commands, by index of the button array cmmTouZhu and of the menu mnu_ShengCeng.
enum TouZhuCommand {
    kCmdInit = 0,
    kCmdFilter = 1,
    kCmdShrink = 2,
    kCmdSelect = 3,
    kCmdExport = 4,
    kCmdImport = 5,
    kCmdDelete = 6,
    kCmdPrizeCheck = 7,
};
inline constexpr int kTouZhuCommands = 8;

struct TouZhuCommandText {
    QString button;
    QString menu;
    QString toolTip;
};
const std::array<TouZhuCommandText, kTouZhuCommands>& touZhuCommandTexts();

// Runs command `index`. The command buttons (Pic_subTouZhu) are disabled for its length and
// enabled again on every way out; a store error leaves the command silently, keeping what it wrote.
void cmmTouZhu_Click(int index);
// The menu entry: turns to the ticket page (tab 3 of TabStrip_Top), then runs the command.
void mnu_ShengCeng_Click(int index);
// The two buttons of the shrink settings: 0 closes them, 1 runs the shrink.
void cmmSS_Click(int index);

namespace msg {
inline const QString kConfirmFilter = QStringLiteral("即将按照设定的条件进行号码过滤！");
inline const QString kConfirmDelete = QStringLiteral("确认要删除全部记录吗？");
inline const QString kTicketsDeleteDone = QStringLiteral("删除记录完成！");
inline const QString kAskIssue = QStringLiteral(
    "请输入期号：\r\n\r\n[注意,必须输入7位数(如,2007001)的期号！]"
    "\r\n\r\n另外，请务必填写准确的期号！！！\r\n\r\n"
    "例如，你要测试或将要买的是 ２００８１１８ 期的号码就不能填写 ２００８１１９ ， "
    "因为部分过滤条件与历史记录有关（温度值、重叠号、斜位码）！！！");
// A command whose work is not in this version yet.
inline QString notYet(const QString& command) {
    return QStringLiteral("“") + command + QStringLiteral("”功能在这个版本中还不能使用，敬请期待！");
}
}  // namespace msg

}  // namespace dovrex
