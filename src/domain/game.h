#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>
#include <array>
#include <cstdint>

#include "domain/date_value.h"

namespace dovrex {

// 双色球: six different reds of 33 and one blue of 16, drawn on Sunday, Tuesday and Thursday.
inline constexpr int kRedCount = 33;
inline constexpr int kBlueCount = 16;
inline constexpr int kRedsPerTicket = 6;
inline constexpr int kTicketPrice = 2;  // yuan
// The most tickets the program makes or takes for one issue, whatever the path.
inline constexpr int kTicketLimit = 100000;
// The prize of each tier in yuan: 3 to 6 are fixed, 1 and 2 vary by draw (-1 here).
inline constexpr std::array<qint64, 7> kFixedPrize{0, -1, -1, 3000, 200, 10, 5};
// "一等奖" .. "六等奖" for tiers 1..6, empty otherwise.
QString prizeTierName(int tier);
// Stands in for an issue when the history has no answer.
inline constexpr int kFallbackIssue = 2003001;
// The date used when the history is empty: the day numbered 2003001, a day in the year 7384.
inline constexpr DateValue kFallbackDate = 2003001.0;

// yyyyNNN: the year of the draw and its running number in that year. Order is numeric order.
using IssueNumber = std::int32_t;

inline int issueYear(IssueNumber issue) {
    return issue / 1000;
}

// Six reds, 1-based: positions 1..6 are read, position 0 is unused. This is the array the metric
// functions take.
using Reds = std::array<int, 7>;

inline Reds makeReds(int a, int b, int c, int d, int e, int f) {
    return Reds{0, a, b, c, d, e, f};
}

// One row of 历史记录 as the program reads it.
struct DrawRecord {
    IssueNumber issue = 0;
    DateValue date = 0;
    Reds reds{};
    int blue = 0;
};

// One row of 日志表.
struct TicketRow {
    int id = 0;
    int serial = 0;  // 序号
    IssueNumber issue = 0;
    Reds reds{};
    int blue = 0;
    int filterMark = 0;  // 过滤标记
    int shrinkMark = 0;  // 缩水标记
    int selectMark = 0;  // 精选标记
    int scratch = 0;     // 临时数据
    int redHits = 0;     // 红球中
    int blueHits = 0;    // 蓝球中
    int formula = 0;     // 缩水公式
};

// Turns each digit 0-9 into its full-width form, leaving other characters. Counts and issues in
// messages and log lines pass through it.
QString to_QuanJiao(const QString& text);
inline QString to_QuanJiao(long long number) {
    return to_QuanJiao(QString::number(number));
}

// Tickets that picks yield: every six of the `reds` picked reds that holds all `redBankers` of
// them, times the picked blues, or one blue when a blue is a banker (it stands alone). Exact for any
// picks of the game; 0 when no ticket can be made.
long long ticketCount(int reds, int redBankers, int blues, int blueBankers);

// Rounds half to even, as every integer taken from a real number is rounded.
long long roundHalfEven(double value);

// Two digits with a leading zero: 01..33.
inline QString twoDigits(int n) {
    return QStringLiteral("%1").arg(n, 2, 10, QLatin1Char('0'));
}

// A ticket or draw as the windows and files show it: "01 02 03 04 05 06 + 07".
QString ballsText(const Reds& reds, int blue);
// A share as a per cent with one decimal: "48.6%".
inline QString percentText(double share) {
    return QString::number(share * 100.0, 'f', 1) + u'%';
}
// Rows as CSV: UTF-8 with a byte order mark, so that spreadsheets read the Chinese; a cell with a
// comma, a quote or a line break is quoted.
QByteArray csvBytes(const QList<QStringList>& rows);

}  // namespace dovrex
