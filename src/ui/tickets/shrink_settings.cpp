#include "ui/tickets/shrink_settings.h"
#include "ui/tickets/shrink_timer.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QCloseEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSlider>
#include <QSpinBox>
#include <QTimer>
#include <QVBoxLayout>

#include "app/pipeline_commands.h"
#include "filters/condition_store.h"
#include "pipeline/shrink.h"
#include "pipeline/weights.h"
#include "screen/control_roles.h"
#include "screen/shared_state.h"
#include "screen/ticket_page.h"
#include "ui/conditions/conditions_page.h"
#include "ui/shell/form_main.h"
#include "ui/shell/window_parts.h"
#include "widgets/command_trap.h"

namespace dovrex {

ShrinkSettings::ShrinkSettings(bool withButtons, QWidget* parent) : QFrame(parent), frame_(withButtons) {
    setFrameShape(QFrame::StyledPanel);
    auto* layout = new QVBoxLayout(this);

    auto* types = new QGroupBox(QStringLiteral("保Ｎ型缩水"), this);
    if (withButtons) types->setObjectName(role::Option_ShuoSuiLeiXing);
    auto* typeRow = new QHBoxLayout(types);
    auto* group = new QButtonGroup(this);
    for (int t = 7; t >= 3; --t) {
        auto* option = new QRadioButton(shrinkCaption(t), types);
        if (withButtons) option->setObjectName(QStringLiteral("Option_ShuoSuiLeiXing(%1)").arg(t));
        group->addButton(option, t);
        typeRow->addWidget(option);
        options_[size_t(t)] = option;
    }
    connectCommand(group, &QButtonGroup::idClicked, this, [this](int t) {
        if (!loading_) Option_ShuoSuiLeiXing_Click(t);
    });
    layout->addWidget(types);
    auto* tip =
        new QLabel(QStringLiteral("提示，这里的保Ｎ型是对整注号码（包含蓝球号码）进行缩水的。"), this);
    tip->setWordWrap(true);
    layout->addWidget(tip);
    auto_ = new QCheckBox(QStringLiteral("缩水智能优化"), this);
    if (withButtons) auto_->setObjectName(QStringLiteral("Check_auto"));
    connectCommand(auto_, &QCheckBox::toggled, this, [this](bool on) {
        if (!loading_) Check_auto_Click(on);
    });
    layout->addWidget(auto_);

    // 优化缩水: the same guarantee with fewer tickets, searched for within a time budget.
    auto* optimisedRow = new QHBoxLayout;
    optimised_ = new QCheckBox(QStringLiteral("优化缩水（同样的保证，保留更少的号码）"), this);
    optimised_->setToolTip(
        QStringLiteral("先按普通方法缩水，再在限定的时间内寻找注数更少、保证相同的号码组合。"
                       "按“停止”时保留已找到的最好结果。"));
    budget_ = new QSpinBox(this);
    budget_->setRange(1, kShrinkBudgetMax);
    budget_->setSuffix(QStringLiteral(" 秒"));
    budget_->setPrefix(QStringLiteral("时限 "));
    if (withButtons) {
        optimised_->setObjectName(QStringLiteral("Check_youhua"));
        budget_->setObjectName(QStringLiteral("Spin_youhuaShiXian"));
    }
    connect(optimised_, &QCheckBox::toggled, this, [this](bool on) {
        if (!loading_) set_ShrinkOptimised(on);
        budget_->setEnabled(on);
    });
    connect(budget_, &QSpinBox::valueChanged, this, [this](int seconds) {
        if (!loading_) set_ShrinkBudgetSeconds(seconds);
    });
    optimisedRow->addWidget(optimised_);
    optimisedRow->addWidget(budget_);
    optimisedRow->addStretch(1);
    layout->addLayout(optimisedRow);

    auto* weights = new QGroupBox(QStringLiteral("号码权重（值越大，含该号码的号码越先保留）"), this);
    auto* weightsRow = new QHBoxLayout(weights);
    auto* scroll = new QScrollArea(weights);
    auto* panel = new QWidget(scroll);
    if (withButtons) {
        panel->setObjectName(QStringLiteral("FrameHaomaQuanzongValue"));
        scroll->verticalScrollBar()->setObjectName(QStringLiteral("VScrollQuanZong"));
    }
    auto* grid = new QGridLayout(panel);
    grid->setVerticalSpacing(2);
    for (int n = 1; n <= kRedCount; ++n) {
        auto* number = new QLabel(QStringLiteral("%1").arg(n, 2, 10, QLatin1Char('0')), panel);
        auto* slider = new QSlider(Qt::Horizontal, panel);
        slider->setRange(0, kQuanZhongMax);
        slider->setMinimumWidth(140);
        if (withButtons) slider->setObjectName(QStringLiteral("SliderQuanZong(%1)").arg(n));
        auto* value = new QLabel(QStringLiteral("0"), panel);
        value->setMinimumWidth(24);
        grid->addWidget(number, n - 1, 0);
        grid->addWidget(slider, n - 1, 1);
        grid->addWidget(value, n - 1, 2);
        sliders_[size_t(n)] = slider;
        values_[size_t(n)] = value;
        connectCommand(slider, &QSlider::valueChanged, this, [this, n](int v) {
            values_[size_t(n)]->setText(QString::number(v));
            if (!loading_) SliderQuanZong_Change(n, v);
        });
    }
    scroll->setWidget(panel);
    scroll->setWidgetResizable(true);
    scroll->setMinimumHeight(220);
    weightsRow->addWidget(scroll, 1);
    auto* presets = new QVBoxLayout;
    const QStringList& captions = quanZhongPresetCaptions();
    for (int i = 0; i < kQuanZhongPresets; ++i) {
        auto* button = new QPushButton(captions[i], weights);
        if (withButtons) button->setObjectName(QStringLiteral("cmmQZfenpei(%1)").arg(i));
        connectCommand(button, &QPushButton::clicked, this, [this, i] {
            cmmQZfenpei_Click(i);
            loadWeights();
        });
        presets->addWidget(button);
    }
    presets->addStretch(1);
    weightsRow->addLayout(presets);
    layout->addWidget(weights, 1);

    if (withButtons) {
        setObjectName(QStringLiteral("FrameSuosuiSezi"));
        setWindowTitle(QStringLiteral("缩水设置"));
        auto* buttons = new QHBoxLayout;
        buttons->addStretch(1);
        const QString captions2[2] = {QStringLiteral("关  闭"), QStringLiteral("开始缩水")};
        for (int i = 0; i < 2; ++i) {
            auto* button = new QPushButton(captions2[i], this);
            button->setObjectName(QStringLiteral("cmmSS(%1)").arg(i));
            connectCommand(button, &QPushButton::clicked, this, [i] { cmmSS_Click(i); });
            button->setDefault(i == 1);  // Enter starts the shrink, Escape closes the frame
            buttons->addWidget(button);
        }
        layout->addLayout(buttons);
    }
}

void ShrinkSettings::reload() {
    loading_ = true;
    const int t = get_GuoLvTiaoJian(kShrinkTypeId);
    for (int i = 3; i <= 7; ++i) {
        options_[size_t(i)]->setAutoExclusive(false);
        options_[size_t(i)]->setChecked(i == t);
        options_[size_t(i)]->setAutoExclusive(true);
    }
    auto_->setChecked(get_ShiYongQingKuang(kSmartSwitch) == 1);
    optimised_->setChecked(shrink_Optimised());
    budget_->setValue(shrink_BudgetSeconds());
    budget_->setEnabled(shrink_Optimised());
    loading_ = false;
    loadWeights();
}

void ShrinkSettings::loadWeights() {
    loading_ = true;
    for (int n = 1; n <= kRedCount; ++n) sliders_[size_t(n)]->setValue(shared().quanZhong[size_t(n)]);
    loading_ = false;
}

void ShrinkSettings::showEvent(QShowEvent* event) {
    QFrame::showEvent(event);
    if (frame_ && !placed_ && parentWidget()) {
        // Over the main window, not wherever the desktop puts a new tool window.
        placed_ = true;
        move(parentWidget()->window()->geometry().center() - rect().center());
    }
    // No store yet: the controls stay as they are.
    if (shared().g_Store) runCommand([this] { reload(); });
}

void ShrinkSettings::closeEvent(QCloseEvent* event) {
    // The frame's own close box is the first of its two buttons.
    if (frame_ && suoShuiSeZhiVisible()) cmmSS_Click(0);
    QFrame::closeEvent(event);
}

ShrinkTimer::ShrinkTimer(QWidget* parent) : QWidget(parent), timer_(new QTimer(this)) {
    setObjectName(QStringLiteral("TimerSuosuijinxingzong"));
    hide();
    setEnabled(false);
    timer_->setInterval(100);
    connectCommand(timer_, &QTimer::timeout, this, [] { TimerSuosuijinxingzong_Timer(); });
}

bool ShrinkTimer::running() const {
    return timer_->isActive();
}

void ShrinkTimer::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() != QEvent::EnabledChange) return;
    if (isEnabled())
        timer_->start();
    else
        timer_->stop();
}

void installShrinkSettings(FormMain& window) {
    window.conditionsPage()->setTab(29, new ShrinkSettings(false));
    auto* frame = new ShrinkSettings(true, &window);
    frame->setWindowFlags(Qt::Tool);
    frame->resize(520, 560);
    frame->hide();
    new ShrinkTimer(&window);
}

}  // namespace dovrex
