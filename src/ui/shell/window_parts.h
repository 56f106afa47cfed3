#pragma once

namespace dovrex {

class FormMain;

// Pages, tabs, menu entries and windows that go into the main window once its own pages and menus
// exist. FormMain::installParts calls them in the order they are listed here; a later part may
// reach into what an earlier one built (a menu, a tab).

// The pick page (condition tab 1) and the 投注号码 page.
void installPickPage(FormMain& window);
void installTicketsPage(FormMain& window);
// The condition tabs.
void installConditionListPages(FormMain& window);
void installHistoryMenus(FormMain& window);
void installIntervalPage(FormMain& window);
void installPositionPage(FormMain& window);
void installCustomGroupPage(FormMain& window);
void installHistoryMatchPage(FormMain& window);
void installConditionReportPage(FormMain& window);
// The pages of 其它.
void installOmissionPage(FormMain& window);
void installRecentHitsPage(FormMain& window);
void installCombinationPage(FormMain& window);
// Menus and secondary windows.
void installAnalysisGroupOptions(FormMain& window);
void installConditionFiles(FormMain& window);
void installQuickSettings(FormMain& window);
void installShrinkSettings(FormMain& window);
void installMirrorSettings(FormMain& window);
void installTicketTools(FormMain& window);
void installCalendarTools(FormMain& window);
// 条件回测 (分析 menu) and the tolerance beside the condition tabs.
void installBacktest(FormMain& window);
// 回测收益 (分析 menu).
void installReplay(FormMain& window);

}  // namespace dovrex
