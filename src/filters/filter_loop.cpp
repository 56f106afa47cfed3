#include "filters/filter_loop.h"

#include "app/shared_state.h"
#include "filters/condition_store.h"
#include "pipeline/prepared.h"
#include "pipeline/run_panel.h"

namespace dovrex {

namespace {

struct TicketRecord {
    long long rowId = 0;
    int serial = 0;  // 序号 as read
    int mark = 0;    // 过滤标记 as read
    TicketBalls balls;
    int newSerial = 0;
    bool passed = false;
};

// The tickets of the issue still in play, in 序号 order (rowid among equal 序号).
std::vector<TicketRecord> readTickets(IssueNumber issue) {
    std::vector<TicketRecord> rows;
    Prepared q(
        QStringLiteral("SELECT rowid,序号,红球1,红球2,红球3,红球4,红球5,红球6,蓝球,过滤标记 FROM 日志表 "
                       "WHERE 期号=? AND 过滤标记>=0 ORDER BY 序号 ASC, rowid ASC"));
    q.bind(1, issue);
    while (q.next()) {
        TicketRecord& r = rows.emplace_back();
        r.rowId = q.int64Column(0);
        r.serial = q.intColumn(1);
        for (int i = 1; i <= 6; ++i) r.balls.reds[size_t(i)] = q.intColumn(1 + i);
        r.balls.blue = q.intColumn(8);
        r.mark = q.intColumn(9);
    }
    return rows;
}

// Writes the verdicts of the first `done` tickets. With deleteRejects the rejects go at once (the
// DELETE of the pass would take them anyway); without, they stay marked -1, as a pass that broke
// off leaves them.
void writeVerdicts(const std::vector<TicketRecord>& rows, size_t done, bool deleteRejects) {
    Prepared mark(QStringLiteral("UPDATE 日志表 SET 过滤标记=?, 序号=? WHERE rowid=?"));
    Prepared reject(QStringLiteral("UPDATE 日志表 SET 过滤标记=-1 WHERE rowid=?"));
    Prepared drop(QStringLiteral("DELETE FROM 日志表 WHERE rowid=?"));
    for (size_t i = 0; i < done; ++i) {
        const TicketRecord& r = rows[i];
        if (r.passed) {
            if (r.mark != 1 || r.serial != r.newSerial)
                mark.bind(1, 1).bind(2, r.newSerial).bind(3, r.rowId).exec();
        } else {
            (deleteRejects ? drop : reject).bind(1, r.rowId).exec();
        }
    }
}

bool allowed(int v) {
    const auto& values = shared().guoLvShuZu;
    if (v < 0 || v >= int(values.size()))
        throw StoreError(QStringLiteral("guoLvShuZu: index %1 out of range").arg(v));
    return values[size_t(v)] >= 1;
}

}  // namespace

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

    std::vector<TicketRecord> rows = readTickets(issue);
    if (rows.empty()) return 0;
    pass.rows = int(rows.size());
    const TicketTest test = def.prepare(pass);

    Screen& ui = screen();
    RunPanel panel(pass.rows);
    log_Set(pass.savedLog + kCrLf2 + def.label + QStringLiteral("过滤正在进行中．．．"));
    int counter = 0;
    size_t done = 0;
    try {
        while (done < rows.size() && !s.tingZhi) {
            TicketRecord& r = rows[done];
            r.passed = test.value ? allowed(test.value(r.balls)) : test.accept(r.balls);
            if (r.passed) r.newSerial = ++counter;
            ++done;
            ui.ui_Pump();
            panel.step(int(done));
        }
    } catch (...) {
        // A broken pass keeps the verdicts it wrote and deletes nothing.
        Transaction tx(store());
        writeVerdicts(rows, done, false);
        throw;
    }
    {
        Transaction tx(store());
        writeVerdicts(rows, done, true);
        Prepared purge(QStringLiteral("DELETE FROM 日志表 WHERE 期号=? AND 过滤标记<0"));
        purge.bind(1, issue).exec();
    }
    if (!s.tingZhi)
        log_Set(pass.savedLog + kCrLf2 + pass.resultLabel + QStringLiteral("过滤后余：") +
                to_QuanJiao(counter) + QStringLiteral(" 注"));
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
