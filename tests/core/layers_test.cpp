// The folders of src/ stand in layers: each may include only folders of a layer below its own.
// The order is written here once; docs/architecture.md draws it.

#include <gtest/gtest.h>

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTextStream>

namespace {

// Bottom to top. Folders on one line are neighbours and include none of each other.
// clang-format off
const QList<QStringList> kLayers{
    {"domain"},
    {"store"},
    {"screen"},
    {"history"},
    {"filters"},
    {"pipeline"},
    {"results", "analysis", "calendar", "users"},
    {"app"},
    {"headless"},
    {"widgets"},
    {"ui"},
};
// clang-format on

int layerOf(const QString& folder) {
    for (int i = 0; i < kLayers.size(); ++i)
        if (kLayers[i].contains(folder)) return i;
    return -1;
}

// Every include of a folder at or above the includer's own layer, as "file:line: a includes b".
// Files straight under src/ (the mains) stand above every folder. A folder missing from the order is
// reported too, so that a new folder is placed on purpose.
QStringList upwardIncludes(const QString& srcDir) {
    static const QRegularExpression include(QStringLiteral(R"(^\s*#\s*include\s*"([a-z_]+)/)"));
    QStringList found;
    const QDir root(srcDir);
    QDirIterator it(srcDir, {QStringLiteral("*.h"), QStringLiteral("*.cpp")}, QDir::Files,
                    QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString path = it.next();
        const QString relative = root.relativeFilePath(path);
        if (!relative.contains(u'/')) continue;
        const QString folder = relative.section(u'/', 0, 0);
        const int own = layerOf(folder);
        if (own < 0) {
            found << relative + QStringLiteral(": folder '%1' has no place in the layers").arg(folder);
            continue;
        }
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly)) continue;
        QTextStream in(&file);
        for (int line = 1; !in.atEnd(); ++line) {
            const auto m = include.match(in.readLine());
            if (!m.hasMatch() || m.captured(1) == folder) continue;
            const QString target = m.captured(1);
            if (layerOf(target) >= own)
                found << QStringLiteral("%1:%2: %3 includes %4").arg(relative).arg(line).arg(folder, target);
        }
    }
    found.sort();
    return found;
}

TEST(Layers, NoFolderOfSrcIncludesOneAboveIt) {
    const QStringList found = upwardIncludes(QStringLiteral(DOVREX_SOURCE_DIR "/src"));
    EXPECT_TRUE(found.isEmpty()) << found.join(u'\n').toStdString();
}

TEST(Layers, AnUpwardOrSidewaysIncludeIsNamedWithItsFileAndLine) {
    QTemporaryDir dir;
    const auto write = [&](const QString& name, const QByteArray& text) {
        QDir().mkpath(QFileInfo(dir.filePath(name)).path());
        QFile f(dir.filePath(name));
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(text);
    };
    write(QStringLiteral("store/store.cpp"), "#include \"store/store.h\"\n#include \"domain/game.h\"\n");
    write(QStringLiteral("store/files.cpp"), "// files\n\n#include \"filters/condition_store.h\"\n");
    write(QStringLiteral("results/export.cpp"), "#include \"analysis/omission.h\"\n");
    write(QStringLiteral("ui/page.cpp"), "#include \"widgets/tick_list.h\"\n#include \"domain/game.h\"\n");
    write(QStringLiteral("main.cpp"), "#include \"ui/page.h\"\n");
    write(QStringLiteral("extras/x.cpp"), "\n");
    EXPECT_EQ(upwardIncludes(dir.path()),
              (QStringList{QStringLiteral("extras/x.cpp: folder 'extras' has no place in the layers"),
                           QStringLiteral("results/export.cpp:1: results includes analysis"),
                           QStringLiteral("store/files.cpp:3: store includes filters")}));
}

}  // namespace
