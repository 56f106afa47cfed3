#pragma once

#include "core/pipeline_fixture.h"
#include "filters/filter_families.h"

namespace dovrex::test {

// A filter of the run by name (and slot of a looped one).
inline const FilterDef& filterNamed(QStringView name, int slot = 0) {
    for (const FilterStep& step : filterSteps())
        for (const FilterDef& def : step.filters)
            if (def.name == name && (step.filters.size() == 1 || def.slot == slot)) return def;
    throw std::runtime_error("no filter " + name.toString().toStdString());
}

// The test a filter builds for `issue`, as its pass would before the row loop.
inline TicketTest testOf(const FilterDef& def, IssueNumber issue) {
    FilterPass pass;
    pass.issue = issue;
    return def.prepare(pass);
}

inline int valueOf(QStringView name, const Reds& reds, IssueNumber issue = 2008118, int slot = 0) {
    TicketBalls b;
    b.reds = reds;
    b.blue = 1;
    return testOf(filterNamed(name, slot), issue).value(b);
}

// Tickets of one issue put straight into 日志表, numbered on from the last in the order given.
class FilterTest : public PipelineTest {
  protected:
    static constexpr IssueNumber kIssue = 2008118;
    static void addTickets(const std::vector<Reds>& reds, int blue = 1) {
        for (const Reds& r : reds) addTicket(kIssue, r, blue);
    }
    // Runs one filter as the run would, returning the survivors.
    static int runFilter(QStringView name, int slot = 0) {
        return filter_Run(kIssue, filterNamed(name, slot));
    }
    static std::vector<Reds> redsLeft() {
        std::vector<Reds> out;
        for (const auto& t : tickets(kIssue)) out.push_back(t.reds);
        return out;
    }
    static void allow(int lo, int hi, int value = 1) { set_GuoLvFanWei(lo, hi, value); }
    static void on(int n) { set_ShiYongQingKuang(n, 1); }
};

}  // namespace dovrex::test
