#pragma once

#include <QTableView>

namespace dovrex {

class CursorModel;

// TDBGrid_FenBu: the number distribution, a ball in each cell of a number drawn, and below the
// draws the pick row of the next issue. A left click in the pick row makes the number a drag, a
// right click a banker, a further click clears it.
class FenBuGrid : public QTableView {
    Q_OBJECT
  public:
    explicit FenBuGrid(QWidget* parent = nullptr);

    CursorModel* cursorModel() const;
    // Fills the table for the range and shows it, the pick row in view.
    int fill(int fromIssue, int toIssue);
    // Widths and row heights after each binding.
    void dress();
    // A press on a cell, as the mouse does it (tests call it directly). True when the pick changed.
    bool pressCell(int row, int column, bool leftButton);

  signals:
    void picksChanged();

  protected:
    void mousePressEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
};

}  // namespace dovrex
