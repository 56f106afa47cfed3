#include "ui/conditions/condition_list_page.h"
#include "ui/conditions/count_lists_page.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
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
    connectCommand(lines_, &TickList::ticked, this, [this](int row, bool on) { tick(row, on); });

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

void ConditionListPage::tick(int row, bool on) {
    if (row < 0 || row >= condition_.lines.size()) return;
    runCommand([&] { set_ConditionLine(condition_.lines[row], on); });
    showTip();
}

void ConditionListPage::showTip() {
    QString summary;
    runCommand([&] { summary = conditionSummary(tab_); });
    tip_->setText(QStringLiteral("当前取值阅览：") + summary);
    chart_->setCondition(tip_->text(), allowedColumns());
}

QList<int> ConditionListPage::allowedColumns() const {
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
        connectCommand(list, &TickList::ticked, this, [this, k](int row, bool on) {
            const ConditionLine& line = conditions_[k].lines.value(row);
            if (line.id > 0) runCommand([&] { set_ConditionLine(line, on); });
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
