#include "pipeline/space_init.h"

#include <QLocale>
#include <algorithm>

#include "domain/condition_catalogue.h"
#include "filters/condition_store.h"
#include "filters/filter_run.h"
#include "pipeline/pick_expansion.h"
#include "screen/prepared.h"
#include "screen/run_panel.h"
#include "screen/shared_state.h"
#include "screen/ticket_page.h"
#include "store/all_or_nothing.h"

namespace dovrex {

bool space_Mode() {
    return get_GuoLvTiaoJian(kSpaceModeId) == 1;
}

void set_SpaceMode(bool on) {
    set_GuoLvTiaoJian(kSpaceModeId, on ? 1 : 0);
}

QString spaceText(long long space) {
    return QStringLiteral("大底 ") + QLocale(QLocale::English).toString(space) + QStringLiteral(" 注");
}

std::vector<SpaceRemoval> leastRemoving(const SpaceResult& r, int count) {
    std::vector<SpaceRemoval> out = r.removedBy;
    std::stable_sort(out.begin(), out.end(),
                     [](const SpaceRemoval& a, const SpaceRemoval& b) { return a.removed < b.removed; });
    if (out.size() > size_t(count)) out.resize(size_t(count));
    return out;
}

QString msg::spaceOverLimit(const SpaceResult& r) {
    QString text = spaceText(r.space) + QStringLiteral("，过滤后余 ") +
                   QLocale(QLocale::English).toString(r.kept) +
                   QStringLiteral(" 注，超过 100000 注的限制，没有写入任何号码。请收紧过滤条件。");
    const std::vector<SpaceRemoval> least = leastRemoving(r, 5);
    if (!least.empty()) {
        text += kCrLf2 + QStringLiteral("去除号码最少的条件：");
        for (const SpaceRemoval& c : least)
            text += kCrLf + c.label.trimmed() + QStringLiteral(" 去除 ") +
                    QLocale(QLocale::English).toString(c.removed) + QStringLiteral(" 注");
    }
    return text;
}

namespace {

// The log as the filter run leaves it: each condition's count, then the closing line.
QString runLog(const SpaceResult& r, IssueNumber issue) {
    QString text = spaceText(r.space);
    long long left = r.space;
    for (const SpaceRemoval& c : r.removedBy) {
        if (r.tolerance > 0) {
            text += kCrLf2 + msg::filterMisses(c.label, c.removed);
        } else {
            left -= c.removed;
            text += kCrLf2 + msg::filterLeft(c.label, left);
        }
    }
    if (r.tolerance > 0) text += kCrLf2 + msg::toleranceRemoved(r.tolerance, r.space - r.kept, r.kept);
    text += kCrLf2 + msg::filterRunDone(r.kept, issue, filterRun().liShiXiangGuan);
    return text;
}

void writeSurvivors(IssueNumber issue, const SpaceResult& r, bool replace) {
    AllOrNothing change(store());
    store_Execute(QStringLiteral("DELETE FROM 日志表 WHERE 期号<>?"), {issue});
    if (replace) store_Execute(QStringLiteral("DELETE FROM 日志表 WHERE 期号=?"), {issue});
    long long key = store().scalar(QStringLiteral("SELECT max(ID) FROM 日志表")).toLongLong();
    // Like the filter run, the marks say the tickets passed when a condition judged them.
    const int mark = r.removedBy.empty() ? 0 : 1;
    Prepared insert(
        QStringLiteral("INSERT INTO 日志表 (ID,序号,期号,红球1,红球2,红球3,红球4,红球5,红球6,蓝球,缩水公式,"
                       "过滤标记) VALUES (?,?,?,?,?,?,?,?,?,?,?,?)"));
    int serial = 0;
    for (const SpaceTicket& t : r.tickets) {
        insert.bind(1, ++key).bind(2, ++serial).bind(3, issue);
        for (int i = 1; i <= 6; ++i) insert.bind(3 + i, t.reds[size_t(i)]);
        insert.bind(10, t.blue).bind(11, t.formula).bind(12, mark);
        insert.exec();
    }
    change.commit();
}

}  // namespace

int init_FromSpace(IssueNumber issue, int existing, bool replace) {
    SharedState& s = shared();
    Screen& ui = screen();
    filterRun().liShiXiangGuan = false;
    const int kept = replace ? 0 : existing;

    const PickSet picks = read_PickSet();
    const long long redSets = ticketCount(picks.reds, picks.bankers, 1, 0);
    SpaceResult r;
    {
        RunPanel panel{int(redSets)};
        log_CaoZuo(spaceText(picks.tickets) + QStringLiteral("，过滤正在进行中．．．"), false);
        r = filter_Space(issue, kTicketLimit - kept, [&](long long done, long long) {
            panel.step(int(done));
            ui.ui_Pump();
            return s.tingZhi != 0;
        });
    }
    if (r.stopped) {
        log_CaoZuo(msg::kSpaceStopped, false);
        ui.ui_Message(msg::kSpaceStopped);
        return existing;
    }
    if (r.kept + kept > kTicketLimit) {
        const QString refusal = msg::spaceOverLimit(r);
        log_CaoZuo(refusal, false);
        ui.ui_Message(refusal);
        return existing;
    }
    writeSurvivors(issue, r, replace);
    const int rows = kept + int(r.kept);
    const QString done = msg::initDone(rows);
    log_Set(runLog(r, issue) + kCrLf2 + done + kCrLf);
    ui.ui_Message(done);
    load_TouZhuBiao(issue);
    return rows;
}

}  // namespace dovrex
