// DOVREX_SCREENSHOTS=<folder> keeps a picture of every top page and of the windows the menus and
// the ticket page's commands open, at 1366x768, for looking at what a player sees. Without it the
// test is skipped.

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QMenuBar>
#include <QPushButton>
#include <QSet>
#include <QTest>
#include <QTimer>

#include "app/pipeline_commands.h"
#include "domain/condition_catalogue.h"
#include "filters/condition_store.h"
#include "gui/seeded_program.h"
#include "pipeline/pick_state.h"
#include "pipeline/ticket_init.h"
#include "ui/analysis/other_page.h"
#include "ui/calendar/bazi_window.h"
#include "ui/shell/gui_screen.h"

using namespace dovrex;

namespace {

class PictureScreen : public GuiScreen {
  public:
    int ui_ChooseUserMode() override { return 1; }
};

class Screenshots : public StartedProgramTest<PictureScreen> {
  protected:
    void SetUp() override {
        dir_ = qEnvironmentVariable("DOVREX_SCREENSHOTS");
        if (dir_.isEmpty()) GTEST_SKIP() << "no DOVREX_SCREENSHOTS";
        StartedProgramTest::SetUp();
        window_->resize(1366, 768);
        window_->show();
        QCoreApplication::processEvents();
    }
    void save(QWidget* w, const QString& name) {
        QCoreApplication::processEvents();
        w->grab().save(QDir(dir_).filePath(name + QStringLiteral(".png")));
    }
    // Runs `open`; the window it opens, modal or not, is pictured and closed.
    void windowOf(const std::function<void()>& open, const QString& name) {
        QSet<QWidget*> before;
        for (QWidget* w : QApplication::topLevelWidgets())
            if (w->isVisible()) before << w;
        QTimer poll;
        poll.setInterval(100);
        QObject::connect(&poll, &QTimer::timeout, [&] {
            QWidget* modal = QApplication::activeModalWidget();
            if (!modal || before.contains(modal)) return;
            save(modal, name);
            before << modal;
            modal->close();
        });
        poll.start();
        open();
        QCoreApplication::processEvents();
        for (QWidget* w : QApplication::topLevelWidgets())
            if (w->isVisible() && !before.contains(w) && w->isWindow()) {
                save(w, name);
                w->close();
            }
    }
    QAction* action(const QString& text) const {
        for (QAction* a : window_->findChildren<QAction*>())
            if (a->text() == text) return a;
        return nullptr;
    }
    QString dir_;
};

TEST_F(Screenshots, EveryPageAndWindow) {
    pickRange(1, 12, kPickDrag);
    pickRange(101, 101, kPickDrag);
    window_->selectPage(TopPage::Conditions);
    save(window_, QStringLiteral("pick-page"));
    windowOf([] { init_TouZhu(2026097); }, QStringLiteral("message-init-done"));

    window_->selectPage(TopPage::Tickets);
    save(window_, QStringLiteral("tickets-page"));
    window_->selectPage(TopPage::History);
    save(window_, QStringLiteral("history-page"));
    window_->selectPage(TopPage::Web);
    save(window_, QStringLiteral("web-page"));
    window_->selectPage(TopPage::Other);
    OtherPage* other = window_->otherPage();
    for (int i = 0; i < other->count(); ++i) {
        other->setCurrentIndex(i);
        save(window_, QStringLiteral("other-page-%1").arg(i + 1));
    }

    for (const QString& text :
         {QStringLiteral("条件回测..."), QStringLiteral("快速设置过滤条件..."),
          QStringLiteral("下载地址设置..."), QStringLiteral("机选号码..."),
          QStringLiteral("号码开出概率分析(&P)..."), QStringLiteral("幸运号码(&L)...")}) {
        QAction* a = action(text);
        ASSERT_NE(a, nullptr) << text.toStdString();
        QString name = text;
        name.remove(QStringLiteral("...")).remove(QStringLiteral("(&P)")).remove(QStringLiteral("(&L)"));
        windowOf([a] { a->trigger(); }, QStringLiteral("window-") + name);
    }
    windowOf(
        [this] {
            BaziWindow w(window_);
            w.show();
            w.button(5)->click();
            save(&w, QStringLiteral("window-birth-chart"));
        },
        QStringLiteral("window-birth-chart-closed"));

    set_GuoLvTiaoJian(kShrinkTypeId, 5);
    window_->selectPage(TopPage::Tickets);
    for (int command : {kCmdExport, kCmdImport, kCmdFilter}) {
        windowOf([this, command] { QTest::mouseClick(ticketsPage_->command(command), Qt::LeftButton); },
                 QStringLiteral("tickets-command-%1").arg(command));
    }
    windowOf([this] { QTest::mouseClick(ticketsPage_->command(kCmdShrink), Qt::LeftButton); },
             QStringLiteral("tickets-shrink-settings"));
}

}  // namespace
