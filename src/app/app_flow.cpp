#include "app/app_flow.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include "domain/game.h"
#include "filters/condition_files.h"
#include "history/history_queries.h"
#include "screen/shared_state.h"
#include "store/pack.h"
#include "store/store.h"
#include "users/users.h"

namespace dovrex {

AppFlow::AppFlow(AppPaths paths) : paths_(std::move(paths)), storeSizeLimit_(kStoreSizeLimit) {
    QDir().mkpath(paths_.tempDir);
}

AppFlow::~AppFlow() {
    abandon();
}

bool AppFlow::acquireInstance() {
    lock_ = std::make_unique<QLockFile>(paths_.lockFile());
    lock_->setStaleLockTime(0);
    if (lock_->tryLock(0)) return true;
    lock_.reset();
    return false;
}

bool AppFlow::app_Initialize() {
    return unpack(paths_.dataPack(), paths_.workStore(), paths_.workAux());
}

bool compactWorkStore(const AppPaths& paths, bool keepCopy) {
    const QString work = paths.workStore();
    if (!QFileInfo::exists(work)) return false;
    if (keepCopy) {
        QFile::remove(paths.workStoreCopy());
        QFile::copy(work, paths.workStoreCopy());
    }
    QFile::remove(paths.compactTarget());
    if (!store_Compact(work, paths.compactTarget())) return false;
    QFile::remove(work);
    const bool ok = QFile::copy(paths.compactTarget(), work);
    QFile::remove(paths.compactTarget());
    return ok;
}

StartOutcome AppFlow::openStore(bool smallScreen) {
    // Recover the working copy from the one taken before the last compaction.
    if (!QFileInfo::exists(paths_.workStore())) {
        if (!QFileInfo::exists(paths_.workStoreCopy())) return StartOutcome::WorkingCopiesLost;
        QFile::copy(paths_.workStoreCopy(), paths_.workStore());
    }
    compactWorkStore(paths_, true);
    if (QFileInfo(paths_.workStore()).size() > storeSizeLimit_) {
        QFile::remove(paths_.dataPack());
        QFile::copy(paths_.workStoreCopy(), paths_.dataPack());
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
    } catch (const StoreError&) {
        abandon();
        return StartOutcome::DataPackUnreadable;
    }
    shared().g_DrawDays = {true, false, true, false, true, false, false};
    return StartOutcome::Ready;
}

StartOutcome AppFlow::start(bool smallScreen) {
    if (!acquireInstance()) return StartOutcome::AlreadyRunning;
    if (!app_Initialize()) return StartOutcome::DataPackUnreadable;
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
        case StartOutcome::Ready:
            break;
    }
    return {};
}

bool history_Status() {
    const IssueNumber latest = latest_QiHao();
    const DateValue latestDate = latest_KaiJiangRi();
    const DateValue next = next_KaiJiangRi(shared().g_DrawDays, latestDate);
    const QString blanks(5, u' ');
    const QDate today = Clock::today();
    screen().ui_Status(3, blanks + QStringLiteral("※※※  ") + QString::number(latest) +
                              QStringLiteral(" 期 于 ") + dateText(next) + QStringLiteral(" 开奖") + blanks +
                              QStringLiteral("今天是： ") + dateText(today) + QStringLiteral("  ※※※") +
                              blanks);
    // With no draw at all the next date comes from the fallback date far in the future; the
    // history is plainly not up to date then.
    const bool empty = earliest_QiHao() == 0;
    const bool stale = empty || toQDate(next) < today;
    screen().ui_Status(1, stale ? msg::kHistoryStale : msg::kHistoryUpToDate);
    return stale;
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
    abandon();
    return save();
}

bool AppFlow::save() {
    QDir().mkpath(paths_.bakDir());
    if (!pack(paths_.workStore(), paths_.workAux(), paths_.bakPack())) return false;
    // The pack is written to the side first, so a failure leaves the last good one whole; the copy
    // over DataPack replaces it in one step, so there is never a moment without one.
    QFile bak(paths_.bakPack());
    if (!bak.open(QIODevice::ReadOnly)) return false;
    const QByteArray bytes = bak.readAll();
    QSaveFile target(paths_.dataPack());
    if (!target.open(QIODevice::WriteOnly) || target.write(bytes) != bytes.size()) return false;
    return target.commit();
}

void AppFlow::abandon() {
    shared().g_HistoryCursor.reset();
    if (store_ && shared().g_Store == store_.get()) shared().g_Store = nullptr;
    store_.reset();
}

}  // namespace dovrex
