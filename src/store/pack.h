#pragma once

#include <QString>

namespace dovrex {

// The pack: two files in one, with no magic, checksum or compression.
//   offset 0: L1 (int32 LE), offset 4: L2 (int32 LE), then L1 bytes of the first file, L2 of the second.
bool pack(const QString& file1, const QString& file2, const QString& target);

// Splits a pack into its two files. A plain store file in place of a pack (what a start leaves when
// the store has outgrown its limit) is taken as the first file, with an empty second file.
// Returns false, touching neither output, when the source is missing or damaged.
bool unpack(const QString& source, const QString& file1, const QString& file2);

// True when the file starts with the store engine's own header.
bool isPlainStoreFile(const QString& path);

}  // namespace dovrex
