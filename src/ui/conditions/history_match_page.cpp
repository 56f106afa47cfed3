#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QVBoxLayout>

#include "domain/game.h"
#include "filters/condition_editing.h"
#include "history/history_queries.h"
#include "screen/shared_state.h"
#include "ui/conditions/history_match_page.h"
#include "ui/conditions/interval_page.h"

#include "ui/conditions/condition_page_kit.h"
#include "ui/shell/form_main.h"
#include "ui/shell/window_parts.h"
#include "widgets/command_trap.h"

namespace dovrex {

namespace {

void showIssue(QComboBox* combo, IssueNumber issue) {
    const QString text = QString::number(issue);
    int index = combo->findText(text);
    if (index < 0) {
        combo->addItem(text);
        index = combo->count() - 1;
    }
    combo->setCurrentIndex(index);
}

}  // namespace

HistoryMatchPage::HistoryMatchPage(QWidget* parent) : ConditionTab(parent) {
    setObjectName(QStringLiteral("ConditionPage28"));

    use_ = new QCheckBox(QStringLiteral("使用“历史数据过滤”"), this);
    use_->setObjectName(QStringLiteral("Check_Historyguolu"));
    connectCommand(use_, &QCheckBox::clicked, this, [this] { write(); });

    auto* box = new QGroupBox(QStringLiteral("过滤掉与下列各期开奖号码相同或相近的号码"), this);
    low_ = new QComboBox(box);
    low_->setObjectName(QStringLiteral("Combo_HistoryGuoLu(0)"));
    high_ = new QComboBox(box);
    high_->setObjectName(QStringLiteral("Combo_HistoryGuoLu(1)"));
    match_ = new QComboBox(box);
    match_->setObjectName(QStringLiteral("Combo_PiPei"));
    for (int m = 1; m <= 6; ++m) match_->addItem(QString::number(m));
    for (QComboBox* c : {low_, high_}) {
        c->setMaxVisibleItems(20);
        c->setMinimumContentsLength(9);
        connectCommand(c, &QComboBox::activated, this, [this] { rangeChosen(); });
    }
    connectCommand(match_, &QComboBox::activated, this, [this] { write(); });
    count_ = new QLabel(box);
    count_->setObjectName(QStringLiteral("Label_HistoryQiShu"));

    auto* grid = new QGridLayout(box);
    grid->addWidget(new QLabel(QStringLiteral("从"), box), 0, 0);
    grid->addWidget(low_, 0, 1);
    grid->addWidget(new QLabel(QStringLiteral("期  至"), box), 0, 2);
    grid->addWidget(high_, 0, 3);
    grid->addWidget(new QLabel(QStringLiteral("期"), box), 0, 4);
    grid->addWidget(count_, 0, 5);
    grid->addWidget(new QLabel(QStringLiteral("匹配值："), box), 1, 0);
    grid->addWidget(match_, 1, 1);
    grid->addWidget(new QLabel(QStringLiteral("及以上的号码被过滤掉"), box), 1, 2, 1, 3);
    grid->setColumnStretch(6, 1);

    auto* help =
        noteLabel(QStringLiteral("匹配值：一注号码与某一期开奖号码相同的红球个数。\n"
                                 "匹配值=６：两期号码完全相同（指的是红球的６个号码）时其匹配值等于６；\n"
                                 "匹配值=５：两期号码有５个红球相同时其匹配值等于５，依此类推。\n"
                                 "所选的期数达到６期或以上时，匹配值只能为６（逐期比较太费时）。"),
                  this);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(10, 10, 10, 10);
    layout->addWidget(use_);
    layout->addWidget(box);
    layout->addWidget(help);
    layout->addStretch(1);
}

void HistoryMatchPage::reload() {
    loading_ = true;
    runCommand([&] {
        QStringList issues;
        for (const IssueNumber issue : issues_NewestFirst()) issues << QString::number(issue);
        for (QComboBox* combo : {low_, high_}) {
            combo->clear();
            combo->addItems(issues);
        }
        const LiShiGuoLv s = readHistoryMatch();
        use_->setChecked(s.on);
        showIssue(low_, s.low);
        showIssue(high_, s.high);
        match_->setCurrentIndex(qBound(1, s.match, 6) - 1);
        const int draws = countIssues(s.low, s.high);
        count_->setText(QStringLiteral("（共 %1 期）").arg(draws));
        match_->setEnabled(draws < kPiPeiFreeDraws);
    });
    loading_ = false;
}

void HistoryMatchPage::rangeChosen() {
    if (loading_) return;
    int draws = 0;
    runCommand([&] { draws = countIssues(low_->currentText().toInt(), high_->currentText().toInt()); });
    count_->setText(QStringLiteral("（共 %1 期）").arg(draws));
    if (draws >= kPiPeiFreeDraws) {
        match_->setCurrentIndex(5);
        match_->setEnabled(false);
    } else {
        match_->setEnabled(true);
    }
    write();
}

void HistoryMatchPage::write() {
    if (loading_) return;
    LiShiGuoLv s;
    s.on = use_->isChecked();
    s.low = low_->currentText().toInt();
    s.high = high_->currentText().toInt();
    s.match = match_->currentIndex() + 1;
    runCommand([&] { writeHistoryMatch(s); });
}

void installHistoryMatchPage(FormMain& window) {
    if (ConditionsPage* pages = window.conditionsPage()) pages->setTab(28, new HistoryMatchPage);
}

}  // namespace dovrex
