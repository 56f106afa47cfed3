// The first step interrupted from a script: a close in the middle of the expansion leaves
// the tickets that were there before it, row for row, in the pack the next start reads.
#include "support/headless_script.h"
#include "support/test_support.h"

namespace dovrex::test {
namespace {

class InterruptedInitTest : public ProgramFolderTest {
  protected:
    QString folder() const {
        return QStringLiteral("open-folder %1 %2\n").arg(paths().programDir, paths().tempDir);
    }
    // The ticket table as the next start finds it.
    QStringList ticketsInPack() const {
        QStringList out = runHeadless(folder() + QStringLiteral("sql select * from 日志表 order by ID\n"));
        return out.mid(out.indexOf(QStringLiteral("> sql select * from 日志表 order by ID")) + 1);
    }
};

TEST_F(InterruptedInitTest, CloseLeavesTheTableAsItWas) {
    // An earlier set of the same issue, partly marked, and the answer that would delete it.
    runHeadless(folder() + QStringLiteral("pick 1 1-10 101\ninit 2026001\n"
                                          "sql UPDATE 日志表 SET 缩水标记=1, 临时数据=999 WHERE 序号<5\n"
                                          "checkpoint\n"));
    const QStringList before = ticketsInPack();
    ASSERT_EQ(before.size(), 211);  // the heading and C(10,6) rows
    // A close in the middle of the expansion (Stop alone is the first step's own test).
    runHeadless(folder() +
                QStringLiteral("pick 1 1-20 101-102\nanswer yes\nclose-after 300\ninit 2026001\n"));
    EXPECT_EQ(ticketsInPack(), before);
}

}  // namespace
}  // namespace dovrex::test
