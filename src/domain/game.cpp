#include "domain/game.h"

#include <cmath>

namespace dovrex {

QString to_QuanJiao(const QString& text) {
    QString out = text;
    for (QChar& c : out)
        if (c >= u'0' && c <= u'9') c = QChar(0xFF10 + (c.unicode() - u'0'));
    return out;
}

long long roundHalfEven(double value) { return static_cast<long long>(std::nearbyint(value)); }

}  // namespace dovrex
