#include "filters/backtest.h"

#include <QHash>
#include <algorithm>
#include <optional>

#include "domain/condition_catalogue.h"
#include "filters/condition_store.h"
#include "filters/filter_families.h"
#include "filters/filter_run.h"
#include "screen/run_panel.h"
#include "screen/shared_state.h"
#include "store/store.h"

namespace dovrex {

namespace {

// The hooks of the filters speak to the player (tips, log lines): while conditions are only being
// prepared they speak to nobody, and the log stays as it was.
class QuietScreen {
  public:
    QuietScreen() : saved_(shared().screen), log_(shared().operationLog) { shared().screen = &silent_; }
    ~QuietScreen() {
        shared().screen = saved_;
        shared().operationLog = log_;
    }
    QuietScreen(const QuietScreen&) = delete;
    QuietScreen& operator=(const QuietScreen&) = delete;

  private:
    NullScreen silent_;
    Screen* saved_;
    QString log_;
};

// The rows 单双组合 writes for the draw before the issue it filters.
constexpr int kPreviousParityFirstId = kParityRowsFirstId;
constexpr int kPreviousParityLastId = kParityRowsFirstId + 6;

int clampTolerance(int k) {
    return std::clamp(k, 0, kFilterToleranceMax);
}

}  // namespace

KeepJudgingState::KeepJudgingState() : array_(shared().guoLvShuZu) {
    for (int id = kPreviousParityFirstId; id <= kPreviousParityLastId; ++id)
        parityRows_.push_back(get_GuoLvTiaoJian(id));
}

KeepJudgingState::~KeepJudgingState() {
    shared().guoLvShuZu = array_;
    Transaction tx(store());
    for (int id = kPreviousParityFirstId; id <= kPreviousParityLastId; ++id)
        if (get_GuoLvTiaoJian(id) != parityRows_[size_t(id - kPreviousParityFirstId)])
            set_GuoLvTiaoJian(id, parityRows_[size_t(id - kPreviousParityFirstId)]);
}

namespace {

// Runs one filter's hooks as the shared loop does, on the array as it stands; false when the filter
// judges no ticket (switched off, refused by its hook, or broken: a run of the issue breaks there
// and removes nothing).
bool prepareOne(const FilterDef& def, IssueNumber issue, PreparedCondition& out) {
    SharedState& s = shared();
    FilterPass pass;
    pass.issue = issue;
    pass.savedLog = s.operationLog;
    pass.resultLabel = def.label;
    try {
        if (def.beforeSwitch) def.beforeSwitch(pass);
        if (!filter_SwitchedOn(def)) return false;
        if (def.afterSwitch && !def.afterSwitch(pass)) return false;
        if (def.maxId >= def.minId) load_GuoLvFanWei(def.minId, def.maxId);
        const TicketTest test =
            def.run ? (def.ticketTest ? def.ticketTest(pass) : TicketTest{}) : def.prepare(pass);
        if (!test.value && !test.accept) return false;
        out = {&def, def.label, test, s.guoLvShuZu};
        return true;
    } catch (const StoreError&) {
        return false;
    }
}

// The conditions of many issues in a row. The first issue prepares every filter; later ones only
// those whose verdict depends on the issue, each from the array as it stood before it the first
// time (what comes before it never depends on the issue), the others as they were.
class ConditionsByIssue {
  public:
    std::vector<PreparedCondition> prepare(IssueNumber issue) {
        QuietScreen quiet;
        std::vector<PreparedCondition> out;
        if (steps_.empty()) {
            for (const FilterStep& step : filterSteps())
                for (const FilterDef& def : step.filters) {
                    if (!def.provided()) continue;
                    Step st{&def, shared().guoLvShuZu, std::nullopt};
                    PreparedCondition c;
                    if (prepareOne(def, issue, c)) {
                        out.push_back(c);
                        if (!def.dependsOnIssue) st.fixed = c;
                    }
                    steps_.push_back(st);
                }
            return out;
        }
        for (const Step& st : steps_) {
            if (!st.def->dependsOnIssue) {
                if (st.fixed) out.push_back(*st.fixed);
                continue;
            }
            shared().guoLvShuZu = st.before;
            PreparedCondition c;
            if (prepareOne(*st.def, issue, c)) out.push_back(c);
        }
        return out;
    }

  private:
    struct Step {
        const FilterDef* def;
        ConditionArray before;
        std::optional<PreparedCondition> fixed;
    };
    std::vector<Step> steps_;
};

}  // namespace

std::vector<PreparedCondition> prepare_Conditions(IssueNumber issue) {
    return ConditionsByIssue().prepare(issue);
}

QStringList failed_Conditions(const std::vector<PreparedCondition>& conditions, const TicketBalls& ticket) {
    QStringList failed;
    for (const PreparedCondition& c : conditions) {
        try {
            if (!ticket_Passes(c.test, ticket, c.values)) failed << c.label;
        } catch (const StoreError&) {
            // As above: a broken pass keeps its tickets.
        }
    }
    return failed;
}

int filter_Tolerance() {
    return clampTolerance(get_GuoLvTiaoJian(kFilterToleranceId));
}

void set_FilterTolerance(int k) {
    set_GuoLvTiaoJian(kFilterToleranceId, clampTolerance(k));
}

BacktestResult run_Backtest(IssueNumber from, IssueNumber to, const std::function<bool(int, int)>& progress) {
    SharedState& s = shared();
    BacktestResult r;
    r.tolerance = filter_Tolerance();
    auto c = store_Query(QStringLiteral("select 期号,红球1,红球2,红球3,红球4,红球5,红球6,蓝球 from 历史记录 "
                                        "where 期号>=? and 期号<=? order by 期号 asc"),
                         {from, to});
    for (; !c->eof(); c->moveNext()) {
        BacktestDraw d;
        d.issue = c->intValue(0);
        for (int i = 1; i <= 6; ++i) d.reds[size_t(i)] = c->intValue(i);
        d.blue = c->intValue(7);
        r.draws << d;
    }
    const KeepJudgingState kept;

    struct Tally {
        BacktestCondition stats;
        int run = 0;
        int lastMiss = -1;
    };
    QHash<const FilterDef*, Tally> tallies;
    // One transaction for the many small reads: a statement outside one locks the file each time.
    Transaction reads(store());
    ConditionReadCache cache;
    HistoryDrawCache draws;
    ConditionsByIssue byIssue;
    int done = 0;
    for (; done < r.draws.size(); ++done) {
        if (progress && progress(done, int(r.draws.size()))) {
            r.stopped = true;
            break;
        }
        BacktestDraw& d = r.draws[done];
        s.guoLvShuZu = kept.array();
        const std::vector<PreparedCondition> conditions = byIssue.prepare(d.issue);
        TicketBalls ticket;
        ticket.reds = d.reds;
        ticket.blue = d.blue;
        d.failed = failed_Conditions(conditions, ticket);
        d.survives = d.failed.size() <= r.tolerance;
        r.survived += d.survives;
        for (const PreparedCondition& pc : conditions) {
            Tally& t = tallies[pc.def];
            t.stats.label = pc.label;
            ++t.stats.total;
            if (!d.failed.contains(pc.label)) {
                ++t.stats.passed;
                t.run = 0;
            } else {
                t.stats.longestMissRun = std::max(t.stats.longestMissRun, ++t.run);
                t.lastMiss = done;
            }
        }
    }
    r.draws = r.draws.mid(0, done);
    // The conditions in the run's order.
    for (const FilterStep& step : filterSteps())
        for (const FilterDef& def : step.filters) {
            auto it = tallies.find(&def);
            if (it == tallies.end()) continue;
            it->stats.sinceLastMiss = it->lastMiss < 0 ? -1 : done - 1 - it->lastMiss;
            r.conditions << it->stats;
        }
    return r;
}

QByteArray backtest_DrawsCsv(const BacktestResult& r) {
    QList<QStringList> rows{
        {QStringLiteral("期号"), QStringLiteral("开奖号码"), QStringLiteral("未通过的条件")}};
    for (const BacktestDraw& d : r.draws)
        rows << QStringList{QString::number(d.issue), ballsText(d.reds, d.blue), d.failed.join(u' ')};
    return csvBytes(rows);
}

QByteArray backtest_ConditionsCsv(const BacktestResult& r) {
    QList<QStringList> rows{{QStringLiteral("条件"), QStringLiteral("通过期数"), QStringLiteral("回测期数"),
                             QStringLiteral("通过率"), QStringLiteral("最长连续未通过"),
                             QStringLiteral("距上次未通过")}};
    for (const BacktestCondition& c : r.conditions)
        rows << QStringList{c.label.trimmed(),
                            QString::number(c.passed),
                            QString::number(c.total),
                            QString::number(c.total ? 100.0 * c.passed / c.total : 0.0, 'f', 1) + u'%',
                            QString::number(c.longestMissRun),
                            c.sinceLastMiss < 0 ? QStringLiteral("-") : QString::number(c.sinceLastMiss)};
    return csvBytes(rows);
}

int run_GuoLvWithTolerance(IssueNumber issue, int k) {
    SharedState& s = shared();
    const std::vector<PreparedCondition> conditions = prepare_Conditions(issue);
    TicketSet& set = tickets_InPlay(issue);
    std::vector<int> misses(conditions.size(), 0);
    int counter = 0, removed = 0;
    const QString savedLog = s.operationLog;
    try {
        Screen& ui = screen();
        RunPanel panel(int(set.rows.size()));
        log_Set(savedLog + kCrLf2 + QStringLiteral("[容错值=") + to_QuanJiao(k) +
                QStringLiteral("]过滤正在进行中．．．"));
        for (size_t i = 0; i < set.rows.size() && !s.tingZhi; ++i) {
            TicketRecord& row = set.rows[i];
            int failed = 0;
            // A verdict that cannot be given breaks the run, as it breaks the plain one.
            for (size_t c = 0; c < conditions.size(); ++c)
                if (!ticket_Passes(conditions[c].test, row.balls, conditions[c].values)) {
                    ++failed;
                    ++misses[c];
                }
            decide_Ticket(row, failed <= k, counter);
            removed += failed > k;
            ui.ui_Pump();
            panel.step(int(i) + 1);
        }
    } catch (...) {
        tickets_Done(false);
        throw;
    }
    set.purge();
    const bool stopped = s.tingZhi;
    tickets_Done(!stopped);
    QString text = savedLog;
    for (size_t c = 0; c < conditions.size(); ++c)
        text += kCrLf2 + msg::filterMisses(conditions[c].label, misses[c]);
    if (!stopped) text += kCrLf2 + msg::toleranceRemoved(k, removed, counter);
    log_Set(text);
    return counter;
}

}  // namespace dovrex
