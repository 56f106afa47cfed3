#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>
#include <QTextStream>
#include <cstdio>
#include <memory>

#include "bench.h"
#include "screen/shared_state.h"
#include "store/pack.h"
#include "store/store.h"

namespace bench {

std::vector<Case>& registry() {
    static std::vector<Case> cases;
    return cases;
}

void report(const QString& figure, double value, const QString& unit) {
    QTextStream(stdout) << figure << ": " << QString::number(value, 'f', value < 10 ? 3 : 1) << ' ' << unit
                        << Qt::endl;
}

struct ShippedStore::Impl {
    QTemporaryDir dir;
    std::unique_ptr<dovrex::Store> store;
};

ShippedStore::ShippedStore() : impl(new Impl) {
    const QString work = impl->dir.path() + QStringLiteral("/work.dat");
    const QString aux = impl->dir.path() + QStringLiteral("/work.aux");
    if (!dovrex::unpack(QStringLiteral(DOVREX_BUILD_DIR "/data/dovrex.dat"), work, aux)) {
        std::fprintf(stderr, "cannot unpack the shipped data\n");
        std::exit(1);
    }
    impl->store = dovrex::Store::open(work);
    dovrex::shared().g_Store = impl->store.get();
}

ShippedStore::~ShippedStore() {
    dovrex::shared().g_Store = nullptr;
    delete impl;
}

}  // namespace bench

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    // The groups named run in the order named (a group's figures can depend on what ran before it
    // in the process); with none, every group in the order of registration.
    const QStringList only = app.arguments().mid(1);
    if (only.isEmpty()) {
        for (const auto& c : bench::registry()) c.run();
        return 0;
    }
    for (const QString& name : only)
        for (const auto& c : bench::registry())
            if (name == QString::fromUtf8(c.name)) c.run();
    return 0;
}
