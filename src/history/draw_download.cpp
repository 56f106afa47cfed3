#include "history/draw_download.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QRegularExpression>
#include <QStringDecoder>
#include <QTimer>
#include <QUrl>

#include "history/derived_columns.h"
#include "history/draw_list.h"
#include "history/draw_records.h"
#include "history/history_display.h"
#include "history/history_queries.h"
#include "screen/shared_state.h"
#include "store/factory_data.h"
#include "store/store.h"

namespace dovrex {

namespace {

int g_pageTimeoutMs = 30000;
int g_pageDeadlineMs = 60000;

constexpr int kMirrorCount = 3;
// Issues looked for around the latest: ten back to repair recent rows, 3000 on to cross a year.
constexpr int kIssuesBack = 10;
constexpr int kIssuesOn = 3000;

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
    request.setHeader(QNetworkRequest::UserAgentHeader, QStringLiteral("dovrex"));
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
        if (row >= 1 && row <= kMirrorCount && !address.isEmpty()) addresses[row - 1] = address;
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

bool fetch_KaiJiang(const QString& address) {
    Screen& ui = screen();
    shared().tingZhi = 0;
    const DrawListText list(
        clean_Shuju(get_Page(address.isEmpty() ? mirror_Address(shared().g_MirrorIndex) : address)));
    if (!is_DrawList(list.text())) return false;

    const IssueNumber latest = latest_QiHao();
    const IssueNumber lo = latest - kIssuesBack, hi = latest + kIssuesOn;
    {
        DownloadPanel panel(lo, hi);
        {
            Transaction tx(store());
            DrawRecord draw;
            for (IssueNumber x = lo; x <= hi; ++x) {
                if (parse_QiHao(x, list, draw)) store_KaiJiang(draw, false);
                ui.ui_Pump();
                ui.ui_Progress(lo, hi, x, true);
                if (shared().tingZhi) break;
            }
        }
        const IssueNumber earliest = earliest_QiHao();
        ui.ui_Progress(lo, hi, hi, true);
        recalc_LiShiLie(earliest, earliest, true);
        recalc_LiShiLie(lo, hi, true);
    }
    show_LiShi();
    return true;
}

DownloadResult download_KaiJiang(const QString& address) {
    Screen& ui = screen();
    try {
        if (fetch_KaiJiang(address)) {
            ui.ui_Message(msg::kDownloadDone);
            return DownloadResult::Updated;
        }
    } catch (const StoreError&) {
        return DownloadResult::Error;
    }
    ui.ui_Message(msg::kDownloadFailed, MessageKind::Warning);
    shared().g_MirrorIndex = (((shared().g_MirrorIndex + 1) % kMirrorCount) + kMirrorCount) % kMirrorCount;
    return DownloadResult::Failed;
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
