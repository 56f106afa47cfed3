#pragma once

#include <QString>

#include "domain/game.h"
#include "pipeline/space_filter.h"

namespace dovrex {

// 大底 mode ("从大底过滤", a row of 过滤条件 kept with the picks): any picks are allowed, and 第1步
// writes only the tickets that survive the switched-on conditions.
bool space_Mode();
void set_SpaceMode(bool on);

// 第1步 in 大底 mode: the whole expansion judged in memory, then the survivors written in one
// transaction with the 序号, 缩水公式 and order that 第1步 + 第2步 give them, beside the issue's
// `existing` rows or in their place (`replace`, the player's answer). A stopped step or one whose
// survivors pass the limit writes nothing and says so. Returns the rows the issue now has.
int init_FromSpace(IssueNumber issue, int existing, bool replace);

// "大底 17,721,088 注".
QString spaceText(long long space);
// The conditions that removed least, for the refusal: at most `count`, least first.
std::vector<SpaceRemoval> leastRemoving(const SpaceResult& r, int count);

namespace msg {
inline const QString kSpaceStopped = QStringLiteral("大底过滤已被用户中止，没有写入任何号码。");
QString spaceOverLimit(const SpaceResult& r);
}  // namespace msg

}  // namespace dovrex
