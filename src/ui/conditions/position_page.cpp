#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QRadioButton>
#include <QVBoxLayout>

#include "domain/condition_catalogue.h"
#include "filters/condition_editing.h"
#include "filters/condition_store.h"
#include "ui/conditions/interval_page.h"
#include "ui/conditions/position_page.h"

#include "ui/conditions/condition_page_kit.h"
#include "ui/shell/form_main.h"
#include "ui/shell/window_parts.h"
#include "widgets/command_trap.h"
#include "widgets/tick_list.h"

namespace dovrex {

namespace {

QString positionName(int i) {
    switch (i) {
        case 1:
            return QStringLiteral("龙头号码");
        case 6:
            return QStringLiteral("凤尾号码");
        case 7:
            return QStringLiteral("[蓝球号码]");
        default:
            return QStringLiteral("第%1位号码").arg(i);
    }
}

}  // namespace

PositionPage::PositionPage(QWidget* parent) : ConditionTab(parent) {
    setObjectName(QStringLiteral("ConditionPage15"));

    auto* positions = new QGroupBox(QStringLiteral("号码定位：每一位允许开出的号码"), this);
    auto* row = new QHBoxLayout(positions);
    for (int i = 1; i <= 7; ++i) {
        auto* box = switchBox(QStringLiteral("第%1位").arg(i), 29 + i,
                              QStringLiteral("Check_useDingWeiTiaojiao(%1)").arg(29 + i), positions);
        auto* list = new TickList(positions);
        list->setObjectName(QStringLiteral("List_DingweiNumber(%1)").arg(i));
        list->setProperty("Tag", QStringLiteral("第%1位").arg(i));
        QStringList texts;
        QList<int> numbers;
        for (int n = 1; n <= (i == 7 ? kBlueCount : kRedCount); ++n) {
            texts << twoDigits(n);
            numbers << n;
        }
        list->setLines(texts, numbers);
        list->setFlow(QListView::TopToBottom);
        list->setWrapping(true);
        list->setResizeMode(QListView::Adjust);
        list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        const int line = list->sizeHintForRow(0);
        const int cell = list->sizeHintForColumn(0) + 6;
        list->setFixedSize(2 * cell + 2 * list->frameWidth() + 6, 17 * line + 2 * list->frameWidth() + 6);
        connectCommand(list, &TickList::ticked, this, [this, list, i](const QList<int>& rows, bool on) {
            // The store's cells decide: the list shows what was written.
            const QString column = list->property("Tag").toString();
            std::array<bool, 34> members{};
            if (runCommand([&] {
                    members = haoMaTeXing(column);
                    for (int r : rows) members[size_t(qBound(0, list->lineData(r), 33))] = on;
                    setNumberTrait(column, members);
                }))
                for (int r = 0; r < list->count(); ++r)
                    list->setTicked(r, members[size_t(list->lineData(r))]);
            enableSwitch(i);
        });
        auto* name = new QLabel(positionName(i), positions);
        name->setStyleSheet(i == 7 ? QStringLiteral("color: #1d5fd0;") : QStringLiteral("color: #b22222;"));
        auto* cell_ = new QVBoxLayout;
        cell_->addWidget(box);
        cell_->addWidget(name);
        cell_->addWidget(list);
        cell_->addStretch(1);
        row->addLayout(cell_);
        switches_ << box;
        lists_ << list;
    }
    row->addStretch(1);

    auto* toleranceBox = new QGroupBox(QStringLiteral("定位过滤容错值"), this);
    auto* toleranceLayout = new QVBoxLayout(toleranceBox);
    auto* options = new QHBoxLayout;
    tolerance_ = new QButtonGroup(this);
    for (int t = 0; t <= 7; ++t) {
        auto* option = new QRadioButton(QStringLiteral("%1").arg(t), toleranceBox);
        option->setObjectName(QStringLiteral("Option_DingweiRongcuo(%1)").arg(t));
        tolerance_->addButton(option, t);
        options->addWidget(option);
    }
    options->addStretch(1);
    connectCommand(tolerance_, &QButtonGroup::idClicked, this,
                   [](int t) { runCommand([&] { set_GuoLvTiaoJian(kToleranceId, t); }); });
    toleranceLayout->addLayout(options);
    toleranceLayout->addWidget(noteLabel(
        QStringLiteral("容错值＝０时，第１～７位只要错了其中的一位，则这注号码就会不符合条件，会被过滤掉；\n"
                       "容错值＝１时，第１～７位错２位及以上，则这注号码就会不符合条件，会被过滤掉；"
                       "（也就是允许错其中的１位）"),
        toleranceBox));

    auto* patterns = new QGroupBox(QStringLiteral("单双组合（开出与之相同的号码被排除）"), this);
    auto* grid = new QGridLayout(patterns);
    grid->setHorizontalSpacing(6);
    grid->setVerticalSpacing(3);
    const QStringList heads{QStringLiteral("红1"), QStringLiteral("红2"), QStringLiteral("红3"),
                            QStringLiteral("红4"), QStringLiteral("红5"), QStringLiteral("红6"),
                            QStringLiteral("蓝")};
    for (int p = 0; p < 7; ++p) grid->addWidget(new QLabel(heads[p], patterns), 0, p + 1, Qt::AlignCenter);
    for (int slot = 0; slot <= 5; ++slot) {
        auto* box = switchBox(slot == 0 ? QStringLiteral("排除掉上期单双组合：")
                                        : QStringLiteral("排除掉单双组合%1：").arg(slot),
                              70 + slot, QStringLiteral("Check1_paicu(%1)").arg(slot), patterns);
        grid->addWidget(box, slot + 1, 0);
        patternSwitches_ << box;
        for (int p = 1; p <= 7; ++p) {
            auto* combo = new QComboBox(patterns);
            combo->setObjectName(QStringLiteral("Combo1_dansuang(%1)").arg(10 * slot + p));
            combo->addItems({QStringLiteral("双"), QStringLiteral("单"), QStringLiteral("*")});
            combo->setSizeAdjustPolicy(QComboBox::AdjustToContents);
            if (slot == 0) {
                combo->setEnabled(false);  // follows the previous draw at each run
            } else {
                const int id = 5000 + 10 * slot + p;
                connectCommand(combo, &QComboBox::activated, this,
                               [id](int index) { runCommand([&] { set_GuoLvTiaoJian(id, index); }); });
            }
            grid->addWidget(combo, slot + 1, p);
            combos_ << combo;
        }
    }
    grid->setColumnStretch(8, 1);

    auto* bottom = new QHBoxLayout;
    bottom->addWidget(toleranceBox, 1);
    bottom->addWidget(patterns, 1);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(6, 6, 6, 6);
    layout->addWidget(positions);
    layout->addLayout(bottom);
    layout->addStretch(1);
}

QComboBox* PositionPage::patternCombo(int slot, int position) const {
    return combos_.value(slot * 7 + position - 1);
}

void PositionPage::reload() {
    runCommand([&] {
        for (int i = 1; i <= 7; ++i) {
            loadSwitch(switches_[i - 1]);
            const auto members = haoMaTeXing(QStringLiteral("第%1位").arg(i));
            TickList* list = lists_[i - 1];
            for (int r = 0; r < list->count(); ++r) list->setTicked(r, members[list->lineData(r)]);
            enableSwitch(i);
        }
        if (QAbstractButton* b = tolerance_->button(get_GuoLvTiaoJian(kToleranceId))) b->setChecked(true);
        const auto previous = shangQiDanShuang();
        for (int p = 1; p <= 7; ++p) patternCombo(0, p)->setCurrentIndex(previous[p - 1]);
        for (int slot = 1; slot <= 5; ++slot) {
            const auto values = readParityPatterns(slot);
            for (int p = 1; p <= 7; ++p) patternCombo(slot, p)->setCurrentIndex(qBound(0, values[p - 1], 2));
        }
        for (QCheckBox* box : patternSwitches_) loadSwitch(box);
    });
}

void PositionPage::enableSwitch(int position) {
    switches_[position - 1]->setEnabled(lists_[position - 1]->tickedCount() > 0);
}

void installPositionPage(FormMain& window) {
    if (ConditionsPage* pages = window.conditionsPage()) pages->setTab(15, new PositionPage);
}

}  // namespace dovrex
