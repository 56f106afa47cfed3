// The calendar control, the birth-chart window and the lucky number chooser, offscreen.
#include <gtest/gtest.h>

#include <QComboBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <QToolButton>

#include "calendar/almanac.h"
#include "calendar/bazi_haoma.h"
#include "calendar/nongli.h"
#include "domain/date_value.h"
#include "ui/calendar/bazi_window.h"
#include "ui/calendar/lucky_number_window.h"
#include "widgets/cn_calendar.h"

namespace dovrex {
namespace {

class CalendarWindows : public ::testing::Test {
  protected:
    void SetUp() override {
        ensureNongLiTables();
        Clock::setToday(QDate(2024, 6, 1));
    }
    void TearDown() override { Clock::useSystemClock(); }
};

TEST_F(CalendarWindows, StepsKeepTheDayAndTheRangeHoldsItsEnds) {
    CnCalendar c;
    EXPECT_EQ(c.value(), QDate(2024, 6, 1));  // starts on today
    c.setValue(QDate(2024, 1, 31));
    EXPECT_TRUE(c.step(4));
    EXPECT_EQ(c.value(), QDate(2024, 2, 29));
    EXPECT_EQ(c.findChild<QComboBox*>("Combo2")->currentText(), "02月");

    // Held down, the button repeats every 100 ms and stops by itself at December 2100.
    c.setValue(QDate(2100, 10, 31));
    c.startRepeat(4);
    EXPECT_EQ(c.value(), QDate(2100, 11, 30));
    EXPECT_TRUE(c.repeating());
    QTRY_VERIFY_WITH_TIMEOUT(!c.repeating(), 2000);
    EXPECT_EQ(c.value(), QDate(2100, 12, 30));
    EXPECT_EQ(c.findChild<QComboBox*>("Combo1")->currentText(), "2100年");

    // Year down stops at 1901; a release stops the repeat at once.
    c.setValue(QDate(1903, 5, 5));
    QToolButton* yearDown = c.findChild<QToolButton*>("Picture1_Year");
    QTest::mousePress(yearDown, Qt::LeftButton);
    QTRY_VERIFY_WITH_TIMEOUT(!c.repeating(), 2000);
    QTest::mouseRelease(yearDown, Qt::LeftButton);
    EXPECT_EQ(c.value(), QDate(1901, 5, 5));
    c.startRepeat(1);
    c.stopRepeat();
    EXPECT_FALSE(c.repeating());
    EXPECT_EQ(c.value(), QDate(1902, 5, 5));

    // Dates outside the range are replaced by the selected one.
    c.setValue(QDate(2024, 9, 17));
    c.setValue(QDate(2101, 1, 1));
    c.setValue(QDate(1900, 6, 1));
    EXPECT_EQ(c.value(), QDate(2024, 9, 17));
    EXPECT_EQ(c.get_NongLiText(QDate(1800, 1, 1)), "农历甲辰年八月十五");
    EXPECT_EQ(c.get_XingZuo(QDate(2200, 1, 1)), "处女座");
    EXPECT_EQ(c.get_XingQi(QDate()), "星期二");
    EXPECT_EQ(c.get_NongLiDayText(QDate(2024, 6, 6)), "初一");
    EXPECT_EQ(c.bottomText(), "甲辰龙年　农历甲辰年八月十五");
}

TEST_F(CalendarWindows, ClicksAndCombosChooseTheDate) {
    CnCalendar c;
    c.resize(520, 360);
    c.show();
    c.setValue(QDate(2024, 3, 31));
    const int cell = c.cellOf(QDate(2024, 3, 15));
    ASSERT_GE(cell, 0);
    QTest::mouseClick(c.grid(), Qt::LeftButton, {}, c.grid()->cellRect(cell).center());
    EXPECT_EQ(c.value(), QDate(2024, 3, 15));
    QTest::mouseClick(c.grid(), Qt::LeftButton, {}, c.grid()->cellRect(0).center());  // before the 1st
    EXPECT_EQ(c.value(), QDate(2024, 3, 15));

    c.setValue(QDate(2024, 3, 31));
    QComboBox* months = c.findChild<QComboBox*>("Combo2");
    months->setCurrentIndex(3);
    emit months->activated(3);
    EXPECT_EQ(c.value(), QDate(2024, 4, 30));
    QComboBox* years = c.findChild<QComboBox*>("Combo1");
    years->setCurrentIndex(0);
    emit years->activated(0);
    EXPECT_EQ(c.value(), QDate(1901, 4, 30));

    c.setValueDateTime(naiveDateTime(QDate(1990, 5, 17), 8 * 3600 + 30 * 60));
    EXPECT_EQ(c.valueDateTime(), naiveDateTime(QDate(1990, 5, 17), 8 * 3600 + 30 * 60));
    EXPECT_EQ(c.findChild<QComboBox*>("Combo3")->currentText(), "08时");
    EXPECT_EQ(c.findChild<QComboBox*>("Combo4")->currentText(), "30分");
}

TEST_F(CalendarWindows, BirthChartWindowMakesTheTicket) {
    BaziWindow w;
    w.calendar()->setValueDateTime(naiveDateTime(QDate(1990, 5, 17), 8 * 3600 + 30 * 60));
    auto* text = w.findChild<QPlainTextEdit*>("TextShow");
    EXPECT_FALSE(w.button(2)->isEnabled());

    w.button(1)->click();
    EXPECT_EQ(w.resultText(),
              "根据生辰八字：\r\n庚午辛巳壬午甲辰\r\n\r\n在今年得出一注号码——\r\n\r\n"
              "01 08 14 15 23 24+02");
    EXPECT_TRUE(w.resultShown());
    EXPECT_TRUE(w.calendar()->isHidden());
    EXPECT_TRUE(w.button(2)->isEnabled());
    EXPECT_EQ(text->font().pointSize(), w.findChild<QPlainTextEdit*>("Text1")->font().pointSize() + 8);

    w.button(5)->click();  // acts while the result is up, and the result stays up
    EXPECT_TRUE(w.resultShown());
    EXPECT_FALSE(w.resultText().startsWith("根据生辰八字："));
    w.button(2)->click();
    EXPECT_FALSE(w.resultShown());
    EXPECT_FALSE(w.button(2)->isEnabled());

    w.button(5)->click();
    BaziState s;
    const QDateTime birth = naiveDateTime(QDate(1990, 5, 17), 8 * 3600 + 30 * 60);
    EXPECT_EQ(w.resultText(),
              make_BaziReport(birth, QDate(2024, 6, 1), getJieQistr(1990, "小寒", -1, true), s));
    w.button(2)->click();

    w.button(3)->click();
    EXPECT_EQ(w.resultText(), "\r\n" + getJieQi1(1990) +
                                  "\r\n注，准确的节气时间对八字排盘很重要，软件中节气据天文算法精确到秒！");
    EXPECT_EQ(w.button(3)->toolTip(), "查询当前年份24节气具体时间");
    w.button(2)->click();

    w.button(4)->click();
    EXPECT_TRUE(w.resultText().startsWith("小知识："));
    for (const char* part : {"寅月——从立春到惊蛰", "子时（23：00—12：59）", "亥时（21：00－22：59）"})
        EXPECT_TRUE(w.resultText().contains(part)) << part;
}

TEST_F(CalendarWindows, LuckyNumberChooserFillsTheTablesOnceAndCloses) {
    int opened = 0;
    const auto saved = baziOpener();
    baziOpener() = [&opened](QWidget*) {
        ++opened;
        EXPECT_TRUE(rili_YiChuShiHua());
    };
    for (int round = 0; round < 2; ++round) {
        LuckyNumberWindow w;
        EXPECT_EQ(w.windowTitle(), "幸运号码类型——");
        EXPECT_EQ(w.button(1)->isEnabled(), bool(jixuanOpener()));
        w.show();
        w.button(2)->click();
        EXPECT_FALSE(w.isVisible());
    }
    EXPECT_EQ(opened, 2);
    baziOpener() = saved;
}

}  // namespace
}  // namespace dovrex
