#include "widgets/tick_list.h"

#include <QMouseEvent>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QStyle>

namespace dovrex {

TickList::TickList(QWidget* parent) : QListWidget(parent) {
    setSelectionMode(QAbstractItemView::NoSelection);
    setUniformItemSizes(true);
    // The space key flips the current line through the item itself.
    connect(this, &QListWidget::itemChanged, this, [this](QListWidgetItem* item) {
        if (!filling_) emit ticked({row(item)}, item->checkState() == Qt::Checked);
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
    anchor_ = dragFrom_ = dragReached_ = -1;
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

void TickList::tickRun(int first, int last, bool on) {
    if (count() == 0) return;
    const int from = qBound(0, qMin(first, last), count() - 1);
    const int to = qBound(0, qMax(first, last), count() - 1);
    QList<int> changed;
    for (int r = from; r <= to; ++r) {
        if (isTicked(r) == on) continue;
        setTicked(r, on);
        changed << r;
    }
    if (!changed.isEmpty()) emit ticked(changed, on);
}

int TickList::idealWidth() const {
    int text = 0;
    for (int i = 0; i < count(); ++i) text = qMax(text, fontMetrics().horizontalAdvance(item(i)->text()));
    const int tick = style()->pixelMetric(QStyle::PM_IndicatorWidth) + 12;
    return text + tick + style()->pixelMetric(QStyle::PM_ScrollBarExtent) + 2 * frameWidth() + 12;
}

void TickList::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return QListWidget::mousePressEvent(event);
    QListWidgetItem* it = itemAt(event->position().toPoint());
    if (!it) return;
    const int r = row(it);
    setCurrentItem(it);
    if ((event->modifiers() & Qt::ShiftModifier) && anchor_ >= 0 && anchor_ < count()) {
        tickRun(anchor_, r, isTicked(anchor_));
        return;
    }
    anchor_ = dragFrom_ = dragReached_ = r;
    tickRun(r, r, !isTicked(r));
}

void TickList::mouseMoveEvent(QMouseEvent* event) {
    if (dragFrom_ < 0 || !(event->buttons() & Qt::LeftButton)) return;
    // Past the list's edge the list scrolls on, so a drag reaches lines not yet in view.
    QPoint at = event->position().toPoint();
    if (at.y() >= viewport()->height()) {
        verticalScrollBar()->triggerAction(QAbstractSlider::SliderSingleStepAdd);
        at.setY(viewport()->height() - 2);
    } else if (at.y() < 0) {
        verticalScrollBar()->triggerAction(QAbstractSlider::SliderSingleStepSub);
        at.setY(1);
    }
    QListWidgetItem* it = itemAt(at);
    if (!it || row(it) == dragReached_) return;
    dragReached_ = row(it);
    setCurrentItem(it);
    tickRun(dragFrom_, dragReached_, isTicked(dragFrom_));
}

void TickList::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton)
        dragFrom_ = dragReached_ = -1;
    else
        QListWidget::mouseReleaseEvent(event);
}

void TickList::mouseDoubleClickEvent(QMouseEvent* event) {
    mousePressEvent(event);
}

}  // namespace dovrex
