#include "pipeline/shrink.h"

#include <algorithm>
#include <bit>

#include "filters/condition_store.h"
#include "filters/filter_loop.h"
#include "pipeline/cover_bound.h"
#include "pipeline/selection.h"
#include "pipeline/shrink_optimise.h"
#include "pipeline/ticket_init.h"
#include "pipeline/ticket_rows.h"
#include "pipeline/weights.h"
#include "screen/control_roles.h"
#include "screen/prepared.h"
#include "screen/run_panel.h"
#include "screen/shared_state.h"
#include "screen/ticket_page.h"

namespace dovrex {

namespace {

// Rows visited between two yields in the inner walk: the walk is a few nanoseconds a row, so a
// yield per row would cost more than the work while the window gains nothing from it.
constexpr int kRowsPerYield = 1024;
// The most the plain shrink spends on its lower bound.
constexpr int kPlainBoundMs = 400;

int countTickets(IssueNumber issue) {
    return store().scalar(QStringLiteral("select count(*) from 日志表 where 期号=?"), {issue}).toInt();
}

QString resultLine(int t, int count) {
    return QStringLiteral("[") + shrinkCaption(t) + QStringLiteral("]缩水后余：") + to_QuanJiao(count) +
           QStringLiteral(" 注，") + to_QuanJiao(ticketsCost(count));
}

struct TimerOff {
    ~TimerOff() { screen().ui_Set(role::TimerSuosuijinxingzong, QStringLiteral("enabled"), false); }
};

// 序号 1, 2, 3 ... over the whole table; returns the last number written.
int renumber() {
    Transaction tx(store());
    const int n = renumber_StoredTickets();
    RunPanel(n).show(n);
    return n;
}

QString seconds(int ms) {
    return to_QuanJiao(QString::number(ms / 1000.0, 'f', 1));
}

// Why the optimiser ended, and what it kept against the plain scan.
QString optimiseLine(const OptimiseResult& r, int plain, int budgetMs) {
    QString line = QStringLiteral("优化缩水：普通缩水 ") + to_QuanJiao(plain) +
                   QStringLiteral(" 注，优化后 ") + to_QuanJiao(int(r.kept.size())) +
                   QStringLiteral(" 注，用时 ") + seconds(r.elapsedMs) +
                   QStringLiteral(" 秒，最好的结果在第 ") + seconds(r.bestAtMs) + QStringLiteral(" 秒找到。");
    switch (r.end) {
        case OptimiseEnd::Proven:
            return line + QStringLiteral("已达到可证明的最少注数，提前结束。");
        case OptimiseEnd::Settled:
            return line + QStringLiteral("此后 ") + seconds(r.elapsedMs - r.bestAtMs) +
                   QStringLiteral(" 秒没有找到更少的注数，提前结束。");
        case OptimiseEnd::TimeLimit:
            return line + QStringLiteral("已用完 ") + seconds(budgetMs) +
                   QStringLiteral(" 秒的时间上限，继续优化也许还能更少。");
        case OptimiseEnd::Stopped:
            return line + QStringLiteral("用户停止了优化，保留了停止前找到的最少注数。");
    }
    return line;
}

// Replaces the scan's result by the optimised one (Stop keeps the best found so far) and returns
// the optimiser's line for the log.
QString optimiseScan(ShrinkScan& scan, const std::vector<std::uint64_t>& masks, const std::vector<int>& marks,
                     int t, int keptWhole) {
    SharedState& s = shared();
    Screen& ui = screen();
    const CoverProblem problem = coverProblemOf(masks, marks, t, keptWhole);
    const int budgetMs = shrink_BudgetSeconds() * 1000;
    ui.ui_Set(role::LabelJinduAll, QStringLiteral("text"), QStringLiteral("优化中"));
    ui.ui_Progress(0, budgetMs, 0, true);
    const OptimiseResult result = optimise_Cover(problem, scan.kept, budgetMs, [&](const CoverProgress& p) {
        ui.ui_Progress(0, budgetMs, std::min(p.elapsedMs, budgetMs), true);
        ui.ui_Set(role::LabelJindu, QStringLiteral("text"), QString::number(p.best));
        ui.ui_Pump();
        return s.tingZhi != 0;
    });
    // A Stop during the search keeps its best set, and the shrink goes on as finished.
    s.tingZhi = 0;
    s.shrinkBound = result.bound;
    s.shrinkOptimal = result.optimal;
    s.shrinkBestAtMs = result.bestAtMs;
    const int plain = int(scan.kept.size());
    std::vector<char> keep(masks.size(), 0);
    for (int i : result.kept) keep[size_t(i)] = 1;
    scan.kept = result.kept;
    scan.removed.clear();
    for (size_t i = 0; i < masks.size(); ++i)
        if (!keep[i] && marks[i] >= 0) scan.removed.push_back(int(i));
    return optimiseLine(result, plain, budgetMs);
}

// The plain scan's bound: what the time of a scan affords (a bound cut short is weaker, never
// wrong).
void boundScan(const ShrinkScan& scan, const std::vector<std::uint64_t>& masks, const std::vector<int>& marks,
               int t, int keptWhole) {
    SharedState& s = shared();
    const CoverProblem problem = coverProblemOf(masks, marks, t, keptWhole);
    s.shrinkBound = lowerBound_SuoShui(problem, kPlainBoundMs, [&] {
                        screen().ui_Pump();
                        return s.tingZhi != 0;
                    }).value();
    s.shrinkOptimal = int(scan.kept.size()) <= s.shrinkBound;
}

// "可证明至少需要 N 注" beside the kept count, or "已是最少注数" when they meet.
QString boundText() {
    const SharedState& s = shared();
    return s.shrinkOptimal
               ? QStringLiteral("；已是最少注数")
               : QStringLiteral("；可证明至少需要 ") + to_QuanJiao(s.shrinkBound) + QStringLiteral(" 注");
}

// Checks that every ticket the shrink started from meets a kept one in t balls, remembers the
// original set for the coverage report, and returns the report's line (or the fault).
QString proveGuarantee(const ShrinkScan& scan, const std::vector<std::uint64_t>& masks,
                       const std::vector<int>& marks, int t, IssueNumber issue) {
    std::vector<std::uint64_t> original, kept;
    for (size_t i = 0; i < masks.size(); ++i)
        if (marks[i] >= 0) original.push_back(masks[i]);
    // What stays is every ticket the shrink did not remove: the kept ones, and those an old mark
    // took out of the walk.
    std::vector<char> removed(masks.size(), 0);
    for (int i : scan.removed) removed[size_t(i)] = 1;
    for (size_t i = 0; i < masks.size(); ++i)
        if (!removed[i]) kept.push_back(masks[i]);
    SharedState& s = shared();
    s.shrinkOriginalIssue = issue;
    s.shrinkOriginal = original;
    const CoverageReport report = coverage_Report(original, kept, std::min(t, 4));
    int missed = 0;
    for (int k = 0; k < t && k < 8; ++k) missed += report.best[k];
    if (missed > 0) {
        const QString fault = msg::kShrinkGuaranteeBroken.arg(missed);
        screen().ui_Message(fault, MessageKind::Error);
        return fault;
    }
    return coverage_Line(report);
}

}  // namespace

QString shrinkCaption(int t) {
    static const QString captions[] = {QStringLiteral("保三型"), QStringLiteral("保四型"),
                                       QStringLiteral("保五型"), QStringLiteral("保六型"),
                                       QStringLiteral("保七型")};
    return t >= 3 && t <= 7 ? captions[t - 3] : QString();
}

ShrinkScan scan_SuoShui(const std::vector<std::uint64_t>& masks, const std::vector<int>& marks, int t,
                        const std::function<bool(int)>& stopped, int keptWhole) {
    ShrinkScan out;
    const int n = int(masks.size());
    if (n == 0) return out;
    keptWhole = std::clamp(keptWhole, 0, n);
    // The tickets kept before the walk starts: the whole formula, or else the first ticket.
    const int first = std::max(keptWhole, 1);
    for (int i = 0; i < first; ++i) out.kept.push_back(i);
    // The rows behind the current kept one that the walk still compares, in scan order.
    std::vector<int> live;
    live.reserve(size_t(n));
    for (int i = first; i < n; ++i)
        if (marks[size_t(i)] >= 0) live.push_back(i);
    size_t start = 0;
    int sinceYield = 0;
    // Removes from live[start..] every ticket sharing t balls with the kept one; false on a Stop.
    const auto walk = [&](std::uint64_t jiHaoBiao) {
        size_t w = start;
        size_t r = start;
        bool stop = false;
        for (; r < live.size(); ++r) {
            const int j = live[size_t(r)];
            if (std::popcount(jiHaoBiao & masks[size_t(j)]) >= t)
                out.removed.push_back(j);
            else
                live[w++] = j;
            if (++sinceYield == kRowsPerYield) {
                sinceYield = 0;
                if (stopped && stopped(int(out.removed.size()))) {
                    stop = true;
                    ++r;
                    break;
                }
            }
        }
        for (; r < live.size(); ++r) live[w++] = live[r];
        live.resize(w);
        return !stop && !(stopped && stopped(int(out.removed.size())));
    };
    // The kept-whole tickets never remove each other: they are all kept before any walk.
    for (int i = 0; i < first; ++i)
        if (!walk(masks[size_t(i)])) {
            out.stopped = true;
            return out;
        }
    for (;;) {
        // The next ticket to keep: the first one behind that nobody has visited; the rows that
        // carry an old positive mark before it drop out of the walk, as they lie behind it.
        size_t k = start;
        while (k < live.size() && marks[size_t(live[k])] != 0) ++k;
        if (k == live.size()) break;
        const int current = live[k];
        out.kept.push_back(current);
        start = k + 1;
        if (!walk(masks[size_t(current)])) {
            out.stopped = true;
            break;
        }
    }
    return out;
}

int formulaTickets(IssueNumber issue) {
    return store()
        .scalar(QStringLiteral("select count(*) from 日志表 where 期号=? and 缩水公式>=1 and 缩水公式<?"),
                {issue, kOutsideFormula})
        .toInt();
}

QString shrinkOrder(int t, IssueNumber issue, bool weights) {
    const QString plain = weights ? QStringLiteral("临时数据 DESC, 序号 ASC, rowid ASC")
                                  : QStringLiteral("临时数据 ASC, 序号 ASC, rowid ASC");
    if (t != 6 || formulaTickets(issue) == 0) return plain;
    // Tickets without a formula value (0 or empty) sort with those outside it.
    return QStringLiteral("CASE WHEN 缩水公式>=1 THEN 缩水公式 ELSE %1 END ASC, ").arg(kOutsideFormula) +
           plain;
}

int run_SuoShui(int t, IssueNumber issue) {
    SharedState& s = shared();
    Screen& ui = screen();
    s.tingZhi = 0;
    if (t >= 7) {
        const int count = countTickets(issue);
        log_Append(resultLine(7, count));
        ui.ui_Message(msg::kShrinkNothingRemoved);
        return count;
    }
    if (t < 1) return 0;  // no type chosen: a scan at 0 would keep a single ticket

    if (s.biaoJiQingLing) {
        log_Append(QStringLiteral("当前数据共：") + to_QuanJiao(countTickets(issue)) +
                   QStringLiteral("注．"));
    } else if (!load_GuoLvShuJu(issue)) {
        return 0;
    }
    run_ZhiNengYouHua(issue, t);
    const QString savedLog = s.operationLog;
    const bool weights = run_QuanZhong(issue);

    std::vector<long long> rowids;
    std::vector<std::uint64_t> masks;
    std::vector<int> marks;
    {
        TicketQuery scanOrder;
        scanOrder.extra = QStringLiteral("缩水标记");
        scanOrder.orderBy = shrinkOrder(t, issue, weights);
        for (const StoredTicket& ticket : read_StoredTickets(scanOrder, issue)) {
            rowids.push_back(ticket.key);
            masks.push_back(ballMask(ticket.reds, ticket.blue));
            marks.push_back(ticket.extra);
        }
    }
    if (rowids.empty()) {
        set_SuoShuiSeZhiVisible(false);
        return 0;
    }

    const int total = int(rowids.size());
    const QString caption = shrinkCaption(t);
    // At t 6 the formula's tickets, first in the scan order, are kept whole.
    const int keptWhole = t == 6 ? formulaTickets(issue) : 0;
    ShrinkScan scan;
    QString optimised;
    {
        TimerOff timerOff;
        RunPanel panel(QStringLiteral("请等待。。。"));
        ui.ui_Progress(0, total, 0, true);
        ui.ui_Set(role::TimerSuosuijinxingzong, QStringLiteral("enabled"), true);
        log_Set(savedLog + kCrLf2 + QStringLiteral("[") + caption + QStringLiteral("]缩水正在进行中．．．"));
        bool timerRunning = true;
        auto showRemoved = [&](int removed) {
            ui.ui_Progress(0, total, removed, true);
            if (removed > 0) {
                if (timerRunning) ui.ui_Set(role::TimerSuosuijinxingzong, QStringLiteral("enabled"), false);
                timerRunning = false;
                ui.ui_Set(role::LabelJindu, QStringLiteral("text"), QString::number(removed));
            }
            ui.ui_Set(role::LabelJinduAll, QStringLiteral("text"), QString::number(total));
        };
        int lastShown = -1;
        scan = scan_SuoShui(
            masks, marks, t,
            [&](int removed) {
                if (removed != lastShown && (removed - lastShown >= total / 250 + 1 || lastShown <= 0)) {
                    showRemoved(removed);
                    lastShown = removed;
                }
                ui.ui_Pump();
                return s.tingZhi != 0;
            },
            keptWhole);
        showRemoved(int(scan.removed.size()));
        s.shrinkBound = 0;
        s.shrinkOptimal = false;
        if (!scan.stopped && shrink_Optimised())
            optimised = optimiseScan(scan, masks, marks, t, keptWhole);
        else if (!scan.stopped)
            boundScan(scan, masks, marks, t, keptWhole);

        Transaction tx(store());
        Prepared keep(QStringLiteral("UPDATE 日志表 SET 缩水标记=? WHERE rowid=?"));
        for (int i : scan.kept) keep.bind(1, t).bind(2, rowids[size_t(i)]).exec();
        std::vector<char> gone(rowids.size(), 0);
        std::vector<long long> removed, survivors;
        removed.reserve(scan.removed.size());
        for (int i : scan.removed) {
            gone[size_t(i)] = 1;
            removed.push_back(rowids[size_t(i)]);
        }
        for (size_t i = 0; i < rowids.size(); ++i)
            if (!gone[i]) survivors.push_back(rowids[i]);
        delete_StoredTickets(issue, removed, survivors);
    }

    int kept = int(scan.kept.size());
    if (scan.stopped) {
        log_Set(savedLog + kCrLf2 + msg::kShrinkUserStop);
    } else {
        kept = renumber();
        load_TouZhuBiao(issue);
        log_Set(savedLog + kCrLf2 + resultLine(t, kept) + boundText() + kCrLf2 +
                (optimised.isEmpty() ? QString() : optimised + kCrLf2) +
                proveGuarantee(scan, masks, marks, t, issue));
    }
    // A Stop stays raised, so that the command skips the distribution report after it; a Stop
    // that only cut the optimiser short ended a finished shrink.
    if (!scan.stopped) s.tingZhi = 0;
    return kept;
}

void Option_ShuoSuiLeiXing_Click(int index) {
    set_GuoLvTiaoJian(kShrinkTypeId, index);
}

void Check_auto_Click(bool checked) {
    set_ShiYongQingKuang(kSmartSwitch, checked ? 1 : 0);
}

bool shrink_Optimised() {
    return get_GuoLvTiaoJian(kShrinkOptimisedId) == 1;
}

void set_ShrinkOptimised(bool on) {
    set_GuoLvTiaoJian(kShrinkOptimisedId, on ? 1 : 0);
}

int shrink_BudgetSeconds() {
    const int seconds = get_GuoLvTiaoJian(kShrinkBudgetId);
    return seconds < 1 ? kShrinkBudgetDefault : std::min(seconds, kShrinkBudgetMax);
}

void set_ShrinkBudgetSeconds(int seconds) {
    set_GuoLvTiaoJian(kShrinkBudgetId, std::clamp(seconds, 1, kShrinkBudgetMax));
}

QString TimerSuosuijinxingzong_Timer() {
    static const char* const frames[17] = {
        "     >>>>>", "      >>>>", "       >>>", "        >>", "         >", "          ",
        ">         ", ">>        ", ">>>       ", ">>>>      ", ">>>>      ", ">>>>      ",
        ">>>>>     ", " >>>>>    ", "  >>>>>   ", "   >>>>>  ", "    >>>>> "};
    int& at = shared().suoShuiTimerAt;
    at = (at + 1) % 17;
    const QString text = QString::fromLatin1(frames[at]);
    screen().ui_Set(role::LabelJindu, QStringLiteral("text"), text);
    return text;
}

QString coverage_OfIssue(IssueNumber issue) {
    const SharedState& s = shared();
    if (issue < 1 || s.shrinkOriginalIssue != issue) return {};
    std::vector<std::uint64_t> kept;
    for (const StoredTicket& ticket : read_StoredTickets(TicketQuery{}, issue))
        kept.push_back(ballMask(ticket.reds, ticket.blue));
    return coverage_Line(coverage_Report(s.shrinkOriginal, kept));
}

}  // namespace dovrex
