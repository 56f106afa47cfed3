#include "ui/shell/placeholder_page.h"

#include <QLabel>
#include <QPainter>
#include <QPixmap>
#include <QVBoxLayout>

#include "widgets/ball_art.h"

namespace dovrex {

namespace {

QPixmap ballsPicture(qreal ratio) {
    const int d = 34, gap = 8;
    QPixmap pixmap(QSize(3 * d + 2 * gap, d) * ratio);
    pixmap.setDevicePixelRatio(ratio);
    pixmap.fill(Qt::transparent);
    QPainter p(&pixmap);
    for (int i = 0; i < 3; ++i)
        paintBall(p, QRectF(i * (d + gap), 0, d, d), i < 2 ? kRedBall.lighter(125) : kBlueBall.lighter(125));
    return pixmap;
}

}  // namespace

PlaceholderPage::PlaceholderPage(const QString& title, const QString& note, QWidget* parent)
    : QWidget(parent) {
    auto* picture = new QLabel(this);
    picture->setPixmap(ballsPicture(devicePixelRatioF()));
    picture->setAlignment(Qt::AlignCenter);

    auto* heading = new QLabel(title, this);
    QFont big = heading->font();
    big.setPointSizeF(big.pointSizeF() * 1.6);
    big.setBold(true);
    heading->setFont(big);
    heading->setAlignment(Qt::AlignCenter);

    auto* soon = new QLabel(QStringLiteral("即将推出"), this);
    soon->setAlignment(Qt::AlignCenter);
    soon->setStyleSheet(QStringLiteral("color: #b22222; font-weight: bold;"));

    auto* text = new QLabel(note, this);
    text->setAlignment(Qt::AlignCenter);
    text->setWordWrap(true);
    // A centred wrapped label gets no height for its width from the layout: give it both.
    text->setFixedWidth(text->fontMetrics().horizontalAdvance(QStringLiteral("选")) * 30);
    text->setMinimumHeight(text->heightForWidth(text->width()));
    text->setStyleSheet(QStringLiteral("color: #666666;"));

    auto* layout = new QVBoxLayout(this);
    layout->addStretch(3);
    layout->addWidget(picture, 0, Qt::AlignHCenter);
    layout->addSpacing(14);
    layout->addWidget(heading, 0, Qt::AlignHCenter);
    layout->addSpacing(6);
    layout->addWidget(soon, 0, Qt::AlignHCenter);
    layout->addSpacing(10);
    layout->addWidget(text, 0, Qt::AlignHCenter);
    layout->addStretch(4);
}

}  // namespace dovrex
