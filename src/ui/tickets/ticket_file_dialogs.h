#pragma once

#include <QDialog>
#include <array>

#include "screen/ticket_options.h"

class QCheckBox;
class QComboBox;
class QLineEdit;
class QLabel;
class QRadioButton;

namespace dovrex {

// frmToFile: what an export writes. Opens on the given options; options() holds the choice.
class ToFileDialog : public QDialog {
    Q_OBJECT
  public:
    explicit ToFileDialog(const TicketExportOptions& options, QWidget* parent = nullptr);
    TicketExportOptions options() const;

  private:
    void choosePreset(int index);

    std::array<QCheckBox*, 4> switches_{};
    QComboBox* presets_;
    QComboBox* redSeparator_;
    QComboBox* blueSeparator_;
};

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
