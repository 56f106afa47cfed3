#include "history/history_import.h"

#include <QFile>
#include <QTextStream>

#include "domain/date_value.h"
#include "domain/game.h"
#include "screen/shared_state.h"
#include "store/store.h"

namespace dovrex {

int importHistoryTsv(const QString& path, QString* error) {
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly | QIODevice::Text)) {
        if (error) *error = f.errorString();
        return -1;
    }
    Transaction tx(store());
    int added = 0;
    QTextStream in(&f);
    while (!in.atEnd()) {
        const QStringList cells = in.readLine().split(u'\t');
        if (cells.size() < 9) continue;
        bool ok = true;
        const int issue = cells[0].toInt(&ok);
        if (!ok) continue;  // the head line
        const auto date = parseDateText(cells[1]);
        if (!date) continue;
        QVariantList values{issue, *date};
        for (int i = 2; i < 9; ++i) values << cells[i].toInt();
        values << QStringLiteral("Y");
        added += store_Execute(
            QStringLiteral("INSERT OR IGNORE INTO 历史记录 (期号,开奖日期,红球1,红球2,红球3,红球4,红球5,"
                           "红球6,蓝球,已完成) VALUES (?,?,?,?,?,?,?,?,?,?)"),
            values);
    }
    return added;
}

}  // namespace dovrex
