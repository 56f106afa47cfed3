// The store on SQLite: the old dialect's forms, the keyset cursor, transactions, dates, the pack.
#include <sqlite3.h>

#include <QFile>

#include "domain/date_value.h"
#include "store/jet_sql.h"
#include "store/pack.h"
#include "support/table_rows.h"
#include "support/test_support.h"

namespace dovrex::test {
namespace {

class DialectTest : public FreshStoreTest {
  protected:
    DialectTest() {
        db().execute(QStringLiteral("CREATE TABLE t (id INTEGER, a INTEGER, b INTEGER, name TEXT)"));
    }
    void rows(const QList<QList<int>>& values) {
        for (const auto& v : values)
            db().execute(QStringLiteral("INSERT INTO t (id, a, b) VALUES (?, ?, ?)"), {v[0], v[1], v[2]});
    }
    QList<int> ids(const QString& sql) { return columnValues(db(), sql); }
};

TEST_F(DialectTest, PagedRowSetsReadLikeWholeOnes) {
    db().execute(
        QStringLiteral("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n WHERE i<1300) "
                       "INSERT INTO t (id, a, b, name) SELECT i, i%7, 1300-i, 'r'||i FROM n"));
    // Counts rewritten and kept as subqueries, pages cut at their edges, bound parameters, TOP.
    const QList<QPair<QString, QVariantList>> shapes{
        {QStringLiteral("select * from t order by a asc, b desc"), {}},
        {QStringLiteral("SELECT  * FROM t  where a=? or name=? ORDER BY b"), {3, QStringLiteral("r5")}},
        {QStringLiteral("select id, a from t where id>? order by a, id"), {700}},
        {QStringLiteral("select * from t where id in (select id from t where b<?) order by id"), {90}},
        {QStringLiteral("select top 5 * from t order by a"), {}},
        {QStringLiteral("select * from t where id<0"), {}},
    };
    for (const auto& [sql, params] : shapes) {
        auto whole = db().query(sql, params);
        auto paged = db().pagedQuery(sql, params);
        ASSERT_EQ(paged->recordCount(), whole->recordCount()) << sql.toStdString();
        ASSERT_EQ(paged->fieldCount(), whole->fieldCount()) << sql.toStdString();
        // Backwards, so every page is read out of order at least once.
        for (int r = whole->recordCount() - 1; r >= 0; --r)
            for (int c = 0; c < whole->fieldCount(); ++c)
                ASSERT_EQ(paged->valueAt(r, c), whole->valueAt(r, c)) << sql.toStdString() << " row " << r;
        EXPECT_FALSE(paged->valueAt(whole->recordCount(), 0).isValid());
        if (whole->recordCount() > 0) {
            paged->moveLast();
            EXPECT_EQ(paged->value(QStringLiteral("id")), whole->valueAt(whole->recordCount() - 1, 0));
        }
    }
}

// TOP keeps rows tied with the last on every order term, PERCENT rounds up; without an order: n.
TEST_F(DialectTest, TopKeepsTiesAndPercentRoundsUp) {
    rows({{1, 1, 1}, {2, 2, 1}, {3, 2, 1}, {4, 2, 2}, {5, 3, 0}});
    const std::pair<const char*, QList<int>> cases[] = {
        {"select TOP 2 id from t order by a asc", {1, 2, 3, 4}},  // every a = 2 ties with the second
        {"select TOP 2 id from t order by a, b", {1, 2, 3}},      // (2,2) differs on the second term
        {"select TOP 2 id from t order by a, b, id DESC", {1, 3}},
        {"select top 1  id from t order by b desc", {4}},  // a tie on a column not selected
        {"select TOP 2 id from t order by b DESC", {1, 2, 3, 4}},
        {"select TOP 3 id from t", {1, 2, 3}},
        {"select TOP 2 id from t where a=2", {2, 3}},
        {"select TOP 9 id from t", {1, 2, 3, 4, 5}},
        {"select TOP 50 PERCENT id from t order by a, b, id DESC", {1, 2, 3}},  // 2.5 rounds up
        {"select top 60 percent id from t order by a, b, id DESC", {1, 2, 3}},
        {"select top 1 percent id from t order by a", {1}},
        {"select top 100 percent id from t order by a", {1, 2, 3, 4, 5}},
        {"select top 40 percent id from t order by a", {1, 2, 3, 4}},  // ties kept with PERCENT too
    };
    for (const auto& [sql, want] : cases) {
        QList<int> got = ids(QString::fromLatin1(sql));
        std::sort(got.begin(), got.end());
        EXPECT_EQ(got, want) << sql;
    }
    EXPECT_EQ(db().query(QStringLiteral("select TOP 2 * from t order by a"))->recordCount(), 4);
}

TEST_F(DialectTest, DateLiteralsCompareAsDaysAndTheFallbackSortsLast) {
    for (const char* day : {"2019/12/31", "2020/01/01", "2020/01/02"})
        db().execute(QStringLiteral("INSERT INTO 用户表 (用户名, 最后登陆时间) VALUES (?, ?)"),
                     {QString::fromLatin1(day), *parseDateText(QString::fromLatin1(day))});
    auto names = [&](const QString& sql) { return QStringList(columnValues<QString>(db(), sql)); };
    EXPECT_EQ(names(QStringLiteral(
                  "select 用户名 from 用户表 where 最后登陆时间<=#2020/01/01# and 用户名<>'临时用户' "
                  "order by 用户名")),
              (QStringList{QStringLiteral("2019/12/31"), QStringLiteral("2020/01/01")}));
    EXPECT_EQ(names(QStringLiteral("select 用户名 from 用户表 where 最后登陆时间=#2020/1/2#")),
              QStringList{QStringLiteral("2020/01/02")});
    // A time of day in the literal counts; without one the day starts at midnight.
    db().execute(QStringLiteral("INSERT INTO 用户表 (用户名, 最后登陆时间) VALUES ('noon', ?)"),
                 {toDateValue(QDate(2020, 1, 3)) + 0.5});
    EXPECT_EQ(names(QStringLiteral("select 用户名 from 用户表 where 最后登陆时间=#2020/01/03 12:00:00#")),
              QStringList{QStringLiteral("noon")});
    EXPECT_TRUE(names(QStringLiteral("select 用户名 from 用户表 where 最后登陆时间<=#2020/01/03 11:59#"))
                    .contains(QStringLiteral("2020/01/02")));
    EXPECT_FALSE(names(QStringLiteral("select 用户名 from 用户表 where 最后登陆时间<=#2020/01/03#"))
                     .contains(QStringLiteral("noon")));
    // A date inside a string literal is text.
    EXPECT_EQ(intScalar(QStringLiteral("select count(*) from 用户表 where 用户名='#2020/01/01#'")), 0);
    // The fallback date, an issue number, sorts after every real date.
    addDraw(2003001, QStringLiteral("2003/02/23"), makeReds(1, 2, 3, 4, 5, 6));
    addDraw(2026001, QStringLiteral("2026/01/01"), makeReds(1, 2, 3, 4, 5, 6));
    db().execute(QStringLiteral("UPDATE 历史记录 SET 开奖日期=2003001 WHERE 期号=2003001"));
    EXPECT_EQ(ids(QStringLiteral("select 期号 from 历史记录 order by 开奖日期 asc")),
              (QList<int>{2026001, 2003001}));
    EXPECT_EQ(intScalar(QStringLiteral("select 期号 from 历史记录 where 开奖日期>#9999/12/31#")), 0);
    EXPECT_EQ(intScalar(QStringLiteral("select 期号 from 历史记录 where 开奖日期>#7000/01/01#")), 2003001);
}

TEST_F(DialectTest, BracketsIndexQuotesAndNumbersBeforeKeywords) {
    EXPECT_EQ(intScalar(QStringLiteral("select [号码] from 号码特性 where [INDEX]=5")), 5);
    // INDEX unquoted, as a column in ORDER BY and in WHERE, and a TOP tie test over it.
    auto c = db().query(QStringLiteral("select 号码 from 号码特性  ORDER BY INDEX ASC"));
    ASSERT_EQ(c->recordCount(), 33);
    c->moveLast();
    EXPECT_EQ(c->intValue(0), 33);
    EXPECT_EQ(intScalar(QStringLiteral("select TOP 1 号码 from 号码特性 where INDEX>30 ORDER BY INDEX DESC")),
              33);
    // Doubled quotes inside a literal, and the dialect's markers inside it left alone.
    db().execute(QStringLiteral("INSERT INTO t (id, name) VALUES (1, 'O''Neil [x] #1# INDEX')"));
    EXPECT_EQ(scalar(QStringLiteral("select name from t where name='O''Neil [x] #1# INDEX'")).toString(),
              QStringLiteral("O'Neil [x] #1# INDEX"));
    // A typed value goes in as a parameter, quotes and all.
    const QString typed = QStringLiteral("it's a \"name\"'; DROP TABLE t; --");
    db().execute(QStringLiteral("INSERT INTO t (id, name) VALUES (2, ?)"), {typed});
    EXPECT_EQ(scalar(QStringLiteral("select id from t where name=?"), {typed}).toInt(), 2);
    EXPECT_TRUE(db().tableExists(QStringLiteral("t")));
    // The unguarded form: a quote in a pasted value breaks the statement.
    EXPECT_THROW(db().query(QStringLiteral("select * from 用户表 where 用户名='a'b'")), StoreError);
    // A number running into a keyword ends before it.
    rows({{1, 10, 0}, {2, 20, 0}, {3, 30, 0}});
    EXPECT_EQ(ids(QStringLiteral("select id from t where a>=10and a<=20order by id")), (QList<int>{1, 2}));
    db().execute(QStringLiteral("INSERT INTO 用户表 (用户名, 最后登陆时间) VALUES ('u1', ?)"), {36527.0});
    EXPECT_EQ(scalar(QStringLiteral(
                         "select 用户名 from 用户表 where 最后登陆时间>=#2000/01/02#and 用户名<>'临时用户'"))
                  .toString(),
              QStringLiteral("u1"));
    // Names that end in a digit are names.
    EXPECT_EQ(intScalar(QStringLiteral("select count(*) from 号码特性 where 区间1=1and 区间2=0")), 8);
}

TEST_F(DialectTest, CursorMovesCountsAndReadsColumnsByNameOrPosition) {
    rows({{1, 10, 0}, {2, 20, 0}, {3, 30, 0}});
    auto c = db().query(QStringLiteral("select id, a from t order by id"));
    EXPECT_EQ(c->recordCount(), 3);  // known before any move
    EXPECT_FALSE(c->eof());
    EXPECT_FALSE(c->bof());
    EXPECT_EQ(c->intValue(QStringLiteral("id")), 1);
    c->moveLast();
    EXPECT_EQ(c->intValue(0), 3);
    c->moveNext();
    EXPECT_TRUE(c->eof());
    EXPECT_THROW(c->value(0), StoreError);
    c->moveLast();
    c->movePrevious();
    EXPECT_EQ(c->intValue(1), 20);
    c->movePrevious();
    c->movePrevious();
    EXPECT_TRUE(c->bof());
    c->moveNext();
    EXPECT_EQ(c->intValue(0), 1);
    c->moveFirst();
    EXPECT_EQ(c->intValue(QStringLiteral("A")), 10);

    auto empty = db().query(QStringLiteral("select * from t where id>99"));
    EXPECT_EQ(empty->recordCount(), 0);
    EXPECT_TRUE(empty->eof());
    EXPECT_TRUE(empty->bof());
    empty->moveLast();
    EXPECT_TRUE(empty->eof());
    // Columns by name in any case and by position; hidden columns stay hidden.
    db().execute(QStringLiteral("UPDATE 过滤条件 SET VALUE=7 WHERE ID=1000"));
    c = db().query(QStringLiteral("select * from 过滤条件 where ID=1000"));
    for (const char* name : {"Value", "VALUE", "value"}) EXPECT_EQ(c->intValue(QString::fromLatin1(name)), 7);
    EXPECT_EQ(c->intValue(1), 7);
    EXPECT_EQ(c->fieldCount(), 2);  // hidden columns stay hidden
    EXPECT_EQ(c->fieldName(0), QStringLiteral("ID"));
    EXPECT_EQ(c->fieldIndex(QStringLiteral("nothing")), -1);
    EXPECT_THROW(c->value(QStringLiteral("nothing")), StoreError);
    EXPECT_THROW(c->value(2), StoreError);
}

TEST_F(FreshStoreTest, CursorWritesInPlace) {
    auto value = [](int id) {
        return intScalar(QStringLiteral("select VALUE from 过滤条件 where ID=?"), {id});
    };
    auto c = db().query(QStringLiteral("select * from 过滤条件 where ID>=1 and ID<=3 order by ID asc"));
    c->setValue(QStringLiteral("Value"), 11);
    c->update();
    EXPECT_EQ(value(1), 11);
    // Moving off a changed row writes it; so does moveFirst, moveLast, movePrevious and close.
    c->moveNext();
    c->setValue(1, 22);
    c->moveNext();
    EXPECT_EQ(value(2), 22);
    c->setValue(1, true);
    c->movePrevious();
    EXPECT_EQ(value(3), 1);
    c->setValue(1, 5);
    c->close();
    EXPECT_EQ(value(2), 5);
    // A second cursor of the same rows reads what the first one wrote.
    auto again = db().query(QStringLiteral("select * from 过滤条件 where ID=1"));
    EXPECT_EQ(again->intValue(QStringLiteral("VALUE")), 11);
    // A row keeps its place when its key changes.
    addDraw(2020001, QStringLiteral("2020/01/02"), makeReds(1, 2, 3, 4, 5, 6));
    addDraw(2020003, QStringLiteral("2020/01/05"), makeReds(1, 2, 3, 4, 5, 7));
    auto draws = db().query(QStringLiteral("select * from 历史记录 order by 期号 asc"));
    draws->setValue(QStringLiteral("期号"), 2020002);  // the issue is the table's key
    draws->update();
    draws->setValue(QStringLiteral("和值"), 21);
    draws->update();
    EXPECT_EQ(intScalar(QStringLiteral("select 和值 from 历史记录 where 期号=2020002")), 21);
    EXPECT_EQ(intScalar(QStringLiteral("select count(*) from 历史记录")), 2);
}

TEST_F(FreshStoreTest, CursorAddNewAppendsARow) {
    auto c = db().query(QStringLiteral("select * from 日志表 where 期号=2020001"));
    ASSERT_EQ(c->recordCount(), 0);
    for (int k = 1; k <= 2; ++k) {
        c->addNew();
        c->setValue(QStringLiteral("期号"), 2020001);
        c->setValue(QStringLiteral("序号"), k);
        c->update();
    }
    EXPECT_EQ(c->recordCount(), 2);
    // The row just added can be written again through the same cursor.
    c->moveFirst();
    c->setValue(QStringLiteral("红球1"), 9);
    c->update();
    EXPECT_EQ(
        queryLines(db(), QStringLiteral("select 序号, 红球1 from 日志表 where 期号=2020001 order by 序号")),
        words("1|9 2|0"));
    // An added row shows the identity and the defaults the table gave it.
    c->moveLast();
    const int id = c->intValue(QStringLiteral("ID"));
    EXPECT_GT(id, 0);
    EXPECT_EQ(c->value(QStringLiteral("过滤标记")).toInt(), 0);
    EXPECT_FALSE(c->value(QStringLiteral("缩水标记")).isNull());
    EXPECT_EQ(intScalar(QStringLiteral("select 序号 from 日志表 where ID=?"), {id}), 2);
}

TEST_F(FreshStoreTest, JoinsAndAggregatesRefuseWrites) {
    const QStringList readOnly{
        QStringLiteral("select count(*) from 过滤条件"),
        QStringLiteral("select max(VALUE) from 过滤条件 where ID<10"),
        QStringLiteral("select ID, sum(VALUE) from 过滤条件 group by ID"),
        QStringLiteral("select a.ID, b.VALUE from 过滤条件 a, 默认过滤条件 b where a.ID=b.ID"),
        QStringLiteral("select a.ID from 过滤条件 a inner join 默认过滤条件 b on a.ID=b.ID"),
        QStringLiteral("select distinct VALUE from 过滤条件"),
    };
    for (const QString& sql : readOnly) {
        auto c = db().query(sql);
        EXPECT_FALSE(c->updatable()) << sql.toStdString();
        EXPECT_THROW(c->setValue(0, 1), StoreError) << sql.toStdString();
    }
    EXPECT_EQ(intScalar(QStringLiteral("select count(*) from 过滤条件 where VALUE<>0")), 0);
    EXPECT_TRUE(db().query(QStringLiteral("select * from 过滤条件 where ID=1"))->updatable());
}

TEST_F(FreshStoreTest, TransactionCommitsWhenThePassThrows) {
    try {
        Transaction tx(db());
        auto c = db().query(QStringLiteral("select * from 过滤条件 where ID=1"));
        c->setValue(1, 42);
        c->update();
        throw StoreError(QStringLiteral("a fault half way"));
    } catch (const StoreError&) {
    }
    EXPECT_NE(sqlite3_get_autocommit(db().handle()), 0);  // no transaction left open
    auto other = Store::open(db().path());                // a second connection sees the write
    EXPECT_EQ(other->scalar(QStringLiteral("select VALUE from 过滤条件 where ID=1")).toInt(), 42);
}

// Statements are kept prepared between runs: a kept one reads a table as it is now, after a column
// was added or the table made anew, and the bounded cache goes on answering past its size.
TEST_F(DialectTest, KeptStatementsFollowTheTableAndClearTableEmptiesIt) {
    rows({{1, 10, 0}});
    const QString all = QStringLiteral("select * from t order by id");
    EXPECT_EQ(db().query(all)->fieldCount(), 4);
    db().execute(QStringLiteral("ALTER TABLE t ADD COLUMN extra INTEGER DEFAULT 7"));
    auto c = db().query(all);
    EXPECT_EQ(c->fieldCount(), 5);
    EXPECT_EQ(c->intValue(QStringLiteral("extra")), 7);
    db().execute(QStringLiteral("DROP TABLE t"));
    EXPECT_THROW(db().query(all), StoreError);
    db().execute(QStringLiteral("CREATE TABLE t (id INTEGER, a INTEGER)"));
    db().execute(QStringLiteral("INSERT INTO t (id, a) VALUES (3, 0), (2, 0)"));
    EXPECT_EQ(ids(all), (QList<int>{2, 3}));
    for (int i = 0; i < 600; ++i)  // texts that paste their values fill the cache many times over
        EXPECT_EQ(db().scalar(QStringLiteral("select %1 + id from t where id=2").arg(i)).toInt(), i + 2);
    EXPECT_EQ(ids(all), (QList<int>{2, 3}));
    db().clearTable(QStringLiteral("BallColor"));
    EXPECT_EQ(intScalar(QStringLiteral("select count(*) from BallColor")), 0);
    EXPECT_THROW(db().clearTable(QStringLiteral("NoSuchTable")), StoreError);
}

// ---- dates ----

TEST(DateValue, DayNumbersTextAndTheClock) {
    EXPECT_EQ(toDateValue(QDate(1899, 12, 30)), 0.0);
    EXPECT_EQ(toDateValue(QDate(2000, 1, 2)), 36527.0);
    EXPECT_EQ(toQDate(36527.75), QDate(2000, 1, 2));  // the time of day is a fraction
    EXPECT_EQ(toQDate(2003001).year(), 7384);
    EXPECT_EQ(dateText(36527.0), QStringLiteral("2000/01/02"));
    for (const char* text : {"2003/02/23", "2003-2-23", "2003.02.23", " 2003/2/23 20:30"})
        EXPECT_EQ(parseDateText(QString::fromLatin1(text)), toDateValue(QDate(2003, 2, 23))) << text;
    for (const char* text : {"2003/02/30", "23/02/2003", "", "2003/02"})
        EXPECT_FALSE(parseDateText(QString::fromLatin1(text))) << text;
    Clock::useSystemClock();  // a set day is used by every test that sets one
    EXPECT_EQ(Clock::today(), QDate::currentDate());
}

// ---- pack ----

class PackTest : public DovrexTest {
  protected:
    PackTest() { makeFreshStoreFile(store); }
    const QString store = tempPath(QStringLiteral("store.dat"));
};

TEST_F(PackTest, LayoutRoundTripARewrittenTargetAndAPlainStore) {
    const QString a = tempFile(QStringLiteral("a"), "abc"), b = tempFile(QStringLiteral("b"), "de");
    ASSERT_TRUE(pack(a, b, tempPath(QStringLiteral("p"))));
    EXPECT_EQ(fileBytes(tempPath(QStringLiteral("p"))), QByteArray("\x03\0\0\0\x02\0\0\0abcde", 13));
    EXPECT_FALSE(pack(a, tempPath(QStringLiteral("missing")), tempPath(QStringLiteral("q"))));
    const QString aux = tempFile(QStringLiteral("aux"), QByteArray("\0\1\2 aux", 7));
    const QString packed = tempPath(QStringLiteral("pack"));
    ASSERT_TRUE(pack(store, aux, packed));
    EXPECT_EQ(fileBytes(packed).size(), 8 + fileBytes(store).size() + 7);
    const QString out1 = tempFile(QStringLiteral("out1"), QByteArray(200000, 'x'));  // longer than needed
    const QString out2 = tempPath(QStringLiteral("out2"));
    ASSERT_TRUE(unpack(packed, out1, out2));
    EXPECT_EQ(fileBytes(out1), fileBytes(store));
    EXPECT_EQ(fileBytes(out2), fileBytes(aux));
    // A plain store file stands in for a pack, with an empty aux file.
    ASSERT_TRUE(writeFile(out1, "old") && writeFile(out2, "old aux"));
    EXPECT_TRUE(isPlainStoreFile(store));
    ASSERT_TRUE(unpack(store, out1, out2));
    EXPECT_EQ(fileBytes(out1), fileBytes(store));
    EXPECT_TRUE(fileBytes(out2).isEmpty());
    EXPECT_NO_THROW(Store::open(out1));
}

TEST_F(PackTest, DamagedPacksAreRefusedAndTouchNothing) {
    const QString aux = tempFile(QStringLiteral("aux"), "aux");
    const QString good = tempPath(QStringLiteral("pack"));
    ASSERT_TRUE(pack(store, aux, good));
    const QByteArray bytes = fileBytes(good);

    QByteArray negative = bytes;
    negative[3] = char(0x80);
    QByteArray notAStore = bytes;
    notAStore[8] = 'X';
    const QList<QByteArray> damaged{
        bytes.left(bytes.size() - 1),        bytes.left(6), QByteArray(), negative, notAStore,
        QByteArray("plain text, not a pack")};
    const QString out1 = tempFile(QStringLiteral("out1"), "keep me 1");
    const QString out2 = tempFile(QStringLiteral("out2"), "keep me 2");
    for (int i = 0; i < damaged.size(); ++i) {
        const QString bad = tempFile(QStringLiteral("bad%1").arg(i), damaged[i]);
        EXPECT_FALSE(unpack(bad, out1, out2)) << i;
        EXPECT_EQ(fileBytes(out1), QByteArray("keep me 1")) << i;
        EXPECT_EQ(fileBytes(out2), QByteArray("keep me 2")) << i;
    }
    EXPECT_FALSE(unpack(tempPath(QStringLiteral("missing")), out1, out2));
    EXPECT_EQ(fileBytes(out1), QByteArray("keep me 1"));
}

}  // namespace
}  // namespace dovrex::test
