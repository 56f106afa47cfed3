#include "widgets/number_buttons.h"

#include <QGridLayout>
#include <QPushButton>

#include "domain/game.h"

namespace dovrex {

NumberButtons::NumberButtons(const QString& namePrefix, int perRow, QWidget* parent) : QWidget(parent) {
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(3);
    const int side = fontMetrics().horizontalAdvance(QStringLiteral("000")) + 10;
    for (int n = 1; n <= kRedCount; ++n) {
        auto* b = new QPushButton(twoDigits(n), this);
        b->setObjectName(QStringLiteral("%1(%2)").arg(namePrefix).arg(n));
        b->setCheckable(true);
        b->setFixedSize(side, fontMetrics().height() + 10);
        b->setFocusPolicy(Qt::TabFocus);
        b->setStyleSheet(
            QStringLiteral("QPushButton { border: 1px solid #b8b8b8; border-radius: 3px;"
                           " background: #fafafa; color: #333333; }"
                           "QPushButton:checked { background: #f6c6c6; border-color: #d71b1b;"
                           " color: #9c0000; font-weight: bold; }"
                           "QPushButton:hover { border-color: #666666; }"));
        // The store decides the state: undo Qt's own flip until the page says so.
        connect(b, &QPushButton::clicked, this, [this, b, n](bool checked) {
            b->setChecked(!checked);
            emit numberClicked(n);
        });
        grid->addWidget(b, (n - 1) / perRow, (n - 1) % perRow);
        buttons_ << b;
    }
}

void NumberButtons::setMembers(const std::array<bool, 34>& members) {
    for (int n = 1; n <= kRedCount; ++n) setOn(n, members[n]);
}

void NumberButtons::setOn(int n, bool on) {
    if (QPushButton* b = button(n)) b->setChecked(on);
}

bool NumberButtons::isOn(int n) const {
    const QPushButton* b = button(n);
    return b && b->isChecked();
}

}  // namespace dovrex
