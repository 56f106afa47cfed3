#pragma once

#include <QColor>
#include <QIcon>
#include <QRectF>
#include <QString>

class QPainter;

namespace dovrex {

inline const QColor kRedBall(0xD7, 0x1B, 0x1B);
inline const QColor kBlueBall(0x1D, 0x5F, 0xD0);

// A lottery ball: a shaded sphere with its number on it (no number when empty).
void paintBall(QPainter& painter, const QRectF& rect, const QColor& colour, const QString& number = {});
// The program's icon: a red and a blue ball.
QIcon appIcon();

}  // namespace dovrex
