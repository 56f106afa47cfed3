#pragma once

#include <QWidget>

namespace dovrex {

// frmInitapp: the picture shown while the store is opened. It is drawn, not loaded: the program's
// name over a row of balls.
class SplashWindow : public QWidget {
    Q_OBJECT
  public:
    explicit SplashWindow(QWidget* parent = nullptr);
    // Shows itself centred on the screen and paints before the slow steps begin.
    void showNow();

  protected:
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace dovrex
