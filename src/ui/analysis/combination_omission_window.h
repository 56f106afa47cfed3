#pragma once

#include <QPointer>
#include <QWidget>

#include "analysis/jindu.h"

class QTableView;

namespace dovrex {

// FormZhuheYLTJ: the pair or triple table, the groups most overdue first. It closes when it loses
// the focus.
class CombinationOmissionWindow : public QWidget {
    Q_OBJECT
  public:
    explicit CombinationOmissionWindow(QWidget* parent = nullptr);
    QTableView* grid() const { return grid_; }

  protected:
    void changeEvent(QEvent* event) override;

  private:
    QTableView* grid_;
};

}  // namespace dovrex
