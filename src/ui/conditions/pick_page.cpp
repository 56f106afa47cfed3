#include "ui/conditions/pick_page.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTabBar>
#include <QVBoxLayout>

#include "analysis/probability.h"
#include "pipeline/pick_state.h"
#include "pipeline/space_init.h"
#include "store/store.h"
#include "ui/conditions/conditions_page.h"
#include "ui/shell/form_main.h"
#include "ui/shell/gui_screen.h"
#include "ui/shell/window_parts.h"
#include "widgets/command_trap.h"
#include "widgets/pick_button.h"

namespace dovrex {

namespace {

constexpr int kRedColumns = 11;
constexpr int kBlueColumns = 8;

QTabBar* modeTabs(const QString& name, QWidget* parent) {
    auto* tabs = new QTabBar(parent);
    tabs->setObjectName(name);
    tabs->addTab(QStringLiteral("拖码"));
    tabs->addTab(QStringLiteral("胆码"));
    tabs->setTabToolTip(0, QStringLiteral("点击号码，设为拖码（可以出现在号码组合中）"));
    tabs->setTabToolTip(1, QStringLiteral("点击号码，设为胆码（每一注号码都包含它）"));
    tabs->setExpanding(false);
    tabs->setDrawBase(false);
    return tabs;
}

}  // namespace

PickPage::PickPage(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("Frame_XuanHao"));

    // --- red ---
    auto* redBox = new QGroupBox(QStringLiteral("红球（01 - 33）"), this);
    redBox->setObjectName(QStringLiteral("Frame_HongQiu"));
    redTabs_ = modeTabs(QStringLiteral("TabStrip_Qiaqu"), redBox);
    auto* clearRed = new QPushButton(QStringLiteral("清除红球"), redBox);
    clearRed->setObjectName(QStringLiteral("cmm_clsQ"));
    auto* redHead = new QHBoxLayout;
    redHead->addWidget(new QLabel(QStringLiteral("点击号码设为："), redBox));
    redHead->addWidget(redTabs_);
    redHead->addStretch(1);
    redHead->addWidget(clearRed);
    auto* redGrid = new QGridLayout;
    redGrid->setSpacing(4);
    for (int n = 1; n <= kRedCount; ++n) {
        auto* b = new PickButton(n, false, redBox);
        b->setObjectName(QStringLiteral("cmm_C7(%1)").arg(n));
        red_[size_t(n)] = b;
        redGrid->addWidget(b, (n - 1) / kRedColumns, (n - 1) % kRedColumns);
    }
    redGrid->setColumnStretch(kRedColumns, 1);
    auto* redLayout = new QVBoxLayout(redBox);
    redLayout->addLayout(redHead);
    redLayout->addLayout(redGrid);

    // --- blue ---
    auto* blueBox = new QGroupBox(QStringLiteral("蓝球（01 - 16）"), this);
    blueBox->setObjectName(QStringLiteral("Frame_LanQiu"));
    blueTabs_ = modeTabs(QStringLiteral("TabStrip_Houqu"), blueBox);
    blueTabs_->setTabToolTip(1, QStringLiteral("点击号码，设为胆码（只能设 1 个，其它蓝球随之清除）"));
    auto* clearBlue = new QPushButton(QStringLiteral("清除蓝球"), blueBox);
    clearBlue->setObjectName(QStringLiteral("cmm_clsH"));
    auto* blueHead = new QHBoxLayout;
    blueHead->addWidget(new QLabel(QStringLiteral("点击号码设为："), blueBox));
    blueHead->addWidget(blueTabs_);
    blueHead->addStretch(1);
    blueHead->addWidget(clearBlue);
    auto* blueGrid = new QGridLayout;
    blueGrid->setSpacing(4);
    for (int n = 1; n <= kBlueCount; ++n) {
        auto* b = new PickButton(n, true, blueBox);
        b->setObjectName(QStringLiteral("cmm_C7(%1)").arg(kBlueBase + n));
        blue_[size_t(n)] = b;
        blueGrid->addWidget(b, (n - 1) / kBlueColumns, (n - 1) % kBlueColumns);
    }
    // The blue numbers line up with the first eight red columns.
    blueGrid->setColumnStretch(kBlueColumns, 1);
    auto* blueLayout = new QVBoxLayout(blueBox);
    blueLayout->addLayout(blueHead);
    blueLayout->addLayout(blueGrid);

    // --- the count and the legend ---
    auto* countBox = new QGroupBox(QStringLiteral("选号统计"), this);
    tip_ = new QPlainTextEdit(countBox);
    tip_->setObjectName(QStringLiteral("Text_ChoseNumberTip"));
    tip_->setReadOnly(true);
    tip_->setFocusPolicy(Qt::NoFocus);
    tip_->setFrameShape(QFrame::NoFrame);
    tip_->setLineWrapMode(QPlainTextEdit::WidgetWidth);
    tip_->viewport()->setAutoFillBackground(false);
    tip_->setMinimumWidth(tip_->fontMetrics().horizontalAdvance(QStringLiteral("已选红球“拖码”个数： ３３")) +
                          24);
    tip_->setFixedHeight(tip_->fontMetrics().lineSpacing() * 8 + 12);
    auto* countLayout = new QVBoxLayout(countBox);
    countLayout->addWidget(tip_);

    // The legend is drawn with the same faces as the numbers, so it follows the display switch.
    auto* legendBox = new QGroupBox(QStringLiteral("图例"), this);
    auto* legend = new QGridLayout(legendBox);
    legend->setVerticalSpacing(4);
    const struct {
        int pick;
        bool marked;
        const char16_t* text;
    } samples[] = {{kPickDrag, false, u"拖码：可以出现在号码组合中"},
                   {kPickBanker, false, u"胆码：每注号码都包含它"},
                   {kPickNone, true, u"划线：概率分析认为开出机率很低"}};
    for (int i = 0; i < 3; ++i) {
        auto* sample = new PickButton(i == 2 ? 8 : i + 1, false, legendBox);
        sample->setPick(samples[i].pick);
        sample->setMarked(samples[i].marked);
        sample->setFocusPolicy(Qt::NoFocus);
        sample->setAttribute(Qt::WA_TransparentForMouseEvents);
        sample->setFixedSize(36, 30);
        legendSamples_[size_t(i)] = sample;
        auto* text = new QLabel(QString::fromUtf16(samples[i].text), legendBox);
        text->setWordWrap(true);
        legend->addWidget(sample, i, 0);
        legend->addWidget(text, i, 1);
    }
    legend->setColumnStretch(1, 1);

    space_ = new QCheckBox(QStringLiteral("从大底过滤"), this);
    space_->setObjectName(QStringLiteral("Check_DaDi"));
    space_->setToolTip(
        QStringLiteral("号码不限注数（最多全部 33 个红球、16 个蓝球）；第1步先用已开启的过滤条件"
                       "在内存中过滤，只写入过滤后剩下的号码（不超过 100000 注）。"));

    switch_ = new QPushButton(QStringLiteral("更换号码球显示方式"), this);
    switch_->setObjectName(QStringLiteral("cmmSwitch"));

    auto* side = new QVBoxLayout;
    side->addWidget(countBox);
    side->addWidget(space_);
    side->addWidget(legendBox);
    side->addWidget(switch_);
    side->addStretch(1);

    auto* numbers = new QVBoxLayout;
    numbers->addWidget(redBox);
    numbers->addWidget(blueBox);
    numbers->addStretch(1);

    auto* hint = new QLabel(
        QStringLiteral(
            "先选“拖码”或“胆码”，再点击号码，再点一次取消（也可用 Tab、方向键和空格键）。"
            "红球胆码最多 ５ 个，蓝球胆码最多 １ 个，号码组合不能超过 １０００００ 注（从大底过滤时不限）。"),
        this);
    hint->setWordWrap(true);
    hint->setStyleSheet(QStringLiteral("color: #555555;"));

    auto* body = new QHBoxLayout;
    body->addLayout(numbers, 1);
    body->addLayout(side, 0);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(8, 6, 8, 8);
    layout->addWidget(hint);
    layout->addLayout(body, 1);

    // --- behaviour ---
    const QSignalBlocker quietRed(redTabs_), quietBlue(blueTabs_);
    redTabs_->setCurrentIndex(picks().redMode == 2 ? 1 : 0);
    blueTabs_->setCurrentIndex(picks().blueMode == 2 ? 1 : 0);
    connectCommand(redTabs_, &QTabBar::currentChanged, this, [](int i) { tabStrip_QiaQu_Click(i + 1); });
    connectCommand(blueTabs_, &QTabBar::currentChanged, this, [](int i) { tabStrip_HouQu_Click(i + 1); });
    connectCommand(clearRed, &QPushButton::clicked, this, [] { cmm_clsQ_Click(); });
    connectCommand(clearBlue, &QPushButton::clicked, this, [] { cmm_clsH_Click(); });
    connectCommand(space_, &QCheckBox::toggled, this, [](bool on) {
        set_SpaceMode(on);
        show_XuanHaoTongJi();
    });
    connect(switch_, &QPushButton::clicked, this, [this] { setBallFaces(!ballFaces_); });
    for (int index : {0, 1}) {
        const int count = index == 0 ? kRedCount : kBlueCount;
        for (int n = 1; n <= count; ++n) {
            PickButton* b = index == 0 ? red_[size_t(n)] : blue_[size_t(n)];
            const int id = index == 0 ? n : kBlueBase + n;
            connectCommand(b, &PickButton::clicked, this, [id] { cmm_C7_Click(id); });
            connect(b, &PickButton::arrowPressed, this, [this, b](int key) { moveFocus(b, key); });
        }
    }
}

PickButton* PickPage::button(int index) const {
    if (index >= 1 && index <= kRedCount) return red_[size_t(index)];
    if (index > kBlueBase && index <= kBlueBase + kBlueCount) return blue_[size_t(index - kBlueBase)];
    return nullptr;
}

void PickPage::click(int index) {
    runCommand([index] { cmm_C7_Click(index); });
}

void PickPage::refresh() {
    std::array<int, kBlueBase + kBlueCount + 1> values{};
    const bool read = runCommand([&] {
        values = pick_Values();
        show_XuanHaoTongJi();  // the count, also after a condition set came in from a file or a user
    });
    if (!read) return;
    {
        const QSignalBlocker quiet(space_);
        space_->setChecked(space_Mode());
    }
    for (int n = 1; n <= kRedCount; ++n) {
        red_[size_t(n)]->setPick(values[size_t(n)]);
        red_[size_t(n)]->setMarked(gaiLv_IsMarked(n));
    }
    // A blue banker leaves only itself to click, whoever set it.
    int banker = 0;
    for (int n = 1; n <= kBlueCount && banker == 0; ++n)
        if (values[size_t(kBlueBase + n)] == kPickBanker) banker = n;
    for (int n = 1; n <= kBlueCount; ++n) {
        PickButton* b = blue_[size_t(n)];
        b->setPick(values[size_t(kBlueBase + n)]);
        b->setMarked(gaiLv_IsMarked(kBlueBase + n));
        b->setEnabled(banker == 0 || n == banker);
    }
}

void PickPage::setBallFaces(bool balls) {
    ballFaces_ = balls;
    for (int n = 1; n <= kRedCount; ++n) red_[size_t(n)]->setBallFace(balls);
    for (int n = 1; n <= kBlueCount; ++n) blue_[size_t(n)]->setBallFace(balls);
    for (PickButton* sample : legendSamples_) sample->setBallFace(balls);
}

// The numbers as one grid: 3 rows of 11 red, then 2 rows of 8 blue under the first columns.
void PickPage::moveFocus(PickButton* from, int key) {
    struct Cell {
        int row, column;
    };
    auto cellOf = [](PickButton* b) {
        const int i = b->number() - 1;
        return b->isBlue() ? Cell{3 + i / kBlueColumns, i % kBlueColumns}
                           : Cell{i / kRedColumns, i % kRedColumns};
    };
    auto at = [this](int row, int column) -> PickButton* {
        if (row < 0 || column < 0) return nullptr;
        if (row < 3) return column < kRedColumns ? red_[size_t(row * kRedColumns + column + 1)] : nullptr;
        if (row < 5)
            return column < kBlueColumns ? blue_[size_t((row - 3) * kBlueColumns + column + 1)] : nullptr;
        return nullptr;
    };
    // In reading order: all red, then all blue.
    auto order = [](PickButton* b) { return b->isBlue() ? kRedCount + b->number() : b->number(); };
    auto byOrder = [this](int o) -> PickButton* {
        if (o >= 1 && o <= kRedCount) return red_[size_t(o)];
        if (o > kRedCount && o <= kRedCount + kBlueCount) return blue_[size_t(o - kRedCount)];
        return nullptr;
    };
    PickButton* to = nullptr;
    if (key == Qt::Key_Left || key == Qt::Key_Right) {
        const int step = key == Qt::Key_Left ? -1 : 1;
        for (int o = order(from) + step; (to = byOrder(o)) && !to->isEnabled(); o += step) {
        }
    } else {
        const int step = key == Qt::Key_Up ? -1 : 1;
        const Cell c = cellOf(from);
        for (int row = c.row + step; row >= 0 && row < 5; row += step) {
            const int width = row < 3 ? kRedColumns : kBlueColumns;
            PickButton* b = at(row, qMin(c.column, width - 1));
            if (b && b->isEnabled()) {
                to = b;
                break;
            }
        }
    }
    if (to) to->setFocus(Qt::OtherFocusReason);
}

void installPickPage(FormMain& window) {
    ConditionsPage* conditions = window.conditionsPage();
    if (!conditions) return;
    auto* page = new PickPage;
    conditions->setTab(1, page);
    QObject::connect(&window.guiScreen(), &GuiScreen::picksChanged, page, &PickPage::refresh);
    page->refresh();
}

}  // namespace dovrex
