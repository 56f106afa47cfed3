#pragma once

#include <QDialog>
#include <array>

class QLineEdit;
class QLabel;

namespace dovrex {

// 下载地址: the three addresses the draw list is downloaded from, in the order they are tried. Opens
// with what the store holds; 确定 keeps the three (an empty box goes back to its default), 恢复默认
// puts the shipped addresses in the boxes.
class MirrorSettingsDialog : public QDialog {
  public:
    explicit MirrorSettingsDialog(QWidget* parent = nullptr);

    QStringList addresses() const;
    void setAddresses(const QStringList& addresses);
    // Checks the boxes and stores them; false (with the reason shown) when one is not an address.
    bool save();

    void accept() override;

  private:
    std::array<QLineEdit*, 3> edits_{};
    QLabel* note_ = nullptr;
};

}  // namespace dovrex
