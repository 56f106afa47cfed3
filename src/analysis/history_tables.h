#pragma once

#include <QString>
#include <QStringList>
#include <array>
#include <memory>
#include <vector>

#include "domain/game.h"

namespace dovrex {

class Cursor;

// 号码分布: every draw of the range on one column per number (k01..k33 red, k34..k49 blue), then the
// pick row of the next issue ("*" a drag, "+" a banker). Binds TDBGrid_FenBu. Returns the draws.
int fill_HaoMaFenBu(IssueNumber fromIssue, IssueNumber toIssue);
// The rows of 号码分布 as the distribution grid binds them.
std::shared_ptr<Cursor> open_HaoMaFenBu();
// The issue of the pick row that fill_HaoMaFenBu appends.
IssueNumber fenBu_PickIssue();
// The caption and tip of the distribution page.
QString fenBu_Caption();
QString fenBu_Tip();

// 分析表 / 自定义表: each draw's reds sorted into the 20 groups of 分析表号码组 / of 号码特性
// (自定义组1..20), one text column per group ("01 05 " ...). Bind TDBGrid_zdy and dress its
// columns with the groups' members. Return the draws.
int fill_FenXiBiao(IssueNumber fromIssue, IssueNumber toIssue);
int fill_ZiDingYiBiao(IssueNumber fromIssue, IssueNumber toIssue);
// The 21 captions of those grids: 期号, then the members of each group as "01 02 ...".
QStringList fenXiBiao_Captions(bool custom);

// The 20 groups of 分析表号码组 (frmOptions): member[n][g] for number 1..33 and group 1..20.
using FenXiZu = std::array<std::array<bool, 21>, kRedCount + 1>;
FenXiZu readAnalysisGroups();
// One tick of frmOptions: writes whether number n belongs to group g at once.
void writeAnalysisGroups(int number, int group, bool member);

// 最近N期开出次数统计: hits per number in the range, as the chart shows them.
struct HitBar {
    QString label;  // "红球:01" / "蓝球:01"
    int count = 0;
};
std::vector<HitBar> calc_RedRecentHits(IssueNumber fromIssue, IssueNumber toIssue);
std::vector<HitBar> calc_BlueRecentHits(IssueNumber fromIssue, IssueNumber toIssue);

// The two range combos (Combo_pic_TiaoJian(0) from, (1) to): every issue, newest first, and the
// entries they select; by default the newest ten issues.
struct IssueRange {
    QStringList issues;
    int fromIndex = -1;
    int toIndex = -1;
};
IssueRange fill_IssueCombos();

inline const QString kRecentHitsCaption = QStringLiteral("最近N期开出次数统计");
inline const QString kRecentHitsBack = QStringLiteral("返 回");

}  // namespace dovrex
