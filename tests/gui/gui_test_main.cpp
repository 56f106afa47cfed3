#include <gtest/gtest.h>

#include <QApplication>

#include "ui/shell/gui_screen.h"

// The windows need a QApplication; without a display they are drawn offscreen.
int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    // A control the logic names and the window lacks fails the test that reached for it.
    dovrex::GuiScreen::setUnknownRoleHandler(
        [](const QString& role) { ADD_FAILURE() << "no control for the role " << role.toStdString(); });
    return RUN_ALL_TESTS();
}
