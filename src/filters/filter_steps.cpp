#include "app/shared_state.h"
#include "filters/condition_store.h"
#include "filters/filter_run.h"

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

// 和值: the sum of the six reds, read against 1000..1183.
TicketTest heZhi(FilterPass&) {
    return {[](const TicketBalls& t) {
                const Reds& r = t.reds;
                return r[1] + r[2] + r[3] + r[4] + r[5] + r[6];
            },
            {}};
}

std::vector<FilterStep> buildSteps() {
    std::vector<FilterStep> steps;
    {
        FilterDef d = plain(u"filter_HeZhi", u"[ 和 值 ]", 1, 1000, 1183);
        d.prepare = heZhi;
        steps.push_back(single(1, d));
    }
    steps.push_back(single(2, plain(u"filter_HeZhiWei", u"[ 和值尾 ]", 76, 5070, 5079)));
    steps.push_back(single(3, plain(u"filter_TouShuHeZhi", u"[头数和值]", 43, 4080, 4099)));
    steps.push_back(single(4, plain(u"filter_WeiShuHeZhi", u"[尾数和值]", 44, 4100, 4159)));
    steps.push_back(single(5, plain(u"filter_JiShuHeZhi", u"[奇数和值]", 2, 2000, 2170)));
    steps.push_back(single(6, plain(u"filter_OuShuHeZhi", u"[偶数和值]", 3, 3000, 3170)));
    steps.push_back(single(7, plain(u"filter_JiShuGeShu", u"[奇数个数]", 10, 3640, 3649)));
    steps.push_back(single(8, plain(u"filter_OuShuGeShu", u"[偶数个数]", 11, 3650, 3659)));
    steps.push_back(single(9, plain(u"filter_DaShuGeShu", u"[大数个数]", 12, 3660, 3669)));
    steps.push_back(single(10, plain(u"filter_XiaoShuGeShu", u"[小数个数]", 13, 3670, 3679)));
    steps.push_back(single(11, plain(u"filter_GaoWeiMaGeShu", u"[高尾码个数]", 14, 3680, 3689)));
    steps.push_back(single(12, plain(u"filter_DiWeiMaGeShu", u"[低尾码个数]", 15, 3690, 3699)));
    steps.push_back(single(13, plain(u"filter_WenDu5", u"[温度值5]", 46, 4160, 4179)));
    steps.push_back(single(14, plain(u"filter_WenDu10", u"[温度值10]", 47, 4180, 4209)));
    {
        FilterStep quJian{15, {}};
        for (int k = 1; k <= 4; ++k) {
            FilterDef d = plain(u"filter_QuJian", u"", 15 + k, 3700 + 10 * (k - 1), 3709 + 10 * (k - 1));
            d.label = QStringLiteral("[区间%1]").arg(k);
            d.stopOnEntry = true;
            quJian.filters.push_back(d);
        }
        steps.push_back(quJian);
    }
    {
        FilterStep groups{16, {}};
        for (int k = 1; k <= 20; ++k) {
            const int base = k <= 10 ? 3800 + 10 * (k - 1) : 4500 + 10 * (k - 11);
            FilterDef d = plain(u"filter_ZiDingYiZu", u"", k <= 10 ? 19 + k : 40 + k, base, base + 9);
            d.label = QStringLiteral("[自定义组%1]").arg(k);
            d.stopOnEntry = true;
            groups.filters.push_back(d);
        }
        steps.push_back(groups);
    }
    steps.push_back(single(17, plain(u"filter_KuaDu", u"[ 跨 度 ]", 4, 3300, 3340)));
    steps.push_back(single(18, plain(u"filter_JianJuMax", u"[最大间距]", 5, 3400, 3440)));
    steps.push_back(single(19, plain(u"filter_LianHao", u"[连号]", 6, 3450, 3460)));
    steps.push_back(single(20, plain(u"filter_AC", u"[AC值]", 9, 3600, 3630)));
    steps.push_back(single(21, plain(u"filter_ChongDie", u"[重叠号]", 7, 3470, 3480)));
    steps.push_back(single(22, plain(u"filter_XieWeiMa", u"[斜位码]", 8, 3490, 3500)));
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
    steps.push_back(single(25, plain(u"filter_WeiShuXingShi", u"[尾数形式]", 37, 4000, 4009)));
    steps.push_back(single(26, plain(u"filter_JianJu9", u"[间距九]", 38, 4010, 4019)));
    steps.push_back(single(27, plain(u"filter_JianJu7", u"[间距七]", 39, 4020, 4029)));
    steps.push_back(single(28, plain(u"filter_JianJu11", u"[间距十一]", 40, 4030, 4040)));
    steps.push_back(single(29, plain(u"filter_JianJu12", u"[间距十二]", 41, 4050, 4069)));
    steps.push_back(single(30, plain(u"filter_TouShuXingShi", u"[头数形式]", 42, 4070, 4079)));
    {
        FilterStep parity{31, {}};
        for (int slot = 0; slot <= 5; ++slot) {
            const int first = slot == 0 ? 5001 : 5001 + 10 * slot;
            FilterDef d = plain(u"filter_DanShuang", u"", 70 + slot, first, first + 6);
            d.label = slot == 0 ? QStringLiteral("[排除掉上期单双组合：]")
                                : QStringLiteral("[排除掉单双组合%1：]").arg(slot);
            d.stopOnEntry = true;
            parity.filters.push_back(d);
        }
        steps.push_back(parity);
    }
    return steps;
}

}  // namespace

const std::vector<FilterStep>& filterSteps() {
    static const std::vector<FilterStep> steps = buildSteps();
    return steps;
}

}  // namespace dovrex
