#include "filters/filter_loop.h"

#include <algorithm>

#include "filters/condition_store.h"
#include "filters/filter_run.h"
#include "screen/prepared.h"
#include "screen/run_panel.h"
#include "screen/shared_state.h"

namespace dovrex {

void throw_RedOutOfRange(int position, int red) {
    throw StoreError(QStringLiteral("红球%1 = %2 out of range").arg(position).arg(red));
}

void throw_ValueOutOfRange(int value) {
    throw StoreError(QStringLiteral("guoLvShuZu: index %1 out of range").arg(value));
}

TicketSet::TicketSet(IssueNumber issue) : issue_(issue) {
    Prepared q(
        QStringLiteral("SELECT rowid,序号,红球1,红球2,红球3,红球4,红球5,红球6,蓝球,过滤标记 FROM 日志表 "
                       "WHERE 期号=? AND 过滤标记>=0 ORDER BY 序号 ASC, rowid ASC"));
    q.bind(1, issue);
    while (q.next()) {
        TicketRecord& r = rows.emplace_back();
        r.rowId = q.int64Column(0);
        r.serial = r.storedSerial = q.intColumn(1);
        for (int i = 1; i <= 6; ++i) r.balls.reds[size_t(i)] = q.intColumn(1 + i);
        r.balls.blue = q.intColumn(8);
        r.mark = r.storedMark = q.intColumn(9);
        maxRowId_ = std::max(maxRowId_, r.rowId);
    }
    redsChecked = std::all_of(rows.begin(), rows.end(), [](const TicketRecord& r) {
        for (int i = 1; i <= 6; ++i)
            if (r.balls.reds[size_t(i)] < 1 || r.balls.reds[size_t(i)] > kRedCount) return false;
        return true;
    });
}

void TicketSet::purge() {
    remove([](const TicketRecord& r) { return r.mark < 0; });
    purgeStore_ = true;
}

void TicketSet::remove(const std::function<bool(const TicketRecord&)>& gone) {
    size_t kept = 0;
    for (size_t i = 0; i < rows.size(); ++i) {
        if (gone(rows[i]))
            deleted_.push_back(rows[i].rowId);
        else
            rows[kept++] = rows[i];
    }
    rows.resize(kept);
}

void TicketSet::write() {
    Transaction tx(store());
    if (deleted_.size() > rows.size()) {
        // Most went: the few kept are named, the rest of those in play goes in one statement.
        // The rows in play are those at 过滤标记>=0 in the store, as the set was read; rows added
        // since (their ids are higher) are not the set's.
        store().execute(
            QStringLiteral("CREATE TEMP TABLE IF NOT EXISTS filter_keep(id INTEGER PRIMARY KEY)"));
        store().execute(QStringLiteral("DELETE FROM filter_keep"));
        Prepared keep(QStringLiteral("INSERT INTO filter_keep(id) VALUES (?)"));
        for (const TicketRecord& r : rows) keep.bind(1, r.rowId).exec();
        Prepared drop(
            QStringLiteral("DELETE FROM 日志表 WHERE 期号=? AND 过滤标记>=0 AND rowid<=? AND rowid NOT IN "
                           "(SELECT id FROM filter_keep)"));
        drop.bind(1, issue_).bind(2, maxRowId_).exec();
        store().execute(QStringLiteral("DELETE FROM filter_keep"));
        deleted_.clear();
    } else if (!deleted_.empty()) {
        Prepared drop(QStringLiteral("DELETE FROM 日志表 WHERE rowid=?"));
        for (long long id : deleted_) drop.bind(1, id).exec();
        deleted_.clear();
    }
    if (purgeStore_) {
        // Rows left at -1 by an earlier broken pass go with the DELETE of a finished one.
        Prepared purge(QStringLiteral("DELETE FROM 日志表 WHERE 期号=? AND 过滤标记<0"));
        purge.bind(1, issue_).exec();
        purgeStore_ = false;
    }
    const bool allPassed =
        std::all_of(rows.begin(), rows.end(), [](const TicketRecord& r) { return r.mark == 1; });
    if (allPassed &&
        std::any_of(rows.begin(), rows.end(), [](const TicketRecord& r) { return r.storedMark == 0; })) {
        // Every row in play passed: those still at 0 in the store are exactly the set's.
        Prepared mark(
            QStringLiteral("UPDATE 日志表 SET 过滤标记=1 WHERE 期号=? AND 过滤标记=0 AND rowid<=?"));
        mark.bind(1, issue_).bind(2, maxRowId_).exec();
        for (TicketRecord& r : rows) r.storedMark = 1;
    }
    Prepared mark(QStringLiteral("UPDATE 日志表 SET 过滤标记=?, 序号=? WHERE rowid=?"));
    for (TicketRecord& r : rows) {
        if (r.mark == r.storedMark && r.serial == r.storedSerial) continue;
        mark.bind(1, r.mark).bind(2, r.serial).bind(3, r.rowId).exec();
        r.storedMark = r.mark;
        r.storedSerial = r.serial;
    }
}

TicketSet& tickets_InPlay(IssueNumber issue) {
    FilterRunState& h = shared().filterRun;
    if (h.held && h.held->issue() != issue) {
        h.held->write();
        h.held.reset();
    }
    if (!h.held) h.held = std::make_shared<TicketSet>(issue);
    return *h.held;
}

void tickets_Done(bool clean) {
    FilterRunState& h = shared().filterRun;
    if (!h.held || (clean && h.holding)) return;
    // Forgotten first: a failing write must not leave a copy that disagrees with the store.
    const std::shared_ptr<TicketSet> set = std::move(h.held);
    h.held.reset();
    set->write();
}

TicketRunScope::TicketRunScope() {
    tickets_Done(false);
    shared().filterRun.holding = true;
}

TicketRunScope::~TicketRunScope() {
    shared().filterRun.holding = false;
    try {
        tickets_Done(false);
    } catch (...) {
        // Leaving by an error already; the store keeps what reached it.
    }
}

bool filter_SwitchedOn(const FilterDef& def) {
    if (def.switchedOn) return def.switchedOn();
    return get_ShiYongQingKuang(def.switchNo) == 1;
}

int filter_SharedLoop(IssueNumber issue, const FilterDef& def) {
    SharedState& s = shared();
    if (def.stopOnEntry && s.tingZhi) return 0;
    FilterPass pass;
    pass.issue = issue;
    pass.savedLog = s.operationLog;
    pass.resultLabel = def.label;
    if (def.beforeSwitch) def.beforeSwitch(pass);
    if (!filter_SwitchedOn(def)) return 0;
    if (def.afterSwitch && !def.afterSwitch(pass)) return 0;
    if (def.maxId >= def.minId) load_GuoLvFanWei(def.minId, def.maxId);

    TicketSet& set = tickets_InPlay(issue);
    std::vector<TicketRecord>& rows = set.rows;
    if (rows.empty()) {
        tickets_Done(true);
        return 0;
    }
    pass.rows = int(rows.size());
    int counter = 0;
    size_t done = 0;
    try {
        const TicketTest test = def.prepare(pass);
        Screen& ui = screen();
        RunPanel panel(pass.rows);
        log_Set(pass.savedLog + kCrLf2 + def.label + QStringLiteral("过滤正在进行中．．．"));
        while (done < rows.size() && !s.tingZhi) {
            TicketRecord& r = rows[done];
            decide_Ticket(r, ticket_Passes(test, r.balls, s.guoLvShuZu, set.redsChecked), counter);
            ++done;
            ui.ui_Pump();
            panel.step(int(done));
        }
    } catch (...) {
        // A broken pass keeps the verdicts it gave and deletes nothing.
        tickets_Done(false);
        throw;
    }
    set.purge();
    const bool stopped = s.tingZhi;
    tickets_Done(!stopped);
    if (!stopped) log_Set(pass.savedLog + kCrLf2 + msg::filterLeft(pass.resultLabel, counter));
    return counter;
}

bool load_GuoLvShuJu(IssueNumber issue) {
    SharedState& s = shared();
    std::vector<long long> rows;
    {
        Prepared q(QStringLiteral("SELECT rowid FROM 日志表 WHERE 期号=?"));
        q.bind(1, issue);
        while (q.next()) rows.push_back(q.int64Column(0));
    }
    bool stopped = false;
    if (!rows.empty()) {
        const int count = int(rows.size());
        {
            RunPanel panel(count);
            const QString line =
                QStringLiteral("正载入数据[") + to_QuanJiao(issue) + QStringLiteral("期]．．．");
            if (s.operationLog.size() >= 31)
                log_Set(kCrLf2 + line);
            else
                log_Append(line);
            Screen& ui = screen();
            size_t done = 0;
            while (done < rows.size()) {
                ++done;
                ui.ui_Pump();
                panel.step(int(done));
                if (s.tingZhi) break;
            }
            stopped = s.tingZhi;
            Transaction tx(store());
            if (done == rows.size()) {
                Prepared clear(QStringLiteral(
                    "UPDATE 日志表 SET 过滤标记=0,缩水标记=0,精选标记=0,临时数据=0 WHERE 期号=? AND "
                    "(过滤标记 IS NOT 0 OR 缩水标记 IS NOT 0 OR 精选标记 IS NOT 0 OR 临时数据 IS NOT 0)"));
                clear.bind(1, issue).exec();
            } else {
                Prepared clear(QStringLiteral(
                    "UPDATE 日志表 SET 过滤标记=0,缩水标记=0,精选标记=0,临时数据=0 WHERE rowid=?"));
                for (size_t i = 0; i < done; ++i) clear.bind(1, rows[i]).exec();
            }
        }
        if (!stopped)
            log_Append(QStringLiteral("当前数据共：") + to_QuanJiao(count) + QStringLiteral("注．"));
    } else if (issue > 0) {
        log_Append(QStringLiteral("表格中无[") + to_QuanJiao(issue) + QStringLiteral("]期数据．"));
    }
    s.biaoJiQingLing = stopped ? 0 : 1;
    return !rows.empty() && !stopped;
}

}  // namespace dovrex
