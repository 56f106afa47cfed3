#include "screen/app_paths.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

namespace dovrex {

QString AppPaths::dataPack() const {
    return programDir + u'/' + kDataFileName;
}
QString AppPaths::bakDir() const {
    return programDir + QStringLiteral("/Bak");
}
QString AppPaths::bakPack() const {
    return bakDir() + u'/' + kDataFileName;
}
QString AppPaths::workStore() const {
    return tempDir + u'/' + kDataFileName;
}
QString AppPaths::workAux() const {
    return tempDir + u'/' + kAuxFileName;
}
QString AppPaths::workStoreCopy() const {
    return tempDir + QStringLiteral("/dovrex_copy.dat");
}
QString AppPaths::compactTarget() const {
    return tempDir + QStringLiteral("/Temp_fu.mdb");
}
QString AppPaths::lockFile() const {
    return programDir + QStringLiteral("/dovrex.lock");
}
QString AppPaths::helpPage() const {
    return programDir + QStringLiteral("/dovrexhelp/dovrexHelp.html");
}
QString AppPaths::settingsFile() const {
    return programDir + QStringLiteral("/dovrex.ini");
}

AppPaths AppPaths::standard(bool create) {
    AppPaths p;
    p.programDir = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    if (p.programDir.isEmpty()) p.programDir = QDir::homePath() + QStringLiteral("/.local/share/dovrex");
    if (create) QDir().mkpath(p.programDir);
    p.tempDir = tempDirFor(p.programDir);
    p.documentsDir = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    if (create) QDir().mkpath(p.tempDir);
    return p;
}

QString AppPaths::tempDirFor(const QString& programDir) {
    const QFileInfo info(programDir);
    const QString canonical = info.canonicalFilePath();
    const QString key = canonical.isEmpty() ? info.absoluteFilePath() : canonical;
    const QByteArray hash = QCryptographicHash::hash(key.toUtf8(), QCryptographicHash::Sha1).toHex().left(12);
    QString user = qEnvironmentVariable("USER");
    if (user.isEmpty()) user = QStringLiteral("user");
    return QDir::tempPath() + QStringLiteral("/dovrex-") + user + u'-' + QString::fromLatin1(hash);
}

QString AppPaths::shippedDataDir() {
    const QString exeDir = QCoreApplication::applicationDirPath();
    const QStringList candidates{exeDir + QStringLiteral("/../data"), exeDir + QStringLiteral("/data"),
                                 exeDir + QStringLiteral("/../share/dovrex")};
    for (const QString& dir : candidates)
        if (QFileInfo::exists(dir + u'/' + kDataFileName)) return QDir(dir).canonicalPath();
    return {};
}

bool AppPaths::seedProgramDir(const QString& programDir, const QString& shippedDir) {
    if (shippedDir.isEmpty()) return false;
    QDir().mkpath(programDir);
    bool ok = true;
    const QDir source(shippedDir);
    const auto entries = source.entryInfoList(QDir::Files);
    for (const QFileInfo& f : entries) {
        if (f.suffix() == QLatin1String("stamp")) continue;
        const QString target = programDir + u'/' + f.fileName();
        if (!QFileInfo::exists(target)) ok = QFile::copy(f.absoluteFilePath(), target) && ok;
    }
    // The help pages live in a folder of their own. Nobody edits them, so a newer manual of a
    // newer program replaces the old copy.
    const QString helpSource = shippedDir + QStringLiteral("/dovrexhelp");
    if (QFileInfo(helpSource).isDir()) {
        QDir().mkpath(programDir + QStringLiteral("/dovrexhelp"));
        for (const QFileInfo& f : QDir(helpSource).entryInfoList(QDir::Files)) {
            const QString target = programDir + QStringLiteral("/dovrexhelp/") + f.fileName();
            const QFileInfo old(target);
            if (old.exists() && old.lastModified() >= f.lastModified()) continue;
            QFile::remove(target);
            QFile::copy(f.absoluteFilePath(), target);
        }
    }
    return ok;
}

}  // namespace dovrex
