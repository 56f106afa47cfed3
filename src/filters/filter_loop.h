#pragma once

#include <QString>
#include <array>
#include <functional>
#include <optional>
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
// A test reads the reds only unless it says otherwise: the pass over the whole space judges the
// six reds once and only the blue-reading tests once a blue.
struct TicketTest {
    std::function<int(const TicketBalls&)> value;
    std::function<bool(const TicketBalls&)> accept;
    bool readsBlue = false;
    // Of a blue-reading test, where the reds alone can settle it: true when the ticket passes
    // whatever its blue, so that a pass over many blues asks the blue only where it matters.
    std::function<bool(const TicketBalls&)> redsPass = nullptr;
};

// guoLvShuZu as a filter reads it.
using ConditionArray = std::array<int, 200>;

// The verdict on one ticket: the test's own, or its value's entry in `values` above 0. A value
// outside the array, or a red outside 1..33 for a table (unless already checked), is a fatal
// range error.
inline bool ticket_Passes(const TicketTest& test, const TicketBalls& balls, const ConditionArray& values,
                          bool redsChecked = false);

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
    int slot = 0;              // of a looped filter: 区间k, 自定义组k, 单双组合 slot

    std::function<void(FilterPass&)> beforeSwitch;  // runs before the switch is read
    std::function<bool()> switchedOn;               // replaces "使用情况 = 1" of switchNo
    // After the switch test: warnings, own log lines. False ends the pass with 0 and no more lines.
    std::function<bool(FilterPass&)> afterSwitch;
    // After the tickets are read (there is at least one): the tables, then the test of a ticket.
    std::function<TicketTest(FilterPass&)> prepare;
    // A pass of its own instead of the shared loop; returns what remains.
    std::function<int(IssueNumber, const FilterDef&)> run;
    // For a filter with a pass of its own: the same verdict on one ticket, for the back-test and
    // the run with a tolerance.
    std::function<TicketTest(FilterPass&)> ticketTest;
    // The verdict depends on the issue (the draws before it), not on the condition rows alone.
    bool dependsOnIssue = false;

    bool provided() const { return prepare || run; }
};

// A ticket still in play, as the passes of a run hold it.
struct TicketRecord {
    long long rowId = 0;
    int serial = 0;  // 序号 now
    int mark = 0;    // 过滤标记 now
    TicketBalls balls;
    int storedSerial = 0;  // as the store holds them
    int storedMark = 0;
};

// A pass's verdict on a row: a kept row is numbered next, the others are marked for the DELETE.
inline void decide_Ticket(TicketRecord& r, bool keep, int& counter) {
    if (keep) {
        r.mark = 1;
        r.serial = ++counter;
    } else {
        r.mark = -1;
    }
}

// The tickets of one issue still in play (过滤标记>=0) in 序号 order, and what the passes did to
// them. A filter run keeps one set for all its passes and writes it back once, when it ends or a
// pass is stopped or broken: the store ends up with the same rows, marks and numbers as passes
// that wrote row by row, at a fraction of the cost. Outside a run each pass has a set of its own.
class TicketSet {
  public:
    explicit TicketSet(IssueNumber issue);
    IssueNumber issue() const { return issue_; }
    std::vector<TicketRecord> rows;
    bool redsChecked = false;  // every red read lies in 1..33: the per-number tables need no check
    // The DELETE of a pass: rows marked below 0 leave the set.
    void purge();
    // Removes rows for which `gone` holds, keeping the order (the marks are not touched).
    void remove(const std::function<bool(const TicketRecord&)>& gone);
    // Marks, numbers and deletions to the store, in one transaction.
    void write();

  private:
    IssueNumber issue_;
    std::vector<long long> deleted_;
    long long maxRowId_ = 0;
    bool purgeStore_ = false;
};

// The set of `issue` in play: the run's when a run holds one, else read now.
TicketSet& tickets_InPlay(IssueNumber issue);
// A pass is done with the set: outside a run, or when the pass did not end cleanly (Stop, error),
// the set is written back and forgotten, so that what follows reads the store.
void tickets_Done(bool clean);

// Holds the tickets in memory across the passes of one run; writes them back when it goes, also
// when an error leaves the run.
class TicketRunScope {
  public:
    TicketRunScope();
    ~TicketRunScope();
    TicketRunScope(const TicketRunScope&) = delete;
    TicketRunScope& operator=(const TicketRunScope&) = delete;
};

// True when the filter's switch is on: switchedOn, else 使用情况 of switchNo is exactly 1.
bool filter_SwitchedOn(const FilterDef& def);

// The shared filter loop: switch, condition rows, tickets of `issue` still in play (过滤标记>=0)
// by 序号, the test of every ticket, survivors renumbered from 1, rejects deleted, the log line.
// Stop acts at the next ticket: the tickets before it are decided, those behind keep their marks
// and 序号, the rejects seen are deleted and no result line is written. Returns the survivors
// counted (0 when the switch is off or there are no tickets).
int filter_SharedLoop(IssueNumber issue, const FilterDef& def);

// Clears 过滤标记, 缩水标记, 精选标记 and 临时数据 of the issue's tickets, with its progress and log
// lines. True when there were tickets and no Stop came; sets biaoJiQingLing unless stopped.
bool load_GuoLvShuJu(IssueNumber issue);

// Inline: the pass over the whole space asks it tens of millions of times.
[[noreturn]] void throw_RedOutOfRange(int position, int red);
[[noreturn]] void throw_ValueOutOfRange(int value);

inline bool ticket_Passes(const TicketTest& test, const TicketBalls& balls, const ConditionArray& values,
                          bool redsChecked) {
    if (!test.value) return test.accept(balls);
    // The per-number tables of the filters have rows 1..33 only.
    if (!redsChecked)
        for (int i = 1; i <= 6; ++i)
            if (balls.reds[size_t(i)] < 1 || balls.reds[size_t(i)] > kRedCount)
                throw_RedOutOfRange(i, balls.reds[size_t(i)]);
    const int v = test.value(balls);
    if (v < 0 || v >= int(values.size())) throw_ValueOutOfRange(v);
    return values[size_t(v)] >= 1;
}

}  // namespace dovrex
