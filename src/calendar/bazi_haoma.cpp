#include "calendar/bazi_haoma.h"

#include <QStringList>
#include <algorithm>
#include <vector>

#include "calendar/nongli.h"

namespace dovrex {

namespace {

QString two(int v) {
    return QStringLiteral("%1").arg(v, 2, 10, QLatin1Char('0'));
}

int elementCode(const QString& element) {
    static const QString kCodes = QStringLiteral("金木水火土");
    return kCodes.indexOf(element) + 1;
}

const JiaZiRecord& recordOf(const QString& pillar) {
    return JiaZiBiao[findSexagenaryIndex(pillar)];
}

}  // namespace

QString make_BaziReport(const QDateTime& birth, const QDate& today, const QString& termList,
                        BaziState& state) {
    const QString crlf = QStringLiteral("\r\n");
    QString text =
        QStringLiteral("出生日期时间：") + crlf + birth.toString(QStringLiteral("yyyy/MM/dd HH:mm"));

    QString pillars = get_BaZi(birth, 5, termList);
    for (const QString& unit :
         {QStringLiteral("年"), QStringLiteral("月"), QStringLiteral("日"), QStringLiteral("时")})
        pillars.remove(unit);
    text += crlf + crlf + QStringLiteral("生辰八字(年月日时)：") + crlf + crlf + pillars;
    state.baZiZi = QString(pillars).remove(QLatin1Char(' '));

    const JiaZiRecord& year = recordOf(state.baZiZi.left(2));
    text += crlf + crlf + year.ganZhi + QStringLiteral("年生——") + year.naYinWuXing + QStringLiteral("命（") +
            year.naYin + QStringLiteral("）");
    text += crlf + crlf + QStringLiteral("八字五行——");

    state.wuXingHe.fill(0);
    for (int p = 0; p < 4; ++p) {
        const JiaZiRecord& r = recordOf(state.baZiZi.mid(p * 2, 2));
        state.wuXingHe[1] += r.jin;
        state.wuXingHe[2] += r.mu;
        state.wuXingHe[3] += r.shui;
        state.wuXingHe[4] += r.huo;
        state.wuXingHe[5] += r.tu;
    }
    static const QString kElements = QStringLiteral("金木水火土");
    for (int e = 1; e <= 5; ++e)
        text += (e == 1 ? crlf + crlf : crlf) + kElements.at(e - 1) + QStringLiteral("—— ") +
                QString::number(state.wuXingHe[e] / 100.0);
    text += crlf + crlf + QString(54, QLatin1Char('_')) + crlf + crlf;

    // Number every pillar backward from this year's: this year is 01, the year before 02, ...
    const int k = nianZhuIndex(naiveDateTime(today), QString());
    set_JiaZiFanXu(JiaZiBiao[k].ganZhi);
    text += JiaZiBiao[k].ganZhi + QStringLiteral("年（今年）各号码五行属性——") + crlf + crlf;
    int out = 0;
    for (int i = k; i >= 1 && out < 33; --i, ++out)
        text +=
            two(JiaZiBiao[i].fanXu) + QLatin1Char('(') + JiaZiBiao[i].naYinWuXing + QLatin1Char(')') + crlf;
    for (int i = 60; i > k && out < 33; --i, ++out)
        text += two(JiaZiBiao[i].fanXu) + QLatin1Char('(') + JiaZiBiao[i].naYinWuXing + QStringLiteral(") ");
    return text;
}

QString make_BaziHaoMa(const BaziState& state) {
    QString nums;
    for (int p = 0; p < 4; ++p) {
        const int f = recordOf(state.baZiZi.mid(p * 2, 2)).fanXu;
        if (f < 34)
            nums += two(f) + QLatin1Char(' ');
        else
            nums += two(f / 10 + f % 10) + QLatin1Char(' ') + two((f / 10) * (f % 10)) + QLatin1Char(' ');
    }

    // The elements ranked by strength, the lower code first on a tie.
    QString rank;
    std::array<int, 6> left = state.wuXingHe;
    int last = 0;
    for (int step = 0; step < 5; ++step) {
        int best = 0;
        for (int e = 1; e <= 5; ++e)
            if (left[e] > 0 && (best == 0 || left[e] > left[best])) best = e;
        if (best == 0) best = last;
        rank += QString::number(best);
        left[best] = 0;
        last = best;
    }
    for (int p = 0; p < 4; ++p) {
        const int x = rank.mid(p, 2).toInt();
        if (x < 34) nums += two(x) + QLatin1Char(' ');
    }
    for (int p = 0; p < 5; ++p) {
        const int e = rank.at(p).digitValue();
        for (int i = 60; i >= 1; --i)
            if (JiaZiBiao[i].fanXu < 33 && elementCode(JiaZiBiao[i].naYinWuXing) == e)
                nums += two(JiaZiBiao[i].fanXu) + QLatin1Char(' ');
    }

    // The first six distinct reds, printed in ascending order as every ticket is; the number after
    // them that can be a blue is the blue.
    std::vector<int> reds;
    bool used[34] = {};
    int blue = 0;
    for (const QString& item : nums.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        const int v = item.toInt();
        if (reds.size() < 6) {
            if (v >= 1 && v <= 33 && !used[v]) {
                reds.push_back(v);
                used[v] = true;
            }
        } else if (v >= 1 && v <= 16) {
            blue = v;
            break;
        }
    }
    std::sort(reds.begin(), reds.end());
    QStringList text;
    for (int v : reds) text << two(v);
    return text.join(QLatin1Char(' ')) + (blue > 0 ? QLatin1Char('+') + two(blue) : QString());
}

}  // namespace dovrex
