// Writes the draw list the download reads, from a history: the shipped pack, a store file or the
// tab-separated list. It is what a mirror serves, and what the tests serve on the loopback.
//
//   dovrex-drawlist [--from ISSUE] [--to ISSUE] [--skip ISSUE[,ISSUE...]] <history> <list.txt>
#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>
#include <QTextStream>

#include "history/draw_list.h"
#include "history/history_import.h"
#include "screen/shared_state.h"
#include "store/pack.h"
#include "store/schema.h"
#include "store/store.h"

using namespace dovrex;

namespace {

// Opens the history as a store: a pack is unpacked, a .tsv is read into a new store.
std::unique_ptr<Store> openHistory(const QString& source, const QTemporaryDir& dir) {
    const QString work = dir.filePath(QStringLiteral("history.dat"));
    if (source.endsWith(QLatin1String(".tsv"), Qt::CaseInsensitive)) {
        auto s = Store::open(work, true);
        createWorkStoreSchema(*s);
        shared().g_Store = s.get();
        const int added = importHistoryTsv(source);
        shared().g_Store = nullptr;
        if (added < 0) return nullptr;
        return s;
    }
    if (!unpack(source, work, dir.filePath(QStringLiteral("history.aux")))) return nullptr;
    return Store::open(work);
}

}  // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    QTextStream err(stderr);
    QStringList args = app.arguments().mid(1);
    IssueNumber from = 0, to = 9999999;
    QList<IssueNumber> skip;
    QStringList files;
    for (int i = 0; i < args.size(); ++i) {
        const QString& a = args[i];
        if ((a == QLatin1String("--from") || a == QLatin1String("--to") || a == QLatin1String("--skip")) &&
            i + 1 < args.size()) {
            const QString v = args[++i];
            if (a == QLatin1String("--from")) from = v.toInt();
            if (a == QLatin1String("--to")) to = v.toInt();
            if (a == QLatin1String("--skip"))
                for (const QString& s : v.split(u',', Qt::SkipEmptyParts)) skip << s.toInt();
        } else {
            files << a;
        }
    }
    if (files.size() != 2) {
        err << "usage: dovrex-drawlist [--from ISSUE] [--to ISSUE] [--skip ISSUE,...] <history: pack, store "
               "or .tsv> "
               "<list.txt>\n";
        return 2;
    }
    QTemporaryDir dir;
    try {
        auto s = openHistory(files[0], dir);
        if (!s) {
            err << "cannot read the history in " << files[0] << "\n";
            return 1;
        }
        QList<DrawRecord> draws = read_DrawRecords(*s, from, to);
        draws.removeIf([&](const DrawRecord& d) { return skip.contains(d.issue); });
        QFile out(files[1]);
        if (!out.open(QIODevice::WriteOnly) || out.write(format_DrawList(draws)) < 0) {
            err << "cannot write " << files[1] << "\n";
            return 1;
        }
        QTextStream(stdout) << draws.size() << " draws written to " << files[1] << Qt::endl;
    } catch (const StoreError& e) {
        err << "store error: " << e.text << "\n";
        return 1;
    }
    return 0;
}
