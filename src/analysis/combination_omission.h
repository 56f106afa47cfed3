#pragma once

#include <QString>
#include <memory>

#include "domain/game.h"

namespace dovrex {

class Cursor;
class myJinDuCTL;

// Combination omission statistics: for every pair (or triple) of red numbers, how often the group
// came up together and how long it has been absent. Work tables, rebuilt on each run:
//   TBLhmYLTJfenbu: 期号 and one column "01".."33" per red number, holding n for a hit;
//   TBLyilouZhuhe:  Haoma, YilouQS, YilouAvg, YilouPre, YilouLongest, YilouTotal, one row a group.

// Creates both work tables when the store lacks them (and any missing number column).
void ensureCombinationTables();

// Rebuilds TBLhmYLTJfenbu from the history. Returns the draws written.
int build_FenBuBiao(myJinDuCTL& progress);

// Rows of 历史记录 strictly between the two issues.
int count_Between(IssueNumber issueA, IssueNumber issueB);

// All 528 pairs / 5456 triples into TBLyilouZhuhe, in order 01,02 / 01,02,03 onwards, after an
// OK/Cancel warning. Returns the groups written, or -1 when the user cancelled.
int calc_ZhuHe2(myJinDuCTL& progress);
int calc_ZhuHe3(myJinDuCTL& progress);

// The "组合遗漏" entry of ComboChosenumber: size is its first digit (2 or 3). Empties and rebuilds both
// tables; afterwards the window FormZhuheYLTJ is shown. Returns what calc_ZhuHe2/3 returned.
int runCombinationOmission(int size, myJinDuCTL& progress);

// The grid of FormZhuheYLTJ: the groups most overdue first.
std::shared_ptr<Cursor> openCombinationOmissionTable();
// Its title: 截止<newest issue>期号码组合遗漏统计表, digits full width.
QString zhuHeYLTJ_Title();

}  // namespace dovrex
