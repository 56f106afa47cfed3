#include "widgets/pick_button.h"

#include <QKeyEvent>
#include <QPainter>
#include <QPainterPath>

#include "widgets/ball_art.h"

namespace dovrex {

// The old program's colours: 49152 (green) for a drag, 192 (dark red) for a banker.
const QColor PickButton::kDragColour(0, 192, 0);
const QColor PickButton::kBankerColour(192, 0, 0);

PickButton::PickButton(int number, bool blue, QWidget* parent)
    : QAbstractButton(parent), number_(number), blue_(blue) {
    setText(QStringLiteral("%1").arg(number, 2, 10, QLatin1Char('0')));
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    setMaximumSize(60, 48);
    updateToolTip();
}

void PickButton::setPick(int value) {
    if (value == pick_) return;
    pick_ = value;
    updateToolTip();
    update();
}

void PickButton::setMarked(bool marked) {
    if (marked == marked_) return;
    marked_ = marked;
    updateToolTip();
    update();
}

void PickButton::setBallFace(bool ball) {
    if (ball == ballFace_) return;
    ballFace_ = ball;
    update();
}

void PickButton::updateToolTip() {
    QString tip = (blue_ ? QStringLiteral("蓝球 ") : QStringLiteral("红球 ")) + text() +
                  (pick_ == 2   ? QStringLiteral("：胆码")
                   : pick_ == 1 ? QStringLiteral("：拖码")
                                : QStringLiteral("：未选"));
    if (marked_) tip += QStringLiteral("（概率分析：开出机率很低）");
    setToolTip(tip);
    setAccessibleName(tip);
}

QSize PickButton::sizeHint() const {
    const int h = fontMetrics().height();
    return {qMax(46, h * 2 + 14), qMax(40, h * 2 + 6)};
}

QSize PickButton::minimumSizeHint() const {
    const int w = fontMetrics().horizontalAdvance(QStringLiteral("00")) + 10;
    return {w, fontMetrics().height() + 10};
}

QFont PickButton::numberFont(qreal pixelSize) const {
    QFont f = font();
    f.setPixelSize(qMax(9, int(pixelSize)));
    f.setBold(marked_ || pick_ != 0);
    f.setStrikeOut(marked_);
    f.setUnderline(marked_);
    return f;
}

void PickButton::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    const QRectF r = QRectF(rect()).adjusted(1.5, 1.5, -1.5, -1.5);
    if (ballFace_)
        paintBallFace(p, r);
    else
        paintButtonFace(p, r);
    if (hasFocus()) {
        QPen pen(palette().color(QPalette::Highlight), 2, Qt::DotLine);
        p.setPen(pen);
        p.setBrush(Qt::NoBrush);
        p.drawRoundedRect(r.adjusted(1, 1, -1, -1), 4, 4);
    }
}

void PickButton::paintButtonFace(QPainter& p, const QRectF& r) {
    const QPalette& pal = palette();
    QColor face = pick_ == 2 ? kBankerColour : pick_ == 1 ? kDragColour : pal.color(QPalette::Button);
    if (isDown())
        face = face.darker(115);
    else if (underMouse() && isEnabled())
        face = face.lighter(pick_ ? 112 : 104);
    QColor ink = pick_ != 0 ? QColor(Qt::white) : blue_ ? kBlueBall.darker(115) : kRedBall.darker(110);
    if (!isEnabled()) {
        face = pal.color(QPalette::Disabled, QPalette::Button);
        ink = pal.color(QPalette::Disabled, QPalette::ButtonText);
    }
    p.setPen(QPen(face.darker(pick_ ? 140 : 125), 1));
    p.setBrush(face);
    p.drawRoundedRect(r, 4, 4);
    p.setFont(numberFont(r.height() * 0.46));
    p.setPen(ink);
    p.drawText(r, Qt::AlignCenter, text());
}

void PickButton::paintBallFace(QPainter& p, const QRectF& area) {
    const qreal d = qMin(area.width(), area.height());
    const QRectF r(area.center().x() - d / 2, area.center().y() - d / 2, d, d);
    const QColor own = blue_ ? kBlueBall : kRedBall;
    QColor colour = pick_ == 0 ? QColor(0xEE, 0xEE, 0xEE) : pick_ == 2 ? own.darker(135) : own;
    if (!isEnabled()) colour = QColor(0xC8, 0xC8, 0xC8);
    if (isDown()) colour = colour.darker(112);
    paintBall(p, r, colour);
    if (pick_ == 2) {
        // A banker wears a gold ring.
        const qreal w = qMax(2.5, d * 0.1);
        p.setPen(QPen(QColor(0xF5, 0xB8, 0x14), w));
        p.setBrush(Qt::NoBrush);
        p.drawEllipse(r.adjusted(w / 2, w / 2, -w / 2, -w / 2));
    }
    p.setFont(numberFont(d * 0.42));
    p.setPen(!isEnabled() ? palette().color(QPalette::Disabled, QPalette::ButtonText)
             : pick_ == 0 ? own.darker(110)
                          : QColor(Qt::white));
    p.drawText(r, Qt::AlignCenter, text());
}

void PickButton::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
        case Qt::Key_Left:
        case Qt::Key_Right:
        case Qt::Key_Up:
        case Qt::Key_Down:
            emit arrowPressed(event->key());
            event->accept();
            return;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            if (!event->isAutoRepeat()) click();
            event->accept();
            return;
        default:
            QAbstractButton::keyPressEvent(event);
    }
}

}  // namespace dovrex
