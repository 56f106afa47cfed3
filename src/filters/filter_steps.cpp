#include <algorithm>

#include "filters/condition_store.h"
#include "filters/filter_families.h"
#include "filters/filter_run.h"
#include "screen/shared_state.h"

namespace dovrex {

namespace {

FilterDef plain(const char16_t* name, const char16_t* label, int switchNo, int minId, int maxId) {
    FilterDef d;
    d.name = QString::fromUtf16(name);
    d.label = QString::fromUtf16(label);
    d.switchNo = switchNo;
    d.minId = minId;
    d.maxId = maxId;
    return d;
}

FilterStep single(int step, FilterDef def) {
    return FilterStep{step, {std::move(def)}};
}

// The filters that are one switch and one range of condition rows, in run order.
struct PlainRow {
    int step;
    const char16_t* name;
    const char16_t* label;
    int switchNo, minId, maxId;
};
const PlainRow kPlainRows[] = {
    {1, u"filter_HeZhi", u"[ 和 值 ]", 1, 1000, 1183},
    {2, u"filter_HeZhiWei", u"[ 和值尾 ]", 76, 5070, 5079},
    {3, u"filter_TouShuHeZhi", u"[头数和值]", 43, 4080, 4099},
    {4, u"filter_WeiShuHeZhi", u"[尾数和值]", 44, 4100, 4159},
    {5, u"filter_JiShuHeZhi", u"[奇数和值]", 2, 2000, 2170},
    {6, u"filter_OuShuHeZhi", u"[偶数和值]", 3, 3000, 3170},
    {7, u"filter_JiShuGeShu", u"[奇数个数]", 10, 3640, 3649},
    {8, u"filter_OuShuGeShu", u"[偶数个数]", 11, 3650, 3659},
    {9, u"filter_DaShuGeShu", u"[大数个数]", 12, 3660, 3669},
    {10, u"filter_XiaoShuGeShu", u"[小数个数]", 13, 3670, 3679},
    {11, u"filter_GaoWeiMaGeShu", u"[高尾码个数]", 14, 3680, 3689},
    {12, u"filter_DiWeiMaGeShu", u"[低尾码个数]", 15, 3690, 3699},
    {13, u"filter_WenDu5", u"[温度值5]", 46, 4160, 4179},
    {14, u"filter_WenDu10", u"[温度值10]", 47, 4180, 4209},
    {17, u"filter_KuaDu", u"[ 跨 度 ]", 4, 3300, 3340},
    {18, u"filter_JianJuMax", u"[最大间距]", 5, 3400, 3440},
    {19, u"filter_LianHao", u"[连号]", 6, 3450, 3460},
    {20, u"filter_AC", u"[AC值]", 9, 3600, 3630},
    {21, u"filter_ChongDie", u"[重叠号]", 7, 3470, 3480},
    {22, u"filter_XieWeiMa", u"[斜位码]", 8, 3490, 3500},
    {25, u"filter_WeiShuXingShi", u"[尾数形式]", 37, 4000, 4009},
    {26, u"filter_JianJu9", u"[间距九]", 38, 4010, 4019},
    {27, u"filter_JianJu7", u"[间距七]", 39, 4020, 4029},
    {28, u"filter_JianJu11", u"[间距十一]", 40, 4030, 4040},
    {29, u"filter_JianJu12", u"[间距十二]", 41, 4050, 4069},
    {30, u"filter_TouShuXingShi", u"[头数形式]", 42, 4070, 4079},
};

// A looped filter: `count` slots from `first`, each with its label, switch and rows.
FilterStep looped(int step, const char16_t* name, int first, int count,
                  const std::function<void(int, FilterDef&)>& slot) {
    FilterStep s{step, {}};
    for (int k = first; k < first + count; ++k) {
        FilterDef d = plain(name, u"", 0, 0, -1);
        d.stopOnEntry = true;
        d.slot = k;
        slot(k, d);
        s.filters.push_back(d);
    }
    return s;
}

std::vector<FilterStep> buildSteps() {
    std::vector<FilterStep> steps;
    for (const PlainRow& row : kPlainRows) {
        steps.push_back(single(row.step, plain(row.name, row.label, row.switchNo, row.minId, row.maxId)));
    }

    steps.push_back(looped(15, u"filter_QuJian", 1, 4, [](int k, FilterDef& d) {
        d.label = QStringLiteral("[区间%1]").arg(k);
        d.switchNo = 15 + k;
        d.minId = 3700 + 10 * (k - 1);
        d.maxId = d.minId + 9;
    }));
    steps.push_back(looped(16, u"filter_ZiDingYiZu", 1, 20, [](int k, FilterDef& d) {
        d.label = QStringLiteral("[自定义组%1]").arg(k);
        d.switchNo = k <= 10 ? 19 + k : 40 + k;
        d.minId = k <= 10 ? 3800 + 10 * (k - 1) : 4500 + 10 * (k - 11);
        d.maxId = d.minId + 9;
    }));
    {
        // On when any of the seven positions is on; reads its tolerance (3901) itself.
        FilterDef d = plain(u"filter_DingWei", u"[号码定位]", 0, 0, -1);
        d.switchedOn = [] {
            auto c = store_Query(QStringLiteral(
                "select 使用情况 from 过滤条件使用情况 where 条件>=30 and 条件<=36 order by 条件 asc"));
            for (; !c->eof(); c->moveNext())
                if (c->intValue(0) == 1) return true;
            return false;
        };
        steps.push_back(single(23, d));
    }
    {
        // Its switch is 使用状态 of its own table.
        FilterDef d = plain(u"filter_LiShi", u"[历史数据过滤]", 0, 0, -1);
        d.switchedOn = [] {
            auto c = store_Query(QStringLiteral("select * from 历史数据过滤"));
            return c->recordCount() > 0 && c->intValue(QStringLiteral("使用状态")) == 1;
        };
        steps.push_back(single(24, d));
    }
    steps.push_back(looped(31, u"filter_DanShuang", 0, 6, [](int slot, FilterDef& d) {
        d.label = slot == 0 ? QStringLiteral("[排除掉上期单双组合：]")
                            : QStringLiteral("[排除掉单双组合%1：]").arg(slot);
        d.switchNo = 70 + slot;
        d.minId = 5001 + 10 * slot;
        d.maxId = d.minId + 6;
    }));
    for (FilterStep& step : steps)
        for (FilterDef& d : step.filters)
            attach_RangeFilter(d) || attach_CountFilter(d) || attach_ShapeFilter(d) ||
                attach_HistoryFilter(d) || attach_PositionFilter(d);
    std::stable_sort(steps.begin(), steps.end(),
                     [](const FilterStep& a, const FilterStep& b) { return a.step < b.step; });
    return steps;
}

}  // namespace

const std::vector<FilterStep>& filterSteps() {
    static const std::vector<FilterStep> steps = buildSteps();
    return steps;
}

}  // namespace dovrex
