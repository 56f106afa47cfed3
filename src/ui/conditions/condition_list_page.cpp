#include "ui/conditions/condition_list_page.h"
#include "ui/conditions/count_lists_page.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSpinBox>
#include <QTableView>
#include <QVBoxLayout>

#include "filters/condition_editing.h"
#include "filters/condition_help.h"
#include "ui/conditions/condition_page_kit.h"
#include "ui/shell/form_main.h"
#include "ui/shell/window_parts.h"
#include "widgets/command_trap.h"
#include "widgets/tick_list.h"
#include "widgets/trend_panel.h"

namespace dovrex {

namespace {

// Pages of List_TiaojianElse (the others use List_TiaoJian).
bool elseList(int tab) {
    return tab >= 16 && tab <= 25;
}

}  // namespace

ConditionListPage::ConditionListPage(int tab, QWidget* parent) : ConditionTab(parent), tab_(tab) {
    setObjectName(QStringLiteral("ConditionPage%1").arg(tab));
    condition_ = elseList(tab) ? load_ElseLieBiao(tab) : load_TiaoJianLieBiao(tab);

    check_ = dovrex::switchBox(
        condition_.caption, condition_.switchNo,
        elseList(tab) ? QStringLiteral("Check_useTiaojiao_else") : QStringLiteral("Check_useTiaojiao"), this);
    lines_ = new TickList(this);
    lines_->setObjectName(elseList(tab) ? QStringLiteral("List_TiaojianElse")
                                        : QStringLiteral("List_TiaoJian"));
    QStringList texts;
    QList<int> ids;
    for (const ConditionLine& line : condition_.lines) {
        texts << line.text;
        ids << line.id;
    }
    lines_->setLines(texts, ids);
    connectCommand(lines_, &TickList::ticked, this,
                   [this](const QList<int>& rows, bool on) { tick(rows, on); });

    tip_ = new QLabel(this);
    tip_->setObjectName(QStringLiteral("Text_tiaojianTip"));
    tip_->setWordWrap(true);
    tip_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    tip_->setStyleSheet(QStringLiteral("color: #8b0000;"));

    auto* left = new QWidget(this);
    const int width = qMax(lines_->idealWidth(), check_->sizeHint().width()) + 8;
    left->setFixedWidth(width);
    auto* column = new QVBoxLayout(left);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(check_);
    column->addWidget(lines_, 1);
    if (condition_.numbered) column->addWidget(makeRangeEntry(left));

    chart_ = new TrendPanel(this);

    auto* layout = new QGridLayout(this);
    layout->setContentsMargins(6, 6, 6, 6);
    layout->addWidget(left, 0, 0);
    layout->addWidget(chart_, 0, 1);
    layout->addWidget(tip_, 1, 0, 1, 2);
    if (QString text; runCommand([&] { text = condition_Definition(tab); }) && !text.isEmpty())
        layout->addWidget(noteLabel(text, this), 2, 0, 1, 2);
    layout->setColumnStretch(1, 1);
    layout->setRowStretch(0, 1);
}

void ConditionListPage::reload() {
    runCommand([&] {
        loadSwitch(check_);
        const QList<bool> ticks = loadListTicks(condition_);
        for (int row = 0; row < ticks.size(); ++row) lines_->setTicked(row, ticks[row]);
    });
    showTip();
    chart_->show_TrendOfTab(ConditionsPage::tabCaption(tab_));
}

QWidget* ConditionListPage::makeRangeEntry(QWidget* parent) {
    auto* box = new QGroupBox(QStringLiteral("连续取值"), parent);
    box->setObjectName(QStringLiteral("Frame_FanWei"));
    const int low = conditionLineValue(0), high = conditionLineValue(int(condition_.lines.size()) - 1);
    auto spin = [&](const QString& name, int value) {
        auto* s = new QSpinBox(box);
        s->setObjectName(name);
        s->setRange(low, high);
        s->setValue(value);
        s->setAccelerated(true);
        return s;
    };
    from_ = spin(QStringLiteral("Text_FanWeiCong"), low);
    to_ = spin(QStringLiteral("Text_FanWeiDao"), high);
    auto* tick = new QPushButton(QStringLiteral("勾选"), box);
    tick->setObjectName(QStringLiteral("cmm_FanWeiGouXuan"));
    tick->setToolTip(QStringLiteral("勾选从起点到终点的每一个值（回车亦可）"));
    auto* clear = new QPushButton(QStringLiteral("取消"), box);
    clear->setObjectName(QStringLiteral("cmm_FanWeiQuXiao"));
    clear->setToolTip(QStringLiteral("取消从起点到终点的每一个值"));
    connectCommand(tick, &QPushButton::clicked, this, [this] { tickRange(true); });
    connectCommand(clear, &QPushButton::clicked, this, [this] { tickRange(false); });
    for (QSpinBox* s : {from_, to_})
        connectCommand(s, &QAbstractSpinBox::editingFinished, this, [this, s] {
            // Enter in a box ticks the run; leaving the box only keeps the number.
            if (s->hasFocus()) tickRange(true);
        });

    auto* grid = new QGridLayout(box);
    grid->setContentsMargins(6, 4, 6, 4);
    grid->setHorizontalSpacing(4);
    // The numbers take the whole width: the widest value with its arrows, never clipped.
    grid->addWidget(new QLabel(QStringLiteral("从"), box), 0, 0);
    grid->addWidget(from_, 0, 1, 1, 2);
    grid->addWidget(new QLabel(QStringLiteral("到"), box), 1, 0);
    grid->addWidget(to_, 1, 1, 1, 2);
    grid->addWidget(tick, 2, 1);
    grid->addWidget(clear, 2, 2);
    for (QSpinBox* s : {from_, to_}) s->setMinimumWidth(s->sizeHint().width());
    box->setToolTip(QStringLiteral("列表中也可按住 Shift 点击，或按住鼠标拖过一段连续的值"));
    return box;
}

int ConditionListPage::conditionLineValue(int row) const {
    return condition_.lines.value(row).value;
}

void ConditionListPage::tickRange(bool on) {
    const int first = condition_.lines.isEmpty() ? 0 : condition_.lines.first().value;
    lines_->tickRun(from_->value() - first, to_->value() - first, on);
}

void ConditionListPage::tick(const QList<int>& rows, bool on) {
    QList<ConditionLine> lines;
    for (int row : rows)
        if (row >= 0 && row < condition_.lines.size()) lines << condition_.lines[row];
    if (lines.isEmpty()) return;
    runCommand([&] { set_ConditionLines(lines, on); });
    showTip();
}

void ConditionListPage::showTip() {
    QString summary;
    runCommand([&] { summary = conditionSummary(tab_); });
    tip_->setText(QStringLiteral("当前取值阅览：") + summary);
    chart_->setCondition(tip_->text(), allowedValues());
}

QList<int> ConditionListPage::allowedValues() const {
    QList<int> columns;
    for (int row = 0; row < lines_->count(); ++row) {
        if (lines_->isTicked(row)) columns << condition_.lines[row].value;
    }
    return columns;
}

CountListsPage::CountListsPage(int tab, QWidget* parent) : ConditionTab(parent), tab_(tab) {
    setObjectName(QStringLiteral("ConditionPage%1").arg(tab));
    conditions_ = load_GeShuLieBiao(tab);

    row_ = new QWidget(this);
    auto* rowLayout = new QHBoxLayout(row_);
    rowLayout->setContentsMargins(0, 0, 0, 0);
    for (int k = 0; k < conditions_.size(); ++k) {
        const ConditionList& condition = conditions_[k];
        const bool interval = tab == 14;
        auto* box = dovrex::switchBox(condition.caption, condition.switchNo,
                                      interval ? QStringLiteral("Check_useTiaojiao(%1)").arg(k + 1)
                                               : QStringLiteral("Check_useTiaojiao(%1)").arg(k),
                                      row_);
        auto* list = new TickList(row_);
        list->setObjectName(interval ? QStringLiteral("List_QJ(%1)").arg(k + 1)
                                     : QStringLiteral("List_TJ(%1)").arg(k));
        QStringList texts;
        QList<int> ids;
        for (const ConditionLine& line : condition.lines) {
            texts << line.text;
            ids << line.id;
        }
        list->setLines(texts, ids);
        const int lineHeight = list->sizeHintForRow(0);
        list->setFixedHeight(lineHeight * texts.size() + 2 * list->frameWidth() + 4);
        list->setFixedWidth(qMax(list->idealWidth() - 10, box->sizeHint().width()));
        connectCommand(list, &TickList::ticked, this, [this, k](const QList<int>& rows, bool on) {
            QList<ConditionLine> lines;
            for (int row : rows)
                if (const ConditionLine& line = conditions_[k].lines.value(row); line.id > 0) lines << line;
            runCommand([&] { set_ConditionLines(lines, on); });
        });
        auto* cell = new QVBoxLayout;
        cell->addWidget(box);
        cell->addWidget(list);
        cell->addStretch(1);
        rowLayout->addLayout(cell);
        checks_ << box;
        lists_ << list;
    }
    rowLayout->addStretch(1);

    left_ = new QWidget(this);
    auto* column = new QVBoxLayout(left_);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(row_);
    column->addStretch(1);

    grid_ = makeCountGrid(this);

    if (QString text; runCommand([&] { text = condition_Definition(tab); }) && !text.isEmpty()) {
        QLabel* note = noteLabel(text, left_);
        note->setMaximumWidth(row_->sizeHint().width());
        column->insertWidget(1, note);
    }

    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(6, 6, 6, 6);
    layout->addWidget(left_);
    layout->addWidget(grid_, 1);
}

void CountListsPage::reload() {
    runCommand([&] {
        for (int k = 0; k < conditions_.size(); ++k) {
            loadSwitch(checks_[k]);
            const QList<bool> ticks = loadListTicks(conditions_[k]);
            for (int row = 0; row < ticks.size(); ++row) lists_[k]->setTicked(row, ticks[row]);
        }
    });
    fillCountGrid(grid_);
}

void installConditionListPages(FormMain& window) {
    ConditionsPage* pages = window.conditionsPage();
    if (!pages) return;
    for (int tab = 2; tab <= 26; ++tab) {
        if (tab >= 11 && tab <= 13)
            pages->setTab(tab, new CountListsPage(tab));
        else if (tab <= 10 || tab >= 16)
            pages->setTab(tab, new ConditionListPage(tab));
    }
}

}  // namespace dovrex
