#pragma once

#include "domain/game.h"

namespace dovrex {

// 缩水公式 of a ticket that lies outside the shrink formula in use; sorts behind every formula ticket.
inline constexpr int kOutsideFormula = 99999999;

// 第1步：初始化. Expands the picks of 过滤条件 into one row of 日志表 per ticket for `issue`: reds in
// lexicographic order with the blue innermost, 序号 from 1. Rows of other issues go first; rows of
// this issue go or stay as the user answers. With no red bankers and 10..20 red drags the shrink
// formula of that size (table Ssgs) marks its tickets in 缩水公式. Returns the number of rows the
// issue now has (0 when nothing ran). The step lands whole or not at all: on Stop or a close every
// row stays as it was before it (other issues' included) and the log says so.
int init_TouZhu(IssueNumber issue);

namespace msg {
inline QString initDone(int rows) {
    return QStringLiteral("初始化选号完成!共 ") + to_QuanJiao(rows) + QStringLiteral(" 注！");
}
inline const QString kKeepOldTickets = QStringLiteral(
    "表格中已有该期的投注号码！要删除它们吗？\r\n按“是”删除旧号码；按“否”保留旧号码，新号码排在其后。");
inline const QString kInitStopped = QStringLiteral("已停止，投注号码未改变");
}  // namespace msg

}  // namespace dovrex
