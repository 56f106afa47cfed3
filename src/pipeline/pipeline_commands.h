#pragma once

#include <QString>
#include <array>
#include <memory>

#include "domain/game.h"

namespace dovrex {

class Cursor;

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
// The shrink settings frame FrameSuosuiSezi: whether it shows, and showing or hiding it.
bool suoShuiSeZhiVisible();
void set_SuoShuiSeZhiVisible(bool visible);
// Raises the Stop flag; acts on mouse-down, so it lands at the next yield of a running pass.
void cmm_stop_MouseDown();

// The issue of the ticket grid: 期号 of its first row, 0 when it shows nothing.
IssueNumber get_BiaoGeQiHao();
// Binds 日志表 to the grid TDBGrid_RZ: every issue when `issue` is negative, else that issue, by
// 期号 and 序号. The marker columns stay out of sight.
void load_TouZhuBiao(IssueNumber issue);
// The row set the grid shows now (null before the first binding).
std::shared_ptr<Cursor> touZhuBiao();
// Lets go of the grid's row set (before the store closes).
void clear_TouZhuBiao();
// Deletes the tickets of `issue` (all when 0), rebinds the grid and says so in the log.
void delete_TouZhu(IssueNumber issue);

// The issue typed in a prompt: trimmed, cut to 7 characters, read as a number with a "0" in front,
// so that an empty answer or a cancel gives 0 and "2008118abc" gives 2008118.
int read_QiHao(const QString& answer);

namespace msg {
inline const QString kNoTickets = QStringLiteral("上面表格中还没有数据！请先“第1步：初始化”。");
inline const QString kConfirmFilter = QStringLiteral("即将按照设定的条件进行号码过滤！");
inline const QString kConfirmDelete = QStringLiteral("确认要删除全部记录吗？");
inline const QString kDeleteDone = QStringLiteral("删除记录完成！");
inline const QString kDeleteLogged = QStringLiteral("表格中号码全部删除已完成．");
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
