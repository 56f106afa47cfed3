#include "headless/pipeline_headless.h"

#include "app/pipeline_commands.h"
#include "filters/condition_store.h"
#include "filters/filter_run.h"
#include "headless/headless_runner.h"
#include "pipeline/pick_state.h"
#include "pipeline/space_init.h"
#include "pipeline/ticket_init.h"
#include "screen/shared_state.h"
#include "screen/ticket_page.h"

namespace dovrex {

namespace {

// Words from `first` on as IDs: single numbers or ranges "a-b". False (after failing) on a bad word.
bool idRanges(HeadlessRunner& r, const HeadlessArgs& a, int first, QList<QPair<int, int>>& out) {
    if (a.words.size() <= first) return r.fail(QStringLiteral("no ids given"));
    for (int i = first; i < a.words.size(); ++i) {
        const QStringList ends = a.words[i].split(u'-');
        bool ok1 = false, ok2 = true;
        const int lo = ends.value(0).toInt(&ok1);
        const int hi = ends.size() == 2 ? ends[1].toInt(&ok2) : lo;
        if (ends.size() > 2 || !ok1 || !ok2 || hi < lo)
            return r.fail(QStringLiteral("not an id or range: ") + a.words[i]);
        out.append({lo, hi});
    }
    return true;
}

bool setRanges(HeadlessRunner& r, const HeadlessArgs& a) {
    int value = 0;
    QList<QPair<int, int>> ranges;
    if (!r.requireStore() || !a.intAt(r, 0, value) || !idRanges(r, a, 1, ranges)) return false;
    for (const auto& [lo, hi] : ranges) set_GuoLvFanWei(lo, hi, value);
    return true;
}

bool redOrBlue(HeadlessRunner& r, const HeadlessArgs& a, bool& blue) {
    const QString w = a.words.value(0);
    if (w != QLatin1String("red") && w != QLatin1String("blue"))
        return r.fail(QStringLiteral("red or blue?"));
    blue = w == QLatin1String("blue");
    return true;
}

}  // namespace

bool headless_Pick(HeadlessRunner& r, const HeadlessArgs& a) {
    if (!setRanges(r, a)) return false;
    show_XuanHaoTongJi();
    return true;
}

bool headless_Click(HeadlessRunner& r, const HeadlessArgs& a) {
    int index = 0;
    if (!r.requireStore() || !a.intAt(r, 0, index)) return false;
    cmm_C7_Click(index);
    return true;
}

bool headless_Mode(HeadlessRunner& r, const HeadlessArgs& a) {
    bool blue = false;
    int tab = 0;
    if (!redOrBlue(r, a, blue) || !a.intAt(r, 1, tab)) return false;
    blue ? tabStrip_HouQu_Click(tab) : tabStrip_QiaQu_Click(tab);
    return true;
}

bool headless_ClearPicks(HeadlessRunner& r, const HeadlessArgs& a) {
    bool blue = false;
    if (!r.requireStore() || !redOrBlue(r, a, blue)) return false;
    blue ? cmm_clsH_Click() : cmm_clsQ_Click();
    return true;
}

bool headless_Picks(HeadlessRunner& r, const HeadlessArgs&) {
    if (!r.requireStore()) return false;
    const auto values = pick_Values();
    QStringList drags, bankers;
    for (int id = 1; id < int(values.size()); ++id) {
        if (id > kRedCount && id <= kBlueBase) continue;
        const QString name = id > kBlueBase ? QStringLiteral("b%1").arg(id - kBlueBase) : QString::number(id);
        if (values[size_t(id)] == kPickDrag) drags << name;
        if (values[size_t(id)] == kPickBanker) bankers << name;
    }
    show_XuanHaoTongJi();
    r.print(QStringLiteral("drags: ") + drags.join(u' '));
    r.print(QStringLiteral("bankers: ") + bankers.join(u' '));
    r.print(QStringLiteral("tickets: %1").arg(picks().zhuShu));
    return true;
}

bool headless_Condition(HeadlessRunner& r, const HeadlessArgs& a) {
    return setRanges(r, a);
}

bool headless_Switch(HeadlessRunner& r, const HeadlessArgs& a) {
    const QString state = a.words.value(a.words.size() - 1);
    if (state != QLatin1String("on") && state != QLatin1String("off"))
        return r.fail(QStringLiteral("on or off?"));
    HeadlessArgs numbers = a;
    numbers.words.removeLast();
    QList<QPair<int, int>> ranges;
    if (!r.requireStore() || !idRanges(r, numbers, 0, ranges)) return false;
    for (const auto& [lo, hi] : ranges)
        for (int n = lo; n <= hi; ++n) set_ShiYongQingKuang(n, state == QLatin1String("on") ? 1 : 0);
    return true;
}

bool headless_Init(HeadlessRunner& r, const HeadlessArgs& a) {
    int issue = 0;
    if (!r.requireStore() || !a.intAt(r, 0, issue)) return false;
    r.print(QStringLiteral("tickets %1").arg(init_TouZhu(issue)));
    return true;
}

bool headless_Filter(HeadlessRunner& r, const HeadlessArgs& a) {
    int issue = 0;
    if (!r.requireStore() || !a.issueAt(r, 0, issue)) return false;
    run_GuoLv(issue);
    r.print(
        QStringLiteral("tickets %1")
            .arg(
                store().scalar(QStringLiteral("select count(*) from 日志表 where 期号=?"), {issue}).toInt()));
    return true;
}

bool headless_Delete(HeadlessRunner& r, const HeadlessArgs& a) {
    int issue = 0;
    if (!r.requireStore() || (!a.words.isEmpty() && !a.intAt(r, 0, issue))) return false;
    delete_TouZhu(issue);
    return true;
}

bool headless_Command(HeadlessRunner& r, const HeadlessArgs& a) {
    int index = 0;
    if (!r.requireStore() || !a.intAt(r, 0, index)) return false;
    if (index < 0 || index >= kTouZhuCommands) return r.fail(QStringLiteral("commands are 0..7"));
    cmmTouZhu_Click(index);
    return true;
}

bool headless_Space(HeadlessRunner& r, const HeadlessArgs& a) {
    int on = 0;
    if (!r.requireStore() || !a.intAt(r, 0, on)) return false;
    if (on != 0 && on != 1) return r.fail(QStringLiteral("0 or 1?"));
    set_SpaceMode(on == 1);
    show_XuanHaoTongJi();
    r.print(QStringLiteral("space mode %1").arg(on));
    return true;
}

bool headless_SpaceCount(HeadlessRunner& r, const HeadlessArgs& a) {
    int issue = 0;
    if (!r.requireStore() || !a.issueAt(r, 0, issue)) return false;
    const SpaceResult result = filter_Space(issue, 0);
    r.print(QStringLiteral("space %1 kept %2").arg(result.space).arg(result.kept));
    return true;
}

}  // namespace dovrex
