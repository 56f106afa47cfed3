#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "store/ini_file.h"
#include "support/test_support.h"

namespace dovrex {
namespace {

TEST(CIniFile, WritesReadsAndSaysWhyNot) {
    CIniFile ini;
    EXPECT_EQ(ini.ReadString(QStringLiteral("main"), QStringLiteral("k"), QStringLiteral("d")),
              QStringLiteral("d"));
    EXPECT_EQ(ini.errorText(), CIniFile::kNoIni);
    EXPECT_FALSE(ini.WriteString(QStringLiteral("main"), QStringLiteral("k"), QStringLiteral("v")));
    EXPECT_EQ(ini.errorText(), CIniFile::kNoIni);

    QTemporaryDir dir;
    ini.SpecifyIni(QStringLiteral("  ") + dir.filePath(QStringLiteral("dovrex.ini")) + QStringLiteral("  "));
    ASSERT_TRUE(ini.WriteString(QStringLiteral("窗口"), QStringLiteral("宽度"), QStringLiteral("1280")));
    EXPECT_TRUE(ini.errorText().isEmpty());
    EXPECT_EQ(ini.ReadInt(QStringLiteral("窗口"), QStringLiteral("宽度"), 0), 1280);
    EXPECT_EQ(ini.ReadInt(QStringLiteral("窗口"), QStringLiteral("高度"), 7), 7);
    ASSERT_TRUE(
        ini.WriteString(QStringLiteral("main"), QStringLiteral("name"), QStringLiteral("双色球选号")));
    EXPECT_EQ(ini.ReadString(QStringLiteral("main"), QStringLiteral("name"), QString(), 3),
              QStringLiteral("双色球"));

    // A "folder" that is a file: nothing can be written below it.
    ASSERT_TRUE(test::writeFile(dir.filePath(QStringLiteral("blocker")), {}));
    CIniFile unwritable;
    unwritable.SpecifyIni(dir.filePath(QStringLiteral("blocker/x.ini")));
    EXPECT_FALSE(unwritable.WriteString(QStringLiteral("main"), QStringLiteral("k"), QStringLiteral("v")));
    EXPECT_EQ(unwritable.errorText(), CIniFile::kWriteFailed);
}

}  // namespace
}  // namespace dovrex
