// The life of the process around its store: start, exit, crash, and every way a start can stop.
#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <functional>

#include "app/app_flow.h"
#include "app/status_line.h"
#include "store/pack.h"
#include "support/test_support.h"

namespace dovrex::test {
namespace {

// Runs `body` in a child process and returns its exit status (-1 when it did not exit).
int inChild(const std::function<int()>& body) {
    fflush(nullptr);
    const pid_t pid = fork();
    if (pid == 0) {
        int code = 99;
        try {
            code = body();
        } catch (...) {
        }
        _exit(code);
    }
    int status = 0;
    waitpid(pid, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

// A disc that takes no file beyond `bytes`: writes past it fail as they do on a full disc.
void limitFileSize(rlim_t bytes) {
    signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{bytes, bytes};
    setrlimit(RLIMIT_FSIZE, &limit);
}

// Zeroes the first page of a table's tree: the engine's own check finds it, a plain open does not.
void zeroRootPage(const QString& storeFile, const QString& table) {
    qint64 page = 0, size = 0;
    {
        auto s = Store::open(storeFile);
        page = s->scalar(QStringLiteral("select rootpage from sqlite_master where name=?"), {table})
                   .toLongLong();
        size = s->scalar(QStringLiteral("PRAGMA page_size")).toLongLong();
    }
    QFile f(storeFile);
    ASSERT_TRUE(page > 1 && f.open(QIODevice::ReadWrite));
    f.seek((page - 1) * size);
    f.write(QByteArray(size, '\0'));
}

class AppFlowTest : public ProgramFolderTest {
  protected:
    void mark(int value) {
        store_Execute(QStringLiteral("UPDATE 过滤条件 SET VALUE=? WHERE ID=1000"), {value});
    }
    const QString markQuery = QStringLiteral("select VALUE from 过滤条件 where ID=1000");
    int markIn(const QString& storeFile) { return Store::open(storeFile)->scalar(markQuery).toInt(); }
    // Starts, sets the mark, and leaves cleanly.
    void runOnce(int value) {
        AppFlow flow(paths());
        ASSERT_EQ(flow.start(), StartOutcome::Ready);
        mark(value);
        ASSERT_TRUE(flow.saveAndClose());
    }
    int markNow() { return intScalar(markQuery); }
    int markAfterStart() {
        AppFlow flow(paths());
        EXPECT_EQ(flow.start(), StartOutcome::Ready);
        return markNow();
    }
    int markInPack(const QString& packFile) {
        const QString out = tempPath(QStringLiteral("look.dat"));
        EXPECT_TRUE(unpack(packFile, out, out + QStringLiteral(".aux")));
        return markIn(out);
    }
    // A pack whose store opens but fails the engine's check.
    QByteArray damagedPack() {
        const QString file = tempPath(QStringLiteral("damaged.dat"));
        QFile::remove(file);
        QFile::copy(seedStore(), file);
        zeroRootPage(file, QStringLiteral("过滤条件使用情况"));
        makePack(file, tempPath(QStringLiteral("damaged.pack")));
        return fileBytes(tempPath(QStringLiteral("damaged.pack")));
    }
};

TEST_F(AppFlowTest, ChangeSurvivesACleanExit) {
    {
        AppFlow flow(paths());
        ASSERT_EQ(flow.start(true), StartOutcome::Ready);  // a small screen shifts the ball faces
        EXPECT_NE(shared().g_Store, nullptr);
        ASSERT_TRUE(shared().g_HistoryCursor);
        EXPECT_EQ(flow.redFaces().size(), 33);
        EXPECT_EQ(flow.blueFaces().size(), 16);
        EXPECT_EQ(flow.redFaces()[0].basic, 5);
        mark(5);
        EXPECT_TRUE(flow.saveAndClose());
        EXPECT_EQ(shared().g_Store, nullptr);
        EXPECT_FALSE(shared().g_HistoryCursor);
    }
    // The previous pack became Bak; no file is left half way.
    EXPECT_EQ(markInPack(paths().bakPack()), 0);
    EXPECT_EQ(markInPack(paths().dataPack()), 5);
    EXPECT_EQ(QDir(paths().programDir).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden),
              (QStringList{QStringLiteral("Bak"), kDataFileName, QStringLiteral("dovrex.lock")}));
    EXPECT_EQ(QDir(paths().bakDir()).entryList(QDir::Files | QDir::Hidden), QStringList{kDataFileName});
    // A run that changed nothing leaves both generations as they are.
    const QByteArray bak = fileBytes(paths().bakPack()), pack = fileBytes(paths().dataPack());
    {
        AppFlow flow(paths());
        ASSERT_EQ(flow.start(), StartOutcome::Ready);
        ASSERT_TRUE(flow.saveAndClose());
        EXPECT_EQ(flow.lastSave(), SaveOutcome::Unchanged);
    }
    EXPECT_EQ(fileBytes(paths().bakPack()), bak);
    EXPECT_EQ(fileBytes(paths().dataPack()), pack);
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

TEST_F(AppFlowTest, UnreadablePackStopsTheStartAndTouchesNothing) {
    // What a crashed run left in the temporary folder.
    QFile::copy(seedStore(), paths().workStore());
    const QByteArray work = fileBytes(paths().workStore()), pack = fileBytes(paths().dataPack());
    const QList<QByteArray> bad{pack.left(pack.size() / 2),
                                QByteArray("\x10\0\0\0\x10\0\0\0not a store at all", 26), damagedPack()};
    for (const QByteArray& bytes : bad) {
        writeFile(paths().dataPack(), bytes);
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
    EXPECT_EQ(startMessage(StartOutcome::BallColorShort), QStringLiteral("程序初始化出错,即将退出。。。"));
    EXPECT_TRUE(ui().linesStartingWith(QStringLiteral("CONFIRM")).isEmpty());  // no Bak to offer
    EXPECT_EQ(QDir(paths().tempDir).entryList(QDir::Files), (QStringList{kDataFileName}));
}

TEST_F(AppFlowTest, SoundBakIsOfferedWhenThePackIsDamaged) {
    runOnce(7);
    runOnce(8);  // Bak holds 7
    const QByteArray bak = fileBytes(paths().bakPack()), damaged = damagedPack();
    writeFile(paths().dataPack(), damaged);
    const QByteArray work = fileBytes(paths().workStore());
    {
        ui().answerConfirm(false);
        AppFlow flow(paths());
        EXPECT_EQ(flow.start(), StartOutcome::DataPackUnreadable);
        EXPECT_EQ(fileBytes(paths().dataPack()), damaged);
        EXPECT_EQ(fileBytes(paths().workStore()), work);
    }
    {
        ui().answerConfirm(true);
        AppFlow flow(paths());
        ASSERT_EQ(flow.start(), StartOutcome::Ready);
        EXPECT_EQ(markNow(), 7);
        // The good pack takes the damaged one's place at once, and the damaged one never becomes Bak.
        EXPECT_EQ(fileBytes(paths().dataPack()), bak);
        mark(9);
        ASSERT_TRUE(flow.saveAndClose());
    }
    EXPECT_EQ(fileBytes(paths().bakPack()), bak);
    EXPECT_EQ(ui().linesStartingWith(QStringLiteral("CONFIRM")).size(), 2);
    EXPECT_TRUE(
        ui().linesStartingWith(QStringLiteral("CONFIRM"))[0].contains(QStringLiteral("Bak/dovrex.dat")));
    // With Bak damaged too there is nothing to offer.
    writeFile(paths().dataPack(), damaged);
    writeFile(paths().bakPack(), damaged);
    AppFlow flow(paths());
    EXPECT_EQ(flow.start(), StartOutcome::DataPackUnreadable);
    EXPECT_EQ(ui().linesStartingWith(QStringLiteral("CONFIRM")).size(), 2);
}

TEST_F(AppFlowTest, DamagedWorkStoreIsNeverPackedOverAGoodPack) {
    runOnce(7);
    const QByteArray pack = fileBytes(paths().dataPack()), bak = fileBytes(paths().bakPack());
    AppFlow flow(paths());
    ASSERT_EQ(flow.start(), StartOutcome::Ready);
    mark(8);
    flow.setCheckpointInterval(0);
    zeroRootPage(paths().workStore(), QStringLiteral("过滤条件使用情况"));
    EXPECT_EQ(flow.checkpoint(), SaveOutcome::StoreDamaged);
    EXPECT_FALSE(flow.saveAndClose());
    EXPECT_EQ(flow.lastSave(), SaveOutcome::StoreDamaged);
    EXPECT_EQ(saveMessage(SaveOutcome::StoreDamaged), msg::kPackStoreDamaged);
    EXPECT_EQ(fileBytes(paths().dataPack()), pack);
    EXPECT_EQ(fileBytes(paths().bakPack()), bak);
}

TEST_F(AppFlowTest, CheckpointKeepsTheWorkOfACrashedRun) {
    {
        AppFlow flow(paths());
        ASSERT_EQ(flow.start(), StartOutcome::Ready);
        flow.setCheckpointInterval(0);
        const QByteArray pack = fileBytes(paths().dataPack());
        EXPECT_EQ(flow.checkpoint(), SaveOutcome::Unchanged);
        EXPECT_EQ(fileBytes(paths().dataPack()), pack);
        {
            Transaction open(store());
            mark(3);
            EXPECT_EQ(flow.checkpoint(), SaveOutcome::Busy);  // half way through a pass
        }
        EXPECT_EQ(flow.checkpoint(), SaveOutcome::Saved);
        EXPECT_EQ(markInPack(paths().dataPack()), 3);
        // At most once per interval.
        flow.setCheckpointInterval(3600 * 1000);
        mark(4);
        EXPECT_EQ(flow.checkpoint(), SaveOutcome::Unchanged);
        // A table made or dropped is a change too.
        flow.setCheckpointInterval(0);
        EXPECT_EQ(flow.checkpoint(), SaveOutcome::Saved);
        store_Execute(QStringLiteral("CREATE TABLE 临时表 (a INTEGER)"));
        EXPECT_EQ(flow.checkpoint(), SaveOutcome::Saved);
        mark(5);
    }  // the process dies here
    AppFlow flow(paths());
    ASSERT_EQ(flow.start(), StartOutcome::Ready);
    EXPECT_EQ(markNow(), 4);
    EXPECT_TRUE(store().tableExists(QStringLiteral("临时表")));
}

TEST_F(AppFlowTest, SecondInstanceIsRefusedBeforeUnpacking) {
    auto first = std::make_unique<AppFlow>(paths());
    ASSERT_EQ(first->start(), StartOutcome::Ready);
    mark(9);
    const QByteArray work = fileBytes(paths().workStore());
    for (const QString& temp : {paths().tempDir, tempPath(QStringLiteral("another user's temp"))}) {
        AppPaths other = paths();
        other.tempDir = temp;
        AppFlow second(other);
        EXPECT_EQ(second.start(), StartOutcome::AlreadyRunning);
        EXPECT_EQ(startMessage(StartOutcome::AlreadyRunning),
                  QStringLiteral("程序正在运行,不允许同时打开多个!!!"));
    }
    EXPECT_EQ(fileBytes(paths().workStore()), work);
    EXPECT_EQ(markNow(), 9);
    // The first one leaves; now a start succeeds.
    ASSERT_TRUE(first->saveAndClose());
    first.reset();
    EXPECT_EQ(markAfterStart(), 9);
    // A lock file that a dead process left behind, whatever it holds (a kill can leave it empty),
    // does not block.
    for (const QByteArray& left : {QByteArray("2147483646\ndovrex_core_tests\n\n"), QByteArray()}) {
        ASSERT_TRUE(writeFile(paths().lockFile(), left));
        EXPECT_EQ(markAfterStart(), 9);
    }
}

TEST_F(AppFlowTest, WorkingCopyFolderFollowsTheProgramFolder) {
    const QString a = tempPath(QStringLiteral("a")), b = tempPath(QStringLiteral("b"));
    ASSERT_TRUE(QDir().mkpath(a) && QDir().mkpath(b));
    QFile::link(a, tempPath(QStringLiteral("link to a")));
    EXPECT_NE(AppPaths::tempDirFor(a), AppPaths::tempDirFor(b));
    EXPECT_EQ(AppPaths::tempDirFor(a), AppPaths::tempDirFor(tempPath(QStringLiteral("link to a"))));
    EXPECT_EQ(AppPaths::tempDirFor(a), AppPaths::tempDirFor(b + QStringLiteral("/../a")));
    EXPECT_TRUE(AppPaths::tempDirFor(a).startsWith(QDir::tempPath()));
}

TEST_F(AppFlowTest, MissingWorkStoreIsRecoveredFromTheCopyIfThereIsOne) {
    runOnce(3);  // leaves a compaction copy in the temporary folder
    ASSERT_TRUE(QFileInfo::exists(paths().workStoreCopy()));
    // The copy holds what the last start found; make it tell.
    {
        auto s = Store::open(paths().workStoreCopy());
        s->execute(QStringLiteral("UPDATE 过滤条件 SET VALUE=44 WHERE ID=1000"));
    }
    AppFlow flow(paths());
    ASSERT_EQ(flow.acquireInstance(), StartOutcome::Ready);
    ASSERT_EQ(flow.app_Initialize(), StartOutcome::Ready);
    QFile::remove(paths().workStore());
    ASSERT_EQ(flow.openStore(), StartOutcome::Ready);
    EXPECT_EQ(markNow(), 44);
    flow.abandon();
    QFile::remove(paths().workStore());
    QFile::remove(paths().workStoreCopy());
    EXPECT_EQ(flow.openStore(), StartOutcome::WorkingCopiesLost);
    EXPECT_EQ(shared().g_Store, nullptr);
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
        EXPECT_EQ(markNow(), 0);
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

TEST_F(AppFlowTest, FullDiscsKeepTheOldPackAndAreToldAsSuch) {
    const QByteArray pack = fileBytes(paths().dataPack());
    // The temporary folder's disc is full at start.
    EXPECT_EQ(inChild([&] {
                  limitFileSize(4096);
                  return int(AppFlow(paths()).start());
              }),
              int(StartOutcome::TempFolderUnwritable));
    EXPECT_TRUE(startMessage(StartOutcome::TempFolderUnwritable).contains(QStringLiteral("磁盘空间不足")));
    EXPECT_FALSE(QFileInfo::exists(paths().workStore()));
    // The program folder's disc fills after the unpack: neither the size guard nor a pack may
    // leave the folder without its pack.
    EXPECT_EQ(
        inChild([&] {
            AppFlow flow(paths());
            flow.setStoreSizeLimit(1000);
            if (flow.acquireInstance() != StartOutcome::Ready || flow.app_Initialize() != StartOutcome::Ready)
                return 10;
            limitFileSize(4096);
            if (flow.openStore() != StartOutcome::Ready) return 11;
            return int(flow.save());
        }),
        int(SaveOutcome::WriteFailed));
    EXPECT_EQ(fileBytes(paths().dataPack()), pack);
    EXPECT_TRUE(saveMessage(SaveOutcome::WriteFailed).contains(QStringLiteral("磁盘空间不足")));
}

TEST_F(AppFlowTest, ReadOnlyProgramFolderIsToldAsSuch) {
    const auto readable = QFile::ReadOwner | QFile::ExeOwner | QFile::ReadOther | QFile::ExeOther;
    QFile::setPermissions(QFileInfo(paths().programDir).absolutePath(), readable | QFile::WriteOwner);
    QFile::setPermissions(paths().tempDir, readable | QFile::WriteOwner | QFile::WriteOther);
    QFile::setPermissions(paths().dataPack(), QFile::ReadOwner | QFile::ReadOther);
    QFile::setPermissions(paths().programDir, readable);
    const int outcome = inChild([&] {
        // Permissions do not bind the super-user: run as nobody.
        if (geteuid() == 0 && (setgid(65534) != 0 || setuid(65534) != 0)) return 12;
        return int(AppFlow(paths()).start());
    });
    QFile::setPermissions(paths().programDir, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    EXPECT_EQ(outcome, int(StartOutcome::ProgramFolderReadOnly));
    EXPECT_TRUE(startMessage(StartOutcome::ProgramFolderReadOnly).contains(QStringLiteral("只读")));
}

class HistoryStatusTest : public FreshStoreTest {};

TEST_F(HistoryStatusTest, UpToDateStaleEmptyAndADownloadOfferedOnceADay) {
    // An empty history is stale; its next draw date comes from the fallback date.
    Clock::setToday(QDate(2026, 1, 6));
    EXPECT_TRUE(history_Status());
    EXPECT_EQ(ui().lastStatus(1),
              QStringLiteral(" ◆◇◆→  历史记录： 不完整，请下载或手工添加开奖记录  ←◆◇◆  "));
    EXPECT_EQ(ui().lastStatus(3), msg::noDrawStatusText(QDate(2026, 1, 6)));
    // Last draw on Sunday 2026/01/04: the next is Tuesday 2026/01/06.
    addDraw(2026001, QStringLiteral("2026/01/04"), makeReds(1, 2, 3, 4, 5, 6));
    EXPECT_FALSE(history_Status());  // today is the draw day
    EXPECT_EQ(ui().lastStatus(1), QStringLiteral("  ☆☆☆  历史记录： 已更新！  ☆☆☆  "));
    EXPECT_EQ(ui().lastStatus(3), QStringLiteral("  最新：2026001 期 2026/01/04 开奖  │  下期：2026002 期 "
                                                 "2026/01/06 开奖  │  今天：2026/01/06  "));
    Clock::setToday(QDate(2026, 1, 5));
    EXPECT_FALSE(history_Status());
    Clock::setToday(QDate(2026, 1, 7));
    EXPECT_TRUE(history_Status());
    EXPECT_EQ(ui().lastStatus(1), msg::historyMissingText(1));  // the draw of the 6th
    EXPECT_EQ(ui().linesStartingWith(QStringLiteral("STATUS 1")).size(), 4);
    // The last draw of a year (Tuesday 2025/12/30) is followed by the new year's first issue.
    addDraw(2025151, QStringLiteral("2025/12/30"), makeReds(1, 2, 3, 4, 5, 6));
    store_Execute(QStringLiteral("DELETE FROM 历史记录 WHERE 期号=2026001"));
    history_Status();
    EXPECT_TRUE(ui().lastStatus(3).contains(QStringLiteral("下期：2026001 期 2026/01/01 开奖")));
    // A stale history is offered a download at the first start of a day only: a player without a
    // network is not asked again at every start.
    for (const auto& [day, due] :
         {std::pair{QDate(2026, 1, 6), true}, {QDate(2026, 1, 6), false}, {QDate(2026, 1, 7), true}}) {
        Clock::setToday(day);
        EXPECT_EQ(downloadOfferDue(paths()), due) << day.toString().toStdString();
    }
}

}  // namespace
}  // namespace dovrex::test
