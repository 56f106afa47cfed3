#pragma once

#include <QString>

namespace dovrex {

// The rows of 过滤条件 (one Value per ID) and 过滤条件使用情况 (one switch per number): the picks
// and every condition, read and written at once, with no copy in memory except guoLvShuZu.

// Copies Value of the rows minId..maxId, in ID order, into shared().guoLvShuZu, beginning at index
// minId % 10 and counting up one per row in an 8-bit counter. Entries not reached keep what they held.
void load_GuoLvFanWei(int minId, int maxId);
// Writes value into every row of the range.
void set_GuoLvFanWei(int minId, int maxId, int value);
// One row's Value; 0 when the row is missing.
int get_GuoLvTiaoJian(int id);
void set_GuoLvTiaoJian(int id, int value);

// The three bulk resets: the red picks (ID<40, which takes in the history display mode at ID 39),
// the blue picks (100<ID<200), and every condition and pattern (ID>500).
void resetRedPicks();
void resetBluePicks();
void resetConditionSet();

// Pick counts by the row counts of their queries. The red queries read ID<40, so a history display
// mode of 1 or 2 at ID 39 counts as one more drag or banker: that is how these counts have always read.
int count_HongTuo();
int count_HongDan();
int count_LanTuo(int upper = 116);
int count_LanDan(int upper = 116);

// 使用情况 of switch n; a missing row is a store error. A condition is on only when this is exactly 1.
int get_ShiYongQingKuang(int n);
void set_ShiYongQingKuang(int n, int value);

// While one lives, the rows and switches are read from a copy in memory taken when it was made,
// and every write through this file goes to both: a pass that prepares the conditions for each of
// thousands of draws (the back-test) reads the two tables once. Nothing else may write them then.
class ConditionReadCache {
  public:
    ConditionReadCache();
    ~ConditionReadCache();
    ConditionReadCache(const ConditionReadCache&) = delete;
    ConditionReadCache& operator=(const ConditionReadCache&) = delete;
};

}  // namespace dovrex
