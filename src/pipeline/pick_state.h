#pragma once

#include <QString>
#include <array>

#include "domain/game.h"
#include "screen/shared_state.h"

namespace dovrex {

// The picks live in 过滤条件: red n at ID n, blue n at ID 100+n, Value 0 none, 1 drag (拖码),
// 2 banker (胆码). Everything here writes them at once; the window only forwards clicks and tab
// changes and redraws from the store, from picks() and from the probability analysis' marks
// (gaiLvBiaoJi) when ui_RefreshPicks() comes.

inline constexpr int kBlueBase = 100;

enum PickValue { kPickNone = 0, kPickDrag = 1, kPickBanker = 2 };

// What the pick page shows beside the store's rows.
inline PickState& picks() {
    return shared().picks;
}

// Ways to fill k places from n numbers of which `fixed` are certain: 0 if n < k, 1 if n == k or
// fixed >= k, else C(n - fixed, k - fixed). A result beyond 32 bits is a store error.
int calc_ZuHeShu(int n, int k, int fixed);
// Recomputes zhuShu and rewrites Text_ChoseNumberTip.
void show_XuanHaoTongJi();
// A click on number button `index` (red 1..33, blue 101..116), or on its ball image.
void cmm_C7_Click(int index);
// The tabs of the red and blue buttons: 1 drag mode, 2 banker mode.
void tabStrip_QiaQu_Click(int tab);
void tabStrip_HouQu_Click(int tab);
// Clear all red picks (with the history display mode at ID 39) / all blue picks.
void cmm_clsQ_Click();
void cmm_clsH_Click();
// At start-up: the counts, the tip text and which blue buttons are enabled, from the store.
void load_XuanHaoZhuangTai();
// Value of every pick row by button index (0..116).
std::array<int, kBlueBase + kBlueCount + 1> pick_Values();
// The picks yield more tickets than may be written, outside 大底 mode (where the limit is on the
// tickets written, not on the picks).
bool pick_OverLimit();
// show_XuanHaoTongJi; true when the picks yield a ticket. Otherwise, if speak, tells the user and
// turns to the pick page.
bool check_XuanHao(bool speak);
// A mouse-down on cell `column` (1..49) of the number distribution grid, in the row of `rowIssue`.
// Acts only in the pick row (the next issue). True when it changed the cell.
bool tdbGrid_FenBu_MouseDown(IssueNumber rowIssue, int column, bool leftButton);

// Button index 1..33 (red) or 101..116 (blue): marked by the last probability analysis.
bool gaiLv_IsMarked(int buttonIndex);
// The question asked before a marked, unpicked number is picked.
QString gaiLv_WarningText(int buttonIndex);
// For the pick handler, before anything else: true when the click may go on. A marked number whose
// pick value is 0 is questioned (yes/no); a picked one is not.
bool gaiLv_ConfirmPick(int buttonIndex, int pickValue);

namespace msg {
inline const QString kAnalysisNote =
    QStringLiteral("注意,此概率算法以历史开奖记录为依据来分析,请确保历史记录的完整及正确！");
inline const QString kPickFirst = QStringLiteral("号码还没有选取,或者已选的号码个数太少!请先选取号码！");
inline const QString kRedBankerLimit = QStringLiteral("红球“胆码”最多只设 ５ 个.");
inline const QString kBlueBankerLimit = QStringLiteral("蓝球“胆码”最多只设 １ 个.");
inline const QString kTicketLimit =
    QStringLiteral("所选号码的组合将超过 １０００００ 注，超出了本程序的限制，此号码不能再选取！");
inline const QString kGridRedBankers = QStringLiteral("红球只开6个号，因此只能设置6个以内的红球胆码。");
inline const QString kGridBlueBanker =
    QStringLiteral("每注号码只有1个蓝球，无需设置蓝球胆码，设置为拖码就可以了。");
inline const QString kDragTip = QStringLiteral("现在点击数字按钮可以把相应的数设为红球的“拖码”。");
inline const QString kBankerTip = QStringLiteral("现在点击数字按钮可以把相应的数设为红球的“胆码”。");
}  // namespace msg

}  // namespace dovrex
