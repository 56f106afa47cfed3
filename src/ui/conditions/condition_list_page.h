#pragma once

#include <QList>

#include "filters/condition_pages.h"
#include "ui/conditions/condition_tab.h"
#include "ui/conditions/conditions_page.h"

class QCheckBox;
class QLabel;
class QSpinBox;

namespace dovrex {

class TickList;
class TrendPanel;

// One condition's page: its switch, the list of its values with ticks (each tick, run of ticks or
// from-to entry writes its rows at once), "当前取值阅览：" and the trend chart of the metric beside
// them. Tabs 2..10 and 16..26. A page of numbers has the from-to entry under its list.
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
    // The from-to entry of a page of numbers (null on the other pages).
    QSpinBox* rangeFrom() const { return from_; }
    QSpinBox* rangeTo() const { return to_; }
    // Ticks (or unticks) the lines from the entry's first value to its last.
    void tickRange(bool on);

  private:
    QWidget* makeRangeEntry(QWidget* parent);
    int conditionLineValue(int row) const;
    void tick(const QList<int>& rows, bool on);
    void showTip();
    QList<int> allowedValues() const;

    int tab_;
    ConditionList condition_;
    QCheckBox* check_;
    TickList* lines_;
    QLabel* tip_;
    TrendPanel* chart_;
    QSpinBox* from_ = nullptr;
    QSpinBox* to_ = nullptr;
};

}  // namespace dovrex
