// The program's own boxes as the player meets them: real message boxes, opened by the commands,
// read for their title and buttons and answered by a watcher.

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QTimer>

#include "app/pipeline_commands.h"
#include "domain/condition_catalogue.h"
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
    BoxWatcher watcher_;
};

const QStringList kOkCancel{QStringLiteral("取消"), QStringLiteral("确定")};
const QStringList kYesNo{QStringLiteral("否(&N)"), QStringLiteral("是(&Y)")};
const QStringList kOk{QStringLiteral("确定")};
const QString kCaption = QStringLiteral("双色球 dovrex");

// The go-ahead of a pass asks 确定/取消 under the program's caption; the question about an issue's
// old tickets is titled 信息提示 and asks 是/否 (否 keeps them, and the step then says what it did); a
// failed prize check, a failed delete and a finished update wear their own titles.
TEST_F(DialogBoxesTest, EachBoxHasItsTitleAndButtons) {
    pickRange(1, 7, kPickDrag);
    pickRange(101, 101, kPickDrag);
    clickCommand(kCmdInit);  // seven tickets of the next issue, which has no draw yet
    set_GuoLvTiaoJian(kShrinkTypeId, 6);

    // clang-format off
    const struct { const char* what; std::function<void()> action; QString title; QStringList buttons;
                   int boxes = 1; } cases[] = {
        {"init again", [&] { clickCommand(kCmdInit); }, QStringLiteral("信息提示"), kYesNo, 2},
        {"filter", [&] { clickCommand(kCmdFilter); }, kCaption, kOkCancel},
        {"delete", [&] { clickCommand(kCmdDelete); }, kCaption, kOkCancel},
        {"shrink",
         [&] {
             clickCommand(kCmdShrink);  // opens the shrink settings
             clickCommand(kCmdShrink);  // asks
         },
         kCaption, kOkCancel},
        {"pair omission", [&] { window_->findChild<QAction*>(QStringLiteral("mnu_ZuHeYiLou2"))->trigger(); },
         kCaption, kOkCancel},
        {"prize check",
         [&] {
             screen_->typed = QString::number(get_BiaoGeQiHao());  // against their own issue, not drawn
             clickCommand(kCmdPrizeCheck);
         },
         QStringLiteral("出错啦!"), kOk},
        {"delete a draw",
         [&] {
             screen_->typed = QStringLiteral("2000001");
             window_->selectPage(TopPage::History);
             window_->historyPage()->deleteDraw();
         },
         QStringLiteral("删除失败"), kOk},
        {"update from a file",
         [] { update_FromFile(QStringLiteral(DOVREX_SOURCE_DIR "/tests/data/text_list_asc.txt")); },
         QStringLiteral("下载记录"), kOk},
    };
    // clang-format on
    for (const auto& c : cases) {
        watcher_.boxes.clear();
        c.action();
        const QList<SeenBox>& boxes = watcher_.boxes;
        ASSERT_FALSE(boxes.isEmpty()) << c.what;
        EXPECT_EQ(boxes.size(), c.boxes) << c.what;
        EXPECT_EQ(boxes[0].title, c.title) << c.what;
        EXPECT_EQ(boxes[0].buttons, c.buttons) << c.what;
    }
}

}  // namespace
