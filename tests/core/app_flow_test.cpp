// The life of the process around its store: start, exit, crash, and every way a start can stop.
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "app/app_flow.h"
#include "store/pack.h"
#include "support/test_support.h"

namespace dovrex::test {
namespace {

class AppFlowTest : public ProgramFolderTest {
  protected:
    void mark(int value) {
        store_Execute(QStringLiteral("UPDATE 过滤条件 SET VALUE=? WHERE ID=1000"), {value});
    }
    int markIn(const QString& storeFile) {
        return Store::open(storeFile)
            ->scalar(QStringLiteral("select VALUE from 过滤条件 where ID=1000"))
            .toInt();
    }
    // Starts, sets the mark, and leaves either cleanly or not at all.
    void runOnce(int value, bool cleanExit) {
        AppFlow flow(paths());
        ASSERT_EQ(flow.start(), StartOutcome::Ready);
        mark(value);
        if (cleanExit) {
            ASSERT_TRUE(flow.saveAndClose());
        }
    }
    int markAfterStart() {
        AppFlow flow(paths());
        EXPECT_EQ(flow.start(), StartOutcome::Ready);
        return intScalar(QStringLiteral("select VALUE from 过滤条件 where ID=1000"));
    }
};

TEST_F(AppFlowTest, ChangeSurvivesACleanExit) {
    {
        AppFlow flow(paths());
        ASSERT_EQ(flow.start(), StartOutcome::Ready);
        EXPECT_NE(shared().g_Store, nullptr);
        ASSERT_TRUE(shared().g_HistoryCursor);
        EXPECT_EQ(flow.redFaces().size(), 33);
        EXPECT_EQ(flow.blueFaces().size(), 16);
        mark(5);
        EXPECT_TRUE(flow.saveAndClose());
        EXPECT_EQ(shared().g_Store, nullptr);
        EXPECT_FALSE(shared().g_HistoryCursor);
    }
    EXPECT_TRUE(QFileInfo::exists(paths().bakPack()));
    EXPECT_EQ(fileBytes(paths().bakPack()), fileBytes(paths().dataPack()));
    EXPECT_EQ(QDir(paths().programDir).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
              (QStringList{QStringLiteral("Bak"), kDataFileName}));
    EXPECT_EQ(markAfterStart(), 5);
}

TEST_F(AppFlowTest, UnloadAsksFirst) {
    AppFlow flow(paths());
    ASSERT_EQ(flow.start(), StartOutcome::Ready);
    mark(6);
    const QByteArray before = fileBytes(paths().dataPack());
    ui().answerConfirm(false);
    bool cancel = false;
    flow.app_Unload(cancel);
    EXPECT_TRUE(cancel);
    EXPECT_NE(shared().g_Store, nullptr);
    EXPECT_EQ(fileBytes(paths().dataPack()), before);
    ui().answerConfirm(true);
    flow.app_Unload(cancel);
    EXPECT_FALSE(cancel);
    EXPECT_EQ(ui().linesStartingWith(QStringLiteral("CONFIRM")),
              (QStringList{QStringLiteral("CONFIRM 确认要退出吗？ -> no"),
                           QStringLiteral("CONFIRM 确认要退出吗？ -> yes")}));
    EXPECT_EQ(markIn(paths().workStore()), 6);
    EXPECT_NE(fileBytes(paths().dataPack()), before);
}

TEST_F(AppFlowTest, CrashLeavesTheLastGoodPack) {
    runOnce(7, true);
    const QByteArray good = fileBytes(paths().dataPack());
    runOnce(8, false);  // no exit: the process died
    EXPECT_EQ(fileBytes(paths().dataPack()), good);
    // The working copy the crash left behind is not used: the pack wins.
    EXPECT_EQ(markIn(paths().workStore()), 8);
    EXPECT_EQ(markAfterStart(), 7);
}

TEST_F(AppFlowTest, LockLeftByADeadProcessDoesNotBlock) {
    QFile lock(paths().lockFile());
    ASSERT_TRUE(lock.open(QIODevice::WriteOnly));
    lock.write("2147483646\ndovrex_core_tests\n\n");  // no such process
    lock.close();
    EXPECT_EQ(markAfterStart(), 0);
}

TEST_F(AppFlowTest, UnreadablePackStopsTheStartAndTouchesNothing) {
    // What a crashed run left in the temporary folder.
    QFile::copy(seedStore(), paths().workStore());
    const QByteArray work = fileBytes(paths().workStore());
    const QByteArray pack = fileBytes(paths().dataPack());
    const QList<QByteArray> bad{pack.left(pack.size() / 2),
                                QByteArray("\x10\0\0\0\x10\0\0\0not a store at all", 26)};
    for (const QByteArray& bytes : bad) {
        QFile f(paths().dataPack());
        ASSERT_TRUE(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
        f.write(bytes);
        f.close();
        AppFlow flow(paths());
        EXPECT_EQ(flow.start(), StartOutcome::DataPackUnreadable);
        EXPECT_EQ(fileBytes(paths().dataPack()), bytes);
        EXPECT_EQ(fileBytes(paths().workStore()), work);
        EXPECT_FALSE(QFileInfo::exists(paths().workAux()));
        EXPECT_EQ(shared().g_Store, nullptr);
    }
    QFile::remove(paths().dataPack());
    AppFlow flow(paths());
    EXPECT_EQ(flow.start(), StartOutcome::DataPackUnreadable);
    EXPECT_EQ(fileBytes(paths().workStore()), work);
    EXPECT_FALSE(QFileInfo::exists(paths().dataPack()));
    EXPECT_EQ(startMessage(StartOutcome::DataPackUnreadable),
              QStringLiteral("数据文件无法打开，请重新下载来安装！"));
}

TEST_F(AppFlowTest, SecondInstanceIsRefusedBeforeUnpacking) {
    auto first = std::make_unique<AppFlow>(paths());
    ASSERT_EQ(first->start(), StartOutcome::Ready);
    mark(9);
    const QByteArray work = fileBytes(paths().workStore());
    {
        AppFlow second(paths());
        EXPECT_EQ(second.start(), StartOutcome::AlreadyRunning);
        EXPECT_EQ(startMessage(StartOutcome::AlreadyRunning),
                  QStringLiteral("程序正在运行,不允许同时打开多个!!!"));
    }
    EXPECT_EQ(fileBytes(paths().workStore()), work);
    EXPECT_EQ(intScalar(QStringLiteral("select VALUE from 过滤条件 where ID=1000")), 9);
    // The first one leaves; now a start succeeds.
    ASSERT_TRUE(first->saveAndClose());
    first.reset();
    EXPECT_EQ(markAfterStart(), 9);
}

TEST_F(AppFlowTest, MissingWorkStoreIsRecoveredFromTheCopy) {
    runOnce(3, true);  // leaves a compaction copy in the temporary folder
    ASSERT_TRUE(QFileInfo::exists(paths().workStoreCopy()));
    // The copy holds what the last start found; make it tell.
    {
        auto s = Store::open(paths().workStoreCopy());
        s->execute(QStringLiteral("UPDATE 过滤条件 SET VALUE=44 WHERE ID=1000"));
    }
    AppFlow flow(paths());
    ASSERT_TRUE(flow.acquireInstance());
    ASSERT_TRUE(flow.app_Initialize());
    QFile::remove(paths().workStore());
    ASSERT_EQ(flow.openStore(), StartOutcome::Ready);
    EXPECT_EQ(intScalar(QStringLiteral("select VALUE from 过滤条件 where ID=1000")), 44);
}

TEST_F(AppFlowTest, BothWorkingCopiesLost) {
    AppFlow flow(paths());
    ASSERT_TRUE(flow.acquireInstance());
    ASSERT_TRUE(flow.app_Initialize());
    QFile::remove(paths().workStore());
    QFile::remove(paths().workStoreCopy());
    EXPECT_EQ(flow.openStore(), StartOutcome::WorkingCopiesLost);
    EXPECT_EQ(shared().g_Store, nullptr);
    EXPECT_FALSE(startMessage(StartOutcome::WorkingCopiesLost).isEmpty());
}

TEST_F(AppFlowTest, ShortBallColorStopsTheStart) {
    {
        auto s = Store::open(seedStore());
        s->execute(QStringLiteral("DELETE FROM BallColor WHERE 号码>32"));
    }
    makePack(seedStore(), paths().dataPack());
    const QByteArray pack = fileBytes(paths().dataPack());
    AppFlow flow(paths());
    EXPECT_EQ(flow.start(), StartOutcome::BallColorShort);
    EXPECT_EQ(startMessage(StartOutcome::BallColorShort), QStringLiteral("程序初始化出错,即将退出。。。"));
    EXPECT_EQ(shared().g_Store, nullptr);
    EXPECT_EQ(fileBytes(paths().dataPack()), pack);  // the store is not saved
}

TEST_F(AppFlowTest, SmallScreenShiftsTheRedFaces) {
    AppFlow flow(paths());
    ASSERT_EQ(flow.start(true), StartOutcome::Ready);
    EXPECT_EQ(flow.redFaces()[0].basic, 5);
    EXPECT_EQ(flow.redFaces()[0].special, 1);
}

TEST_F(AppFlowTest, OversizedStoreIsCopiedOverThePackAndStillStarts) {
    {
        AppFlow flow(paths());
        flow.setStoreSizeLimit(1000);
        ASSERT_EQ(flow.start(), StartOutcome::Ready);
        mark(12);  // not saved: the guard copied the store as it was at start
    }
    // The pack is now a plain store file, the one taken before compaction.
    EXPECT_TRUE(isPlainStoreFile(paths().dataPack()));
    EXPECT_EQ(fileBytes(paths().dataPack()), fileBytes(paths().workStoreCopy()));
    // ... and a start takes it in place of a pack; a clean exit turns it back into a pack.
    {
        AppFlow flow(paths());
        ASSERT_EQ(flow.start(), StartOutcome::Ready);
        EXPECT_EQ(intScalar(QStringLiteral("select VALUE from 过滤条件 where ID=1000")), 0);
        mark(13);
        ASSERT_TRUE(flow.saveAndClose());
    }
    EXPECT_FALSE(isPlainStoreFile(paths().dataPack()));
    EXPECT_EQ(markAfterStart(), 13);
    // Under the limit nothing is copied.
    const QByteArray pack = fileBytes(paths().dataPack());
    EXPECT_EQ(markAfterStart(), 13);
    EXPECT_EQ(fileBytes(paths().dataPack()), pack);
}

class HistoryStatusTest : public FreshStoreTest {};

TEST_F(HistoryStatusTest, UpToDateStaleAndEmpty) {
    // An empty history is stale; its next draw date comes from the fallback date.
    Clock::setToday(QDate(2026, 1, 6));
    EXPECT_TRUE(history_Status());
    EXPECT_EQ(ui().lastStatus(1),
              QStringLiteral(" ◆◇◆→  历史记录： 不完整，请下载或手工添加开奖记录  ←◆◇◆  "));
    EXPECT_TRUE(ui().lastStatus(3).contains(QStringLiteral("※※※  2003001 期 于 7384/")));

    // Last draw on Sunday 2026/01/04: the next is Tuesday 2026/01/06.
    addDraw(2026001, QStringLiteral("2026/01/04"), makeReds(1, 2, 3, 4, 5, 6));
    EXPECT_FALSE(history_Status());  // today is the draw day
    EXPECT_EQ(ui().lastStatus(1), QStringLiteral("  ☆☆☆  历史记录： 已更新！  ☆☆☆  "));
    EXPECT_EQ(ui().lastStatus(3),
              QStringLiteral("     ※※※  2026001 期 于 2026/01/06 开奖     今天是： 2026/01/06  ※※※     "));
    Clock::setToday(QDate(2026, 1, 5));
    EXPECT_FALSE(history_Status());
    Clock::setToday(QDate(2026, 1, 7));
    EXPECT_TRUE(history_Status());
    EXPECT_EQ(ui().lastStatus(1),
              QStringLiteral(" ◆◇◆→  历史记录： 不完整，请下载或手工添加开奖记录  ←◆◇◆  "));
    EXPECT_EQ(ui().linesStartingWith(QStringLiteral("STATUS 1")).size(), 4);
}

}  // namespace
}  // namespace dovrex::test
