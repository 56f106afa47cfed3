#pragma once

#include <QFrame>
#include <QList>

#include "analysis/trend_chart.h"

class QLabel;
class QScrollArea;

namespace dovrex {

// PICshow: the surface the chart's operations are painted on. A left double click makes the text
// bigger, a right click smaller.
class TrendSurface : public QWidget {
    Q_OBJECT
  public:
    explicit TrendSurface(QWidget* parent = nullptr);
    void setChart(const TrendChart& chart, const QFont& font);
    const TrendChart& chart() const { return chart_; }

  signals:
    void zoom(int step);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

  private:
    TrendChart chart_;
};

// Frame_PICshow: the trend chart of a condition's metric beside its value list, scrolled to the
// newest draws.
class TrendPanel : public QFrame {
    Q_OBJECT
  public:
    explicit TrendPanel(QWidget* parent = nullptr);

    // show_TrendOfTab: reads the rows of the tab's metric and draws them.
    void show_TrendOfTab(const QString& tabCaption);
    // The condition line under the chart (the page's "当前取值阅览：" text).
    void setConditionTip(const QString& tip);
    // Label_tjz: the columns the condition allows, marked under the last row.
    void setAllowedColumns(const QList<int>& columns);

    // The font size of every chart, kept between drawings.
    static int fontSize();
    void zoomBy(int step);

    TrendSurface* surface() const { return surface_; }
    QScrollArea* area() const { return area_; }
    const TrendSpec& trend() const { return trend_; }
    const QList<TrendRow>& rows() const { return rows_; }

  protected:
    void resizeEvent(QResizeEvent* event) override;

  private:
    void redraw();

    QScrollArea* area_;
    TrendSurface* surface_;
    QLabel* empty_;
    TrendSpec trend_;
    QList<TrendRow> rows_;
    QString tip_;
    QList<int> allowed_;
    int drawnWidth_ = 0;
};

}  // namespace dovrex
