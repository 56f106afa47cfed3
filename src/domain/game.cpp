#include "domain/game.h"

#include <cmath>

namespace dovrex {

QString prizeTierName(int tier) {
    static const char16_t* const kNames[] = {u"",       u"一等奖", u"二等奖", u"三等奖",
                                             u"四等奖", u"五等奖", u"六等奖"};
    return QString::fromUtf16(kNames[tier >= 1 && tier <= 6 ? tier : 0]);
}

QString to_QuanJiao(const QString& text) {
    QString out = text;
    for (QChar& c : out)
        if (c >= u'0' && c <= u'9') c = QChar(0xFF10 + (c.unicode() - u'0'));
    return out;
}

long long ticketCount(int reds, int redBankers, int blues, int blueBankers) {
    if (reds < kRedsPerTicket || redBankers > kRedsPerTicket || blues < 1) return 0;
    const int free = reds - redBankers, places = kRedsPerTicket - redBankers;
    long long sixes = 1;
    for (int i = 1; i <= places; ++i) sixes = sixes * (free - i + 1) / i;  // stays whole: C(free, i)
    return sixes * (blueBankers > 0 ? 1 : blues);
}

long long roundHalfEven(double value) {
    return static_cast<long long>(std::nearbyint(value));
}

QString ballsText(const Reds& reds, int blue) {
    QStringList balls;
    for (int i = 1; i <= kRedsPerTicket; ++i) balls << twoDigits(reds[size_t(i)]);
    return balls.join(u' ') + QStringLiteral(" + ") + twoDigits(blue);
}

QByteArray csvBytes(const QList<QStringList>& rows) {
    QByteArray out("\xEF\xBB\xBF");
    for (const QStringList& row : rows) {
        QStringList cells;
        for (QString cell : row) {
            if (cell.contains(u',') || cell.contains(u'"') || cell.contains(u'\n'))
                cell = u'"' + cell.replace(u'"', QStringLiteral("\"\"")) + u'"';
            cells << cell;
        }
        out += cells.join(u',').toUtf8() + "\r\n";
    }
    return out;
}

}  // namespace dovrex
