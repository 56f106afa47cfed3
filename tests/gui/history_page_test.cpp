#include <QAbstractButton>
#include <QDateEdit>
#include <QLabel>
#include <QLineEdit>
#include <QTableView>

#include "gui/answering_screen.h"
#include "gui/seeded_program.h"
#include "history/draw_download.h"
#include "history/draw_records.h"
#include "history/history_queries.h"
#include "pipeline/pick_state.h"
#include "store/factory_data.h"
#include "store/schema.h"
#include "support/test_support.h"
#include "ui/history/fenbu_grid.h"
#include "ui/history/history_page.h"
#include "ui/history/mirror_settings_dialog.h"
#include "widgets/cursor_model.h"
#include "widgets/search_row.h"

using namespace dovrex;

namespace {

// Questions answered from a queue, no when it is empty.
class HistoryPageTest : public StartedProgramTest<AnsweringScreen> {
  protected:
    void SetUp() override {
        StartedProgramTest::SetUp();
        screen_->answer = false;
        page_ = window_->historyPage();
        window_->selectPage(TopPage::History);
    }

    // Types the balls, given blank-separated, into the entry boxes from the first red on.
    void type(const char* ballsText) {
        const QStringList balls = QString::fromLatin1(ballsText).split(u' ');
        for (int i = 0; i < balls.size(); ++i) {
            QLineEdit* box = page_->entryBox(i + 1);
            box->clear();
            QTest::keyClicks(box, balls[i]);
        }
    }
    QAbstractButton* button(const char* name) const {
        return page_->findChild<QAbstractButton*>(QLatin1String(name));
    }

    HistoryPage* page_ = nullptr;
};

TEST_F(HistoryPageTest, EntryRefusesBadNumbersAndStoresAGoodDrawSorted) {
    Clock::setToday(QDate(2026, 8, 23));  // the draw entered is the one of today
    EXPECT_EQ(page_->entryBox(0)->text(), QStringLiteral("2026097"));
    EXPECT_EQ(page_->datePicker()->date(), QDate(2026, 8, 23));

    // The boxes take digits only.
    QTest::keyClicks(page_->entryBox(1), QStringLiteral("a1-"));
    EXPECT_EQ(page_->entryBox(1)->text(), QStringLiteral("1"));

    type("34 2 3 4 5 6 7");
    button("cmmUpdateHistory(0)")->click();
    EXPECT_EQ(screen_->shown, QStringList{QStringLiteral("输入有误或不完整,请核对后重新输入!")});
    EXPECT_EQ(page_->entryBox(1)->text(), QStringLiteral("34"));  // left for the user to correct
    // Nothing stored: HistoryEntryTest.ARefusedEntryShowsTheMessageAndStoresNothing.

    screen_->shown.clear();
    type("33 2 17 4 9 6 16");
    // Enter on the blue adds the draw.
    QTest::keyClick(page_->entryBox(7), Qt::Key_Return);
    EXPECT_TRUE(screen_->shown.isEmpty());
    // The boxes reach the store (what it does with them: HistoryEntryTest).
    EXPECT_EQ(
        test::scalar(QStringLiteral("select 红球1||','||红球6||'+'||蓝球 from 历史记录 where 期号=2026097")),
        QStringLiteral("2,33+16"));
    // The row moves on; the grid shows the new draw at its end.
    EXPECT_EQ(page_->entryBox(0)->text(), QStringLiteral("2026098"));
    EXPECT_TRUE(page_->entryBox(1)->text().isEmpty());
    EXPECT_EQ(page_->model()->rowCount(), 3494);
}

TEST_F(HistoryPageTest, SearchRowCountsMatchesAndANoMatchClearsIt) {
    button("CmmSousuo")->click();
    EXPECT_EQ(screen_->shown.value(0), msg::kSearchHint);
    SearchRow* row = page_->searchRow();
    ASSERT_TRUE(row->isVisible());
    const CursorModel* model = page_->model();
    const int blue = columnOf(model, QStringLiteral("蓝球"));
    ASSERT_NE(row->input(blue), nullptr);

    screen_->shown.clear();
    const int expected =
        store().scalar(QStringLiteral("select count(*) from 历史记录 where 蓝球=16")).toInt();
    QTest::keyClicks(row->input(blue), QStringLiteral("16"));
    QTest::keyClick(row->input(blue), Qt::Key_Return);
    EXPECT_EQ(screen_->shown, QStringList{msg::searchDoneText(expected)});
    EXPECT_EQ(model->rowCount(), expected);

    screen_->shown.clear();
    row->input(blue)->setText(QStringLiteral("17"));
    button("filterBegin")->click();
    EXPECT_EQ(screen_->shown, QStringList{msg::searchDoneText(0)});
    EXPECT_TRUE(row->input(blue)->text().isEmpty());
    EXPECT_EQ(model->rowCount(), 3493);  // back to the default view
}

// What a deletion says and what a click in the grid picks: HistoryEntryTest.DeletionAsks... and
// PicksTest.PickingInTheDistributionGrid.
TEST_F(HistoryPageTest, DeletionAsksAndTheReportViewsFollowTheMode) {
    screen_->typed = {QStringLiteral("2026001")};
    button("cmm_scls")->click();
    EXPECT_EQ(screen_->shown, QStringList{msg::kDrawDeleteDone});
    EXPECT_EQ(page_->model()->rowCount(), 3492);

    page_->setMode(HistoryShowMode::Newest100);
    page_->setView(HistoryView::Distribution);
    CursorModel* fenBu = page_->fenBuGrid()->cursorModel();
    ASSERT_EQ(fenBu->rowCount(), 101);  // the newest hundred and the pick row
    // A left click in the pick row makes 05 a drag, a right click on 09 a banker.
    const int row = fenBu->rowCount() - 1;
    EXPECT_TRUE(page_->fenBuGrid()->pressCell(row, 5, true));
    EXPECT_TRUE(page_->fenBuGrid()->pressCell(row, 9, false));
    EXPECT_FALSE(page_->fenBuGrid()->pressCell(row - 1, 9, true));  // a draw's row picks nothing
    EXPECT_EQ(std::tuple(pick_Values()[5], pick_Values()[9]), std::tuple(kPickDrag, kPickBanker));
    EXPECT_EQ(fenBu->index(row, 5).data().toString(), QStringLiteral("*"));

    page_->setView(HistoryView::Analysis);
    auto* groups =
        qobject_cast<CursorModel*>(page_->findChild<QTableView*>(QStringLiteral("TDBGrid_zdy"))->model());
    EXPECT_EQ(std::pair(groups->rowCount(), groups->headerData(0, Qt::Horizontal).toString()),
              std::pair(100, QStringLiteral("期号")));
}

TEST_F(HistoryPageTest, TheSelectedDrawShowsItsPrizeTable) {
    createPrizeSchema(store());
    store_Execute(
        QStringLiteral("INSERT INTO 奖级奖金 (期号, 奖级, 注数, 奖金) VALUES (2026096, 1, 8, 6821493)"));
    const CursorModel* model = page_->model();
    // The page opens on the newest draw, 2026096: move away and back so that it reads the new row.
    page_->grid()->setCurrentIndex(model->index(0, 0));
    page_->grid()->setCurrentIndex(model->index(model->rowCount() - 1, 0));
    auto* prizes = page_->findChild<QLabel*>(QStringLiteral("Label_JiangJin"));
    ASSERT_NE(prizes, nullptr);
    EXPECT_TRUE(prizes->text().startsWith(
        QStringLiteral("2026096 期奖金　一等奖：8 注 6821493 元　二等奖：奖金未知")))
        << prizes->text().toStdString();
}

// The download address dialog: what it shows, what it keeps, what it refuses.
class MirrorSettingsDialogTest : public test::FreshStoreTest {};

TEST_F(MirrorSettingsDialogTest, KeepsValidAddressesAndRefusesOthers) {
    MirrorSettingsDialog dialog;
    EXPECT_EQ(dialog.addresses(), defaultMirrorAddresses());

    dialog.setAddresses(
        {QStringLiteral("http://a.example/l.txt"), QStringLiteral("ftp://b.example/l.txt"), QString()});
    dialog.accept();
    EXPECT_NE(dialog.result(), QDialog::Accepted);
    EXPECT_EQ(load_MirrorAddresses(), defaultMirrorAddresses()) << "nothing kept while one address is bad";

    dialog.setAddresses(
        {QStringLiteral("http://a.example/l.txt"), QStringLiteral("https://b.example/l.txt"), QString()});
    dialog.accept();
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_EQ(load_MirrorAddresses(),
              (QStringList{QStringLiteral("http://a.example/l.txt"),
                           QStringLiteral("https://b.example/l.txt"), defaultMirrorAddresses()[2]}));

    for (QPushButton* b : dialog.findChildren<QPushButton*>())
        if (b->text() == QStringLiteral("恢复默认")) b->click();
    EXPECT_EQ(dialog.addresses(), defaultMirrorAddresses());
}

}  // namespace
