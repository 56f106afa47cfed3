#include "filters/condition_help.h"

#include <QStringList>

#include "domain/game.h"
#include "filters/filter_families.h"

namespace dovrex {

namespace {

QString twoDigitsOf(int n) {
    return QStringLiteral("%1").arg(n, 2, 10, QLatin1Char('0'));
}

// The members of a class as runs: "17～33", or "01、03、05" when they stand apart.
QString membersText(const NumberTable& t) {
    QStringList parts;
    for (int n = 1; n <= kRedCount; ++n) {
        if (!t[size_t(n)]) continue;
        int end = n;
        while (end < kRedCount && t[size_t(end + 1)]) ++end;
        parts << (end - n >= 2 ? twoDigitsOf(n) + u'～' + twoDigitsOf(end)
                  : end > n    ? twoDigitsOf(n) + u'、' + twoDigitsOf(end)
                               : twoDigitsOf(n));
        n = end;
    }
    return parts.isEmpty() ? QStringLiteral("（无）") : parts.join(u'、');
}

int memberCount(const NumberTable& t) {
    int count = 0;
    for (int n = 1; n <= kRedCount; ++n) count += t[size_t(n)] != 0;
    return count;
}

// "尾0：10 20 30　尾1：01 11 21 31 ..." over the groups that have members.
QString groupsText(const QString& prefix, int groups) {
    QStringList out;
    for (int g = 0; g < groups; ++g) {
        const NumberTable t = traitTable(prefix + QString::number(g));
        if (memberCount(t) == 0) continue;
        QStringList members;
        for (int n = 1; n <= kRedCount; ++n)
            if (t[size_t(n)]) members << twoDigitsOf(n);
        out << prefix + QString::number(g) + u'：' + members.join(u' ');
    }
    return out.join(QStringLiteral("　"));
}

const QString kShapeMeaning =
    QStringLiteral("形式说明：“2,1,1,1,1”表示一注的6个红球中有2个落在同一组，其余4个各在不同的组。");

QString shapeText(const QString& title, const QString& prefix, int groups) {
    return title + QStringLiteral("：") + groupsText(prefix, groups) + u'\n' + kShapeMeaning;
}

}  // namespace

QString condition_Definition(int tab) {
    switch (tab) {
        case 11:
            return QStringLiteral("奇数：01、03、05…33（17个）；偶数：02、04…32（16个）。");
        case 12: {
            const NumberTable big = traitTable(QStringLiteral("大数"));
            const NumberTable small = traitTable(QStringLiteral("大数"), true);
            return QStringLiteral("大数：%1（%2个）；小数：%3（%4个）。")
                .arg(membersText(big))
                .arg(memberCount(big))
                .arg(membersText(small))
                .arg(memberCount(small));
        }
        case 13: {
            // The high-tail count is that of the numbers that are not low-tail ones.
            const NumberTable low = traitTable(QStringLiteral("低尾码"));
            QStringList lowTails, highTails;
            for (int digit = 0; digit <= 9; ++digit) {
                bool anyLow = false, anyHigh = false;
                for (int n = 1; n <= kRedCount; ++n)
                    if (n % 10 == digit) (low[size_t(n)] ? anyLow : anyHigh) = true;
                if (anyLow) lowTails << QString::number(digit);
                if (anyHigh) highTails << QString::number(digit);
            }
            return QStringLiteral("低尾码：尾数为%1的红球（%2个）；高尾码：尾数为%3的红球（%4个）。")
                .arg(lowTails.join(u'、'))
                .arg(memberCount(low))
                .arg(highTails.join(u'、'))
                .arg(kRedCount - memberCount(low));
        }
        case 16:
            return shapeText(QStringLiteral("尾数分组（按个位数）"), QStringLiteral("尾"), 10);
        case 17:
            return shapeText(QStringLiteral("间距九分组"), QStringLiteral("九"), 10);
        case 18:
            return shapeText(QStringLiteral("间距七分组"), QStringLiteral("七"), 10);
        case 19:
            return shapeText(QStringLiteral("间距十一分组"), QStringLiteral("十一"), 11);
        case 20:
            return shapeText(QStringLiteral("间距十二分组"), QStringLiteral("十二"), 12);
        case 21:
            return shapeText(QStringLiteral("头数分组（按十位数）"), QStringLiteral("头"), 10);
        case 24:
            return QStringLiteral(
                "温度值5：指的是本期开奖的６个红球号码在最近前5期中各码开出次数之和。"
                "反映的是整注号码相对于最近５期的冷热程度。");
        case 25:
            return QStringLiteral(
                "温度值10：指的是本期开奖的６个红球号码在最近前10期中各码开出次数之和。"
                "反映的是整注号码相对于最近１０期的冷热程度。");
        default:
            return {};
    }
}

}  // namespace dovrex
