#pragma once

#include <QString>
#include <array>

#include "analysis/uniform_random.h"
#include "domain/game.h"
#include "history/history_queries.h"
#include "pipeline/pick_state.h"

namespace dovrex {

// The seeded sampler of the probability analysis. For an issue N it backtests 18988 seed streams
// against the draws before N: a seed votes for the number it names for N only if it would have
// named a ball of the previous draw. Counting is lazy: the first count read after a new history
// runs calc_JiShu.
class CaiPiao {
  public:
    static constexpr int kSeeds = 18988;
    static constexpr int kBlueSeeds = 6518;

    int QiHao() const { return qiHao_; }
    void setQiHao(int issue) { qiHao_ = issue; }
    int ZhongZi() const { return zhongZi_; }
    void setZhongZi(int seed) { zhongZi_ = seed; }

    // The counts of number n, sampling first if needed; -1 outside 1..16 / 1..33.
    int KillCOUNTblue(int n);
    int KillCOUNT(int n);
    bool Ready() const { return yiJiSuan_; }

    // hist(1..10, 1..7): row 1 the draw right before the issue, columns 1..6 the reds, 7 the blue.
    void setHistoryRcord(const HistoryArray& hist);
    const HistoryArray& HistoryRcord() const { return liShi_; }

    void calc_JiShu();
    // The red (1..33) and blue (1..16) number of seed t for issue x: a pure function of t + x.
    int rnd_HongQiu(int t, int x);
    int rnd_LanQiu(int t, int x);

  private:
    int qiHao_ = 0;
    int zhongZi_ = 1;
    HistoryArray liShi_{};
    std::array<int, 34> hongJiShu_{};
    std::array<int, 17> lanJiShu_{};
    bool youShuJu_ = false;
    bool yiJiSuan_ = false;
    UniformRandom rnd_;
};

// The one sampler of the main window, made on first use.
CaiPiao& caiPiao();

// The red analysis: 红球 of 概率表 from the sampler, the topN highest marked.
void calc_HongQiuGaiLv(IssueNumber issue, int topN);
// The blue transition passes and the hit counts 红开 / 蓝开 of the ten draws before the issue.
void calc_LanKaiZhuanYi(IssueNumber issue);
void calc_LanKaiZhuanYi2(IssueNumber issue);
// The blue analysis: the transition passes, then the sampler; up to topN + 1 blue marks.
void calc_LanQiuGaiLv(IssueNumber issue, int topN);

// The command of cmd_FX(0) and cmd_FX(1): asks for the issue, runs both analyses, repaints the picks.
void cmd_FX_Click();

// VB-style numeric value of a text: leading blanks skipped, then sign, digits and one point; 0 when
// nothing numeric leads.
double leadingNumber(const QString& text);

}  // namespace dovrex
