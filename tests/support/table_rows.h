#pragma once

#include <QStringList>
#include <QVariantList>

#include "store/store.h"

namespace dovrex::test {

// The values of every row of a query, in the order it gives them.
inline QList<QVariantList> queryRows(Store& db, const QString& sql, const QVariantList& params = {}) {
    QList<QVariantList> rows;
    for (auto c = db.query(sql, params); !c->eof(); c->moveNext()) {
        QVariantList& values = rows.emplaceBack();
        for (int i = 0; i < c->fieldCount(); ++i) values << c->value(i);
    }
    return rows;
}

// The first value of every row of a query, as T.
template <typename T = int>
QList<T> columnValues(Store& db, const QString& sql, const QVariantList& params = {}) {
    QList<T> values;
    for (auto c = db.query(sql, params); !c->eof(); c->moveNext()) values << c->value(0).template value<T>();
    return values;
}

// Every row of a query as one line of its values joined by '|'.
inline QStringList queryLines(Store& db, const QString& sql, const QVariantList& params = {}) {
    QStringList lines;
    for (const QVariantList& row : queryRows(db, sql, params)) {
        QStringList values;
        for (const QVariant& v : row) values << v.toString();
        lines << values.join(u'|');
    }
    return lines;
}

// Every row of a table in row id order: two calls compare a table's whole content.
inline QStringList tableRows(Store& db, const QString& table) {
    return queryLines(db, QStringLiteral("select * from [%1] order by rowid").arg(table));
}

// The words of `text` split at blanks: an expected list of short rows or values in one line.
inline QStringList words(const char* text) {
    return QString::fromUtf8(text).split(u' ', Qt::SkipEmptyParts);
}

}  // namespace dovrex::test
