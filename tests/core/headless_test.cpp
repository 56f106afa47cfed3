// Scripts through the headless runner: a program folder opened, changed, left and found again.
#include "app/app_flow.h"
#include "headless/headless_runner.h"
#include "history/draw_list.h"
#include "store/pack.h"
#include "support/draw_list_server.h"
#include "support/headless_script.h"
#include "support/test_support.h"

namespace dovrex::test {
namespace {

class HeadlessTest : public ProgramFolderTest {
  protected:
    QString folder() const {
        return QStringLiteral("open-folder %1 %2\n").arg(paths().programDir, paths().tempDir);
    }
};

TEST_F(HeadlessTest, ThePackFollowsTheWorkAtCheckpoints) {
    // None of these runs exits: each ends as after a crash.
    const QString set = QStringLiteral("sql UPDATE 过滤条件 SET VALUE=%1 WHERE ID=2\n");
    const auto valueAfterStart = [&] {
        return runHeadless(folder() + QStringLiteral("sql select VALUE from 过滤条件 where ID=2\n"))
            .last()
            .toInt();
    };
    // The first change is packed when the command ends, the next only a whole interval later.
    runHeadless(folder() + QStringLiteral("checkpoint every 3600\n") + set.arg(5) + set.arg(6));
    EXPECT_EQ(valueAfterStart(), 5);
    // `checkpoint` packs at once.
    runHeadless(folder() + QStringLiteral("checkpoint every 3600\n") + set.arg(7) + set.arg(8) +
                QStringLiteral("checkpoint\n"));
    EXPECT_EQ(valueAfterStart(), 8);
    // A store that could not start again is never packed: the pack stays as it was.
    const QByteArray saved = fileBytes(paths().dataPack());
    const QStringList out = runHeadless(folder() + QStringLiteral("sql DELETE FROM BallColor\nsave\n"), 1);
    EXPECT_TRUE(out.contains(QStringLiteral("ERROR ") + msg::kPackStoreDamaged));
    EXPECT_EQ(fileBytes(paths().dataPack()), saved);
}

// A failing line stops the script with its reason; the lines after it never run.
TEST_F(HeadlessTest, FailuresStopTheScript) {
    const QString store = QStringLiteral("open-store %1\n").arg(seedStore());
    const std::pair<QString, QString> cases[] = {
        {QStringLiteral("sql select 1\nstatus\n"), QStringLiteral("FAILED no store is open")},
        {store + QStringLiteral("sql select nonsense from nowhere\n"), QStringLiteral("FAILED store error:")},
        {QStringLiteral("frobnicate\n"), QStringLiteral("FAILED unknown command 'frobnicate'")},
        {QStringLiteral("today 2026/02/30\n"), QStringLiteral("FAILED not a date: 2026/02/30")},
        {QStringLiteral("lunar 1900/12/31\n"),
         QStringLiteral("FAILED outside 1901/01/01..2100/12/31: 1900/12/31")},
        {QStringLiteral("bazi 2000/01/01 25:00\n"), QStringLiteral("FAILED not a time: 25:00")},
        {QStringLiteral("almanac 2101\n"), QStringLiteral("FAILED year outside")},
        {QStringLiteral("open-folder %1/nothing-here\n").arg(paths().programDir), QStringLiteral("FAILED")},
    };
    for (const auto& [script, failure] : cases) {
        const QStringList out = runHeadless(script + QStringLiteral("help\n"), 1);
        EXPECT_TRUE(out.last().startsWith(failure)) << out.join(u'\n').toStdString();
    }
    EXPECT_TRUE(runHeadless(QStringLiteral("open-folder %1/nothing-here\n").arg(paths().programDir), 1)
                    .contains(QStringLiteral("ERROR 数据文件无法打开，请重新下载来安装！")));
}

TEST_F(HeadlessTest, BareStoreAnswersAndStop) {
    // An exit stopping the script and saving a folder: HeadlessCloseTest.
    const QStringList out =
        runHeadless(QStringLiteral("open-store %1\nsql UPDATE 用户模式 SET 模式=2\nexit\n").arg(seedStore()));
    EXPECT_TRUE(out.contains(QStringLiteral("changed 1")));
    EXPECT_EQ(shared().screen, &ui());  // the runner gave the screen back
    EXPECT_EQ(Store::open(seedStore())->scalar(QStringLiteral("select 模式 from 用户模式")).toInt(), 2);

    // The queued answers and the stop reach the logic through the screen.
    QStringList lines;
    HeadlessRunner runner([&lines](const QString& line) { lines << line; });
    ASSERT_TRUE(runner.runLine(QStringLiteral("answer text 张三")));
    ASSERT_TRUE(runner.runLine(QStringLiteral("answer no")));
    ASSERT_TRUE(runner.runLine(QStringLiteral("stop-after 2")));
    EXPECT_EQ(screen().ui_AskText(QStringLiteral("用户名："), QStringLiteral("登录"), QString()),
              QStringLiteral("张三"));
    EXPECT_FALSE(screen().ui_Confirm(QStringLiteral("继续？")));
    screen().ui_Pump();
    screen().ui_Pump();  // when the stop comes: ScriptedScreenAnswersRecordsAndStops
    EXPECT_EQ(shared().tingZhi, 1);
    EXPECT_EQ(lines.mid(lines.size() - 3),
              (QStringList{QStringLiteral("ASK 用户名： | 登录 |  -> 张三"),
                           QStringLiteral("CONFIRM 继续？ -> no"), QStringLiteral("STOP after 2 pumps")}));
}

// A close request in the middle of each long pass: the pass stops, the exit sequence runs once it
// has returned, the script ends with status 0, and the pack holds what the pass had done.
struct ClosePass {
    const char* name;
    const char* setup;    // before the close is armed
    const char* command;  // the pass the close lands in
    const char* count;    // a count the pack must hold: above 0, below `whole`
    int whole;
};

class HeadlessCloseTest : public HeadlessTest, public ::testing::WithParamInterface<ClosePass> {};

TEST_P(HeadlessCloseTest, CloseDuringAPassStopsItAndSavesItsWork) {
    const ClosePass& pass = GetParam();
    ensureCoreApplication();
    DrawListServer server;
    ASSERT_TRUE(server.start());
    // The first 300 published draws.
    ASSERT_TRUE(
        unpack(shippedPackPath(), tempPath(QStringLiteral("ref.dat")), tempPath(QStringLiteral("ref.aux"))));
    const QList<DrawRecord> draws = read_DrawRecords(*Store::open(tempPath(QStringLiteral("ref.dat"))));
    server.setPage(QStringLiteral("/list.txt"), format_DrawList(draws.mid(0, 300)));

    const QString script = folder() + QString::fromUtf8(pass.setup) + QStringLiteral("\nclose-after 60\n") +
                           QString::fromUtf8(pass.command)
                               .replace(QStringLiteral("%1"), server.url(QStringLiteral("/list.txt"))) +
                           QStringLiteral("\nsql this line is never reached\n");
    const QStringList out = runHeadless(script);
    EXPECT_EQ(out.filter(QStringLiteral("CLOSE after ")).size(), 1);
    EXPECT_TRUE(out.contains(QStringLiteral("CONFIRM 确认要退出吗？ -> yes")));
    EXPECT_FALSE(out.contains(QStringLiteral("> sql this line is never reached")));

    const QStringList again =
        runHeadless(folder() + QStringLiteral("sql ") + QString::fromUtf8(pass.count) + u'\n');
    const int kept = again.last().toInt();
    EXPECT_TRUE(kept > 0 && kept < pass.whole) << kept;
}

INSTANTIATE_TEST_SUITE_P(Passes, HeadlessCloseTest,
                         ::testing::Values(ClosePass{"filter", "pick 1 1-12 101\ninit 2026001",
                                                     "filter 2026001", "select count(*) from 日志表", 925},
                                           ClosePass{"shrink", "pick 1 1-12 101\ninit 2026001",
                                                     "shrink 6 2026001", "select count(*) from 日志表", 925},
                                           ClosePass{"download", "", "download %1",
                                                     "select count(*) from 历史记录", 300}),
                         [](const auto& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace dovrex::test
