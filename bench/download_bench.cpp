#include <QElapsedTimer>
#include <QTemporaryDir>

#include "bench.h"
#include "history/draw_download.h"
#include "history/draw_list.h"
#include "history/draw_sources.h"
#include "history/history_queries.h"
#include "screen/shared_state.h"
#include "store/factory_data.h"
#include "store/schema.h"
#include "store/store.h"
#include "support/draw_list_server.h"

namespace {

using namespace dovrex;

// The whole published history downloaded from a server on the loopback into an empty store, as a
// user would: one download after another until the latest draw stays put, recounts included.
const bench::Register wholeHistory("download", [] {
    QByteArray list;
    int draws = 0;
    {
        bench::ShippedStore shipped;
        const QList<DrawRecord> all = read_DrawRecords(store());
        draws = int(all.size());
        list = format_DrawList(all);
    }
    DrawListServer server;
    if (!server.start()) return;
    server.setPage(QStringLiteral("/ssq/list.txt"), list);

    QTemporaryDir dir;
    auto fresh = Store::open(dir.filePath(QStringLiteral("work.dat")), true);
    createWorkStoreSchema(*fresh);
    seedFactoryData(*fresh);
    shared().g_Store = fresh.get();
    const QString url = server.url(QStringLiteral("/ssq/list.txt"));
    save_MirrorAddresses({url, url, url});

    QElapsedTimer t;
    t.start();
    int downloads = 0;
    for (IssueNumber before = -1; before != latest_QiHao() && downloads < 20; ++downloads) {
        before = latest_QiHao();
        if (downloadNewDraws() != DownloadResult::Updated) break;
    }
    const double ms = double(t.nsecsElapsed()) / 1e6;
    const int stored = store().scalar(QStringLiteral("select count(*) from 历史记录")).toInt();
    bench::report(
        QStringLiteral("download of the whole history from the loopback (%1 of %2 draws, %3 downloads, "
                       "recounts included)")
            .arg(stored)
            .arg(draws)
            .arg(downloads),
        ms, QStringLiteral("ms"));

    // The usual case: the list fetched again with the history complete.
    t.restart();
    downloadNewDraws();
    bench::report(QStringLiteral("one download onto a complete history"), double(t.nsecsElapsed()) / 1e6,
                  QStringLiteral("ms"));
    shared().g_Store = nullptr;
});

// Reading a response of each kind holding 3,500 draws, recounts excluded: the official notices
// as JSON and a plain text list, one draw a line.
const bench::Register readSources("download", [] {
    QByteArray json = "{\"state\":0,\"pageCount\":1,\"result\":[";
    QByteArray text;
    const QDate first(2003, 2, 23);
    for (int i = 0; i < 3500; ++i) {
        const QDate day = first.addDays(2 * i);
        const QByteArray issue = QByteArray::number(day.year() * 1000 + 1 + i % 150);
        const QByteArray date = day.toString(QStringLiteral("yyyy-MM-dd")).toLatin1();
        if (i > 0) json += ',';
        json += "{\"name\":\"双色球\",\"code\":\"" + issue + "\",\"date\":\"" + date +
                "(日)\",\"red\":\"01,04,16,22,26,31\",\"blue\":\"04\",\"sales\":\"382912346\","
                "\"prizegrades\":[{\"type\":1,\"typenum\":\"8\",\"typemoney\":\"6821493\"},"
                "{\"type\":2,\"typenum\":\"150\",\"typemoney\":\"152844\"},"
                "{\"type\":3,\"typenum\":\"1521\",\"typemoney\":\"3000\"}]}";
        text += issue + ' ' + date + " 01 04 16 22 26 31 04 382912346 2181236457\r\n";
    }
    json += "]}";
    for (const auto& [what, body] :
         {std::pair{"3,500-draw notice JSON", json}, std::pair{"3,500-line text list", text}}) {
        QElapsedTimer t;
        t.start();
        const SourceDraws read = read_DrawSource(body, "text/plain", 0, 0);
        bench::report(QStringLiteral("read a %1 (%2 draws)").arg(QLatin1String(what)).arg(read.draws.size()),
                      double(t.nsecsElapsed()) / 1e6, QStringLiteral("ms"));
    }
});

}  // namespace
