#include "analysis/trend_chart.h"

#include <algorithm>

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

}  // namespace

TrendSpec trendSpecOfTab(const QString& caption) {
    if (caption == QStringLiteral("和值过滤"))
        return make(TrendFamily::Sum, QStringLiteral("■ 和值走势"), QStringLiteral("和值"),
                    QStringLiteral("和值"), 169);
    if (caption == QStringLiteral("奇数和值") || caption == QStringLiteral("偶数和值"))
        return make(TrendFamily::Sum, QStringLiteral("■ ") + caption + QStringLiteral("走势"), caption,
                    caption, 169);
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
    for (int k = 0; k < trend.columns; ++k) out << QString::number(k);
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
    const double pad = ch * (1 - 1 / 1.1) / 2;  // a text line sits in the middle of its cell
    const int columns = std::max(1, trend.columns);
    chart.height = ch * (n + 5);
    auto text = [&chart](TrendOp::Role role, double x, double y, const QString& t) {
        TrendOp op;
        op.kind = TrendOp::Text;
        op.role = role;
        op.x = x;
        op.y = y;
        op.text = t;
        chart.ops << op;
    };
    auto line = [&chart](TrendOp::Role role, double x, double y, double x2, double y2) {
        TrendOp op;
        op.kind = TrendOp::Line;
        op.role = role;
        op.x = x;
        op.y = y;
        op.x2 = x2;
        op.y2 = y2;
        chart.ops << op;
    };

    // Frame: title, head, rules, rows, columns and their captions.
    text(TrendOp::Title, (w - 2 * cw) / 2, pad, trend.title);
    text(TrendOp::Head, 3 * cw, ch / 2, QStringLiteral("期号"));
    text(TrendOp::Head, 10.8 * cw + cw, ch / 2, trend.name);
    const double x0 = m.x0 > 0 ? m.x0 : 20 * cw - cw / 2;
    line(TrendOp::Rule, x0, ch, w, ch);
    line(TrendOp::Rule, 10 * cw, 0, 10 * cw, chart.height - 3 * ch);
    line(TrendOp::Rule, x0, 0, x0, chart.height);
    line(TrendOp::Rule, 0, 2 * ch, w, 2 * ch);
    chart.rowY << 0;
    for (int i = 1; i <= n + 1; ++i) {
        const double y = ch * (i + 1);
        if (i <= n) chart.rowY << y;
        line(TrendOp::Rule, i <= n ? x0 : 0, y, w, y);
    }
    for (int k = 0; k < columns; ++k) chart.colX << x0 + k * (w - x0) / columns;
    for (int k = 0; k < columns; ++k) line(TrendOp::Rule, chart.colX[k], ch, chart.colX[k], ch * (n + 2));
    const QStringList captions = trendColumnCaptions(trend);
    for (int k = 0; k < columns && k < captions.size(); ++k)
        text(TrendOp::Caption, chart.colX[k] + r, ch + pad, captions[k]);

    const int shown = std::min<int>(n, rows.size());
    if (shown == 0) return chart;

    // Rows.
    for (int k = 1; k <= shown; ++k) {
        text(TrendOp::Issue, 1.5 * cw, chart.rowY[k] + pad, QString::number(rows[k - 1].issue));
        text(TrendOp::Value, 11.3 * cw, chart.rowY[k] + pad, rows[k - 1].value);
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
    const QString lead = QStringLiteral("当前条件设置->");
    text(TrendOp::Condition, 3 * cw, conditionY, lead);
    const double centred = (w - cw * textCells(conditionText)) / 2;
    text(TrendOp::Condition, std::max(centred, 3 * cw + cw * (textCells(lead) + 1)), conditionY,
         conditionText);

    // Marks: circles, their values, then the line through them.
    for (int k = 1; k <= shown; ++k) {
        const int c = rows[k - 1].column;
        if (c < 0) continue;
        TrendOp op;
        op.kind = TrendOp::Circle;
        op.role = TrendOp::Mark;
        op.x = chart.colX[c] + r;
        op.y = chart.rowY[k] + 0.8 * r;
        op.r = r;
        chart.ops << op;
    }
    for (int k = 1; k <= shown; ++k) {
        const int c = rows[k - 1].column;
        if (c >= 0) text(TrendOp::MarkText, r + chart.colX[c], chart.rowY[k] + pad, rows[k - 1].value);
    }
    for (int k = 2; k <= shown; ++k) {
        const int a = rows[k - 2].column, b = rows[k - 1].column;
        if (a < 0 || b < 0) continue;
        line(TrendOp::Join, chart.colX[a] + 0.6 * cw, chart.rowY[k - 1] + 0.6 * cw, chart.colX[b] + 0.6 * cw,
             chart.rowY[k] + 0.6 * cw);
    }
    return chart;
}

}  // namespace dovrex
