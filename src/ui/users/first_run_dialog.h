#pragma once

#include <QDialog>

class QButtonGroup;

namespace dovrex {

// frmFirstrun: single-user or multi-user mode, asked once at the first start.
class FirstRunDialog : public QDialog {
    Q_OBJECT
  public:
    explicit FirstRunDialog(QWidget* parent = nullptr);
    // 1 单用户模式 or 2 多用户模式 after 下一步; 0 after 退出系统.
    int chosenMode() const { return mode_; }

  private:
    QButtonGroup* options_;
    int mode_ = 0;
};

}  // namespace dovrex
