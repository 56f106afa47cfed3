#include "widgets/trend_panel.h"

namespace dovrex {

TrendPanel::TrendPanel(QWidget* parent) : QFrame(parent) {
    setObjectName(QStringLiteral("Frame_PICshow"));
    setFrameShape(QFrame::StyledPanel);
}

void TrendPanel::show_TrendOfTab(const QString& tabCaption) {
    caption_ = tabCaption;
}

void TrendPanel::setConditionTip(const QString& tip) {
    tip_ = tip;
}

void TrendPanel::setAllowedColumns(const QList<int>& columns) {
    allowed_ = columns;
}

}  // namespace dovrex
