#include "widgets/cursor_model.h"

#include <cmath>

#include "domain/date_value.h"
#include "store/store.h"

namespace dovrex {

CursorModel::CursorModel(QObject* parent) : QAbstractTableModel(parent) {}

void CursorModel::setCursor(std::shared_ptr<Cursor> cursor) {
    beginResetModel();
    cursor_ = std::move(cursor);
    dateColumns_.clear();
    for (int c = 0; c < columnCount(); ++c) dateColumns_ << fieldName(c).contains(QStringLiteral("日期"));
    endResetModel();
}

void CursorModel::setCaptions(const QStringList& captions) {
    captions_ = captions;
    if (columnCount() > 0) emit headerDataChanged(Qt::Horizontal, 0, columnCount() - 1);
}

void CursorModel::setColumnColors(const QString& field, const QColor& back, const QColor& fore) {
    colours_.insert(field, {back, fore});
    if (rowCount() > 0 && columnCount() > 0)
        emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
}

void CursorModel::clearColumnColors() {
    colours_.clear();
}

bool CursorModel::isDateColumn(int column) const {
    return dateColumns_.value(column, false);
}

QString CursorModel::fieldName(int column) const {
    return cursor_ ? cursor_->fieldName(column) : QString();
}

QString CursorModel::displayText(const QVariant& value, bool isDate) {
    if (value.isNull() || !value.isValid()) return {};
    const int type = value.typeId();
    if (isDate && (type == QMetaType::Double || type == QMetaType::LongLong || type == QMetaType::Int))
        return dateText(value.toDouble());
    if (type == QMetaType::Double) {
        const double d = value.toDouble();
        if (std::floor(d) == d && std::abs(d) < 1e15) return QString::number(qint64(d));
        return QString::number(d, 'g', 10);
    }
    return value.toString();
}

int CursorModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() || !cursor_ ? 0 : cursor_->recordCount();
}

int CursorModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() || !cursor_ ? 0 : cursor_->fieldCount();
}

QVariant CursorModel::data(const QModelIndex& index, int role) const {
    if (!cursor_ || !index.isValid()) return {};
    switch (role) {
        case Qt::DisplayRole:
        case Qt::ToolTipRole:
            return displayText(cursor_->valueAt(index.row(), index.column()), isDateColumn(index.column()));
        case Qt::TextAlignmentRole:
            return int(Qt::AlignCenter);
        case Qt::BackgroundRole:
        case Qt::ForegroundRole: {
            const auto it = colours_.constFind(fieldName(index.column()));
            if (it == colours_.constEnd()) return {};
            const QColor& c = role == Qt::BackgroundRole ? it->first : it->second;
            return c.isValid() ? QVariant(c) : QVariant();
        }
        default:
            return {};
    }
}

QVariant CursorModel::headerData(int section, Qt::Orientation orientation, int role) const {
    // The field behind a column, whatever its caption (the search row builds its terms from it).
    if (role == Qt::UserRole && orientation == Qt::Horizontal) return fieldName(section);
    // A caption cut short by its column is read whole in its tip.
    if (role == Qt::ToolTipRole && orientation == Qt::Horizontal) role = Qt::DisplayRole;
    if (role != Qt::DisplayRole) return QAbstractTableModel::headerData(section, orientation, role);
    if (orientation == Qt::Vertical) return section + 1;
    if (section < captions_.size() && !captions_[section].isEmpty()) return captions_[section];
    return fieldName(section);
}

}  // namespace dovrex
