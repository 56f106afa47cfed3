// A player's evening, driven through the window: picks, the three steps, 精选号码, the file round
// trip, the check, and a restart that finds the work again. The rules of each step are held by the
// core tests of its routine; this walk holds that each button reaches its step on the grid's
// tickets.

#include <QApplication>
#include <QFileInfo>
#include <QRadioButton>
#include <array>
#include <vector>

#include "app/pipeline_commands.h"
#include "gui/answering_screen.h"
#include "gui/seeded_program.h"
#include "pipeline/pick_state.h"
#include "screen/ticket_options.h"
#include "store/store.h"
#include "ui/conditions/conditions_page.h"
#include "ui/conditions/pick_page.h"
#include "widgets/cursor_model.h"
#include "widgets/pick_button.h"

using namespace dovrex;

namespace {

using Ticket = std::array<int, 7>;  // six reds ascending, then the blue

// Questions answered yes, texts typed from a queue (the proposed text when it runs dry).
class PlayerScreen : public AnsweringScreen {
  public:
    TicketImportOptions importAs;
    // The export dialog is accepted as it opens: numbers, a blank between reds, "+" before the blue.
    bool ui_ToFile(TicketExportOptions&) override { return true; }
    bool ui_FromFile(TicketImportOptions& options) override {
        options = importAs;
        return true;
    }
};

std::vector<Ticket> ticketsOf(int issue) {
    std::vector<Ticket> out;
    auto c = store_Query(QStringLiteral("select 红球1,红球2,红球3,红球4,红球5,红球6,蓝球 from 日志表 "
                                        "where 期号=? order by 序号"),
                         {issue});
    for (; !c->eof(); c->moveNext()) {
        Ticket t{};
        for (int i = 0; i < 7; ++i) t[size_t(i)] = c->intValue(i);
        out.push_back(t);
    }
    return out;
}

class PlayerWalkTest : public StartedProgramTest<PlayerScreen> {
  protected:
    // A window of its own, such as the shrink settings.
    template <class T>
    static T* find(const QString& name) {
        for (QWidget* top : QApplication::topLevelWidgets())
            if (auto* w = top->findChild<T*>(name)) return w;
        return nullptr;
    }
};

TEST_F(PlayerWalkTest, PickFilterShrinkSelectAndFindItAllAfterARestart) {
    // The newest shipped draw, so that the tickets can be checked against it at the end:
    // 01 04 16 22 26 31 + 04.
    constexpr int kIssue = 2026096;
    auto* pickPage = qobject_cast<PickPage*>(window_->conditionsPage()->tab(1));
    ASSERT_NE(pickPage, nullptr);

    // Twelve red drags, two blue drags: C(12,6) * 2 tickets.
    for (int n = 1; n <= 12; ++n) QTest::mouseClick(pickPage->button(n), Qt::LeftButton);
    for (int n = 103; n <= 104; ++n) QTest::mouseClick(pickPage->button(n), Qt::LeftButton);
    screen_->typed << QString::number(kIssue);
    clickCommand(kCmdInit);
    const std::vector<Ticket> all = ticketsOf(kIssue);
    ASSERT_EQ(all.size(), 924u * 2);

    // Two conditions: a sum of 30..50, and two to four odd reds.
    set_ShiYongQingKuang(1, 1);
    set_GuoLvFanWei(1000, 1183, 0);
    set_GuoLvFanWei(1000 + 30, 1000 + 50, 1);
    set_ShiYongQingKuang(10, 1);
    set_GuoLvFanWei(3640, 3649, 0);
    set_GuoLvFanWei(3642, 3644, 1);
    clickCommand(kCmdFilter);
    const std::vector<Ticket> filtered = ticketsOf(kIssue);
    ASSERT_FALSE(filtered.empty());
    EXPECT_LT(filtered.size(), all.size());
    EXPECT_EQ(ticketsPage_->model()->rowCount(), int(filtered.size()));

    // 第3步 opens the shrink settings; 保五型, then 开始缩水.
    clickCommand(kCmdShrink);
    auto* five = find<QRadioButton>(QStringLiteral("Option_ShuoSuiLeiXing(5)"));
    auto* go = find<QPushButton>(QStringLiteral("cmmSS(1)"));
    ASSERT_TRUE(five && go);
    QTest::mouseClick(five, Qt::LeftButton);
    QTest::mouseClick(go, Qt::LeftButton);
    const std::vector<Ticket> kept = ticketsOf(kIssue);
    ASSERT_FALSE(kept.empty());
    EXPECT_LT(kept.size(), filtered.size());

    // 精选号码 down to three (ties with the third stay).
    screen_->typed << QStringLiteral("3");
    clickCommand(kCmdSelect);
    const std::vector<Ticket> chosen = ticketsOf(kIssue);
    EXPECT_GE(chosen.size(), 3u);
    EXPECT_LE(chosen.size(), kept.size());

    // Export to the program folder's text file, empty the table, import the file again.
    clickCommand(kCmdExport);
    const QString exported = paths_.programDir + QStringLiteral("/dovrexDaocu.txt");
    ASSERT_TRUE(QFileInfo::exists(exported));
    clickCommand(kCmdDelete);
    EXPECT_TRUE(ticketsOf(kIssue).empty());
    screen_->file = exported;
    screen_->importAs.daoRuGeShi = TicketImportOptions::kNumbersOnly;
    screen_->importAs.daoRuQiHao = QString::number(kIssue);
    clickCommand(kCmdImport);
    EXPECT_EQ(ticketsOf(kIssue), chosen);

    // 开奖核对 against the real draw: hits written beside every ticket.
    store_Execute(QStringLiteral("UPDATE 日志表 SET 红球中=-1"));
    clickCommand(kCmdPrizeCheck);
    EXPECT_EQ(store().scalar(QStringLiteral("select count(*) from 日志表 where 红球中<0")).toInt(), 0);

    ASSERT_TRUE(exitProgram());

    // The restart finds the picks, the conditions and the tickets as they were left.
    startProgram();
    EXPECT_EQ(std::tuple(count_HongTuo(), get_ShiYongQingKuang(1)), std::tuple(12, 1));
    EXPECT_EQ(ticketsOf(kIssue), chosen);
    EXPECT_EQ(ticketsPage_->model()->rowCount(), int(chosen.size()));
}

}  // namespace
