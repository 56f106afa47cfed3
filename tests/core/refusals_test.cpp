// What the program must refuse (impossible records, stores whole but wrong, condition files whose
// rows do not match by key) and the writes it must not report as done.
#include <QDir>
#include <QFile>

#include "app/app_flow.h"
#include "domain/record_checks.h"
#include "filters/condition_files.h"
#include "history/draw_sources.h"
#include "store/schema.h"
#include "support/headless_script.h"
#include "support/test_support.h"

namespace dovrex::test {
namespace {

TEST(RecordChecks, TicketsDrawsAndConditionValues) {
    Clock::setToday(QDate(2026, 11, 26));
    const Reds good = makeReds(1, 2, 3, 4, 5, 33);
    struct Ticket {
        Reds reds;
        int blue;
        long long issue;
        bool ok;
    };
    // clang-format off
    const Ticket tickets[] = {
        {good, 16, 2026100, true}, {good, 1, 2027200, true}, {good, 1, 2003001, true},
        {makeReds(1, 1, 1, 1, 1, 1), 1, 2026001, false}, {makeReds(0, 2, 3, 4, 5, 6), 1, 2026001, false},
        {good, 17, 2026001, false}, {good, 0, 2026001, false},
        {good, 1, 0, false}, {good, 1, -1, false}, {good, 1, 2026000, false}, {good, 1, 2026201, false},
        {good, 1, 9999999, false}, {good, 1, 1990001, false}, {good, 1, 2028001, false}, {good, 1, 2147483647, false},
    };
    // clang-format on
    for (const Ticket& t : tickets)
        EXPECT_EQ(ticketFault(t.reds, t.blue, t.issue).isEmpty(), t.ok) << t.issue;

    EXPECT_TRUE(drawFault(good, 1, 2003001, QDate(2003, 2, 23)).isEmpty());
    EXPECT_TRUE(drawFault(good, 1, 2026100, QDate(2026, 11, 26)).isEmpty());
    for (const QDate& d :
         {QDate(2003, 2, 22), QDate(2026, 11, 27), QDate(1, 1, 1), QDate(9999, 12, 31), QDate()})
        EXPECT_FALSE(drawFault(good, 1, d.year() * 1000 + 1, d).isEmpty()) << d.toString().toStdString();
    EXPECT_FALSE(drawFault(good, 1, 2025001, QDate(2026, 1, 4)).isEmpty());  // not the issue's year

    // clang-format off
    const struct { int id; long long value; bool ok; } values[] = {
        {1, 2, true}, {1, 3, false}, {116, 2, true}, {1060, 1, true}, {1060, -1, false}, {1060, 2, false},
        {3900, 0, true}, {3900, 5, true}, {3900, 2, false}, {3900, 99, false}, {3901, 7, true}, {3901, 8, false},
        {3902, 20, true}, {3902, 50, false}, {3902, 2147483647, false}, {5057, 2, true}, {39, 1, true},
        {999999, 0, false},
    };
    // clang-format on
    for (const auto& v : values) EXPECT_EQ(conditionValueFits(v.id, v.value), v.ok) << v.id << '=' << v.value;

    RefusedRecords refused;
    for (int line : {2, 3, 5, 8, 13, 21}) refused.add(line);
    EXPECT_EQ(refused.text(), QStringLiteral("已拒绝 6 行：第 2、3、5、8、13 行 …"));
    Clock::useSystemClock();
}

TEST(DrawReaders, NumbersAreReadWholeAndNoRecordBorrowsFromTheNext) {
    Clock::setToday(QDate(2026, 11, 26));
    const QByteArray head = "双色球 336\n";
    // clang-format off
    struct Case { const char* what; QByteArray body; QList<IssueNumber> kept; int refused; };
    const Case cases[] = {
        {"red 99 and blue 18 are not folded", head + "2003001 2003/02/23 99 11 12 13 26 28 11\n2003002 2003/02/27 01 02 03 04 05 06 18\n", {}, 2},
        {"a short line does not take the next one's digits", head + "2003001 2003/02/23 10 11 12 13 26 11\n2003002 2003/02/27 01 02 03 04 05 06 07\n", {2003002}, 1},
        {"a bad date is counted", head + "2003001 2003/02/31 10 11 12 13 26 28 11\n", {}, 1},
        {"before the first draw", head + "2003001 2003/01/23 10 11 12 13 26 28 11\n", {}, 1},
        {"after today", R"j({"result":[{"code":"2026199","date":"2026-12-31(四)","red":"01,02,03,04,05,06","blue":"07"}]})j", {}, 1},
        {"a code beyond 32 bits", R"j({"result":[{"code":"4296993393","date":"2026-08-20(四)","red":"01,02,03,04,05,06","blue":"07"}]})j", {}, 1},
        {"a blue with a fraction", R"j({"result":[{"code":"2026097","date":"2026-08-20(四)","red":"01,02,03,04,05,06","blue":16.9}]})j", {}, 1},
    };
    // clang-format on
    for (const Case& c : cases) {
        const SourceDraws got = read_DrawSource(c.body, "text/plain", 2003001, 2003005);
        QList<IssueNumber> kept;
        for (const DrawRecord& d : got.draws) kept << d.issue;
        EXPECT_EQ(kept, c.kept) << c.what;
        EXPECT_EQ(got.refused.count(), c.refused) << c.what;
    }
    Clock::useSystemClock();
}

// Scripts against a fresh store file of their own.
class RefusalScriptTest : public DovrexTest {
  protected:
    RefusalScriptTest() { makeFreshStoreFile(store_); }
    QStringList run(const QString& lines, int code = 0) {
        return runHeadless(QStringLiteral("open-store %1\ntoday 2026/11/26\n").arg(store_) + lines, code);
    }
    const QString store_ = tempPath(QStringLiteral("store.dat"));
};

// Each command reaches the record checks (their cases are in RecordChecks); the numbers of a script
// are read whole.
TEST_F(RefusalScriptTest, CommandsRefuseValuesAndIssuesThatCannotBe) {
    // clang-format off
    const struct { const char* script; const char* expected; int code; } cases[] = {
        {"condition 2147483647 3902", "FAILED 过滤条件 3902 不能取值 2147483647", 1},
        {"init 9999999", "WARNING 期号 9999999 不存在", 0},
        {"check 2147483647", "FAILED 期号 2147483647 不存在", 1},
        {"draw-add 2026001 0001/01/01 1 2 3 4 5 6 7", "FAILED", 1},
        // A refused answer of the import dialog cancels it instead of coming back for ever.
        {"answer-fromfile 0 123\nimport /nonexistent", "FROMFILE layout=0 issue=123 -> refused", 0},
        {"answer-fromfile 0 2026000\nimport /nonexistent", "imported 0", 0},
    };
    // clang-format on
    for (const auto& c : cases) {
        const QStringList out = run(QString::fromUtf8(c.script) + u'\n', c.code);
        EXPECT_FALSE(out.filter(QString::fromUtf8(c.expected)).isEmpty()) << c.script << '\n'
                                                                          << out.join(u'\n').toStdString();
    }
    const QStringList stored =
        run(QStringLiteral("sql select count(*) from 历史记录 where 期号 in (9999999, 2026001)\n"));
    EXPECT_EQ(stored.last(), QStringLiteral("0"));
}

TEST_F(RefusalScriptTest, TicketImportReadsChecksAndCountsBeforeItAsks) {
    const QString mixed = tempFile(QStringLiteral("mixed.txt"),
                                   "2026100 01 02 03 04 05 06 + 07\n"
                                   "2026100 01 01 01 01 01 01 + 01\n"
                                   "2026000 01 02 03 04 05 06 + 07\n\n"
                                   "9999999 01 02 03 04 05 06 + 07\n"
                                   "1990001 01 02 03 04 05 06 + 07\n"
                                   "2026101 33 32 31 30 29 28 + 16\n");
    const QString none =
        tempFile(QStringLiteral("none.txt"), "2026100 01 01 02 03 04 05 + 07\nnot a ticket\n");
    const QStringList out =
        run(QStringLiteral("sql INSERT INTO 日志表 (序号, 期号, 红球1, 红球2, 红球3, 红球4, 红球5, 红球6, "
                           "蓝球) VALUES (1, 2026001, 1, 2, 3, 4, 5, 6, 7)\n"
                           "answer-fromfile 1\nanswer no\nimport %1\n"
                           "answer-fromfile 1\nimport %2\nsql select count(*) from 日志表\n")
                .arg(mixed, none));
    EXPECT_TRUE(out.contains(QStringLiteral("WARNING 已拒绝 4 行：第 2、3、5、6 行")))
        << out.join(u'\n').toStdString();
    EXPECT_TRUE(out.contains(QStringLiteral("imported 2")));
    // The file with no ticket changes nothing and asks nothing; the first one's "no" emptied the table.
    EXPECT_TRUE(out.contains(QStringLiteral("WARNING 已拒绝 2 行：第 1、2 行")));
    EXPECT_TRUE(out.contains(QStringLiteral("imported 0")));
    EXPECT_EQ(out.filter(QStringLiteral("CONFIRM")).size(), 1);
    EXPECT_EQ(out.last(), QStringLiteral("2"));

    QByteArray many;
    for (int k = 0; k <= kTicketLimit; ++k) many += "01 02 03 04 05 06 + 07\n";
    const QStringList over =
        run(QStringLiteral("answer-fromfile 0 2026100\nimport %1\nsql select count(*) from 日志表\n")
                .arg(tempFile(QStringLiteral("many.txt"), many)));
    EXPECT_TRUE(over.contains(QStringLiteral("imported 0")));
    EXPECT_EQ(over.last(), QStringLiteral("2"));  // the tickets of the first file stay
}

class ConditionKeysTest : public FreshStoreTest {};

TEST_F(ConditionKeysTest, RowsAreMatchedByKeyAndAFileThatDoesNotMatchIsRefusedWhole) {
    const QString good = tempPath(QStringLiteral("good.dovrex"));
    makeFreshStoreFile(good);
    Store::open(good)->execute(
        QStringLiteral("UPDATE 过滤条件 SET VALUE=1 WHERE ID IN (2, 3, 4, 5, 6, 7, 102)"));
    // clang-format off
    const struct { const char* change; bool taken; } cases[] = {
        {"DELETE FROM 过滤条件 WHERE ID=1", false},
        {"INSERT INTO 过滤条件 (ID, VALUE) VALUES (777777, 0)", false},
        {"UPDATE 过滤条件 SET ID=ID+100000 WHERE ID=1", false},
        {"DELETE FROM 过滤条件使用情况 WHERE 条件=1", false},
        {"DELETE FROM 号码特性 WHERE 号码=33", false},
        // Rows in another order land on their own IDs; a row of a later version may be missing.
        {"CREATE TABLE x AS SELECT * FROM 过滤条件 ORDER BY ID DESC; DELETE FROM 过滤条件; "
         "INSERT INTO 过滤条件 SELECT * FROM x; DROP TABLE x", true},
        {"DELETE FROM 过滤条件 WHERE ID=3902", true},
        {"UPDATE 历史数据过滤 SET 最大值=2099001", true},
    };
    // clang-format on
    for (const auto& c : cases) {
        const QString path = tempPath(QStringLiteral("case.dovrex"));
        QFile::remove(path);
        QFile::copy(good, path);
        alterStoreFile(path, QString::fromUtf8(c.change));
        db().execute(QStringLiteral("UPDATE 过滤条件 SET VALUE=0 WHERE ID<200"));
        EXPECT_EQ(importConditionSet(path), c.taken) << c.change;
        // Picks 2..7 and blue 2 come back at their own IDs, or nothing comes in.
        EXPECT_EQ(intScalar(QStringLiteral("select total(ID) from 过滤条件 where VALUE=1 and ID<200")),
                  c.taken ? 129 : 0)
            << c.change;
    }
}

class StoreSoundnessTest : public ProgramFolderTest {};

TEST_F(StoreSoundnessTest, AStoreWholeButWrongIsADamagedPackAndNeverReplacesAGoodFile) {
    // clang-format off
    const char* const wrong[] = {
        "DROP TABLE 历史记录", "DROP TABLE BallColor", "DELETE FROM BallColor WHERE 号码>30",
        "ALTER TABLE 过滤条件 DROP COLUMN VALUE",
        "CREATE TRIGGER t BEFORE INSERT ON 日志表 BEGIN SELECT RAISE(ABORT, 'no'); END",
        "CREATE UNIQUE INDEX u ON 日志表(蓝球)",
    };
    // clang-format on
    EXPECT_TRUE(storeFileIsSound(seedStore()));
    QDir().mkpath(paths().bakDir());
    QFile::copy(paths().dataPack(), paths().bakPack());
    const QByteArray bak = fileBytes(paths().bakPack());
    for (const char* change : wrong) {
        const QString file = tempPath(QStringLiteral("wrong.dat"));
        QFile::remove(file);
        QFile::copy(seedStore(), file);
        alterStoreFile(file, QString::fromUtf8(change));
        EXPECT_FALSE(storeFileIsSound(file)) << change;
        makePack(file, paths().dataPack());
        const QByteArray pack = fileBytes(paths().dataPack());
        for (bool useBak : {false, true}) {
            AppFlow flow(paths());
            flow.setStoreSizeLimit(1000);  // the size guard would install the start's store
            ui().answerConfirm(useBak);
            EXPECT_EQ(flow.start(), useBak ? StartOutcome::Ready : StartOutcome::DataPackUnreadable)
                << change;
            EXPECT_EQ(fileBytes(paths().bakPack()), bak) << change;
            if (!useBak) EXPECT_EQ(fileBytes(paths().dataPack()), pack) << change;
        }
    }
}

TEST_F(StoreSoundnessTest, AFailedCommitRaisesAndTheStoreIsNotPackedUntilAWriteSucceeds) {
    AppFlow flow(paths());
    ASSERT_EQ(flow.start(), StartOutcome::Ready);
    flow.setCheckpointInterval(0);
    Store& s = store();
    // A deferred key check fails at COMMIT, as a write of the working copy may.
    s.execute(QStringLiteral("PRAGMA foreign_keys=ON"));
    s.execute(QStringLiteral("CREATE TABLE p (id INTEGER PRIMARY KEY)"));
    s.execute(QStringLiteral("CREATE TABLE c (x REFERENCES p(id) DEFERRABLE INITIALLY DEFERRED)"));
    ASSERT_EQ(flow.save(), SaveOutcome::Saved);
    const QByteArray pack = fileBytes(paths().dataPack());
    EXPECT_THROW(
        {
            Transaction tx(s);
            s.execute(QStringLiteral("INSERT INTO c VALUES (5)"));
        },
        StoreWriteError);
    EXPECT_TRUE(s.writeFailed());
    EXPECT_EQ(flow.checkpoint(), SaveOutcome::Unchanged);
    EXPECT_EQ(flow.save(), SaveOutcome::LastWriteFailed);
    EXPECT_EQ(fileBytes(paths().dataPack()), pack);
    EXPECT_EQ(saveMessage(SaveOutcome::LastWriteFailed), msg::kWriteFailed);
    {
        Transaction tx(s);
        s.execute(QStringLiteral("INSERT INTO p VALUES (5)"));
    }
    EXPECT_FALSE(s.writeFailed());
    EXPECT_EQ(flow.save(), SaveOutcome::Saved);
}

}  // namespace
}  // namespace dovrex::test
