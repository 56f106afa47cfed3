#pragma once

#include <QWidget>

class QTextBrowser;

namespace dovrex {

// The 澄岚彩票网 page: the local help page of the program folder, read-only, with links opening in
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
