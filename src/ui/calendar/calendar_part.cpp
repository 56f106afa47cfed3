// The lucky number chooser in the 工具 menu, and the calendar with the birth-chart pick as a tool
// of the 其它 page.
#include <QAction>
#include <QHBoxLayout>
#include <QMenu>
#include <QPushButton>
#include <QVBoxLayout>

#include "ui/calendar/bazi_window.h"

#include "ui/shell/form_main.h"
#include "ui/calendar/lucky_number_window.h"
#include "ui/analysis/other_page.h"
#include "ui/shell/window_parts.h"
#include "widgets/cn_calendar.h"
#include "widgets/command_trap.h"

namespace dovrex {
namespace {

QWidget* calendarTool(FormMain& window) {
    auto* page = new QWidget;
    page->setObjectName(QStringLiteral("Frm_Rili"));
    auto* calendar = new CnCalendar(page);
    calendar->setBirthTimeShown(false);
    calendar->setBig(true);
    auto* lucky = new QPushButton(QStringLiteral("幸运号码..."), page);
    lucky->setObjectName(QStringLiteral("cmmRiliLucky"));
    auto* bazi = new QPushButton(QStringLiteral("根据生辰八字选一组号码..."), page);
    bazi->setObjectName(QStringLiteral("cmmRiliBazi"));
    connectCommand(lucky, &QPushButton::clicked, &window, [&window] {
        LuckyNumberWindow chooser(&window);
        chooser.exec();
    });
    connectCommand(bazi, &QPushButton::clicked, &window, [&window] { baziOpener()(&window); });
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(lucky);
    buttons->addWidget(bazi);
    auto* layout = new QVBoxLayout(page);
    layout->addWidget(calendar, 1);
    layout->addLayout(buttons);
    return page;
}

}  // namespace

void installCalendarTools(FormMain& window) {
    ensureNongLiTables();
    QMenu* tools = window.menu(QStringLiteral("工具(&T)"));
    tools->addSeparator();
    QAction* action = tools->addAction(QStringLiteral("幸运号码(&L)..."));
    action->setObjectName(QStringLiteral("mnu_LuckyNumber"));
    connectCommand(action, &QAction::triggered, &window, [&window] {
        LuckyNumberWindow chooser(&window);
        chooser.exec();
    });
    if (OtherPage* other = window.otherPage()) other->addTool(calendarTool(window), QStringLiteral("万年历"));
}

}  // namespace dovrex
