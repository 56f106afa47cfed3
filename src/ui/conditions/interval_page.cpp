#include <QButtonGroup>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "filters/condition_editing.h"
#include "history/derived_columns.h"
#include "history/history_queries.h"
#include "ui/conditions/interval_page.h"

#include "ui/conditions/condition_page_kit.h"
#include "ui/shell/form_main.h"
#include "ui/shell/window_parts.h"
#include "widgets/command_trap.h"
#include "widgets/number_buttons.h"

namespace dovrex {

IntervalPage::IntervalPage(QWidget* parent) : CountListsPage(14, parent) {
    auto* box = new QGroupBox(QStringLiteral("区间划分"), this);
    auto* options = new QHBoxLayout;
    choice_ = new QButtonGroup(this);
    for (int k = 1; k <= 4; ++k) {
        auto* option = new QRadioButton(QStringLiteral("区间%1").arg(k), box);
        option->setObjectName(QStringLiteral("Option_QujianDingyi(%1)").arg(k));
        choice_->addButton(option, k);
        options->addWidget(option);
    }
    options->addStretch(1);
    choice_->button(1)->setChecked(true);
    connectCommand(choice_, &QButtonGroup::idToggled, this, [this](int, bool on) {
        if (on) showMembers();
    });

    numbers_ = new NumberButtons(QStringLiteral("cmm_QujianHuafen"), 11, box);
    connectCommand(numbers_, &NumberButtons::numberClicked, this, [this](int n) {
        const QString column = QStringLiteral("区间%1").arg(choice_->checkedId());
        bool on = false;
        if (runCommand([&] { on = toggleNumberTrait(column, n); })) {
            changed_ = true;
            showMembers();
        }
    });

    members_ = new QLabel(box);
    members_->setObjectName(QStringLiteral("Label_QujianHaoma"));
    members_->setTextInteractionFlags(Qt::TextSelectableByMouse);

    clear_ = new QPushButton(QStringLiteral("清空区间划分"), box);
    clear_->setObjectName(QStringLiteral("cmm_CLSQujianHuafen"));
    connectCommand(clear_, &QPushButton::clicked, this, [this] {
        if (runCommand([] { clearIntervalPartition(); })) {
            changed_ = true;
            reload();
        }
    });
    auto* clearRow = new QHBoxLayout;
    auto* note = noteLabel(QStringLiteral("先选区间，再点号码：点一下加入，再点一下取消。"), box);
    clearRow->addWidget(note, 1);
    clearRow->addWidget(clear_, 0, Qt::AlignTop);

    auto* inner = new QVBoxLayout(box);
    inner->addLayout(options);
    inner->addWidget(numbers_, 0, Qt::AlignLeft);
    inner->addWidget(members_);
    inner->addLayout(clearRow);

    auto* column = static_cast<QVBoxLayout*>(leftColumn()->layout());
    column->insertSpacing(1, 8);
    column->insertWidget(2, box);
}

void IntervalPage::reload() {
    CountListsPage::reload();
    showMembers();
}

void IntervalPage::hideEvent(QHideEvent* event) {
    CountListsPage::hideEvent(event);
    if (!changed_) return;
    changed_ = false;
    runCommand([] { recalc_QuJian(earliest_QiHao(), latest_QiHao()); });
}

void IntervalPage::showMembers() {
    const int k = choice_->checkedId();
    QStringList lines;
    runCommand([&] {
        numbers_->setMembers(haoMaTeXing(QStringLiteral("区间%1").arg(k)));
        for (int i = 1; i <= 4; ++i) {
            const QString numbers = quJianHaoMa(i);
            lines << QStringLiteral("区间%1：%2")
                         .arg(i)
                         .arg(numbers.isEmpty() ? QStringLiteral("（ 无 号 码 ）") : numbers);
        }
    });
    members_->setText(lines.join(u'\n'));
}

void installIntervalPage(FormMain& window) {
    if (ConditionsPage* pages = window.conditionsPage()) pages->setTab(14, new IntervalPage);
}

}  // namespace dovrex
