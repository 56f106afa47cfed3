#pragma once

#include <QDate>
#include <QList>
#include <QString>
#include <QVariantList>
#include <array>
#include <memory>

#include "domain/game.h"

namespace dovrex {

class Cursor;

// The user's hands on 历史记录: entering a draw, deleting one, searching. The window collects the
// boxes and calls these; every message goes through screen().

namespace msg {
inline const QString kBadEntry = QStringLiteral("输入有误或不完整,请核对后重新输入!");
inline const QString kEnterDrawHint = QStringLiteral("请输入开奖号码,然后点击“添加记录”");
inline const QString kDeleteAsk = QStringLiteral("您要删除哪期的记录？");
inline const QString kDeleteAskTitle = QStringLiteral("请输入期号");
inline const QString kDeleteMissing = QStringLiteral("无法完成，历史记录表格中没有该期记录！");
inline const QString kDeleteMissingTitle = QStringLiteral("删除失败");
inline const QString kDrawDeleteDone = QStringLiteral("删除完成！");
inline const QString kDrawDeleteDoneReload = QStringLiteral("删除完成，将重新加载数据。");
inline const QString kSearchHint =
    QStringLiteral("请在表格中最顶一行空白处相应项目栏输入条件值，然后点击“搜索”按钮！");
// "搜索完成，符合条件的记录共：" + count + " 条！"
QString searchDoneText(int count);
}  // namespace msg

// The entry row as typed: TextHistory(0) the issue, (1)..(6) the reds, (7) the blue, and the date
// of DTPicker_KJ.
struct DrawInput {
    std::array<QString, 8> boxes;
    QDate date;
};

// check_Shuru: every box digits only, and the draw they make one that drawFault accepts (six
// different reds, the blue, an issue that can exist, the date in its year and not after today).
// When the entry is good its reds are written back into boxes 1..6 in ascending order; a bad entry
// is left as typed, for the user to correct.
bool check_Shuru(DrawInput& input);

// The draw an entry stands for (call after check_Shuru).
DrawRecord entry_Draw(const DrawInput& input);

// store_KaiJiang: writes the draw's row, adding it when the issue has none (an existing row is
// overwritten), with 已完成 "Y". With `recalc` the draw's derived columns are computed at once.
// False when the draw fails drawFault or the store refused the write; the row is then as it was.
bool store_KaiJiang(const DrawRecord& draw, bool recalc);

// The entry boxes after a stored draw: the next issue in box 0 and the picker on the next draw day.
// With `clearBalls` boxes 1..7 are emptied too.
void advance_Entry(DrawInput& input, bool clearBalls);

// cmmUpdateHistory_Click(0) without its buttons: checks (the error box on a bad entry), stores with
// the recount, rebinds the history grid and moves the boxes on. True when the draw was stored; the
// window then redraws the page in view and the status line.
bool storeEnteredDraw(DrawInput& input);

// cmm_scls_Click: asks for the issue (default the latest), deletes its row and says so. The window
// then refreshes the pages of the latest draw and the status line (and the distribution when the
// history grid is not in view).
enum class DeleteResult { Cancelled, Missing, Deleted };
DeleteResult cmm_scls(bool historyGridInView);

// One cell of the grid's search row: the column it stands under and the text typed there.
struct SearchTerm {
    QString column;
    QString text;
};

// The search row as a condition: column LIKE ? joined by AND, the texts bound. Cells with no text
// and columns that 历史记录 does not have are left out. Access wildcards * and ? read as % and _;
// a plain number typed with leading zeros under a number column matches the number ("05" is 5);
// the draw date matches its "yyyy/mm/dd" text.
struct SearchCondition {
    QString where;
    QVariantList params;
    bool empty() const { return where.isEmpty(); }
};
SearchCondition buildDrawSearch(const QList<SearchTerm>& terms);

// filterBegin_Click: runs the search and reports the count. With matches the history grid is bound
// to them (g_HistoryCursor); with none it goes back to the default view and `clearRow` is set, so
// that the window empties the search row.
struct SearchResult {
    bool ran = false;  // false when the row held no condition
    int count = 0;
    bool clearRow = false;
    std::shared_ptr<Cursor> cursor;
};
SearchResult filterBegin(const QList<SearchTerm>& terms);

}  // namespace dovrex
