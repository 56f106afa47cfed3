#pragma once

#include <QDialog>
#include <QTimer>

class QLabel;
class QPushButton;

namespace dovrex {

// frmTip: a small "信息提示" window that closes itself after a countdown, one tick a second; its
// button shows the seconds left ("知道了(n)") and closes it at once. It is not modal and deletes
// itself when closed.
class TimedTip : public QDialog {
    Q_OBJECT
  public:
    TimedTip(const QString& text, int seconds = 10, QWidget* parent = nullptr);
    int secondsLeft() const { return n_; }

  private:
    void tick();

    QLabel* description_;
    QPushButton* ok_;
    QTimer timer_;
    int n_;
};

}  // namespace dovrex
