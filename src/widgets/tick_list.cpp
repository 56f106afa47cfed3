#include "widgets/tick_list.h"

#include <QMouseEvent>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QStyle>

namespace dovrex {

TickList::TickList(QWidget* parent) : QListWidget(parent) {
    setSelectionMode(QAbstractItemView::NoSelection);
    setUniformItemSizes(true);
    connect(this, &QListWidget::itemChanged, this, [this](QListWidgetItem* item) {
        if (!filling_) emit ticked(row(item), item->checkState() == Qt::Checked);
    });
}

void TickList::setLines(const QStringList& texts, const QList<int>& data) {
    filling_ = true;
    clear();
    for (int i = 0; i < texts.size(); ++i) {
        auto* item = new QListWidgetItem(texts[i], this);
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsUserCheckable);
        item->setCheckState(Qt::Unchecked);
        item->setData(Qt::UserRole, data.value(i, i));
    }
    filling_ = false;
}

void TickList::setTicked(int row, bool on) {
    if (QListWidgetItem* it = item(row)) {
        filling_ = true;
        it->setCheckState(on ? Qt::Checked : Qt::Unchecked);
        filling_ = false;
    }
}

bool TickList::isTicked(int row) const {
    const QListWidgetItem* it = item(row);
    return it && it->checkState() == Qt::Checked;
}

int TickList::tickedCount() const {
    int n = 0;
    for (int i = 0; i < count(); ++i) n += isTicked(i);
    return n;
}

int TickList::lineData(int row) const {
    const QListWidgetItem* it = item(row);
    return it ? it->data(Qt::UserRole).toInt() : 0;
}

int TickList::idealWidth() const {
    int text = 0;
    for (int i = 0; i < count(); ++i) text = qMax(text, fontMetrics().horizontalAdvance(item(i)->text()));
    const int tick = style()->pixelMetric(QStyle::PM_IndicatorWidth) + 12;
    return text + tick + style()->pixelMetric(QStyle::PM_ScrollBarExtent) + 2 * frameWidth() + 12;
}

void TickList::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return QListWidget::mousePressEvent(event);
    if (QListWidgetItem* it = itemAt(event->position().toPoint())) {
        setCurrentItem(it);
        it->setCheckState(it->checkState() == Qt::Checked ? Qt::Unchecked : Qt::Checked);
    }
}

void TickList::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) QListWidget::mouseReleaseEvent(event);
}

void TickList::mouseDoubleClickEvent(QMouseEvent* event) {
    mousePressEvent(event);
}

}  // namespace dovrex
