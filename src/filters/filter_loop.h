#pragma once

#include <QString>
#include <functional>
#include <vector>

#include "domain/game.h"

namespace dovrex {

// The balls of one ticket as a filter sees them: reds 1..6 (ascending, position 0 unused) and the blue.
struct TicketBalls {
    Reds reds{};
    int blue = 0;
};

// What a filter decides per ticket, built once before the row loop from its per-number tables.
// Exactly one of the two is set:
//  - value: an index into shared().guoLvShuZu; the ticket passes when the entry there is above 0.
//    An index outside 0..199 is a fatal range error (StoreError), as no valid ticket reaches one.
//  - accept: the verdict itself, for the filters that test otherwise (号码定位, 单双组合).
struct TicketTest {
    std::function<int(const TicketBalls&)> value;
    std::function<bool(const TicketBalls&)> accept;
};

// The state of one pass, handed to a family's hooks.
struct FilterPass {
    IssueNumber issue = 0;
    QString savedLog;     // the log text when the pass began; its lines are built from this copy
    QString resultLabel;  // head of the result line; the label unless a hook changes it
    int rows = 0;         // tickets the pass looks at
};

// One filter as the run knows it. A family supplies `prepare` (its tables and the value of a
// ticket) and, where it differs from the plain switch test, the hooks; a family with a pass of its
// own (历史数据过滤) supplies `run`. A filter with neither is one whose family is not in this build.
struct FilterDef {
    QString name;              // filter_HeZhi, ...
    QString label;             // log label: "[ 和 值 ]"
    int switchNo = 0;          // 条件 of 过滤条件使用情况
    int minId = 0;             // rows of 过滤条件 loaded into guoLvShuZu before the tickets are read
    int maxId = -1;            //   (none when maxId < minId)
    bool stopOnEntry = false;  // 区间, 自定义组, 单双组合 return at once when Stop is up

    std::function<void(FilterPass&)> beforeSwitch;  // runs before the switch is read
    std::function<bool()> switchedOn;               // replaces "使用情况 = 1" of switchNo
    // After the switch test: warnings, own log lines. False ends the pass with 0 and no more lines.
    std::function<bool(FilterPass&)> afterSwitch;
    // After the tickets are read (there is at least one): the tables, then the test of a ticket.
    std::function<TicketTest(FilterPass&)> prepare;
    // A pass of its own instead of the shared loop; returns what remains.
    std::function<int(IssueNumber, const FilterDef&)> run;

    bool provided() const { return prepare || run; }
};

// True when the filter's switch is on: switchedOn, else 使用情况 of switchNo is exactly 1.
bool filter_SwitchedOn(const FilterDef& def);

// The shared filter loop: switch, condition rows, tickets of `issue` still in play (过滤标记>=0)
// by 序号, the test of every ticket, survivors renumbered from 1, rejects deleted, the log line.
// Stop acts at the next ticket: the tickets before it are decided, those behind keep their marks
// and 序号, the rejects seen are deleted and no result line is written. Returns the survivors
// counted (0 when the switch is off or there are no tickets).
//
// The tickets are read once, decided in memory and written back in one transaction: the same
// rows, marks and numbers as a row-by-row pass, at a fraction of its cost.
int filter_SharedLoop(IssueNumber issue, const FilterDef& def);

// Clears 过滤标记, 缩水标记, 精选标记 and 临时数据 of the issue's tickets, with its progress and log
// lines. True when there were tickets and no Stop came; sets biaoJiQingLing unless stopped.
bool load_GuoLvShuJu(IssueNumber issue);

}  // namespace dovrex
