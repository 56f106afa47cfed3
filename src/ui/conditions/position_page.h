#pragma once

#include <QList>
#include <array>

#include "ui/conditions/condition_list_page.h"

class QButtonGroup;
class QCheckBox;
class QComboBox;

namespace dovrex {

class TickList;

// Tab 15, 定位过滤: the numbers allowed at each of the seven positions with the tolerance, and the
// parity patterns to exclude.
class PositionPage : public ConditionTab {
    Q_OBJECT
  public:
    explicit PositionPage(QWidget* parent = nullptr);
    void reload() override;

    TickList* numbers(int position) const { return lists_.value(position - 1); }
    QCheckBox* positionSwitch(int position) const { return switches_.value(position - 1); }
    QButtonGroup* tolerance() const { return tolerance_; }
    QCheckBox* patternSwitch(int slot) const { return patternSwitches_.value(slot); }
    QComboBox* patternCombo(int slot, int position) const;

  private:
    void enableSwitch(int position);

    QList<TickList*> lists_;
    QList<QCheckBox*> switches_;
    QButtonGroup* tolerance_;
    QList<QCheckBox*> patternSwitches_;
    QList<QComboBox*> combos_;  // slot * 7 + position - 1
};

}  // namespace dovrex
