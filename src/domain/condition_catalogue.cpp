#include "domain/condition_catalogue.h"

#include <algorithm>

namespace dovrex {

namespace {

using L = LineKind;
using R = ReportKind;

// Columns: switch, switches, rows min..max, page, name, caption name, line name, lines, first and
// last line value, report order, report label, report text, run step, slot, filter, log label,
// quick settings.
// clang-format off
const std::vector<ConditionEntry> kCatalogue = {
    {0, 0, 0, -1, 28, u"历史数据过滤", nullptr, nullptr, L::None, 0, -1, 0, nullptr, R::None, 24, kNoSlot, u"filter_LiShi", u"[历史数据过滤]", false},
    {1, 1, 1000, 1183, 2, u"和值", nullptr, u"和值", L::Numbers, 21, 183, 1, u" 和值取值范围： ", R::Runs, 1, kNoSlot, u"filter_HeZhi", u"[ 和 值 ]", true},
    {2, 1, 2000, 2170, 3, u"奇数和值", nullptr, u"奇数和值", L::Numbers, 0, 155, 5, u" 奇数和值取值范围： ", R::Runs, 5, kNoSlot, u"filter_JiShuHeZhi", u"[奇数和值]", true},
    {3, 1, 3000, 3170, 4, u"偶数和值", nullptr, u"偶数和值", L::Numbers, 0, 150, 6, u" 偶数和值取值范围： ", R::Runs, 6, kNoSlot, u"filter_OuShuHeZhi", u"[偶数和值]", true},
    {4, 1, 3300, 3340, 5, u"跨度", nullptr, u"跨度", L::Numbers, 5, 32, 7, u" 跨度取值范围： ", R::Runs, 17, kNoSlot, u"filter_KuaDu", u"[ 跨 度 ]", true},
    {5, 1, 3400, 3440, 6, u"最大间距", nullptr, u"最大间距", L::Numbers, 1, 28, 8, u" 最大间距取值范围： ", R::Runs, 18, kNoSlot, u"filter_JianJuMax", u"[最大间距]", true},
    {6, 1, 3450, 3460, 7, u"连号", nullptr, u"连号", L::RunKeys, 0, -1, 11, u" 连号取值范围： ", R::Keys, 19, kNoSlot, u"filter_LianHao", u"[连号]", false},
    {7, 1, 3470, 3480, 8, u"重叠号", nullptr, u"重叠码个数", L::Numbers, 0, 6, 12, u" 重叠号取值范围： ", R::Each, 21, kNoSlot, u"filter_ChongDie", u"[重叠号]", true},
    {8, 1, 3490, 3500, 9, u"斜位码", nullptr, u"斜位码个数", L::Numbers, 0, 6, 13, u" 斜位码取值范围： ", R::Each, 22, kNoSlot, u"filter_XieWeiMa", u"[斜位码]", true},
    {9, 1, 3600, 3630, 10, u"AC值", u"ＡＣ值", u"AC值", L::Numbers, 0, 10, 14, u" ＡＣ值取值范围： ", R::Each, 20, kNoSlot, u"filter_AC", u"[AC值]", true},
    {10, 1, 3640, 3649, 11, u"奇数个数", nullptr, u"奇数个数", L::Numbers, 0, 6, 15, u" 奇数个数取值范围： ", R::Each, 7, kNoSlot, u"filter_JiShuGeShu", u"[奇数个数]", true},
    {11, 1, 3650, 3659, 11, u"偶数个数", nullptr, u"偶数个数", L::Numbers, 0, 6, 16, u" 偶数个数取值范围： ", R::Each, 8, kNoSlot, u"filter_OuShuGeShu", u"[偶数个数]", true},
    {12, 1, 3660, 3669, 12, u"大数个数", nullptr, u"大数个数", L::Numbers, 0, 6, 17, u" 大数个数取值范围： ", R::Each, 9, kNoSlot, u"filter_DaShuGeShu", u"[大数个数]", true},
    {13, 1, 3670, 3679, 12, u"小数个数", nullptr, u"小数个数", L::Numbers, 0, 6, 18, u" 小数个数取值范围： ", R::Each, 10, kNoSlot, u"filter_XiaoShuGeShu", u"[小数个数]", true},
    {14, 1, 3680, 3689, 13, u"高尾码个数", nullptr, u"高尾码个数", L::Numbers, 0, 6, 19, u" 高尾码个数取值范围： ", R::Each, 11, kNoSlot, u"filter_GaoWeiMaGeShu", u"[高尾码个数]", true},
    {15, 1, 3690, 3699, 13, u"低尾码个数", nullptr, u"低尾码个数", L::Numbers, 0, 6, 20, u" 低尾码个数取值范围： ", R::Each, 12, kNoSlot, u"filter_DiWeiMaGeShu", u"[低尾码个数]", true},
    {16, 1, 3700, 3709, 14, u"区间1", nullptr, u"区间1开出个数", L::Numbers, 0, 6, 21, u" 区间1开出号码个数取值范围： ", R::Each, 15, 1, u"filter_QuJian", u"[区间1]", true},
    {17, 1, 3710, 3719, 14, u"区间2", nullptr, u"区间2开出个数", L::Numbers, 0, 6, 22, u" 区间2开出号码个数取值范围： ", R::Each, 15, 2, u"filter_QuJian", u"[区间2]", true},
    {18, 1, 3720, 3729, 14, u"区间3", nullptr, u"区间3开出个数", L::Numbers, 0, 6, 23, u" 区间3开出号码个数取值范围： ", R::Each, 15, 3, u"filter_QuJian", u"[区间3]", true},
    {19, 1, 3730, 3739, 14, u"区间4", nullptr, u"区间4开出个数", L::Numbers, 0, 6, 24, u" 区间4开出号码个数取值范围： ", R::Each, 15, 4, u"filter_QuJian", u"[区间4]", true},
    {20, 1, 3800, 3809, 27, u"自定义组1", nullptr, nullptr, L::None, 0, -1, 0, nullptr, R::None, 16, 1, u"filter_ZiDingYiZu", u"[自定义组1]", false},
    {21, 1, 3810, 3819, 27, u"自定义组2", nullptr, nullptr, L::None, 0, -1, 0, nullptr, R::None, 16, 2, u"filter_ZiDingYiZu", u"[自定义组2]", false},
    {22, 1, 3820, 3829, 27, u"自定义组3", nullptr, nullptr, L::None, 0, -1, 0, nullptr, R::None, 16, 3, u"filter_ZiDingYiZu", u"[自定义组3]", false},
    {23, 1, 3830, 3839, 27, u"自定义组4", nullptr, nullptr, L::None, 0, -1, 0, nullptr, R::None, 16, 4, u"filter_ZiDingYiZu", u"[自定义组4]", false},
    {24, 1, 3840, 3849, 27, u"自定义组5", nullptr, nullptr, L::None, 0, -1, 0, nullptr, R::None, 16, 5, u"filter_ZiDingYiZu", u"[自定义组5]", false},
    {25, 1, 3850, 3859, 27, u"自定义组6", nullptr, nullptr, L::None, 0, -1, 0, nullptr, R::None, 16, 6, u"filter_ZiDingYiZu", u"[自定义组6]", false},
    {26, 1, 3860, 3869, 27, u"自定义组7", nullptr, nullptr, L::None, 0, -1, 0, nullptr, R::None, 16, 7, u"filter_ZiDingYiZu", u"[自定义组7]", false},
    {27, 1, 3870, 3879, 27, u"自定义组8", nullptr, nullptr, L::None, 0, -1, 0, nullptr, R::None, 16, 8, u"filter_ZiDingYiZu", u"[自定义组8]", false},
    {28, 1, 3880, 3889, 27, u"自定义组9", nullptr, nullptr, L::None, 0, -1, 0, nullptr, R::None, 16, 9, u"filter_ZiDingYiZu", u"[自定义组9]", false},
    {29, 1, 3890, 3899, 27, u"自定义组10", nullptr, nullptr, L::None, 0, -1, 0, nullptr, R::None, 16, 10, u"filter_ZiDingYiZu", u"[自定义组10]", false},
    {30, 7, 0, -1, 15, u"号码定位", nullptr, nullptr, L::None, 0, -1, 0, nullptr, R::None, 23, kNoSlot, u"filter_DingWei", u"[号码定位]", false},
    {37, 1, 4000, 4009, 16, u"尾数形式", nullptr, nullptr, L::ShapeKeys, 0, -1, 25, u" 尾数形式： ", R::Keys, 25, kNoSlot, u"filter_WeiShuXingShi", u"[尾数形式]", false},
    {38, 1, 4010, 4019, 17, u"间距九", nullptr, nullptr, L::ShapeKeys, 0, -1, 26, u" 间距九： ", R::Keys, 26, kNoSlot, u"filter_JianJu9", u"[间距九]", false},
    {39, 1, 4020, 4029, 18, u"间距七", nullptr, nullptr, L::ShapeKeys, 0, -1, 27, u" 间距七： ", R::Keys, 27, kNoSlot, u"filter_JianJu7", u"[间距七]", false},
    {40, 1, 4030, 4040, 19, u"间距十一", nullptr, nullptr, L::ShapeKeys, 0, -1, 28, u" 间距十一： ", R::Keys, 28, kNoSlot, u"filter_JianJu11", u"[间距十一]", false},
    {41, 1, 4050, 4069, 20, u"间距十二", nullptr, nullptr, L::ShapeKeys, 0, -1, 29, u" 间距十二： ", R::Keys, 29, kNoSlot, u"filter_JianJu12", u"[间距十二]", false},
    {42, 1, 4070, 4079, 21, u"头数形式", nullptr, nullptr, L::HeadKeys, 0, -1, 30, u" 头数形式： ", R::Keys, 30, kNoSlot, u"filter_TouShuXingShi", u"[头数形式]", false},
    {43, 1, 4080, 4099, 22, u"头数和值", nullptr, u"头数和值", L::Numbers, 0, 16, 3, u" 头数和值范围： ", R::Runs, 3, kNoSlot, u"filter_TouShuHeZhi", u"[头数和值]", true},
    {44, 1, 4100, 4159, 23, u"尾数和值", nullptr, u"尾数和值", L::Numbers, 0, 51, 4, u" 尾数和值范围： ", R::Runs, 4, kNoSlot, u"filter_WeiShuHeZhi", u"[尾数和值]", true},
    {kSmartSwitch, 1, 0, -1, 29, u"缩水智能优化", nullptr, nullptr, L::None, 0, -1, 0, nullptr, R::None, 0, kNoSlot, nullptr, nullptr, false},
    {46, 1, 4160, 4179, 24, u"温度值5", nullptr, u"温度值5", L::Numbers, 0, 12, 9, u" 温度值５取值范围： ", R::Runs, 13, kNoSlot, u"filter_WenDu5", u"[温度值5]", true},
    {47, 1, 4180, 4209, 25, u"温度值10", nullptr, u"温度值10", L::Numbers, 0, 20, 10, u" 温度值１０取值范围： ", R::Runs, 14, kNoSlot, u"filter_WenDu10", u"[温度值10]", true},
    {51, 1, 4500, 4509, 27, u"自定义组11", nullptr, nullptr, L::None, 0, -1, 0, nullptr, R::None, 16, 11, u"filter_ZiDingYiZu", u"[自定义组11]", false},
    {52, 1, 4510, 4519, 27, u"自定义组12", nullptr, nullptr, L::None, 0, -1, 0, nullptr, R::None, 16, 12, u"filter_ZiDingYiZu", u"[自定义组12]", false},
    {53, 1, 4520, 4529, 27, u"自定义组13", nullptr, nullptr, L::None, 0, -1, 0, nullptr, R::None, 16, 13, u"filter_ZiDingYiZu", u"[自定义组13]", false},
    {54, 1, 4530, 4539, 27, u"自定义组14", nullptr, nullptr, L::None, 0, -1, 0, nullptr, R::None, 16, 14, u"filter_ZiDingYiZu", u"[自定义组14]", false},
    {55, 1, 4540, 4549, 27, u"自定义组15", nullptr, nullptr, L::None, 0, -1, 0, nullptr, R::None, 16, 15, u"filter_ZiDingYiZu", u"[自定义组15]", false},
    {56, 1, 4550, 4559, 27, u"自定义组16", nullptr, nullptr, L::None, 0, -1, 0, nullptr, R::None, 16, 16, u"filter_ZiDingYiZu", u"[自定义组16]", false},
    {57, 1, 4560, 4569, 27, u"自定义组17", nullptr, nullptr, L::None, 0, -1, 0, nullptr, R::None, 16, 17, u"filter_ZiDingYiZu", u"[自定义组17]", false},
    {58, 1, 4570, 4579, 27, u"自定义组18", nullptr, nullptr, L::None, 0, -1, 0, nullptr, R::None, 16, 18, u"filter_ZiDingYiZu", u"[自定义组18]", false},
    {59, 1, 4580, 4589, 27, u"自定义组19", nullptr, nullptr, L::None, 0, -1, 0, nullptr, R::None, 16, 19, u"filter_ZiDingYiZu", u"[自定义组19]", false},
    {60, 1, 4590, 4599, 27, u"自定义组20", nullptr, nullptr, L::None, 0, -1, 0, nullptr, R::None, 16, 20, u"filter_ZiDingYiZu", u"[自定义组20]", false},
    {70, 1, 5001, 5007, 15, u"排除上期单双组合", nullptr, nullptr, L::None, 0, -1, 0, nullptr, R::None, 31, 0, u"filter_DanShuang", u"[排除掉上期单双组合：]", false},
    {71, 1, 5011, 5017, 15, u"排除单双组合1", nullptr, nullptr, L::None, 0, -1, 0, nullptr, R::None, 31, 1, u"filter_DanShuang", u"[排除掉单双组合1：]", false},
    {72, 1, 5021, 5027, 15, u"排除单双组合2", nullptr, nullptr, L::None, 0, -1, 0, nullptr, R::None, 31, 2, u"filter_DanShuang", u"[排除掉单双组合2：]", false},
    {73, 1, 5031, 5037, 15, u"排除单双组合3", nullptr, nullptr, L::None, 0, -1, 0, nullptr, R::None, 31, 3, u"filter_DanShuang", u"[排除掉单双组合3：]", false},
    {74, 1, 5041, 5047, 15, u"排除单双组合4", nullptr, nullptr, L::None, 0, -1, 0, nullptr, R::None, 31, 4, u"filter_DanShuang", u"[排除掉单双组合4：]", false},
    {75, 1, 5051, 5057, 15, u"排除单双组合5", nullptr, nullptr, L::None, 0, -1, 0, nullptr, R::None, 31, 5, u"filter_DanShuang", u"[排除掉单双组合5：]", false},
    {76, 1, 5070, 5079, 26, u"和值尾", nullptr, u"和值尾", L::Numbers, 0, 9, 2, u" 允许的和值尾： ", R::Each, 2, kNoSlot, u"filter_HeZhiWei", u"[ 和值尾 ]", true},
};
// clang-format on

}  // namespace

QString ConditionEntry::caption() const {
    return QStringLiteral("使用“%1”过滤").arg(QString::fromUtf16(captionName ? captionName : name));
}

QString ConditionEntry::quickName() const {
    return QString::fromUtf16(name);
}

const std::vector<ConditionEntry>& conditionCatalogue() {
    return kCatalogue;
}

const ConditionEntry* conditionOfFilter(const QString& filter, int slot) {
    for (const ConditionEntry& c : kCatalogue)
        if (c.filter && c.slot == slot && filter == QStringView(c.filter)) return &c;
    return nullptr;
}

QList<QPair<int, int>> conditionIdRanges() {
    // The rows that belong to no condition's range.
    QList<QPair<int, int>> ranges{
        {1, 33},   // red picks
        {34, 38},  // the hidden buttons after the reds, cleared with them
        {kHistoryDisplayModeId, kHistoryDisplayModeId},
        {101, 116},    // blue picks
        {1184, 1190},  // behind 和值's range, never read
        {kShrinkTypeId, kFilterToleranceId},
        {kSpaceModeId, kSpaceModeId},
        {kShrinkOptimisedId, kShrinkBudgetId},
    };
    for (const ConditionEntry& c : kCatalogue)
        if (c.hasRows()) ranges.append({c.minId, c.maxId});
    std::sort(ranges.begin(), ranges.end());
    return ranges;
}

QList<int> switchNumbers() {
    QList<int> numbers;
    for (const ConditionEntry& c : kCatalogue)
        for (int k = 0; k < c.switchCount; ++k) numbers << c.switchNo + k;
    std::sort(numbers.begin(), numbers.end());
    return numbers;
}

QList<QPair<int, int>> laterConditionRows() {
    return {{34, 38},
            {1171, 1190},
            {kFilterToleranceId, kFilterToleranceId},
            {kSpaceModeId, kSpaceModeId},
            {kShrinkOptimisedId, kShrinkBudgetId}};
}

}  // namespace dovrex
