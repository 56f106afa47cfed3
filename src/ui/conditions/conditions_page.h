#pragma once

#include <QWidget>
#include "ui/conditions/condition_tab.h"

class QListWidget;
class QStackedWidget;
class QVBoxLayout;

namespace dovrex {

// The 过滤条件 top page: the list of condition pages (TabStrip_TiaoJian, 1-based as the program
// counts them: 1 选取号码 ... 30 查看全部) beside the page shown.
class ConditionsPage : public QWidget {
    Q_OBJECT
  public:
    explicit ConditionsPage(QWidget* parent = nullptr);

    static constexpr int kTabs = 30;
    static QString tabCaption(int index);

    // Puts a page at a tab (1..30) in place of its placeholder.
    void setTab(int index, QWidget* page);
    QWidget* tab(int index) const;
    void selectTab(int index);
    int currentTab() const;
    // Fills a tab again from the store (0: the tab shown), when it is a ConditionTab.
    void reloadTab(int index = 0);
    // A control under the list of tabs.
    void addSideWidget(QWidget* widget);

  signals:
    void tabSelected(int index);

  private:
    QListWidget* list_;
    QVBoxLayout* side_;
    QStackedWidget* stack_;
};

}  // namespace dovrex
