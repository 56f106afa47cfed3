#pragma once

#include <QString>
#include <vector>

#include "domain/game.h"

namespace dovrex {

// One ticket of 日志表 as a pass holds it in memory: its key, its balls and one more column.
struct StoredTicket {
    long long key = 0;  // the key column asked for (rowid or ID)
    Reds reds{};
    int blue = 0;
    int extra = 0;  // the extra column asked for, 0 without one
};

// Which tickets a pass reads and in what order. `where` and `orderBy` are SQLite text without their
// keywords; an empty one is left out. The issue is bound to the '?' of `where`, when it has one.
struct TicketQuery {
    QString key = QStringLiteral("rowid");
    QString extra;
    QString where = QStringLiteral("期号=?");
    QString orderBy = QStringLiteral("序号 ASC, rowid ASC");
};

// Reads every ticket the query selects. Passes read their rows once, work on them in memory and
// write back in one transaction, so a pass never walks the table row by row.
std::vector<StoredTicket> read_StoredTickets(const TicketQuery& query, IssueNumber issue = 0);

// The issue argument of a pass over the whole table.
constexpr IssueNumber kEveryIssue = -1;

// Deletes the rows `removed` of the issue's tickets (of the whole table with kEveryIssue), `survivors` being
// the others read with them (every row of the issue as the pass read it). When most go, the few that stay are
// named instead: the rows of the issue are deleted in one statement, or the table is rebuilt from the
// survivors in one insert when it holds nothing else. Runs inside the caller's transaction.
void delete_StoredTickets(IssueNumber issue, const std::vector<long long>& removed,
                          const std::vector<long long>& survivors);

// 序号 1, 2, 3 ... over the whole table in (序号, rowid) order, in one statement; returns the
// number of rows.
int renumber_StoredTickets();

}  // namespace dovrex
