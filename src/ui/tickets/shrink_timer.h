#pragma once

#include <QFrame>
#include <array>

class QTimer;

namespace dovrex {

// TimerSuosuijinxingzong: an invisible control whose enabled state starts and stops the moving bar
// of a shrink, as the logic switches it through the screen.
class ShrinkTimer : public QWidget {
    Q_OBJECT
  public:
    explicit ShrinkTimer(QWidget* parent);
    bool running() const;

  protected:
    void changeEvent(QEvent* event) override;

  private:
    QTimer* timer_;
};

}  // namespace dovrex
