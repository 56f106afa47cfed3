#pragma once

#include <QList>
#include <QString>
#include <memory>

#include "screen/app_paths.h"

namespace dovrex {

class Store;

namespace msg {
inline const QString kDataPackUnreadable = QStringLiteral("数据文件无法打开，请重新下载来安装！");
inline const QString kAlreadyRunning = QStringLiteral("程序正在运行,不允许同时打开多个!!!");
inline const QString kWorkingCopiesLost = QStringLiteral("工作数据文件已丢失，请重新启动程序！");
inline const QString kInitError = QStringLiteral("程序初始化出错,即将退出。。。");
inline const QString kConfirmExit = QStringLiteral("确认要退出吗？");
inline const QString kStaleHistory = QStringLiteral("开奖记录不是最新的，是否需要更新到最新的数据．．．");
inline const QString kHistoryUpToDate = QStringLiteral("  ☆☆☆  历史记录： 已更新！  ☆☆☆  ");
inline const QString kOfferBakPack =
    QStringLiteral("数据文件已损坏，无法打开。备份的数据文件（Bak/dovrex.dat）完好，是否用它启动程序？");
inline const QString kProgramFolderReadOnly =
    QStringLiteral("程序文件夹是只读的，无法保存数据，请把程序文件夹设为可写后重新启动程序！");
inline const QString kTempFolderUnwritable =
    QStringLiteral("临时文件夹无法写入（磁盘空间不足？），请清理磁盘后重新启动程序！");
inline const QString kPackStoreDamaged = QStringLiteral(
    "工作数据已损坏，没有保存，以免覆盖完好的数据文件；上次保存的数据文件保持不变。请重新启动程序！");
inline const QString kPackWriteFailed =
    QStringLiteral("数据文件无法写入（磁盘空间不足或程序文件夹只读），上次保存的数据文件保持不变。");
inline const QString kHistoryStale =
    QStringLiteral(" ◆◇◆→  历史记录： 不完整，请下载或手工添加开奖记录  ←◆◇◆  ");
inline QString historyMissingText(int missing) {
    return kHistoryStale + QStringLiteral("约缺 %1 期  ").arg(missing);
}
}  // namespace msg

// Faces of one number button: the ball images by BallColor.
struct BallFace {
    int basic = 0;    // 基本号 + base
    int special = 0;  // 特别号
};

enum class StartOutcome {
    Ready,
    AlreadyRunning,
    DataPackUnreadable,
    WorkingCopiesLost,
    BallColorShort,
    ProgramFolderReadOnly,
    TempFolderUnwritable,
};

enum class SaveOutcome {
    Saved,
    Unchanged,        // nothing changed since the last pack, or a checkpoint is not due yet
    Busy,             // a transaction is open: the store is half way through a pass
    StoreDamaged,     // the store failed quick_check; the last good pack stays
    WriteFailed,      // the program folder could not take the pack; the last good pack stays
    LastWriteFailed,  // the store's last transaction did not reach the working copy; not packed
};

// The life of the process around its one store: from the pack in the program folder to an open
// working copy, and back to the pack at checkpoints and at a clean exit. The window calls these
// steps in order and puts its own (splash, pages) between them.
//
// Every write of a pack goes to a new file beside it, reaches the disc, and is renamed over the old
// one; the old pack becomes Bak/dovrex.dat the same way. So a kill at any moment leaves a whole pack,
// and a store that fails quick_check is never packed.
class AppFlow {
  public:
    explicit AppFlow(AppPaths paths);
    ~AppFlow();

    const AppPaths& paths() const { return paths_; }

    // The single-instance test: a lock in the program folder, taken before anything is unpacked, so
    // that a second start never overwrites the working copy of the instance that runs. Ready,
    // AlreadyRunning or ProgramFolderReadOnly.
    StartOutcome acquireInstance();
    // app_Initialize: unpacks DataPack into the temporary folder. When DataPack is damaged and
    // Bak/dovrex.dat is sound, asks whether to start from that. DataPackUnreadable (no file touched)
    // or TempFolderUnwritable when it stops.
    StartOutcome app_Initialize();
    // Recovery, compaction with the size guard, the connection, the history cursor, BallColor.
    // On Ready the store is the process's shared one.
    StartOutcome openStore(bool smallScreen = false);
    // Everything up to a ready store in one call (lock, unpack, open): what the headless runner does.
    // With `shippedDir`, once the lock is held, whatever the program folder lacks is copied from
    // there first, as the program does at its start.
    StartOutcome start(bool smallScreen = false, const QString& shippedDir = {});

    // Ball faces of the 33 red and 16 blue buttons, read from BallColor.
    const QList<BallFace>& redFaces() const { return redFaces_; }
    const QList<BallFace>& blueFaces() const { return blueFaces_; }

    // See the free function below.
    bool history_Status();

    // app_Unload: asks "确认要退出吗？" first; on no sets cancel and returns. Otherwise saves and
    // closes; false when the pack failed.
    bool app_Unload(bool& cancel);
    // The exit steps after the question: close cursors, pack (when the store changed since the last
    // pack). False when the pack failed (lastSave() tells why): DataPack then stays as it was.
    bool saveAndClose();
    // Packs the working copy now, while the store stays open. Busy inside a transaction.
    SaveOutcome save();
    // The checkpoint of the work: packs when the store changed since the last pack and the last
    // pack is at least checkpointInterval old; Unchanged otherwise, and while the store's last
    // transaction has failed (the command said so).
    SaveOutcome checkpoint();
    void setCheckpointInterval(qint64 ms) { checkpointIntervalMs_ = ms; }
    SaveOutcome lastSave() const { return lastSave_; }
    // Beyond this size the store is copied over the pack at start (see openStore).
    void setStoreSizeLimit(qint64 bytes) { storeSizeLimit_ = bytes; }
    // Drops the connection without saving (a start that stops half way).
    void abandon();

  private:
    SaveOutcome packWorkStore();
    // Puts `bytes` in place of DataPack; the old pack becomes Bak unless it is not to be trusted.
    bool installPack(const QByteArray& bytes);

    AppPaths paths_;
    // The open lock file; the system drops its lock when the process ends, however it ends.
    int lockFd_ = -1;
    std::unique_ptr<Store> store_;
    QList<BallFace> redFaces_, blueFaces_;
    qint64 storeSizeLimit_;
    qint64 checkpointIntervalMs_;
    // The store's change stamp when it was last packed (or opened).
    qint64 packedStamp_ = -1;
    qint64 packedAtMs_ = 0;
    // False while DataPack is the damaged one a start from Bak left: it must never become Bak.
    bool packTrusted_ = true;
    SaveOutcome lastSave_ = SaveOutcome::Unchanged;
};

// The words a start that stops shows the user; empty for Ready.
QString startMessage(StartOutcome outcome);
// The words for a pack that failed; empty for Saved, Unchanged and Busy.
QString saveMessage(SaveOutcome outcome);

// Writes the status line (panel 3: latest issue, next draw date, today; panel 1: up to date or
// not) and returns true when the history is stale: the next draw date after the latest one lies
// before today, or there is no draw at all.
bool history_Status();

// The compaction of the working copy: copy to WorkStoreCopy (keepCopy), compact into Temp_fu.mdb,
// put that in place. A store that cannot be compacted stays as it is.
bool compactWorkStore(const AppPaths& paths, bool keepCopy);

// Beyond this size the store is copied over the pack at start, so that it does not stay hidden.
inline constexpr qint64 kStoreSizeLimit = 11685168;
// The work is packed at most this often.
inline constexpr qint64 kCheckpointIntervalMs = 60 * 1000;

}  // namespace dovrex
