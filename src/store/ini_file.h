#pragma once

#include <QString>

namespace dovrex {

// The program's settings file: a small ini file in the program folder. No logic depends on its
// keys; a failed call leaves its reason in errorText().
class CIniFile {
  public:
    // Sets the file (the path is trimmed).
    void SpecifyIni(const QString& path);
    bool WriteString(const QString& section, const QString& key, const QString& value);
    // The value, or `defaultValue`; at most `maxLength` characters.
    QString ReadString(const QString& section, const QString& key, const QString& defaultValue,
                       int maxLength = 255);
    int ReadInt(const QString& section, const QString& key, int defaultValue);
    QString errorText() const { return error_; }

    static inline const QString kNoIni = QStringLiteral("没有指定 INI 文件");
    static inline const QString kWriteFailed = QStringLiteral("写入失败");
    static inline const QString kReadFailed = QStringLiteral("不能读取");

  private:
    QString path_;
    QString error_;
};

}  // namespace dovrex
