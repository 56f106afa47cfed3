#include "history/draw_sources.h"

#include <QDate>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <algorithm>
#include <cmath>

#include "domain/date_value.h"
#include "domain/record_checks.h"
#include "history/draw_download.h"
#include "history/draw_list.h"

namespace dovrex {

namespace {

// A line of a text list: the issue, the date in one of its three forms, then seven balls.
const QRegularExpression& textLinePattern() {
    static const QRegularExpression re(
        QStringLiteral("^\\s*(\\d{7}|\\d{5})\\D+(\\d{4})([-/]?)(\\d{1,2})\\3(\\d{1,2})"
                       "\\D+(\\d{1,2})\\D+(\\d{1,2})\\D+(\\d{1,2})\\D+(\\d{1,2})\\D+(\\d{1,2})\\D+(\\d{1,2})"
                       "\\D+(\\d{1,2})(?!\\d)"));
    return re;
}

// The first thing on a line is a number of five or seven digits: the line is meant as a draw.
const QRegularExpression& recordStartPattern() {
    static const QRegularExpression re(QStringLiteral("^\\s*(\\d{7}|\\d{5})(?!\\d)"));
    return re;
}

// yyNNN is read as 20yyNNN; anything beyond seven digits is no issue (0).
IssueNumber fullIssue(qint64 issue) {
    if (issue < 0 || issue > 9999999) return 0;
    return IssueNumber(issue < 100000 ? 2000000 + issue : issue);
}

// Sorts the reds and keeps the draw when it passes, counts it as refused at `position` otherwise.
void keepOrRefuse(DrawRecord draw, SourceDraws& out, long long position) {
    std::sort(draw.reds.begin() + 1, draw.reds.end());
    if (valid_Draw(draw))
        out.draws << draw;
    else
        out.refused.add(position);
}

// A JSON field that may come as a string or a number, read whole: a fraction, an exponent or
// digits beyond what a count can be give `blank`, never a part of the number.
qint64 jsonNumber(const QJsonValue& v, qint64 blank = 0) {
    constexpr double kLargest = 1e15;
    if (v.isDouble()) {
        const double d = v.toDouble();
        return std::isfinite(d) && std::floor(d) == d && std::abs(d) <= kLargest ? qint64(d) : blank;
    }
    const QString s = v.toString().trimmed().remove(u',');
    if (s.isEmpty() || s.size() > 15) return blank;
    for (const QChar c : s)
        if (c < u'0' || c > u'9') return blank;
    return s.toLongLong();
}

QJsonArray noticeResults(const QString& text, QJsonObject* root) {
    QJsonParseError error;
    const QJsonDocument doc = QJsonDocument::fromJson(text.toUtf8(), &error);
    if (error.error != QJsonParseError::NoError || !doc.isObject()) return {};
    *root = doc.object();
    const QJsonValue result = root->value(QStringLiteral("result"));
    return result.isArray() ? result.toArray() : QJsonArray{};
}

bool looksLikeJson(const QString& text) {
    for (const QChar c : text) {
        if (c.isSpace() || c == QChar(0xFEFF)) continue;
        return c == u'{' || c == u'[';
    }
    return false;
}

}  // namespace

bool valid_Draw(const DrawRecord& draw) {
    return drawFault(draw.reds, draw.blue, draw.issue, toQDate(draw.date)).isEmpty();
}

DrawSourceKind drawSource_Kind(const QString& text) {
    if (looksLikeJson(text)) {
        QJsonObject root;
        const QJsonArray results = noticeResults(text, &root);
        return root.value(QStringLiteral("result")).isArray() ? DrawSourceKind::Notices
                                                              : DrawSourceKind::Unknown;
    }
    if (is_DrawList(clean_Shuju(text))) return DrawSourceKind::DrawList;
    for (QStringView line : QStringView(text).split(u'\n'))
        if (textLinePattern().match(line.toString()).hasMatch()) return DrawSourceKind::TextList;
    return DrawSourceKind::Unknown;
}

SourceDraws read_DrawListSource(const QString& text, IssueNumber from, IssueNumber to) {
    SourceDraws out;
    const DrawListText list(clean_Shuju(text));
    if (!is_DrawList(list.text())) return out;
    out.kind = DrawSourceKind::DrawList;
    DrawRecord draw;
    long long record = 0;
    for (IssueNumber x = from; x <= to; ++x) {
        if (list.find(x) < 0) continue;
        ++record;
        if (parse_QiHao(x, list, draw))
            keepOrRefuse(draw, out, record);
        else
            out.refused.add(record);  // the issue is there, its record does not read
    }
    return out;
}

SourceDraws read_Notices(const QString& text) {
    SourceDraws out;
    QJsonObject root;
    const QJsonArray results = noticeResults(text, &root);
    if (!root.value(QStringLiteral("result")).isArray()) return out;
    out.kind = DrawSourceKind::Notices;
    out.pageCount = int(jsonNumber(root.value(QStringLiteral("pageCount"))));
    long long record = 0;
    for (const QJsonValue& item : results) {
        ++record;
        const QJsonObject notice = item.toObject();
        DrawRecord draw;
        draw.issue = fullIssue(jsonNumber(notice.value(QStringLiteral("code")), -1));
        const QDate day = QDate::fromString(notice.value(QStringLiteral("date")).toString().left(10),
                                            QStringLiteral("yyyy-MM-dd"));
        const QStringList reds = notice.value(QStringLiteral("red")).toString().split(u',');
        if (!day.isValid() || reds.size() != 6) {
            out.refused.add(record);
            continue;
        }
        draw.date = toDateValue(day);
        for (int i = 1; i <= 6; ++i) draw.reds[size_t(i)] = int(jsonNumber(reds[i - 1], -1));
        draw.blue = int(jsonNumber(notice.value(QStringLiteral("blue")), -1));
        const int before = out.refused.count();
        keepOrRefuse(draw, out, record);
        if (out.refused.count() != before) continue;
        for (const QJsonValue& g : notice.value(QStringLiteral("prizegrades")).toArray()) {
            const QJsonObject grade = g.toObject();
            const int tier = int(jsonNumber(grade.value(QStringLiteral("type"))));
            if (tier < 1 || tier > 6) continue;
            out.prizes << PrizeTier{draw.issue, tier, jsonNumber(grade.value(QStringLiteral("typenum"))),
                                    jsonNumber(grade.value(QStringLiteral("typemoney")), -1)};
        }
    }
    return out;
}

SourceDraws read_TextList(const QString& text) {
    SourceDraws out;
    out.refused = RefusedRecords();  // counted by line
    long long lineNo = 0;
    for (QStringView line : QStringView(text).split(u'\n')) {
        ++lineNo;
        const auto m = textLinePattern().match(line.toString());
        if (!m.hasMatch()) {
            if (recordStartPattern().match(line.toString()).hasMatch()) out.refused.add(lineNo);
            continue;
        }
        const QDate day(m.capturedView(2).toInt(), m.capturedView(4).toInt(), m.capturedView(5).toInt());
        if (!day.isValid() ||
            (m.capturedView(3).isEmpty() && m.capturedLength(4) + m.capturedLength(5) != 4)) {
            out.refused.add(lineNo);
            continue;
        }
        DrawRecord draw;
        draw.issue = fullIssue(m.capturedView(1).toLongLong());
        draw.date = toDateValue(day);
        for (int i = 1; i <= 6; ++i) draw.reds[size_t(i)] = m.capturedView(5 + i).toInt();
        draw.blue = m.capturedView(12).toInt();
        keepOrRefuse(draw, out, lineNo);
    }
    if (!out.draws.isEmpty() || !out.refused.isEmpty()) out.kind = DrawSourceKind::TextList;
    return out;
}

SourceDraws read_DrawSource(const QByteArray& body, const QByteArray& contentType, IssueNumber from,
                            IssueNumber to) {
    if (body.size() > kMaxDrawSourceBytes) return {};
    const QString text = decode_Page(body, contentType);
    switch (drawSource_Kind(text)) {
        case DrawSourceKind::DrawList:
            return read_DrawListSource(text, from, to);
        case DrawSourceKind::Notices:
            return read_Notices(text);
        case DrawSourceKind::TextList:
            return read_TextList(text);
        case DrawSourceKind::Unknown:
            break;
    }
    return {};
}

}  // namespace dovrex
