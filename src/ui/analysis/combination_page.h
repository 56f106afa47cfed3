#pragma once

#include <QPointer>
#include <QWidget>

#include "analysis/jindu.h"

class QComboBox;
class QPushButton;
class QTableView;

namespace dovrex {

class JinDuPanel;

// FormZhuheYLTJ: the pair or triple table, the groups most overdue first. It closes when it loses
// the focus.
class ZhuHeYLTJWindow : public QWidget {
    Q_OBJECT
  public:
    explicit ZhuHeYLTJWindow(QWidget* parent = nullptr);
    QTableView* grid() const { return grid_; }

  protected:
    void changeEvent(QEvent* event) override;

  private:
    QTableView* grid_;
};

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
    ZhuHeYLTJWindow* tableWindow() const { return window_; }

  protected:
    void resizeEvent(QResizeEvent* event) override;

  private:
    QComboBox* size_;
    QPushButton* start_;
    myJinDuCTL state_;
    JinDuPanel* panel_;
    QPointer<ZhuHeYLTJWindow> window_;
};

}  // namespace dovrex
