// A player's evening, driven through the window: picks, the three steps, 精选号码, and a restart
// that finds the work again. Each step checks its result against a plain recount, not against
// the program's own figures.
#include <gtest/gtest.h>

#include <QApplication>
#include <QFileInfo>
#include <QPushButton>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QTest>
#include <algorithm>
#include <array>
#include <set>
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

int shared7(const Ticket& a, const Ticket& b) {
    int n = a[6] == b[6] ? 1 : 0;
    for (int i = 0; i < 6; ++i)
        for (int j = 0; j < 6; ++j) n += a[size_t(i)] == b[size_t(j)] ? 1 : 0;
    return n;
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
    std::vector<Ticket> expected;
    for (const Ticket& t : all) {
        int sum = 0, odd = 0;
        for (int i = 0; i < 6; ++i) {
            sum += t[size_t(i)];
            odd += t[size_t(i)] % 2;
        }
        if (sum >= 30 && sum <= 50 && odd >= 2 && odd <= 4) expected.push_back(t);
    }
    ASSERT_FALSE(expected.empty());
    ASSERT_LT(expected.size(), all.size());
    screen_->typed << QString::number(kIssue);
    press(kCmdFilter);
    const std::vector<Ticket> filtered = ticketsOf(kIssue);
    EXPECT_EQ(filtered, expected);  // same tickets, same order, renumbered
    EXPECT_EQ(ticketsPage_->model()->rowCount(), int(expected.size()));

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
    for (const Ticket& t : filtered) {
        const bool covered =
            std::any_of(kept.begin(), kept.end(), [&](const Ticket& k) { return shared7(t, k) >= 5; });
        EXPECT_TRUE(covered);
    }

    // 精选号码 down to three (ties with the third stay).
    screen_->typed << QStringLiteral("3");
    press(kCmdSelect);
    const std::vector<Ticket> chosen = ticketsOf(kIssue);
    EXPECT_GE(chosen.size(), 3u);
    EXPECT_LE(chosen.size(), kept.size());
    for (const Ticket& t : chosen) EXPECT_NE(std::find(kept.begin(), kept.end(), t), kept.end());

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
    press(kCmdPrizeCheck);
    const std::set<int> drawnReds{1, 4, 16, 22, 26, 31};
    auto hits = store_Query(
        QStringLiteral(
            "select 红球1,红球2,红球3,红球4,红球5,红球6,蓝球,红球中,蓝球中 from 日志表 where 期号=?"),
        {kIssue});
    int checked = 0;
    for (; !hits->eof(); hits->moveNext(), ++checked) {
        int reds = 0;
        for (int i = 0; i < 6; ++i) reds += drawnReds.count(hits->intValue(i)) ? 1 : 0;
        EXPECT_EQ(hits->intValue(7), reds);
        EXPECT_EQ(hits->intValue(8), hits->intValue(6) == 4 ? 1 : 0);
    }
    EXPECT_EQ(checked, int(chosen.size()));

    exitProgram();

    // The restart finds the picks, the conditions and the tickets as they were left.
    start();
    EXPECT_EQ(count_HongTuo(), 12);
    EXPECT_EQ(get_ShiYongQingKuang(1), 1);
    EXPECT_EQ(ticketsOf(kIssue), chosen);
    EXPECT_EQ(ticketsPage_->model()->rowCount(), int(chosen.size()));
}

}  // namespace
