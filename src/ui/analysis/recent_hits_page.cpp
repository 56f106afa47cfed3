#include "ui/analysis/recent_hits_page.h"

#include <QAction>
#include <QBarCategoryAxis>
#include <QBarSeries>
#include <QBarSet>
#include <QChart>
#include <QChartView>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QSignalBlocker>
#include <QToolTip>
#include <QVBoxLayout>
#include <QValueAxis>
#include <algorithm>

#include "analysis/probability.h"
#include "store/store.h"
#include "ui/shell/form_main.h"
#include "ui/history/history_page.h"
#include "ui/analysis/other_page.h"
#include "ui/shell/window_parts.h"
#include "widgets/ball_art.h"
#include "widgets/command_trap.h"

namespace dovrex {

RecentHitsPage::RecentHitsPage(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("Frame_Tongji"));
    from_ = new QComboBox(this);
    from_->setObjectName(QStringLiteral("Combo_pic_TiaoJian(0)"));
    to_ = new QComboBox(this);
    to_->setObjectName(QStringLiteral("Combo_pic_TiaoJian(1)"));
    item_ = new QComboBox(this);
    item_->setObjectName(QStringLiteral("Combo_MSChartItem"));
    item_->addItems({QStringLiteral("红球开出次数"), QStringLiteral("蓝球开出次数")});
    for (QComboBox* c : {from_, to_}) c->setMaxVisibleItems(20);
    summary_ = new QLabel(this);
    summary_->setStyleSheet(QStringLiteral("color: #555555;"));

    auto* chart = new QChart;
    chart->legend()->hide();
    chart->setMargins(QMargins(4, 4, 4, 4));
    chart_ = new QChartView(chart, this);
    chart_->setObjectName(QStringLiteral("MSChart_TiaoJian"));
    chart_->setRenderHint(QPainter::Antialiasing);

    auto* bar = new QHBoxLayout;
    bar->setSpacing(8);
    bar->addWidget(new QLabel(QStringLiteral("从"), this));
    bar->addWidget(from_);
    bar->addWidget(new QLabel(QStringLiteral("期 到"), this));
    bar->addWidget(to_);
    bar->addWidget(new QLabel(QStringLiteral("期"), this));
    bar->addSpacing(12);
    bar->addWidget(item_);
    bar->addSpacing(12);
    bar->addWidget(summary_);
    bar->addStretch(1);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(8, 8, 8, 8);
    layout->addLayout(bar);
    layout->addWidget(chart_, 1);

    connectCommand(item_, &QComboBox::activated, this, [this] { count(); });
    connectCommand(from_, &QComboBox::activated, this, [this] { count(); });
    connectCommand(to_, &QComboBox::activated, this, [this] { count(); });
}

void RecentHitsPage::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    if (dirty_) {
        runCommand([this] { fillIssues(); });
        count();
    }
}

void RecentHitsPage::historyChanged() {
    dirty_ = true;
    if (isVisible()) {
        fillIssues();
        count();
    }
}

void RecentHitsPage::fillIssues() {
    dirty_ = false;
    IssueRange range;
    runCommand([&] { range = fill_IssueCombos(); });
    const QSignalBlocker q1(from_), q2(to_);
    from_->clear();
    to_->clear();
    from_->addItems(range.issues);
    to_->addItems(range.issues);
    from_->setCurrentIndex(range.fromIndex);
    to_->setCurrentIndex(range.toIndex);
}

void RecentHitsPage::count() {
    const auto from = IssueNumber(roundHalfEven(leadingNumber(from_->currentText())));
    const auto to = IssueNumber(roundHalfEven(leadingNumber(to_->currentText())));
    const bool red = item_->currentIndex() != 1;
    if (!runCommand([&] { bars_ = red ? calc_RedRecentHits(from, to) : calc_BlueRecentHits(from, to); }))
        bars_.clear();
    const int draws =
        from_->currentIndex() >= to_->currentIndex() ? from_->currentIndex() - to_->currentIndex() + 1 : 0;
    summary_->setText(QStringLiteral("共 %1 期").arg(draws));

    QChart* chart = chart_->chart();
    chart->removeAllSeries();
    for (QAbstractAxis* axis : chart->axes()) {
        chart->removeAxis(axis);
        delete axis;
    }
    auto* set = new QBarSet(red ? QStringLiteral("红球") : QStringLiteral("蓝球"));
    set->setColor(red ? kRedBall : kBlueBall);
    set->setBorderColor(red ? kRedBall.darker(130) : kBlueBall.darker(130));
    set->setLabelColor(QColor(0x33, 0x33, 0x33));
    QStringList labels;
    int most = 0;
    for (const HitBar& b : bars_) {
        *set << b.count;
        labels << b.label.mid(b.label.indexOf(u':') + 1);
        most = std::max(most, b.count);
    }
    auto* series = new QBarSeries;
    series->append(set);
    series->setBarWidth(0.7);
    series->setLabelsVisible(true);
    series->setLabelsPosition(QAbstractBarSeries::LabelsOutsideEnd);
    chart->addSeries(series);
    auto* axisX = new QBarCategoryAxis;
    axisX->append(labels);
    auto* axisY = new QValueAxis;
    axisY->setRange(0, most + 1);
    axisY->setLabelFormat(QStringLiteral("%d"));
    axisY->setTickCount(std::min(most + 2, 11));
    chart->addAxis(axisX, Qt::AlignBottom);
    chart->addAxis(axisY, Qt::AlignLeft);
    series->attachAxis(axisX);
    series->attachAxis(axisY);
    chart->setTitle(red ? QStringLiteral("红球开出次数") : QStringLiteral("蓝球开出次数"));
    connect(set, &QBarSet::hovered, this, [this](bool on, int index) {
        if (!on || index < 0 || index >= int(bars_.size())) {
            QToolTip::hideText();
            return;
        }
        QToolTip::showText(
            QCursor::pos(),
            QStringLiteral("%1  开出 %2 次").arg(bars_[size_t(index)].label).arg(bars_[size_t(index)].count),
            chart_);
    });
}

void installRecentHitsPage(FormMain& window) {
    OtherPage* other = window.otherPage();
    if (!other) return;
    auto* page = new RecentHitsPage(other);
    other->addTool(page, kRecentHitsCaption);
    if (HistoryPage* history = window.historyPage())
        QObject::connect(history, &HistoryPage::historyChanged, page, &RecentHitsPage::historyChanged);
    QMenu* analysis = window.menu(QStringLiteral("分析(&A)"));
    QAction* a = analysis->addAction(kRecentHitsCaption);
    a->setObjectName(QStringLiteral("CommandCstj"));
    connectCommand(a, &QAction::triggered, &window, [&window, other, page] {
        window.selectPage(TopPage::Other);
        other->setCurrentWidget(page);
    });
}

}  // namespace dovrex
