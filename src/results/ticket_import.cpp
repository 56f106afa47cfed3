#include "results/ticket_import.h"

#include <QFile>
#include <QStringDecoder>
#include <cmath>

#include "domain/date_value.h"
#include "history/history_queries.h"
#include "screen/prepared.h"
#include "screen/run_panel.h"
#include "screen/shared_state.h"
#include "screen/ticket_page.h"

namespace dovrex {

namespace {

constexpr int kShortestLine = 15;
constexpr int kIssueDigits = 7;

bool isDigit(QChar c) {
    return c >= u'0' && c <= u'9';
}

QStringView trimBlanks(QStringView s) {
    qsizetype from = 0, to = s.size();
    while (from < to && s[from] == u' ') ++from;
    while (to > from && s[to - 1] == u' ') --to;
    return s.mid(from, to - from);
}

// The number at the head of a text as the old Val() reads it: blanks, tabs and line feeds are skipped
// anywhere, a sign, digits, one decimal point and an exponent; it stops at the first other character.
// Taken to an integer half to even; a value no ball can have comes back as 0.
int valOf(QStringView s) {
    std::string digits;
    qsizetype i = 0;
    auto skip = [&] {
        while (i < s.size() && (s[i] == u' ' || s[i] == u'\t' || s[i] == u'\n' || s[i] == u'\r')) ++i;
    };
    skip();
    if (i < s.size() && (s[i] == u'-' || s[i] == u'+')) digits += char(s[i++].unicode());
    bool point = false, any = false;
    for (; i < s.size(); ++i) {
        skip();
        if (i >= s.size()) break;
        if (isDigit(s[i])) {
            digits += char(s[i].unicode());
            any = true;
        } else if (s[i] == u'.' && !point) {
            point = true;
            digits += '.';
        } else {
            break;
        }
        if (digits.size() > 40) return 0;  // far beyond any ball
    }
    if (!any) return 0;
    if (i < s.size() && (s[i] == u'e' || s[i] == u'E' || s[i] == u'd' || s[i] == u'D')) {
        std::string exponent;
        qsizetype j = i + 1;
        if (j < s.size() && (s[j] == u'+' || s[j] == u'-')) exponent += char(s[j++].unicode());
        for (; j < s.size() && isDigit(s[j]) && exponent.size() < 6; ++j) exponent += char(s[j].unicode());
        if (!exponent.empty() && std::isdigit(static_cast<unsigned char>(exponent.back())))
            digits += 'e' + exponent;
    }
    const double value = std::strtod(digits.c_str(), nullptr);
    if (!std::isfinite(value) || std::abs(value) > 1e6) return 0;
    return int(roundHalfEven(value));
}

bool separator(QChar c) {
    return c == u' ' || c == u'-' || c == u'+' || c == u'，' || c == u'　';
}

}  // namespace

bool import_ParseLine(QStringView raw, int layout, ImportedTicket& ticket) {
    QStringView line = trimBlanks(raw);
    if (line.size() < kShortestLine) return false;
    ticket = ImportedTicket{};

    if (layout == TicketImportOptions::kIssueAndNumbers) {
        qsizetype run = 0, at = -1;
        for (qsizetype i = 0; i < line.size(); ++i) {
            run = isDigit(line[i]) ? run + 1 : 0;
            if (run == kIssueDigits) {
                at = i + 1 - kIssueDigits;
                break;
            }
        }
        if (at < 0) return false;
        ticket.issue = line.mid(at, kIssueDigits).toInt();
        if (ticket.issue < 1) return false;
        line = trimBlanks(line.mid(at + kIssueDigits));
    }

    QString text = line.toString();
    for (QChar& c : text)
        if (separator(c)) c = u',';
    QStringView rest(text);

    if (layout == TicketImportOptions::kSerialAndNumbers) {
        const qsizetype comma = rest.indexOf(u',');
        if (comma >= 0) {
            qsizetype d = comma + 1;
            while (d < rest.size() && !isDigit(rest[d])) ++d;
            rest = rest.mid(d);
        }
    }

    int m[7] = {};
    for (int k = 0; k < 7; ++k) {
        m[k] = valOf(rest);
        const qsizetype comma = rest.indexOf(u',');
        if (comma < 0) break;
        qsizetype d = comma + 1;
        while (d < rest.size() && !isDigit(rest[d])) ++d;
        if (d >= rest.size()) break;
        rest = rest.mid(d);
    }
    for (int k = 0; k < 6; ++k)
        if (m[k] < 1 || m[k] > kRedCount) return false;
    if (m[6] < 1 || m[6] > kBlueCount) return false;
    for (int k = 0; k < 6; ++k) ticket.reds[size_t(k + 1)] = m[k];
    ticket.blue = m[6];
    return true;
}

TextEncoding detect_Encoding(const QByteArray& head, bool wholeIsUtf8) {
    if (head.startsWith("\xEF\xBB\xBF")) return TextEncoding::Utf8;
    if (head.startsWith("\xFF\xFE")) return TextEncoding::Utf16LE;
    if (head.startsWith("\xFE\xFF")) return TextEncoding::Utf16BE;
    return wholeIsUtf8 ? TextEncoding::Utf8 : TextEncoding::Gb18030;
}

namespace {

QStringDecoder decoderFor(TextEncoding e) {
    switch (e) {
        case TextEncoding::Utf16LE:
            return QStringDecoder(QStringConverter::Utf16LE);
        case TextEncoding::Utf16BE:
            return QStringDecoder(QStringConverter::Utf16BE);
        case TextEncoding::Gb18030: {
            QStringDecoder gb("GB18030");
            if (gb.isValid()) return gb;
            return QStringDecoder(QStringConverter::Latin1);
        }
        default:
            return QStringDecoder(QStringConverter::Utf8);
    }
}

constexpr qint64 kChunk = 1 << 20;

// True when the whole file is well-formed UTF-8; read in chunks, so a large file is not held twice.
bool fileIsUtf8(QFile& file) {
    QStringDecoder probe(QStringConverter::Utf8);
    while (!file.atEnd()) {
        const QByteArray chunk = file.read(kChunk);
        if (chunk.isEmpty()) break;
        // decode() is lazy: only the conversion to a string runs it.
        const QString text = probe.decode(chunk);
        if (probe.hasError()) return false;
    }
    const QString tail = probe.decode(QByteArray());
    return !probe.hasError();
}

// Calls `line` with every line of the file, decoded; lines end at CR LF, CR or LF. Only the line being
// read is held in memory.
template <typename F>
void forEachLine(QFile& file, F&& line) {
    const QByteArray head = file.peek(4);
    const bool utf8 = fileIsUtf8(file);
    file.seek(0);
    const TextEncoding encoding = detect_Encoding(head, utf8);
    QStringDecoder decoder = decoderFor(encoding);  // drops a byte order mark itself
    QString pending;
    bool afterCr = false;
    auto feed = [&](const QString& text) {
        qsizetype from = 0;
        for (qsizetype i = 0; i < text.size(); ++i) {
            const QChar c = text[i];
            if (c != u'\n' && c != u'\r') continue;
            if (c == u'\n' && afterCr && i == from) {  // the LF of a CR LF
                afterCr = false;
                from = i + 1;
                continue;
            }
            pending += QStringView(text).mid(from, i - from);
            line(QStringView(pending));
            pending.clear();
            afterCr = c == u'\r';
            from = i + 1;
        }
        if (from < text.size()) {
            pending += QStringView(text).mid(from);
            afterCr = false;
        }
    };
    while (!file.atEnd()) {
        const QByteArray chunk = file.read(kChunk);
        if (chunk.isEmpty()) break;
        feed(decoder.decode(chunk));
    }
    feed(decoder.decode(QByteArray()));
    if (!pending.isEmpty()) line(QStringView(pending));
}

}  // namespace

QString decode_TicketText(const QByteArray& bytes) {
    QStringDecoder probe(QStringConverter::Utf8);
    const QString asUtf8 = probe.decode(bytes);
    QStringDecoder decoder = decoderFor(detect_Encoding(bytes.left(4), !probe.hasError()));
    return decoder.decode(bytes);
}

QString import_DefaultIssue() {
    return QString::number(next_QiHao(Clock::today()));
}

QString import_InputError(const TicketImportOptions& options) {
    if (options.daoRuGeShi == TicketImportOptions::kNumbersOnly && options.daoRuQiHao.size() != kIssueDigits)
        return msg::kNeedSevenDigitIssue;
    return {};
}

int import_HaoMa(const QString& fileName) {
    SharedState& s = shared();
    Screen& ui = screen();
    s.biaoJiQingLing = 0;

    TicketImportOptions options;
    options.daoRuQiHao = import_DefaultIssue();
    for (;;) {
        if (!ui.ui_FromFile(options)) return 0;
        const QString error = import_InputError(options);
        if (error.isEmpty()) break;
        ui.ui_Message(error);
    }
    const IssueNumber boxIssue = read_QiHao(options.daoRuQiHao);

    const int existing = store().scalar(QStringLiteral("select count(*) from 日志表")).toInt();
    if (existing > 0 && !ui.ui_Confirm(msg::kKeepTableTickets)) delete_TouZhu(0);
    // The running counters go on from the table's last ticket; IDs from the highest, so that they stay
    // unique whatever order earlier passes left.
    long long id = store().scalar(QStringLiteral("select max(ID) from 日志表")).toLongLong();
    const int firstSerial = store().scalar(QStringLiteral("select max(序号) from 日志表")).toInt();
    int serial = firstSerial;

    QFile file(fileName);
    RunPanel panel(msg::kImportRunning);
    ui.ui_Set(QStringLiteral("LabelJindu"), QStringLiteral("text"), QStringLiteral("-"));
    ui.ui_Set(QStringLiteral("cmm_stop"), QStringLiteral("enabled"), false);
    if (file.open(QIODevice::ReadOnly)) {
        Transaction tx(store());
        Prepared insert(
            QStringLiteral("INSERT INTO 日志表 (ID,序号,期号,红球1,红球2,红球3,红球4,红球5,红球6,蓝球) "
                           "VALUES (?,?,?,?,?,?,?,?,?,?)"));
        int lines = 0, shown = 0;
        ImportedTicket t;
        forEachLine(file, [&](QStringView line) {
            if (import_ParseLine(line, options.daoRuGeShi, t)) {
                insert.bind(1, ++id).bind(2, ++serial);
                insert.bind(3,
                            options.daoRuGeShi == TicketImportOptions::kIssueAndNumbers ? t.issue : boxIssue);
                for (int i = 1; i <= kRedsPerTicket; ++i) insert.bind(3 + i, t.reds[size_t(i)]);
                insert.bind(10, t.blue);
                insert.exec();
            }
            ui.ui_Pump();
            if (++lines - shown >= 500) {
                shown = lines;
                ui.ui_Set(QStringLiteral("LabelJindu"), QStringLiteral("text"), QString::number(lines));
            }
        });
        ui.ui_Set(QStringLiteral("LabelJindu"), QStringLiteral("text"), QString::number(lines));
    }
    return serial - firstSerial;
}

}  // namespace dovrex
