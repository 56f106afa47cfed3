#pragma once

#include <QList>
#include <QPair>
#include <QString>
#include <vector>

namespace dovrex {

// Every condition of the filter engine, declared once: its switch, its rows of 过滤条件, its page,
// the lines that page shows, its block in the report, its place in the filter run and whether the
// quick settings offer it. The filter run, the factory rows, the condition pages, the report and
// the quick settings all read this table. It is plain data: the filter families bind their code to
// an entry by its filter name and slot (src/filters), so the store's factory rows can read it too.

// How the lines of a condition page read, and what the tick of a line stands for.
enum class LineKind {
    None,       // no value list of its own
    Numbers,    // "名称=v" for v in firstLine..lastLine; the row is minId + v
    RunKeys,    // "连号=" and a 连号 key; the row is minId + the key's index
    ShapeKeys,  // the ten keys of the shapes (尾数形式, 间距k); the row is minId + the key's index
    HeadKeys,   // the nine keys of 头数形式
};

// What the report prints behind the label of a condition that is on.
enum class ReportKind {
    None,  // not one of the report's condition blocks
    Runs,  // runs of allowed values, "［３-８］ , ［１０］"
    Each,  // each allowed value
    Keys,  // each allowed key in "（" "）"
};

inline constexpr int kNoSlot = -1;

// Switch of 过滤条件使用情况 that turns the smart optimisation on before a shrink (Check_auto).
inline constexpr int kSmartSwitch = 45;

struct ConditionEntry {
    int switchNo;          // 条件 of 过滤条件使用情况 (0: a switch of its own kind)
    int switchCount;       // switches from switchNo (号码定位 has seven)
    int minId, maxId;      // rows of 过滤条件 the filter and the page read (none when maxId < minId)
    int tab;               // page of the condition pages (TabStrip_TiaoJian, 1-based); 0 for none
    const char16_t* name;  // 条件名称 of 快速设置, and the caption "使用“name”过滤"
    const char16_t* captionName;  // the caption's name where it differs from `name`
    const char16_t* lineName;     // text before "=" of a numbered line
    LineKind lines;
    int firstLine, lastLine;  // values of the numbered lines
    int reportOrder;          // place among the report's condition blocks; 0 for none
    const char16_t* reportLabel;
    ReportKind report;
    int step;  // step of the filter run; 0 for none
    int slot;  // of a looped filter (区间k, 自定义组k, 单双组合 slot); kNoSlot otherwise
    const char16_t* filter;    // filter_HeZhi, ...; nullptr when there is no filter
    const char16_t* logLabel;  // "[ 和 值 ]"
    bool quick;                // offered by the quick settings (菜单ID is the tab)

    bool hasRows() const { return maxId >= minId; }
    QString caption() const;    // 使用“和值”过滤
    QString quickName() const;  // 和值
};

// Every entry, in the order of its switch number.
const std::vector<ConditionEntry>& conditionCatalogue();

// The entry of a filter (and slot of a looped one); nullptr when there is none.
const ConditionEntry* conditionOfFilter(const QString& filter, int slot = kNoSlot);

// Rows of 过滤条件 that are not a condition's range: the picks, the hidden buttons 34..38 beside the
// reds, the history display mode, the single values, the rows 和值 keeps beyond what is read.
inline constexpr int kHistoryDisplayModeId = 39;
inline constexpr int kShrinkTypeId = 3900;  // 保N型 of the shrink, an ordinal
inline constexpr int kToleranceId = 3901;   // 容错值 of 号码定位, an ordinal
inline constexpr int kFilterToleranceId =
    3902;  // 容错值 of the whole filter run: conditions a ticket may fail
inline constexpr int kFilterToleranceMax = 20;
inline constexpr int kSpaceModeId = 3903;  // 1: 第1步 filters the whole expansion before writing (大底)
// 优化缩水, kept beside the shrink type: on (1) or off, and its time limit in seconds (0 for the
// default, as a store or file from before holds it).
inline constexpr int kShrinkOptimisedId = 3904;
inline constexpr int kShrinkBudgetId = 3905;
inline constexpr int kShrinkBudgetDefault = 10;
inline constexpr int kShrinkBudgetMax = 3600;
// The parity patterns of 单双组合: seven rows each (reds 1..6, the blue) at 5001 + 10 * slot, slot 0
// the previous draw's pattern, which the filter writes for the issue it filters.
inline constexpr int kParityRowsFirstId = 5001;
inline constexpr int kParityRowsLastId = 5057;

// Every row of 过滤条件 a store holds, as ranges (both ends inclusive) in ID order.
QList<QPair<int, int>> conditionIdRanges();
// Every switch number of 过滤条件使用情况, ascending.
QList<int> switchNumbers();
// Ranges of rows added to the table after its first layout: a store or file made before lacks
// them and gets them at start (each range is there whole or not at all).
QList<QPair<int, int>> laterConditionRows();

}  // namespace dovrex
