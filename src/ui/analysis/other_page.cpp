#include "ui/analysis/other_page.h"

#include "ui/shell/placeholder_page.h"

namespace dovrex {

OtherPage::OtherPage(QWidget* parent) : QTabWidget(parent) {
    setObjectName(QStringLiteral("Frm_SubOther"));
    setDocumentMode(true);
    addTab(
        new PlaceholderPage(QStringLiteral("其它"),
                            QStringLiteral("遗漏统计、概率分析、走势图、幸运号码与生日选号等工具。"), this),
        QStringLiteral("其它"));
}

int OtherPage::addTool(QWidget* page, const QString& caption) {
    if (count() == 1 && qobject_cast<PlaceholderPage*>(widget(0))) delete widget(0);
    return addTab(page, caption);
}

}  // namespace dovrex
