#include "store/pack.h"

#include <fcntl.h>
#include <unistd.h>

#include <QByteArray>
#include <QFile>
#include <QFileInfo>
#include <QtEndian>
#include <cstdio>

#include "store/schema.h"
#include "store/store.h"

namespace dovrex {

namespace {
const QByteArray kStoreHeader("SQLite format 3\0", 16);

// The new file is written beside its target, so that the rename stays on one file system.
QString stagedName(const QString& path) {
    return path + QStringLiteral(".new");
}

bool syncFolderOf(const QString& path) {
    const int fd =
        ::open(QFile::encodeName(QFileInfo(path).absolutePath()).constData(), O_RDONLY | O_DIRECTORY);
    if (fd < 0) return false;
    const bool ok = ::fsync(fd) == 0;
    ::close(fd);
    return ok;
}

}  // namespace

bool writeAndSync(const QString& staged, const QByteArray& bytes) {
    QFile f(staged);
    bool ok = f.open(QIODevice::WriteOnly | QIODevice::Truncate) && f.write(bytes) == bytes.size() &&
              f.flush() && ::fsync(f.handle()) == 0;
    f.close();
    ok = ok && f.error() == QFile::NoError;
    if (!ok) QFile::remove(staged);
    return ok;
}

bool replaceFile(const QString& from, const QString& to) {
    if (std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) != 0)
        return false;
    syncFolderOf(to);
    return true;
}

bool writeFileDurably(const QString& path, const QByteArray& bytes) {
    const QString staged = stagedName(path);
    if (!writeAndSync(staged, bytes)) return false;
    if (replaceFile(staged, path)) return true;
    QFile::remove(staged);
    return false;
}

bool isPlainStoreFile(const QString& path) {
    QFile f(path);
    return f.open(QIODevice::ReadOnly) && f.read(16) == kStoreHeader;
}

bool packedBytes(const QString& file1, const QString& file2, QByteArray& out) {
    QFile a(file1), b(file2);
    if (!a.open(QIODevice::ReadOnly) || !b.open(QIODevice::ReadOnly)) return false;
    const QByteArray first = a.readAll(), second = b.readAll();
    if (first.size() > INT32_MAX || second.size() > INT32_MAX) return false;
    out = QByteArray(8, '\0');
    qToLittleEndian<qint32>(qint32(first.size()), out.data());
    qToLittleEndian<qint32>(qint32(second.size()), out.data() + 4);
    out += first;
    out += second;
    return true;
}

FileOutcome packFiles(const QString& file1, const QString& file2, const QString& target) {
    QByteArray out;
    if (!packedBytes(file1, file2, out)) return FileOutcome::SourceBad;
    return writeFileDurably(target, out) ? FileOutcome::Done : FileOutcome::WriteFailed;
}

bool pack(const QString& file1, const QString& file2, const QString& target) {
    return packFiles(file1, file2, target) == FileOutcome::Done;
}

FileOutcome unpackFiles(const QString& source, const QString& file1, const QString& file2) {
    QFile s(source);
    if (!s.open(QIODevice::ReadOnly)) return FileOutcome::SourceBad;
    const QByteArray all = s.readAll();
    QByteArray first, second;
    if (all.startsWith(kStoreHeader)) {
        first = all;
    } else {
        if (all.size() < 8) return FileOutcome::SourceBad;
        const qint32 l1 = qFromLittleEndian<qint32>(all.constData());
        const qint32 l2 = qFromLittleEndian<qint32>(all.constData() + 4);
        if (l1 < 0 || l2 < 0 || qint64(8) + l1 + l2 > all.size()) return FileOutcome::SourceBad;
        first = all.mid(8, l1);
        second = all.mid(8 + l1, l2);
        if (!first.startsWith(kStoreHeader)) return FileOutcome::SourceBad;
    }
    // The store is checked where it will live, before it takes the place of the old one.
    const QString staged = stagedName(file1);
    if (!writeAndSync(staged, first)) return FileOutcome::WriteFailed;
    if (!storeFileIsSound(staged)) {
        QFile::remove(staged);
        return FileOutcome::SourceBad;
    }
    if (!writeFileDurably(file2, second)) {
        QFile::remove(staged);
        return FileOutcome::WriteFailed;
    }
    if (replaceFile(staged, file1)) return FileOutcome::Done;
    QFile::remove(staged);
    return FileOutcome::WriteFailed;
}

bool unpack(const QString& source, const QString& file1, const QString& file2) {
    return unpackFiles(source, file1, file2) == FileOutcome::Done;
}

}  // namespace dovrex
