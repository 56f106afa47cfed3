#include "widgets/trend_panel.h"

#include <QFontMetricsF>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>
#include <algorithm>

#include "store/store.h"
#include "widgets/command_trap.h"

namespace dovrex {

namespace {

int gFontSize = kTrendFontFirst;

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

TrendSurface::TrendSurface(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("PICshow"));
    setAutoFillBackground(true);
    QPalette p = palette();
    p.setColor(QPalette::Window, Qt::white);
    setPalette(p);
}

void TrendSurface::setChart(const TrendChart& chart, const QFont& font) {
    chart_ = chart;
    setFont(font);
    update();
}

void TrendSurface::paintEvent(QPaintEvent* event) {
    QPainter p(this);
    p.setClipRect(event->rect());
    p.setRenderHint(QPainter::Antialiasing, true);
    const QFontMetricsF fm(font());
    const double r = chart_.ops.isEmpty() ? 0 : fm.height() * 1.1 / 3;
    for (const TrendOp& op : chart_.ops) {
        const QColor colour = colourOf(op.role);
        switch (op.kind) {
            case TrendOp::Text: {
                QFont f = font();
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

void TrendSurface::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) emit zoom(+1);
}

void TrendSurface::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::RightButton) emit zoom(-1);
}

TrendPanel::TrendPanel(QWidget* parent) : QFrame(parent) {
    setObjectName(QStringLiteral("Frame_PICshow"));
    setFrameShape(QFrame::StyledPanel);
    area_ = new QScrollArea(this);
    area_->setFrameShape(QFrame::NoFrame);
    area_->setWidgetResizable(false);
    area_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    area_->verticalScrollBar()->setObjectName(QStringLiteral("VScroll_PICshow_V"));
    area_->horizontalScrollBar()->setObjectName(QStringLiteral("VScroll_PICshow_H"));
    area_->verticalScrollBar()->setSingleStep(20);
    area_->horizontalScrollBar()->setSingleStep(20);
    surface_ = new TrendSurface;
    area_->setWidget(surface_);
    connect(surface_, &TrendSurface::zoom, this, &TrendPanel::zoomBy);
    empty_ = new QLabel(QStringLiteral("暂无开奖记录，无法显示走势图。"), this);
    empty_->setAlignment(Qt::AlignCenter);
    empty_->setStyleSheet(QStringLiteral("color: #777777;"));
    empty_->hide();
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(1, 1, 1, 1);
    layout->addWidget(area_, 1);
    layout->addWidget(empty_, 1);
    setToolTip(QStringLiteral("双击放大，右键缩小"));
}

int TrendPanel::fontSize() {
    return gFontSize;
}

void TrendPanel::show_TrendOfTab(const QString& tabCaption) {
    trend_ = trendSpecOfTab(tabCaption);
    rows_.clear();
    if (trend_.family != TrendFamily::None && trend_.family != TrendFamily::Grid) {
        runCommand([&] { rows_ = trendRows(trend_, kTrendPeriods); });
    }
    redraw();
}

void TrendPanel::setConditionTip(const QString& tip) {
    tip_ = tip;
    if (!rows_.isEmpty()) redraw();
}

void TrendPanel::setAllowedColumns(const QList<int>& columns) {
    allowed_ = columns;
    if (!rows_.isEmpty()) redraw();
}

void TrendPanel::zoomBy(int step) {
    gFontSize = std::clamp(gFontSize + step, kTrendFontMin, kTrendFontMax);
    redraw();
}

void TrendPanel::resizeEvent(QResizeEvent* event) {
    QFrame::resizeEvent(event);
    if (area_->viewport()->width() != drawnWidth_ && !rows_.isEmpty()) redraw();
}

void TrendPanel::redraw() {
    const bool hasChart = !rows_.isEmpty();
    area_->setVisible(hasChart);
    empty_->setVisible(!hasChart && trend_.family != TrendFamily::None);
    if (!hasChart) return;
    setEnabled(false);

    QFont font = this->font();
    font.setPointSize(gFontSize);
    const QFontMetricsF fm(font);
    TrendMetrics m;
    m.charW = fm.horizontalAdvance(QLatin1Char('1'));
    m.charH = fm.height() * 1.1;
    drawnWidth_ = area_->viewport()->width();
    // Columns wide enough for a mark with its value beside it: narrower ones scroll sideways.
    QFont bold = font;
    bold.setBold(true);
    const QFontMetricsF fb(bold);
    double widest = 0;
    for (const QString& c : trendColumnCaptions(trend_)) widest = std::max(widest, fb.horizontalAdvance(c));
    for (const TrendRow& row : rows_) widest = std::max(widest, fb.horizontalAdvance(row.value));
    const double r = m.charH / 3;
    const double column = std::max(2 * r, r + widest) + m.charW / 2;
    const double x0 = 20 * m.charW - m.charW / 2;
    m.width = std::max<double>(drawnWidth_, x0 + std::max(1, trend_.columns) * column);

    const TrendChart chart =
        draw_TrendBody(trend_, rows_, kTrendPeriods, m, trendConditionText(tip_, trend_.family), allowed_);
    surface_->setFixedSize(int(std::ceil(m.width)), int(std::ceil(chart.height)));
    surface_->setChart(chart, font);

    // The newest draws at the bottom, and the column of the newest one in sight.
    area_->verticalScrollBar()->setValue(area_->verticalScrollBar()->maximum());
    const int last = rows_.last().column;
    if (last >= 0 && last < chart.colX.size())
        area_->ensureVisible(int(chart.colX[last]), int(chart.height) - 1, int(column * 3), 0);
    setEnabled(true);
}

}  // namespace dovrex
