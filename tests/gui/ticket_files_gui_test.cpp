// The export and import dialogs, the drawn balls in the ticket grid and the random pick window.
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <QTableView>
#include <QTest>
#include <QTimer>

#include "support/test_support.h"
#include "ui/shell/gui_screen.h"
#include "ui/tickets/from_file_dialog.h"
#include "ui/tickets/jixuan_window.h"
#include "ui/tickets/to_file_dialog.h"
#include "widgets/ball_cell_delegate.h"

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

    emit presets->activated(0);  // 淘宝
    EXPECT_EQ(dialog.options().hongJianGe, QStringLiteral(" "));
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

class DrawnBallsTest : public FreshStoreTest {};

TEST_F(DrawnBallsTest, DrawnNumbersShowAsBallsUntilTheGridIsRebound) {
    store_Execute(
        QStringLiteral("INSERT INTO 日志表 (ID,序号,期号,红球1,红球2,红球3,红球4,红球5,红球6,蓝球) "
                       "VALUES (1,1,2008118,4,5,6,7,8,9,1)"));
    QWidget window;
    auto* view = new QTableView(&window);
    view->setObjectName(QStringLiteral("TDBGrid_RZ"));
    GuiScreen gui;
    gui.setWindow(&window);
    gui.ui_Grid(QStringLiteral("TDBGrid_RZ"), store_Query(QStringLiteral("select * from 日志表")));
    gui.ui_MarkDrawn(QStringLiteral("TDBGrid_RZ"), {4, 9, 16, 27, 31, 33}, 1);

    auto* model = view->model();
    int red1 = -1, blue = -1, issue = -1;
    for (int c = 0; c < model->columnCount(); ++c) {
        const QString h = model->headerData(c, Qt::Horizontal).toString();
        if (h == QStringLiteral("红球1")) red1 = c;
        if (h == QStringLiteral("蓝球")) blue = c;
        if (h == QStringLiteral("期号")) issue = c;
    }
    auto* reds = qobject_cast<BallCellDelegate*>(view->itemDelegateForColumn(red1));
    ASSERT_TRUE(reds);
    EXPECT_TRUE(reds->isBall(model->index(0, red1)));       // 4
    EXPECT_FALSE(reds->isBall(model->index(0, red1 + 1)));  // 5
    EXPECT_TRUE(reds->isBall(model->index(0, red1 + 5)));   // 9
    EXPECT_TRUE(
        qobject_cast<BallCellDelegate*>(view->itemDelegateForColumn(blue))->isBall(model->index(0, blue)));
    EXPECT_EQ(view->itemDelegateForColumn(issue), nullptr);
    EXPECT_GE(view->verticalHeader()->defaultSectionSize(), BallCellDelegate::kBallRowHeight);
    // It paints without trouble.
    window.resize(900, 200);
    EXPECT_FALSE(view->grab().isNull());

    gui.ui_Grid(QStringLiteral("TDBGrid_RZ"), store_Query(QStringLiteral("select * from 日志表")));
    EXPECT_EQ(view->itemDelegateForColumn(red1), nullptr);
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
