#include "ui/shell/main_window.h"

#include <QApplication>
#include <QLibraryInfo>
#include <QTranslator>

#include "screen/app_paths.h"
#include "ui/shell/form_main.h"
#include "ui/shell/program_session.h"
#include "widgets/ball_art.h"

namespace dovrex {

int runProgram(QApplication& app) {
    return runProgram(app, AppPaths::standard());
}

int runProgram(QApplication& app, const AppPaths& paths) {
    app.setWindowIcon(appIcon());
    // Qt's own dialogs (file dialog, standard buttons) in Chinese when the translations are there.
    QTranslator qtTexts;
    if (qtTexts.load(QStringLiteral("qtbase_zh_CN"), QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        app.installTranslator(&qtTexts);
    ProgramSession session(paths);
    if (!session.start()) return 1;
    bool saved = true;
    QObject::connect(session.window(), &FormMain::exited, &app, [&saved, &app](bool ok) {
        saved = ok;
        app.quit();
    });
    app.exec();
    return saved ? 0 : 2;
}

}  // namespace dovrex
