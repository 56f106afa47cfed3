#pragma once

#include <QList>
#include <array>

#include "ui/conditions/condition_list_pages.h"

class QButtonGroup;
class QCheckBox;
class QComboBox;
class QLabel;
class QListWidget;
class QPushButton;

namespace dovrex {

class NumberButtons;
class TickList;

// Tab 14, 区间设置: the four interval count lists, and the intervals themselves drawn number by
// number. Leaving the page after a change recounts the intervals of every draw.
class IntervalPage : public CountListsPage {
    Q_OBJECT
  public:
    explicit IntervalPage(QWidget* parent = nullptr);
    void reload() override;

    QButtonGroup* choice() const { return choice_; }
    NumberButtons* numbers() const { return numbers_; }
    QPushButton* clearButton() const { return clear_; }

  protected:
    void hideEvent(QHideEvent* event) override;

  private:
    void showMembers();

    QButtonGroup* choice_;
    NumberButtons* numbers_;
    QLabel* members_;
    QPushButton* clear_;
    bool changed_ = false;
};

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
