#pragma once

#include <QWidget>

#include "analysis/omission.h"

namespace dovrex {

// frm_YLFXmain: one bar group a number. The grey bar is the longest absence, the darker one over
// it the average, the coloured one the present absence (red when longer than the average), with
// the ball standing on it.
class OmissionChart : public QWidget {
    Q_OBJECT
  public:
    explicit OmissionChart(QWidget* parent = nullptr);

    void setFigures(const OmissionTable& table, bool blue, int itemIndex, const QString& issue);
    const OmissionTable& figures() const { return table_; }
    int count() const { return int(table_.size()) - 1; }
    // The group under a point of the widget, 0 for none.
    int groupAt(const QPoint& pos) const;
    // The text a tooltip shows at a point: a bar's own, or the group's.
    QString tipAt(const QPoint& pos) const;
    // The message of a click on group n.
    QString clickText(int n) const;

    static const QColor kMaxColour, kAvgColour, kBelowColour, kOverdueColour;

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    bool event(QEvent* event) override;

  private:
    // The frame and a group in twips, the units the layout is worked out in.
    QRectF groupRect(int n) const;
    OmissionGroupLayout groupLayout(int n) const;

    OmissionTable table_;
    bool blue_ = false;
    int itemIndex_ = 0;
    QString issue_;
};

}  // namespace dovrex
