// The export and import dialogs, the window's screen with the ticket grid, the random pick window.
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QProgressBar>
#include <QRadioButton>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <QTableView>
#include <QTimer>

#include "gui/seeded_program.h"
#include "support/test_support.h"
#include "ui/shell/gui_screen.h"
#include "ui/tickets/from_file_dialog.h"
#include "ui/tickets/jixuan_window.h"
#include "ui/tickets/to_file_dialog.h"
#include "widgets/ball_cell_delegate.h"
#include "widgets/cursor_model.h"

namespace dovrex::test {
namespace {

TEST(ToFileDialog, OpensOnTheOptionsAndPresetsSetTheSeparators) {
    TicketExportOptions in;
    in.daoChuXuanXiang = {true, false, true, true};
    in.hongJianGe = QStringLiteral(",");
    in.hongLanJianGe = QStringLiteral("|");
    ToFileDialog dialog(in);
    auto* presets = dialog.findChild<QComboBox*>(QStringLiteral("Combocangyong"));
    ASSERT_TRUE(presets);
    EXPECT_EQ(presets->currentText(), QStringLiteral("财付通彩票网格式"));
    EXPECT_TRUE(dialog.findChild<QCheckBox*>(QStringLiteral("Check_ToFile3"))->isChecked());
    EXPECT_EQ(dialog.options().daoChuXuanXiang, in.daoChuXuanXiang);

    emit presets->activated(0);  // 淘宝; the presets: TicketFilesTest.ExportThenImportGivesTheSameTickets
    EXPECT_EQ(dialog.options().hongLanJianGe, QStringLiteral("+"));
    // Picking 空格 from a list puts a blank in its box; typed text is taken as it is.
    auto* blue = dialog.findChild<QComboBox*>(QStringLiteral("Text_FG"));
    emit blue->activated(blue->findText(QStringLiteral("空格")));
    EXPECT_EQ(dialog.options().hongLanJianGe, QStringLiteral(" "));
    blue->setEditText(QStringLiteral("=>"));
    EXPECT_EQ(dialog.options().hongLanJianGe, QStringLiteral("=>"));
}

TEST(FromFileDialog, IssueBoxFollowsTheLayoutAndNeedsSevenDigits) {
    FromFileDialog dialog(TicketImportOptions{0, QStringLiteral("2008118")});
    auto* issue = dialog.findChild<QLineEdit*>(QStringLiteral("Txt_FromFileQS"));
    ASSERT_TRUE(issue);
    EXPECT_TRUE(issue->isEnabled());
    dialog.findChild<QRadioButton*>(QStringLiteral("Option_GeShi1"))->setChecked(true);
    EXPECT_FALSE(issue->isEnabled());
    EXPECT_EQ(dialog.options().daoRuGeShi, 1);

    // Digits only.
    dialog.findChild<QRadioButton*>(QStringLiteral("Option_GeShi0"))->setChecked(true);
    issue->clear();
    QTest::keyClicks(issue, QStringLiteral("20a08b11"));
    EXPECT_EQ(issue->text(), QStringLiteral("200811"));
    QString said;
    QTimer::singleShot(0, [&said] {
        if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
            said = box->text();
            box->accept();
        }
    });
    dialog.accept();
    EXPECT_EQ(said, QStringLiteral("请在文本框中输入一个７位数的期号。(如：２００７００１)"));
    EXPECT_NE(dialog.result(), QDialog::Accepted);
    QTest::keyClicks(issue, QStringLiteral("8"));
    dialog.accept();
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_EQ(dialog.options().daoRuQiHao, QStringLiteral("2008118"));
}

// The window's screen on a window of its own, with the ticket grid.
class GridScreenTest : public FreshStoreTest {
  protected:
    // The ticket grid, bound to `rows`.
    QTableView* bindGrid(std::shared_ptr<Cursor> rows) {
        auto* view = new QTableView(&window_);
        view->setObjectName(QStringLiteral("TDBGrid_RZ"));
        gui_.setWindow(&window_);
        gui_.ui_Grid(QStringLiteral("TDBGrid_RZ"), std::move(rows));
        return view;
    }
    QWidget window_;
    GuiScreen gui_;
};

TEST_F(GridScreenTest, DrawnNumbersShowAsBallsUntilTheGridIsRebound) {
    addTicket(2008118, makeReds(4, 5, 6, 7, 8, 9));
    QTableView* view = bindGrid(store().pagedQuery(QStringLiteral("select * from 日志表")));
    gui_.ui_MarkDrawn(QStringLiteral("TDBGrid_RZ"), {4, 9, 16, 27, 31, 33}, 1);

    auto* model = view->model();
    const int red1 = columnOf(model, QStringLiteral("红球1")), blue = columnOf(model, QStringLiteral("蓝球"));
    auto* reds = qobject_cast<BallCellDelegate*>(view->itemDelegateForColumn(red1));
    ASSERT_TRUE(reds);
    EXPECT_TRUE(reds->isBall(model->index(0, red1)));       // 4
    EXPECT_FALSE(reds->isBall(model->index(0, red1 + 1)));  // 5
    EXPECT_TRUE(reds->isBall(model->index(0, red1 + 5)));   // 9
    EXPECT_TRUE(
        qobject_cast<BallCellDelegate*>(view->itemDelegateForColumn(blue))->isBall(model->index(0, blue)));
    EXPECT_EQ(view->itemDelegateForColumn(columnOf(model, QStringLiteral("期号"))), nullptr);
    EXPECT_GE(view->verticalHeader()->defaultSectionSize(), BallCellDelegate::kBallRowHeight);
    // It paints without trouble.
    window_.resize(900, 200);
    EXPECT_FALSE(view->grab().isNull());

    gui_.ui_Grid(QStringLiteral("TDBGrid_RZ"), store_Query(QStringLiteral("select * from 日志表")));
    EXPECT_EQ(view->itemDelegateForColumn(red1), nullptr);
}

TEST_F(GridScreenTest, ProgressGridsAndRolesGoToTheirControls) {
    auto* busy = new QProgressBar(&window_);
    busy->setObjectName(QStringLiteral("ProgressBar_TouZu_Busy"));
    QProgressBar fallback;
    gui_.setProgressBar(&fallback);
    store().execute(QStringLiteral("CREATE TABLE t (期号 INTEGER, 开奖日期 REAL, 临时数据 REAL, 备注 TEXT)"));
    store().execute(QStringLiteral("INSERT INTO t VALUES (2026096, ?, 7.0, NULL)"),
                    {toDateValue(QDate(2026, 8, 20))});
    QTableView* grid = bindGrid(store().query(QStringLiteral("select * from t")));

    gui_.ui_Progress(0, 500, 120, true);
    EXPECT_EQ(std::pair(busy->maximum(), busy->value()), std::pair(500, 120));
    EXPECT_EQ(fallback.value(), -1);  // untouched: the page's own bar is there

    gui_.ui_DressGrid(QStringLiteral("TDBGrid_RZ"), {QStringLiteral("期号"), QStringLiteral("日期")},
                      {0, 1410, -1});
    CursorModel* model = gui_.gridModel(QStringLiteral("TDBGrid_RZ"));
    ASSERT_NE(model, nullptr);
    EXPECT_TRUE(grid->isColumnHidden(0));
    EXPECT_EQ(grid->columnWidth(1), 94);
    EXPECT_GT(grid->columnWidth(2), 0);
    EXPECT_EQ(model->headerData(1, Qt::Horizontal).toString(), QStringLiteral("日期"));
    EXPECT_EQ(model->headerData(2, Qt::Horizontal).toString(), QStringLiteral("临时数据"));
    EXPECT_EQ(model->index(0, 1).data().toString(), QStringLiteral("2026/08/20"));
    EXPECT_EQ(model->index(0, 2).data().toString(), QStringLiteral("7"));
    EXPECT_EQ(model->index(0, 3).data().toString(), QString());

    gui_.releaseGrids();
    EXPECT_EQ(model->rowCount(), 0);

    // A control of a secondary window, registered by hand.
    QLabel other;
    other.setObjectName(QStringLiteral("lblDescription"));
    gui_.registerRole(&other);
    gui_.ui_Set(QStringLiteral("lblDescription"), QStringLiteral("text"), QStringLiteral("ok"));
    EXPECT_EQ(other.text(), QStringLiteral("ok"));
}

// Records the text each painted cell of one column showed, by row.
class PaintSpy : public QStyledItemDelegate {
  public:
    using QStyledItemDelegate::QStyledItemDelegate;
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override {
        painted[index.row()] = index.data().toString();
        QStyledItemDelegate::paint(painter, option, index);
    }
    mutable QHash<int, QString> painted;
};

TEST_F(GridScreenTest, HundredThousandTicketsScrollTopToBottomAndBackEveryRowPainted) {
    constexpr int kRows = 100000;
    addTickets(2008118, kRows);
    QTableView* view = bindGrid(store().pagedQuery(
        QStringLiteral("select * from 日志表 where 期号=? order by 期号 asc,序号 asc"), {2008118}));
    auto* model = view->model();
    ASSERT_EQ(model->rowCount(), kRows);
    const int serial = columnOf(model, QStringLiteral("序号"));
    ASSERT_GE(serial, 0);
    PaintSpy spy;
    view->setItemDelegateForColumn(serial, &spy);
    // Only the serial shows: the walk pays for reading rows rather than for drawing cells.
    for (int c = 0; c < model->columnCount(); ++c) view->setColumnHidden(c, c != serial);
    // Short rows in a tall view keep the walk to a few hundred pages; every row is still painted.
    view->verticalHeader()->setMinimumSectionSize(1);
    view->verticalHeader()->setDefaultSectionSize(1);
    window_.resize(600, 1600);
    view->resize(600, 1600);
    window_.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window_));

    QScrollBar* bar = view->verticalScrollBar();
    const int step = qMax(1, bar->pageStep());
    const auto expectEveryRowPainted = [&] {
        ASSERT_EQ(spy.painted.size(), kRows);
        for (int row = 0; row < kRows; ++row)
            ASSERT_EQ(spy.painted.value(row), QString::number(row + 1)) << row;
        spy.painted.clear();
    };
    const auto paintAt = [&](int value) {
        bar->setValue(value);
        view->viewport()->repaint();
    };
    for (int v = 0; v < bar->maximum() + step; v += step) paintAt(qMin(v, bar->maximum()));
    expectEveryRowPainted();
    for (int v = bar->maximum(); v > -step; v -= step) paintAt(qMax(v, 0));
    expectEveryRowPainted();
    view->setItemDelegateForColumn(serial, nullptr);
}

TEST(JiXuanWindow, ShowsTheBallsOneByOne) {
    JiXuanWindow window(3, 7, nullptr, 30);
    auto* exportButton = window.findChild<QPushButton*>(QStringLiteral("cmmJXdaocu"));
    ASSERT_TRUE(exportButton);
    EXPECT_FALSE(exportButton->isEnabled());
    EXPECT_EQ(window.shown(), 0);
    QTRY_VERIFY_WITH_TIMEOUT(window.shown() >= 1, 2000);
    EXPECT_LT(window.shown(), 21);
    QTRY_VERIFY_WITH_TIMEOUT(window.finished(), 5000);
    EXPECT_EQ(window.shown(), 21);
    EXPECT_TRUE(exportButton->isEnabled());
    EXPECT_EQ(window.hao()[3][6], 0);  // no fourth ticket
    EXPECT_FALSE(window.grab().isNull());
}

}  // namespace
}  // namespace dovrex::test
