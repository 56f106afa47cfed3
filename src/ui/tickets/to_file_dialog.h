#pragma once

#include <QDialog>
#include <array>

#include "screen/ticket_options.h"

class QCheckBox;
class QComboBox;

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

}  // namespace dovrex
