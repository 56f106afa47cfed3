#include "pipeline/ticket_rows.h"

#include "screen/prepared.h"
#include "screen/shared_state.h"
#include "store/store.h"

namespace dovrex {

std::vector<StoredTicket> read_StoredTickets(const TicketQuery& query, IssueNumber issue) {
    QString sql =
        QStringLiteral("SELECT ") + query.key + QStringLiteral(",红球1,红球2,红球3,红球4,红球5,红球6,蓝球");
    if (!query.extra.isEmpty()) sql += u',' + query.extra;
    sql += QStringLiteral(" FROM 日志表");
    if (!query.where.isEmpty()) sql += QStringLiteral(" WHERE ") + query.where;
    if (!query.orderBy.isEmpty()) sql += QStringLiteral(" ORDER BY ") + query.orderBy;

    std::vector<StoredTicket> rows;
    Prepared q(sql);
    if (query.where.contains(u'?')) q.bind(1, issue);
    while (q.next()) {
        StoredTicket& t = rows.emplace_back();
        t.key = q.int64Column(0);
        for (int i = 1; i <= kRedsPerTicket; ++i) t.reds[size_t(i)] = q.intColumn(i);
        t.blue = q.intColumn(7);
        if (!query.extra.isEmpty()) t.extra = q.intColumn(8);
    }
    return rows;
}

void delete_StoredTickets(IssueNumber issue, const std::vector<long long>& removed,
                          const std::vector<long long>& survivors) {
    if (removed.empty()) return;
    Store& db = store();
    if (removed.size() <= survivors.size()) {
        Prepared drop(QStringLiteral("DELETE FROM 日志表 WHERE rowid=?"));
        for (long long id : removed) drop.bind(1, id).exec();
        return;
    }
    db.execute(QStringLiteral("CREATE TEMP TABLE IF NOT EXISTS ticket_survivors(id INTEGER PRIMARY KEY)"));
    db.execute(QStringLiteral("DELETE FROM ticket_survivors"));
    {
        Prepared keep(QStringLiteral("INSERT INTO ticket_survivors(id) VALUES (?)"));
        for (long long id : survivors) keep.bind(1, id).exec();
    }
    Prepared others(
        QStringLiteral("SELECT count(*) FROM (SELECT 1 FROM 日志表 WHERE 期号<>? OR 期号 IS NULL LIMIT 1)"));
    const bool otherIssues = issue != kEveryIssue && others.bind(1, issue).next() && others.intColumn(0) != 0;
    while (others.next()) {
    }
    if (otherIssues) {
        Prepared(QStringLiteral(
                     "DELETE FROM 日志表 WHERE 期号=? AND rowid NOT IN (SELECT id FROM ticket_survivors)"))
            .bind(1, issue)
            .exec();
    } else {
        // A DELETE without WHERE drops the table's pages at once; the survivors come back with their
        // own ID (the AUTOINCREMENT counter is untouched, so new rows number as before).
        db.execute(QStringLiteral("DROP TABLE IF EXISTS temp.ticket_rebuild"));
        db.execute(
            QStringLiteral("CREATE TEMP TABLE ticket_rebuild AS SELECT * FROM 日志表 WHERE rowid IN "
                           "(SELECT id FROM ticket_survivors)"));
        db.execute(QStringLiteral("DELETE FROM 日志表"));
        db.execute(QStringLiteral("INSERT INTO 日志表 SELECT * FROM temp.ticket_rebuild ORDER BY ID"));
        db.execute(QStringLiteral("DROP TABLE temp.ticket_rebuild"));
    }
    db.execute(QStringLiteral("DELETE FROM ticket_survivors"));
}

int renumber_StoredTickets() {
    Store& db = store();
    Prepared(QStringLiteral(
                 "UPDATE 日志表 SET 序号=n.serial FROM (SELECT rowid AS id, row_number() OVER (ORDER BY 序号 "
                 "ASC, rowid ASC) AS serial FROM 日志表) AS n WHERE 日志表.rowid=n.id AND 日志表.序号 IS NOT "
                 "n.serial"))
        .exec();
    return db.scalar(QStringLiteral("SELECT count(*) FROM 日志表")).toInt();
}

}  // namespace dovrex
