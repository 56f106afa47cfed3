#include "test_support.h"

#include <sqlite3.h>

#include <QDir>
#include <QFile>

#include "domain/date_value.h"
#include "store/factory_data.h"
#include "store/pack.h"
#include "store/schema.h"

namespace dovrex::test {

QString shippedPackPath() {
    return QStringLiteral(DOVREX_BUILD_DIR "/data/") + kDataFileName;
}

SharedStateGuard::SharedStateGuard() : saved_(shared()) {
    reset_SharedState();
}

SharedStateGuard::~SharedStateGuard() {
    shared() = saved_;
    Clock::useSystemClock();
}

TempFolders::TempFolders() {
    paths_.programDir = dir_.filePath(QStringLiteral("program"));
    paths_.tempDir = dir_.filePath(QStringLiteral("temp"));
    QDir().mkpath(paths_.programDir);
    QDir().mkpath(paths_.tempDir);
}

void makeFreshStoreFile(const QString& file) {
    QFile::remove(file);
    auto s = Store::open(file, true);
    createWorkStoreSchema(*s);
    seedFactoryData(*s);
}

void makePack(const QString& storeFile, const QString& packPath) {
    const QString aux = storeFile + QStringLiteral(".aux");
    QFile f(aux);
    if (!f.open(QIODevice::WriteOnly) || f.write("aux") != 3)
        throw StoreError(QStringLiteral("cannot write ") + aux);
    f.close();
    if (!pack(storeFile, aux, packPath)) throw StoreError(QStringLiteral("cannot pack ") + packPath);
}

ScopedStore::ScopedStore(Kind kind, const QString& file) : file_(file) {
    if (kind == Kind::Fresh) {
        makeFreshStoreFile(file);
    } else if (!unpack(shippedPackPath(), file, file + QStringLiteral(".aux"))) {
        throw StoreError(QStringLiteral("cannot unpack ") + shippedPackPath());
    }
    store_ = Store::open(file);
    shared().g_Store = store_.get();
}

ScopedStore::~ScopedStore() {
    if (shared().g_Store == store_.get()) shared().g_Store = nullptr;
    shared().g_HistoryCursor.reset();
}

void addDraw(IssueNumber issue, const QString& date, const Reds& reds, int blue) {
    const auto day = parseDateText(date);
    if (!day) throw StoreError(QStringLiteral("bad date ") + date);
    store_Execute(
        QStringLiteral("INSERT INTO 历史记录 (期号,开奖日期,红球1,红球2,红球3,红球4,红球5,红球6,蓝球,已完成) "
                       "VALUES (?,?,?,?,?,?,?,?,?,'Y')"),
        {issue, *day, reds[1], reds[2], reds[3], reds[4], reds[5], reds[6], blue});
}

QVariant scalar(const QString& sql, const QVariantList& params) {
    return store().scalar(sql, params);
}

int intScalar(const QString& sql, const QVariantList& params) {
    return scalar(sql, params).toInt();
}

QByteArray fileBytes(const QString& path) {
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

QByteArray testData(const char* name) {
    return fileBytes(QStringLiteral(DOVREX_SOURCE_DIR "/tests/data/") + QLatin1String(name));
}

void alterStoreFile(const QString& file, const QString& sql) {
    sqlite3* db = nullptr;
    ASSERT_EQ(sqlite3_open(file.toUtf8().constData(), &db), SQLITE_OK);
    char* error = nullptr;
    EXPECT_EQ(sqlite3_exec(db, sql.toUtf8().constData(), nullptr, nullptr, &error), SQLITE_OK)
        << (error ? error : "") << ' ' << sql.toStdString();
    sqlite3_free(error);
    sqlite3_close(db);
}

bool writeFile(const QString& path, const QByteArray& bytes) {
    QFile f(path);
    return f.open(QIODevice::WriteOnly | QIODevice::Truncate) && f.write(bytes) == bytes.size();
}

int addTicket(IssueNumber issue, const Reds& reds, int blue) {
    const int next = intScalar(QStringLiteral("select ifnull(max(max(ID), max(序号)), 0) from 日志表")) + 1;
    store_Execute(QStringLiteral("INSERT INTO 日志表 (ID,序号,期号,红球1,红球2,红球3,红球4,红球5,红球6,蓝球) "
                                 "VALUES (?,?,?,?,?,?,?,?,?,?)"),
                  {next, next, issue, reds[1], reds[2], reds[3], reds[4], reds[5], reds[6], blue});
    return next;
}

void switchAllOff() {
    store_Execute(QStringLiteral("UPDATE 过滤条件使用情况 SET 使用情况=0"));
    store_Execute(QStringLiteral("UPDATE 历史数据过滤 SET 使用状态=0"));
}

void addTickets(IssueNumber issue, int count) {
    store_Execute(QStringLiteral("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n WHERE i<?) "
                                 "INSERT INTO 日志表 (序号,期号,红球1,红球2,红球3,红球4,红球5,红球6,蓝球) "
                                 "SELECT i,?,1+i%28,2+i%28,3+i%28,4+i%28,5+i%28,6+i%28,1+i%16 FROM n"),
                  {count, issue});
}

ProgramFolderTest::ProgramFolderTest() {
    makeFreshStoreFile(seedStore());
    makePack(seedStore(), paths().dataPack());
}

}  // namespace dovrex::test
