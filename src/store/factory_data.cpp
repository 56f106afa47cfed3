#include "store/factory_data.h"

#include <QDateTime>

#include "domain/date_value.h"
#include "store/schema.h"
#include "store/store.h"

namespace dovrex {

QList<QPair<int, int>> conditionIdRanges() {
    return {
        {1, 33},       // red picks
        {39, 39},      // history display mode
        {101, 116},    // blue picks
        {1000, 1190},  // 和值 (1184..1190 are never read)
        {2000, 2170},  // 奇数和值
        {3000, 3170},  // 偶数和值
        {3300, 3340},  // 跨度
        {3400, 3440},  // 最大间距
        {3450, 3460},  // 连号
        {3470, 3480},  // 重叠号
        {3490, 3500},  // 斜位码
        {3600, 3630},  // AC值
        {3640, 3739},  // the counts and the four intervals
        {3800, 3899},  // 自定义组1..10
        {3900, 3901},  // shrink type, position tolerance
        {4000, 4040},  // 尾数形式, 间距九, 间距七, 间距十一
        {4050, 4209},  // 间距十二, 头数形式, 头数和值, 尾数和值, 温度值5, 温度值10
        {4500, 4599},  // 自定义组11..20
        {5001, 5007},  // parity pattern of the last draw
        {5011, 5017}, {5021, 5027}, {5031, 5037}, {5041, 5047}, {5051, 5057},  // parity patterns 1..5
        {5070, 5079},                                                          // 和值尾
    };
}

QList<int> switchNumbers() {
    QList<int> s;
    for (int i = 1; i <= 47; ++i) s << i;
    for (int i = 51; i <= 60; ++i) s << i;
    for (int i = 70; i <= 76; ++i) s << i;
    return s;
}

namespace {

void fillConditions(Store& store, const QString& table) {
    for (const auto& [lo, hi] : conditionIdRanges())
        for (int id = lo; id <= hi; ++id)
            store.execute(QStringLiteral("INSERT INTO %1 (ID, VALUE) VALUES (?, 0)").arg(table), {id});
}

void fillSwitches(Store& store, const QString& table) {
    for (int n : switchNumbers())
        store.execute(QStringLiteral("INSERT INTO %1 (条件, 使用情况) VALUES (?, 0)").arg(table), {n});
}

// The shipped partitions of the numbers: big 17..33, tails 0-4 low and 5-9 high, heads by tens,
// steps of 7, 9, 11 and 12 counted from 1, four intervals, every number allowed at every position.
void fillNumberTraits(Store& store) {
    const QStringList cols = schema::numberTraitColumns();
    QStringList marks;
    for (int i = 0; i < cols.size(); ++i) marks << QStringLiteral("?");
    QStringList quoted;
    for (const auto& c : cols) quoted << u'"' + c + u'"';
    const QString sql =
        QStringLiteral("INSERT INTO 号码特性 (%1) VALUES (%2)").arg(quoted.join(u','), marks.join(u','));
    auto interval = [](int n) { return n <= 8 ? 1 : n <= 16 ? 2 : n <= 24 ? 3 : 4; };
    for (int n = 1; n <= 33; ++n) {
        QVariantList v{n, n, n >= 17, n % 10 <= 4, n % 10 >= 5};
        for (int k = 1; k <= 4; ++k) v << (interval(n) == k);
        for (int k = 1; k <= 20; ++k) v << false;
        for (int k = 1; k <= 7; ++k) v << true;
        for (int k = 0; k <= 9; ++k) v << (n % 10 == k);
        for (int k = 0; k <= 9; ++k) v << (n / 10 == k);
        for (int k = 0; k <= 9; ++k) v << ((n - 1) % 7 == k);
        for (int k = 0; k <= 9; ++k) v << ((n - 1) % 9 == k);
        for (int k = 0; k <= 10; ++k) v << ((n - 1) % 11 == k);
        for (int k = 0; k <= 11; ++k) v << ((n - 1) % 12 == k);
        store.execute(sql, v);
    }
}

struct QuickRow {
    int menu;
    int switchNo;
    const char16_t* name;
    int min;
    int max;
};

// One line per condition that the quick settings window offers.
const QuickRow kQuickRows[] = {
    {2, 1, u"和值", 1000, 1183},         {3, 2, u"奇数和值", 2000, 2170},
    {4, 3, u"偶数和值", 3000, 3170},     {5, 4, u"跨度", 3300, 3340},
    {6, 5, u"最大间距", 3400, 3440},     {8, 7, u"重叠号", 3470, 3480},
    {9, 8, u"斜位码", 3490, 3500},       {10, 9, u"AC值", 3600, 3630},
    {11, 10, u"奇数个数", 3640, 3649},   {11, 11, u"偶数个数", 3650, 3659},
    {12, 12, u"大数个数", 3660, 3669},   {12, 13, u"小数个数", 3670, 3679},
    {13, 14, u"高尾码个数", 3680, 3689}, {13, 15, u"低尾码个数", 3690, 3699},
    {14, 16, u"区间1", 3700, 3709},      {14, 17, u"区间2", 3710, 3719},
    {14, 18, u"区间3", 3720, 3729},      {14, 19, u"区间4", 3730, 3739},
    {22, 43, u"头数和值", 4080, 4099},   {23, 44, u"尾数和值", 4100, 4159},
    {24, 46, u"温度值5", 4160, 4179},    {25, 47, u"温度值10", 4180, 4209},
    {26, 76, u"和值尾", 5070, 5079},
};

}  // namespace

QStringList defaultMirrorAddresses() {
    return {QStringLiteral("https://dovrex.example/ssq/list.txt"),
            QStringLiteral("https://mirror2.dovrex.example/ssq/list.txt"),
            QStringLiteral("https://mirror3.dovrex.example/ssq/list.txt")};
}

void seedConditionTables(Store& store) {
    Transaction tx(store);
    fillConditions(store, QStringLiteral("过滤条件"));
    fillSwitches(store, QStringLiteral("过滤条件使用情况"));
    store.execute(QStringLiteral(
        "INSERT INTO 历史数据过滤 (使用状态, 最小值, 最大值, 匹配值) VALUES (0, 2003001, 2003001, 6)"));
    fillNumberTraits(store);
}

void seedFactoryData(Store& store) {
    Transaction tx(store);
    seedConditionTables(store);
    fillConditions(store, QStringLiteral("默认过滤条件"));
    fillSwitches(store, QStringLiteral("默认过滤条件使用情况"));

    for (int i = 0; i < int(std::size(kQuickRows)); ++i) {
        const auto& q = kQuickRows[i];
        store.execute(
            QStringLiteral("INSERT INTO 快速设置 (编号, 菜单ID, 条件编号, 条件名称, 范围min, 范围max) "
                           "VALUES (?,?,?,?,?,?)"),
            {i, q.menu, q.switchNo, QString::fromUtf16(q.name), q.min, q.max});
    }
    for (int n = 1; n <= 33; ++n) {
        store.execute(QStringLiteral("INSERT INTO BallColor (号码, 基本号, 特别号) VALUES (?, 0, 1)"), {n});
        store.execute(
            QStringLiteral("INSERT INTO 概率表 (号码, 红球, 蓝球, 红开, 蓝开) VALUES (?, 0, 0, 0, 0)"), {n});
    }
    for (int k = 1; k <= 20; ++k)
        store.execute(QStringLiteral("INSERT INTO 自定义别名 (序号, 自定义名称, 别名) VALUES (?, ?, ?)"),
                      {k, QStringLiteral("自定义组%1").arg(k), QStringLiteral("自定义组%1").arg(k)});

    // Number groups of the analysis table: three zones, odd, even, primes, multiples of three.
    auto isPrime = [](int n) {
        if (n < 2) return false;
        for (int d = 2; d * d <= n; ++d)
            if (n % d == 0) return false;
        return true;
    };
    for (int n = 1; n <= 33; ++n) {
        QVariantList v{n,          n <= 11,    n >= 12 && n <= 22, n >= 23,
                       n % 2 == 1, n % 2 == 0, isPrime(n),         n % 3 == 0};
        for (int k = 8; k <= 20; ++k) v << false;
        QStringList marks(21, QStringLiteral("?"));
        store.execute(QStringLiteral("INSERT INTO 分析表号码组 VALUES (%1)").arg(marks.join(u',')), v);
    }

    const QStringList mirrors = defaultMirrorAddresses();
    for (int i = 0; i < mirrors.size(); ++i)
        store.execute(QStringLiteral("INSERT INTO 下载地址 (序号, 地址) VALUES (?, ?)"), {i + 1, mirrors[i]});
    store.execute(QStringLiteral("INSERT INTO 用户模式 (模式) VALUES (0)"));
    store.execute(
        QStringLiteral("INSERT INTO 用户表 (用户名, 密码, 最后登陆时间) VALUES ('临时用户', '', ?)"),
        {toDateValue(Clock::today())});
}

}  // namespace dovrex
