#pragma once

#include <QWidget>
#include "ui/analysis/omission_chart.h"

#include "analysis/omission.h"

class QComboBox;
class QPushButton;

namespace dovrex {

// The 遗漏统计 page: which colour, up to which issue, the legend, and the chart. The probability
// analysis button sits beside it.
class OmissionPage : public QWidget {
    Q_OBJECT
  public:
    explicit OmissionPage(QWidget* parent = nullptr);

    OmissionChart* chart() const { return chart_; }
    QComboBox* itemCombo() const { return item_; }
    QComboBox* issueCombo() const { return issue_; }
    // draw_OmissionPage: computes the figures of the chosen colour up to the chosen issue and
    // lays out the groups.
    void refresh();
    // The history changed: the issue list is refilled at the next refresh (now, if in view).
    void historyChanged();

  protected:
    void showEvent(QShowEvent* event) override;

  private:
    QComboBox* item_;
    QComboBox* issue_;
    QPushButton* analyse_;
    OmissionChart* chart_;
    bool dirty_ = true;
    bool running_ = false;
};

}  // namespace dovrex
