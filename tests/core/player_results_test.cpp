// What a player meets around the results: the history filter's range as draws come in, and the
// log's digits after a whole run.
#include "core/pipeline_fixture.h"
#include "filters/condition_editing.h"
#include "filters/history_range.h"
#include "pipeline/distribution_report.h"
#include "pipeline/selection.h"
#include "pipeline/shrink.h"
#include "pipeline/ticket_init.h"
#include "results/prize_check.h"

namespace dovrex::test {
namespace {

constexpr IssueNumber kDrawn = 2008118;

class PlayerResultsTest : public PipelineTest {
  protected:
    void SetUp() override {
        addDraw(2008117, QStringLiteral("2008/10/09"), makeReds(1, 2, 3, 10, 11, 12), 1);
        addDraw(kDrawn, QStringLiteral("2008/10/12"), makeReds(1, 2, 3, 4, 5, 6), 2);
    }
};

TEST_F(PlayerResultsTest, TheHistoryFilterFollowsTheNewestDraw) {
    writeHistoryMatch({true, 2008117, kDrawn, 6});
    addDraw(2008119, QStringLiteral("2008/10/14"), makeReds(7, 8, 9, 10, 11, 12), 3);
    follow_NewestDraw(kDrawn);
    const LiShiGuoLv s = readHistoryMatch();
    EXPECT_EQ(std::pair(s.low, s.high), std::pair(kDrawn, 2008119));  // still two draws, ending at the newest

    // A range that ends before the newest draw is the player's own and stays.
    writeHistoryMatch({true, 2008117, kDrawn, 6});
    addDraw(2008120, QStringLiteral("2008/10/16"), makeReds(7, 8, 9, 10, 11, 13), 3);
    follow_NewestDraw(2008119);
    EXPECT_EQ(readHistoryMatch().high, kDrawn);
}

// Each line of the log after a whole run writes its numbers one way: all full-width or all plain.
TEST_F(PlayerResultsTest, NoLogLineMixesFullWidthAndPlainDigits) {
    pickDrags(10, 1);
    init_TouZhu(kDrawn);
    set_GuoLvTiaoJian(kShrinkTypeId, 5);
    run_SuoShui(5, kDrawn);
    show_HaoMaFenBu(kDrawn);
    run_JingXuan(kDrawn, 5);
    check_KaiJiang(kDrawn);
    static const QRegularExpression plain(QStringLiteral("[0-9]")), wide(QStringLiteral("[０-９]"));
    for (const QString& line : shared().operationLog.split(QStringLiteral("\r\n")))
        EXPECT_FALSE(line.contains(plain) && line.contains(wide)) << line.toStdString();
}

}  // namespace
}  // namespace dovrex::test
