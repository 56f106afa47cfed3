#pragma once

#include <QDialog>

#include "filters/backtest.h"
#include "pipeline/space_filter.h"

class QComboBox;
class QLabel;
class QProgressBar;
class QPushButton;
class QTableWidget;

namespace dovrex {

class FormMain;

// 条件回测: each draw of a range measured with the current conditions as a ticket of its own issue.
// One row a draw (the conditions it failed), one row a condition (how often it held, its longest
// run of misses, the draws since its last miss), the survival with the tolerance, a chart of the
// pass rates, and both tables as CSV.
class BacktestWindow : public QDialog {
    Q_OBJECT
  public:
    explicit BacktestWindow(QWidget* parent = nullptr);
    // The one window, made on first use.
    static BacktestWindow* open(FormMain& window);

    void run();
    const BacktestResult& result() const { return result_; }

  private:
    void fillIssues();
    void showResult(const BacktestResult& r);
    void exportCsv(bool draws);

    QComboBox* from_;
    QComboBox* to_;
    QPushButton* start_;
    QPushButton* stop_;
    QProgressBar* progress_;
    QLabel* summary_;
    QTableWidget* draws_;
    QTableWidget* conditions_;
    QWidget* chart_;
    BacktestResult result_;
    SpaceResult space_;  // what each condition keeps of the current picks' space, for the grid's issue
};

}  // namespace dovrex
