#include "ui/shell/help_page.h"

#include <QFileInfo>
#include <QLabel>
#include <QTextBrowser>
#include <QUrl>
#include <QVBoxLayout>

namespace dovrex {

HelpPage::HelpPage(const QString& helpFile, QWidget* parent) : QWidget(parent) {
    auto* layout = new QVBoxLayout(this);
    if (QFileInfo::exists(helpFile)) {
        auto* browser = browser_ = new QTextBrowser(this);
        browser->setObjectName(QStringLiteral("WebBrowser_Merrowin"));
        browser->setOpenExternalLinks(true);
        browser->setReadOnly(true);
        browser->setSource(QUrl::fromLocalFile(helpFile));
        layout->addWidget(browser);
        showsHelp_ = true;
        return;
    }
    auto* note = new QLabel(QStringLiteral("<p style='font-size:large'><b>帮助页面暂缺</b></p>"
                                           "<p>程序文件夹中没有找到帮助页面：<br>%1</p>"
                                           "<p>重新安装程序即可恢复。</p>")
                                .arg(helpFile.toHtmlEscaped()),
                            this);
    note->setObjectName(QStringLiteral("Frame_web"));
    note->setAlignment(Qt::AlignCenter);
    note->setWordWrap(true);
    note->setTextInteractionFlags(Qt::TextSelectableByMouse);
    layout->addStretch();
    layout->addWidget(note);
    layout->addStretch();
}

void HelpPage::showSection(int n) {
    if (browser_) browser_->scrollToAnchor(QStringLiteral("s%1").arg(n));
}

}  // namespace dovrex
