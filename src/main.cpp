#include <QApplication>

#include "ui/shell/main_window.h"

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    return dovrex::runProgram(app);
}
