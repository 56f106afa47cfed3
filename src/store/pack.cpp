#include "store/pack.h"

#include <QByteArray>
#include <QFile>
#include <QSaveFile>
#include <QtEndian>

namespace dovrex {

namespace {
const QByteArray kStoreHeader("SQLite format 3\0", 16);

bool writeWhole(const QString& path, const QByteArray& bytes) {
    QSaveFile f(path);
    if (!f.open(QIODevice::WriteOnly)) return false;
    if (f.write(bytes) != bytes.size()) {
        f.cancelWriting();
        return false;
    }
    return f.commit();
}
}  // namespace

bool isPlainStoreFile(const QString& path) {
    QFile f(path);
    return f.open(QIODevice::ReadOnly) && f.read(16) == kStoreHeader;
}

bool pack(const QString& file1, const QString& file2, const QString& target) {
    QFile a(file1), b(file2);
    if (!a.open(QIODevice::ReadOnly) || !b.open(QIODevice::ReadOnly)) return false;
    const QByteArray first = a.readAll(), second = b.readAll();
    if (first.size() > INT32_MAX || second.size() > INT32_MAX) return false;
    QByteArray out(8, '\0');
    qToLittleEndian<qint32>(qint32(first.size()), out.data());
    qToLittleEndian<qint32>(qint32(second.size()), out.data() + 4);
    out += first;
    out += second;
    QFile t(target);
    if (!t.open(QIODevice::WriteOnly | QIODevice::Truncate)) return false;
    const bool ok = t.write(out) == out.size();
    t.close();
    return ok && t.error() == QFile::NoError;
}

bool unpack(const QString& source, const QString& file1, const QString& file2) {
    QFile s(source);
    if (!s.open(QIODevice::ReadOnly)) return false;
    const QByteArray all = s.readAll();
    QByteArray first, second;
    if (all.startsWith(kStoreHeader)) {
        first = all;
    } else {
        if (all.size() < 8) return false;
        const qint32 l1 = qFromLittleEndian<qint32>(all.constData());
        const qint32 l2 = qFromLittleEndian<qint32>(all.constData() + 4);
        if (l1 < 0 || l2 < 0 || qint64(8) + l1 + l2 > all.size()) return false;
        first = all.mid(8, l1);
        second = all.mid(8 + l1, l2);
        if (!first.startsWith(kStoreHeader)) return false;
    }
    QFile::remove(file1);
    return writeWhole(file1, first) && writeWhole(file2, second);
}

}  // namespace dovrex
