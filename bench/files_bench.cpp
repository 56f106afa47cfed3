#include <QElapsedTimer>
#include <QTemporaryDir>

#include "app/app_flow.h"
#include "screen/shared_state.h"
#include "bench.h"
#include "store/pack.h"

namespace {

using dovrex::AppFlow;
using dovrex::AppPaths;

// Start, one checkpoint after a change, and a clean exit on a program folder holding the shipped
// pack, grown by `extraMegabytes` of filler rows to show how the costs follow the store's size.
void startCheckpointExit(int extraMegabytes) {
    QTemporaryDir dir;
    AppPaths paths;
    paths.programDir = dir.path() + QStringLiteral("/program");
    paths.tempDir = dir.path() + QStringLiteral("/temp");
    AppPaths::seedProgramDir(paths.programDir, QStringLiteral(DOVREX_BUILD_DIR "/data"));
    const QString size = QStringLiteral("%1 MB store").arg(extraMegabytes + 1);
    if (extraMegabytes > 0) {
        AppFlow grow(paths);
        if (grow.start() != dovrex::StartOutcome::Ready) return;
        dovrex::store_Execute(QStringLiteral("CREATE TABLE 填充 (a BLOB)"));
        for (int i = 0; i < extraMegabytes; ++i)
            dovrex::store_Execute(QStringLiteral("INSERT INTO 填充 VALUES (randomblob(1048576))"));
        grow.saveAndClose();
    }
    QElapsedTimer t;
    t.start();
    AppFlow flow(paths);
    flow.setStoreSizeLimit(qint64(1) << 40);
    if (flow.start() != dovrex::StartOutcome::Ready) return;
    bench::report(QStringLiteral("start: lock, unpack with quick_check, compaction (%1)").arg(size),
                  double(t.nsecsElapsed()) / 1e6, QStringLiteral("ms"));
    flow.setCheckpointInterval(0);
    dovrex::store_Execute(QStringLiteral("UPDATE 过滤条件 SET VALUE=1 WHERE ID=1000"));
    t.start();
    flow.checkpoint();
    bench::report(QStringLiteral("checkpoint: quick_check, pack, fsync, Bak and rename (%1)").arg(size),
                  double(t.nsecsElapsed()) / 1e6, QStringLiteral("ms"));
    t.start();
    flow.saveAndClose();
    bench::report(QStringLiteral("exit with nothing changed since the checkpoint (%1)").arg(size),
                  double(t.nsecsElapsed()) / 1e6, QStringLiteral("ms"));
}

const bench::Register files("files", [] {
    startCheckpointExit(0);
    startCheckpointExit(55);
});

}  // namespace
