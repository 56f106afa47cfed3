#pragma once

#include <QStringList>

#include "store/store.h"

namespace dovrex::test {

// Every row of a query as one line of its values joined by '|'.
inline QStringList queryRows(Store& db, const QString& sql, const QVariantList& params = {}) {
    QStringList rows;
    for (auto c = db.query(sql, params); !c->eof(); c->moveNext()) {
        QStringList values;
        for (int i = 0; i < c->fieldCount(); ++i) values << c->value(i).toString();
        rows << values.join(u'|');
    }
    return rows;
}

// Every row of a table in row id order: two calls compare a table's whole content.
inline QStringList tableRows(Store& db, const QString& table) {
    return queryRows(db, QStringLiteral("select * from [%1] order by rowid").arg(table));
}

}  // namespace dovrex::test
