#pragma once

#include <QByteArray>
#include <QString>

namespace dovrex {

// The pack: two files in one, with no magic, checksum or compression.
//   offset 0: L1 (int32 LE), offset 4: L2 (int32 LE), then L1 bytes of the first file, L2 of the second.
// The first file is always a store; a pack whose store fails the engine's quick_check or the
// declared schema (storeFileIsSound) is damaged.

enum class FileOutcome {
    Done,
    SourceBad,    // missing, not a pack, or its store is damaged
    WriteFailed,  // the target's disc is full or cannot be written
};

// Writes the pack of file1 and file2 to target. The target is replaced in one step (see
// writeFileDurably), so a failure or a kill leaves the old target whole.
bool pack(const QString& file1, const QString& file2, const QString& target);
FileOutcome packFiles(const QString& file1, const QString& file2, const QString& target);

// Splits a pack into its two files. A plain store file in place of a pack (what a start leaves when
// the store has outgrown its limit) is taken as the first file, with an empty second file.
// Touches neither output unless the source is whole and its store is sound (storeFileIsSound).
bool unpack(const QString& source, const QString& file1, const QString& file2);
FileOutcome unpackFiles(const QString& source, const QString& file1, const QString& file2);

// True when the file starts with the store engine's own header.
bool isPlainStoreFile(const QString& path);

// Writes `bytes` to a new file beside `path`, flushes it to the disc and renames it over `path`:
// readers see the old file or the new one, never a part. False (and `path` untouched) on failure.
bool writeFileDurably(const QString& path, const QByteArray& bytes);
// Writes `bytes` to `path` and flushes them to the disc; removes the file again on failure.
bool writeAndSync(const QString& path, const QByteArray& bytes);
// Renames `from` over `to` in one step and flushes the folder entry to the disc.
bool replaceFile(const QString& from, const QString& to);
// The bytes of the pack of two files; false when one cannot be read or is too long.
bool packedBytes(const QString& file1, const QString& file2, QByteArray& out);

}  // namespace dovrex
