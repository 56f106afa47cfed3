#include "bench.h"
#include "filters/condition_store.h"
#include "screen/shared_state.h"

namespace bench {

using namespace dovrex;

void blankRoutine() {
    store_Execute(QStringLiteral("UPDATE 过滤条件使用情况 SET 使用情况=0"));
    store_Execute(QStringLiteral("UPDATE 历史数据过滤 SET 使用状态=0"));
    resetRedPicks();
    resetBluePicks();
    resetConditionSet();
}

void typicalConditions() {
    auto allow = [](int lo, int hi) { set_GuoLvFanWei(lo, hi, 1); };
    auto on = [](int n) { set_ShiYongQingKuang(n, 1); };
    allow(1070, 1110), on(1);
    allow(3642, 3644), on(10);
    allow(3662, 3664), on(12);
    allow(3315, 3319), on(4);
    allow(3450, 3454), on(6);
    allow(3606, 3610), on(9);
    allow(3470, 3472), on(7);
    allow(4000, 4003), on(37);
    allow(4160, 4170), on(46);
}

void everyValueAllowed() {
    store_Execute(QStringLiteral("UPDATE 过滤条件 SET VALUE=1 WHERE ID>=1000 AND ID<=4599"));
    set_GuoLvTiaoJian(3900, 0);
    set_GuoLvTiaoJian(3901, 0);
    store_Execute(QStringLiteral("UPDATE 过滤条件 SET VALUE=1 WHERE ID>=5070 AND ID<=5079"));
    for (int k = 1; k <= 20; ++k)
        store_Execute(
            QStringLiteral("UPDATE 号码特性 SET [自定义组%1]=(号码 % %2 = 0)").arg(k).arg(k % 5 + 2));
}

}  // namespace bench
