#pragma once

#include <QObject>

class QPushButton;
class QWidget;

namespace dovrex {

// The keyboard of every secondary window, in one place: a window that opens takes the focus (its
// default button, else its first control), Escape closes it and Enter presses its default button.
// Dialogs answer both keys themselves; the tool frames and plain windows get the same from here.
class WindowKeys : public QObject {
    Q_OBJECT
  public:
    // Watches every window of the application from now on; once per process.
    static void install();
    // The button Enter presses in a window: its default push button, null when it has none.
    static QPushButton* defaultButton(QWidget* window);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    using QObject::QObject;
};

}  // namespace dovrex
