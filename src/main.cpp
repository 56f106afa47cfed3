#include <QApplication>

#include "ui/main_window.h"

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    return dovrex::runProgram(app);
}
