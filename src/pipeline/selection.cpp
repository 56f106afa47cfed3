#include "pipeline/selection.h"

#include <algorithm>
#include <vector>

#include "filters/condition_store.h"
#include "history/history_queries.h"
#include "pipeline/shrink.h"
#include "pipeline/ticket_rows.h"
#include "screen/prepared.h"
#include "screen/run_panel.h"
#include "screen/shared_state.h"
#include "screen/ticket_page.h"

namespace dovrex {

namespace {

constexpr int kChosen = 999;  // 临时数据 of a ticket the selection keeps

// Scores the rows into 临时数据 until done or Stop; returns false when stopped.
bool scoreTickets(const std::vector<StoredTicket>& rows, IssueNumber issue, RunPanel& panel) {
    const ChaZhiBlock block = loadDifferenceBlock(issue);
    const ChaZhiMoShi pattern = calc_ChaZhiMoShi(block);
    SharedState& s = shared();
    Screen& ui = screen();
    Transaction tx(store());
    Prepared write(QStringLiteral("UPDATE 日志表 SET 临时数据=? WHERE rowid=?"));
    int done = 0;
    for (const StoredTicket& row : rows) {
        if (s.tingZhi) break;
        write.bind(1, calc_PiPeiShu(block, pattern, row.reds, row.blue)).bind(2, row.key).exec();
        ui.ui_Pump();
        panel.step(++done);
    }
    return !s.tingZhi;
}

// Writes `value` to 临时数据 of every row of a TOP query over 临时数据.
void writeTop(const QString& sql, IssueNumber issue, int value) {
    Transaction tx(store());
    auto c = store_Query(sql, {issue});
    for (; !c->eof(); c->moveNext()) c->setValue(0, value);
    c->close();
}

}  // namespace

ChaZhiBlock loadDifferenceBlock(IssueNumber issue) {
    ChaZhiBlock a{};
    const IssueNumber newest = prev_QiHao(issue, 1);
    const IssueNumber oldest = prev_QiHao(issue, 10);
    Prepared q(
        QStringLiteral("SELECT 期号,红球1,红球2,红球3,红球4,红球5,红球6,蓝球 FROM 历史记录 "
                       "WHERE 期号>=? AND 期号<=? ORDER BY 期号 ASC"));
    q.bind(1, oldest).bind(2, newest);
    int row = 10;
    while (q.next()) {
        if (row < 1) continue;  // more than ten draws in the range: the newest ten are not kept apart
        for (int c = 1; c <= 7; ++c) a[size_t(row)][size_t(c)] = q.intColumn(c);
        --row;
    }
    return a;
}

ChaZhiMoShi calc_ChaZhiMoShi(const ChaZhiBlock& a) {
    ChaZhiMoShi m{};
    int i = 0;
    for (int r = 2; r <= 10; ++r)
        for (int c = 1; c <= 7; ++c)
            for (int k = 1; k <= 7; ++k) m[size_t(i++)] = a[size_t(r)][size_t(c)] - a[1][size_t(k)];
    for (int p = 1; p <= 6; ++p)
        for (int q = p + 1; q <= 7; ++q) m[size_t(i++)] = a[1][size_t(p)] - a[1][size_t(q)];
    return m;
}

int calc_PiPeiShu(const ChaZhiBlock& a, const ChaZhiMoShi& chaZhiMoShi, const std::array<int, 8>& t) {
    int score = 1;  // position 462: 0 in both lists
    int i = 0;
    for (int r = 1; r <= 9; ++r)
        for (int c = 1; c <= 7; ++c) {
            const int v = a[size_t(r)][size_t(c)];
            for (int k = 1; k <= 7; ++k) score += v - t[size_t(k)] == chaZhiMoShi[size_t(i++)];
        }
    for (int p = 1; p <= 6; ++p)
        for (int q = p + 1; q <= 7; ++q) score += t[size_t(p)] - t[size_t(q)] == chaZhiMoShi[size_t(i++)];
    return score;
}

int calc_PiPeiShu(const ChaZhiBlock& a, const ChaZhiMoShi& chaZhiMoShi, const Reds& reds, int blue) {
    std::array<int, 8> t{};
    for (int i = 1; i <= kRedsPerTicket; ++i) t[size_t(i)] = reds[size_t(i)];
    t[7] = blue;
    return calc_PiPeiShu(a, chaZhiMoShi, t);
}

void run_ZhiNengYouHua(IssueNumber issue, int t) {
    if (get_ShiYongQingKuang(kSmartSwitch) != 1 || t >= 7) return;
    TicketQuery unfiltered;
    unfiltered.where = QStringLiteral("期号=? AND 过滤标记>=0");
    const auto rows = read_StoredTickets(unfiltered, issue);
    if (rows.empty()) return;
    RunPanel panel(int(rows.size()));
    const PassLog log;
    log.show(QStringLiteral("[ 智能优化 ]优化正在进行中．．．"));
    const bool done = scoreTickets(rows, issue, panel);
    writeTop(QStringLiteral(
                 "select top 60 percent 临时数据 from 日志表 where 期号=? order by 临时数据 asc,序号 asc"),
             issue, 0);
    if (done) log.show(QStringLiteral("[ 智能优化 ] 完 成 "));
}

void run_JingXuan(IssueNumber issue, int n) {
    // Only the chosen rows outlive the pass, every one at 999, so the scores stay in memory: the
    // cut is made here and written back as one delete (the table rebuilt when it holds only this
    // issue). A Stop cuts on the scores given so far, the rest keeping their stored 临时数据.
    struct Scored {
        StoredTicket ticket;
        int serial = 0;
        int scratch = 0;
    };
    std::vector<Scored> rows;
    {
        Prepared q(
            QStringLiteral("SELECT rowid,红球1,红球2,红球3,红球4,红球5,红球6,蓝球,序号,临时数据 FROM 日志表 "
                           "WHERE 期号=?"));
        q.bind(1, issue);
        while (q.next()) {
            Scored& r = rows.emplace_back();
            r.ticket.key = q.int64Column(0);
            for (int i = 1; i <= kRedsPerTicket; ++i) r.ticket.reds[size_t(i)] = q.intColumn(i);
            r.ticket.blue = q.intColumn(7);
            r.serial = q.intColumn(8);
            r.scratch = q.intColumn(9);
        }
    }
    if (rows.empty()) return;
    {
        RunPanel panel(int(rows.size()));
        const PassLog log;
        log.show(QStringLiteral("[ 号码分析 ]分析正在进行中．．．"));
        const ChaZhiBlock block = loadDifferenceBlock(issue);
        const ChaZhiMoShi pattern = calc_ChaZhiMoShi(block);
        SharedState& s = shared();
        Screen& ui = screen();
        int done = 0;
        for (Scored& row : rows) {
            if (s.tingZhi) break;
            row.scratch = calc_PiPeiShu(block, pattern, row.ticket.reds, row.ticket.blue);
            ui.ui_Pump();
            panel.step(++done);
        }
        // The n lowest by (临时数据, 序号), those tied with the last on both kept too, and any row
        // already chosen that kept its mark.
        std::vector<size_t> order(rows.size());
        for (size_t i = 0; i < order.size(); ++i) order[i] = i;
        auto lower = [&](size_t a, size_t b) {
            return rows[a].scratch != rows[b].scratch ? rows[a].scratch < rows[b].scratch
                                                      : rows[a].serial < rows[b].serial;
        };
        std::stable_sort(order.begin(), order.end(), lower);
        size_t keep = std::min(order.size(), size_t(std::max(n, 0)));
        while (keep > 0 && keep < order.size() && !lower(order[keep - 1], order[keep])) ++keep;
        std::vector<char> chosen(rows.size(), 0);
        for (size_t i = 0; i < keep; ++i) chosen[order[i]] = 1;
        std::vector<long long> removed, survivors;
        for (size_t i = 0; i < rows.size(); ++i)
            (chosen[i] || rows[i].scratch == kChosen ? survivors : removed).push_back(rows[i].ticket.key);

        Transaction tx(store());
        Prepared mark(QStringLiteral("UPDATE 日志表 SET 临时数据=? WHERE rowid=?"));
        for (long long id : survivors) mark.bind(1, kChosen).bind(2, id).exec();
        delete_StoredTickets(issue, removed, survivors);
        if (!s.tingZhi)
            log.show(QStringLiteral("[ 精选号码 ] 完 成 ，") +
                     to_QuanJiao(ticketsAndCost(int(survivors.size()))));
    }
    screen().ui_Message(msg::kSelectDone);
    load_TouZhuBiao(issue);
}

}  // namespace dovrex
