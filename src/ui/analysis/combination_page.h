#pragma once

#include <QPointer>
#include <QWidget>
#include "ui/analysis/combination_omission_window.h"

#include "analysis/jindu.h"

class QComboBox;
class QPushButton;

namespace dovrex {

class JinDuPanel;

// The 组合遗漏 page: which size of group, the command, and the progress panel while it counts.
class CombinationPage : public QWidget {
    Q_OBJECT
  public:
    explicit CombinationPage(QWidget* parent = nullptr);

    QComboBox* sizeCombo() const { return size_; }
    JinDuPanel* panel() const { return panel_; }
    // The entry of ComboChosenumber: counts the groups of `size` (2 or 3) and shows the table.
    // Returns the groups written, -1 when the user cancelled at the warning.
    int run(int size);
    CombinationOmissionWindow* tableWindow() const { return window_; }

  protected:
    void resizeEvent(QResizeEvent* event) override;

  private:
    QComboBox* size_;
    QPushButton* start_;
    myJinDuCTL state_;
    JinDuPanel* panel_;
    QPointer<CombinationOmissionWindow> window_;
};

}  // namespace dovrex
