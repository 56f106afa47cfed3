#include "pipeline/ticket_merge.h"

#include <unordered_map>
#include <vector>

#include "pipeline/ticket_rows.h"
#include "screen/prepared.h"
#include "screen/run_panel.h"
#include "screen/shared_state.h"
#include "screen/ticket_page.h"

namespace dovrex {

namespace {

// 临时数据 as the merge's mark.
constexpr int kKept = 1;
constexpr int kMerged = -11;

struct RedsHash {
    size_t operator()(const Reds& reds) const {
        size_t h = 0;
        for (int v : reds) h = h * 1000003u + size_t(unsigned(v));
        return h;
    }
};

}  // namespace

int merge_XiangTongZhu() {
    SharedState& s = shared();
    Screen& ui = screen();

    TicketQuery everyIssue;  // the merge works on the whole table
    everyIssue.key = QStringLiteral("ID");
    everyIssue.where.clear();
    everyIssue.orderBy = QStringLiteral("序号 asc");
    const std::vector<StoredTicket> rows = read_StoredTickets(everyIssue);
    if (rows.empty()) return 0;
    const PassLog log;
    const int total = int(rows.size());

    // Each distinct set of reds is one walk, in the order of its first ticket; a walk marks the later
    // tickets that equal it. Grouping them first makes each walk cost its own tickets only, not the
    // rest of the table, and gives the same marks, also when Stop ends the walks early.
    std::vector<std::vector<long long>> walks;  // per distinct reds: the first ID, then its repeats
    {
        std::unordered_map<Reds, size_t, RedsHash> seen;
        seen.reserve(rows.size());
        for (const StoredTicket& row : rows) {
            auto [it, added] = seen.try_emplace(row.reds, walks.size());
            if (added) walks.emplace_back();
            walks[it->second].push_back(row.key);
        }
    }

    {
        RunPanel panel(total);
        log.show(QStringLiteral("合并相同注期前有： ") + to_QuanJiao(total) + QStringLiteral("  注") +
                 kCrLf2 + QStringLiteral("合并相同注正在进行中．．．"));
        // The walks run in memory; their marks reach the table at the end: 临时数据 of every row
        // at once, the first tickets of the walks done when a Stop left some undone, and the repeats
        // deleted in one statement.
        int done = 0;
        size_t walked = 0;
        for (; walked < walks.size(); ++walked) {
            ui.ui_Pump();
            panel.step(++done);
            if (s.tingZhi) {
                s.tingZhi = 0;
                ++walked;
                break;
            }
        }
        std::vector<long long> removed, survivors;
        removed.reserve(rows.size());
        survivors.reserve(rows.size());
        for (size_t w = 0; w < walks.size(); ++w) {
            survivors.push_back(walks[w].front());
            for (size_t i = 1; i < walks[w].size(); ++i)
                (w < walked ? removed : survivors).push_back(walks[w][i]);
        }
        Transaction tx(store());
        store_Execute(QStringLiteral("UPDATE 日志表 SET 临时数据=?"), {walked == walks.size() ? kKept : 0});
        if (walked < walks.size()) {
            Prepared mark(QStringLiteral("UPDATE 日志表 SET 临时数据=? WHERE ID=?"));
            for (size_t w = 0; w < walked; ++w) mark.bind(1, kKept).bind(2, walks[w].front()).exec();
        }
        delete_StoredTickets(kEveryIssue, removed, survivors);
    }

    const int left = store().scalar(QStringLiteral("select count(*) from 日志表")).toInt();
    load_TouZhuBiao(-1);
    log.show(QStringLiteral("合并相同注后余：") + to_QuanJiao(left) + QStringLiteral(" 注"));
    return left;
}

int hebingxt_Click() {
    int left = 0;
    try {
        left = merge_XiangTongZhu();
    } catch (const StoreWriteError&) {
        throw;  // a lost write is the command trap's to report
    } catch (const StoreError&) {
        // The general trap: the merge keeps what it did.
        return -1;
    }
    screen().ui_Message(msg::mergeLeft(left));
    return left;
}

}  // namespace dovrex
