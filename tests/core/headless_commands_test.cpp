// Every command of the headless runner once, in one script on a program folder seeded from the
// shipped data: each line succeeds and prints what it is there for. The rules behind the commands
// are held by the tests of their routines; this one holds the commands' own wiring, and a command
// added without a line here fails it.
#include <QSet>

#include "headless/headless_runner.h"
#include "support/test_support.h"

namespace dovrex::test {
namespace {

struct Line {
    const char* command;
    const char* printed;  // a line the command prints, or "" when it only has to succeed
};

// clang-format off
const Line kScript[] = {
    {"help", "stop-after <n>"},
    {"open-store %bare", ""},
    {"sql select count(*) from 历史记录", "0"},
    {"exit", ""},
    {"store-size-limit 1000000000", ""},
    {"open-folder %program %temp", ""},
    {"today 2026/08/21", ""},
    {"checkpoint every 0", ""},
    {"user-mode", "mode 0"},
    {"status", "up to date"},
    {"today 2026/08/24", ""},
    {"draw-add 2026097 2026/08/23 1 2 3 4 5 6 7", "stored 2026097, next 2026098 on 2026/08/25"},
    {"draw-search 期号=2026097", "found 1"},
    {"recalc 2026097 2026097", "PROGRESS 0..2 2 hidden"},
    {"mirrors http://127.0.0.1:9/a http://127.0.0.1:9/b http://127.0.0.1:9/c", "*1 http://127.0.0.1:9/a"},
    {"download", "failed, next mirror 2"},
    {"lookup 2026097", "not found"},
    {"download-file %notices", "updated"},
    {"pick 1 1-7 101-102", ""},
    {"click 8", "REFRESH picks"},
    {"mode red 1", "MESSAGE 现在点击数字按钮可以把相应的数设为红球的“拖码”。"},
    {"clear-picks blue", "REFRESH picks"},
    {"pick 1 101", ""},
    {"picks", "tickets: 28"},
    {"condition 1 1000-1183", ""},
    {"switch 1 on", ""},
    {"history-filter on 2026001 2026096 6", "history filter on 2026001..2026096 match 6"},
    {"tolerance 1", "tolerance 1"},
    {"group-preset 1 奇数号码", "group 1: 1 3 5 7 9 11 13 15 17 19 21 23 25 27 29 31 33"},
    {"init 2026098", "tickets 28"},
    {"filter 2026098", "tickets 28"},
    {"space 0", "space mode 0"},
    {"space-count 2026098", "space 28 kept"},
    {"weights 1", "weights 32 31 30 29 28 27 26 25 24 23 22 21 20 19 18 17 16 15 14 13 12 11 10 9 8 7 6 5 4 3 2 1 0"},
    {"shrink 5 2026098", "kept 1"},
    {"coverage 2026098", "若开奖号码在过滤后的 28 注之中"},
    {"shrink-opt 5 1 2026098", "kept 1"},
    {"select 3 2026098", "tickets 1"},
    {"answer-tofile 0010 淘宝", ""},
    {"export 2026098", "exported 1"},
    {"answer-fromfile 0 2026097", ""},
    {"answer no", ""},
    {"import %program/dovrexDaocu.txt", "imported 1"},
    {"check 2026097", "best 2"},
    {"check 2026097 2026096", "best "},
    {"merge", "left 1"},
    {"command 6", "MESSAGE 删除记录完成！"},
    {"delete 2026097", ""},
    {"jixuan 1 7", ""},
    {"jixuan-export", "CLIPBOARD "},
    {"export-conditions %temp/set.dovrex", ""},
    {"restore-defaults", "MESSAGE 全部过滤条件已还原为默认值！"},
    {"import-conditions %temp/set.dovrex", ""},
    {"backtest 2026095 2026097", "survived 3/3"},
    {"replay 2026096 2026097", "total cost"},
    {"lunar 2026/08/21", "020260709 农历丙午年七月初九 初九 星期五 狮子座"},
    {"almanac 2026", "小寒: 2026-01-05 16:23:03 大寒: 2026-01-20 09:44:50 正月大: 2026-02-17 20:01:03"},
    {"bazi 1990/05/17 08:30", "庚午 辛巳 壬午 甲辰"},
    {"answer text 2026097", ""},
    {"draw-delete", "deleted"},
    {"answer file %temp/none.txt", ""},
    {"stop-after 100000", ""},
    {"user-mode 2", "mode 2"},
    {"answer yes", ""},
    {"login 张三", "logged in as 张三"},
    {"users", "* 张三"},
    {"log", "全部条件过滤完成,余："},
    {"save", ""},
    {"close-after 100000", ""},
    {"exit", "CONFIRM 确认要退出吗？ -> yes"},
};
// clang-format on

TEST_F(DovrexTest, EveryHeadlessCommandRunsOnce) {
    ASSERT_TRUE(AppPaths::seedProgramDir(paths().programDir, QStringLiteral(DOVREX_BUILD_DIR "/data")));
    makeFreshStoreFile(tempPath(QStringLiteral("bare.dat")));
    QStringList printed;
    HeadlessRunner runner([&printed](const QString& line) { printed << line; });
    QSet<QString> ran;
    for (const Line& line : kScript) {
        const QString command =
            QString::fromUtf8(line.command)
                .replace(QStringLiteral("%program"), paths().programDir)
                .replace(QStringLiteral("%temp"), paths().tempDir)
                .replace(QStringLiteral("%bare"), tempPath(QStringLiteral("bare.dat")))
                .replace(QStringLiteral("%notices"),
                         QStringLiteral(DOVREX_SOURCE_DIR "/tests/data/notices_page1.json"));
        printed.clear();
        ran << command.section(u' ', 0, 0);
        EXPECT_TRUE(runner.runLine(command)) << printed.join(u'\n').toStdString();
        const QString wanted = QString::fromUtf8(line.printed);
        if (!wanted.isEmpty())
            EXPECT_TRUE(std::any_of(printed.begin(), printed.end(),
                                    [&](const QString& p) { return p.startsWith(wanted); }))
                << line.command << " printed:\n"
                << printed.join(u'\n').left(2000).toStdString();
    }
    EXPECT_TRUE(runner.finished());
    for (const HeadlessCommand& c : headlessCommands())
        EXPECT_TRUE(ran.contains(QString::fromLatin1(c.name))) << "no line runs " << c.name;
}

}  // namespace
}  // namespace dovrex::test
