#include "pipeline/ticket_merge.h"

#include <unordered_map>
#include <vector>

#include "app/shared_state.h"
#include "pipeline/pipeline_commands.h"
#include "pipeline/prepared.h"
#include "pipeline/run_panel.h"

namespace dovrex {

namespace {

// 临时数据 as the merge's mark.
constexpr int kKept = 1;
constexpr int kMerged = -11;

struct RedsKey {
    std::array<int, 6> r;
    bool operator==(const RedsKey&) const = default;
};
struct RedsHash {
    size_t operator()(const RedsKey& k) const {
        size_t h = 0;
        for (int v : k.r) h = h * 1000003u + size_t(unsigned(v));
        return h;
    }
};

}  // namespace

int merge_XiangTongZhu() {
    SharedState& s = shared();
    Screen& ui = screen();

    struct Row {
        long long id;
        RedsKey reds;
    };
    std::vector<Row> rows;
    {
        Prepared read(
            QStringLiteral("select ID,红球1,红球2,红球3,红球4,红球5,红球6 from 日志表 order by 序号 asc"));
        while (read.next()) {
            Row row{read.int64Column(0), {}};
            for (int i = 0; i < 6; ++i) row.reds.r[size_t(i)] = read.intColumn(1 + i);
            rows.push_back(row);
        }
    }
    if (rows.empty()) return 0;
    const int total = int(rows.size());

    // Each distinct set of reds is one walk, in the order of its first ticket; a walk marks the later
    // tickets that equal it. Grouping them first makes each walk cost its own tickets only, not the
    // rest of the table, and gives the same marks, also when Stop ends the walks early.
    std::vector<std::vector<long long>> walks;  // per distinct reds: the first ID, then its repeats
    {
        std::unordered_map<RedsKey, size_t, RedsHash> seen;
        seen.reserve(rows.size());
        for (const Row& row : rows) {
            auto [it, added] = seen.try_emplace(row.reds, walks.size());
            if (added) walks.emplace_back();
            walks[it->second].push_back(row.id);
        }
    }

    {
        RunPanel panel(total);
        log_Append(QStringLiteral("合并相同注期前有： ") + to_QuanJiao(total) + QStringLiteral("  注") +
                   kCrLf2 + QStringLiteral("合并相同注正在进行中．．．"));
        Transaction tx(store());
        store_Execute(QStringLiteral("UPDATE 日志表 SET 临时数据=0"));
        Prepared mark(QStringLiteral("UPDATE 日志表 SET 临时数据=? WHERE ID=?"));
        int done = 0;
        for (const auto& walk : walks) {
            mark.bind(1, kKept).bind(2, walk.front()).exec();
            for (size_t i = 1; i < walk.size(); ++i) mark.bind(1, kMerged).bind(2, walk[i]).exec();
            ui.ui_Pump();
            panel.step(++done);
            if (s.tingZhi) {
                s.tingZhi = 0;
                break;
            }
        }
        store_Execute(QStringLiteral("DELETE FROM 日志表 where  临时数据<0"));
    }

    const int left = store().scalar(QStringLiteral("select count(*) from 日志表")).toInt();
    load_TouZhuBiao(-1);
    log_Append(QStringLiteral("合并相同注后余：") + to_QuanJiao(left) + QStringLiteral(" 注"));
    return left;
}

int hebingxt_Click() {
    int left = 0;
    try {
        left = merge_XiangTongZhu();
    } catch (const StoreError&) {
        // The general trap: the merge keeps what it did.
        return -1;
    }
    screen().ui_Message(msg::mergeLeft(left));
    return left;
}

}  // namespace dovrex
