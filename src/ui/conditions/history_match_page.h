#pragma once

#include <QList>
#include <array>

#include "ui/conditions/condition_list_page.h"

class QCheckBox;
class QComboBox;
class QLabel;

namespace dovrex {

// Tab 28, 历史数据过滤: a range of past draws and how many reds a ticket may share with one of them.
class HistoryMatchPage : public ConditionTab {
    Q_OBJECT
  public:
    explicit HistoryMatchPage(QWidget* parent = nullptr);
    void reload() override;

    QCheckBox* useBox() const { return use_; }
    QComboBox* low() const { return low_; }
    QComboBox* high() const { return high_; }
    QComboBox* match() const { return match_; }

  private:
    // Combo_HistoryGuoLu_Click: writes the range and decides whether the match may be below 6.
    void rangeChosen();
    void write();

    QCheckBox* use_;
    QComboBox* low_;
    QComboBox* high_;
    QComboBox* match_;
    QLabel* count_;
    bool loading_ = false;
};

}  // namespace dovrex
