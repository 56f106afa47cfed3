#pragma once

#include <QList>
#include <array>

#include "ui/conditions/condition_list_page.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QListWidget;

namespace dovrex {

class NumberButtons;
class TickList;

// Tab 27, 自定义过滤: the twenty custom groups, the members and allowed counts of the one chosen.
class CustomGroupPage : public ConditionTab {
    Q_OBJECT
  public:
    explicit CustomGroupPage(QWidget* parent = nullptr);
    void reload() override;

    QListWidget* groups() const { return groups_; }
    NumberButtons* numbers() const { return numbers_; }
    TickList* counts() const { return counts_; }
    QCheckBox* useBox() const { return use_; }
    QComboBox* common() const { return common_; }
    int group() const;
    void selectGroup(int k);
    void rename();
    void empty(bool all);

  private:
    void showGroup();
    void refreshList();

    QListWidget* groups_;
    QLabel* title_;
    NumberButtons* numbers_;
    TickList* counts_;
    QCheckBox* use_;
    QComboBox* common_;
};

}  // namespace dovrex
