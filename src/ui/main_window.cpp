#include "ui/main_window.h"

#include <QApplication>
#include <QMainWindow>
#include <QMessageBox>

#include "app/app_flow.h"

namespace dovrex {

int runProgram(QApplication& app) {
    AppFlow flow(AppPaths::standard());
    AppPaths::seedProgramDir(flow.paths().programDir, AppPaths::shippedDataDir());
    const StartOutcome outcome = flow.start();
    if (outcome != StartOutcome::Ready) {
        QMessageBox::critical(nullptr, QStringLiteral("dovrex"), msg::kDataPackUnreadable);
        return 1;
    }
    QMainWindow w;
    w.show();
    const int rc = app.exec();
    flow.saveAndClose();
    return rc;
}

}  // namespace dovrex
