#include "ui/conditions/conditions_page.h"
#include "ui/conditions/condition_tab.h"

#include <QHBoxLayout>
#include <QListWidget>
#include <QStackedWidget>

#include "ui/shell/placeholder_page.h"
#include "widgets/command_trap.h"

namespace dovrex {

void ConditionTab::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    runCommand([this] { reload(); });
}

QString ConditionsPage::tabCaption(int index) {
    static const char16_t* const captions[kTabs] = {
        u"选取号码", u"和值过滤", u"奇数和值",   u"偶数和值",     u"跨度过滤", u"最大间距",
        u"连 号",    u"重叠号",   u"斜位码",     u"AC值",         u"奇偶比",   u"大小比",
        u"高低尾码", u"区间设置", u"定位过滤",   u"尾数设置",     u"间距九",   u"间距七",
        u"间距十一", u"间距十二", u"头数设置",   u"头数和值",     u"尾数和值", u"温度值5",
        u"温度值10", u"和值尾",   u"自定义过滤", u"历史数据过滤", u"缩水设置", u"查看全部"};
    return index >= 1 && index <= kTabs ? QString::fromUtf16(captions[index - 1]) : QString();
}

ConditionsPage::ConditionsPage(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("Frm_SubConditions"));
    list_ = new QListWidget(this);
    list_->setObjectName(QStringLiteral("TabStrip_TiaoJian"));
    list_->setMaximumWidth(150);
    list_->setMinimumWidth(110);
    stack_ = new QStackedWidget(this);
    for (int i = 1; i <= kTabs; ++i) {
        list_->addItem(tabCaption(i));
        stack_->addWidget(
            new PlaceholderPage(tabCaption(i), QStringLiteral("此项条件的设置页面即将推出。"), stack_));
    }
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(4, 4, 4, 4);
    side_ = new QVBoxLayout;
    side_->addWidget(list_, 1);
    layout->addLayout(side_);
    layout->addWidget(stack_, 1);
    connect(list_, &QListWidget::currentRowChanged, this, [this](int row) {
        stack_->setCurrentIndex(row);
        emit tabSelected(row + 1);
    });
    list_->setCurrentRow(0);
}

void ConditionsPage::addSideWidget(QWidget* widget) {
    widget->setMaximumWidth(list_->maximumWidth());
    side_->addWidget(widget);
}

void ConditionsPage::setTab(int index, QWidget* page) {
    if (index < 1 || index > kTabs) return;
    QWidget* old = stack_->widget(index - 1);
    const bool current = stack_->currentIndex() == index - 1;
    stack_->insertWidget(index - 1, page);
    stack_->removeWidget(old);
    delete old;
    if (current) stack_->setCurrentIndex(index - 1);
}

QWidget* ConditionsPage::tab(int index) const {
    return stack_->widget(index - 1);
}

void ConditionsPage::selectTab(int index) {
    list_->setCurrentRow(index - 1);
}

int ConditionsPage::currentTab() const {
    return list_->currentRow() + 1;
}

void ConditionsPage::reloadTab(int index) {
    if (index == 0) index = currentTab();
    if (auto* page = qobject_cast<ConditionTab*>(tab(index)); page && page->isVisible()) page->reload();
}

}  // namespace dovrex
