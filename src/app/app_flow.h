#pragma once

#include <QList>
#include <QLockFile>
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
inline const QString kHistoryStale =
    QStringLiteral(" ◆◇◆→  历史记录： 不完整，请下载或手工添加开奖记录  ←◆◇◆  ");
}  // namespace msg

// Faces of one number button: the ball images by BallColor.
struct BallFace {
    int basic = 0;    // 基本号 + base
    int special = 0;  // 特别号
};

enum class StartOutcome { Ready, AlreadyRunning, DataPackUnreadable, WorkingCopiesLost, BallColorShort };

// The life of the process around its one store: from the pack in the program folder to an open
// working copy, and back to the pack at a clean exit. The window calls these steps in order and
// puts its own (splash, pages) between them.
class AppFlow {
  public:
    explicit AppFlow(AppPaths paths);
    ~AppFlow();

    const AppPaths& paths() const { return paths_; }

    // The single-instance test. It runs before anything is unpacked, so that a second start never
    // overwrites the working copy of the instance that runs.
    bool acquireInstance();
    // app_Initialize: unpacks DataPack into the temporary folder. False when it cannot be read;
    // no file is touched then.
    bool app_Initialize();
    // Recovery, compaction with the size guard, the connection, the history cursor, BallColor.
    // On Ready the store is the process's shared one.
    StartOutcome openStore(bool smallScreen = false);
    // Everything up to a ready store in one call (lock, unpack, open): what the headless runner does.
    StartOutcome start(bool smallScreen = false);

    // Ball faces of the 33 red and 16 blue buttons, read from BallColor.
    const QList<BallFace>& redFaces() const { return redFaces_; }
    const QList<BallFace>& blueFaces() const { return blueFaces_; }

    // See the free function below.
    bool history_Status();

    // app_Unload: asks "确认要退出吗？" first; on no sets cancel and returns. Otherwise saves and
    // closes; false when the pack failed.
    bool app_Unload(bool& cancel);
    // The exit steps after the question: close cursors, pack to Bak, copy over DataPack.
    // False when the pack failed: DataPack then stays as it was.
    bool saveAndClose();
    // Packs the working copy to Bak and over DataPack while the store stays open (no pass may be
    // running). False when the pack failed: DataPack then stays as it was.
    bool save();
    // Beyond this size the store is copied over the pack at start (see openStore).
    void setStoreSizeLimit(qint64 bytes) { storeSizeLimit_ = bytes; }
    // Drops the connection without saving (a start that stops half way).
    void abandon();

  private:
    AppPaths paths_;
    std::unique_ptr<QLockFile> lock_;
    std::unique_ptr<Store> store_;
    QList<BallFace> redFaces_, blueFaces_;
    qint64 storeSizeLimit_;
};

// The words a start that stops shows the user; empty for Ready.
QString startMessage(StartOutcome outcome);

// Writes the status line (panel 3: latest issue, next draw date, today; panel 1: up to date or
// not) and returns true when the history is stale: the next draw date after the latest one lies
// before today, or there is no draw at all.
bool history_Status();

// The compaction of the working copy: copy to WorkStoreCopy (keepCopy), compact into Temp_fu.mdb,
// put that in place. A store that cannot be compacted stays as it is.
bool compactWorkStore(const AppPaths& paths, bool keepCopy);

// Beyond this size the store is copied over the pack at start, so that it does not stay hidden.
inline constexpr qint64 kStoreSizeLimit = 11685168;

}  // namespace dovrex
