#include "results/ticket_import.h"

#include <QFile>
#include <QStringDecoder>
#include <cmath>
#include <vector>

#include "domain/date_value.h"
#include "domain/record_checks.h"
#include "history/history_queries.h"
#include "screen/chosen_file.h"
#include "screen/control_roles.h"
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

namespace {

constexpr qint64 kChunk = 1 << 20;

// Splits a stream of text (bytes or UTF-16) into lines at CR LF, CR or LF. A line cut at the end of
// a chunk waits in `pending_` for the next.
template <typename Text>
class LineSplitter {
  public:
    template <typename F>
    void feed(const Text& text, F&& line) {
        qsizetype from = 0;
        for (qsizetype i = 0; i < text.size(); ++i) {
            const auto c = text[i];
            if (c != u'\n' && c != u'\r') continue;
            if (c == u'\n' && afterCr_ && i == from) {  // the LF of a CR LF
                afterCr_ = false;
                from = i + 1;
                continue;
            }
            pending_ += text.mid(from, i - from);
            line(pending_);
            pending_.clear();
            afterCr_ = c == u'\r';
            from = i + 1;
        }
        if (from < text.size()) {
            pending_ += text.mid(from);
            afterCr_ = false;
        }
    }
    template <typename F>
    void finish(F&& line) {
        if (!pending_.isEmpty()) line(pending_);
        pending_.clear();
    }

  private:
    Text pending_;
    bool afterCr_ = false;
};

// One line's bytes as UTF-8 when they are well-formed UTF-8, else as GB18030. Both decoders start
// afresh on every line, so a broken line never spoils the next.
class LineDecoder {
  public:
    QString operator()(const QByteArray& bytes) {
        utf8_.resetState();
        QString text = utf8_.decode(bytes);
        if (!utf8_.hasError()) return text;
        if (!gb_.isValid()) return QString::fromLatin1(bytes);
        gb_.resetState();
        return gb_.decode(bytes);
    }

  private:
    QStringDecoder utf8_{QStringConverter::Utf8};
    QStringDecoder gb_{"GB18030"};
};

}  // namespace

void read_TicketLines(QIODevice& in, const std::function<void(QStringView)>& line) {
    const QByteArray head = in.peek(3);
    const bool utf16le = head.startsWith("\xFF\xFE"), utf16be = head.startsWith("\xFE\xFF");
    if (utf16le || utf16be) {
        // Its own decoder drops the mark; a UTF-16 file is one encoding from end to end.
        QStringDecoder decoder(utf16le ? QStringConverter::Utf16LE : QStringConverter::Utf16BE);
        LineSplitter<QString> lines;
        auto deliver = [&](const QString& text) { line(text); };
        while (!in.atEnd()) {
            const QByteArray chunk = in.read(kChunk);
            if (chunk.isEmpty()) break;
            lines.feed(decoder.decode(chunk), deliver);
        }
        lines.feed(decoder.decode(QByteArray()), deliver);
        lines.finish(deliver);
        return;
    }
    if (head.startsWith("\xEF\xBB\xBF")) in.read(3);
    LineDecoder decode;
    LineSplitter<QByteArray> lines;
    auto deliver = [&](const QByteArray& bytes) { line(decode(bytes)); };
    while (!in.atEnd()) {
        const QByteArray chunk = in.read(kChunk);
        if (chunk.isEmpty()) break;
        lines.feed(chunk, deliver);
    }
    lines.finish(deliver);
}

QString import_DefaultIssue() {
    return QString::number(next_QiHao(Clock::today()));
}

namespace {

// A ticket file read and checked, before anything in the store changes.
struct ReadTickets {
    std::vector<ImportedTicket> tickets;  // each with the issue it is stored under
    RefusedRecords refused;
    bool overLimit = false;  // more valid tickets than the program takes; reading stopped there
};

ReadTickets readTicketFile(QFile& file, const TicketImportOptions& options, IssueNumber boxIssue) {
    Screen& ui = screen();
    ReadTickets read;
    long long lineNo = 0, shown = 0;
    ImportedTicket t;
    read_TicketLines(file, [&](QStringView line) {
        ++lineNo;
        if (read.overLimit || line.trimmed().isEmpty()) return;  // blank lines part groups of tickets
        const bool parsed = import_ParseLine(line, options.daoRuGeShi, t);
        if (parsed && options.daoRuGeShi != TicketImportOptions::kIssueAndNumbers) t.issue = boxIssue;
        if (!parsed || !ticketFault(t.reds, t.blue, t.issue).isEmpty()) {
            read.refused.add(lineNo);
        } else if (int(read.tickets.size()) >= kTicketLimit) {
            read.overLimit = true;
        } else {
            read.tickets.push_back(t);
        }
        ui.ui_Pump();
        if (lineNo - shown >= 500) {
            shown = lineNo;
            ui.ui_Set(role::LabelJindu, QStringLiteral("text"), QString::number(lineNo));
        }
    });
    ui.ui_Set(role::LabelJindu, QStringLiteral("text"), QString::number(lineNo));
    return read;
}

}  // namespace

int import_HaoMa(const QString& fileName) {
    SharedState& s = shared();
    Screen& ui = screen();
    s.biaoJiQingLing = 0;

    TicketImportOptions options;
    options.daoRuQiHao = import_DefaultIssue();
    if (!ui.ui_FromFile(options)) return 0;
    if (const QString error = import_InputError(options); !error.isEmpty()) {
        ui.ui_Message(error);
        return 0;
    }
    const IssueNumber boxIssue = readIssue(options.daoRuQiHao);
    QFile file;
    if (!openChosenFile(file, fileName)) return 0;

    // The whole file is read and checked first: a file with nothing to import, or more than the
    // program takes, changes nothing, and the question about the table comes after.
    ReadTickets read;
    {
        RunPanel panel(msg::kImportRunning);
        ui.ui_Set(role::LabelJindu, QStringLiteral("text"), QStringLiteral("-"));
        ui.ui_Set(role::cmm_stop, QStringLiteral("enabled"), false);
        read = readTicketFile(file, options, boxIssue);
    }
    if (!read.refused.isEmpty()) {
        ui.ui_Message(read.refused.text(), MessageKind::Warning);
        log_Append(read.refused.text());
    }
    if (read.overLimit) {
        ui.ui_Message(msg::kImportTicketsOverLimit, MessageKind::Warning);
        return 0;
    }
    if (read.tickets.empty()) {
        ui.ui_Message(msg::kImportNothingValid, MessageKind::Warning);
        return 0;
    }

    const int existing = store().scalar(QStringLiteral("select count(*) from 日志表")).toInt();
    if (existing > 0 && !ui.ui_Confirm(msg::kKeepTableTickets)) {
        delete_TouZhu(0);
    } else if (existing + qsizetype(read.tickets.size()) > kTicketLimit) {
        ui.ui_Message(msg::kImportTicketsOverLimit, MessageKind::Warning);
        return 0;
    }
    // The running counters go on from the table's last ticket; IDs from the highest, so that they stay
    // unique whatever order earlier passes left.
    long long id = store().scalar(QStringLiteral("select max(ID) from 日志表")).toLongLong();
    const int firstSerial = store().scalar(QStringLiteral("select max(序号) from 日志表")).toInt();
    int serial = firstSerial;
    {
        Transaction tx(store());
        Prepared insert(
            QStringLiteral("INSERT INTO 日志表 (ID,序号,期号,红球1,红球2,红球3,红球4,红球5,红球6,蓝球) "
                           "VALUES (?,?,?,?,?,?,?,?,?,?)"));
        for (const ImportedTicket& t : read.tickets) {
            insert.bind(1, ++id).bind(2, ++serial).bind(3, t.issue);
            for (int i = 1; i <= kRedsPerTicket; ++i) insert.bind(3 + i, t.reds[size_t(i)]);
            insert.bind(10, t.blue);
            insert.exec();
        }
    }
    return serial - firstSerial;
}

}  // namespace dovrex
