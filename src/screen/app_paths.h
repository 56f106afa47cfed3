#pragma once

#include <QString>

namespace dovrex {

// Where the program's files lie. The program folder holds the lasting pack, the condition files and
// the instance lock; the temporary folder holds the working copy that every statement runs on.
struct AppPaths {
    QString programDir;
    QString tempDir;
    // Where the player's own files go unless told otherwise (exports): the documents folder of an
    // installed program; empty for a folder given by hand, whose files stay in the program folder.
    QString documentsDir;

    QString dataPack() const;       // <program>/dovrex.dat
    QString bakDir() const;         // <program>/Bak
    QString bakPack() const;        // <program>/Bak/dovrex.dat
    QString workStore() const;      // <temp>/dovrex.dat
    QString workAux() const;        // <temp>/dovrex.aux
    QString workStoreCopy() const;  // <temp>/dovrex_copy.dat
    QString compactTarget() const;  // <temp>/Temp_fu.mdb
    QString lockFile() const;       // <program>/dovrex.lock
    QString helpPage() const;       // <program>/dovrexhelp/dovrexHelp.html
    QString settingsFile() const;   // <program>/dovrex.ini

    // The per-user folders of an installed program, made when `create`.
    static AppPaths standard(bool create = true);
    // The temporary folder of a program folder: its name holds a hash of the program folder's
    // path, so two program folders never share a working copy, whoever runs them.
    static QString tempDirFor(const QString& programDir);
    // The folder with the data shipped beside the executable (build tree or installed share/).
    static QString shippedDataDir();
    // Copies the shipped files into an empty program folder. Existing files are never overwritten.
    static bool seedProgramDir(const QString& programDir, const QString& shippedDir);
};

inline const QString kDataFileName = QStringLiteral("dovrex.dat");
inline const QString kAuxFileName = QStringLiteral("dovrex.aux");
inline const QString kTemplateFileName = QStringLiteral("TJmode.tjmod");
inline const QString kGuestFileName = QStringLiteral("临时用户.udovrex");

}  // namespace dovrex
