// The window-less screen of the tests and the headless runner.
#include "support/test_support.h"

namespace dovrex::test {
namespace {

TEST_F(DovrexTest, ScriptedScreenAnswersRecordsAndStops) {
    ScriptedScreen& s = ui();
    EXPECT_EQ(&screen(), &s);
    // Empty queues: what Enter gives.
    EXPECT_TRUE(s.ui_Confirm(QStringLiteral("继续？")));
    EXPECT_EQ(s.ui_AskText(QStringLiteral("请输入期号："), QStringLiteral("期号"), QStringLiteral("2026001")),
              QStringLiteral("2026001"));
    EXPECT_TRUE(s.ui_PickFile(QStringLiteral("文本文件 (*.txt)"), true).isEmpty());
    s.defaultConfirm = false;
    EXPECT_FALSE(s.ui_Confirm(QStringLiteral("再来？")));
    // Queued answers in order, then the default again.
    s.answerText(QString());
    s.answerText(QStringLiteral("b"));
    EXPECT_TRUE(s.ui_AskText(QStringLiteral("p"), QStringLiteral("t"), QStringLiteral("d")).isEmpty());
    EXPECT_EQ(s.ui_AskText(QStringLiteral("p"), QStringLiteral("t"), QStringLiteral("d")),
              QStringLiteral("b"));
    EXPECT_EQ(s.ui_AskText(QStringLiteral("p"), QStringLiteral("t"), QStringLiteral("d")),
              QStringLiteral("d"));

    s.ui_Message(QStringLiteral("一\n二"), MessageKind::Warning);
    s.ui_TimedTip(QStringLiteral("三 四"), 5);
    EXPECT_EQ(s.messages(), (QStringList{QStringLiteral("一\\n二"), QStringLiteral("三 四")}));
    s.ui_Status(2, QStringLiteral("x"));
    EXPECT_EQ(s.lastStatus(2), QStringLiteral("x"));
    EXPECT_EQ(s.lines().first(), QStringLiteral("CONFIRM 继续？ -> yes"));
    EXPECT_EQ(s.lines()[2], QStringLiteral("FILE save 文本文件 (*.txt) -> "));

    // Progress: the ends and the turns are kept, the steps between them are not.
    for (int v = 0; v <= 100; ++v) s.ui_Progress(0, 100, v, true);
    s.ui_Progress(0, 100, 100, false);
    EXPECT_EQ(
        s.linesStartingWith(QStringLiteral("PROGRESS")),
        (QStringList{QStringLiteral("PROGRESS 0..100 0 shown"), QStringLiteral("PROGRESS 0..100 100 shown"),
                     QStringLiteral("PROGRESS 0..100 100 hidden")}));

    s.stopAfterPumps(3);
    s.ui_Pump();
    s.ui_Pump();
    EXPECT_EQ(shared().tingZhi, 0);
    s.ui_Pump();
    EXPECT_EQ(shared().tingZhi, 1);
    s.ui_Pump();
    EXPECT_EQ(s.pumpCount(), 4);
}

}  // namespace
}  // namespace dovrex::test
