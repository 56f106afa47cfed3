#include <gtest/gtest.h>

#include <sys/stat.h>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "filters/condition_files.h"
#include "pipeline/shrink.h"
#include "screen/chosen_file.h"
#include "store/factory_data.h"
#include "support/test_support.h"
#include "users/users.h"

namespace dovrex::test {
namespace {

// A fresh store in a program folder that holds the shipped template and guest file.
class ConditionFilesTest : public FreshStoreTest {
  protected:
    void SetUp() override {
        shared().paths = paths();
        QDir().mkpath(paths().programDir);
        QDir().mkpath(paths().tempDir);
        for (const QString& name : {kTemplateFileName, kGuestFileName})
            ASSERT_TRUE(QFile::copy(QStringLiteral(DOVREX_BUILD_DIR "/data/") + name,
                                    paths().programDir + u'/' + name));
    }
    static int value(int id) {
        return intScalar(QStringLiteral("select VALUE from 过滤条件 where ID=?"), {id});
    }
    static int switchOn(int n) {
        return intScalar(QStringLiteral("select 使用情况 from 过滤条件使用情况 where 条件=?"), {n});
    }
    // A recognisable set: some values, a switch, a custom group, the history filter.
    static void makeSet(int v) {
        store_Execute(QStringLiteral("UPDATE 过滤条件 SET VALUE=? WHERE ID IN (1, 1100, 3305, 5079)"), {v});
        store_Execute(QStringLiteral("UPDATE 过滤条件使用情况 SET 使用情况=? WHERE 条件 IN (1, 76)"),
                      {v > 0});
        store_Execute(QStringLiteral("UPDATE 号码特性 SET 自定义组3=? WHERE 号码 IN (7, 8)"), {v > 0});
        store_Execute(QStringLiteral("UPDATE 历史数据过滤 SET 使用状态=?, 匹配值=?"), {v > 0, v > 0 ? 4 : 6});
        // 优化缩水 travels with the shrink type; its time limit is a value beyond the usual rows'.
        set_ShrinkOptimised(v > 0);
        set_ShrinkBudgetSeconds(v > 0 ? 600 : kShrinkBudgetDefault);
    }
    static void expectSet(int v) {
        for (int id : {1, 1100, 3305, 5079}) EXPECT_EQ(value(id), v) << id;
        EXPECT_EQ(switchOn(76), v > 0 ? 1 : 0);
        EXPECT_EQ(intScalar(QStringLiteral("select 自定义组3 from 号码特性 where 号码=8")), v > 0 ? 1 : 0);
        EXPECT_EQ(intScalar(QStringLiteral("select 匹配值 from 历史数据过滤")), v > 0 ? 4 : 6);
        EXPECT_EQ(shrink_Optimised(), v > 0);
        EXPECT_EQ(shrink_BudgetSeconds(), v > 0 ? 600 : kShrinkBudgetDefault);
    }
    QString exportPath() const { return tempPath(QStringLiteral("set.dovrex")); }
    // The exported set 1 with one change, imported over set 0: refused, and the store keeps set 0.
    void expectRefused(const QString& damage, const QString& message = msg::kImportFormatError) {
        makeSet(1);
        ASSERT_TRUE(exportConditionSet(exportPath()));
        alterStoreFile(exportPath(), damage);
        makeSet(0);
        ui().clear();
        EXPECT_FALSE(importConditionSet(exportPath())) << damage.toStdString();
        EXPECT_EQ(ui().messages(), QStringList{message}) << damage.toStdString();
        expectSet(0);
        QFile::remove(exportPath());
    }
};

TEST_F(ConditionFilesTest, ExportThenImportGivesBackTheSetAndNeverWritesTheFile) {
    makeSet(1);
    ASSERT_TRUE(exportConditionSet(exportPath()));
    EXPECT_TRUE(ui().messages().contains(msg::kExportDone));
    // Reading leaves the file as it was, even one in WAL mode.
    alterStoreFile(exportPath(), QStringLiteral("PRAGMA journal_mode=WAL"));
    const QByteArray before = fileBytes(exportPath());
    makeSet(0);
    ASSERT_TRUE(importConditionSet(exportPath()));
    EXPECT_TRUE(ui().messages().contains(msg::kImportDone));
    expectSet(1);
    EXPECT_EQ(fileBytes(exportPath()), before);
    for (const char* tail : {"-wal", "-shm"})
        EXPECT_FALSE(QFileInfo::exists(exportPath() + QLatin1String(tail)));

    // Exporting over an existing file asks; no leaves it as it was.
    makeSet(0);
    ui().answerConfirm(false);
    EXPECT_FALSE(exportConditionSet(exportPath()));
    EXPECT_EQ(fileBytes(exportPath()), before);
}

TEST_F(ConditionFilesTest, ANonConditionFileIsRefusedWithoutHarm) {
    makeSet(1);
    const QString junk = tempPath(QStringLiteral("junk.dovrex"));
    ASSERT_TRUE(writeFile(junk, "01 02 03 04 05 06+07\n"));
    EXPECT_FALSE(importConditionSet(junk));
    EXPECT_TRUE(ui().messages().contains(msg::kImportFormatError));
    expectSet(1);

    // A store without the condition tables is refused the same way.
    const QString other = tempPath(QStringLiteral("other.dovrex"));
    { Store::open(other, true)->execute(QStringLiteral("CREATE TABLE t (x)")); }
    EXPECT_FALSE(importConditionSet(other));
    expectSet(1);

    // A pipe chosen as the file is refused at once, never opened.
    const QString pipe = tempPath(QStringLiteral("pipe.dovrex"));
    ASSERT_EQ(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    ui().clear();
    EXPECT_FALSE(importConditionSet(pipe));
    EXPECT_EQ(ui().messages(), QStringList{msg::kNotARegularFile});
    expectSet(1);

    // A file cut short: whatever it holds before the damage may arrive, nothing crashes.
    ASSERT_TRUE(exportConditionSet(exportPath()));
    QByteArray bytes = fileBytes(exportPath());
    bytes.truncate(bytes.size() / 3);
    ASSERT_TRUE(writeFile(exportPath(), bytes));
    importConditionSet(exportPath());
    EXPECT_EQ(intScalar(QStringLiteral("select count(*) from 过滤条件")), 1293);
}

TEST_F(ConditionFilesTest, AnyValueViewOrComputedColumnOfTheWrongKindRefusesTheWholeFile) {
    // The bad value sits behind the good ones, so a row-by-row copy would have taken those.
    for (const char* bad : {"'abc'", "NULL", "x'01'", "1e308", "2.5", "-1", "100", "4294967297"})
        expectRefused(QStringLiteral("UPDATE 过滤条件 SET VALUE=%1 WHERE ID=5079").arg(QLatin1String(bad)));
    expectRefused(QStringLiteral("UPDATE 过滤条件使用情况 SET 使用情况=2 WHERE 条件=76"));
    expectRefused(QStringLiteral("UPDATE 号码特性 SET 第7位=x'01' WHERE 号码=33"));
    expectRefused(QStringLiteral("UPDATE 历史数据过滤 SET 匹配值=8"));
    expectRefused(QStringLiteral("UPDATE 历史数据过滤 SET 最大值=20081189"));

    // Only plain tables and columns are read: a view that would run for minutes and take gigabytes if it were
    // ever read.
    expectRefused(QStringLiteral(
        "DROP TABLE 过滤条件; CREATE VIEW 过滤条件 AS WITH RECURSIVE n(x) AS (SELECT 1 UNION ALL "
        "SELECT x + 1 FROM n) SELECT x AS ID, 0 AS VALUE FROM n ORDER BY x DESC"));
    // A column computed on reading.
    expectRefused(
        QStringLiteral("DROP TABLE 历史数据过滤; CREATE TABLE 历史数据过滤 (使用状态 INTEGER, "
                       "最小值 INTEGER, 最大值 INTEGER, 匹配值 INTEGER AS (length(zeroblob(100000000))))"));
    expectRefused(QStringLiteral("ALTER TABLE 过滤条件使用情况 RENAME COLUMN 使用情况 TO other"));
}

TEST_F(ConditionFilesTest, PicksOverTheLimitAreRefusedAndABlueBankerStandsAlone) {
    expectRefused(QStringLiteral("UPDATE 过滤条件 SET VALUE=1 WHERE ID<=33 OR ID BETWEEN 101 AND 116"),
                  msg::kImportOverLimit);

    // A banker beside blue drags, as an older file may hold: the banker alone comes in.
    makeSet(1);
    ASSERT_TRUE(exportConditionSet(exportPath()));
    alterStoreFile(exportPath(), QStringLiteral("UPDATE 过滤条件 SET VALUE=1 WHERE ID BETWEEN 101 AND 116; "
                                                "UPDATE 过滤条件 SET VALUE=2 WHERE ID=105"));
    ASSERT_TRUE(importConditionSet(exportPath()));
    EXPECT_EQ(intScalar(QStringLiteral("select count(*) from 过滤条件 where ID>100 and ID<=116 and VALUE>0")),
              1);
    EXPECT_EQ(value(105), 2);
}

TEST_F(ConditionFilesTest, RestoreDefaultsAndUpgrade) {
    makeSet(1);
    ASSERT_TRUE(huanyuan_Click());
    EXPECT_EQ(value(1100), 0);
    EXPECT_EQ(switchOn(76), 0);
    EXPECT_EQ(intScalar(QStringLiteral("select 匹配值 from 历史数据过滤")), 5);
    EXPECT_EQ(intScalar(QStringLiteral("select count(*) from 号码特性 where 第1位<>0 or 自定义组3<>0")), 0);
    EXPECT_TRUE(ui().messages().contains(msg::kDefaultsRestored));

    // A store from before the 和值 range grew: rows 1171..1190 come back everywhere, once.
    store_Execute(QStringLiteral("DELETE FROM 过滤条件 WHERE ID>=1171 AND ID<=1190"));
    alterStoreFile(templatePath(), QStringLiteral("DELETE FROM 过滤条件 WHERE ID>=1171 AND ID<=1190"));
    store_Execute(QStringLiteral("UPDATE 快速设置 SET 范围max=170 WHERE 条件名称='和值'"));
    // A user's file from before the hidden buttons 34..38 had rows: sets travel row by row, so
    // without the upgrade every value behind them would land five rows early.
    const QString user = QStringLiteral("张三");
    makeSet(1);
    ASSERT_TRUE(save_ChengYuanWenJian(user));
    Store::open(userFilePath(user))->execute(QStringLiteral("DELETE FROM 过滤条件 WHERE ID>=34 AND ID<=38"));
    store_Execute(QStringLiteral("DELETE FROM 过滤条件 WHERE ID>=34 AND ID<=38"));
    makeSet(0);
    ASSERT_TRUE(upgrade_TiaoJian());
    ASSERT_TRUE(upgrade_TiaoJian());
    ASSERT_TRUE(load_ChengYuanWenJian(user));
    expectSet(1);
    EXPECT_EQ(intScalar(QStringLiteral("select count(*) from 过滤条件 where ID>=34 and ID<=38")), 5);
    const QString sumRows = QStringLiteral("select count(*) from 过滤条件 where ID>=1171 and ID<=1190");
    EXPECT_EQ(intScalar(sumRows), 20);
    EXPECT_EQ(Store::open(templatePath())->scalar(sumRows).toInt(), 20);
    EXPECT_EQ(intScalar(QStringLiteral("select 范围max from 快速设置 where 条件名称='和值'")), 1183);

    QFile::remove(templatePath());
    EXPECT_FALSE(upgrade_TiaoJian());
    EXPECT_TRUE(ui().messages().contains(msg::kTemplateMissing));
}

class UsersTest : public ConditionFilesTest {
  protected:
    void SetUp() override {
        ConditionFilesTest::SetUp();
        write_UserMode(kMultiUserMode);
        Clock::setToday(QDate(2026, 11, 1));
    }
    // A new user, created at the offer to create it, logged in.
    void newUser(const QString& name, const QString& password = {}) {
        ui().answerConfirm(true);
        ASSERT_EQ(login_Submit(name, password), LoginResult::LoggedIn);
    }
};

TEST_F(UsersTest, TwoUsersKeepSeparateSetsAndTheGuestSavesNothing) {
    newUser(QStringLiteral("alice"), QStringLiteral("Secret"));
    makeSet(1);
    beginUserSwitch();
    newUser(QStringLiteral("bob"));
    // A new user starts from the default values and switches, with the history filter reset.
    for (int id : {1, 1100, 3305, 5079}) EXPECT_EQ(value(id), 0) << id;
    EXPECT_EQ(switchOn(76), 0);
    EXPECT_EQ(intScalar(QStringLiteral("select 匹配值 from 历史数据过滤")), 5);
    store_Execute(QStringLiteral("UPDATE 过滤条件 SET VALUE=1 WHERE ID=1101"));
    beginUserSwitch();

    // Names match without regard to case, passwords with it.
    EXPECT_EQ(login_Submit(QStringLiteral("ALICE"), QStringLiteral("secret")), LoginResult::Refused);
    EXPECT_TRUE(ui().messages().contains(msg::kWrongPassword));
    ASSERT_EQ(login_Submit(QStringLiteral("ALICE"), QStringLiteral("Secret")), LoginResult::LoggedIn);
    EXPECT_EQ(shared().g_CurrentUser, QStringLiteral("alice"));
    expectSet(1);
    beginUserSwitch();
    ASSERT_EQ(login_Submit(QStringLiteral("bob"), QString()), LoginResult::LoggedIn);
    EXPECT_EQ(value(1101), 1);

    // The guest logs in without a password and leaves no file of its own behind.
    const QByteArray guestFile = fileBytes(userFilePath(kGuestUser));
    ASSERT_EQ(login_Submit(kGuestUser, QStringLiteral("anything")), LoginResult::LoggedIn);
    makeSet(1);
    beginUserSwitch();
    EXPECT_EQ(fileBytes(userFilePath(kGuestUser)), guestFile);
}

TEST_F(UsersTest, QuotesAreOrdinaryCharactersAndBadNamesAreRefused) {
    newUser(QStringLiteral("o'brien"), QStringLiteral("pw"));
    EXPECT_EQ(login_Submit(QStringLiteral("o'brien"), QStringLiteral("' or '1'='1")), LoginResult::Refused);
    EXPECT_EQ(login_Submit(QStringLiteral("o'brien"), QStringLiteral("pw")), LoginResult::LoggedIn);

    for (const QString& bad :
         {QStringLiteral("../x"), QStringLiteral("a/b"), QStringLiteral("a\\b"), QStringLiteral("a\tb")})
        EXPECT_EQ(login_Submit(bad, QString()), LoginResult::Refused) << bad.toStdString();
    EXPECT_TRUE(ui().messages().contains(msg::kBadUserName));
    // The name becomes a file name: 32 characters (Chinese ones take three bytes each) keep their
    // file, a 33rd is refused before any row is written.
    const QString longest = QString(kLongestUserName, QChar(u'龙'));
    EXPECT_EQ(login_Submit(longest + u'x', QString()), LoginResult::Refused);
    EXPECT_TRUE(ui().messages().contains(msg::kUserNameTooLong));
    EXPECT_EQ(userNames().size(), 2);  // the guest and o'brien
    newUser(longest);
    EXPECT_TRUE(QFile::exists(userFilePath(longest)));
    EXPECT_EQ(login_Submit(QStringLiteral("  "), QString()), LoginResult::Refused);
    EXPECT_TRUE(ui().messages().contains(msg::kEmptyUserName));

    ui().answerConfirm(false);  // an unknown name, and the offer to create it declined
    EXPECT_EQ(login_Submit(QStringLiteral("nobody"), QString()), LoginResult::Refused);
    EXPECT_FALSE(userNames().contains(QStringLiteral("nobody")));
}

TEST_F(UsersTest, AUserAway30DaysIsPurgedWithTheFileAndTicketsGoAtLogin) {
    newUser(QStringLiteral("carol"));
    newUser(QStringLiteral("dave"));
    ASSERT_TRUE(QFile::exists(userFilePath(QStringLiteral("carol"))));
    store_Execute(QStringLiteral("INSERT INTO 日志表 (序号, 期号) VALUES (1, 2026097)"));

    Clock::setToday(QDate(2026, 11, 30));  // 29 days on: nobody goes
    ASSERT_EQ(login_Submit(QStringLiteral("dave"), QString()), LoginResult::LoggedIn);
    EXPECT_EQ(userNames(), QStringList({QStringLiteral("carol"), QStringLiteral("dave"), kGuestUser}));
    EXPECT_EQ(intScalar(QStringLiteral("select count(*) from 日志表")), 0);

    Clock::setToday(QDate(2026, 12, 1));  // 30 days since carol came: she goes, with her file
    ASSERT_EQ(login_Submit(QStringLiteral("dave"), QString()), LoginResult::LoggedIn);
    EXPECT_EQ(userNames(), QStringList({QStringLiteral("dave"), kGuestUser}));
    EXPECT_FALSE(QFile::exists(userFilePath(QStringLiteral("carol"))));
}

}  // namespace
}  // namespace dovrex::test
