#pragma once

#include <QDialog>

class QTableWidget;

namespace dovrex {

// frmOptions: the 20 number groups of the analysis table, one column a group, one row a number.
// Each tick is written at once.
class AnalysisGroupsDialog : public QDialog {
    Q_OBJECT
  public:
    explicit AnalysisGroupsDialog(QWidget* parent = nullptr);
    QTableWidget* table() const { return table_; }

  private:
    QTableWidget* table_;
    bool loading_ = false;
};

}  // namespace dovrex
