#include "widgets/ball_cell_delegate.h"

#include <QPainter>

#include "widgets/ball_art.h"

namespace dovrex {

BallCellDelegate::BallCellDelegate(const QSet<int>& numbers, const QColor& colour, QObject* parent)
    : QStyledItemDelegate(parent), numbers_(numbers), colour_(colour) {}

bool BallCellDelegate::isBall(const QModelIndex& index) const {
    bool ok = false;
    const int n = index.data(Qt::DisplayRole).toString().toInt(&ok);
    return ok && numbers_.contains(n);
}

void BallCellDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                             const QModelIndex& index) const {
    if (!isBall(index)) {
        QStyledItemDelegate::paint(painter, option, index);
        return;
    }
    // The cell's background (selection included) without its text, then the ball on it.
    QStyleOptionViewItem plain = option;
    initStyleOption(&plain, index);
    plain.text.clear();
    QStyledItemDelegate::paint(painter, plain, QModelIndex());
    const qreal d = qMin(option.rect.width(), option.rect.height()) - 2;
    const QRectF ball(option.rect.center().x() - d / 2 + 0.5, option.rect.center().y() - d / 2 + 0.5, d, d);
    const int n = index.data(Qt::DisplayRole).toString().toInt();
    paintBall(*painter, ball, colour_, QStringLiteral("%1").arg(n, 2, 10, QLatin1Char('0')));
}

QSize BallCellDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
    return QStyledItemDelegate::sizeHint(option, index).expandedTo(QSize(kBallRowHeight, kBallRowHeight));
}

}  // namespace dovrex
