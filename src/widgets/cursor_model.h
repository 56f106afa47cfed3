#pragma once

#include <QAbstractTableModel>
#include <QColor>
#include <QHash>
#include <QStringList>
#include <memory>

namespace dovrex {

class Cursor;

// A read-only table over a row set, for the grids. Cells come straight from the cursor's rows
// (valueAt), so rebinding a grid costs nothing however long the row set is. Columns whose name
// holds 日期 show their day numbers as yyyy/mm/dd.
class CursorModel : public QAbstractTableModel {
    Q_OBJECT
  public:
    explicit CursorModel(QObject* parent = nullptr);

    void setCursor(std::shared_ptr<Cursor> cursor);
    const std::shared_ptr<Cursor>& cursor() const { return cursor_; }

    // Header texts in column order; columns beyond the list show the field name.
    void setCaptions(const QStringList& captions);
    // Colours of a column by field name; an invalid colour leaves the grid's own.
    void setColumnColors(const QString& field, const QColor& back, const QColor& fore);
    void clearColumnColors();
    bool isDateColumn(int column) const;

    // The text a cell shows.
    static QString displayText(const QVariant& value, bool isDate);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

  private:
    QString fieldName(int column) const;

    std::shared_ptr<Cursor> cursor_;
    QStringList captions_;
    QList<bool> dateColumns_;
    QHash<QString, QPair<QColor, QColor>> colours_;
};

}  // namespace dovrex
