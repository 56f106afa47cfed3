#pragma once

#include <QFrame>
#include <QList>

#include "analysis/trend_chart.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QScrollArea;

namespace dovrex {

// One band of the chart: the part of the drawing it shows, and how it follows the body's scroll
// bars. The head (title, "期号", the metric and the column captions) and the foot (the condition
// line) stay in view and follow the body sideways; the issue and value column stays at the left
// and follows it up and down; the body (PICshow) holds the marks.
class TrendStrip : public QWidget {
    Q_OBJECT
  public:
    enum Band { Head, Left, Body, Foot };
    TrendStrip(Band band, QWidget* parent = nullptr);
    void setChart(const TrendChart* chart, double x0, double bodyTop, double bodyBottom);
    void setScroll(int x, int y);
    Band band() const { return band_; }

  signals:
    void zoom(int step);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

  private:
    Band band_;
    const TrendChart* chart_ = nullptr;
    double x0_ = 0, bodyTop_ = 0, bodyBottom_ = 0;
    int scrollX_ = 0, scrollY_ = 0;
};

// Frame_PICshow: the trend chart of a condition's metric beside its value list. It opens on the
// newest draws; Combo_TuBiaoQS lets it end at an earlier issue. A left double click makes the text
// bigger, a right click smaller. The sums' charts open whole in the frame (Check_TrendWhole); a
// double click there reads them at the chart's own size instead. Resting the mouse on a row names
// its issue and value.
class TrendPanel : public QFrame {
    Q_OBJECT
  public:
    explicit TrendPanel(QWidget* parent = nullptr);

    // show_TrendOfTab: reads the rows of the tab's metric and draws them.
    void show_TrendOfTab(const QString& tabCaption);
    // The condition line under the chart (the page's "当前取值阅览：" text) and, as Label_tjz, the
    // columns the condition allows, marked under the last row; the chart is drawn again once.
    // Allowed values as the value list numbers them (a pattern by its place in the list).
    void setCondition(const QString& tip, const QList<int>& allowedValues);

    // The font size of every chart, kept between drawings.
    static int fontSize();
    void zoomBy(int step);

    TrendStrip* head() const { return head_; }
    TrendStrip* left() const { return left_; }
    TrendStrip* surface() const { return body_; }
    TrendStrip* foot() const { return foot_; }
    QScrollArea* area() const { return area_; }
    QComboBox* issueChooser() const { return chooser_; }
    QCheckBox* wholeSwitch() const { return whole_; }
    // The chart is drawn whole in the frame now.
    bool drawnWhole() const;
    const TrendSpec& trend() const { return trend_; }
    const QList<TrendRow>& rows() const { return rows_; }
    const TrendChart& chart() const { return chart_; }

  protected:
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void readRows();
    void redraw();
    void fillChooser();

    QComboBox* chooser_;
    QCheckBox* whole_;
    QWidget* chartBox_;
    TrendStrip* head_;
    TrendStrip* left_;
    TrendStrip* body_;
    TrendStrip* foot_;
    QScrollArea* area_;
    QLabel* empty_;
    TrendSpec trend_;
    QList<TrendRow> rows_;
    TrendChart chart_;
    QString tip_;
    QList<int> allowed_;
    QSize drawnSize_;
};

}  // namespace dovrex
