#pragma once

#include <QStringList>

#include "store/store.h"

namespace dovrex::test {

// Every row of a table as one line of its values, in row id order: two calls compare a table's
// whole content.
inline QStringList tableRows(Store& db, const QString& table) {
    QStringList rows;
    auto c = db.query(QStringLiteral("select * from [%1] order by rowid").arg(table));
    for (; !c->eof(); c->moveNext()) {
        QStringList values;
        for (int i = 0; i < c->fieldCount(); ++i) values << c->value(i).toString();
        rows << values.join(u'|');
    }
    return rows;
}

}  // namespace dovrex::test
