#include "ui/analysis/replay_window.h"

#include <QAreaSeries>
#include <QChart>
#include <QChartView>
#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineSeries>
#include <QMenu>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>
#include <QSpinBox>
#include <QTabWidget>
#include <QTableWidget>
#include <QVBoxLayout>
#include <QValueAxis>

#include "history/history_queries.h"
#include "pipeline/shrink.h"
#include "results/prize_check.h"
#include "screen/shared_state.h"
#include "ui/shell/form_main.h"
#include "ui/shell/window_parts.h"
#include "widgets/command_trap.h"
#include "widgets/pass_window.h"

namespace dovrex {

namespace {

constexpr int kDefaultDraws = 30;

QString money(double yuan) {
    return QString::number(yuan, 'f', 0);
}

QSpinBox* spin(int low, int high, int value, const QString& suffix, QWidget* parent) {
    auto* s = new QSpinBox(parent);
    s->setRange(low, high);
    s->setValue(value);
    s->setSuffix(suffix);
    return s;
}

}  // namespace

ReplayWindow::ReplayWindow(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("frmHuiCeShouYi"));
    setWindowTitle(QStringLiteral("回测收益"));
    resize(1060, 640);
    auto* layout = new QVBoxLayout(this);

    auto* top = new QHBoxLayout;
    draws_ = spin(1, 1, 1, QStringLiteral(" 期"), this);
    draws_->setObjectName(QStringLiteral("Spin_HuiCeQiShu"));
    shrink_ = new QComboBox(this);
    shrink_->addItem(QStringLiteral("不缩水"), 7);
    for (int t = 6; t >= 3; --t) shrink_->addItem(shrinkCaption(t), t);
    optimised_ = new QCheckBox(QStringLiteral("优化缩水，每期限时"), this);
    budget_ = spin(1, 600, 1, QStringLiteral(" 秒"), this);
    select_ = spin(0, kTicketLimit, 0, QStringLiteral(" 注"), this);
    select_->setSpecialValueText(QStringLiteral("不精选"));
    seed_ = spin(1, 999999, 1, QString(), this);
    seed_->setToolTip(QStringLiteral("同一种子给出同样的随机投注，结果可以重现。"));
    top->addWidget(new QLabel(QStringLiteral("最近"), this));
    top->addWidget(draws_);
    top->addSpacing(12);
    top->addWidget(new QLabel(QStringLiteral("缩水"), this));
    top->addWidget(shrink_);
    top->addWidget(optimised_);
    top->addWidget(budget_);
    top->addSpacing(12);
    top->addWidget(new QLabel(QStringLiteral("精选"), this));
    top->addWidget(select_);
    top->addSpacing(12);
    top->addWidget(new QLabel(QStringLiteral("随机种子"), this));
    top->addWidget(seed_);
    top->addStretch(1);
    layout->addLayout(top);

    auto* buttons = new QHBoxLayout;
    start_ = new QPushButton(QStringLiteral("开始回测"), this);
    stop_ = new QPushButton(QStringLiteral("停止"), this);
    stop_->setEnabled(false);
    auto* csv = new QPushButton(QStringLiteral("导出 CSV..."), this);
    progress_ = new QProgressBar(this);
    progress_->setVisible(false);
    progress_->setFormat(QStringLiteral("%v / %m 期"));
    buttons->addWidget(start_);
    buttons->addWidget(stop_);
    buttons->addWidget(progress_, 1);
    buttons->addStretch(0);
    buttons->addWidget(csv);
    layout->addLayout(buttons);

    auto* tip = new QLabel(
        QStringLiteral(
            "按现在的选号、过滤条件（与历史有关的条件只看该期以前的开奖）、容错、缩水和精选，"
            "为每一期重新生成投注号码，与该期开奖号码核对，算出成本和奖金（每注 2 元；一、二等奖按"
            "下载的奖金计算，没有下载的记为“奖金未知”，不估算）。旁边是每期买同样注数随机号码的 200 "
            "位玩家。表格中的号码与条件都不会改变。"),
        this);
    tip->setWordWrap(true);
    layout->addWidget(tip);
    summary_ = new QLabel(this);
    summary_->setObjectName(QStringLiteral("Label_HuiCeShouYi"));
    summary_->setWordWrap(true);
    summary_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    summary_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    // Room for the verdict and the notes under it, however the table below is sized.
    summary_->setMinimumHeight(summary_->fontMetrics().lineSpacing() * 6);
    layout->addWidget(summary_);

    auto* tabs = new QTabWidget(this);
    QStringList captions{QStringLiteral("期号"), QStringLiteral("开奖号码"), QStringLiteral("过滤后"),
                         QStringLiteral("投注"), QStringLiteral("成本")};
    for (int tier = 1; tier <= 6; ++tier) captions << prizeTierName(tier);
    captions << QStringLiteral("中奖金额") << QStringLiteral("累计盈亏")
             << QStringLiteral("随机累计盈亏 5%–95%");
    table_ = makeResultTable(captions, tabs);
    auto* view = new QChartView(new QChart, tabs);
    view->setRenderHint(QPainter::Antialiasing);
    chart_ = view;
    tabs->addTab(table_, QStringLiteral("逐期结果"));
    tabs->addTab(view, QStringLiteral("累计盈亏图"));
    layout->addWidget(tabs, 1);

    connectCommand(start_, &QPushButton::clicked, this, [this] { run(); });
    connect(stop_, &QPushButton::clicked, this, [] { shared().tingZhi = 1; });
    connectCommand(csv, &QPushButton::clicked, this, [this] { exportCsv(); });
    connect(optimised_, &QCheckBox::toggled, budget_, &QWidget::setEnabled);
    runCommand([this] { loadSettings(); });
}

void ReplayWindow::loadSettings() {
    const int history = int(issues_NewestFirst().size());
    draws_->setRange(1, std::max(history, 1));
    draws_->setValue(std::min(kDefaultDraws, std::max(history, 1)));
    const ReplaySettings s = replay_DefaultSettings();
    shrink_->setCurrentIndex(std::max(shrink_->findData(s.shrink.t), 0));
    optimised_->setChecked(s.shrink.optimised);
    budget_->setEnabled(s.shrink.optimised);
    budget_->setValue(s.shrink.budgetMs / 1000);
}

void ReplayWindow::run() {
    const IssueNumber to = latest_QiHao();
    const IssueNumber from = prev_QiHao(to, draws_->value() - 1);
    ReplaySettings settings;
    settings.shrink.t = shrink_->currentData().toInt();
    settings.shrink.optimised = optimised_->isChecked();
    settings.shrink.budgetMs = budget_->value() * 1000;
    settings.select = select_->value();
    settings.seed = quint64(seed_->value());
    progress_->setRange(0, draws_->value());
    progress_->setValue(0);
    RunningPass pass(start_, stop_, progress_);
    result_ = run_Replay(from, to, settings, [&pass](int done, int total) { return pass.step(done, total); });
    showResult();
}

void ReplayWindow::showResult() {
    const ReplayResult& r = result_;
    QStringList notes{replay_Verdict(r)};
    QString totals = QStringLiteral("合计：%1 期%2，投注 %3 注，成本 %4 元，中奖 %5 元，回报率 %6")
                         .arg(r.draws.size())
                         .arg(r.stopped ? QStringLiteral("（已停止）") : QString())
                         .arg(r.cost / kTicketPrice)
                         .arg(r.cost)
                         .arg(r.won)
                         .arg(percentText(r.routineReturn()));
    totals += r.bestTier > 0 ? QStringLiteral("，最高中 %1。").arg(prizeTierName(r.bestTier))
                             : QStringLiteral("，没有中奖。");
    notes << totals;
    if (r.unknown)
        notes << QStringLiteral("有一、二等奖的期没有下载到奖金（奖金未知），这部分没有计入中奖金额。");
    if (r.overLimit > 0)
        notes << QStringLiteral("有 %1 期过滤后超过 %2 注，这套方法在那些期无法投注，按没有投注计。")
                     .arg(r.overLimit)
                     .arg(kTicketLimit);
    notes << QStringLiteral(
                 "随机投注：200 位玩家的回报率均值 %1，5%–95% 区间 %2–%3；一注随机号码的期望回报率 %4"
                 "（罕见的大奖使期望高于多数玩家的实际所得）。")
                 .arg(percentText(r.randomMean), percentText(r.randomLow), percentText(r.randomHigh),
                      percentText(r.expectedReturn));
    summary_->setText(notes.join(u'\n'));

    const int n = int(r.draws.size());
    table_->setRowCount(n);
    qint64 balance = 0, spent = 0;
    for (int i = 0; i < n; ++i) {
        const ReplayDraw& d = r.draws[i];
        balance += d.won - d.cost;
        spent += d.cost;
        QStringList cells{QString::number(d.issue), ballsText(d.reds, d.blue),
                          d.overLimit ? QStringLiteral("超过上限") : QString::number(d.kept),
                          QString::number(d.tickets), QString::number(d.cost)};
        for (int tier = 1; tier <= 6; ++tier) cells << QString::number(d.tiers[size_t(tier)]);
        cells << QString::number(d.won) + (d.unknown ? QStringLiteral(" +") + msg::kPrizeUnknown : QString())
              << QString::number(balance)
              << money(d.randomLow - double(spent)) + QStringLiteral(" – ") +
                     money(d.randomHigh - double(spent));
        const int row = n - 1 - i;  // the newest first
        for (int c = 0; c < cells.size(); ++c) {
            auto* item = new QTableWidgetItem(cells[c]);
            if (c >= 2) item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
            table_->setItem(row, c, item);
        }
    }
    table_->resizeColumnsToContents();
    drawChart();
}

void ReplayWindow::drawChart() {
    const ReplayResult& r = result_;
    auto* routine = new QLineSeries;
    routine->setName(QStringLiteral("这套方法"));
    auto* mean = new QLineSeries;
    mean->setName(QStringLiteral("随机投注均值"));
    auto* low = new QLineSeries;
    auto* high = new QLineSeries;
    qint64 balance = 0, spent = 0;
    double lowest = 0, highest = 0;
    for (int i = 0; i < r.draws.size(); ++i) {
        const ReplayDraw& d = r.draws[i];
        balance += d.won - d.cost;
        spent += d.cost;
        const double x = i + 1;
        routine->append(x, double(balance));
        mean->append(x, d.randomMean - double(spent));
        low->append(x, d.randomLow - double(spent));
        high->append(x, d.randomHigh - double(spent));
        lowest = std::min({lowest, double(balance), d.randomLow - double(spent)});
        highest = std::max({highest, double(balance), d.randomHigh - double(spent)});
    }
    auto* band = new QAreaSeries(high, low);
    band->setName(QStringLiteral("随机投注 5%–95%"));
    band->setColor(QColor(120, 160, 220, 90));
    band->setBorderColor(QColor(120, 160, 220));

    auto* chart = new QChart;
    chart->addSeries(band);
    chart->addSeries(mean);
    chart->addSeries(routine);
    auto* x = new QValueAxis;
    x->setRange(1, std::max<qsizetype>(r.draws.size(), 2));
    x->setLabelFormat(QStringLiteral("%d"));
    x->setTitleText(QStringLiteral("第几期（从最早一期算起）"));
    auto* y = new QValueAxis;
    const double margin = std::max(10.0, (highest - lowest) * 0.05);
    y->setRange(lowest - margin, highest + margin);
    y->applyNiceNumbers();
    y->setLabelFormat(QStringLiteral("%.0f"));
    y->setTitleText(QStringLiteral("累计盈亏（元）"));
    chart->addAxis(x, Qt::AlignBottom);
    chart->addAxis(y, Qt::AlignLeft);
    for (QAbstractSeries* s : {static_cast<QAbstractSeries*>(band), static_cast<QAbstractSeries*>(mean),
                               static_cast<QAbstractSeries*>(routine)}) {
        s->attachAxis(x);
        s->attachAxis(y);
    }
    QPen thick(QColor(200, 40, 40));
    thick.setWidth(2);
    routine->setPen(thick);
    QPen dashed(QColor(60, 90, 160));
    dashed.setStyle(Qt::DashLine);
    mean->setPen(dashed);
    chart->setTitle(QStringLiteral("累计盈亏：这套方法与每期同样注数的随机投注"));
    auto* view = static_cast<QChartView*>(chart_);
    QChart* old = view->chart();
    view->setChart(chart);
    delete old;
}

void ReplayWindow::exportCsv() {
    exportCsvFile(replay_Csv(result_), !result_.draws.isEmpty());
}

ReplayWindow* ReplayWindow::open(QWidget* parent) {
    static QPointer<ReplayWindow> one;
    if (!one) one = new ReplayWindow(parent);
    one->show();
    one->raise();
    one->activateWindow();
    return one;
}

void installReplay(FormMain& window) {
    QAction* entry = window.menu(QStringLiteral("分析(&A)"))->addAction(QStringLiteral("回测收益..."));
    entry->setObjectName(QStringLiteral("mnu_HuiCeShouYi"));
    connectCommand(entry, &QAction::triggered, &window, [&window] { ReplayWindow::open(&window); });
}

}  // namespace dovrex
