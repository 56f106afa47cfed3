#pragma once

#include <QString>

#include "domain/game.h"

namespace dovrex {

// merge_XiangTongZhu: removes every ticket whose six reds, position by position, equal those of a
// ticket with a lower 序号, whatever its blue or issue. Stop keeps the merges done so far. Returns the
// tickets left.
int merge_XiangTongZhu();
// The menu entry 合并相同注: the merge, then its count in a box. Returns the count, -1 after a store error.
int hebingxt_Click();

namespace msg {
inline const QString kMergeMenu = QStringLiteral("合并相同注");
inline QString mergeLeft(int n) {
    return QStringLiteral("合并后注数有： %1  注。").arg(n);
}
}  // namespace msg

}  // namespace dovrex
