#pragma once

#include <QString>
#include <memory>

namespace dovrex {

class Cursor;

// How the history grid shows 历史记录: every draw, or the newest hundred. The choice is kept in
// 过滤条件 row 39 as the index of the option: 0 all, 1 the newest hundred.
enum class HistoryShowMode { All = 0, Newest100 = 1 };

inline constexpr int kHistoryShowConditionId = 39;

// Reads the display mode from row 39; anything but 1 means all.
HistoryShowMode read_HistoryShowMode();
// Option_historyShow_Click's write: keeps the choice in row 39.
void write_HistoryShowMode(HistoryShowMode mode);

// show_LiShi: reopens g_HistoryCursor on all draws or the newest hundred (issue order), binds the
// history grid to it, dresses the grid and moves to the last row. Returns the new cursor.
std::shared_ptr<Cursor> show_LiShi(bool all);
// show_LiShi in the mode kept in row 39.
std::shared_ptr<Cursor> show_LiShi();

// The history grid's set-up after each rebind: captions, widths in twips (0 hides), colours.
void dress_HistoryGrid(const Cursor& cursor);

}  // namespace dovrex
