#pragma once

#include <QFrame>

class QLabel;
class QProgressBar;
class QPushButton;

namespace dovrex {

class myJinDuCTL;

// The progress panel: its text, the bar, the count done of the count to do, and 停 止. It shows
// whatever the panel state holds and raises its stop request; it shows and hides with it.
class JinDuPanel : public QFrame {
    Q_OBJECT
  public:
    explicit JinDuPanel(myJinDuCTL& state, QWidget* parent = nullptr);
    myJinDuCTL& state() const { return state_; }
    QPushButton* stopButton() const { return stop_; }
    QProgressBar* bar() const { return bar_; }
    QString countText() const;

  private:
    void sync();

    myJinDuCTL& state_;
    QLabel* tip_;
    QProgressBar* bar_;
    QLabel* done_;
    QLabel* all_;
    QFrame* stopFrame_;
    QPushButton* stop_;
};

}  // namespace dovrex
