#pragma once

#include <QString>
#include <QWidget>

class QTextBrowser;

namespace dovrex {

namespace msg {
// The caption of the top page that shows the manual.
inline const QString kHelpTab = QStringLiteral("使用说明");
}  // namespace msg

// The 使用说明 page: the local help page of the program folder, read-only, with links opening in
// the system browser. Without the page a short note says where it should be.
class HelpPage : public QWidget {
    Q_OBJECT
  public:
    explicit HelpPage(const QString& helpFile, QWidget* parent = nullptr);
    bool showsHelp() const { return showsHelp_; }
    // Scrolls to section n (1..5) of the manual.
    void showSection(int n);

  private:
    QTextBrowser* browser_ = nullptr;
    bool showsHelp_ = false;
};

}  // namespace dovrex
