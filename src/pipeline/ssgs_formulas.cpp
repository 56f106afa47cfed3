#include "pipeline/ssgs_formulas.h"

#include <QFile>
#include <QStringList>

#include "store/store.h"

namespace dovrex {

bool read_SsgsFile(const QString& path, SsgsFormulas& out, QString* why) {
    auto fail = [&](const QString& text) {
        if (why) *why = text;
        return false;
    };
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) return fail(file.errorString());
    out.clear();
    int lineNo = 0;
    while (!file.atEnd()) {
        const QString line = QString::fromUtf8(file.readLine()).trimmed();
        ++lineNo;
        if (line.isEmpty() || line.startsWith(u'#')) continue;
        const int colon = line.indexOf(u':');
        bool ok = false;
        const int drags = line.left(colon).toInt(&ok);
        if (colon < 0 || !ok || drags < 6) return fail(QStringLiteral("line %1: no size").arg(lineNo));
        std::vector<int>& xuhao = out[drags];
        for (const QString& word : line.mid(colon + 1).split(u' ', Qt::SkipEmptyParts)) {
            const int x = word.toInt(&ok);
            if (!ok || x < 1) return fail(QStringLiteral("line %1: not a 序号: %2").arg(lineNo).arg(word));
            xuhao.push_back(x);
        }
    }
    return true;
}

void storeFormulas(Store& store, const SsgsFormulas& formulas) {
    Transaction tx(store);
    store.execute(QStringLiteral("DELETE FROM Ssgs"));
    for (auto it = formulas.begin(); it != formulas.end(); ++it)
        for (int x : it.value())
            store.execute(QStringLiteral("INSERT INTO Ssgs (Haomagesu, Xuhao) VALUES (?, ?)"), {it.key(), x});
}

}  // namespace dovrex
