#include "history/draw_list.h"

#include <algorithm>

#include "domain/date_value.h"
#include "store/store.h"

namespace dovrex {

namespace {

bool keptInList(QChar c) {
    return (c >= u'0' && c <= u'9') || c == u'/';
}

}  // namespace

qint64 read_Number(QStringView text) {
    qint64 value = 0;
    qsizetype i = 0;
    while (i < text.size() && text[i].isSpace()) ++i;
    for (; i < text.size() && text[i] >= u'0' && text[i] <= u'9' && value < 100000000; ++i)
        value = value * 10 + (text[i].unicode() - u'0');
    return value;
}

QString clean_Shuju(const QString& text) {
    QString out;
    out.reserve(text.size());
    bool inRun = false;
    for (const QChar c : text) {
        if (keptInList(c)) {
            out.append(c);
            inRun = false;
        } else if (!inRun) {
            out.append(u'#');
            inRun = true;
        }
    }
    return out;
}

bool is_DrawList(const QString& cleaned) {
    return cleaned.startsWith(kDrawListMark);
}

namespace {

bool isDigit(QChar c) {
    return c >= u'0' && c <= u'9';
}

// The draw whose issue stands at p, every field where the layout puts it: the date in its ten
// characters, each ball two digits, each closed by '#' (or the end of the text after the blue). A
// record that is short borrows nothing from the next one: it does not read.
bool readDrawAt(IssueNumber issue, const QString& cleaned, qsizetype p, DrawRecord& draw) {
    if (p < 0 || p + 39 > cleaned.size()) return false;
    const QStringView at = QStringView(cleaned).mid(p);
    auto closed = [&](qsizetype k) { return k == at.size() || at[k] == u'#'; };
    if (!closed(7) || !closed(18)) return false;
    const auto date = parseDateText(at.mid(8, 10).toString());
    if (!date) return false;
    auto ball = [&](qsizetype k) {
        return isDigit(at[k]) && isDigit(at[k + 1]) && closed(k + 2) ? int(read_Number(at.mid(k, 2))) : -1;
    };
    draw.issue = issue;
    draw.date = *date;
    for (int i = 1; i <= 6; ++i) draw.reds[size_t(i)] = ball(19 + 3 * (i - 1));
    draw.blue = ball(37);
    return draw.blue >= 0 &&
           std::none_of(draw.reds.begin() + 1, draw.reds.end(), [](int r) { return r < 0; });
}

}  // namespace

bool parse_QiHao(IssueNumber issue, const QString& cleaned, DrawRecord& draw) {
    return readDrawAt(issue, cleaned, cleaned.indexOf(QString::number(issue) + u'#'), draw);
}

DrawListText::DrawListText(QString cleaned) : text_(std::move(cleaned)) {
    for (qsizetype j = 7; j < text_.size(); ++j) {
        if (text_[j] != u'#') continue;
        IssueNumber issue = 0;
        qsizetype k = j - 7;
        for (; k < j && isDigit(text_[k]); ++k) issue = issue * 10 + (text_[k].unicode() - u'0');
        if (k == j && issue >= 1000000 && !first_.contains(issue)) first_.insert(issue, j - 7);
    }
}

qsizetype DrawListText::find(IssueNumber issue) const {
    if (issue >= 1000000 && issue <= 9999999) return first_.value(issue, -1);
    return text_.indexOf(QString::number(issue) + u'#');
}

bool parse_QiHao(IssueNumber issue, const DrawListText& list, DrawRecord& draw) {
    return readDrawAt(issue, list.text(), list.find(issue), draw);
}

QList<DrawRecord> read_DrawRecords(Store& store, IssueNumber from, IssueNumber to) {
    QList<DrawRecord> draws;
    auto c = store.query(
        QStringLiteral("select 期号,开奖日期,红球1,红球2,红球3,红球4,红球5,红球6,蓝球 from 历史记录 "
                       "where 期号>=? and 期号<=? order by 期号 asc"),
        {from, to});
    draws.reserve(c->recordCount());
    for (; !c->eof(); c->moveNext()) {
        DrawRecord d;
        d.issue = c->intValue(0);
        d.date = c->value(1).toDouble();
        for (int i = 1; i <= 6; ++i) d.reds[size_t(i)] = c->intValue(1 + i);
        d.blue = c->intValue(8);
        draws << d;
    }
    return draws;
}

QByteArray format_DrawList(const QList<DrawRecord>& draws) {
    QString text = QStringLiteral("双色球开奖号码 336 dovrex\r\n期号 开奖日期 红球 蓝球\r\n");
    text.reserve(text.size() + draws.size() * 41);
    for (const DrawRecord& d : draws) {
        text += QString::number(d.issue) + u' ' + dateText(d.date);
        for (int i = 1; i <= 6; ++i) text += u' ' + twoDigits(d.reds[size_t(i)]);
        text += u' ' + twoDigits(d.blue) + QStringLiteral("\r\n");
    }
    return text.toUtf8();
}

}  // namespace dovrex
