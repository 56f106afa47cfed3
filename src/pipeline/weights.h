#pragma once

#include <QString>
#include <QStringList>

#include "domain/game.h"

namespace dovrex {

// Number weights (quanZhong in shared()): entries 1..33 for the red numbers, in memory only. A
// ticket's weight sum decides its place in the shrink's scan, heavier tickets first.

// The captions of the preset buttons cmmQZfenpei(0..10).
const QStringList& quanZhongPresetCaptions();
inline constexpr int kQuanZhongPresets = 11;
inline constexpr int kQuanZhongMax = 33;  // the highest preset value; the sliders reach it

// A slider moved: quanZhong[index] = value.
void SliderQuanZong_Change(int index, int value);
// A preset, then show_QuanZhong. Index 6 ("其他...") only tells how to set them by hand.
void cmmQZfenpei_Click(int index);
// Puts the weights on the sliders (SliderQuanZong(n).value).
void show_QuanZhong();
// Writes each ticket's weight sum over its reds to 临时数据; false when every weight is 0 or the
// issue has no ticket. A Stop leaves the rest with their old 临时数据 and still gives true.
bool run_QuanZhong(IssueNumber issue);

namespace msg {
inline const QString kWeightsByHand = QStringLiteral("请手动调节左边各号码对应的滑块设置相应的值！");
}

}  // namespace dovrex
