// Tab 30, 查看全部: every current setting as one text, made again each time the tab is shown.
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "filters/condition_pages.h"
#include "ui/conditions/condition_page_kit.h"

#include "ui/conditions/condition_tab.h"
#include "ui/conditions/conditions_page.h"
#include "ui/conditions/quick_settings_window.h"
#include "ui/shell/form_main.h"
#include "ui/shell/window_parts.h"
#include "widgets/command_trap.h"

namespace dovrex {
namespace {

class ConditionReportPage : public ConditionTab {
  public:
    explicit ConditionReportPage(FormMain& window) {
        setObjectName(QStringLiteral("ConditionPage30"));
        text_ = new QPlainTextEdit(this);
        text_->setObjectName(QStringLiteral("Text_TiaoJianList"));
        text_->setReadOnly(true);
        text_->setLineWrapMode(QPlainTextEdit::WidgetWidth);

        auto* quick = new QPushButton(QStringLiteral("快速设置..."), this);
        quick->setObjectName(QStringLiteral("cmm_KuaiSuSheZhi"));
        connectCommand(quick, &QPushButton::clicked, this, [&window] { QuickSettingsWindow::open(window); });
        auto* bar = new QHBoxLayout;
        bar->addWidget(sectionTitle(QStringLiteral("当前全部过滤条件"), this));
        bar->addStretch(1);
        bar->addWidget(quick);

        auto* layout = new QVBoxLayout(this);
        layout->setContentsMargins(6, 6, 6, 6);
        layout->addLayout(bar);
        layout->addWidget(text_, 1);
    }

    void reload() override {
        QString report;
        if (runCommand([&] { report = make_BaoGao(); })) text_->setPlainText(report);
    }

  private:
    QPlainTextEdit* text_;
};

}  // namespace

void installConditionReportPage(FormMain& window) {
    if (ConditionsPage* pages = window.conditionsPage()) pages->setTab(30, new ConditionReportPage(window));
}

}  // namespace dovrex
