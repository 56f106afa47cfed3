#pragma once

#include <functional>
#include <vector>

#include "analysis/probability.h"
#include "app/pipeline_commands.h"
#include "filters/condition_store.h"
#include "filters/filter_run.h"
#include "pipeline/pick_state.h"
#include "screen/ticket_page.h"
#include "support/test_support.h"

namespace dovrex::test {

// Every six of `reds` in lexicographic order.
inline std::vector<Reds> sixesOf(const std::vector<int>& reds) {
    std::vector<Reds> out;
    Reds r{};
    std::function<void(int, size_t)> walk = [&](int depth, size_t from) {
        if (depth > 6) {
            out.push_back(r);
            return;
        }
        for (size_t i = from; i < reds.size(); ++i) {
            r[size_t(depth)] = reds[i];
            walk(depth + 1, i + 1);
        }
    };
    walk(1, 0);
    return out;
}

// A fresh store; the pick state, the ticket grid and the filter run state start as in a new process.
class PipelineTest : public FreshStoreTest {
  protected:
    ~PipelineTest() override { clearTicketTable(); }

    // Reds 1..reds and blues 1..blues picked as drags.
    static void pickDrags(int reds, int blues) {
        set_GuoLvFanWei(1, reds, kPickDrag);
        set_GuoLvFanWei(101, 100 + blues, kPickDrag);
    }

    // Whether the operation log ends with, or holds, `text`.
    static bool logEndsWith(QStringView text) { return shared().operationLog.endsWith(text); }
    static bool logContains(QStringView text) { return shared().operationLog.contains(text); }

  public:
    struct Ticket {
        int id, serial, issue;
        Reds reds;
        int blue, mark, formula;
        int shrinkMark, scratch;  // 缩水标记, 临时数据
    };

  protected:
    // The tickets of one issue (or all with 0) in ID order.
    static std::vector<Ticket> tickets(IssueNumber issue = 0) {
        std::vector<Ticket> out;
        auto c = store_Query(QStringLiteral("select * from 日志表 where 期号=? or ?=0 order by ID"),
                             {issue, issue});
        for (; !c->eof(); c->moveNext()) {
            Ticket t{c->intValue(QStringLiteral("ID")),       c->intValue(QStringLiteral("序号")),
                     c->intValue(QStringLiteral("期号")),     {},
                     c->intValue(QStringLiteral("蓝球")),     c->intValue(QStringLiteral("过滤标记")),
                     c->intValue(QStringLiteral("缩水公式")), c->intValue(QStringLiteral("缩水标记")),
                     c->intValue(QStringLiteral("临时数据"))};
            for (int i = 1; i <= 6; ++i) t.reds[size_t(i)] = c->intValue(QStringLiteral("红球%1").arg(i));
            out.push_back(t);
        }
        return out;
    }
};

}  // namespace dovrex::test
