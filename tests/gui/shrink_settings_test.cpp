// The shrink settings: what each control writes, the presets on the sliders, the bar's timer.
#include <QCheckBox>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QSpinBox>
#include <QTest>

#include "filters/condition_store.h"
#include "pipeline/shrink.h"
#include "screen/ticket_page.h"
#include "support/test_support.h"
#include "ui/tickets/shrink_settings.h"
#include "ui/tickets/shrink_timer.h"

namespace dovrex::test {
namespace {

class ShrinkSettingsTest : public FreshStoreTest {};

template <typename T>
T* named(QWidget& w, const QString& name) {
    T* child = w.findChild<T*>(name);
    EXPECT_NE(child, nullptr) << name.toStdString();
    return child;
}

TEST_F(ShrinkSettingsTest, ControlsWriteAtOnceAndPresetsReachTheSliders) {
    set_GuoLvTiaoJian(kShrinkTypeId, 5);
    ShrinkSettings frame(true);
    frame.show();
    EXPECT_TRUE(named<QRadioButton>(frame, QStringLiteral("Option_ShuoSuiLeiXing(5)"))->isChecked());
    EXPECT_FALSE(named<QCheckBox>(frame, QStringLiteral("Check_auto"))->isChecked());

    named<QRadioButton>(frame, QStringLiteral("Option_ShuoSuiLeiXing(4)"))->click();
    EXPECT_EQ(get_GuoLvTiaoJian(kShrinkTypeId), 4);
    named<QCheckBox>(frame, QStringLiteral("Check_auto"))->click();
    EXPECT_EQ(get_ShiYongQingKuang(kSmartSwitch), 1);
    // 优化缩水 is off with its budget resting until it is ticked.
    auto* budget = named<QSpinBox>(frame, QStringLiteral("Spin_youhuaShiXian"));
    EXPECT_FALSE(budget->isEnabled());
    named<QCheckBox>(frame, QStringLiteral("Check_youhua"))->click();
    budget->setValue(25);
    EXPECT_EQ(std::pair(shrink_Optimised(), shrink_BudgetSeconds()), std::pair(true, 25));

    named<QPushButton>(frame, QStringLiteral("cmmQZfenpei(0)"))->click();  // 偏重大号
    EXPECT_EQ(std::tuple(frame.slider(33)->value(), frame.slider(7)->value(), frame.slider(33)->maximum()),
              std::tuple(33, 7, 33));
    frame.slider(7)->setValue(20);
    EXPECT_EQ(shared().quanZhong[7], 20);
    named<QPushButton>(frame, QStringLiteral("cmmQZfenpei(5)"))->click();  // 全部置0
    EXPECT_EQ(std::pair(frame.slider(33)->value(), shared().quanZhong[33]), std::pair(0, 0));

    // The close box is the first button: the logic hears the frame is gone.
    set_SuoShuiSeZhiVisible(true);
    frame.close();
    EXPECT_FALSE(suoShuiSeZhiVisible());
}

TEST_F(ShrinkSettingsTest, TimerRunsWhileEnabled) {
    QWidget window;
    auto* timer = new ShrinkTimer(&window);
    EXPECT_FALSE(timer->running());
    timer->setEnabled(true);
    EXPECT_TRUE(timer->running());
    shared().suoShuiTimerAt = 0;
    // A loaded machine may hold the timer back; wait for two frames rather than a fixed time.
    EXPECT_TRUE(QTest::qWaitFor([] { return shared().suoShuiTimerAt >= 2; }, 5000));
    timer->setEnabled(false);
    EXPECT_FALSE(timer->running());
}

}  // namespace
}  // namespace dovrex::test
