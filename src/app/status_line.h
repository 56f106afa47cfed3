#pragma once

#include <QDate>
#include <QString>

#include "domain/game.h"
#include "screen/app_paths.h"

namespace dovrex {

// The status line that history_Status writes: panel 1 the history's state, panel 3 the newest draw
// and the next one with their dates, and today; panel 2 belongs to the work under way.

// Panel 3: "最新：2026096 期 2026/08/20 开奖  │  下期：2026097 期 2026/08/23 开奖  │  今天：...".
QString drawStatusText(IssueNumber latest, double latestDate, IssueNumber next, double nextDate,
                       const QDate& today);

// Whether the start may offer a download for a stale history: once a day, so that a player
// without a network is not asked at every start. The day of the offer is kept in the settings
// file of the program folder.
bool downloadOfferDue(const AppPaths& paths);

namespace msg {
inline QString noDrawStatusText(const QDate& today) {
    return QStringLiteral("  还没有开奖记录  │  今天：%1  ")
        .arg(today.toString(QStringLiteral("yyyy/MM/dd")));
}
}  // namespace msg

}  // namespace dovrex
