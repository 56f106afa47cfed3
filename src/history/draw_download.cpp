#include "history/draw_download.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QFile>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QRegularExpression>
#include <QStringDecoder>
#include <QTimer>
#include <QUrl>
#include <QUrlQuery>
#include <algorithm>

#include "domain/date_value.h"
#include "history/derived_columns.h"
#include "history/draw_list.h"
#include "history/draw_records.h"
#include "history/draw_sources.h"
#include "history/history_display.h"
#include "history/history_queries.h"
#include "screen/chosen_file.h"
#include "screen/shared_state.h"
#include "store/factory_data.h"
#include "store/schema.h"
#include "store/store.h"

namespace dovrex {

namespace {

int g_pageTimeoutMs = 30000;
int g_pageDeadlineMs = 60000;

constexpr int kMirrorCount = 3;
// Issues looked for around the latest: ten back to repair recent rows, 3000 on to cross a year.
constexpr int kIssuesBack = 10;
constexpr int kIssuesOn = 3000;
// The official service is asked a page at a time; the cap ends a service that never says "last".
constexpr int kNoticePageSize = 100;
constexpr int kMaxNoticePages = 100;

QByteArray charsetOf(const QByteArray& body, const QByteArray& contentType) {
    static const QRegularExpression re(QStringLiteral("charset\\s*=\\s*[\"']?([A-Za-z0-9_.:-]+)"),
                                       QRegularExpression::CaseInsensitiveOption);
    auto m = re.match(QString::fromLatin1(contentType));
    if (m.hasMatch()) return m.captured(1).toLatin1();
    m = re.match(QString::fromLatin1(body.left(1024)));
    if (m.hasMatch()) return m.captured(1).toLatin1();
    return {};
}

// Hides the progress bar and clears the download's status panel on every way out of the run.
struct DownloadPanel {
    int lo, hi;
    DownloadPanel(int lo_, int hi_) : lo(lo_), hi(hi_) {
        screen().ui_Status(2, msg::kDownloading);
        screen().ui_Progress(lo, hi, lo, true);
    }
    ~DownloadPanel() {
        screen().ui_Progress(lo, hi, hi, false);
        screen().ui_Status(2, QString());
    }
};

}  // namespace

int page_Timeout() {
    return g_pageTimeoutMs;
}
void set_PageTimeout(int ms) {
    g_pageTimeoutMs = ms > 0 ? ms : 1;
}
int page_Deadline() {
    return g_pageDeadlineMs;
}
void set_PageDeadline(int ms) {
    g_pageDeadlineMs = ms > 0 ? ms : 1;
}

PageReply fetch_Page(const QString& url) {
    PageReply page;
    const QUrl target(url.trimmed());
    if (!QCoreApplication::instance() || !target.isValid() ||
        (target.scheme() != QLatin1String("http") && target.scheme() != QLatin1String("https")))
        return page;

    QNetworkAccessManager manager;
    QNetworkRequest request(target);
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::NoLessSafeRedirectPolicy);
    // Draw services answer browsers: a browser's User-Agent and a Referer of the site itself.
    request.setHeader(QNetworkRequest::UserAgentHeader,
                      QStringLiteral("Mozilla/5.0 (Windows NT 10.0; Win64; x64) AppleWebKit/537.36 "
                                     "(KHTML, like Gecko) Chrome/120.0 Safari/537.36"));
    request.setRawHeader("Referer", target.resolved(QUrl(QStringLiteral("/"))).toEncoded());
    QNetworkReply* reply = manager.get(request);

    QEventLoop loop;
    // `idle` ends a silent wait; `deadline` ends the whole request, so that a server sending a byte
    // now and then cannot hold the download for ever.
    QTimer idle, deadline, pump;
    idle.setSingleShot(true);
    idle.setInterval(g_pageTimeoutMs);
    deadline.setSingleShot(true);
    deadline.setInterval(g_pageDeadlineMs);
    pump.setInterval(30);
    QObject::connect(reply, &QNetworkReply::readyRead, &loop, [&] {
        page.body += reply->readAll();
        idle.start();
        // No draw source is that large: stop reading, and the reader refuses the body whole.
        if (page.body.size() > kMaxDrawSourceBytes) loop.quit();
    });
    QObject::connect(reply, &QNetworkReply::finished, &loop, &QEventLoop::quit);
    const auto giveUp = [&] {
        page.timedOut = true;
        loop.quit();
    };
    QObject::connect(&idle, &QTimer::timeout, &loop, giveUp);
    QObject::connect(&deadline, &QTimer::timeout, &loop, giveUp);
    QObject::connect(&pump, &QTimer::timeout, &loop, [&] {
        screen().ui_Pump();
        if (shared().tingZhi) {
            page.timedOut = true;
            loop.quit();
        }
    });
    idle.start();
    deadline.start();
    pump.start();
    if (!reply->isFinished()) loop.exec();
    pump.stop();
    deadline.stop();
    idle.stop();
    if (!reply->isFinished()) {
        QObject::disconnect(reply, nullptr, &loop, nullptr);
        reply->abort();
    }
    if (reply->isOpen()) page.body += reply->readAll();
    page.status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    page.contentType = reply->header(QNetworkRequest::ContentTypeHeader).toByteArray();
    return page;
}

QString decode_Page(const QByteArray& body, const QByteArray& contentType) {
    if (auto bom = QStringConverter::encodingForData(body)) {
        QStringDecoder decoder(*bom);
        return decoder(body);
    }
    const QByteArray charset = charsetOf(body, contentType);
    if (!charset.isEmpty()) {
        QStringDecoder decoder(charset.constData());
        if (decoder.isValid()) return decoder(body);
    }
    QStringDecoder utf8(QStringDecoder::Utf8);
    const QString text = utf8(body);
    if (!utf8.hasError()) return text;
    QStringDecoder gb("GB18030");
    return gb.isValid() ? QString(gb(body)) : text;
}

QString get_Page(const QString& url) {
    const PageReply page = fetch_Page(url);
    if (page.status >= 400 || (page.status == 0 && page.body.isEmpty())) return {};
    return decode_Page(page.body, page.contentType);
}

QStringList load_MirrorAddresses() {
    QStringList addresses = defaultMirrorAddresses();
    for (auto c = store_Query(QStringLiteral("select 序号, 地址 from 下载地址 order by 序号")); !c->eof();
         c->moveNext()) {
        const int row = c->intValue(0);
        const QString address = c->value(1).toString().trimmed();
        // Stores made before real sources were chosen hold placeholders: they read as the defaults.
        if (row >= 1 && row <= kMirrorCount && !address.isEmpty() &&
            !address.contains(QLatin1String("dovrex.example")))
            addresses[row - 1] = address;
    }
    return addresses;
}

void save_MirrorAddresses(const QStringList& addresses) {
    const QStringList defaults = defaultMirrorAddresses();
    Transaction tx(store());
    for (int i = 0; i < kMirrorCount; ++i) {
        const QString address = addresses.value(i).trimmed();
        store_Execute(QStringLiteral("INSERT OR REPLACE INTO 下载地址 (序号, 地址) VALUES (?, ?)"),
                      {i + 1, address.isEmpty() ? defaults[i] : address});
    }
}

QString mirror_Address(int index) {
    return load_MirrorAddresses().value(((index % kMirrorCount) + kMirrorCount) % kMirrorCount);
}

bool is_NoticeService(const QString& address) {
    return QUrl(address.trimmed()).path().endsWith(QLatin1String("findDrawNotice"), Qt::CaseInsensitive);
}

QString notice_PageAddress(const QString& address, IssueNumber from, int pageNo) {
    QUrl url(address.trimmed());
    QUrlQuery query(url);
    for (const char* key : {"issueCount", "issueStart", "issueEnd", "pageNo", "pageSize"})
        query.removeAllQueryItems(QLatin1String(key));
    if (!query.hasQueryItem(QStringLiteral("name")))
        query.addQueryItem(QStringLiteral("name"), QStringLiteral("ssq"));
    if (from > 0) {
        query.addQueryItem(QStringLiteral("issueStart"), QString::number(from));
        query.addQueryItem(QStringLiteral("issueEnd"),
                           QString::number((Clock::today().year() + 1) * 1000 + 999));
    }
    query.addQueryItem(QStringLiteral("pageNo"), QString::number(pageNo));
    query.addQueryItem(QStringLiteral("pageSize"), QString::number(kNoticePageSize));
    url.setQuery(query);
    return url.toString();
}

namespace {

// One response read, or Unknown when it did not come, came with an error status or is too large.
SourceDraws fetchSource(const QString& address, IssueNumber from, IssueNumber to) {
    const PageReply page = fetch_Page(address);
    if (page.status >= 400 || page.body.isEmpty() || page.body.size() > kMaxDrawSourceBytes) return {};
    return read_DrawSource(page.body, page.contentType, from, to);
}

// The official service page by page: from the newest stored issue on, the whole history when the
// table is empty. Ends on a short page, the last page the service names, a page that does not read
// (what came before stays), or Stop.
SourceDraws fetchNotices(const QString& address, IssueNumber from) {
    Screen& ui = screen();
    SourceDraws all;
    for (int pageNo = 1; pageNo <= kMaxNoticePages; ++pageNo) {
        SourceDraws page = fetchSource(notice_PageAddress(address, from, pageNo), 0, 0);
        if (page.kind != DrawSourceKind::Notices) break;
        all.kind = DrawSourceKind::Notices;
        all.draws += page.draws;
        all.prizes += page.prizes;
        all.refused.add(page.refused);
        // The service names its last page; without that a short page is the last.
        const bool last = page.pageCount > 0 ? pageNo >= page.pageCount
                                             : page.draws.size() + page.refused.count() < kNoticePageSize;
        ui.ui_Progress(0, std::max(page.pageCount, pageNo), pageNo, true);
        ui.ui_Pump();
        if (shared().tingZhi || last) break;
    }
    return all;
}

void storePrizes(const QList<PrizeTier>& prizes) {
    if (prizes.isEmpty()) return;
    createPrizeSchema(store());
    for (const PrizeTier& p : prizes)
        store_Execute(
            QStringLiteral("INSERT OR REPLACE INTO 奖级奖金 (期号, 奖级, 注数, 奖金) VALUES (?, ?, ?, ?)"),
            {p.issue, p.tier, p.winners, p.prize < 0 ? QVariant() : QVariant(p.prize)});
}

bool sameNumbers(const DrawRecord& a, const DrawRecord& b) {
    return a.reds == b.reds && a.blue == b.blue;
}

}  // namespace

int store_Downloaded(SourceDraws& source, bool official) {
    Screen& ui = screen();
    if (source.draws.isEmpty() && source.prizes.isEmpty()) return 0;
    IssueNumber lo = source.draws.isEmpty() ? 0 : source.draws.front().issue, hi = lo;
    for (const DrawRecord& d : source.draws) {
        lo = std::min(lo, d.issue);
        hi = std::max(hi, d.issue);
    }

    // A stored draw moves to other numbers only on the official word or the user's.
    QHash<IssueNumber, DrawRecord> stored;
    for (const DrawRecord& d : read_DrawRecords(store(), lo, hi)) stored.insert(d.issue, d);
    int changed = 0;
    for (const DrawRecord& d : source.draws)
        if (stored.contains(d.issue) && !sameNumbers(stored[d.issue], d)) ++changed;
    const bool overwrite = official || changed == 0 || ui.ui_Confirm(msg::overwriteDrawsText(changed));

    int written = 0;
    {
        DownloadPanel panel(0, int(source.draws.size()));
        {
            Transaction tx(store());
            for (const DrawRecord& d : source.draws) {
                const auto old = stored.constFind(d.issue);
                if (old != stored.cend() && !overwrite && !sameNumbers(*old, d)) continue;
                if (store_KaiJiang(d, false)) ++written;
                ui.ui_Pump();
                ui.ui_Progress(0, int(source.draws.size()), written, true);
                if (shared().tingZhi) break;
            }
            storePrizes(source.prizes);
        }
        if (!source.draws.isEmpty()) {
            const IssueNumber earliest = earliest_QiHao();
            recalc_LiShiLie(earliest, earliest, true);
            recalc_LiShiLie(lo, hi, true);
        }
    }
    return written;
}

FetchOutcome fetch_Draws(const QString& address) {
    shared().tingZhi = 0;
    const QString url = address.isEmpty() ? mirror_Address(shared().g_MirrorIndex) : address;
    const bool empty = store().scalar(QStringLiteral("select count(*) from 历史记录")).toInt() == 0;
    const IssueNumber latest = latest_QiHao();
    FetchOutcome outcome;
    SourceDraws source;
    if (is_NoticeService(url)) {
        source = fetchNotices(url, empty ? 0 : latest - kIssuesBack);
    } else {
        source = fetchSource(url, latest - kIssuesBack, latest + kIssuesOn);
        // A whole list replaces nothing older than the repair window unless the table is empty.
        if (!empty && source.kind != DrawSourceKind::DrawList)
            source.draws.removeIf([&](const DrawRecord& d) { return d.issue < latest - kIssuesBack; });
    }
    if (source.kind == DrawSourceKind::Unknown) return outcome;
    outcome.read = true;
    outcome.refused = source.refused;
    outcome.stored = store_Downloaded(source, is_NoticeService(url));
    show_LiShi();
    return outcome;
}

bool fetch_KaiJiang(const QString& address) {
    return fetch_Draws(address).read;
}

DownloadResult downloadNewDraws(const QString& address) {
    Screen& ui = screen();
    try {
        const FetchOutcome outcome = fetch_Draws(address);
        if (outcome.read) {
            ui.ui_Message(outcome.refused.isEmpty() ? msg::kDownloadDone
                                                    : msg::kDownloadDone + u'\n' + outcome.refused.text(),
                          MessageKind::Information, msg::kDownloadTitle);
            return DownloadResult::Updated;
        }
    } catch (const StoreWriteError&) {
        throw;  // a lost write is the command trap's to report
    } catch (const StoreError&) {
        return DownloadResult::Error;
    }
    ui.ui_Message(msg::kDownloadFailed, MessageKind::Warning);
    shared().g_MirrorIndex = (((shared().g_MirrorIndex + 1) % kMirrorCount) + kMirrorCount) % kMirrorCount;
    return DownloadResult::Failed;
}

DownloadResult update_FromFile(const QString& chosen) {
    Screen& ui = screen();
    const QString path = chosen.isEmpty() ? ui.ui_PickFile(msg::kDrawFileFilter, false) : chosen;
    if (path.isEmpty()) return DownloadResult::Failed;
    QFile file;
    if (!openChosenFile(file, path)) return DownloadResult::Failed;
    const QByteArray body =
        file.size() > kMaxDrawSourceBytes ? QByteArray() : file.read(kMaxDrawSourceBytes + 1);
    file.close();
    try {
        shared().tingZhi = 0;
        const bool empty = store().scalar(QStringLiteral("select count(*) from 历史记录")).toInt() == 0;
        const IssueNumber latest = latest_QiHao();
        SourceDraws source =
            read_DrawSource(body, QByteArray(), empty ? 0 : latest - kIssuesBack, latest + kIssuesOn);
        if (source.kind == DrawSourceKind::Unknown) {
            ui.ui_Message(msg::kNotADrawFile, MessageKind::Warning);
            return DownloadResult::Failed;
        }
        store_Downloaded(source, false);
        show_LiShi();
        ui.ui_Message(source.refused.isEmpty() ? msg::kDownloadDone
                                               : msg::kDownloadDone + u'\n' + source.refused.text(),
                      MessageKind::Information, msg::kDownloadTitle);
        return DownloadResult::Updated;
    } catch (const StoreWriteError&) {
        throw;  // a lost write is the command trap's to report
    } catch (const StoreError&) {
        return DownloadResult::Error;
    }
}

QString lookup_Address(IssueNumber issue) {
    const QString page = QStringLiteral("%1.html").arg(issue % 100000, 5, 10, QLatin1Char('0'));
    return QUrl(mirror_Address(shared().g_MirrorIndex)).resolved(QUrl(page)).toString();
}

LookupResult cmm_kuaisusezi() {
    Screen& ui = screen();
    const QString reply = ui.ui_AskText(msg::kLookupAsk, msg::kLookupTitle, QString::number(latest_QiHao()));
    if (reply.trimmed().isEmpty()) return LookupResult::Cancelled;
    const QString address = lookup_Address(IssueNumber(read_Number(reply)));
    if (!get_Page(address).contains(QStringLiteral("双色球"))) {
        ui.ui_Message(msg::kLookupMissing);
        return LookupResult::NotFound;
    }
    ui.ui_OpenUrl(address);
    return LookupResult::Opened;
}

}  // namespace dovrex
