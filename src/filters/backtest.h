#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <functional>

#include "domain/game.h"
#include "filters/filter_loop.h"

namespace dovrex {

// 条件回测 and 容错: the switched-on conditions as a filter run of one issue would apply them, each
// with its verdict on a single ticket. They are prepared by the run's own hooks in the run's order
// (the condition rows loaded into guoLvShuZu, the tables built from the draws before the issue),
// quietly: no tip, no box, and the operation log as it was.
struct PreparedCondition {
    const FilterDef* def = nullptr;
    QString label;  // as the run's log names the step
    TicketTest test;
    ConditionArray values{};  // guoLvShuZu as the run leaves it for this filter
};
std::vector<PreparedCondition> prepare_Conditions(IssueNumber issue);

// What preparing the conditions of an issue changes, saved on construction and put back on
// destruction: guoLvShuZu and the rows 单双组合 writes for the draw before the issue. A pass that
// only judges tickets (the back-test, the replay) leaves the player's state as it found it.
class KeepJudgingState {
  public:
    KeepJudgingState();
    ~KeepJudgingState();
    KeepJudgingState(const KeepJudgingState&) = delete;
    KeepJudgingState& operator=(const KeepJudgingState&) = delete;
    // guoLvShuZu as it was: each issue is prepared from it.
    const ConditionArray& array() const { return array_; }

  private:
    ConditionArray array_;
    std::vector<int> parityRows_;
};

// The labels of the conditions a ticket fails.
QStringList failed_Conditions(const std::vector<PreparedCondition>& conditions, const TicketBalls& ticket);

// 容错值 of the filter run (过滤条件 row kFilterToleranceId): a ticket goes only when it fails
// more than this many switched-on conditions. 0 is the plain run.
int filter_Tolerance();
void set_FilterTolerance(int k);

struct BacktestDraw {
    IssueNumber issue = 0;
    Reds reds{};
    int blue = 0;
    QStringList failed;    // empty when it passed every condition
    bool survives = true;  // failed no more conditions than the tolerance
};

struct BacktestCondition {
    QString label;
    int passed = 0;
    int total = 0;
    int longestMissRun = 0;  // draws in a row it failed
    int sinceLastMiss = -1;  // draws since its newest miss, -1 when it never missed
};

struct BacktestResult {
    QList<BacktestDraw> draws;  // oldest first
    QList<BacktestCondition> conditions;
    int survived = 0;
    int tolerance = 0;
    bool stopped = false;
};

// Each draw from `from` to `to` measured as a ticket of its own issue. guoLvShuZu starts each draw
// as it stood when the back-test began and is put back after it; `progress` (draws done, total)
// may pump the window and returns true to stop.
BacktestResult run_Backtest(IssueNumber from, IssueNumber to,
                            const std::function<bool(int, int)>& progress = {});

// The two tables as CSV, UTF-8 with a byte order mark so that spreadsheets read the Chinese.
QByteArray backtest_DrawsCsv(const BacktestResult& r);
QByteArray backtest_ConditionsCsv(const BacktestResult& r);

// The filter run with a tolerance above 0: every switched-on condition judges every ticket, and a
// ticket goes when it fails more than k of them. The log gives each condition's misses and the
// number removed. Returns the tickets left.
int run_GuoLvWithTolerance(IssueNumber issue, int k);

}  // namespace dovrex
