#pragma once

#include <QWidget>

#include "history/history_display.h"

class QButtonGroup;
class QHBoxLayout;
class QLabel;
class QRadioButton;
class QTableView;

namespace dovrex {

class CursorModel;

// The 历史数据 page: the grid of 历史记录 with its display mode. The bar above the grid keeps its
// left side free for the draw entry row.
class HistoryPage : public QWidget {
    Q_OBJECT
  public:
    explicit HistoryPage(QWidget* parent = nullptr);

    QTableView* grid() const { return grid_; }
    CursorModel* model() const { return model_; }
    // The row where the entry boxes go.
    QHBoxLayout* entryRow() const { return entryRow_; }

    // Puts the mode kept in the store on the options and fills the grid.
    void showHistory();
    // Option_historyShow_Click: keeps the choice in the store and redraws.
    void setMode(HistoryShowMode mode);
    HistoryShowMode mode() const;

  signals:
    void modeChanged(HistoryShowMode mode);

  private:
    void updateCount();

    QTableView* grid_;
    CursorModel* model_;
    QHBoxLayout* entryRow_;
    QLabel* count_;
    QRadioButton* showAll_;
    QRadioButton* show100_;
    QButtonGroup* modes_;
};

}  // namespace dovrex
