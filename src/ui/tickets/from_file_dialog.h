#pragma once

#include <QDialog>
#include <array>

#include "screen/ticket_options.h"

class QLineEdit;
class QLabel;
class QRadioButton;

namespace dovrex {

// frmFromFile: the line layout of an import and the issue its tickets get.
class FromFileDialog : public QDialog {
    Q_OBJECT
  public:
    explicit FromFileDialog(const TicketImportOptions& options, QWidget* parent = nullptr);
    TicketImportOptions options() const;
    // cmm_ToFileOK: closes unless the input is refused (the dialog says why and stays).
    void accept() override;

  private:
    void layoutChosen();

    std::array<QRadioButton*, 3> layouts_{};
    QLabel* issueLabel_;
    QLineEdit* issue_;
};

}  // namespace dovrex
