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
    int first = 0;         // the value of the first column (和值 starts at its least, 21)
};

// The chart of a condition tab, by its caption; family None for tabs without one.
TrendSpec trendSpecOfTab(const QString& tabCaption);
// The caption of each column: the values first, first + 1, ... or the pattern texts.
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
    // The rows' part of the drawing: the head above it stays in view, the condition line below it.
    double bodyTop = 0, bodyBottom = 0;
    double rowH = 0;  // height of a row
    int band = 1;     // values a column holds
};

// The chart of `rows` (at most n used) in the geometry of the metrics: frame, rows, the condition
// line with the allowed columns marked under the last row, then the marks in three passes. With
// n = 0 it is the frame alone.
TrendChart draw_TrendBody(const TrendSpec& trend, const QList<TrendRow>& rows, int n, const TrendMetrics& m,
                          const QString& conditionText, const QList<int>& allowedColumns);

// The whole chart in a frame of m.width by `height`: every value and every one of the n rows in
// view at once, with the frame's own font in m. A column narrower than a digit would be unreadable,
// so values then share columns in bands of 2, 5, 10 ... aligned on multiples of the band; captions
// stand on round values far enough apart not to touch, the issues and values on every few rows,
// and the marks carry no text, so no label covers a mark. The allowed values are marked under the
// last row; the condition line follows.
TrendChart draw_TrendFitted(const TrendSpec& trend, const QList<TrendRow>& rows, int n, const TrendMetrics& m,
                            double height, const QString& conditionText, const QList<int>& allowedColumns);
// The sum family opens fitted to its frame; a double click reads it in the chart's own font.
inline bool trendFitsFrame(const TrendSpec& trend) {
    return trend.family == TrendFamily::Sum;
}

// Font sizes of the chart surface: at least 20 at its first drawing, zoomed between 6 and 30.
inline constexpr int kTrendFontFirst = 20;
inline constexpr int kTrendFontMin = 6;
inline constexpr int kTrendFontMax = 30;
inline constexpr int kTrendPeriods = 100;
// Issues the chooser of the chart's last issue offers.
inline constexpr int kTrendChooserIssues = 200;

}  // namespace dovrex
