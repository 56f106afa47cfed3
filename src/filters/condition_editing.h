#pragma once

#include <QList>
#include <QString>
#include <array>

#include "domain/game.h"

namespace dovrex {

// What the condition pages write besides the value lists: the number columns of 号码特性 (intervals,
// positions, custom groups), the custom groups' names and counts, the parity patterns and the row of
// 历史数据过滤. Every call writes at once; nothing is held back for a later apply.

// The text after "当前取值阅览：" of a list page (1-based tab): the runs of a range condition, the
// allowed keys of a shape condition, the allowed values otherwise; full-width digits.
QString conditionSummary(int tab);

// --- number columns of 号码特性 (区间k, 第k位, 自定义组k) ---

// Which of the numbers 1..33 hold true in the column; index 0 unused.
std::array<bool, 34> haoMaTeXing(const QString& column);
// Flips the cell of number n in the column and returns the new value.
bool toggleNumberTrait(const QString& column, int n);
// Sets the cells of the given numbers (1..33) of a column and clears the others.
void setNumberTrait(const QString& column, const std::array<bool, 34>& members);

// cmm_CLSQujianHuafen: every interval cell false, the four interval switches off, then the notice.
void clearIntervalPartition();
// Numbers of an interval as "０１ ０２ ..." (the list under the interval buttons).
QString quJianHaoMa(int k);

// --- custom groups 1..20 ---

QString customGroupColumn(int k);  // 自定义组k
int customGroupSwitch(int k);      // 19+k, 40+k
int customGroupBase(int k);        // 3800.., 4500..
QString zdyAlias(int k);           // 别名 of 自定义别名
// cmmChangeZDYname: stores a new alias when the text is not empty.
bool renameCustomGroup(int k, const QString& alias);
// cmm_EmptyZDY: the group's cells false, its allowed counts 0, its alias back to 自定义名称.
void clearCustomGroup(int k);
// How many counts 0..6 of the group are allowed.
int zdyAllowedCounts(int k);

// --- parity patterns ---

// The seven values (0 双, 1 单, 2 *) of a pattern slot 1..5, rows 5000+10*slot+1..7.
std::array<int, 7> readParityPatterns(int slot);
// The parity of the latest draw, reds then blue: the pattern slot 0 will exclude. Reads only.
std::array<int, 7> shangQiDanShuang();

// --- 历史数据过滤 ---

struct LiShiGuoLv {
    bool on = false;
    IssueNumber low = 0, high = 0;
    int match = 6;
};
LiShiGuoLv readHistoryMatch();
void writeHistoryMatch(const LiShiGuoLv& s);
// Draws between the two issues, both included.
int countIssues(IssueNumber low, IssueNumber high);
// Matching below 6 compares every ticket with every draw: only ranges of fewer than 6 draws may.
inline constexpr int kPiPeiFreeDraws = 6;

}  // namespace dovrex
