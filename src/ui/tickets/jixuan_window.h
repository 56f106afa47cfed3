#pragma once

#include <QDialog>
#include <cstdint>

#include "pipeline/random_pick.h"

class QPushButton;
class QTimer;

namespace dovrex {

// frmJixuan, 机选号码: draws up to five tickets and shows their balls one by one as they come.
class JiXuanWindow : public QDialog {
    Q_OBJECT
  public:
    JiXuanWindow(int zhuShu, uint64_t seed, QWidget* parent = nullptr, int msPerBall = 90);
    bool finished() const { return done_; }
    const JiXuanHao& hao() const { return draw_.hao(); }
    // Balls shown so far.
    int shown() const { return shown_; }

  private:
    void tick();

    JiXuanDraw draw_;
    QTimer* timer_;
    QWidget* board_;
    QPushButton* export_;
    int shown_ = 0;
    bool done_ = false;
};

// Asks how many tickets to draw and, for one to five, shows the window modally. Reached from the menu
// and meant for the lucky-number chooser too.
void showRandomPick(QWidget* parent);

}  // namespace dovrex
