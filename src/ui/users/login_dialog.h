#pragma once

#include <QDialog>

class QComboBox;
class QLabel;
class QLineEdit;

namespace dovrex {

// frmODBCLogon: the login window of multi-user mode.
class LoginDialog : public QDialog {
    Q_OBJECT
  public:
    explicit LoginDialog(QWidget* parent = nullptr);
    bool loggedIn() const { return loggedIn_; }

  private:
    void submit();
    void newUser();

    QComboBox* names_;
    QLineEdit* password_;
    QLabel* hint_;
    bool loggedIn_ = false;
};

}  // namespace dovrex
