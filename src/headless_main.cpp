// dovrex-headless: runs a script of commands against a program folder or a store file, without a
// window. Usage: dovrex-headless [script]  (stdin when none is given, or "-"). See docs/headless.md.
#include <QCoreApplication>
#include <QFile>
#include <QTextStream>

#include "headless/headless_runner.h"

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    // The same per-user folders as the program's.
    QCoreApplication::setApplicationName(QStringLiteral("dovrex"));
    QTextStream out(stdout);
    QTextStream err(stderr);
    const QStringList args = app.arguments().mid(1);
    if (args.size() > 1 || args.value(0) == QLatin1String("--help")) {
        err << "usage: dovrex-headless [script file | -]\n";
        return 2;
    }
    QFile file;
    if (args.isEmpty() || args[0] == QLatin1String("-")) {
        if (!file.open(stdin, QIODevice::ReadOnly)) return 2;
    } else {
        file.setFileName(args[0]);
        if (!file.open(QIODevice::ReadOnly)) {
            err << "cannot read " << args[0] << ": " << file.errorString() << "\n";
            return 2;
        }
    }
    QTextStream in(&file);
    dovrex::HeadlessRunner runner([&out](const QString& line) { out << line << Qt::endl; });
    return runner.runScript(in);
}
