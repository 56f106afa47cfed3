#pragma once

#include <QWidget>
#include <vector>

#include "analysis/history_tables.h"

class QComboBox;
class QLabel;

class QChartView;

namespace dovrex {

// 最近N期开出次数统计: how often each red or blue number came up in a range of issues, as bars.
class RecentHitsPage : public QWidget {
    Q_OBJECT
  public:
    explicit RecentHitsPage(QWidget* parent = nullptr);

    QComboBox* fromCombo() const { return from_; }
    QComboBox* toCombo() const { return to_; }
    QComboBox* itemCombo() const { return item_; }
    const std::vector<HitBar>& bars() const { return bars_; }
    // fill_IssueCombos: every issue, the newest ten chosen.
    void fillIssues();
    // Combo_MSChartItem_Click: counts and draws.
    void count();
    void historyChanged();

  protected:
    void showEvent(QShowEvent* event) override;

  private:
    QComboBox* from_;
    QComboBox* to_;
    QComboBox* item_;
    QLabel* summary_;
    QChartView* chart_;
    std::vector<HitBar> bars_;
    bool dirty_ = true;
};

}  // namespace dovrex
