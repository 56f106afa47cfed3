#include "store/schema.h"

#include <QRegularExpression>

#include "store/store.h"

namespace dovrex {

namespace {

QStringList numbered(const QString& prefix, int from, int to) {
    QStringList out;
    for (int i = from; i <= to; ++i) out << prefix + QString::number(i);
    return out;
}

QString columnList(const QStringList& columns, const QString& type) {
    QStringList parts;
    for (const auto& c : columns) parts << QStringLiteral("\"%1\" %2").arg(c, type);
    return parts.join(QStringLiteral(", "));
}

void create(Store& store, const QString& table, const QString& body) {
    store.execute(QStringLiteral("CREATE TABLE IF NOT EXISTS \"%1\" (%2)").arg(table, body));
}

}  // namespace

namespace schema {

QStringList historyDerivedColumns() {
    QStringList c{QStringLiteral("和值"),     QStringLiteral("奇数和值"),   QStringLiteral("偶数和值"),
                  QStringLiteral("奇数个数"), QStringLiteral("偶数个数"),   QStringLiteral("大数个数"),
                  QStringLiteral("小数个数"), QStringLiteral("高尾码个数"), QStringLiteral("低尾码个数")};
    c << numbered(QStringLiteral("区间"), 1, 4) << numbered(QStringLiteral("自定义组"), 1, 10);
    c << QStringLiteral("跨度") << QStringLiteral("最大间距") << QStringLiteral("AC值") << QStringLiteral("连号")
      << QStringLiteral("重叠号") << QStringLiteral("斜位码");
    c << QStringLiteral("尾数形式") << QStringLiteral("间距七") << QStringLiteral("间距九") << QStringLiteral("间距十一")
      << QStringLiteral("间距十二") << QStringLiteral("头数形式");
    c << QStringLiteral("头数和值") << QStringLiteral("尾数和值") << QStringLiteral("已完成");
    return c;
}

QStringList historyColumns() {
    QStringList c{QStringLiteral("期号"), QStringLiteral("开奖日期")};
    c << numbered(QStringLiteral("红球"), 1, 6) << QStringLiteral("蓝球");
    c << QStringLiteral("和值") << QStringLiteral("奇数和值") << QStringLiteral("偶数和值") << QStringLiteral("头数和值")
      << QStringLiteral("尾数和值");
    c << QStringLiteral("奇数个数") << QStringLiteral("偶数个数") << QStringLiteral("大数个数") << QStringLiteral("小数个数")
      << QStringLiteral("高尾码个数") << QStringLiteral("低尾码个数");
    c << numbered(QStringLiteral("区间"), 1, 4) << numbered(QStringLiteral("自定义组"), 1, 10);
    c << QStringLiteral("跨度") << QStringLiteral("最大间距") << QStringLiteral("AC值") << QStringLiteral("重叠号")
      << QStringLiteral("斜位码") << QStringLiteral("连号");
    c << QStringLiteral("尾数形式") << QStringLiteral("间距七") << QStringLiteral("间距九") << QStringLiteral("间距十一")
      << QStringLiteral("间距十二") << QStringLiteral("头数形式");
    c << QStringLiteral("温度值5") << QStringLiteral("温度值10") << QStringLiteral("已完成") << QStringLiteral("总期号")
      << QStringLiteral("遗漏数据");
    return c;
}

QStringList ticketColumns() {
    QStringList c{QStringLiteral("ID"), QStringLiteral("序号"), QStringLiteral("期号")};
    c << numbered(QStringLiteral("红球"), 1, 6) << QStringLiteral("蓝球");
    c << QStringLiteral("过滤标记") << QStringLiteral("缩水标记") << QStringLiteral("精选标记") << QStringLiteral("临时数据")
      << QStringLiteral("红球中") << QStringLiteral("蓝球中") << QStringLiteral("缩水公式");
    return c;
}

QStringList numberTraitColumns() {
    QStringList c{QStringLiteral("INDEX"), QStringLiteral("号码"), QStringLiteral("大数"), QStringLiteral("低尾码"),
                  QStringLiteral("高尾码")};
    c << numbered(QStringLiteral("区间"), 1, 4) << numbered(QStringLiteral("自定义组"), 1, 20)
      << numbered(QStringLiteral("第"), 1, 7).replaceInStrings(QRegularExpression(QStringLiteral("$")), QStringLiteral("位"));
    c << numbered(QStringLiteral("尾"), 0, 9) << numbered(QStringLiteral("头"), 0, 9) << numbered(QStringLiteral("七"), 0, 9)
      << numbered(QStringLiteral("九"), 0, 9) << numbered(QStringLiteral("十一"), 0, 10)
      << numbered(QStringLiteral("十二"), 0, 11);
    return c;
}

}  // namespace schema

void createConditionSchema(Store& store) {
    create(store, QStringLiteral("过滤条件"), QStringLiteral("\"ID\" INTEGER NOT NULL UNIQUE, \"VALUE\" INTEGER DEFAULT 0"));
    create(store, QStringLiteral("过滤条件使用情况"),
           QStringLiteral("\"条件\" INTEGER NOT NULL UNIQUE, \"使用情况\" INTEGER DEFAULT 0"));
    create(store, QStringLiteral("历史数据过滤"),
           QStringLiteral("\"使用状态\" INTEGER DEFAULT 0, \"最小值\" INTEGER DEFAULT 0, \"最大值\" INTEGER DEFAULT 0, "
                          "\"匹配值\" INTEGER DEFAULT 6"));
    create(store, QStringLiteral("号码特性"), columnList(schema::numberTraitColumns(), QStringLiteral("INTEGER DEFAULT 0")));
}

void createWorkStoreSchema(Store& store) {
    Transaction tx(store);
    createConditionSchema(store);
    create(store, QStringLiteral("默认过滤条件"), QStringLiteral("\"ID\" INTEGER NOT NULL UNIQUE, \"VALUE\" INTEGER DEFAULT 0"));
    create(store, QStringLiteral("默认过滤条件使用情况"),
           QStringLiteral("\"条件\" INTEGER NOT NULL UNIQUE, \"使用情况\" INTEGER DEFAULT 0"));

    {
        QStringList parts{QStringLiteral("\"期号\" INTEGER PRIMARY KEY"), QStringLiteral("\"开奖日期\" REAL")};
        const QStringList cols = schema::historyColumns();
        const QStringList textCols{QStringLiteral("连号"),     QStringLiteral("尾数形式"), QStringLiteral("间距七"),
                                   QStringLiteral("间距九"),   QStringLiteral("间距十一"), QStringLiteral("间距十二"),
                                   QStringLiteral("头数形式"), QStringLiteral("已完成")};
        for (int i = 2; i < cols.size(); ++i)
            parts << QStringLiteral("\"%1\" %2").arg(cols[i], textCols.contains(cols[i]) ? QStringLiteral("TEXT")
                                                                                           : QStringLiteral("INTEGER"));
        create(store, QStringLiteral("历史记录"), parts.join(QStringLiteral(", ")));
        store.execute(QStringLiteral("CREATE INDEX IF NOT EXISTS \"历史记录_开奖日期\" ON \"历史记录\"(\"开奖日期\")"));
    }
    {
        QStringList cols = schema::ticketColumns();
        cols.removeFirst();
        create(store, QStringLiteral("日志表"),
               QStringLiteral("\"ID\" INTEGER PRIMARY KEY AUTOINCREMENT, ") +
                   columnList(cols, QStringLiteral("INTEGER DEFAULT 0")));
        store.execute(QStringLiteral("CREATE INDEX IF NOT EXISTS \"日志表_期号\" ON \"日志表\"(\"期号\", \"序号\")"));
    }
    create(store, QStringLiteral("概率表"),
           QStringLiteral("\"号码\" INTEGER, \"红球\" INTEGER DEFAULT 0, \"蓝球\" INTEGER DEFAULT 0, "
                          "\"红开\" INTEGER DEFAULT 0, \"蓝开\" INTEGER DEFAULT 0"));
    {
        QStringList k;
        for (int i = 1; i <= 49; ++i) k << QStringLiteral("k%1").arg(i, 2, 10, QLatin1Char('0'));
        create(store, QStringLiteral("号码分布"), QStringLiteral("\"期号\" INTEGER, ") + columnList(k, QStringLiteral("TEXT")));
    }
    create(store, QStringLiteral("分析表"),
           QStringLiteral("\"期号\" INTEGER, ") + columnList(numbered(QStringLiteral("号码组合"), 1, 20), QStringLiteral("TEXT")));
    create(store, QStringLiteral("自定义表"),
           QStringLiteral("\"期号\" INTEGER, ") + columnList(numbered(QStringLiteral("自定义组"), 1, 20), QStringLiteral("TEXT")));
    create(store, QStringLiteral("分析表号码组"),
           QStringLiteral("\"号码\" INTEGER, ") +
               columnList(numbered(QStringLiteral("号码组合"), 1, 20), QStringLiteral("INTEGER DEFAULT 0")));
    create(store, QStringLiteral("自定义别名"),
           QStringLiteral("\"序号\" INTEGER, \"自定义名称\" TEXT, \"别名\" TEXT"));
    create(store, QStringLiteral("快速设置"),
           QStringLiteral("\"编号\" INTEGER PRIMARY KEY, \"菜单ID\" INTEGER, \"条件编号\" INTEGER, \"条件名称\" TEXT, "
                          "\"范围min\" INTEGER, \"范围max\" INTEGER"));
    create(store, QStringLiteral("用户表"),
           QStringLiteral("\"用户名\" TEXT PRIMARY KEY, \"密码\" TEXT, \"最后登陆时间\" REAL"));
    create(store, QStringLiteral("用户模式"), QStringLiteral("\"模式\" INTEGER DEFAULT 0"));
    create(store, QStringLiteral("BallColor"),
           QStringLiteral("\"号码\" INTEGER, \"基本号\" INTEGER DEFAULT 0, \"特别号\" INTEGER DEFAULT 0"));
    create(store, QStringLiteral("Ssgs"), QStringLiteral("\"Haomagesu\" INTEGER, \"Xuhao\" INTEGER, \"缩水公式\" INTEGER"));
    store.execute(QStringLiteral("CREATE INDEX IF NOT EXISTS \"Ssgs_n\" ON \"Ssgs\"(\"Haomagesu\", \"Xuhao\")"));
    // Mirror addresses of the draw list download, editable by the user.
    create(store, QStringLiteral("下载地址"), QStringLiteral("\"序号\" INTEGER PRIMARY KEY, \"地址\" TEXT"));
    createPrizeSchema(store);
}

void createPrizeSchema(Store& store) {
    create(store, QStringLiteral("奖级奖金"),
           QStringLiteral("\"期号\" INTEGER, \"奖级\" INTEGER, \"注数\" INTEGER, \"奖金\" INTEGER, "
                          "PRIMARY KEY (\"期号\", \"奖级\")"));
}

}  // namespace dovrex
