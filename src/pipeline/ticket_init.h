#pragma once

#include "domain/game.h"

namespace dovrex {

// 缩水公式 of a ticket that lies outside the shrink formula in use; sorts behind every formula ticket.
inline constexpr int kOutsideFormula = 99999999;

// 第1步：初始化. Expands the picks of 过滤条件 into one row of 日志表 per ticket for `issue`: reds in
// lexicographic order with the blue innermost, 序号 from 1. Rows of other issues go first; rows of
// this issue go or stay as the user answers. With no red bankers and 10..20 red drags the shrink
// formula of that size (table Ssgs) marks its tickets in 缩水公式. Returns the number of rows the
// issue now has (0 when nothing ran). Stop keeps the rows written, with no message.
int init_TouZhu(IssueNumber issue);

namespace msg {
inline const QString kKeepOldTickets =
    QStringLiteral("该期数已有记录存在日志表中!要删除它吗？\r\n按'是',删除它;按'否'保留它!");
}

}  // namespace dovrex
