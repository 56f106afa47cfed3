// Builds the data the program ships with: the packed store with its factory rows and the whole
// published draw history (derived columns computed by the program's own pass), the condition
// template and the guest's condition file.
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTextStream>

#include "history/derived_columns.h"
#include "history/history_import.h"
#include "history/history_queries.h"
#include "pipeline/ssgs_formulas.h"
#include "screen/app_paths.h"
#include "screen/shared_state.h"
#include "store/factory_data.h"
#include "store/pack.h"
#include "store/schema.h"
#include "store/store.h"

using namespace dovrex;

namespace {

bool buildConditionFile(const QString& path) {
    QFile::remove(path);
    auto s = Store::open(path, true);
    createConditionSchema(*s);
    seedConditionTables(*s);
    return true;
}

}  // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    QTextStream err(stderr);
    if (argc < 3) {
        err << "usage: dovrex-makepack <history.tsv> <output folder> [<ssgs-formulas.txt>]\n";
        return 2;
    }
    const QString tsv = QString::fromLocal8Bit(argv[1]);
    const QString outDir = QString::fromLocal8Bit(argv[2]);
    QDir().mkpath(outDir);
    const QString storePath = outDir + QStringLiteral("/build-store.tmp");
    const QString auxPath = outDir + QStringLiteral("/build-aux.tmp");
    QFile::remove(storePath);
    try {
        {
            auto s = Store::open(storePath, true);
            shared().g_Store = s.get();
            createWorkStoreSchema(*s);
            seedFactoryData(*s);
            QString why;
            if (importHistoryTsv(tsv, &why) < 0) {
                err << "cannot read " << tsv << ": " << why << "\n";
                return 1;
            }
            const IssueNumber first = earliest_QiHao(), last = latest_QiHao();
            recalc_LiShiLie(first, first, false);
            recalc_LiShiLie(first, last, false);
            s->execute(QStringLiteral("UPDATE 历史数据过滤 SET 最小值=?, 最大值=?"), {first, last});
            if (argc > 3) {
                SsgsFormulas formulas;
                if (!read_SsgsFile(QString::fromLocal8Bit(argv[3]), formulas, &why)) {
                    err << "cannot read " << argv[3] << ": " << why << "\n";
                    return 1;
                }
                storeFormulas(*s, formulas);
            }
            shared().g_Store = nullptr;
        }
        {
            QFile aux(auxPath);
            if (!aux.open(QIODevice::WriteOnly)) return 1;
            aux.write("dovrex 1\n");
        }
        const QString compacted = outDir + QStringLiteral("/build-store-compact.tmp");
        if (!store_Compact(storePath, compacted)) return 1;
        if (!pack(compacted, auxPath, outDir + u'/' + kDataFileName)) return 1;
        QFile::remove(storePath);
        QFile::remove(compacted);
        QFile::remove(auxPath);
        buildConditionFile(outDir + u'/' + kTemplateFileName);
        buildConditionFile(outDir + u'/' + kGuestFileName);
    } catch (const StoreError& e) {
        err << "store error: " << e.text << "\n";
        return 1;
    }
    return 0;
}
