#pragma once

#include <random>

#include "domain/condition_catalogue.h"
#include "filters/backtest.h"
#include "filters/condition_store.h"
#include "history/history_queries.h"
#include "pipeline/pick_state.h"
#include "screen/shared_state.h"
#include "store/store.h"

namespace dovrex::test {

// A random condition set in the store: one switch in `oneIn` on, most values of every condition
// allowed, and now and then the history match over the 300 draws before `issue`.
inline void randomConditions(std::mt19937& random, IssueNumber issue, unsigned oneIn = 4) {
    Transaction tx(store());
    for (int n : switchNumbers()) set_ShiYongQingKuang(n, random() % oneIn == 0 ? 1 : 0);
    for (const ConditionEntry& c : conditionCatalogue())
        if (c.hasRows())
            for (int id = c.minId; id <= c.maxId; ++id) set_GuoLvTiaoJian(id, random() % 6 == 0 ? 0 : 1);
    const bool history = random() % 3 == 0;
    store_Execute(QStringLiteral("UPDATE 历史数据过滤 SET 使用状态=?, 最小值=?, 最大值=?, 匹配值=?"),
                  {history ? 1 : 0, prev_QiHao(issue, 300), issue, random() % 2 == 0 ? 5 : 6});
}

// A player's whole routine: picks of 8 to 13 reds (now and then a banker) and 2 to 6 blues, a random
// condition set (one switch in eight on) with a tolerance of 0 or 1, the smart optimisation on or off, number
// weights or none, a shrink type (7 keeps all) and a selection count (0 for none).
struct RandomRoutine {
    int shrinkType = 7;
    int select = 0;
};
inline RandomRoutine randomRoutine(std::mt19937& random, IssueNumber issue) {
    randomConditions(random, issue, 8);
    set_FilterTolerance(int(random() % 2));
    resetRedPicks();
    resetBluePicks();
    const int reds = 8 + int(random() % 6);
    std::vector<int> numbers(kRedCount);
    for (int n = 1; n <= kRedCount; ++n) numbers[size_t(n - 1)] = n;
    std::shuffle(numbers.begin(), numbers.end(), random);
    for (int i = 0; i < reds; ++i) set_GuoLvTiaoJian(numbers[size_t(i)], i == 0 && random() % 4 == 0 ? 2 : 1);
    const int blues = 2 + int(random() % 5);
    for (int i = 0; i < blues; ++i) set_GuoLvTiaoJian(kBlueBase + 1 + int(random() % kBlueCount), 1);
    set_ShiYongQingKuang(kSmartSwitch, random() % 2);
    for (int n = 1; n <= kRedCount; ++n)
        shared().quanZhong[size_t(n)] = random() % 3 == 0 ? int(random() % 9) : 0;
    if (random() % 2) shared().quanZhong.fill(0);
    RandomRoutine r;
    r.shrinkType = 3 + int(random() % 5);
    r.select = random() % 3 == 0 ? 1 + int(random() % 30) : 0;
    set_GuoLvTiaoJian(kShrinkTypeId, r.shrinkType);
    return r;
}

}  // namespace dovrex::test
