#include "screen/chosen_file.h"

#include <QFileInfo>

#include "screen/shared_state.h"

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace dovrex {

namespace {

bool refuse() {
    screen().ui_Message(msg::kNotARegularFile, MessageKind::Warning);
    return false;
}

}  // namespace

bool checkChosenFile(const QString& path) {
    const QFileInfo info(path);
    if (!info.exists()) return false;
    return info.isFile() ? true : refuse();
}

bool openChosenFile(QFile& file, const QString& path) {
    if (!checkChosenFile(path)) return false;
#ifdef Q_OS_UNIX
    // The test above and the open are two steps: opened without blocking and tested again on the
    // descriptor, a pipe put in the file's place between them is still refused at once.
    const int fd = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (fd < 0) return false;
    struct stat st {};
    if (::fstat(fd, &st) != 0 || !S_ISREG(st.st_mode)) {
        ::close(fd);
        return refuse();
    }
    ::fcntl(fd, F_SETFL, ::fcntl(fd, F_GETFL) & ~O_NONBLOCK);
    if (!file.open(fd, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle)) {
        ::close(fd);
        return false;
    }
    return true;
#else
    file.setFileName(path);
    return file.open(QIODevice::ReadOnly);
#endif
}

}  // namespace dovrex
