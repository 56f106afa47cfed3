#include "store/schema.h"

#include <sqlite3.h>

#include <QFileInfo>
#include <QHash>
#include <QRegularExpression>
#include <QSet>

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
    c << QStringLiteral("跨度") << QStringLiteral("最大间距") << QStringLiteral("AC值")
      << QStringLiteral("连号") << QStringLiteral("重叠号") << QStringLiteral("斜位码");
    c << QStringLiteral("尾数形式") << QStringLiteral("间距七") << QStringLiteral("间距九")
      << QStringLiteral("间距十一") << QStringLiteral("间距十二") << QStringLiteral("头数形式");
    c << QStringLiteral("头数和值") << QStringLiteral("尾数和值") << QStringLiteral("已完成");
    return c;
}

QStringList historyColumns() {
    QStringList c{QStringLiteral("期号"), QStringLiteral("开奖日期")};
    c << numbered(QStringLiteral("红球"), 1, 6) << QStringLiteral("蓝球");
    c << QStringLiteral("和值") << QStringLiteral("奇数和值") << QStringLiteral("偶数和值")
      << QStringLiteral("头数和值") << QStringLiteral("尾数和值");
    c << QStringLiteral("奇数个数") << QStringLiteral("偶数个数") << QStringLiteral("大数个数")
      << QStringLiteral("小数个数") << QStringLiteral("高尾码个数") << QStringLiteral("低尾码个数");
    c << numbered(QStringLiteral("区间"), 1, 4) << numbered(QStringLiteral("自定义组"), 1, 10);
    c << QStringLiteral("跨度") << QStringLiteral("最大间距") << QStringLiteral("AC值")
      << QStringLiteral("重叠号") << QStringLiteral("斜位码") << QStringLiteral("连号");
    c << QStringLiteral("尾数形式") << QStringLiteral("间距七") << QStringLiteral("间距九")
      << QStringLiteral("间距十一") << QStringLiteral("间距十二") << QStringLiteral("头数形式");
    c << QStringLiteral("温度值5") << QStringLiteral("温度值10") << QStringLiteral("已完成")
      << QStringLiteral("总期号") << QStringLiteral("遗漏数据");
    return c;
}

QStringList ticketColumns() {
    QStringList c{QStringLiteral("ID"), QStringLiteral("序号"), QStringLiteral("期号")};
    c << numbered(QStringLiteral("红球"), 1, 6) << QStringLiteral("蓝球");
    c << QStringLiteral("过滤标记") << QStringLiteral("缩水标记") << QStringLiteral("精选标记")
      << QStringLiteral("临时数据") << QStringLiteral("红球中") << QStringLiteral("蓝球中")
      << QStringLiteral("缩水公式");
    return c;
}

QStringList numberTraitColumns() {
    QStringList c{QStringLiteral("INDEX"), QStringLiteral("号码"), QStringLiteral("大数"),
                  QStringLiteral("低尾码"), QStringLiteral("高尾码")};
    c << numbered(QStringLiteral("区间"), 1, 4) << numbered(QStringLiteral("自定义组"), 1, 20)
      << numbered(QStringLiteral("第"), 1, 7)
             .replaceInStrings(QRegularExpression(QStringLiteral("$")), QStringLiteral("位"));
    c << numbered(QStringLiteral("尾"), 0, 9) << numbered(QStringLiteral("头"), 0, 9)
      << numbered(QStringLiteral("七"), 0, 9) << numbered(QStringLiteral("九"), 0, 9)
      << numbered(QStringLiteral("十一"), 0, 10) << numbered(QStringLiteral("十二"), 0, 11);
    return c;
}

}  // namespace schema

void createConditionSchema(Store& store) {
    create(store, QStringLiteral("过滤条件"),
           QStringLiteral("\"ID\" INTEGER NOT NULL UNIQUE, \"VALUE\" INTEGER DEFAULT 0"));
    create(store, QStringLiteral("过滤条件使用情况"),
           QStringLiteral("\"条件\" INTEGER NOT NULL UNIQUE, \"使用情况\" INTEGER DEFAULT 0"));
    create(store, QStringLiteral("历史数据过滤"),
           QStringLiteral(
               "\"使用状态\" INTEGER DEFAULT 0, \"最小值\" INTEGER DEFAULT 0, \"最大值\" INTEGER DEFAULT 0, "
               "\"匹配值\" INTEGER DEFAULT 6"));
    create(store, QStringLiteral("号码特性"),
           columnList(schema::numberTraitColumns(), QStringLiteral("INTEGER DEFAULT 0")));
}

void createWorkStoreSchema(Store& store) {
    Transaction tx(store);
    createConditionSchema(store);
    create(store, QStringLiteral("默认过滤条件"),
           QStringLiteral("\"ID\" INTEGER NOT NULL UNIQUE, \"VALUE\" INTEGER DEFAULT 0"));
    create(store, QStringLiteral("默认过滤条件使用情况"),
           QStringLiteral("\"条件\" INTEGER NOT NULL UNIQUE, \"使用情况\" INTEGER DEFAULT 0"));

    {
        QStringList parts{QStringLiteral("\"期号\" INTEGER PRIMARY KEY"),
                          QStringLiteral("\"开奖日期\" REAL")};
        const QStringList cols = schema::historyColumns();
        const QStringList textCols{QStringLiteral("连号"),     QStringLiteral("尾数形式"),
                                   QStringLiteral("间距七"),   QStringLiteral("间距九"),
                                   QStringLiteral("间距十一"), QStringLiteral("间距十二"),
                                   QStringLiteral("头数形式"), QStringLiteral("已完成")};
        for (int i = 2; i < cols.size(); ++i)
            parts << QStringLiteral("\"%1\" %2")
                         .arg(cols[i], textCols.contains(cols[i]) ? QStringLiteral("TEXT")
                                                                  : QStringLiteral("INTEGER"));
        create(store, QStringLiteral("历史记录"), parts.join(QStringLiteral(", ")));
        store.execute(
            QStringLiteral("CREATE INDEX IF NOT EXISTS \"历史记录_开奖日期\" ON \"历史记录\"(\"开奖日期\")"));
    }
    {
        QStringList cols = schema::ticketColumns();
        cols.removeFirst();
        create(store, QStringLiteral("日志表"),
               QStringLiteral("\"ID\" INTEGER PRIMARY KEY AUTOINCREMENT, ") +
                   columnList(cols, QStringLiteral("INTEGER DEFAULT 0")));
        store.execute(
            QStringLiteral("CREATE INDEX IF NOT EXISTS \"日志表_期号\" ON \"日志表\"(\"期号\", \"序号\")"));
    }
    create(store, QStringLiteral("概率表"),
           QStringLiteral("\"号码\" INTEGER, \"红球\" INTEGER DEFAULT 0, \"蓝球\" INTEGER DEFAULT 0, "
                          "\"红开\" INTEGER DEFAULT 0, \"蓝开\" INTEGER DEFAULT 0"));
    {
        QStringList k;
        for (int i = 1; i <= 49; ++i) k << QStringLiteral("k%1").arg(i, 2, 10, QLatin1Char('0'));
        create(store, QStringLiteral("号码分布"),
               QStringLiteral("\"期号\" INTEGER, ") + columnList(k, QStringLiteral("TEXT")));
    }
    create(store, QStringLiteral("分析表"),
           QStringLiteral("\"期号\" INTEGER, ") +
               columnList(numbered(QStringLiteral("号码组合"), 1, 20), QStringLiteral("TEXT")));
    create(store, QStringLiteral("自定义表"),
           QStringLiteral("\"期号\" INTEGER, ") +
               columnList(numbered(QStringLiteral("自定义组"), 1, 20), QStringLiteral("TEXT")));
    create(store, QStringLiteral("分析表号码组"),
           QStringLiteral("\"号码\" INTEGER, ") +
               columnList(numbered(QStringLiteral("号码组合"), 1, 20), QStringLiteral("INTEGER DEFAULT 0")));
    create(store, QStringLiteral("自定义别名"),
           QStringLiteral("\"序号\" INTEGER, \"自定义名称\" TEXT, \"别名\" TEXT"));
    create(store, QStringLiteral("快速设置"),
           QStringLiteral(
               "\"编号\" INTEGER PRIMARY KEY, \"菜单ID\" INTEGER, \"条件编号\" INTEGER, \"条件名称\" TEXT, "
               "\"范围min\" INTEGER, \"范围max\" INTEGER"));
    create(store, QStringLiteral("用户表"),
           QStringLiteral("\"用户名\" TEXT PRIMARY KEY, \"密码\" TEXT, \"最后登陆时间\" REAL"));
    create(store, QStringLiteral("用户模式"), QStringLiteral("\"模式\" INTEGER DEFAULT 0"));
    create(store, QStringLiteral("BallColor"),
           QStringLiteral("\"号码\" INTEGER, \"基本号\" INTEGER DEFAULT 0, \"特别号\" INTEGER DEFAULT 0"));
    create(store, QStringLiteral("Ssgs"),
           QStringLiteral("\"Haomagesu\" INTEGER, \"Xuhao\" INTEGER, \"缩水公式\" INTEGER"));
    store.execute(
        QStringLiteral("CREATE INDEX IF NOT EXISTS \"Ssgs_n\" ON \"Ssgs\"(\"Haomagesu\", \"Xuhao\")"));
    // Mirror addresses of the draw list download, editable by the user.
    create(store, QStringLiteral("下载地址"), QStringLiteral("\"序号\" INTEGER PRIMARY KEY, \"地址\" TEXT"));
    createPrizeSchema(store);
}

namespace {

struct DeclaredTable {
    QStringList columns;  // lower case
};

// Tables a start or a command makes when a store lacks them.
const QStringList kMadeWhenMissing{QStringLiteral("奖级奖金")};

// The declared schema, read back from a store that createWorkStoreSchema made in memory, so that
// the check and the schema cannot drift apart.
const QHash<QString, DeclaredTable>& declaredTables() {
    static const QHash<QString, DeclaredTable> tables = [] {
        QHash<QString, DeclaredTable> out;
        auto memory = Store::open(QStringLiteral(":memory:"), true);
        createWorkStoreSchema(*memory);
        auto names = memory->query(QStringLiteral("SELECT name FROM sqlite_master WHERE type='table'"));
        for (; !names->eof(); names->moveNext()) {
            const QString table = names->value(0).toString();
            if (table.startsWith(QStringLiteral("sqlite_"))) continue;
            for (const QString& c : memory->columnNames(table)) out[table.toLower()].columns << c.toLower();
        }
        return out;
    }();
    return tables;
}

const QRegularExpression& undeclaredConstraint() {
    static const QRegularExpression re(
        QStringLiteral("\\b(CHECK|REFERENCES|COLLATE)\\b|\\)\\s*(STRICT|WITHOUT)\\b"),
        QRegularExpression::CaseInsensitiveOption);
    return re;
}

}  // namespace

namespace {

// The rows of a question about the store's own make-up, read straight from the engine: these are
// catalogue tables and table functions, not tables the cursor could write back to.
QList<QStringList> catalogueRows(Store& store, const QString& sql, const QString& arg = {}) {
    sqlite3_stmt* stmt = nullptr;
    const QByteArray utf8 = sql.toUtf8(), param = arg.toUtf8();
    if (sqlite3_prepare_v2(store.handle(), utf8.constData(), int(utf8.size()), &stmt, nullptr) != SQLITE_OK) {
        sqlite3_finalize(stmt);
        throw StoreError(QString::fromUtf8(sqlite3_errmsg(store.handle())));
    }
    if (!arg.isNull()) sqlite3_bind_text(stmt, 1, param.constData(), int(param.size()), SQLITE_TRANSIENT);
    QList<QStringList> rows;
    while (sqlite3_step(stmt) == SQLITE_ROW) {
        QStringList row;
        for (int c = 0; c < sqlite3_column_count(stmt); ++c)
            row << QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(stmt, c)),
                                     sqlite3_column_bytes(stmt, c));
        rows << row;
    }
    sqlite3_finalize(stmt);
    return rows;
}

}  // namespace

QString schemaFault(Store& store) {
    QHash<QString, QString> kinds, texts;
    for (const QStringList& row :
         catalogueRows(store, QStringLiteral("SELECT type, name, sql FROM sqlite_master"))) {
        if (row[0] == u"trigger") return QStringLiteral("trigger %1").arg(row[1]);
        if (row[0] == u"table" || row[0] == u"view") {
            kinds.insert(row[1].toLower(), row[0]);
            texts.insert(row[1].toLower(), row[2]);
        }
    }
    const auto& declared = declaredTables();
    for (auto it = declared.begin(); it != declared.end(); ++it) {
        const QString& table = it.key();
        if (!kinds.contains(table)) {
            if (kMadeWhenMissing.contains(table)) continue;
            return QStringLiteral("no table %1").arg(table);
        }
        if (kinds.value(table) != u"table" || texts.value(table).contains(undeclaredConstraint()))
            return QStringLiteral("table %1 is not as declared").arg(table);
        QSet<QString> plain;
        for (const QStringList& row :
             catalogueRows(store, QStringLiteral("SELECT name, hidden FROM pragma_table_xinfo(?1)"), table))
            if (row[1] == u"0") plain.insert(row[0].toLower());
        for (const QString& c : it->columns)
            if (!plain.contains(c)) return QStringLiteral("no column %1.%2").arg(table, c);
        // A unique index the program never made refuses rows it writes.
        for (const QStringList& row : catalogueRows(
                 store, QStringLiteral("SELECT name, \"unique\", origin FROM pragma_index_list(?1)"), table))
            if (row[1] != u"0" && row[2] == u"c") return QStringLiteral("index %1").arg(row[0]);
    }
    const QList<QStringList> colours = catalogueRows(
        store, QStringLiteral("SELECT count(DISTINCT 号码) FROM BallColor WHERE 号码 BETWEEN 1 AND 33"));
    if (colours.value(0).value(0) != u"33") return QStringLiteral("BallColor lacks rows");
    return {};
}

bool storeFileIsSound(const QString& path) {
    if (!QFileInfo(path).isFile() || !Store::fileIsSound(path)) return false;
    try {
        auto store = Store::openReadOnly(path);
        return schemaFault(*store).isEmpty();
    } catch (const StoreError&) {
        return false;
    }
}

void createPrizeSchema(Store& store) {
    create(store, QStringLiteral("奖级奖金"),
           QStringLiteral("\"期号\" INTEGER, \"奖级\" INTEGER, \"注数\" INTEGER, \"奖金\" INTEGER, "
                          "PRIMARY KEY (\"期号\", \"奖级\")"));
}

}  // namespace dovrex
