#include <gtest/gtest.h>
#include <QFile>

#include "app/help_text.h"

using namespace dovrex;

TEST(HelpText, ShippedManualCutsIntoFiveTitledSections) {
    QFile file(QStringLiteral(DOVREX_BUILD_DIR "/data/dovrexhelp/dovrexHelp.html"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QStringList sections = cut_HelpText(QString::fromUtf8(file.readAll()));
    ASSERT_EQ(sections.size(), kHelpSections);
    const char16_t* titles[] = {u"一、选号", u"二、过滤条件", u"三、缩水", u"四、历史数据", u"五、其它工具"};
    for (int i = 0; i < kHelpSections; ++i) {
        EXPECT_TRUE(sections[i].startsWith(QString::fromUtf16(titles[i])))
            << i << sections[i].left(30).toStdString();
        EXPECT_GT(sections[i].size(), 200) << i;
        EXPECT_FALSE(sections[i].contains(u'<')) << i;
    }
    // Each section stops where the next begins.
    EXPECT_FALSE(sections[0].contains(QStringLiteral("二、过滤条件")));
    EXPECT_TRUE(sections[4].contains(QStringLiteral("理性购彩")));
}

TEST(HelpText, MissingMarksGiveEmptySectionsAndStyleColoursAreNoMarks) {
    const QString html = QStringLiteral(
        "<style>p{color:#222}</style><body><h2>#1 甲</h2><p>a &amp; b</p><h2>#3 丙</h2>x</body>");
    EXPECT_EQ(cut_HelpText(html), QStringList({"甲\na & b", "", "丙\nx", "", ""}));
}
