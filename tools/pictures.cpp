// dovrex-pictures <folder>: pictures of what a player sees, at 1366x768, for looking at the
// program without clicking through it: every top page, every condition page, the windows the
// menus and the ticket page's commands open, the shrink settings and the back-test. The program
// runs on a copy of the shipped data in a temporary folder, with "today" the day after the newest
// shipped draw; boxes that would wait for an answer are pictured and closed.
//
//   QT_QPA_PLATFORM=offscreen build/tools/dovrex-pictures /tmp/pictures
//
// The folder may also come from DOVREX_SCREENSHOTS.

#include <QAction>
#include <QApplication>
#include <QDate>
#include <QDir>
#include <QPushButton>
#include <QSet>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <cstdio>
#include <functional>

#include "app/pipeline_commands.h"
#include "domain/condition_catalogue.h"
#include "domain/date_value.h"
#include "filters/condition_store.h"
#include "pipeline/pick_state.h"
#include "pipeline/ticket_init.h"
#include "screen/app_paths.h"
#include "screen/shared_state.h"
#include "ui/analysis/other_page.h"
#include "ui/calendar/bazi_window.h"
#include "ui/conditions/backtest_window.h"
#include "ui/conditions/conditions_page.h"
#include "ui/shell/form_main.h"
#include "ui/shell/gui_screen.h"
#include "ui/shell/program_session.h"
#include "ui/tickets/shrink_settings.h"
#include "ui/tickets/tickets_page.h"

using namespace dovrex;

namespace {

// The first start asks for the user mode: single-user, without a box.
class PictureScreen : public GuiScreen {
  public:
    int ui_ChooseUserMode() override { return 1; }
};

class Pictures {
  public:
    explicit Pictures(QString dir) : dir_(std::move(dir)) {}

    void save(QWidget* w, const QString& name) {
        QCoreApplication::processEvents();
        const QString file = QDir(dir_).filePath(name + QStringLiteral(".png"));
        if (w->grab().save(file))
            std::printf("%s\n", qPrintable(file));
        else
            std::fprintf(stderr, "cannot write %s\n", qPrintable(file));
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

  private:
    QString dir_;
};

QAction* actionNamed(FormMain* window, const QString& text) {
    for (QAction* a : window->findChildren<QAction*>())
        if (a->text() == text) return a;
    return nullptr;
}

int run(const QString& dir) {
    QTemporaryDir tmp;
    AppPaths paths;
    paths.programDir = tmp.filePath(QStringLiteral("program"));
    paths.tempDir = tmp.filePath(QStringLiteral("temp"));
    const QString shipped = QCoreApplication::applicationDirPath() + QStringLiteral("/../data");
    if (!tmp.isValid() || !QDir().mkpath(dir) || !AppPaths::seedProgramDir(paths.programDir, shipped)) {
        std::fprintf(stderr, "cannot prepare a program folder from %s\n", qPrintable(shipped));
        return 1;
    }
    Clock::setToday(QDate(2026, 8, 21));
    ProgramSession session(paths, std::make_unique<PictureScreen>());
    if (!session.start()) return 1;
    FormMain* window = session.window();
    auto* tickets = qobject_cast<TicketsPage*>(window->page(TopPage::Tickets));
    window->resize(1366, 768);
    window->show();
    QCoreApplication::processEvents();
    Pictures p(dir);

    for (int id = 1; id <= 12; ++id) set_GuoLvTiaoJian(id, kPickDrag);
    set_GuoLvTiaoJian(101, kPickDrag);
    window->selectPage(TopPage::Conditions);
    for (int tab = 1; tab <= ConditionsPage::kTabs; ++tab) {
        window->conditionsPage()->selectTab(tab);
        p.save(window, QStringLiteral("condition-page-%1").arg(tab, 2, 10, QLatin1Char('0')));
    }
    window->conditionsPage()->selectTab(1);
    p.save(window, QStringLiteral("pick-page"));
    p.windowOf([] { init_TouZhu(2026097); }, QStringLiteral("message-init-done"));

    const std::pair<TopPage, const char*> pages[] = {
        {TopPage::Tickets, "tickets-page"}, {TopPage::History, "history-page"}, {TopPage::Web, "web-page"}};
    for (const auto& [page, name] : pages) {
        window->selectPage(page);
        p.save(window, QString::fromLatin1(name));
    }
    window->selectPage(TopPage::Other);
    OtherPage* other = window->otherPage();
    for (int i = 0; i < other->count(); ++i) {
        other->setCurrentIndex(i);
        p.save(window, QStringLiteral("other-page-%1").arg(i + 1));
    }

    for (const QString& text : {QStringLiteral("快速设置过滤条件..."), QStringLiteral("下载地址设置..."),
                                QStringLiteral("机选号码..."), QStringLiteral("号码开出概率分析(&P)..."),
                                QStringLiteral("幸运号码(&L)...")}) {
        QAction* a = actionNamed(window, text);
        if (!a) {
            std::fprintf(stderr, "no menu entry %s\n", qPrintable(text));
            continue;
        }
        QString name = text;
        name.remove(QStringLiteral("...")).remove(QStringLiteral("(&P)")).remove(QStringLiteral("(&L)"));
        p.windowOf([a] { a->trigger(); }, QStringLiteral("window-") + name);
    }
    {
        BaziWindow w(window);
        w.show();
        w.button(5)->click();
        p.save(&w, QStringLiteral("birth-chart-window"));
    }

    // The back-test of the newest hundred draws with 和值 within 100..130.
    set_ShiYongQingKuang(1, 1);
    set_GuoLvFanWei(1000, 1183, 0);
    set_GuoLvFanWei(1100, 1130, 1);
    if (QAction* a = window->findChild<QAction*>(QStringLiteral("mnu_TiaoJianHuiCe"))) a->trigger();
    if (auto* backtest = window->findChild<BacktestWindow*>(QStringLiteral("frmTiaoJianHuiCe"))) {
        backtest->run();
        p.save(backtest, QStringLiteral("backtest-window"));
        backtest->close();
    }
    set_ShiYongQingKuang(1, 0);

    {
        ShrinkSettings frame(true);
        frame.resize(560, 600);
        frame.show();
        p.save(&frame, QStringLiteral("shrink-settings"));
    }
    set_GuoLvTiaoJian(kShrinkTypeId, 5);
    window->selectPage(TopPage::Tickets);
    for (int command : {kCmdExport, kCmdImport, kCmdFilter, kCmdPrizeCheck})
        p.windowOf([tickets, command] { QTest::mouseClick(tickets->command(command), Qt::LeftButton); },
                   QStringLiteral("tickets-command-%1").arg(command));
    p.windowOf([tickets] { QTest::mouseClick(tickets->command(kCmdShrink), Qt::LeftButton); },
               QStringLiteral("tickets-shrink-settings"));
    window->hide();
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const QString dir =
        argc > 1 ? QString::fromLocal8Bit(argv[1]) : qEnvironmentVariable("DOVREX_SCREENSHOTS");
    if (dir.isEmpty()) {
        std::fprintf(stderr, "usage: dovrex-pictures <folder>   (or DOVREX_SCREENSHOTS=<folder>)\n");
        return 2;
    }
    return run(dir);
}
