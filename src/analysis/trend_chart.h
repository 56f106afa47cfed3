#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include "domain/game.h"

namespace dovrex {

// The trend chart beside a condition list: the last issues of the metric the condition filters,
// one row per issue, one column per value, a mark per draw and a line through the marks. The chart
// is a list of drawing operations in a fixed order and geometry; a window only paints them.

enum class TrendFamily { None, Sum, Tail, Plain, Range, Pattern, Grid };

struct TrendSpec {
    TrendFamily family = TrendFamily::None;
    QString title;  // "■ 和值走势"
    QString name;   // the metric in the header
    QString field;  // the column of 历史记录
    int columns = 0;
    int patternMode = -1;  // 0 连号, 1 头数形式, 2 尾数形式
};

// The chart of a condition tab, by its caption; family None for tabs without one.
TrendSpec trendSpecOfTab(const QString& tabCaption);
// The caption of each column: the values 0, 1, ... or the pattern texts.
QStringList trendColumnCaptions(const TrendSpec& trend);

struct TrendRow {
    IssueNumber issue = 0;
    QString value;   // as the history holds it
    int column = 0;  // -1 when the value lies outside the chart's columns
};
// The draws after prev_QiHao(last, periods) up to `last`, oldest first; `last` 0 is the newest.
QList<TrendRow> trendRows(const TrendSpec& trend, int periods, IssueNumber last = 0);

// The condition line: the page's "当前取值阅览：" text without line ends, "阅览" becoming "范围";
// in the range and pattern families a text with "～" gets "值范围=" for "值".
QString trendConditionText(const QString& tip, TrendFamily family);

// What the chart is measured in: the surface's text cell and width.
struct TrendMetrics {
    double charW = 8;
    double charH = 16;  // text height of "1" * 1.1
    double width = 800;
    // Where the columns of values start; 0 is 20 cells less half a cell. A window widens it when
    // the values (the longer patterns) need more room than their column has.
    double x0 = 0;
};

struct TrendOp {
    enum Kind { Text, Line, Circle };
    enum Role { Title, Head, Rule, Issue, Value, Caption, Mark, MarkText, Join, Condition, Allowed };
    Kind kind = Text;
    Role role = Head;
    double x = 0, y = 0;    // text: top left; line: from; circle: centre
    double x2 = 0, y2 = 0;  // line: to
    double r = 0;
    QString text;
};

struct TrendChart {
    double height = 0;
    QList<double> colX;  // left edge of each column
    QList<double> rowY;  // top of each row, 1-based (rowY[0] unused)
    QList<TrendOp> ops;
};

// The chart of `rows` (at most n used) in the geometry of the metrics: frame, rows, the condition
// line with the allowed columns marked under the last row, then the marks in three passes. With
// n = 0 it is the frame alone.
TrendChart draw_TrendBody(const TrendSpec& trend, const QList<TrendRow>& rows, int n, const TrendMetrics& m,
                          const QString& conditionText, const QList<int>& allowedColumns);

// Font sizes of the chart surface: at least 20 at its first drawing, zoomed between 6 and 30.
inline constexpr int kTrendFontFirst = 20;
inline constexpr int kTrendFontMin = 6;
inline constexpr int kTrendFontMax = 30;
inline constexpr int kTrendPeriods = 100;
// Issues the chooser of the chart's last issue offers.
inline constexpr int kTrendChooserIssues = 200;

}  // namespace dovrex
