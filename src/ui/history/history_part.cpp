// The 数据 menu's entries of the history page: the chart view, hand entry and the download.
#include <QAction>
#include <QMenu>

#include "ui/history/analysis_groups_dialog.h"

#include "ui/shell/form_main.h"
#include "ui/history/history_page.h"
#include "ui/shell/window_parts.h"
#include "widgets/command_trap.h"

namespace dovrex {
namespace {

QAction* addEntry(QMenu* menu, QAction* before, const QString& name, const QString& text, FormMain& window,
                  const std::function<void(HistoryPage&)>& run) {
    auto* action = new QAction(text, menu);
    action->setObjectName(name);
    menu->insertAction(before, action);
    connectCommand(action, &QAction::triggered, &window, [&window, run] {
        window.selectPage(TopPage::History);
        if (HistoryPage* page = window.historyPage()) run(*page);
    });
    return action;
}

}  // namespace

void installHistoryMenus(FormMain& window) {
    QMenu* data = window.menu(QStringLiteral("数据(&D)"));
    // After 历史数据, before the display modes.
    QAction* before = data->actions().value(1);
    addEntry(data, before, QStringLiteral("mnu_HistoryTubiao"), QStringLiteral("图表模式(&C)"), window,
             [](HistoryPage& p) { p.setView(HistoryView::Distribution); });
    addEntry(data, before, QStringLiteral("mnu_InputKaiJian"), QStringLiteral("手工添加开奖号码(&I)"), window,
             [](HistoryPage& p) { p.promptEntry(); });
    addEntry(data, before, QStringLiteral("mnu_AutoUpdate"), QStringLiteral("下载最新开奖数据(&U)"), window,
             [](HistoryPage& p) { p.downloadDraws(); });
    addEntry(data, before, QStringLiteral("mnu_UpdateFromFile"), QStringLiteral("从文件更新开奖数据(&F)..."), window,
             [](HistoryPage& p) { p.updateFromFile(); });
}

// At the end of the 分析 menu, after the analysis pages' entries.
void installAnalysisGroupOptions(FormMain& window) {
    QMenu* analysis = window.menu(QStringLiteral("分析(&A)"));
    analysis->addSeparator();
    QAction* groups = new QAction(QStringLiteral("分析表号码分组设置..."), analysis);
    groups->setObjectName(QStringLiteral("mnu_FenXiZu"));
    connectCommand(groups, &QAction::triggered, &window, [&window] {
        AnalysisGroupsDialog dialog(&window);
        dialog.exec();
        if (HistoryPage* page = window.historyPage(); page && page->view() == HistoryView::Analysis)
            page->refreshView();
    });
    analysis->addAction(groups);
}

}  // namespace dovrex
