#pragma once

#include <QList>
#include <array>

#include "ui/conditions/condition_list_page.h"
#include "ui/conditions/count_lists_page.h"

class QButtonGroup;
class QLabel;
class QPushButton;

namespace dovrex {

class NumberButtons;

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

}  // namespace dovrex
