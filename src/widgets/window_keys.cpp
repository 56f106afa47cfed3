#include "widgets/window_keys.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QKeyEvent>
#include <QMainWindow>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QTextEdit>
#include <QTimer>

namespace dovrex {

namespace {

// A window of its own that the player works in: not the main window, a menu, a tip or the splash.
bool secondaryWindow(const QWidget* w) {
    if (!w || !w->isWindow() || qobject_cast<const QMainWindow*>(w)) return false;
    const Qt::WindowType type = w->windowType();
    return type == Qt::Dialog || type == Qt::Tool || type == Qt::Window;
}

void takeFocus(QWidget* window) {
    if (!window->isVisible()) return;
    window->raise();
    window->activateWindow();
    if (QWidget* f = window->focusWidget(); f && f->isVisible() && f->isEnabled()) {
        f->setFocus(Qt::ActiveWindowFocusReason);
        return;
    }
    if (QPushButton* button = WindowKeys::defaultButton(window)) {
        button->setFocus(Qt::ActiveWindowFocusReason);
        return;
    }
    // The first control the Tab key would reach.
    for (QWidget* w = window->nextInFocusChain(); w && w != window; w = w->nextInFocusChain()) {
        if (w->window() == window && w->isVisible() && w->isEnabled() && (w->focusPolicy() & Qt::TabFocus)) {
            w->setFocus(Qt::ActiveWindowFocusReason);
            return;
        }
    }
    window->setFocus(Qt::ActiveWindowFocusReason);
}

}  // namespace

void WindowKeys::install() {
    static WindowKeys* keys = nullptr;
    if (keys || !qApp) return;
    keys = new WindowKeys(qApp);
    qApp->installEventFilter(keys);
}

QPushButton* WindowKeys::defaultButton(QWidget* window) {
    for (QPushButton* b : window->findChildren<QPushButton*>())
        if (b->isDefault() && b->window() == window && b->isVisible() && b->isEnabled()) return b;
    return nullptr;
}

bool WindowKeys::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Show) {
        auto* w = qobject_cast<QWidget*>(watched);
        if (secondaryWindow(w)) {
            // After the window system has mapped it: a window asked for focus too early loses it.
            QPointer<QWidget> window(w);
            QTimer::singleShot(0, w, [window] {
                if (window) takeFocus(window);
            });
        }
        return false;
    }
    if (event->type() != QEvent::KeyPress) return false;
    auto* key = static_cast<QKeyEvent*>(event);
    auto* target = qobject_cast<QWidget*>(watched);
    const Qt::KeyboardModifiers held = key->modifiers() & ~Qt::KeyboardModifiers(Qt::KeypadModifier);
    if (!target || held != Qt::NoModifier) return false;
    QWidget* window = target->window();
    // Dialogs have both keys of their own; a frame or plain window gets them here.
    if (!secondaryWindow(window) || qobject_cast<QDialog*>(window)) return false;
    if (key->key() == Qt::Key_Escape) {
        window->close();
        return true;
    }
    if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
        // A button with the focus, or a text box of lines, keeps its own Enter.
        if (qobject_cast<QAbstractButton*>(target) || qobject_cast<QPlainTextEdit*>(target) ||
            qobject_cast<QTextEdit*>(target))
            return false;
        if (QPushButton* button = defaultButton(window)) {
            button->click();
            return true;
        }
    }
    return false;
}

}  // namespace dovrex
