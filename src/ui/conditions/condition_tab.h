#pragma once

#include <QWidget>

namespace dovrex {

// A condition tab that shows rows of the store. It fills itself again each time it is shown, and
// when the rows change under it (quick settings, import, restore, another user); filling never writes.
class ConditionTab : public QWidget {
    Q_OBJECT
  public:
    using QWidget::QWidget;
    virtual void reload() = 0;

  protected:
    void showEvent(QShowEvent* event) override;
};

}  // namespace dovrex
