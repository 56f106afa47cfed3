#include "widgets/search_row.h"

#include <QHeaderView>
#include <QLineEdit>
#include <QScrollBar>
#include <QTableView>

namespace dovrex {

SearchRow::SearchRow(QTableView* grid, QWidget* parent) : QWidget(parent), grid_(grid) {
    setObjectName(QStringLiteral("SearchRow"));
    QHeaderView* header = grid->horizontalHeader();
    connect(header, &QHeaderView::sectionResized, this, &SearchRow::relayout);
    connect(header, &QHeaderView::sectionMoved, this, &SearchRow::relayout);
    connect(header, &QHeaderView::geometriesChanged, this, &SearchRow::relayout);
    connect(header, &QHeaderView::sectionCountChanged, this, &SearchRow::rebuild);
    connect(grid->horizontalScrollBar(), &QScrollBar::valueChanged, this, &SearchRow::relayout);
    rebuild();
}

QSize SearchRow::sizeHint() const {
    return {100, fontMetrics().height() + 10};
}

void SearchRow::rebuild() {
    if (!grid_ || !grid_->model()) return;
    const int columns = grid_->model()->columnCount();
    while (inputs_.size() < columns) {
        auto* edit = new QLineEdit(this);
        edit->setObjectName(QStringLiteral("SearchInput%1").arg(inputs_.size()));
        edit->setFrame(false);
        edit->setStyleSheet(QStringLiteral("QLineEdit { background: #FFFFE8; border: 1px solid #C8C8A0; }"));
        connect(edit, &QLineEdit::returnPressed, this, &SearchRow::searchRequested);
        inputs_ << edit;
    }
    relayout();
}

void SearchRow::relayout() {
    if (!grid_ || !grid_->model()) return;
    if (inputs_.size() < grid_->model()->columnCount()) {
        rebuild();
        return;
    }
    const QHeaderView* header = grid_->horizontalHeader();
    // The inputs start where the grid's viewport starts: behind the row numbers and the frame.
    const int offset = grid_->viewport()->mapToGlobal(QPoint(0, 0)).x() - mapToGlobal(QPoint(0, 0)).x();
    const int h = height();
    for (int c = 0; c < inputs_.size(); ++c) {
        QLineEdit* edit = inputs_[c];
        const bool shown = c < grid_->model()->columnCount() && !grid_->isColumnHidden(c);
        const int x = header->sectionViewportPosition(c);
        const int w = header->sectionSize(c);
        const bool inView = shown && x + w > 0 && x < grid_->viewport()->width();
        edit->setVisible(inView);
        // Cut at the viewport's edges, as the grid's own cells are.
        const int left = qMax(x, 0), right = qMin(x + w, grid_->viewport()->width());
        if (inView) edit->setGeometry(offset + left, 0, right - left, h);
    }
}

QList<QPair<QString, QString>> SearchRow::terms() const {
    QList<QPair<QString, QString>> list;
    if (!grid_ || !grid_->model()) return list;
    for (int c = 0; c < inputs_.size() && c < grid_->model()->columnCount(); ++c) {
        const QString text = inputs_[c]->text().trimmed();
        if (text.isEmpty()) continue;
        // The field behind the column: the model answers it under the user role.
        QString field = grid_->model()->headerData(c, Qt::Horizontal, Qt::UserRole).toString();
        if (field.isEmpty()) field = grid_->model()->headerData(c, Qt::Horizontal).toString();
        list << qMakePair(field, text);
    }
    return list;
}

void SearchRow::clear() {
    for (QLineEdit* edit : inputs_) edit->clear();
}

QLineEdit* SearchRow::input(int column) const {
    return column >= 0 && column < inputs_.size() ? inputs_[column] : nullptr;
}

}  // namespace dovrex
