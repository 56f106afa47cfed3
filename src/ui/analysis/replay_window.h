#pragma once

#include <QDialog>

#include "results/replay.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QProgressBar;
class QPushButton;
class QSpinBox;
class QTableWidget;

namespace dovrex {

// 回测收益: the player's whole routine replayed on the last N draws, in money: a row a draw (tickets,
// cost, hits by tier, money won, the random players' band of the money won so far), the totals with
// the one-sentence verdict, a chart of the cumulative balance beside the random band, and CSV.
class ReplayWindow : public QDialog {
    Q_OBJECT
  public:
    explicit ReplayWindow(QWidget* parent = nullptr);
    // The one window, made on first use.
    static ReplayWindow* open(QWidget* parent);

    void run();
    const ReplayResult& result() const { return result_; }

  private:
    void loadSettings();
    void showResult();
    void drawChart();
    void exportCsv();

    QSpinBox* draws_;
    QComboBox* shrink_;
    QCheckBox* optimised_;
    QSpinBox* budget_;
    QSpinBox* select_;
    QSpinBox* seed_;
    QPushButton* start_;
    QPushButton* stop_;
    QProgressBar* progress_;
    QLabel* summary_;
    QTableWidget* table_;
    QWidget* chart_;
    ReplayResult result_;
};

}  // namespace dovrex
