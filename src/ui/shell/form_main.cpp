#include "ui/shell/form_main.h"

#include <QAction>
#include <QActionGroup>
#include <QApplication>
#include <QCloseEvent>
#include <QMenuBar>
#include <QMessageBox>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>
#include <QScreen>
#include <QStatusBar>
#include <QTabWidget>
#include <functional>

#include "app/app_flow.h"
#include "app/help_text.h"
#include "ui/conditions/conditions_page.h"
#include "ui/shell/gui_screen.h"
#include "ui/shell/help_page.h"
#include "ui/history/history_page.h"
#include "ui/analysis/other_page.h"
#include "ui/shell/placeholder_page.h"
#include "ui/shell/window_parts.h"
#include "widgets/ball_art.h"
#include "widgets/command_trap.h"

namespace dovrex {

namespace {

const QString kProgramVersion = QStringLiteral("0.1");

QAction* menuEntry(QMenu* menu, const QString& name, const QString& text, QObject* context,
                   const std::function<void()>& slot) {
    QAction* action = menu->addAction(text);
    action->setObjectName(name);
    connectCommand(action, &QAction::triggered, context, slot);
    return action;
}

}  // namespace

FormMain::FormMain(AppFlow& flow, GuiScreen& screen, QWidget* parent)
    : QMainWindow(parent), flow_(flow), screen_(screen) {
    setObjectName(QStringLiteral("Form_main"));
    setWindowTitle(kProgramTitle);
    setWindowIcon(appIcon());

    tabs_ = new QTabWidget(this);
    tabs_->setObjectName(QStringLiteral("TabStrip_Top"));
    tabs_->setDocumentMode(true);
    setCentralWidget(tabs_);

    progress_ = new QProgressBar(this);
    progress_->setObjectName(QStringLiteral("ProgressBar_Status"));
    progress_->setMaximumWidth(180);
    progress_->setMaximumHeight(16);
    progress_->setTextVisible(false);
    progress_->hide();
    statusBar()->setSizeGripEnabled(true);
    statusBar()->addPermanentWidget(progress_);

    screen_.setWindow(this);
    screen_.setStatusBar(statusBar());
    screen_.setProgressBar(progress_);

    buildPages();
    buildMenus();
    installParts();
}

void FormMain::installParts() {
    for (void (*install)(FormMain&) :
         {installPickPage, installTicketsPage, installConditionListPages, installHistoryMenus,
          installIntervalPage, installPositionPage, installCustomGroupPage, installHistoryMatchPage,
          installConditionReportPage, installOmissionPage, installRecentHitsPage, installCombinationPage,
          installAnalysisGroupOptions, installConditionFiles, installQuickSettings, installShrinkSettings,
          installMirrorSettings, installTicketTools, installCalendarTools, installBacktest})
        install(*this);
}

OtherPage* FormMain::otherPage() const {
    return qobject_cast<OtherPage*>(page(TopPage::Other));
}

ConditionsPage* FormMain::conditionsPage() const {
    return qobject_cast<ConditionsPage*>(page(TopPage::Conditions));
}

QMenu* FormMain::menu(const QString& title) {
    QMenu* helpMenu = nullptr;
    for (QAction* a : menuBar()->actions()) {
        if (!a->menu()) continue;
        if (a->text() == title) return a->menu();
        if (a->menu()->objectName() == QLatin1String("mnu_HelpMenu")) helpMenu = a->menu();
    }
    auto* m = new QMenu(title, menuBar());
    if (helpMenu)
        menuBar()->insertMenu(helpMenu->menuAction(), m);
    else
        menuBar()->addMenu(m);
    return m;
}

void FormMain::buildPages() {
    tabs_->addTab(new ConditionsPage(tabs_), QStringLiteral("过滤条件"));
    tabs_->addTab(new OtherPage(tabs_), QStringLiteral("其它"));
    tabs_->addTab(new HistoryPage(tabs_), QStringLiteral("历史数据"));
    tabs_->addTab(
        new PlaceholderPage(
            QStringLiteral("投注号码"),
            QStringLiteral("过滤、缩水之后的投注号码列表，可导出、导入、合并，并可与开奖号码对奖。"), tabs_),
        QStringLiteral("投注号码"));
    tabs_->addTab(new HelpPage(flow_.paths().helpPage(), tabs_), msg::kHelpTab);
}

QWidget* FormMain::page(TopPage which) const {
    return tabs_->widget(int(which));
}

void FormMain::setPage(TopPage which, QWidget* page) {
    const int index = int(which);
    const QString caption = tabs_->tabText(index);
    const bool current = tabs_->currentIndex() == index;
    QWidget* old = tabs_->widget(index);
    tabs_->removeTab(index);
    tabs_->insertTab(index, page, caption);
    if (current) tabs_->setCurrentIndex(index);
    delete old;
}

void FormMain::selectPage(TopPage which) {
    tabs_->setCurrentIndex(int(which));
}

HistoryPage* FormMain::historyPage() const {
    return qobject_cast<HistoryPage*>(page(TopPage::History));
}

void FormMain::buildMenus() {
    QMenu* file = menuBar()->addMenu(QStringLiteral("文件(&F)"));
    // Not a command: a close stays open while a pass runs, and stops it.
    QAction* quit = file->addAction(QStringLiteral("退出(&X)"));
    quit->setObjectName(QStringLiteral("mnu_Exit"));
    connect(quit, &QAction::triggered, this, [this] { close(); });
    quit->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Q));

    QMenu* data = menuBar()->addMenu(QStringLiteral("数据(&D)"));
    menuEntry(data, QStringLiteral("mnu_HistoryData"), QStringLiteral("历史数据(&H)"), this,
              [this] { selectPage(TopPage::History); });
    data->addSeparator();
    auto* modes = new QActionGroup(this);
    showAllAction_ = menuEntry(data, QStringLiteral("mnu_HistoryShowAll"), QStringLiteral("显示全部开奖记录"),
                               this, [this] {
                                   selectPage(TopPage::History);
                                   if (HistoryPage* h = historyPage()) h->setMode(HistoryShowMode::All);
                               });
    show100Action_ = menuEntry(data, QStringLiteral("mnu_HistoryShow100"), QStringLiteral("只显示最近100期"),
                               this, [this] {
                                   selectPage(TopPage::History);
                                   if (HistoryPage* h = historyPage()) h->setMode(HistoryShowMode::Newest100);
                               });
    for (QAction* a : {showAllAction_, show100Action_}) {
        a->setCheckable(true);
        modes->addAction(a);
    }
    showAllAction_->setChecked(true);
    if (HistoryPage* h = historyPage()) {
        connect(h, &HistoryPage::modeChanged, this, [this](HistoryShowMode mode) {
            (mode == HistoryShowMode::All ? showAllAction_ : show100Action_)->setChecked(true);
        });
    }

    QMenu* tools = menuBar()->addMenu(QStringLiteral("工具(&T)"));
    menuEntry(tools, QStringLiteral("mnu_OpenProgramDir"), QStringLiteral("打开数据文件夹(&O)"), this,
              [this] { screen_.ui_OpenFile(flow_.paths().programDir); });

    QMenu* help = menuBar()->addMenu(QStringLiteral("帮助(&H)"));
    help->setObjectName(QStringLiteral("mnu_HelpMenu"));
    QAction* manual =
        menuEntry(help, QStringLiteral("mnu_Help"), QStringLiteral("使用帮助(&H)"), this, [this] {
            // F1 opens the manual at the section of the page in use.
            const int from = tabs_->currentIndex();
            auto* conditions = qobject_cast<ConditionsPage*>(page(TopPage::Conditions));
            const int section = helpSectionForPage(from, conditions ? conditions->currentTab() : 0);
            selectPage(TopPage::Web);
            if (auto* help = qobject_cast<HelpPage*>(page(TopPage::Web))) help->showSection(section);
        });
    manual->setShortcut(QKeySequence::HelpContents);
    help->addSeparator();
    menuEntry(help, QStringLiteral("mnu_About"), QStringLiteral("关于(&A)"), this, [this] { showAbout(); });
}

void FormMain::showAbout() {
    QMessageBox box(QMessageBox::NoIcon, QStringLiteral("关于 ") + kProgramTitle,
                    QStringLiteral("<h3>%1 %2</h3>"
                                   "<p>为双色球彩民准备的选号工具：选定胆码拖码，展开成投注号码，"
                                   "按几十种条件过滤，再以旋转矩阵缩水，并对照历史开奖记录分析、对奖。</p>"
                                   "<p>所有数据都保存在本机，退出程序时写入数据文件。</p>")
                        .arg(kProgramTitle, kProgramVersion),
                    QMessageBox::Ok, this);
    box.setIconPixmap(appIcon().pixmap(64, 64));
    box.button(QMessageBox::Ok)->setText(QStringLiteral("确定"));
    box.exec();
}

void FormMain::fitToScreen() {
    const QScreen* s = screen();
    const QRect area = s ? s->availableGeometry() : QRect(0, 0, 1366, 728);
    const QSize wanted(qMin(1280, int(area.width() * 0.94)), qMin(800, int(area.height() * 0.94)));
    setMinimumSize(qMin(900, area.width()), qMin(560, area.height()));
    resize(wanted.expandedTo(minimumSize()).boundedTo(area.size()));
    move(area.center() - QPoint(width() / 2, height() / 2));
}

void FormMain::closeEvent(QCloseEvent* event) {
    if (exited_) {
        event->accept();
        return;
    }
    if (!exitApproved_) {
        // Asked once: a second request while a pass winds down changes nothing.
        if (closePending() || !screen_.ui_Confirm(msg::kConfirmExit)) {
            event->ignore();
            return;
        }
        // A command is running under this event: it stops first, and the exit waits until it has
        // returned, because the store must outlive it.
        const bool deferred = deferCloseUntilIdle([window = QPointer<FormMain>(this)] {
            if (!window) return;
            window->exitApproved_ = true;
            window->close();
        });
        if (deferred) {
            event->ignore();
            return;
        }
    }
    exited_ = true;
    screen_.releaseGrids();
    bool saved = false;
    runCommand([&] { saved = flow_.saveAndClose(); });
    if (!saved) screen_.ui_Message(saveMessage(flow_.lastSave()), MessageKind::Error);
    event->accept();
    emit exited(saved);
}

}  // namespace dovrex
