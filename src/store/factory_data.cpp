#include "store/factory_data.h"

#include <QDateTime>

#include "domain/condition_catalogue.h"
#include "domain/date_value.h"
#include "store/schema.h"
#include "store/store.h"

namespace dovrex {

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

}  // namespace

QStringList defaultMirrorAddresses() {
    return {
        QStringLiteral("https://www.cwl.gov.cn/cwl_admin/front/cwlkj/search/kjxx/findDrawNotice?name=ssq"),
        QStringLiteral("https://data.17500.cn/ssq_asc.txt"),
        QStringLiteral("https://data.17500.cn/ssq_desc.txt")};
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

    // One line per condition the quick settings offer, in switch order; the menu page is its tab.
    int quickNo = 0;
    for (const ConditionEntry& c : conditionCatalogue()) {
        if (!c.quick) continue;
        store.execute(
            QStringLiteral("INSERT INTO 快速设置 (编号, 菜单ID, 条件编号, 条件名称, 范围min, 范围max) "
                           "VALUES (?,?,?,?,?,?)"),
            {quickNo++, c.tab, c.switchNo, c.quickName(), c.minId, c.maxId});
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
