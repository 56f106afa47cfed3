#include "widgets/ball_art.h"

#include <QPainter>
#include <QPixmap>
#include <QRadialGradient>

namespace dovrex {

void paintBall(QPainter& painter, const QRectF& rect, const QColor& colour, const QString& number) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    QRadialGradient shade(rect.left() + rect.width() * 0.35, rect.top() + rect.height() * 0.3,
                          rect.width() * 0.75);
    shade.setColorAt(0.0, colour.lighter(175));
    shade.setColorAt(0.45, colour);
    shade.setColorAt(1.0, colour.darker(170));
    painter.setPen(Qt::NoPen);
    painter.setBrush(shade);
    painter.drawEllipse(rect);
    if (!number.isEmpty()) {
        QFont font = painter.font();
        font.setBold(true);
        font.setLetterSpacing(QFont::PercentageSpacing, 100);
        font.setPixelSize(qMax(6, int(rect.height() * 0.42)));
        painter.setFont(font);
        painter.setPen(Qt::white);
        painter.drawText(rect, Qt::AlignCenter, number);
    }
    painter.restore();
}

QIcon appIcon() {
    QIcon icon;
    for (int size : {16, 24, 32, 48, 64, 128, 256}) {
        QPixmap pixmap(size, size);
        pixmap.fill(Qt::transparent);
        QPainter p(&pixmap);
        const qreal d = size * 0.66;
        paintBall(p, QRectF(size * 0.02, size * 0.02, d, d), kRedBall);
        paintBall(p, QRectF(size - d - size * 0.02, size - d - size * 0.02, d, d), kBlueBall);
        icon.addPixmap(pixmap);
    }
    return icon;
}

}  // namespace dovrex
