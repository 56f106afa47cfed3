#pragma once

#include <QString>
#include <array>

#include "domain/game.h"

namespace dovrex {

// The ten draws before an issue: row 1 the newest, row 10 the oldest; columns 1..6 the reds and 7
// the blue (raw, so the blue is subtracted like a red). Row and column 0 are not used.
using ChaZhiBlock = std::array<std::array<int, 8>, 11>;
// The 463 differences: the newest draw against the nine before it, then the newest draw within
// itself. Position 462 is never written and stays 0 in both lists.
inline constexpr int kChaZhiCount = 463;
using ChaZhiMoShi = std::array<int, kChaZhiCount>;

// The block of the draws before `issue`: prev_QiHao(issue, 10) to prev_QiHao(issue, 1), oldest
// into row 10; rows not reached stay 0.
ChaZhiBlock loadDifferenceBlock(IssueNumber issue);
// chaZhiMoShi of a block.
ChaZhiMoShi calc_ChaZhiMoShi(const ChaZhiBlock& a);
// The score of a ticket (t[1..6] reds, t[7] blue): the positions where its differences, taken as if
// it were the next draw, equal chaZhiMoShi. Always at least 1 (position 462).
int calc_PiPeiShu(const ChaZhiBlock& a, const ChaZhiMoShi& chaZhiMoShi, const std::array<int, 8>& t);
// The same of a ticket of six reds and a blue.
int calc_PiPeiShu(const ChaZhiBlock& a, const ChaZhiMoShi& chaZhiMoShi, const Reds& reds, int blue);

// 智能优化: scores the tickets of `issue` into 临时数据 when switch 45 is on and t is below 7, then
// sets the lower 60 per cent to 0, so that a shrink keeps its tickets in a better order.
void run_ZhiNengYouHua(IssueNumber issue, int t);
// 精选号码: scores every ticket of `issue` and keeps the n lowest (ties on the last included).
// A Stop still cuts, with the scores written so far. 序号 is not renumbered.
void run_JingXuan(IssueNumber issue, int n);

namespace msg {
inline const QString kAskSelect = QStringLiteral("要精选出多少注 ？");
inline const QString kSelectDone = QStringLiteral("精选号码完成！");
}  // namespace msg

}  // namespace dovrex
