#pragma once

#include <QFile>
#include <QString>

namespace dovrex {

// Files the player picks in a dialog are opened only when they are regular files (or links to one):
// reading a pipe waits for a writer that never comes, and a device never ends.

namespace msg {
inline const QString kNotARegularFile = QStringLiteral("所选的不是普通文件，无法打开！");
}  // namespace msg

// Opens `path` for reading without ever waiting on it: a pipe, device or folder is refused with
// kNotARegularFile shown. A missing or unreadable file gives false without a message.
bool openChosenFile(QFile& file, const QString& path);

// The same test for a file that another library opens by its name: true for a regular file.
bool checkChosenFile(const QString& path);

}  // namespace dovrex
