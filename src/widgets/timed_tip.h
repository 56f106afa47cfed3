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

// frmTip10: a "信息提示" window with one button, cmmNO, that counts five seconds while data is being
// prepared ("正在准备数据(n)......") and then closes itself. Not modal; deletes itself when closed.
class PreparingTip : public QDialog {
    Q_OBJECT
  public:
    explicit PreparingTip(QWidget* parent = nullptr);
    int secondsLeft() const { return n_; }

  private:
    void tick();

    QPushButton* no_;
    QTimer timer_;
    int n_ = 5;
};

}  // namespace dovrex
