// A player's evening, driven through the window: picks, the three steps, 精选号码, the file round
// trip, the check, and a restart that finds the work again. The rules of each step are held by the
// core tests of its routine; this walk holds that each button reaches its step on the grid's
// tickets.
#include <gtest/gtest.h>

#include <QApplication>
#include <QFileInfo>
#include <QPushButton>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QTest>
#include <array>
#include <vector>

#include "app/pipeline_commands.h"
#include "domain/date_value.h"
#include "filters/condition_store.h"
#include "gui/answering_screen.h"
#include "gui/seeded_program.h"
#include "pipeline/pick_state.h"
#include "screen/shared_state.h"
#include "screen/ticket_options.h"
#include "store/store.h"
#include "ui/conditions/conditions_page.h"
#include "ui/conditions/pick_page.h"
#include "ui/shell/form_main.h"
#include "ui/shell/gui_screen.h"
#include "ui/shell/program_session.h"
#include "ui/tickets/tickets_page.h"
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

class PlayerWalkTest : public SeededProgramTest {
  protected:
    void start() {
        session_ = makeSession(screen_);
        ASSERT_TRUE(session_->start());
        window_ = session_->window();
        pickPage_ = qobject_cast<PickPage*>(window_->conditionsPage()->tab(1));
        ticketsPage_ = qobject_cast<TicketsPage*>(window_->page(TopPage::Tickets));
        ASSERT_TRUE(pickPage_ && ticketsPage_);
    }
    void exitProgram() {
        bool saved = false;
        QObject::connect(window_, &FormMain::exited, [&](bool ok) { saved = ok; });
        ASSERT_TRUE(window_->close());
        ASSERT_TRUE(saved);
        session_.reset();
    }
    void press(int command) { QTest::mouseClick(ticketsPage_->command(command), Qt::LeftButton); }
    template <class T>
    T* find(const QString& name) {
        for (QWidget* top : QApplication::topLevelWidgets())
            if (auto* w = top->findChild<T*>(name)) return w;
        return nullptr;
    }

    PlayerScreen* screen_ = nullptr;
    FormMain* window_ = nullptr;
    PickPage* pickPage_ = nullptr;
    TicketsPage* ticketsPage_ = nullptr;
};

TEST_F(PlayerWalkTest, PickFilterShrinkSelectAndFindItAllAfterARestart) {
    // The newest shipped draw, so that the tickets can be checked against it at the end:
    // 01 04 16 22 26 31 + 04.
    constexpr int kIssue = 2026096;
    start();

    // Twelve red drags, two blue drags: C(12,6) * 2 tickets.
    for (int n = 1; n <= 12; ++n) QTest::mouseClick(pickPage_->button(n), Qt::LeftButton);
    for (int n = 103; n <= 104; ++n) QTest::mouseClick(pickPage_->button(n), Qt::LeftButton);
    window_->selectPage(TopPage::Tickets);
    screen_->typed << QString::number(kIssue);
    press(kCmdInit);
    const std::vector<Ticket> all = ticketsOf(kIssue);
    ASSERT_EQ(all.size(), 924u * 2);

    // Two conditions: a sum of 30..50, and two to four odd reds.
    set_ShiYongQingKuang(1, 1);
    set_GuoLvFanWei(1000, 1183, 0);
    set_GuoLvFanWei(1000 + 30, 1000 + 50, 1);
    set_ShiYongQingKuang(10, 1);
    set_GuoLvFanWei(3640, 3649, 0);
    set_GuoLvFanWei(3642, 3644, 1);
    press(kCmdFilter);
    const std::vector<Ticket> filtered = ticketsOf(kIssue);
    ASSERT_FALSE(filtered.empty());
    EXPECT_LT(filtered.size(), all.size());
    EXPECT_EQ(ticketsPage_->model()->rowCount(), int(filtered.size()));

    // 第3步 opens the shrink settings; 保五型, then 开始缩水.
    press(kCmdShrink);
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
    press(kCmdSelect);
    const std::vector<Ticket> chosen = ticketsOf(kIssue);
    EXPECT_GE(chosen.size(), 3u);
    EXPECT_LE(chosen.size(), kept.size());

    // Export to the program folder's text file, empty the table, import the file again.
    press(kCmdExport);
    const QString exported = paths_.programDir + QStringLiteral("/dovrexDaocu.txt");
    ASSERT_TRUE(QFileInfo::exists(exported));
    press(kCmdDelete);
    EXPECT_TRUE(ticketsOf(kIssue).empty());
    screen_->file = exported;
    screen_->importAs.daoRuGeShi = TicketImportOptions::kNumbersOnly;
    screen_->importAs.daoRuQiHao = QString::number(kIssue);
    press(kCmdImport);
    EXPECT_EQ(ticketsOf(kIssue), chosen);

    // 开奖核对 against the real draw: hits written beside every ticket.
    store_Execute(QStringLiteral("UPDATE 日志表 SET 红球中=-1"));
    press(kCmdPrizeCheck);
    EXPECT_EQ(store().scalar(QStringLiteral("select count(*) from 日志表 where 红球中<0")).toInt(), 0);

    exitProgram();

    // The restart finds the picks, the conditions and the tickets as they were left.
    start();
    EXPECT_EQ(count_HongTuo(), 12);
    EXPECT_EQ(get_ShiYongQingKuang(1), 1);
    EXPECT_EQ(ticketsOf(kIssue), chosen);
    EXPECT_EQ(ticketsPage_->model()->rowCount(), int(chosen.size()));
}

}  // namespace
