#include "widgets/trend_panel.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFontMetricsF>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHelpEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollArea>
#include <QScrollBar>
#include <QSet>
#include <QSignalBlocker>
#include <QToolTip>
#include <QVBoxLayout>
#include <algorithm>

#include "history/history_queries.h"
#include "store/store.h"
#include "widgets/command_trap.h"

namespace dovrex {

namespace {

int gFontSize = kTrendFontFirst;
bool gWhole = true;  // the sums' charts fit the frame, until the player reads them closer

QColor colourOf(TrendOp::Role role) {
    switch (role) {
        case TrendOp::Title:
            return QColor(0x9c, 0x00, 0x00);
        case TrendOp::Head:
            return QColor(0x20, 0x20, 0x20);
        case TrendOp::Rule:
            return QColor(0xd4, 0xd4, 0xd4);
        case TrendOp::Issue:
            return QColor(0x1d, 0x3f, 0x8f);
        case TrendOp::Value:
            return QColor(0x30, 0x30, 0x30);
        case TrendOp::Caption:
            return QColor(0x55, 0x55, 0x55);
        case TrendOp::Mark:
            return QColor(0xd7, 0x1b, 0x1b);
        case TrendOp::MarkText:
            return QColor(0x10, 0x10, 0x10);
        case TrendOp::Join:
            return QColor(0x1d, 0x5f, 0xd0);
        case TrendOp::Condition:
            return QColor(0x8b, 0x00, 0x00);
        case TrendOp::Allowed:
            return QColor(0x2e, 0x9d, 0x3a);
    }
    return Qt::black;
}

}  // namespace

namespace {

void paintOps(QPainter& p, const TrendChart& chart, const QFont& font, const QSet<TrendOp::Role>& roles) {
    const QFontMetricsF fm(font);
    const double r = fm.height() * 1.1 / 3;
    for (const TrendOp& op : chart.ops) {
        if (!roles.contains(op.role)) continue;
        const QColor colour = colourOf(op.role);
        switch (op.kind) {
            case TrendOp::Text: {
                QFont f = font;
                f.setBold(op.role == TrendOp::Title || op.role == TrendOp::Head);
                p.setFont(f);
                p.setPen(colour);
                p.drawText(QPointF(op.x, op.y + fm.ascent()), op.text);
                break;
            }
            case TrendOp::Line: {
                QPen pen(colour);
                pen.setWidthF(op.role == TrendOp::Allowed ? std::max(2.0, r / 2)
                              : op.role == TrendOp::Join  ? 1.5
                                                          : 1.0);
                p.setPen(pen);
                p.drawLine(QPointF(op.x, op.y), QPointF(op.x2, op.y2));
                break;
            }
            case TrendOp::Circle:
                p.setPen(QPen(colour, 1));
                p.setBrush(QColor(0xf6, 0xb4, 0xb4));
                p.drawEllipse(QPointF(op.x, op.y), op.r, op.r);
                p.setBrush(Qt::NoBrush);
                break;
        }
    }
}

const TrendOp* firstOf(const TrendChart& chart, TrendOp::Role role, int skip = 0) {
    for (const TrendOp& op : chart.ops)
        if (op.role == role && op.kind == TrendOp::Text && skip-- == 0) return &op;
    return nullptr;
}

}  // namespace

TrendStrip::TrendStrip(Band band, QWidget* parent) : QWidget(parent), band_(band) {
    static const char* const names[] = {"PIC_HeadTable", "PICshow_Issues", "PICshow", "PICshow_Condition"};
    setObjectName(QLatin1String(names[band]));
    setAutoFillBackground(true);
    QPalette p = palette();
    p.setColor(QPalette::Window, Qt::white);
    setPalette(p);
}

void TrendStrip::setChart(const TrendChart* chart, double x0, double bodyTop, double bodyBottom) {
    chart_ = chart;
    x0_ = x0;
    bodyTop_ = bodyTop;
    bodyBottom_ = bodyBottom;
    update();
}

void TrendStrip::setScroll(int x, int y) {
    if (x == scrollX_ && y == scrollY_) return;
    scrollX_ = x;
    scrollY_ = y;
    update();
}

void TrendStrip::paintEvent(QPaintEvent*) {
    if (!chart_) return;
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing, true);
    const int left = int(std::ceil(x0_));
    const QRect fixedPart(0, 0, left, height());
    const QRect scrolledPart(left, 0, std::max(0, width() - left), height());
    using R = TrendOp;
    switch (band_) {
        case Head: {
            p.setClipRect(fixedPart);
            paintOps(p, *chart_, font(), {R::Rule, R::Head});
            p.setClipRect(scrolledPart);
            p.translate(-scrollX_, 0);
            paintOps(p, *chart_, font(), {R::Rule, R::Caption});
            p.resetTransform();
            // The title stays over the middle of what is in view.
            if (const TrendOp* title = firstOf(*chart_, R::Title)) {
                QFont bold = font();
                bold.setBold(true);
                p.setFont(bold);
                p.setPen(colourOf(R::Title));
                const double w = QFontMetricsF(bold).horizontalAdvance(title->text);
                const double x = std::max<double>(left + 4, left + (width() - left - w) / 2);
                p.drawText(QPointF(x, title->y + QFontMetricsF(bold).ascent()), title->text);
            }
            break;
        }
        case Left:
            p.translate(0, -bodyTop_ - scrollY_);
            paintOps(p, *chart_, font(), {R::Rule, R::Issue, R::Value});
            break;
        case Body:
            p.translate(-left, -bodyTop_);
            paintOps(p, *chart_, font(), {R::Rule, R::Mark, R::MarkText, R::Join});
            break;
        case Foot: {
            p.setClipRect(fixedPart);
            p.translate(0, -bodyBottom_);
            paintOps(p, *chart_, font(), {R::Rule});
            p.resetTransform();
            p.setClipRect(scrolledPart);
            p.translate(-scrollX_, -bodyBottom_);
            paintOps(p, *chart_, font(), {R::Rule, R::Allowed});
            p.resetTransform();
            p.setClipping(false);
            // "当前条件设置->" at the left, the condition in the middle of what is in view.
            const TrendOp* lead = firstOf(*chart_, R::Condition);
            const TrendOp* text = firstOf(*chart_, R::Condition, 1);
            if (!lead) break;
            const QFontMetricsF fm(font());
            p.setFont(font());
            p.setPen(colourOf(R::Condition));
            const double y = lead->y - bodyBottom_;
            p.drawText(QPointF(lead->x, y + fm.ascent()), lead->text);
            if (text) {
                const double from = lead->x + fm.horizontalAdvance(lead->text) + fm.horizontalAdvance(u'1');
                const QRectF room(from, y, std::max(0.0, width() - from - 4), height() - y);
                p.drawText(room, Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap, text->text);
            }
            break;
        }
    }
}

void TrendStrip::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) emit zoom(+1);
}

void TrendStrip::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::RightButton) emit zoom(-1);
}

TrendPanel::TrendPanel(QWidget* parent) : QFrame(parent) {
    setObjectName(QStringLiteral("Frame_PICshow"));
    setFrameShape(QFrame::StyledPanel);

    chooser_ = new QComboBox(this);
    chooser_->setObjectName(QStringLiteral("Combo_TuBiaoQS"));
    chooser_->setToolTip(QStringLiteral("走势图截止到所选的期号"));
    connect(chooser_, &QComboBox::activated, this, [this] {
        readRows();
        redraw();
    });
    auto* chooserRow = new QHBoxLayout;
    chooserRow->setContentsMargins(4, 2, 4, 2);
    auto* hint = new QLabel(QStringLiteral("双击图表放大字体，右键缩小"), this);
    hint->setStyleSheet(QStringLiteral("color: #777777;"));
    chooserRow->addWidget(hint);
    chooserRow->addStretch(1);
    whole_ = new QCheckBox(QStringLiteral("整幅显示"), this);
    whole_->setObjectName(QStringLiteral("Check_TrendWhole"));
    whole_->setToolTip(QStringLiteral("全部取值和最近%1期都显示在图中").arg(kTrendPeriods));
    whole_->setChecked(gWhole);
    connect(whole_, &QCheckBox::toggled, this, [this](bool on) {
        gWhole = on;
        redraw();
    });
    chooserRow->addWidget(whole_);
    chooserRow->addSpacing(12);
    chooserRow->addWidget(new QLabel(QStringLiteral("截止期号："), this));
    chooserRow->addWidget(chooser_);

    head_ = new TrendStrip(TrendStrip::Head);
    left_ = new TrendStrip(TrendStrip::Left);
    body_ = new TrendStrip(TrendStrip::Body);
    foot_ = new TrendStrip(TrendStrip::Foot);
    area_ = new QScrollArea;
    area_->setFrameShape(QFrame::NoFrame);
    area_->setWidgetResizable(false);
    area_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    area_->verticalScrollBar()->setObjectName(QStringLiteral("VScroll_PICshow_V"));
    area_->horizontalScrollBar()->setObjectName(QStringLiteral("VScroll_PICshow_H"));
    area_->verticalScrollBar()->setSingleStep(20);
    area_->horizontalScrollBar()->setSingleStep(20);
    area_->setWidget(body_);
    auto follow = [this] {
        const int x = area_->horizontalScrollBar()->value();
        const int y = area_->verticalScrollBar()->value();
        head_->setScroll(x, 0);
        foot_->setScroll(x, 0);
        left_->setScroll(0, y);
    };
    connect(area_->horizontalScrollBar(), &QScrollBar::valueChanged, this, follow);
    connect(area_->verticalScrollBar(), &QScrollBar::valueChanged, this, follow);
    for (TrendStrip* strip : {head_, left_, body_, foot_})
        connect(strip, &TrendStrip::zoom, this, &TrendPanel::zoomBy);
    body_->installEventFilter(this);
    left_->installEventFilter(this);

    chartBox_ = new QWidget(this);
    chartBox_->installEventFilter(this);
    auto* grid = new QGridLayout(chartBox_);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(0);
    grid->addWidget(head_, 0, 0, 1, 2);
    grid->addWidget(left_, 1, 0);
    grid->addWidget(area_, 1, 1);
    grid->addWidget(foot_, 2, 0, 1, 2);
    grid->setRowStretch(1, 1);
    grid->setColumnStretch(1, 1);

    empty_ = new QLabel(QStringLiteral("暂无开奖记录，无法显示走势图。"), this);
    empty_->setAlignment(Qt::AlignCenter);
    empty_->setStyleSheet(QStringLiteral("color: #777777;"));
    empty_->hide();
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(1, 1, 1, 1);
    layout->setSpacing(0);
    layout->addLayout(chooserRow);
    layout->addWidget(chartBox_, 1);
    layout->addWidget(empty_, 1);
    setToolTip(QStringLiteral("双击放大，右键缩小"));
}

int TrendPanel::fontSize() {
    return gFontSize;
}

void TrendPanel::fillChooser() {
    const QString kept = chooser_->currentText();
    IssueChoice choice;
    runCommand([&] { choice = fill_QiShuZuhe(kTrendChooserIssues); });
    chooser_->clear();
    chooser_->addItems(choice.items);
    // An issue chosen before stays chosen while the list still offers it.
    chooser_->setCurrentIndex(std::max(0, chooser_->findText(kept.isEmpty() ? choice.text : kept)));
}

void TrendPanel::readRows() {
    rows_.clear();
    if (trend_.family == TrendFamily::None || trend_.family == TrendFamily::Grid) return;
    const IssueNumber last = chooser_->currentIndex() > 0 ? chooser_->currentText().toInt() : 0;
    runCommand([&] { rows_ = trendRows(trend_, kTrendPeriods, last); });
}

void TrendPanel::show_TrendOfTab(const QString& tabCaption) {
    trend_ = trendSpecOfTab(tabCaption);
    const bool chartable = trend_.family != TrendFamily::None && trend_.family != TrendFamily::Grid;
    chooser_->setVisible(chartable);
    whole_->setVisible(trendFitsFrame(trend_));
    if (whole_->isChecked() != gWhole) {
        const QSignalBlocker quiet(whole_);
        whole_->setChecked(gWhole);
    }
    if (chartable) fillChooser();
    readRows();
    redraw();
}

void TrendPanel::setCondition(const QString& tip, const QList<int>& allowedValues) {
    tip_ = tip;
    allowed_ = allowedValues;
    if (!rows_.isEmpty()) redraw();
}

bool TrendPanel::drawnWhole() const {
    return gWhole && trendFitsFrame(trend_);
}

void TrendPanel::zoomBy(int step) {
    if (drawnWhole()) {
        // Closer: the chart at its own size, scrolled; making the whole chart smaller means nothing.
        if (step > 0) whole_->setChecked(false);
        return;
    }
    gFontSize = std::clamp(gFontSize + step, kTrendFontMin, kTrendFontMax);
    redraw();
}

void TrendPanel::resizeEvent(QResizeEvent* event) {
    QFrame::resizeEvent(event);
    const QSize now = drawnWhole() ? chartBox_->size() : QSize(area_->viewport()->width(), 0);
    if (now != drawnSize_ && !rows_.isEmpty()) redraw();
}

bool TrendPanel::eventFilter(QObject* watched, QEvent* event) {
    // The whole chart follows its frame, whatever changed the frame's size.
    if (watched == chartBox_) {
        if (event->type() == QEvent::Resize && drawnWhole() && !rows_.isEmpty() &&
            chartBox_->size() != drawnSize_)
            redraw();
        return false;
    }
    if (event->type() != QEvent::ToolTip || rows_.isEmpty() || chart_.rowH <= 0) return false;
    // The row under the mouse, in the drawing's measure: the body is the scrolled surface itself,
    // the issue column follows its scroll.
    const auto* help = static_cast<QHelpEvent*>(event);
    double y = chart_.bodyTop + help->pos().y();
    if (watched == left_) y += area_->verticalScrollBar()->value();
    const int k = int((y - chart_.bodyTop) / chart_.rowH);
    if (k < 0 || k >= rows_.size()) {
        QToolTip::hideText();
        return true;
    }
    QToolTip::showText(help->globalPos(),
                       QStringLiteral("%1 期  %2 %3").arg(rows_[k].issue).arg(trend_.name, rows_[k].value),
                       static_cast<QWidget*>(watched));
    return true;
}

void TrendPanel::redraw() {
    const bool hasChart = !rows_.isEmpty();
    chartBox_->setVisible(hasChart);
    empty_->setVisible(!hasChart && trend_.family != TrendFamily::None && trend_.family != TrendFamily::Grid);
    if (!hasChart) return;
    setEnabled(false);
    const bool whole = drawnWhole();
    const Qt::ScrollBarPolicy bars = whole ? Qt::ScrollBarAlwaysOff : Qt::ScrollBarAsNeeded;
    area_->setVerticalScrollBarPolicy(whole ? Qt::ScrollBarAlwaysOff : Qt::ScrollBarAlwaysOn);
    area_->setHorizontalScrollBarPolicy(bars);

    // The whole chart is read in the window's own font; the close one in the chart's zoomed font.
    QFont font = this->font();
    if (!whole) font.setPointSize(gFontSize);
    const QFontMetricsF fm(font);
    TrendMetrics m;
    m.charW = fm.horizontalAdvance(QLatin1Char('1'));
    m.charH = fm.height() * 1.1;
    QFont bold = font;
    bold.setBold(true);
    const QFontMetricsF fb(bold);
    double widest = 0, widestValue = 0;
    for (const QString& c : trendColumnCaptions(trend_)) widest = std::max(widest, fb.horizontalAdvance(c));
    for (const TrendRow& row : rows_) {
        widest = std::max(widest, fb.horizontalAdvance(row.value));
        widestValue = std::max(widestValue, fm.horizontalAdvance(row.value));
    }
    // The value column holds the longest value (a pattern of six parts needs more than its cells).
    const double x0 = std::max(20 * m.charW - m.charW / 2, 11.3 * m.charW + widestValue + m.charW);
    m.x0 = x0;
    const int leftWidth = int(std::ceil(x0));
    QList<int> allowed;
    for (int v : allowed_) allowed << v - trend_.first;
    const QString condition = trendConditionText(tip_, trend_.family);
    const int n = int(rows_.size());

    if (whole) {
        drawnSize_ = chartBox_->size();
        m.width = std::max(leftWidth + 1, drawnSize_.width());
        chart_ = draw_TrendFitted(trend_, rows_, kTrendPeriods, m, std::max(1, drawnSize_.height()),
                                  condition, allowed);
    } else {
        drawnSize_ = QSize(area_->viewport()->width(), 0);
        // Columns wide enough for a mark with its value beside it: the body fills the width when
        // they fit and scrolls sideways, under its head, when they do not.
        const double r = m.charH / 3;
        const double column = std::max(2 * r, r + widest) + m.charW / 2;
        m.width = std::max<double>(leftWidth + drawnSize_.width(), x0 + std::max(1, trend_.columns) * column);
        chart_ = draw_TrendBody(trend_, rows_, n, m, condition, allowed);
    }
    for (TrendStrip* strip : {head_, left_, body_, foot_}) {
        strip->setFont(font);
        strip->setChart(&chart_, x0, chart_.bodyTop, chart_.bodyBottom);
    }
    const int headHeight = int(std::ceil(chart_.bodyTop));
    head_->setFixedHeight(headHeight);
    left_->setFixedWidth(leftWidth);
    if (whole) {
        // The rows take what the head and the condition line leave of the frame.
        foot_->setFixedHeight(std::max(0, drawnSize_.height() - int(std::floor(chart_.bodyBottom))));
        body_->setFixedSize(std::max(1, drawnSize_.width() - leftWidth),
                            std::max(1, int(std::floor(chart_.bodyBottom)) - headHeight));
    } else {
        foot_->setFixedHeight(int(std::ceil(chart_.height - chart_.bodyBottom)));
        body_->setFixedSize(int(std::ceil(m.width)) - leftWidth,
                            int(std::ceil(chart_.bodyBottom - chart_.bodyTop)));
        // The newest draws at the bottom, and the column of the newest one in sight.
        area_->verticalScrollBar()->setValue(area_->verticalScrollBar()->maximum());
        const int last = rows_.last().column;
        const double column = chart_.colX.size() > 1 ? chart_.colX[1] - chart_.colX[0] : 0;
        if (last >= 0 && last < chart_.colX.size())
            area_->ensureVisible(int(chart_.colX[last]) - leftWidth, body_->height() - 1, int(column * 3), 0);
    }
    setEnabled(true);
}

}  // namespace dovrex
