#include "store/ini_file.h"

#include <QFileInfo>
#include <QSettings>

namespace dovrex {

void CIniFile::SpecifyIni(const QString& path) {
    path_ = path.trimmed();
}

bool CIniFile::WriteString(const QString& section, const QString& key, const QString& value) {
    error_.clear();
    if (path_.isEmpty()) {
        error_ = kNoIni;
        return false;
    }
    QSettings ini(path_, QSettings::IniFormat);
    ini.setValue(section + u'/' + key, value);
    ini.sync();
    if (ini.status() != QSettings::NoError) {
        error_ = kWriteFailed;
        return false;
    }
    return true;
}

QString CIniFile::ReadString(const QString& section, const QString& key, const QString& defaultValue,
                             int maxLength) {
    error_.clear();
    if (path_.isEmpty()) {
        error_ = kNoIni;
        return defaultValue;
    }
    if (QFileInfo::exists(path_) && !QFileInfo(path_).isReadable()) {
        error_ = kReadFailed;
        return defaultValue;
    }
    QSettings ini(path_, QSettings::IniFormat);
    if (ini.status() != QSettings::NoError) {
        error_ = kReadFailed;
        return defaultValue;
    }
    return ini.value(section + u'/' + key, defaultValue).toString().left(maxLength);
}

int CIniFile::ReadInt(const QString& section, const QString& key, int defaultValue) {
    bool ok = false;
    const int value = ReadString(section, key, QString::number(defaultValue)).trimmed().toInt(&ok);
    return ok ? value : defaultValue;
}

}  // namespace dovrex
