#pragma once

#include <QFrame>
#include <QList>

namespace dovrex {

// PICshow: the trend chart of a condition's metric beside its value list.
class TrendPanel : public QFrame {
    Q_OBJECT
  public:
    explicit TrendPanel(QWidget* parent = nullptr);

    // show_TrendOfTab: draws the chart of the tab with that caption.
    void show_TrendOfTab(const QString& tabCaption);
    // The text of the condition line under the chart (the page's "当前取值阅览：").
    void setConditionTip(const QString& tip);
    // Label_tjz: the columns the condition allows.
    void setAllowedColumns(const QList<int>& columns);

  private:
    QString caption_, tip_;
    QList<int> allowed_;
};

}  // namespace dovrex
