#include "app/app_flow.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <chrono>
#include <limits>

#include "app/status_line.h"
#include "domain/game.h"
#include "filters/condition_files.h"
#include "history/history_queries.h"
#include "screen/shared_state.h"
#include "store/ini_file.h"
#include "store/pack.h"
#include "store/schema.h"
#include "store/store.h"
#include "users/users.h"

namespace dovrex {

namespace {
qint64 monotonicMs() {
    return std::chrono::duration_cast<std::chrono::milliseconds>(
               std::chrono::steady_clock::now().time_since_epoch())
        .count();
}
}  // namespace

AppFlow::AppFlow(AppPaths paths)
    : paths_(std::move(paths)),
      storeSizeLimit_(kStoreSizeLimit),
      checkpointIntervalMs_(kCheckpointIntervalMs),
      packedAtMs_(std::numeric_limits<qint64>::min() / 2) {
    QDir().mkpath(paths_.tempDir);
}

AppFlow::~AppFlow() {
    abandon();
    if (lockFd_ >= 0) ::close(lockFd_);
}

StartOutcome AppFlow::acquireInstance() {
    if (lockFd_ >= 0) return StartOutcome::Ready;
    QDir().mkpath(paths_.programDir);
    const QByteArray folder = QFile::encodeName(paths_.programDir);
    if (::access(folder.constData(), W_OK) != 0) return StartOutcome::ProgramFolderReadOnly;
    // flock rather than a lock file that names its owner: a killed process can leave no stale or
    // half-written lock behind, so nothing has to guess whether the owner still lives.
    const int fd =
        ::open(QFile::encodeName(paths_.lockFile()).constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0644);
    if (fd < 0) return StartOutcome::ProgramFolderReadOnly;
    if (::flock(fd, LOCK_EX | LOCK_NB) != 0) {
        ::close(fd);
        return StartOutcome::AlreadyRunning;
    }
    // The owner's process id, only for whoever looks at the folder.
    const QByteArray pid = QByteArray::number(qint64(::getpid())) + '\n';
    const bool noted =
        ::ftruncate(fd, 0) == 0 && ::write(fd, pid.constData(), size_t(pid.size())) == pid.size();
    Q_UNUSED(noted);
    lockFd_ = fd;
    return StartOutcome::Ready;
}

StartOutcome AppFlow::app_Initialize() {
    const FileOutcome unpacked = unpackFiles(paths_.dataPack(), paths_.workStore(), paths_.workAux());
    if (unpacked == FileOutcome::Done) return StartOutcome::Ready;
    if (unpacked == FileOutcome::WriteFailed) return StartOutcome::TempFolderUnwritable;

    // DataPack is damaged. Bak is unpacked beside the working copy first, so that a no leaves
    // every file as it was.
    const QString bakStore = paths_.tempDir + QStringLiteral("/dovrex_bak.dat");
    const QString bakAux = paths_.tempDir + QStringLiteral("/dovrex_bak.aux");
    const FileOutcome fromBak = unpackFiles(paths_.bakPack(), bakStore, bakAux);
    if (fromBak == FileOutcome::WriteFailed) return StartOutcome::TempFolderUnwritable;
    const bool useBak = fromBak == FileOutcome::Done && screen().ui_Confirm(msg::kOfferBakPack);
    if (!useBak || !replaceFile(bakAux, paths_.workAux()) || !replaceFile(bakStore, paths_.workStore())) {
        QFile::remove(bakStore);
        QFile::remove(bakAux);
        return StartOutcome::DataPackUnreadable;
    }
    // The damaged pack must never become Bak; the good one takes its place at once.
    QFile bak(paths_.bakPack());
    packTrusted_ = bak.open(QIODevice::ReadOnly) && writeFileDurably(paths_.dataPack(), bak.readAll());
    return StartOutcome::Ready;
}

bool compactWorkStore(const AppPaths& paths, bool keepCopy) {
    const QString work = paths.workStore();
    if (!QFileInfo::exists(work)) return false;
    if (keepCopy) {
        QFile::remove(paths.workStoreCopy());
        // A copy cut short by a full disc must not stand in for the store later.
        if (!QFile::copy(work, paths.workStoreCopy())) QFile::remove(paths.workStoreCopy());
    }
    QFile::remove(paths.compactTarget());
    if (!store_Compact(work, paths.compactTarget())) return false;
    return replaceFile(paths.compactTarget(), work);
}

StartOutcome AppFlow::openStore(bool smallScreen) {
    // Recover the working copy from the one taken before the last compaction.
    if (!QFileInfo::exists(paths_.workStore())) {
        if (!QFileInfo::exists(paths_.workStoreCopy())) return StartOutcome::WorkingCopiesLost;
        QFile::copy(paths_.workStoreCopy(), paths_.workStore());
    }
    compactWorkStore(paths_, true);
    if (QFileInfo(paths_.workStore()).size() > storeSizeLimit_) {
        // A plain store file in place of the pack; it replaces the pack in one step like any pack.
        QFile copy(paths_.workStoreCopy());
        if (storeFileIsSound(copy.fileName()) && copy.open(QIODevice::ReadOnly)) installPack(copy.readAll());
    }
    try {
        store_ = Store::open(paths_.workStore());
        shared().g_Store = store_.get();
        shared().paths = paths_;
        shared().g_HistoryCursor = store_->query(QStringLiteral("SELECT * FROM 历史记录  ORDER BY 期号 ASC"));

        auto colors = store_->query(QStringLiteral("select * from BallColor order by 号码 asc"));
        if (colors->recordCount() < kRedCount) {
            abandon();
            return StartOutcome::BallColorShort;
        }
        const int base = smallScreen ? 5 : 0;
        redFaces_.clear();
        blueFaces_.clear();
        for (int n = 1; n <= kRedCount; ++n, colors->moveNext()) {
            const BallFace face{colors->intValue(QStringLiteral("基本号")) + base,
                                colors->intValue(QStringLiteral("特别号"))};
            redFaces_ << face;
            if (n <= kBlueCount) blueFaces_ << face;
        }
        packedStamp_ = store_->changeStamp();
    } catch (const StoreError&) {
        abandon();
        return StartOutcome::DataPackUnreadable;
    }
    shared().g_DrawDays = {true, false, true, false, true, false, false};
    return StartOutcome::Ready;
}

StartOutcome AppFlow::start(bool smallScreen, const QString& shippedDir) {
    if (const StartOutcome locked = acquireInstance(); locked != StartOutcome::Ready) return locked;
    if (!shippedDir.isEmpty()) AppPaths::seedProgramDir(paths_.programDir, shippedDir);
    if (const StartOutcome unpacked = app_Initialize(); unpacked != StartOutcome::Ready) return unpacked;
    return openStore(smallScreen);
}

QString startMessage(StartOutcome outcome) {
    switch (outcome) {
        case StartOutcome::AlreadyRunning:
            return msg::kAlreadyRunning;
        case StartOutcome::DataPackUnreadable:
            return msg::kDataPackUnreadable;
        case StartOutcome::WorkingCopiesLost:
            return msg::kWorkingCopiesLost;
        case StartOutcome::BallColorShort:
            return msg::kInitError;
        case StartOutcome::ProgramFolderReadOnly:
            return msg::kProgramFolderReadOnly;
        case StartOutcome::TempFolderUnwritable:
            return msg::kTempFolderUnwritable;
        case StartOutcome::Ready:
            break;
    }
    return {};
}

QString saveMessage(SaveOutcome outcome) {
    switch (outcome) {
        case SaveOutcome::StoreDamaged:
            return msg::kPackStoreDamaged;
        case SaveOutcome::WriteFailed:
            return msg::kPackWriteFailed;
        case SaveOutcome::LastWriteFailed:
            return msg::kWriteFailed;
        case SaveOutcome::Saved:
        case SaveOutcome::Unchanged:
        case SaveOutcome::Busy:
            break;
    }
    return {};
}

QString drawStatusText(IssueNumber latest, DateValue latestDate, IssueNumber next, DateValue nextDate,
                       const QDate& today) {
    return QStringLiteral("  最新：%1 期 %2 开奖  │  下期：%3 期 %4 开奖  │  今天：%5  ")
        .arg(latest)
        .arg(dateText(latestDate))
        .arg(next)
        .arg(dateText(nextDate))
        .arg(dateText(today));
}

bool history_Status() {
    const IssueNumber latest = latest_QiHao();
    const DateValue latestDate = latest_KaiJiangRi();
    const DateValue next = next_KaiJiangRi(shared().g_DrawDays, latestDate);
    const QDate today = Clock::today();
    // With no draw at all the next date comes from the fallback date far in the future; the
    // history is plainly not up to date then.
    const bool empty = earliest_QiHao() == 0;
    // The issue number starts again at 001 with the first draw of a year.
    const int nextYear = toQDate(next).year();
    const IssueNumber nextIssue = nextYear > latest / 1000 ? nextYear * 1000 + 1 : latest + 1;
    screen().ui_Status(
        3, empty ? msg::noDrawStatusText(today) : drawStatusText(latest, latestDate, nextIssue, next, today));
    const bool stale = empty || toQDate(next) < today;
    const int missing = empty ? 0 : missing_DrawCount(shared().g_DrawDays, latestDate, today);
    screen().ui_Status(1, !stale        ? msg::kHistoryUpToDate
                          : missing > 0 ? msg::historyMissingText(missing)
                                        : msg::kHistoryStale);
    return stale;
}

bool downloadOfferDue(const AppPaths& paths) {
    CIniFile ini;
    ini.SpecifyIni(paths.settingsFile());
    const QString today = dateText(Clock::today());
    if (ini.ReadString(QStringLiteral("Download"), QStringLiteral("LastOffer"), QString()) == today)
        return false;
    ini.WriteString(QStringLiteral("Download"), QStringLiteral("LastOffer"), today);
    return true;
}

bool AppFlow::history_Status() {
    return dovrex::history_Status();
}

bool AppFlow::app_Unload(bool& cancel) {
    cancel = !screen().ui_Confirm(msg::kConfirmExit);
    if (cancel) return true;
    return saveAndClose();
}

bool AppFlow::saveAndClose() {
    // In multi-user mode the current user's condition set goes to their file first.
    if (shared().g_UserMode == kMultiUserMode && shared().g_Store && !shared().g_CurrentUser.isEmpty())
        save_ChengYuanWenJian(shared().g_CurrentUser);
    const bool changed = !store_ || store_->changeStamp() != packedStamp_;
    const bool writeFailed = store_ && store_->writeFailed();
    abandon();
    if (writeFailed) {
        lastSave_ = SaveOutcome::LastWriteFailed;
        return false;
    }
    lastSave_ = changed ? packWorkStore() : SaveOutcome::Unchanged;
    return lastSave_ == SaveOutcome::Saved || lastSave_ == SaveOutcome::Unchanged;
}

SaveOutcome AppFlow::save() {
    lastSave_ = packWorkStore();
    return lastSave_;
}

SaveOutcome AppFlow::checkpoint() {
    // After a failed write the command has told the player; the store waits for a write that
    // succeeds before it is packed again.
    if (!store_ || store_->changeStamp() == packedStamp_ || store_->writeFailed() ||
        monotonicMs() - packedAtMs_ < checkpointIntervalMs_)
        return SaveOutcome::Unchanged;
    return save();
}

SaveOutcome AppFlow::packWorkStore() {
    if (store_ && store_->inTransaction()) return SaveOutcome::Busy;
    // A store whose last transaction did not reach the file lacks what the player was told of.
    if (store_ && store_->writeFailed()) return SaveOutcome::LastWriteFailed;
    // The check reads the file itself, not the connection's cache: those bytes are what is packed.
    if (!storeFileIsSound(paths_.workStore())) return SaveOutcome::StoreDamaged;
    QByteArray bytes;
    if (!packedBytes(paths_.workStore(), paths_.workAux(), bytes)) return SaveOutcome::StoreDamaged;
    if (!installPack(bytes)) return SaveOutcome::WriteFailed;
    if (store_) packedStamp_ = store_->changeStamp();
    packedAtMs_ = monotonicMs();
    return SaveOutcome::Saved;
}

bool AppFlow::installPack(const QByteArray& bytes) {
    const QString staged = paths_.dataPack() + QStringLiteral(".new");
    if (!writeAndSync(staged, bytes)) return false;
    // The old pack becomes Bak through a second name (or a copy where links are not allowed), so
    // that neither name is ever without a whole file.
    if (packTrusted_ && QFileInfo::exists(paths_.dataPack()) && QDir().mkpath(paths_.bakDir())) {
        const QString bakStaged = paths_.bakPack() + QStringLiteral(".new");
        QFile::remove(bakStaged);
        const bool linked = ::link(QFile::encodeName(paths_.dataPack()).constData(),
                                   QFile::encodeName(bakStaged).constData()) == 0;
        if (linked) {
            replaceFile(bakStaged, paths_.bakPack());
        } else if (QFile old(paths_.dataPack()); old.open(QIODevice::ReadOnly)) {
            writeFileDurably(paths_.bakPack(), old.readAll());
        }
    }
    if (!replaceFile(staged, paths_.dataPack())) {
        QFile::remove(staged);
        return false;
    }
    packTrusted_ = true;
    return true;
}

void AppFlow::abandon() {
    shared().g_HistoryCursor.reset();
    if (store_ && shared().g_Store == store_.get()) shared().g_Store = nullptr;
    store_.reset();
}

}  // namespace dovrex
