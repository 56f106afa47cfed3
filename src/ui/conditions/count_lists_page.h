#pragma once

#include <QList>

#include "filters/condition_pages.h"
#include "ui/conditions/condition_tab.h"
#include "ui/conditions/conditions_page.h"

class QCheckBox;
class QTableView;

namespace dovrex {

class TickList;

// Pages of several count lists, each with its switch, beside the grid of the counts of every draw:
// the pairs of tabs 11..13 (奇偶比, 大小比, 高低尾码).
class CountListsPage : public ConditionTab {
    Q_OBJECT
  public:
    explicit CountListsPage(int tab, QWidget* parent = nullptr);
    void reload() override;

    QList<QCheckBox*> switches() const { return checks_; }
    QList<TickList*> lists() const { return lists_; }
    QTableView* grid() const { return grid_; }

  protected:
    // The lists in a row, for a page that adds controls around them.
    QWidget* listsRow() const { return row_; }
    QWidget* leftColumn() const { return left_; }

  private:
    int tab_;
    QList<ConditionList> conditions_;
    QList<QCheckBox*> checks_;
    QList<TickList*> lists_;
    QTableView* grid_;
    QWidget* row_;
    QWidget* left_;
};

}  // namespace dovrex
