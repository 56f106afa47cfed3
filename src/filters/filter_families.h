#pragma once

#include <QString>
#include <array>

#include "filters/filter_loop.h"

namespace dovrex {

// Each family fills the hooks of its filters, found by FilterDef::name (and slot); false for a
// filter that is not one of its.
bool attach_RangeFilter(FilterDef& def);  // 和值 .. AC值
bool attach_CountFilter(FilterDef& def);  // 奇数/偶数/大数/小数/高尾码/低尾码 个数, 区间k, 自定义组k
bool attach_ShapeFilter(FilterDef& def);     // 尾数形式, 间距七/九/十一/十二, 头数形式
bool attach_HistoryFilter(FilterDef& def);   // 重叠号, 斜位码, 温度值5/10, 历史数据过滤
bool attach_PositionFilter(FilterDef& def);  // 号码定位, 单双组合

// A per-number table 1..33 (entry 0 unused), built before the row loop.
using NumberTable = std::array<int, 34>;

// 1 for each number whose column of 号码特性 holds true, 0 otherwise; the reverse with
// `complement`. Rows with a 号码 outside 1..33 are skipped.
NumberTable traitTable(const QString& column, bool complement = false);

inline int sumOver(const NumberTable& t, const Reds& r) {
    return t[size_t(r[1])] + t[size_t(r[2])] + t[size_t(r[3])] + t[size_t(r[4])] + t[size_t(r[5])] +
           t[size_t(r[6])];
}

// The timed tip of the filters whose verdict depends on the draws before the issue; raises
// liShiXiangGuan so that the run's closing line says the result holds for this issue only.
void warnHistoryMatch(const QString& name, IssueNumber issue);
QString historyMatchText(const QString& name, IssueNumber issue);

// While one lives, 历史数据过滤 takes the draws of its range from a copy of the history read once
// (the back-test asks for nearly the whole history once a draw). The history must not change then.
class HistoryDrawCache {
  public:
    HistoryDrawCache();
    ~HistoryDrawCache();
    HistoryDrawCache(const HistoryDrawCache&) = delete;
    HistoryDrawCache& operator=(const HistoryDrawCache&) = delete;
};

// The previous draw's parity pattern into rows 5001..5007 (reds 1..6 and the blue, each mod 2).
// False, with nothing written, when the draw is not in the history.
bool make_ShangQiDanShuang(IssueNumber prevIssue, QString& text);

// 常用分组: the generator's items (separators "---" included), with the latest issue in full width.
QStringList listGroupPresets();
// Fills custom group k (1..20) from an item of the generator and renames it after the item. The
// allowed counts stay. False (with the program's message when draws are missing) when nothing
// was set: a separator, an unknown text, or a history too short for the item.
bool makeGroupPreset(int k, const QString& item);

}  // namespace dovrex
