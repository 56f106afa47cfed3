#include "ui/shell/splash_window.h"

#include <QApplication>
#include <QLinearGradient>
#include <QPainter>
#include <QScreen>

#include "widgets/ball_art.h"

namespace dovrex {

SplashWindow::SplashWindow(QWidget* parent)
    : QWidget(parent, Qt::SplashScreen | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint) {
    setObjectName(QStringLiteral("frmInitapp"));
    setAttribute(Qt::WA_DeleteOnClose);
    setFixedSize(520, 300);
    setWindowTitle(QStringLiteral("双色球 dovrex"));
}

void SplashWindow::showNow() {
    if (QScreen* s = screen()) {
        const QRect area = s->availableGeometry();
        move(area.center() - rect().center());
    }
    show();
    raise();
    repaint();
    QCoreApplication::processEvents();
}

void SplashWindow::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    const QRectF area = rect();

    QLinearGradient sky(area.topLeft(), area.bottomLeft());
    sky.setColorAt(0, QColor(0x8E, 0x0E, 0x16));
    sky.setColorAt(1, QColor(0x3A, 0x05, 0x0A));
    p.fillRect(area, sky);
    p.setPen(QPen(QColor(0xF3, 0xC6, 0x5F), 3));
    p.setBrush(Qt::NoBrush);
    p.drawRect(area.adjusted(6, 6, -7, -7));

    QFont title = font();
    title.setPixelSize(50);
    title.setBold(true);
    p.setFont(title);
    p.setPen(QColor(0xFF, 0xE0, 0x8A));
    p.drawText(QRectF(0, 34, area.width(), 70), Qt::AlignCenter, QStringLiteral("双色球"));

    QFont name = font();
    name.setPixelSize(24);
    name.setLetterSpacing(QFont::AbsoluteSpacing, 6);
    p.setFont(name);
    p.setPen(Qt::white);
    p.drawText(QRectF(0, 102, area.width(), 34), Qt::AlignCenter, QStringLiteral("dovrex"));

    // Six reds and a blue, as a draw shows them.
    const int numbers[7] = {3, 9, 16, 21, 27, 32, 8};
    const qreal d = 46, gap = 10;
    const qreal width = 7 * d + 6 * gap + 8;
    qreal x = (area.width() - width) / 2;
    for (int i = 0; i < 7; ++i) {
        if (i == 6) x += 8;
        paintBall(p, QRectF(x, 160, d, d), i < 6 ? kRedBall : kBlueBall,
                  QStringLiteral("%1").arg(numbers[i], 2, 10, QLatin1Char('0')));
        x += d + gap;
    }

    QFont note = font();
    note.setPixelSize(14);
    p.setFont(note);
    p.setPen(QColor(0xF0, 0xD8, 0xD8));
    p.drawText(QRectF(0, 240, area.width(), 30), Qt::AlignCenter, QStringLiteral("正在载入数据，请稍候……"));
}

}  // namespace dovrex
