#include <algorithm>

#include "domain/condition_catalogue.h"
#include "filters/condition_store.h"
#include "filters/filter_families.h"
#include "filters/filter_run.h"
#include "screen/shared_state.h"

namespace dovrex {

namespace {

FilterDef definitionOf(const ConditionEntry& c) {
    FilterDef d;
    d.name = QString::fromUtf16(c.filter);
    d.label = QString::fromUtf16(c.logLabel);
    d.switchNo = c.switchNo;
    d.minId = c.minId;
    d.maxId = c.maxId;
    // The looped filters (区间, 自定义组, 单双组合) return at once when Stop is up.
    d.stopOnEntry = c.slot != kNoSlot;
    d.slot = c.slot == kNoSlot ? 0 : c.slot;
    return d;
}

// The two filters whose switch is not one row of 过滤条件使用情况.
void attachSwitches(FilterDef& d, const ConditionEntry& c) {
    if (c.switchCount > 1) {
        // On when any of its switches is on (号码定位: the seven positions).
        const int first = c.switchNo, last = c.switchNo + c.switchCount - 1;
        d.switchedOn = [first, last] {
            auto s = store_Query(
                QStringLiteral(
                    "select 使用情况 from 过滤条件使用情况 where 条件>=%1 and 条件<=%2 order by 条件 asc")
                    .arg(first)
                    .arg(last));
            for (; !s->eof(); s->moveNext())
                if (s->intValue(0) == 1) return true;
            return false;
        };
    } else if (c.switchCount == 0) {
        // 历史数据过滤: its switch is 使用状态 of its own table.
        d.switchedOn = [] {
            auto s = store_Query(QStringLiteral("select * from 历史数据过滤"));
            return s->recordCount() > 0 && s->intValue(QStringLiteral("使用状态")) == 1;
        };
    }
}

std::vector<FilterStep> buildSteps() {
    std::vector<const ConditionEntry*> entries;
    for (const ConditionEntry& c : conditionCatalogue())
        if (c.filter) entries.push_back(&c);
    std::stable_sort(entries.begin(), entries.end(), [](const ConditionEntry* a, const ConditionEntry* b) {
        return a->step != b->step ? a->step < b->step : a->slot < b->slot;
    });
    std::vector<FilterStep> steps;
    for (const ConditionEntry* c : entries) {
        FilterDef d = definitionOf(*c);
        attachSwitches(d, *c);
        attach_RangeFilter(d) || attach_CountFilter(d) || attach_ShapeFilter(d) || attach_HistoryFilter(d) ||
            attach_PositionFilter(d);
        if (steps.empty() || steps.back().step != c->step) steps.push_back(FilterStep{c->step, {}});
        steps.back().filters.push_back(std::move(d));
    }
    return steps;
}

}  // namespace

const std::vector<FilterStep>& filterSteps() {
    static const std::vector<FilterStep> steps = buildSteps();
    return steps;
}

}  // namespace dovrex
