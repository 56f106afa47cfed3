// The prize check against a draw the player chooses; where exports go and imports start.
#include <QDir>

#include "core/pipeline_fixture.h"
#include "results/prize_check.h"
#include "results/ticket_export.h"

namespace dovrex::test {
namespace {

constexpr IssueNumber kFresh = 2008119;  // bought for the next draw, not drawn yet

class CheckAndFilesTest : public PipelineTest {
  protected:
    void SetUp() override {
        shared().paths = paths();
        addDraw(2008117, QStringLiteral("2008/10/09"), makeReds(1, 2, 3, 10, 11, 12), 1);
        addDraw(2008118, QStringLiteral("2008/10/12"), makeReds(1, 2, 3, 4, 5, 6), 2);
        addTicket(kFresh, makeReds(1, 2, 3, 4, 5, 6), 1);
        store_Execute(QStringLiteral("UPDATE 日志表 SET 红球中=-1, 蓝球中=-1"));
        load_TouZhuBiao(kFresh);
    }
    // Where the last file dialog started.
    QString fileStart() {
        const QStringList files = ui().linesStartingWith(QStringLiteral("FILE "));
        return files.isEmpty() ? QString()
                               : files.last().section(QStringLiteral(" in "), 1).section(u' ', 0, 0);
    }
};

TEST_F(CheckAndFilesTest, FreshTicketsAreCheckedAgainstTheChosenDrawAndKeepTheirIssue) {
    EXPECT_EQ(prize_DrawChoice(2008117).current, 1);  // newest first, the tickets' own draw proposed
    store_Execute(QStringLiteral("INSERT INTO 奖级奖金 VALUES (2008118, 2, 97, 201346)"));
    // A cancel, another draw, the proposal (for undrawn tickets the newest draw).
    const std::pair<const char*, const char*> cases[] = {
        {"", "-1+-1"}, {"2008117 期  2008/10/09", "3+1"}, {nullptr, "6+0"}};
    for (const auto& [answer, hits] : cases) {
        if (answer) ui().answerText(QString::fromUtf8(answer));
        cmmTouZhu_Click(kCmdPrizeCheck);
        EXPECT_EQ(scalar(QStringLiteral("select 红球中 || '+' || 蓝球中 || 期号 from 日志表")).toString(),
                  QString::fromUtf8(hits) + QString::number(kFresh));
    }
    // The report names the draw; the money is at that draw's prizes.
    EXPECT_TRUE(shared().operationLog.startsWith(
        msg::kCheckReportHead +
        QStringLiteral("\r\n\r\n第 ２００８１１８ 期开奖：０１ ０２ ０３ ０４ ０５ ０６ + ０２")));
    EXPECT_EQ(prize_MoneyOfChecked(kFresh, 2008118).total, 201346);
}

// The documents folder first, the last export's folder after (not one that failed); import starts there.
TEST_F(CheckAndFilesTest, ExportAsksWhereAndImportStartsThere) {
    const QString docs = tempPath(QStringLiteral("docs")), mine = tempPath(QStringLiteral("mine"));
    ASSERT_TRUE(QDir().mkpath(docs) && QDir().mkpath(mine));
    shared().paths.documentsDir = docs;
    struct Case {
        QString answer, proposedIn;  // no answer takes the proposal
        int result;
    } const cases[] = {{QString(), docs, 1},
                       {mine + QStringLiteral("/week.txt"), docs, 1},
                       {tempPath(QStringLiteral("gone/x.txt")), mine, -1},
                       {QString(), mine, 1}};
    for (const Case& c : cases) {
        if (!c.answer.isEmpty()) ui().answerFile(c.answer);
        EXPECT_EQ(export_HaoMa(kFresh), c.result) << c.answer.toStdString();
        EXPECT_EQ(QFileInfo(fileStart()).absolutePath(), c.proposedIn);
        const QString path = c.answer.isEmpty() ? fileStart() : c.answer;
        EXPECT_EQ(QFileInfo::exists(path), c.result > 0);
        EXPECT_TRUE(shared().operationLog.endsWith(c.result > 0 ? msg::exportLogged(path)
                                                                : msg::exportNotWritten(path)));
    }
    ui().answerFile(QString());
    cmmTouZhu_Click(kCmdImport);
    EXPECT_EQ(fileStart(), mine);
}

}  // namespace
}  // namespace dovrex::test
