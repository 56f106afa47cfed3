#include "store/jet_sql.h"

#include <QRegularExpression>

#include "domain/date_value.h"

namespace dovrex {

namespace {

// A piece of the statement: either quoted text / bracketed name (kept verbatim) or plain text.
struct Piece {
    QString text;
    bool quoted = false;
};

QList<Piece> splitQuoted(const QString& s) {
    QList<Piece> pieces;
    QString plain;
    int i = 0;
    while (i < s.size()) {
        const QChar c = s[i];
        QChar close;
        if (c == u'\'')
            close = u'\'';
        else if (c == u'"')
            close = u'"';
        else if (c == u'[')
            close = u']';
        if (close.isNull()) {
            plain += c;
            ++i;
            continue;
        }
        if (!plain.isEmpty()) pieces.append({plain, false}), plain.clear();
        int j = i + 1;
        while (j < s.size()) {
            if (s[j] == close) {
                // a doubled quote inside a string literal is an escaped quote
                if (close != u']' && j + 1 < s.size() && s[j + 1] == close) {
                    j += 2;
                    continue;
                }
                break;
            }
            ++j;
        }
        pieces.append({s.mid(i, j - i + 1), true});
        i = j + 1;
    }
    if (!plain.isEmpty()) pieces.append({plain, false});
    return pieces;
}

QString joinPieces(const QList<Piece>& pieces) {
    QString out;
    for (const auto& p : pieces) out += p.text;
    return out;
}

// Position of a keyword at paren depth 0 in the flattened statement, searching from `from`.
// Quoted pieces are blanked beforehand, so they never match.
int findTopLevel(const QString& masked, const QRegularExpression& re, int from = 0) {
    int depth = 0;
    auto it = re.globalMatch(masked, from);
    while (it.hasNext()) {
        const auto m = it.next();
        depth = 0;
        for (int k = 0; k < m.capturedStart(); ++k) {
            if (masked[k] == u'(')
                ++depth;
            else if (masked[k] == u')')
                --depth;
        }
        if (depth == 0) return m.capturedStart();
    }
    return -1;
}

QString maskQuoted(const QList<Piece>& pieces) {
    QString out;
    for (const auto& p : pieces) out += p.quoted ? QString(p.text.size(), u'_') : p.text;
    return out;
}

QStringList splitTopLevelCommas(const QString& s) {
    QStringList parts;
    int depth = 0, start = 0;
    for (int i = 0; i < s.size(); ++i) {
        if (s[i] == u'(')
            ++depth;
        else if (s[i] == u')')
            --depth;
        else if (s[i] == u',' && depth == 0) {
            parts << s.mid(start, i - start);
            start = i + 1;
        }
    }
    parts << s.mid(start);
    return parts;
}

// A #...# literal: the day number, with the time of day as its fraction when one is given.
std::optional<double> dateLiteral(const QString& text) {
    static const QRegularExpression time(QStringLiteral(R"(\s(\d{1,2}):(\d{2})(?::(\d{2}))?\s*$)"));
    const auto day = parseDateText(text);
    if (!day) return std::nullopt;
    const auto m = time.match(text);
    if (!m.hasMatch()) return day;
    const int seconds = m.captured(1).toInt() * 3600 + m.captured(2).toInt() * 60 + m.captured(3).toInt();
    return *day + seconds / 86400.0;
}

}  // namespace

JetSql translateJetSql(const QString& statement) {
    JetSql out;
    auto pieces = splitQuoted(statement);

    static const QRegularExpression dateLiteralRe(QStringLiteral(R"(#([^#]+)#)"));
    static const QRegularExpression bareIndex(
        QStringLiteral(R"((?<![\w"])(?<!CREATE )(?<!UNIQUE )(?<!DROP )INDEX(?![\w"]))"));
    static const QRegularExpression numberThenWord(
        QStringLiteral(R"((?<![\w.\x{0080}-\x{FFFF}])(\d+(?:\.\d+)?)(?=[A-Za-z_]))"));
    for (auto& p : pieces) {
        if (p.quoted) continue;
        // #date# literals → day numbers
        QString t;
        int last = 0;
        auto it = dateLiteralRe.globalMatch(p.text);
        while (it.hasNext()) {
            const auto m = it.next();
            t += p.text.mid(last, m.capturedStart() - last);
            const auto value = dateLiteral(m.captured(1));
            t += value ? QString::number(*value, 'g', 17) : m.captured(0);
            last = m.capturedEnd();
        }
        t += p.text.mid(last);
        t.replace(bareIndex, QStringLiteral("\"INDEX\""));
        // That engine reads "期号>=2024001and": a number ends where a letter begins. SQLite needs
        // the space.
        t.replace(numberThenWord, QStringLiteral("\\1 "));
        p.text = t;
    }

    QString sql = joinPieces(pieces);
    QString masked = maskQuoted(splitQuoted(sql));

    static const QRegularExpression selectTop(
        QStringLiteral(R"(^\s*select\s+(distinct\s+)?top\s+(\d+)(\s+percent)?\s)"),
        QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression selectStart(QStringLiteral(R"(^\s*select\s)"),
                                                QRegularExpression::CaseInsensitiveOption);
    out.isSelect = selectStart.match(masked).hasMatch();
    if (const auto m = selectTop.match(masked); m.hasMatch()) {
        out.hasTop = true;
        out.topCount = m.captured(2).toLongLong();
        out.topPercent = !m.captured(3).isEmpty();
        const int cutFrom = m.capturedStart(2) - 0;
        // remove "top n [percent]" keeping "select [distinct] "
        static const QRegularExpression topWord(QStringLiteral(R"(top\s+$)"),
                                                QRegularExpression::CaseInsensitiveOption);
        const int topStart = masked.left(cutFrom).lastIndexOf(topWord);
        sql = sql.left(topStart) + sql.mid(m.capturedEnd() - 1);
        masked = maskQuoted(splitQuoted(sql));
    }

    if (out.isSelect) {
        static const QRegularExpression orderBy(QStringLiteral(R"(\border\s+by\b)"),
                                                QRegularExpression::CaseInsensitiveOption);
        const int ob = findTopLevel(masked, orderBy);
        if (ob >= 0) {
            static const QRegularExpression byWord(QStringLiteral(R"(by\b)"),
                                                   QRegularExpression::CaseInsensitiveOption);
            const int termsStart = masked.indexOf(byWord, ob) + 2;
            static const QRegularExpression direction(QStringLiteral(R"(\s+(asc|desc)\s*$)"),
                                                      QRegularExpression::CaseInsensitiveOption);
            const QStringList maskedTerms = splitTopLevelCommas(masked.mid(termsStart));
            int pos = termsStart;
            for (const QString& mt : maskedTerms) {
                QString term = sql.mid(pos, mt.size());
                pos += mt.size() + 1;
                term = term.trimmed();
                term.remove(direction);
                if (!term.isEmpty()) out.orderTerms << term.trimmed();
            }
        }
        // A plain single-table select can be written back through its cursor.
        static const QRegularExpression fromTable(
            QStringLiteral(R"(\sfrom\s+([^\s,()]+)\s*(where\b|order\b|$))"),
            QRegularExpression::CaseInsensitiveOption);
        static const QRegularExpression notUpdatable(
            QStringLiteral(R"(\b(join|group\s+by|having|distinct|union)\b)"),
            QRegularExpression::CaseInsensitiveOption);
        // An aggregate in the select list makes one row out of many: nothing to write back to.
        static const QRegularExpression aggregate(
            QStringLiteral(R"(\b(count|sum|min|max|avg|first|last)\s*\()"),
            QRegularExpression::CaseInsensitiveOption);
        static const QRegularExpression fromWord(QStringLiteral(R"(\sfrom\s)"),
                                                 QRegularExpression::CaseInsensitiveOption);
        const QString selectList = masked.left(findTopLevel(masked, fromWord));
        const auto fm = fromTable.match(masked);
        if (fm.hasMatch() && !notUpdatable.match(masked).hasMatch() &&
            !aggregate.match(selectList).hasMatch()) {
            out.baseTable = sql.mid(fm.capturedStart(1), fm.capturedLength(1));
        }
    }
    out.sql = sql;
    return out;
}

QString withHiddenColumns(const JetSql& jet, bool withRowId) {
    QString extra;
    if (withRowId)
        extra += QStringLiteral(", %1.rowid AS %2").arg(jet.baseTable, QLatin1String(kRowIdColumn));
    if (jet.hasTop) {
        for (int i = 0; i < jet.orderTerms.size(); ++i)
            extra += QStringLiteral(", %1 AS %2%3")
                         .arg(jet.orderTerms[i], QLatin1String(kOrderColumnPrefix))
                         .arg(i);
    }
    if (extra.isEmpty()) return jet.sql;
    const QString masked = maskQuoted(splitQuoted(jet.sql));
    static const QRegularExpression from(QStringLiteral(R"(\sfrom\s)"),
                                         QRegularExpression::CaseInsensitiveOption);
    const int at = findTopLevel(masked, from);
    if (at < 0) return jet.sql;
    return jet.sql.left(at) + extra + jet.sql.mid(at);
}

}  // namespace dovrex
