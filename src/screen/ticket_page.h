#pragma once

#include <QString>
#include <memory>

#include "domain/game.h"

namespace dovrex {

class Cursor;

// What the passes share of the ticket page (投注号码): the row set of the grid, which names the
// current issue, and the shrink settings frame.

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
void clearTicketTable();
// Deletes the tickets of `issue` (all when 0), rebinds the grid and says so in the log.
void delete_TouZhu(IssueNumber issue);

// The issue typed in a prompt: trimmed, cut to 7 characters, read as a number with a "0" in front,
// so that an empty answer or a cancel gives 0 and "2008118abc" gives 2008118.
int readIssue(const QString& answer);

namespace msg {
inline const QString kNoTickets = QStringLiteral("上面表格中还没有数据！请先“第1步：初始化”。");
inline const QString kDeleteLogged = QStringLiteral("表格中号码全部删除已完成．");
}  // namespace msg

}  // namespace dovrex
