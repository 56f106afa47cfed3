#pragma once

#include <QWidget>

namespace dovrex {

// A page whose commands are still to come: its name and a short word on what it will hold,
// centred on the page.
class PlaceholderPage : public QWidget {
    Q_OBJECT
  public:
    PlaceholderPage(const QString& title, const QString& note, QWidget* parent = nullptr);
};

}  // namespace dovrex
