#pragma once

#include <QRectF>
#include <QString>
#include <QStringList>
#include <vector>

#include "domain/game.h"
#include "history/history_queries.h"

namespace dovrex {

// The figures of one number on the omission page (遗漏). All counts are in draws.
struct OmissionRecord {
    int maxGap = 0;    // 历史遗漏最大值: the longest absence before a hit
    int allMax = 0;    // the largest maxGap of the colour, the same in every record
    int avgGap = 0;    // 历史遗漏平均值, rounded half to even
    int hitCount = 0;  // 总共开出: draws up to the issue that hold the number
    int curGap = 0;    // draws after the last hit, up to the issue
    int lastGap = 0;   // 最近一次的遗漏值: the absence between the last two hits
};

// Records 1..33 (red) or 1..16 (blue); entry 0 is unused.
using OmissionTable = std::vector<OmissionRecord>;

// The entries of Combo_ItemOfYLFX, by list index.
inline const QString kOmissionRedItem = QStringLiteral("红球号码遗漏分析");
inline const QString kOmissionBlueItem = QStringLiteral("蓝球号码遗漏分析");

// Combo_QSofYLFX: its text (the newest issue) and its list (the 50 newest, newest first).
IssueChoice fill_QiShuCombo();

// Numbers the draws up to `issue` from 0 in 总期号 and clears 遗漏数据.
void renumber_ZongQiHao(IssueNumber issue);

// The figures of every number up to and including the issue. A number with one hit or none keeps
// the gap figures of the number before it (its own hitCount stands). Progress goes to ui_Progress.
OmissionTable calc_RedOmission(IssueNumber issue);
OmissionTable calc_BlueOmission(IssueNumber issue);

// --- layout of the page; all lengths in twips ---

// Where group n (1-based) of `count` sits in a frame of the given size.
QRectF omission_GroupRect(double frameWidth, double frameHeight, int n, int count);

// One bar group of width W and height H, in the group's own coordinates.
struct OmissionGroupLayout {
    QRectF caption;        // the number's caption
    QRectF rule;           // Label_LYFX_line: the base the bars stand on
    QRectF maxBar;         // Label_YLFX_TuLiMax
    QRectF avgBar;         // Label_YLFX_TuLiAvg, drawn over the maximum bar
    QRectF curBar;         // Label_YLFXvalue
    QRectF ball;           // YLFX_QiuImg: centred over the current bar, just above it
    bool overdue = false;  // current absence above the average: colour of Label_TuLi_value(1)
};
OmissionGroupLayout draw_OmissionGroup(double width, double height, const OmissionRecord& r, double ballSize);

// --- texts; itemIndex is the list index of Combo_ItemOfYLFX, issue the text of Combo_QSofYLFX ---

QString omission_ClickText(int itemIndex, int n, const QString& issue, const OmissionRecord& r);
QString omission_GroupTip(int itemIndex, int n, const QString& issue, const OmissionRecord& r);
QString omission_MaxTip(const OmissionRecord& r);
QString omission_AvgTip(const OmissionRecord& r);
QString omission_CurTip(const QString& issue, const OmissionRecord& r);

}  // namespace dovrex
