#include "pipeline/ticket_rows.h"

#include "screen/prepared.h"

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

}  // namespace dovrex
