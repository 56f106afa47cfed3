#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "filters/condition_editing.h"
#include "filters/condition_pages.h"
#include "filters/condition_store.h"
#include "filters/filter_families.h"
#include "screen/shared_state.h"
#include "ui/conditions/custom_group_page.h"
#include "ui/conditions/interval_page.h"

#include "ui/conditions/condition_page_kit.h"
#include "ui/shell/form_main.h"
#include "ui/shell/window_parts.h"
#include "widgets/command_trap.h"
#include "widgets/number_buttons.h"
#include "widgets/tick_list.h"

namespace dovrex {

namespace {

const QString kCommonGroups = QStringLiteral("常用分组");

}  // namespace

CustomGroupPage::CustomGroupPage(QWidget* parent) : ConditionTab(parent) {
    setObjectName(QStringLiteral("ConditionPage27"));

    groups_ = new QListWidget(this);
    groups_->setObjectName(QStringLiteral("List_ZDY"));
    groups_->setWordWrap(true);
    groups_->setAlternatingRowColors(true);
    connectCommand(groups_, &QListWidget::currentRowChanged, this, [this](int row) {
        if (row >= 0) showGroup();
    });

    auto* editor = new QGroupBox(this);
    title_ = new QLabel(editor);
    QFont bold = title_->font();
    bold.setBold(true);
    title_->setFont(bold);

    numbers_ = new NumberButtons(QStringLiteral("cmm_ZDY"), 11, editor);
    connectCommand(numbers_, &NumberButtons::numberClicked, this, [this](int n) {
        bool on = false;
        if (runCommand([&] { on = toggleNumberTrait(customGroupColumn(group()), n); })) {
            numbers_->setOn(n, on);
            refreshList();
        }
    });

    auto* rename = new QPushButton(QStringLiteral("修改名称"), editor);
    rename->setObjectName(QStringLiteral("cmmChangeZDYname"));
    connectCommand(rename, &QPushButton::clicked, this, [this] { this->rename(); });
    auto* next = new QPushButton(QStringLiteral("下一组"), editor);
    next->setObjectName(QStringLiteral("cmmZDYnext"));
    connectCommand(next, &QPushButton::clicked, this, [this] { selectGroup(group() % 20 + 1); });
    auto* emptyOne = new QPushButton(QStringLiteral("清空当前组"), editor);
    emptyOne->setObjectName(QStringLiteral("cmm_EmptyZDY(0)"));
    connectCommand(emptyOne, &QPushButton::clicked, this, [this] { empty(false); });
    auto* emptyAll = new QPushButton(QStringLiteral("清空全部自定义组"), editor);
    emptyAll->setObjectName(QStringLiteral("cmm_EmptyZDY(1)"));
    connectCommand(emptyAll, &QPushButton::clicked, this, [this] { empty(true); });

    common_ = new QComboBox(editor);
    common_->setObjectName(QStringLiteral("ComboZDYcyfz"));
    common_->setPlaceholderText(kCommonGroups);
    common_->setMaxVisibleItems(24);
    common_->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    connectCommand(common_, &QComboBox::activated, this, [this](int index) {
        const QString item = common_->itemText(index);
        common_->setCurrentIndex(-1);  // back to "常用分组"
        if (item.trimmed() == QStringLiteral("---")) return;
        bool made = false;
        runCommand([&] { made = makeGroupPreset(group(), item); });
        if (made) {
            refreshList();
            showGroup();
        }
    });

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(common_);
    buttons->addWidget(rename);
    buttons->addWidget(next);
    buttons->addStretch(1);
    buttons->addWidget(emptyOne);
    buttons->addWidget(emptyAll);

    auto* members = new QVBoxLayout;
    members->addWidget(title_);
    members->addWidget(numbers_, 0, Qt::AlignLeft);
    members->addLayout(buttons);
    members->addStretch(1);

    use_ = new QCheckBox(editor);
    use_->setObjectName(QStringLiteral("Check_Zdy"));
    connectCommand(use_, &QCheckBox::clicked, this, [this](bool on) {
        runCommand([&] { set_ShiYongQingKuang(customGroupSwitch(group()), on ? 1 : 0); });
        refreshList();
    });
    counts_ = new TickList(editor);
    counts_->setObjectName(QStringLiteral("List_ZDYset"));
    QStringList lines;
    for (int c = 0; c <= 6; ++c) lines << QStringLiteral("开出个数=%1").arg(c);
    counts_->setLines(lines);
    counts_->setFixedSize(counts_->idealWidth(),
                          counts_->sizeHintForRow(0) * 7 + 2 * counts_->frameWidth() + 4);
    connectCommand(counts_, &TickList::ticked, this, [this](const QList<int>& rows, bool on) {
        const int k = group();
        QList<ConditionLine> lines;
        for (int row : rows) lines.append({QString(), customGroupBase(k) + row, row});
        runCommand([&] { set_ConditionLines(lines, on); });
        use_->setEnabled(counts_->tickedCount() > 0);
        refreshList();
    });
    auto* countColumn = new QVBoxLayout;
    countColumn->addWidget(use_);
    countColumn->addWidget(counts_);
    countColumn->addWidget(noteLabel(QStringLiteral("一注号码中属于本组的\n红球个数"), editor));
    countColumn->addStretch(1);

    auto* editorLayout = new QHBoxLayout(editor);
    editorLayout->addLayout(members, 1);
    editorLayout->addSpacing(16);
    editorLayout->addLayout(countColumn);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(6, 6, 6, 6);
    layout->addWidget(groups_, 1);
    layout->addWidget(editor);
}

int CustomGroupPage::group() const {
    return qBound(1, groups_->currentRow() + 1, 20);
}

void CustomGroupPage::selectGroup(int k) {
    groups_->setCurrentRow(k - 1);
}

void CustomGroupPage::reload() {
    runCommand([&] {
        common_->clear();
        common_->addItems(listGroupPresets());
        common_->setCurrentIndex(-1);
    });
    refreshList();
    if (groups_->currentRow() < 0) groups_->setCurrentRow(0);
    showGroup();
}

void CustomGroupPage::refreshList() {
    QStringList lines;
    if (!runCommand([&] { lines = list_ZuLieBiao(); })) return;
    const int row = groups_->currentRow();
    const QSignalBlocker quiet(groups_);
    if (groups_->count() != lines.size()) {
        groups_->clear();
        groups_->addItems(lines);
    } else {
        for (int i = 0; i < lines.size(); ++i) groups_->item(i)->setText(lines[i]);
    }
    groups_->setCurrentRow(row);
}

void CustomGroupPage::showGroup() {
    const int k = group();
    runCommand([&] {
        const QString alias = zdyAlias(k);
        title_->setText(QStringLiteral("第 %1 组：%2").arg(k).arg(alias));
        use_->setText(QStringLiteral("使用“%1”过滤").arg(alias));
        numbers_->setMembers(haoMaTeXing(customGroupColumn(k)));
        for (int c = 0; c <= 6; ++c) counts_->setTicked(c, get_GuoLvTiaoJian(customGroupBase(k) + c) > 0);
        use_->setChecked(get_ShiYongQingKuang(customGroupSwitch(k)) == 1);
        use_->setEnabled(counts_->tickedCount() > 0);
    });
}

void CustomGroupPage::rename() {
    const int k = group();
    QString old;
    runCommand([&] { old = zdyAlias(k); });
    const QString alias =
        dovrex::screen().ui_AskText(QStringLiteral("【 ") + old + QStringLiteral(" 】 名称修改为："),
                                    QStringLiteral("修改为容易识别的名称"), old);
    bool done = false;
    runCommand([&] { done = renameCustomGroup(k, alias); });
    if (!done) return;
    refreshList();
    showGroup();
    dovrex::screen().ui_Message(QStringLiteral("名称已修改完成！"));
}

void CustomGroupPage::empty(bool all) {
    runCommand([&] {
        if (all)
            for (int k = 1; k <= 20; ++k) clearCustomGroup(k);
        else
            clearCustomGroup(group());
    });
    refreshList();
    showGroup();
}

void installCustomGroupPage(FormMain& window) {
    if (ConditionsPage* pages = window.conditionsPage()) pages->setTab(27, new CustomGroupPage);
}

}  // namespace dovrex
