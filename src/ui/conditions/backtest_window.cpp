#include "ui/conditions/backtest_window.h"

#include <QBarCategoryAxis>
#include <QBarSet>
#include <QChart>
#include <QChartView>
#include <QComboBox>
#include <QCoreApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QHorizontalBarSeries>
#include <QLabel>
#include <QMenu>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>
#include <QSpinBox>
#include <QTabWidget>
#include <QTableWidget>
#include <QVBoxLayout>
#include <QValueAxis>

#include "domain/condition_catalogue.h"
#include "history/history_queries.h"
#include "screen/shared_state.h"
#include "screen/ticket_page.h"
#include "ui/analysis/replay_window.h"
#include "ui/conditions/conditions_page.h"
#include "ui/shell/form_main.h"
#include "ui/shell/window_parts.h"
#include "widgets/command_trap.h"
#include "widgets/pass_window.h"

namespace dovrex {

namespace {

constexpr int kDefaultDraws = 100;

void setRow(QTableWidget* t, int row, const QStringList& cells) {
    for (int c = 0; c < cells.size(); ++c) t->setItem(row, c, new QTableWidgetItem(cells[c]));
}

QString percent(int part, int whole) {
    return percentText(whole ? double(part) / whole : 0.0);
}

}  // namespace

BacktestWindow::BacktestWindow(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("frmTiaoJianHuiCe"));
    setWindowTitle(QStringLiteral("条件回测"));
    resize(980, 620);
    auto* layout = new QVBoxLayout(this);

    auto* top = new QHBoxLayout;
    from_ = new QComboBox(this);
    to_ = new QComboBox(this);
    start_ = new QPushButton(QStringLiteral("开始回测"), this);
    stop_ = new QPushButton(QStringLiteral("停止"), this);
    stop_->setEnabled(false);
    start_->setDefault(true);
    auto* exportDraws = new QPushButton(QStringLiteral("导出逐期结果..."), this);
    auto* exportConditions = new QPushButton(QStringLiteral("导出条件统计..."), this);
    auto* replay = new QPushButton(QStringLiteral("回测收益..."), this);
    replay->setObjectName(QStringLiteral("cmd_HuiCeShouYi"));
    replay->setToolTip(
        QStringLiteral("整套选号方法（条件、缩水、精选）在这些期能赚多少钱，与随机投注相比。"));
    top->addWidget(new QLabel(QStringLiteral("从"), this));
    top->addWidget(from_);
    top->addWidget(new QLabel(QStringLiteral("期到"), this));
    top->addWidget(to_);
    top->addWidget(new QLabel(QStringLiteral("期"), this));
    top->addWidget(start_);
    top->addWidget(stop_);
    top->addStretch(1);
    top->addWidget(exportDraws);
    top->addWidget(exportConditions);
    top->addWidget(replay);
    layout->addLayout(top);

    auto* tip = new QLabel(
        QStringLiteral(
            "把每一期的开奖号码当作该期的一注号码，用当前的过滤条件（与历史相关的条件只看该期以前的开奖）"
            "检验它能否保留下来。"),
        this);
    tip->setWordWrap(true);
    layout->addWidget(tip);
    progress_ = new QProgressBar(this);
    progress_->setVisible(false);
    layout->addWidget(progress_);
    summary_ = new QLabel(this);
    summary_->setObjectName(QStringLiteral("Label_HuiCeJieGuo"));
    layout->addWidget(summary_);

    auto* tabs = new QTabWidget(this);
    draws_ = makeResultTable(
        {QStringLiteral("期号"), QStringLiteral("开奖号码"), QStringLiteral("未通过的条件")}, tabs);
    conditions_ = makeResultTable(
        {QStringLiteral("条件"), QStringLiteral("通过期数"), QStringLiteral("回测期数"),
         QStringLiteral("通过率"), QStringLiteral("最长连续未通过"), QStringLiteral("距上次未通过"),
         QStringLiteral("大底保留"), QStringLiteral("通过率/保留率")},
        tabs);
    auto* view = new QChartView(new QChart, tabs);
    view->setRenderHint(QPainter::Antialiasing);
    chart_ = view;
    tabs->addTab(draws_, QStringLiteral("逐期结果"));
    tabs->addTab(conditions_, QStringLiteral("条件统计"));
    tabs->addTab(view, QStringLiteral("通过率图"));
    layout->addWidget(tabs, 1);

    connectCommand(start_, &QPushButton::clicked, this, [this] { run(); });
    connect(stop_, &QPushButton::clicked, this, [] { shared().tingZhi = 1; });
    connectCommand(exportDraws, &QPushButton::clicked, this, [this] { exportCsv(true); });
    connectCommand(exportConditions, &QPushButton::clicked, this, [this] { exportCsv(false); });
    connectCommand(replay, &QPushButton::clicked, this, [this] { ReplayWindow::open(parentWidget()); });
    runCommand([this] { fillIssues(); });
}

void BacktestWindow::fillIssues() {
    const QList<IssueNumber> issues = issues_NewestFirst();
    for (QComboBox* box : {from_, to_}) {
        box->clear();
        for (IssueNumber i : issues) box->addItem(QString::number(i), i);
    }
    to_->setCurrentIndex(0);
    from_->setCurrentIndex(std::min(kDefaultDraws, int(issues.size())) - 1);
}

void BacktestWindow::run() {
    const IssueNumber from = from_->currentData().toInt(), to = to_->currentData().toInt();
    if (from < 1 || to < 1) return;
    RunningPass pass(start_, stop_, progress_);
    const BacktestResult r = run_Backtest(std::min(from, to), std::max(from, to),
                                          [&pass](int done, int total) { return pass.step(done, total); });
    space_ = {};
    if (!r.stopped)
        space_ = filter_Space(
            get_BiaoGeQiHao(), 0,
            [](long long, long long) {
                dovrex::screen().ui_Pump();
                return shared().tingZhi != 0;
            },
            true);
    showResult(r);
}

void BacktestWindow::showResult(const BacktestResult& r) {
    result_ = r;
    const int n = int(r.draws.size());
    summary_->setText(QStringLiteral("回测 %1 期%2：通过全部条件 %3 期，容错值 %4 时保留 %5 期（%6）。")
                          .arg(n)
                          .arg(r.stopped ? QStringLiteral("（已停止）") : QString())
                          .arg(std::count_if(r.draws.begin(), r.draws.end(),
                                             [](const BacktestDraw& d) { return d.failed.isEmpty(); }))
                          .arg(r.tolerance)
                          .arg(r.survived)
                          .arg(percent(r.survived, n)));
    draws_->setRowCount(n);
    for (int i = 0; i < n; ++i) {
        const BacktestDraw& d = r.draws[n - 1 - i];  // the newest first
        setRow(draws_, i,
               {QString::number(d.issue), ballsText(d.reds, d.blue), d.failed.join(QStringLiteral("  "))});
    }
    draws_->resizeColumnsToContents();
    conditions_->setRowCount(int(r.conditions.size()));
    auto* set = new QBarSet(QStringLiteral("通过率 %"));
    QStringList labels;
    for (int i = 0; i < r.conditions.size(); ++i) {
        const BacktestCondition& c = r.conditions[i];
        // A condition worth its place keeps a larger share of past winners than of the space.
        QString kept = QStringLiteral("-"), ratio = QStringLiteral("-");
        for (const SpaceRemoval& sr : space_.removedBy)
            if (sr.label == c.label && space_.space > 0 && !space_.stopped) {
                const double share = double(sr.passed) / double(space_.space);
                kept = QString::number(100.0 * share, 'f', 1) + u'%';
                if (share > 0 && c.total > 0)
                    ratio = QString::number(double(c.passed) / c.total / share, 'f', 2);
            }
        setRow(
            conditions_, i,
            {c.label.trimmed(), QString::number(c.passed), QString::number(c.total),
             percent(c.passed, c.total), QString::number(c.longestMissRun),
             c.sinceLastMiss < 0 ? QStringLiteral("从未") : QString::number(c.sinceLastMiss), kept, ratio});
        *set << (c.total ? 100.0 * c.passed / c.total : 0.0);
        labels << c.label.trimmed();
    }
    conditions_->resizeColumnsToContents();

    auto* chart = new QChart;
    auto* series = new QHorizontalBarSeries;
    series->append(set);
    chart->addSeries(series);
    auto* names = new QBarCategoryAxis;
    names->append(labels);
    auto* rates = new QValueAxis;
    rates->setRange(0, 100);
    rates->setLabelFormat(QStringLiteral("%d%%"));
    chart->addAxis(names, Qt::AlignLeft);
    chart->addAxis(rates, Qt::AlignBottom);
    series->attachAxis(names);
    series->attachAxis(rates);
    chart->legend()->setVisible(false);
    chart->setTitle(QStringLiteral("各条件在回测期内的通过率"));
    auto* view = static_cast<QChartView*>(chart_);
    QChart* old = view->chart();
    view->setChart(chart);
    delete old;
}

void BacktestWindow::exportCsv(bool draws) {
    exportCsvFile(draws ? backtest_DrawsCsv(result_) : backtest_ConditionsCsv(result_),
                  !result_.draws.isEmpty());
}

BacktestWindow* BacktestWindow::open(FormMain& window) {
    static QPointer<BacktestWindow> one;
    if (!one) one = new BacktestWindow(&window);
    one->show();
    one->raise();
    one->activateWindow();
    return one;
}

void installBacktest(FormMain& window) {
    QMenu* analysis = window.menu(QStringLiteral("分析(&A)"));
    QAction* entry = analysis->addAction(QStringLiteral("条件回测..."));
    entry->setObjectName(QStringLiteral("mnu_TiaoJianHuiCe"));
    connectCommand(entry, &QAction::triggered, &window, [&window] { BacktestWindow::open(window); });

    // Beside the condition tabs: the tolerance of the filter run and the way to the back-test.
    ConditionsPage* page = window.conditionsPage();
    if (!page) return;
    auto* box = new QWidget(page);
    auto* row = new QVBoxLayout(box);
    row->setContentsMargins(0, 0, 0, 0);
    auto* tolerance = new QSpinBox(box);
    tolerance->setObjectName(QStringLiteral("Spin_RongCuo"));
    tolerance->setRange(0, kFilterToleranceMax);
    tolerance->setPrefix(QStringLiteral("容错 "));
    tolerance->setToolTip(QStringLiteral("一注号码未通过的条件不超过这个数目时仍然保留；0 为普通过滤。"));
    auto* backtest = new QPushButton(QStringLiteral("条件回测..."), box);
    backtest->setObjectName(QStringLiteral("cmd_HuiCe"));
    row->addWidget(tolerance);
    row->addWidget(backtest);
    page->addSideWidget(box);
    runCommand([tolerance] { tolerance->setValue(filter_Tolerance()); });
    connectCommand(tolerance, &QSpinBox::valueChanged, tolerance, [](int k) { set_FilterTolerance(k); });
    connectCommand(backtest, &QPushButton::clicked, &window, [&window] { BacktestWindow::open(window); });
    QObject::connect(page, &ConditionsPage::tabSelected, tolerance, [tolerance] {
        const QSignalBlocker quiet(tolerance);
        runCommand([tolerance] { tolerance->setValue(filter_Tolerance()); });
    });
}

}  // namespace dovrex
