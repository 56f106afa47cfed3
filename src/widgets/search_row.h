#pragma once

#include <QList>
#include <QPair>
#include <QPointer>
#include <QString>
#include <QWidget>

class QLineEdit;
class QTableView;

namespace dovrex {

// The filter row of a grid: one input under each visible column, kept aligned with the grid's
// header as columns are resized or scrolled. Enter in any input asks for the search.
class SearchRow : public QWidget {
    Q_OBJECT
  public:
    explicit SearchRow(QTableView* grid, QWidget* parent = nullptr);

    // (field name, text) of every input that holds text, in column order.
    QList<QPair<QString, QString>> terms() const;
    // Empties every input.
    void clear();
    // The input of a column (for tests and focus), null when there is none.
    QLineEdit* input(int column) const;
    QSize sizeHint() const override;

  signals:
    void searchRequested();

  private:
    void rebuild();
    void relayout();

    QPointer<QTableView> grid_;
    QList<QLineEdit*> inputs_;
};

}  // namespace dovrex
