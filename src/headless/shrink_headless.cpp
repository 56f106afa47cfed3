#include "headless/shrink_headless.h"

#include "filters/condition_store.h"
#include "headless/headless_runner.h"
#include "pipeline/distribution_report.h"
#include "pipeline/selection.h"
#include "pipeline/shrink.h"
#include "pipeline/weights.h"
#include "screen/shared_state.h"
#include "screen/ticket_page.h"

namespace dovrex {

namespace {

// A number, then the issue given or the grid's.
bool numberAndIssue(HeadlessRunner& r, const HeadlessArgs& a, int& number, int& issue) {
    return r.requireStore() && a.intAt(r, 0, number) && a.issueAt(r, 1, issue);
}

// "kept <n> bound <b>", and "optimal" when the bound shows that no fewer tickets would do.
QString keptLine(int kept) {
    const SharedState& s = shared();
    return QStringLiteral("kept %1 bound %2").arg(kept).arg(s.shrinkBound) +
           (s.shrinkOptimal ? QStringLiteral(" optimal") : QString());
}

// shrink-opt brings its own 优化缩水 settings for one shrink; the player's are back after it.
struct KeepShrinkSettings {
    const bool on = shrink_Optimised();
    const int seconds = get_GuoLvTiaoJian(kShrinkBudgetId);
    ~KeepShrinkSettings() {
        try {
            set_ShrinkOptimised(on);
            set_GuoLvTiaoJian(kShrinkBudgetId, seconds);
        } catch (...) {
            // A store that failed under the shrink has already said so.
        }
    }
};

int ticketCount(int issue) {
    return store().scalar(QStringLiteral("select count(*) from 日志表 where 期号=?"), {issue}).toInt();
}

}  // namespace

bool headless_Shrink(HeadlessRunner& r, const HeadlessArgs& a) {
    int t = 0, issue = 0;
    if (!numberAndIssue(r, a, t, issue)) return false;
    if (t < 3 || t > 7) return r.fail(QStringLiteral("t is 3..7"));
    const int kept = run_SuoShui(t, issue);
    show_HaoMaFenBu(issue);
    shared().tingZhi = 0;
    r.print(keptLine(kept));
    return true;
}

bool headless_ShrinkOptimised(HeadlessRunner& r, const HeadlessArgs& a) {
    int t = 0, seconds = 10, issue = 0;
    if (!r.requireStore() || !a.intAt(r, 0, t)) return false;
    if (t < 3 || t > 7) return r.fail(QStringLiteral("t is 3..7"));
    // A second word of seven digits is the issue; a smaller one the seconds.
    int next = 1;
    if (a.words.size() > 1 && (a.words.size() > 2 || a.words[1].size() < 7)) {
        if (!a.intAt(r, 1, seconds)) return false;
        if (seconds < 1 || seconds > kShrinkBudgetMax)
            return r.fail(QStringLiteral("seconds are 1..%1").arg(kShrinkBudgetMax));
        next = 2;
    }
    if (!a.issueAt(r, next, issue)) return false;
    SharedState& s = shared();
    int kept = 0;
    {
        KeepShrinkSettings keep;
        set_ShrinkOptimised(true);
        set_ShrinkBudgetSeconds(seconds);
        kept = run_SuoShui(t, issue);
    }
    show_HaoMaFenBu(issue);
    s.tingZhi = 0;
    r.print(keptLine(kept));
    return true;
}

bool headless_Coverage(HeadlessRunner& r, const HeadlessArgs& a) {
    int issue = 0;
    if (!r.requireStore() || !a.issueAt(r, 0, issue)) return false;
    const QString line = coverage_OfIssue(issue);
    r.print(line.isEmpty() ? QStringLiteral("no shrink of %1 in this session").arg(issue) : line);
    return true;
}

bool headless_Select(HeadlessRunner& r, const HeadlessArgs& a) {
    int n = 0, issue = 0;
    if (!numberAndIssue(r, a, n, issue)) return false;
    if (n < 1) return r.fail(QStringLiteral("n is 1 or more"));
    shared().tingZhi = 0;
    run_JingXuan(issue, n);
    shared().tingZhi = 0;
    r.print(QStringLiteral("tickets %1").arg(ticketCount(issue)));
    return true;
}

bool headless_Weights(HeadlessRunner& r, const HeadlessArgs& a) {
    if (!r.requireStore()) return false;
    for (const QString& w : a.words) {
        const QStringList parts = w.split(u'=');
        bool ok1 = false, ok2 = true;
        const int first = parts.value(0).toInt(&ok1);
        const int value = parts.size() == 2 ? parts[1].toInt(&ok2) : 0;
        if (!ok1 || !ok2 || parts.size() > 2) return r.fail(QStringLiteral("not a preset or n=value: ") + w);
        if (parts.size() == 1)
            cmmQZfenpei_Click(first);
        else
            SliderQuanZong_Change(first, value);
    }
    QStringList values;
    for (int n = 1; n <= 33; ++n) values << QString::number(shared().quanZhong[size_t(n)]);
    r.print(QStringLiteral("weights ") + values.join(u' '));
    return true;
}

}  // namespace dovrex
