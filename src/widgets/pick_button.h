#pragma once

#include <QAbstractButton>
#include <QColor>

namespace dovrex {

// One number of the pick page (cmm_C7): a plain button whose face shows the pick (none, drag,
// banker) or, in the other display, a ball. A number the probability analysis marked is written
// struck through, bold and underlined. Space picks it; the arrow keys are passed on to the page
// through arrowPressed so that the numbers form one grid for the keyboard.
class PickButton : public QAbstractButton {
    Q_OBJECT
  public:
    PickButton(int number, bool blue, QWidget* parent = nullptr);

    // The face colours of a drag and of a banker.
    static const QColor kDragColour;
    static const QColor kBankerColour;

    int number() const { return number_; }
    bool isBlue() const { return blue_; }
    // 0 none, 1 drag, 2 banker.
    int pick() const { return pick_; }
    void setPick(int value);
    bool isMarked() const { return marked_; }
    void setMarked(bool marked);
    bool ballFace() const { return ballFace_; }
    void setBallFace(bool ball);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  signals:
    void arrowPressed(int key);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void paintButtonFace(QPainter& p, const QRectF& r);
    void paintBallFace(QPainter& p, const QRectF& r);
    QFont numberFont(qreal pixelSize) const;
    void updateToolTip();

    int number_;
    bool blue_;
    int pick_ = 0;
    bool marked_ = false;
    bool ballFace_ = false;
};

}  // namespace dovrex
