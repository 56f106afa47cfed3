#include "analysis/trend_chart.h"

#include <QPointF>
#include <algorithm>
#include <initializer_list>

#include "history/history_queries.h"
#include "screen/shared_state.h"
#include "store/store.h"

namespace dovrex {

namespace {

const char16_t* const kPatterns0[] = {u"0",   u"2", u"2+2", u"2+2+2", u"3", u"3+2",
                                      u"3+3", u"4", u"4+2", u"5",     u"6"};
const char16_t* const kPatterns1[] = {u"2,2,1,1", u"2,2,2", u"3,1,1,1", u"3,2,1", u"3,3",
                                      u"4,1,1",   u"4,2",   u"5,1",     u"6"};
const char16_t* const kPatterns2[] = {u"1,1,1,1,1,1", u"2,1,1,1,1", u"2,2,1,1", u"2,2,2", u"3,1,1,1",
                                      u"3,2,1",       u"3,3",       u"4,1,1",   u"4,2",   u"5,1"};

QStringList patterns(int mode) {
    QStringList out;
    auto add = [&out](const auto& list) {
        for (const char16_t* p : list) out << QString::fromUtf16(p);
    };
    if (mode == 0) add(kPatterns0);
    if (mode == 1) add(kPatterns1);
    if (mode == 2) add(kPatterns2);
    return out;
}

TrendSpec make(TrendFamily family, const QString& title, const QString& name, const QString& field,
               int columns, int mode = -1) {
    return {family, title, name, field, columns, mode};
}

TrendSpec range(const QString& name, int columns) {
    return make(TrendFamily::Range, QStringLiteral("■ ") + name + QStringLiteral("走势"), name, name,
                columns);
}

// Characters of the wide scripts take two cells of "1".
double textCells(const QString& text) {
    double cells = 0;
    for (const QChar c : text) cells += c.unicode() >= 0x2E80 ? 2 : 1;
    return cells;
}

void addText(TrendChart& chart, TrendOp::Role role, double x, double y, const QString& t) {
    TrendOp op;
    op.kind = TrendOp::Text;
    op.role = role;
    op.x = x;
    op.y = y;
    op.text = t;
    chart.ops << op;
}

void addLine(TrendChart& chart, TrendOp::Role role, double x, double y, double x2, double y2) {
    TrendOp op;
    op.kind = TrendOp::Line;
    op.role = role;
    op.x = x;
    op.y = y;
    op.x2 = x2;
    op.y2 = y2;
    chart.ops << op;
}

void addMark(TrendChart& chart, double x, double y, double r) {
    TrendOp op;
    op.kind = TrendOp::Circle;
    op.role = TrendOp::Mark;
    op.x = x;
    op.y = y;
    op.r = r;
    chart.ops << op;
}

// The title over the chart, and the heads of the issue and value columns.
void addHeads(TrendChart& chart, const TrendSpec& trend, const TrendMetrics& m, double titleY) {
    addText(chart, TrendOp::Title, (m.width - 2 * m.charW) / 2, titleY, trend.title);
    addText(chart, TrendOp::Head, 3 * m.charW, m.charH / 2, QStringLiteral("期号"));
    addText(chart, TrendOp::Head, 10.8 * m.charW + m.charW, m.charH / 2, trend.name);
}

// "当前条件设置->" and the condition text, centred where it has room.
void addConditionLine(TrendChart& chart, const TrendMetrics& m, double y, const QString& conditionText) {
    const double cw = m.charW;
    const QString lead = QStringLiteral("当前条件设置->");
    addText(chart, TrendOp::Condition, 3 * cw, y, lead);
    const double centred = (m.width - cw * textCells(conditionText)) / 2;
    addText(chart, TrendOp::Condition, std::max(centred, 3 * cw + cw * (textCells(lead) + 1)), y,
            conditionText);
}

// The first of the steps that is at least `least`; the last when none is.
int firstStep(std::initializer_list<int> steps, double least, int multipleOf = 1) {
    int chosen = 1;
    for (int s : steps) {
        if (s % multipleOf) continue;
        chosen = s;
        if (s >= least) break;
    }
    return chosen;
}

}  // namespace

TrendSpec trendSpecOfTab(const QString& caption) {
    // The sums span their whole range: 和值 from 1+2+...+6 to 28+...+33, the odd numbers' sum up to
    // 23+25+...+33, the even numbers' up to 22+24+...+32.
    if (caption == QStringLiteral("和值过滤")) {
        TrendSpec sum = make(TrendFamily::Sum, QStringLiteral("■ 和值走势"), QStringLiteral("和值"),
                             QStringLiteral("和值"), 183 - 21 + 1);
        sum.first = 21;
        return sum;
    }
    if (caption == QStringLiteral("奇数和值") || caption == QStringLiteral("偶数和值"))
        return make(TrendFamily::Sum, QStringLiteral("■ ") + caption + QStringLiteral("走势"), caption,
                    caption, caption == QStringLiteral("奇数和值") ? 169 : 163);
    if (caption == QStringLiteral("和值尾"))
        return make(TrendFamily::Tail, QStringLiteral("■ 和值尾走势"), caption, QStringLiteral("和值"), 11);
    if (caption == QStringLiteral("最大间距"))
        return make(TrendFamily::Plain, QStringLiteral("■ 最大间距值走势"), caption, caption, 31);
    if (caption == QStringLiteral("跨度过滤"))
        return make(TrendFamily::Plain, QStringLiteral("■ 跨度值走势"), QStringLiteral("跨度"),
                    QStringLiteral("跨度"), 41);
    if (caption == QStringLiteral("AC值")) return range(caption, 11);
    if (caption == QStringLiteral("重叠号") || caption == QStringLiteral("斜位码")) return range(caption, 7);
    if (caption == QStringLiteral("头数和值")) return range(caption, 17);
    if (caption == QStringLiteral("尾数和值")) return range(caption, 52);
    if (caption == QStringLiteral("温度值5")) return range(caption, 13);
    if (caption == QStringLiteral("温度值10")) return range(caption, 31);
    if (caption == QStringLiteral("连 号"))
        return make(TrendFamily::Pattern, QStringLiteral("■ 连号走势"), QStringLiteral("连号"),
                    QStringLiteral("连号"), 11, 0);
    if (caption == QStringLiteral("头数设置"))
        return make(TrendFamily::Pattern, QStringLiteral("■ 头数形式走势"), QStringLiteral("头数形式"),
                    QStringLiteral("头数形式"), 9, 1);
    if (caption == QStringLiteral("尾数设置"))
        return make(TrendFamily::Pattern, QStringLiteral("■ 尾数形式走势"), QStringLiteral("尾数形式"),
                    QStringLiteral("尾数形式"), 10, 2);
    // The step shapes hold the ten keys of the tail shape: their column is the key's place.
    if (caption == QStringLiteral("间距九") || caption == QStringLiteral("间距七") ||
        caption == QStringLiteral("间距十一") || caption == QStringLiteral("间距十二"))
        return make(TrendFamily::Pattern, QStringLiteral("■ ") + caption + QStringLiteral("走势"), caption,
                    caption, 10, 2);
    if (caption == QStringLiteral("奇偶比") || caption == QStringLiteral("大小比") ||
        caption == QStringLiteral("高低尾码") || caption == QStringLiteral("区间设置"))
        return make(TrendFamily::Grid, {}, {}, {}, 0);
    return {};
}

QStringList trendColumnCaptions(const TrendSpec& trend) {
    if (trend.family == TrendFamily::Pattern) return patterns(trend.patternMode);
    QStringList out;
    for (int k = 0; k < trend.columns; ++k) out << QString::number(trend.first + k);
    return out;
}

QList<TrendRow> trendRows(const TrendSpec& trend, int periods, IssueNumber last) {
    QList<TrendRow> rows;
    if (trend.field.isEmpty()) return rows;
    if (last <= 0) last = latest_QiHao();
    const IssueNumber from = prev_QiHao(last, periods);
    auto c = store_Query(
        QStringLiteral("select  期号,[%1] from 历史记录 where 期号>%2 and 期号<=%3 order by 期号 asc")
            .arg(trend.field)
            .arg(from)
            .arg(last));
    const QStringList keys = patterns(trend.patternMode);
    for (; !c->eof(); c->moveNext()) {
        TrendRow row;
        row.issue = c->intValue(0);
        row.value = c->value(1).toString();
        if (trend.family == TrendFamily::Pattern) {
            row.column = std::max(0, int(keys.indexOf(row.value)));
        } else {
            bool ok = false;
            int v = row.value.toInt(&ok);
            if (trend.family == TrendFamily::Tail) {
                v %= 10;
                row.value = QString::number(v);
            }
            v -= trend.first;
            row.column = ok && v >= 0 && v < trend.columns ? v : -1;
        }
        rows << row;
    }
    return rows;
}

QString trendConditionText(const QString& tip, TrendFamily family) {
    QString text = tip;
    text.remove(QStringLiteral("\r\n"));
    text.remove(u'\n');
    text.replace(QStringLiteral("阅览"), QStringLiteral("范围"));
    if ((family == TrendFamily::Range || family == TrendFamily::Pattern) && text.contains(u'～'))
        text.replace(u'值', QStringLiteral("值范围="));
    return text;
}

TrendChart draw_TrendBody(const TrendSpec& trend, const QList<TrendRow>& rows, int n, const TrendMetrics& m,
                          const QString& conditionText, const QList<int>& allowedColumns) {
    TrendChart chart;
    const double cw = m.charW, ch = m.charH, w = m.width;
    const double r = ch / 3;
    chart.bodyTop = 2 * ch;
    chart.bodyBottom = ch * (n + 2);
    chart.rowH = ch;
    const double pad = ch * (1 - 1 / 1.1) / 2;  // a text line sits in the middle of its cell
    const int columns = std::max(1, trend.columns);
    chart.height = ch * (n + 5);
    // Frame: title, head, rules, rows, columns and their captions.
    addHeads(chart, trend, m, pad);
    const double x0 = m.x0 > 0 ? m.x0 : 20 * cw - cw / 2;
    addLine(chart, TrendOp::Rule, x0, ch, w, ch);
    addLine(chart, TrendOp::Rule, 10 * cw, 0, 10 * cw, chart.height - 3 * ch);
    addLine(chart, TrendOp::Rule, x0, 0, x0, chart.height);
    addLine(chart, TrendOp::Rule, 0, 2 * ch, w, 2 * ch);
    chart.rowY << 0;
    for (int i = 1; i <= n + 1; ++i) {
        const double y = ch * (i + 1);
        if (i <= n) chart.rowY << y;
        addLine(chart, TrendOp::Rule, i <= n ? x0 : 0, y, w, y);
    }
    for (int k = 0; k < columns; ++k) chart.colX << x0 + k * (w - x0) / columns;
    for (int k = 0; k < columns; ++k)
        addLine(chart, TrendOp::Rule, chart.colX[k], ch, chart.colX[k], ch * (n + 2));
    const QStringList captions = trendColumnCaptions(trend);
    for (int k = 0; k < columns && k < captions.size(); ++k)
        addText(chart, TrendOp::Caption, chart.colX[k] + r, ch + pad, captions[k]);

    const int shown = std::min<int>(n, rows.size());
    if (shown == 0) return chart;

    // Rows.
    for (int k = 1; k <= shown; ++k) {
        addText(chart, TrendOp::Issue, 1.5 * cw, chart.rowY[k] + pad, QString::number(rows[k - 1].issue));
        addText(chart, TrendOp::Value, 11.3 * cw, chart.rowY[k] + pad, rows[k - 1].value);
    }

    // The condition line with the allowed columns above it.
    const double conditionY = chart.rowY[n] + 2 * chart.rowY[1] / 3;
    for (int c : allowedColumns) {
        if (c < 0 || c >= columns) continue;
        TrendOp op;
        op.kind = TrendOp::Line;
        op.role = TrendOp::Allowed;
        op.x = chart.colX[c] + 1;
        op.x2 = (c + 1 < columns ? chart.colX[c + 1] : w) - 1;
        op.y = op.y2 = ch * (n + 2) + r / 2;
        chart.ops << op;
    }
    addConditionLine(chart, m, conditionY, conditionText);

    // Marks: circles, their values, then the line through them.
    for (int k = 1; k <= shown; ++k) {
        const int c = rows[k - 1].column;
        if (c >= 0) addMark(chart, chart.colX[c] + r, chart.rowY[k] + 0.8 * r, r);
    }
    for (int k = 1; k <= shown; ++k) {
        const int c = rows[k - 1].column;
        if (c >= 0)
            addText(chart, TrendOp::MarkText, r + chart.colX[c], chart.rowY[k] + pad, rows[k - 1].value);
    }
    for (int k = 2; k <= shown; ++k) {
        const int a = rows[k - 2].column, b = rows[k - 1].column;
        if (a < 0 || b < 0) continue;
        addLine(chart, TrendOp::Join, chart.colX[a] + 0.6 * cw, chart.rowY[k - 1] + 0.6 * cw,
                chart.colX[b] + 0.6 * cw, chart.rowY[k] + 0.6 * cw);
    }
    return chart;
}

TrendChart draw_TrendFitted(const TrendSpec& trend, const QList<TrendRow>& rows, int n, const TrendMetrics& m,
                            double height, const QString& conditionText, const QList<int>& allowedColumns) {
    TrendChart chart;
    const double cw = m.charW, ch = m.charH, w = m.width;
    const double x0 = m.x0 > 0 ? m.x0 : 20 * cw - cw / 2;
    const int columns = std::max(1, trend.columns);
    const int last = trend.first + columns - 1;
    n = std::max(1, n);
    chart.height = height;
    chart.bodyTop = 2 * ch;
    chart.rowH = std::max(1.0, (height - 5 * ch) / n);
    chart.bodyBottom = chart.bodyTop + n * chart.rowH;

    // Bands: the narrowest grouping whose columns are each at least a digit wide.
    const double room = std::max(cw, w - x0);
    auto bandsOf = [&](int band) { return last / band - trend.first / band + 1; };
    for (int band : {1, 2, 5, 10, 20, 50}) {
        chart.band = band;
        if (room / bandsOf(band) >= cw) break;
    }
    const int band = chart.band, bands = bandsOf(band), firstBand = trend.first / band;
    const double colW = room / bands;
    for (int b = 0; b < bands; ++b) chart.colX << x0 + b * colW;
    // Where a value lies: its band's column, and its place inside the band.
    auto xOf = [&](int column) {
        const int v = trend.first + column;
        return chart.colX[v / band - firstBand] + (v % band) * colW / band;
    };

    // Frame: title, head, the rules of the parts.
    addHeads(chart, trend, m, 0);
    addLine(chart, TrendOp::Rule, x0, ch, w, ch);
    addLine(chart, TrendOp::Rule, 10 * cw, 0, 10 * cw, chart.bodyBottom);
    addLine(chart, TrendOp::Rule, x0, 0, x0, height);
    addLine(chart, TrendOp::Rule, 0, chart.bodyTop, w, chart.bodyTop);
    addLine(chart, TrendOp::Rule, 0, chart.bodyBottom, w, chart.bodyBottom);

    // Captions on round values, each far enough from the next to be read, with a rule down the body.
    const double captionCells = textCells(QString::number(last)) + 1;
    const int step = firstStep({1, 2, 5, 10, 20, 25, 50, 100}, captionCells * cw * band / colW, band);
    for (int v = (trend.first + step - 1) / step * step; v <= last; v += step) {
        const double x = xOf(v - trend.first);
        const QString caption = QString::number(v);
        const double left = x - textCells(caption) * cw / 2;
        if (left >= x0 && left + textCells(caption) * cw <= w)
            addText(chart, TrendOp::Caption, left, ch, caption);
        addLine(chart, TrendOp::Rule, x, ch * 1.6, x, chart.bodyBottom);
    }

    chart.rowY << 0;
    for (int k = 1; k <= n; ++k) chart.rowY << chart.bodyTop + (k - 1) * chart.rowH;
    const int shown = std::min<int>(n, rows.size());

    // The issue and its value on every few rows, the newest always; a guide across each such row.
    const int every = firstStep({1, 2, 5, 10, 20, 50}, ch / chart.rowH);
    for (int k = shown; k >= 1; k -= every) {
        const double middle = chart.rowY[k] + chart.rowH / 2;
        const double y = std::clamp(middle - ch / 2, chart.bodyTop, chart.bodyBottom - ch);
        addText(chart, TrendOp::Issue, 1.5 * cw, y, QString::number(rows[k - 1].issue));
        addText(chart, TrendOp::Value, 11.3 * cw, y, rows[k - 1].value);
        addLine(chart, TrendOp::Rule, x0, middle, w, middle);
    }

    // The allowed values under the last row, then the condition line.
    const double r = std::max(1.5, 0.45 * std::min(chart.rowH, colW));
    for (int c : allowedColumns) {
        if (c < 0 || c >= columns) continue;
        TrendOp op;
        op.kind = TrendOp::Line;
        op.role = TrendOp::Allowed;
        op.x = xOf(c);
        op.x2 = op.x + std::max(1.0, colW / band - (band == 1 ? 2 : 0));
        op.y = op.y2 = chart.bodyBottom + ch / 6;
        chart.ops << op;
    }
    const double conditionY = chart.bodyBottom + ch / 2;
    addConditionLine(chart, m, conditionY, conditionText);

    // Marks in the middle of their band and row, then the line through their centres.
    auto centre = [&](int k) {
        const int c = rows[k - 1].column;
        return QPointF(chart.colX[(trend.first + c) / band - firstBand] + colW / 2,
                       chart.rowY[k] + chart.rowH / 2);
    };
    for (int k = 1; k <= shown; ++k) {
        if (rows[k - 1].column >= 0 && rows[k - 1].column < columns)
            addMark(chart, centre(k).x(), centre(k).y(), r);
    }
    for (int k = 2; k <= shown; ++k) {
        const int a = rows[k - 2].column, b = rows[k - 1].column;
        if (a < 0 || b < 0 || a >= columns || b >= columns) continue;
        addLine(chart, TrendOp::Join, centre(k - 1).x(), centre(k - 1).y(), centre(k).x(), centre(k).y());
    }
    return chart;
}

}  // namespace dovrex
