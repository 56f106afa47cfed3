#pragma once

#include <QTabWidget>

namespace dovrex {

// The 其它 top page: the analysis tools and the picks of the program's own, one tab each. Pages
// add themselves through window parts (see window_parts.h).
class OtherPage : public QTabWidget {
    Q_OBJECT
  public:
    explicit OtherPage(QWidget* parent = nullptr);
    // Adds a tool page; the placeholder goes once the first one is there.
    int addTool(QWidget* page, const QString& caption);
};

}  // namespace dovrex
