#pragma once

#include <QList>

#include "filters/condition_pages.h"
#include "ui/conditions/condition_tab.h"
#include "ui/conditions/conditions_page.h"

class QCheckBox;
class QLabel;

namespace dovrex {

class TickList;
class TrendPanel;

// One condition's page: its switch, the list of its values with ticks (each tick writes its row at
// once), "当前取值阅览：" and the trend chart of the metric beside them. Tabs 2..10 and 16..26.
class ConditionListPage : public ConditionTab {
    Q_OBJECT
  public:
    explicit ConditionListPage(int tab, QWidget* parent = nullptr);
    void reload() override;

    int tab() const { return tab_; }
    QCheckBox* switchBox() const { return check_; }
    TickList* list() const { return lines_; }
    QLabel* tip() const { return tip_; }
    TrendPanel* chart() const { return chart_; }

  private:
    void tick(int row, bool on);
    void showTip();
    QList<int> allowedColumns() const;

    int tab_;
    ConditionList condition_;
    QCheckBox* check_;
    TickList* lines_;
    QLabel* tip_;
    TrendPanel* chart_;
};

}  // namespace dovrex
