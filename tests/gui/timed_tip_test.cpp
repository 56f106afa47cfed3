// The self-closing tips.
#include <gtest/gtest.h>

#include <QPointer>
#include <QPushButton>
#include <QTest>

#include "widgets/timed_tip.h"

namespace dovrex::test {
namespace {

TEST(TimedTipTest, CountsDownAndClosesItselfOrAtAClick) {
    QPointer<TimedTip> tip = new TimedTip(QStringLiteral("提示"));
    tip->show();
    auto* ok = tip->findChild<QPushButton*>(QStringLiteral("cmdOK"));
    EXPECT_EQ(ok->text(), QStringLiteral("知道了(10)"));
    EXPECT_EQ(tip->windowTitle(), QStringLiteral("信息提示"));
    QTest::mouseClick(ok, Qt::LeftButton);
    EXPECT_TRUE(QTest::qWaitFor([&] { return tip.isNull(); }, 500));

    tip = new TimedTip(QStringLiteral("提示"), 2);
    tip->show();
    ok = tip->findChild<QPushButton*>(QStringLiteral("cmdOK"));
    EXPECT_EQ(ok->text(), QStringLiteral("知道了(2)"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return tip && tip->secondsLeft() == 1; }, 1500));
    EXPECT_EQ(ok->text(), QStringLiteral("知道了(1)"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return tip.isNull(); }, 1500));
}

TEST(TimedTipTest, PreparingTipCountsFiveSecondsAndCloses) {
    QPointer<PreparingTip> tip = new PreparingTip;
    tip->show();
    auto* no = tip->findChild<QPushButton*>(QStringLiteral("cmmNO"));
    EXPECT_EQ(no->text(), QStringLiteral("正在准备数据......"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return tip && tip->secondsLeft() == 4; }, 1500));
    EXPECT_EQ(no->text(), QStringLiteral("正在准备数据(4)......"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return tip.isNull(); }, 5500));
}

}  // namespace
}  // namespace dovrex::test
