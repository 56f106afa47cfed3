// The program's own boxes as the player meets them: real message boxes, opened by the commands,
// read for their title and buttons and answered by a watcher.

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include "app/pipeline_commands.h"
#include "domain/condition_catalogue.h"
#include "filters/condition_store.h"
#include "gui/seeded_program.h"
#include "history/draw_download.h"
#include "pipeline/pick_state.h"
#include "screen/ticket_page.h"
#include "ui/history/history_page.h"
#include "ui/shell/gui_screen.h"

using namespace dovrex;

namespace {

// Only the first-run choice and the input boxes are answered without a window; every message and
// question opens its real box.
class RealBoxScreen : public GuiScreen {
  public:
    QString typed;
    int ui_ChooseUserMode() override { return 1; }
    QString ui_AskText(const QString&, const QString&, const QString& proposed) override {
        return typed.isEmpty() ? proposed : typed;
    }
    QString ui_AskChoice(const QString& prompt, const QString& title, const QStringList& items,
                         int current) override {
        return ui_AskText(prompt, title, items.value(current));
    }
};

struct SeenBox {
    QString title;
    QStringList buttons;
    QString text;
};

// Notes every box that opens and closes it: a question with its going-back button (取消 or 否),
// a message with its one button.
class BoxWatcher : public QObject {
  public:
    BoxWatcher() {
        timer_.setInterval(10);
        connect(&timer_, &QTimer::timeout, this, [this] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (!box || !box->isVisible()) return;
            SeenBox seen{box->windowTitle(), {}, box->text()};
            for (QAbstractButton* b : box->buttons()) seen.buttons << b->text();
            seen.buttons.sort();
            boxes << seen;
            box->buttons().size() == 1 ? box->buttons().first()->click() : box->escapeButton()->click();
        });
        timer_.start();
    }
    QList<SeenBox> boxes;

  private:
    QTimer timer_;
};

class DialogBoxesTest : public StartedProgramTest<RealBoxScreen> {
  protected:
    // The boxes the action opened, newest last.
    QList<SeenBox> boxesOf(const std::function<void()>& action) {
        watcher_.boxes.clear();
        action();
        return watcher_.boxes;
    }
    void clickCommand(int index) {
        window_->selectPage(TopPage::Tickets);
        QTest::mouseClick(ticketsPage_->command(index), Qt::LeftButton);
    }
    BoxWatcher watcher_;
};

const QStringList kOkCancel{QStringLiteral("取消"), QStringLiteral("确定")};
const QStringList kYesNo{QStringLiteral("否(&N)"), QStringLiteral("是(&Y)")};
const QStringList kOk{QStringLiteral("确定")};

// The go-ahead of a pass asks 确定/取消; the question about an issue's old tickets is titled
// 信息提示 and asks 是/否; a failed prize check, a failed delete and a finished update wear their
// own titles.
TEST_F(DialogBoxesTest, EachBoxHasItsTitleAndButtons) {
    pickRange(1, 7, kPickDrag);
    pickRange(101, 101, kPickDrag);
    clickCommand(kCmdInit);  // seven tickets of the next issue, which has no draw yet

    auto boxes = boxesOf([&] { clickCommand(kCmdInit); });
    ASSERT_GE(boxes.size(), 1);
    EXPECT_EQ(boxes.first().title, QStringLiteral("信息提示"));
    EXPECT_EQ(boxes.first().buttons, kYesNo);

    for (int command : {kCmdFilter, kCmdDelete}) {
        boxes = boxesOf([&] { clickCommand(command); });
        ASSERT_EQ(boxes.size(), 1) << command;
        EXPECT_EQ(boxes[0].buttons, kOkCancel) << command;
    }
    set_GuoLvTiaoJian(kShrinkTypeId, 6);
    boxes = boxesOf([&] {
        clickCommand(kCmdShrink);  // opens the shrink settings
        clickCommand(kCmdShrink);  // asks
    });
    ASSERT_EQ(boxes.size(), 1);
    EXPECT_EQ(boxes[0].buttons, kOkCancel);

    boxes = boxesOf([&] { window_->findChild<QAction*>(QStringLiteral("mnu_ZuHeYiLou2"))->trigger(); });
    ASSERT_EQ(boxes.size(), 1);
    EXPECT_EQ(boxes[0].buttons, kOkCancel);

    screen_->typed = QString::number(get_BiaoGeQiHao());  // checked against their own issue, not drawn
    boxes = boxesOf([&] { clickCommand(kCmdPrizeCheck); });
    ASSERT_EQ(boxes.size(), 1);
    EXPECT_EQ(boxes[0].title, QStringLiteral("出错啦!"));
    EXPECT_EQ(boxes[0].buttons, kOk);

    screen_->typed = QStringLiteral("2000001");
    boxes = boxesOf([&] {
        window_->selectPage(TopPage::History);
        window_->historyPage()->deleteDraw();
    });
    ASSERT_EQ(boxes.size(), 1);
    EXPECT_EQ(boxes[0].title, QStringLiteral("删除失败"));

    boxes =
        boxesOf([] { update_FromFile(QStringLiteral(DOVREX_SOURCE_DIR "/tests/data/text_list_asc.txt")); });
    ASSERT_EQ(boxes.size(), 1);
    EXPECT_EQ(boxes[0].title, QStringLiteral("下载记录"));
}

}  // namespace
