#include "calendar/nongli.h"

#include <cmath>
#include <stdexcept>

#include "calendar/almanac.h"

namespace dovrex {

namespace {

QStringList splitChars(const QString& text, int width) {
    QStringList out;
    for (int i = 0; i < text.size(); i += width) out << text.mid(i, width);
    return out;
}

// The 纳音 list, ten strings joined and split at "；".
const char* const kNaYinText[10] = {
    "甲子、乙丑，配海中金； 丙寅、丁卯，配炉中火； 戊辰、己巳，配大林木；",
    "庚午、辛未，配路旁土； 壬申、癸酉，配剑锋金； 甲戌、乙亥，配山头火；",
    "丙子、丁丑，配涧下水； 戊寅、己卯，配城墙土； 庚辰、辛巳，配白腊金；",
    "壬午、癸未，配杨柳木； 甲申、乙酉，配泉中水； 丙戌、丁亥，配屋上土；",
    "戊子、己丑，配霹雷火； 庚寅、辛卯，配松柏木； 壬辰、癸巳，配常流水；",
    "甲午、乙未，配沙中金； 丙申、丁酉，配山下火； 戊戌、己亥，配平地木；",
    "庚子、辛丑，配壁上土； 壬寅、癸卯，配金箔金； 甲辰、乙巳，配覆灯火；",
    "丙午、丁未，配天河水； 戊申、己酉，配大驿土； 庚戌、辛亥，配钗钏金；",
    "壬子、癸丑，配桑松木； 甲寅、乙卯，配大溪水； 丙辰、丁巳，配沙中土；",
    "戊午、己未，配天上火； 庚申、辛酉，配石榴木； 壬戌、癸亥，配大海水；",
};

const QStringList& naYinEntries() {
    static const QStringList entries = [] {
        QString all;
        for (const char* part : kNaYinText) all += QString::fromUtf8(part);
        return all.split(QStringLiteral("；"));
    }();
    return entries;
}

// Stems with their element, branches with their hidden stems, read by position.
const QString kWuXingText = QStringLiteral(
    "甲乙为木代表东方丙丁为火代表南方戊己为土代表中央庚辛为金代表西方壬癸为水代表北方"
    "寅中藏甲丙戊;卯中藏乙;辰中藏戊乙癸;巳中藏丙庚戊;午中藏丁己;未中藏己丁乙;申中藏庚壬戊;"
    "酉中藏辛;戌中藏戊辛丁;亥中藏壬甲;子中藏癸;丑中藏己癸辛;");

QChar stemElement(QChar stem) {
    const int at = kWuXingText.indexOf(stem);
    const int wei = kWuXingText.indexOf(QStringLiteral("为"), at);
    return kWuXingText.at(wei + 1);
}

QString hiddenStems(QChar branch) {
    const int at = kWuXingText.indexOf(branch);
    const int cang = kWuXingText.indexOf(QStringLiteral("藏"), at);
    const int end = kWuXingText.indexOf(QLatin1Char(';'), cang);
    return kWuXingText.mid(cang + 1, end - cang - 1);
}

void addStrength(JiaZiRecord& r, QChar element, int weight) {
    switch (element.unicode()) {
        case u'金':
            r.jin += weight;
            break;
        case u'木':
            r.mu += weight;
            break;
        case u'水':
            r.shui += weight;
            break;
        case u'火':
            r.huo += weight;
            break;
        case u'土':
            r.tu += weight;
            break;
        default:
            break;
    }
}

std::int32_t yearWord(int year) {
    if (year < 1900) year = 1900;
    if (year > 2100) throw std::out_of_range("lunar year beyond 2100");
    return NongLiXinXi[year - 1900];
}

// Mathematical modulo for the cycle arithmetic.
int cyc(qint64 n, int m) {
    return int(((n % m) + m) % m);
}

// Position 1..60 from n mod 60 + base, wrapped as the pillars are.
int wrapPillar(qint64 n, int base) {
    int i = int(n % 60) + base;
    if (i > 60) i %= 60;
    if (i <= 0) i += 60;
    return i;
}

// Parses "yyyy-mm-dd hh:mm:ss" (year possibly blank-padded; the hour may read 24).
QDateTime parseTermTime(const QString& text) {
    const QString t = text.trimmed();
    const QDate d = QDate::fromString(t.left(10), QStringLiteral("yyyy-MM-dd"));
    const QStringList hms = t.mid(11).split(QLatin1Char(':'));
    if (!d.isValid() || hms.size() != 3) return {};
    return naiveDateTime(d, hms[0].toInt() * 3600 + hms[1].toInt() * 60 + hms[2].toInt());
}

// The opening term of a list entry, or the term's own time when the list is empty or short.
QDateTime openingTerm(const QString& termList, int entry, int year, int n) {
    if (!termList.isEmpty()) {
        const QStringList items = termList.split(QLatin1Char(','));
        if (entry < items.size()) {
            const QDateTime t = parseTermTime(items[entry]);
            if (t.isValid()) return t;
        }
    }
    return solarTermTime(year, n);
}

}  // namespace

const QStringList TianGan = splitChars(QStringLiteral("甲乙丙丁戊己庚辛壬癸"), 1);
const QStringList DiZhi = splitChars(QStringLiteral("子丑寅卯辰巳午未申酉戌亥"), 1);
const QStringList ShengXiao = splitChars(QStringLiteral("鼠牛虎兔龙蛇马羊猴鸡狗猪"), 1);
const QStringList JieQiMing = splitChars(
    QStringLiteral(
        "小寒大寒立春雨水惊蛰春分清明谷雨立夏小满芒种夏至小暑大暑立秋处暑白露秋分寒露霜降立冬小雪大雪冬至"),
    2);
const std::array<double, 24> JieQiFenZhong = {0,      21208,  42467,  63836,  85337,  107014, 128867, 150921,
                                              173149, 195551, 218072, 240693, 263343, 285989, 308563, 331033,
                                              353350, 375494, 397447, 419210, 440795, 462224, 483532, 504758};
const QStringList ShuZi = splitChars(QStringLiteral("一二三四五六七八九十日"), 1);
const QStringList RiZiTou = {QStringLiteral("初"), QStringLiteral("十"), QStringLiteral("廿"),
                             QStringLiteral("卅"), QStringLiteral("　")};
const QStringList GongLiJieRi = {
    QStringLiteral("0101元旦"),   QStringLiteral("0214情人节"), QStringLiteral("0308妇女节"),
    QStringLiteral("0312植树节"), QStringLiteral("0315权益日"), QStringLiteral("0401愚人节"),
    QStringLiteral("0501劳动节"), QStringLiteral("0504青年节"), QStringLiteral("0512护士节"),
    QStringLiteral("0601儿童节"), QStringLiteral("0701建党节"), QStringLiteral("0801建军节"),
    QStringLiteral("0808父亲节"), QStringLiteral("0910教师节"), QStringLiteral("1001国庆节"),
    QStringLiteral("1006老人节"), QStringLiteral("1225圣诞节")};
const QStringList NongLiJieRi = {QStringLiteral("0101春节"),   QStringLiteral("0115元宵节"),
                                 QStringLiteral("0505端午节"), QStringLiteral("0707七夕节"),
                                 QStringLiteral("0715中元节"), QStringLiteral("0815中秋节"),
                                 QStringLiteral("0909重阳节"), QStringLiteral("1208腊八节"),
                                 QStringLiteral("1224小年"),   QStringLiteral("0100除夕")};

// Bits 15..4: months 1..12 big (30 days); bits 3..0: leap month; bit 16: the leap month is big.
// The table decides the lunar date on its own, also in the few years where the almanac's new
// moons and mid-terms would lay the months out otherwise (2033 keeps its leap seventh month).
const std::array<std::int32_t, 201> NongLiXinXi = {
    0x04BD8, 0x04AE0, 0x0A570, 0x054D5, 0x0D260, 0x0D950, 0x16554, 0x056A0, 0x09AD0, 0x055D2,  // 1900
    0x04AE0, 0x0A5B6, 0x0A4D0, 0x0D250, 0x1D255, 0x0B540, 0x0D6A0, 0x0ADA2, 0x095B0, 0x14977,  // 1910
    0x04970, 0x0A4B0, 0x0B4B5, 0x06A50, 0x06D40, 0x1AB54, 0x02B60, 0x09570, 0x052F2, 0x04970,  // 1920
    0x06566, 0x0D4A0, 0x0EA50, 0x06E95, 0x05AD0, 0x02B60, 0x186E3, 0x092E0, 0x1C8D7, 0x0C950,  // 1930
    0x0D4A0, 0x1D8A6, 0x0B550, 0x056A0, 0x1A5B4, 0x025D0, 0x092D0, 0x0D2B2, 0x0A950, 0x0B557,  // 1940
    0x06CA0, 0x0B550, 0x15355, 0x04DA0, 0x0A5D0, 0x14573, 0x052D0, 0x0A9A8, 0x0E950, 0x06AA0,  // 1950
    0x0AEA6, 0x0AB50, 0x04B60, 0x0AAE4, 0x0A570, 0x05260, 0x0F263, 0x0D950, 0x05B57, 0x056A0,  // 1960
    0x096D0, 0x04DD5, 0x04AD0, 0x0A4D0, 0x0D4D4, 0x0D250, 0x0D558, 0x0B540, 0x0B5A0, 0x195A6,  // 1970
    0x095B0, 0x049B0, 0x0A974, 0x0A4B0, 0x0B27A, 0x06A50, 0x06D40, 0x0AF46, 0x0AB60, 0x09570,  // 1980
    0x04AF5, 0x04970, 0x064B0, 0x074A3, 0x0EA50, 0x06B58, 0x055C0, 0x0AB60, 0x096D5, 0x092E0,  // 1990
    0x0C960, 0x0D954, 0x0D4A0, 0x0DA50, 0x07552, 0x056A0, 0x0ABB7, 0x025D0, 0x092D0, 0x0CAB5,  // 2000
    0x0A950, 0x0B4A0, 0x0BAA4, 0x0AD50, 0x055D9, 0x04BA0, 0x0A5B0, 0x15176, 0x052B0, 0x0A930,  // 2010
    0x07954, 0x06AA0, 0x0AD50, 0x05B52, 0x04B60, 0x0A6E6, 0x0A4E0, 0x0D260, 0x0EA65, 0x0D530,  // 2020
    0x05AA0, 0x076A3, 0x096D0, 0x04BD7, 0x04AD0, 0x0A4D0, 0x1D0B6, 0x0D250, 0x0D520, 0x0DD45,  // 2030
    0x0B5A0, 0x056D0, 0x055B2, 0x049B0, 0x0A577, 0x0A4B0, 0x0AA50, 0x1B255, 0x06D20, 0x0ADA0,  // 2040
    0x14B63, 0x09370, 0x049F8, 0x04970, 0x064B0, 0x168A6, 0x0EA50, 0x06B20, 0x1A6C4, 0x0AAE0,  // 2050
    0x092E0, 0x0D2E3, 0x0C960, 0x0D557, 0x0D4A0, 0x0DA50, 0x05D55, 0x056A0, 0x0A6D0, 0x055D4,  // 2060
    0x052D0, 0x0A9B8, 0x0A950, 0x0B4A0, 0x0B6A6, 0x0AD50, 0x055A0, 0x0ABA4, 0x0A5B0, 0x052B0,  // 2070
    0x0B273, 0x06930, 0x07337, 0x06A60, 0x0AD50, 0x06B55, 0x04B60, 0x0A570, 0x054E4, 0x0D160,  // 2080
    0x0E968, 0x0D520, 0x0DAA0, 0x16AA6, 0x056D0, 0x04AE0, 0x0A9D4, 0x0A2D0, 0x0D150, 0x0F252,  // 2090
    0x0D520};                                                                                  // 2100

std::array<JiaZiRecord, 61> JiaZiBiao;
std::array<std::int16_t, 37> RiLiGeZi{};

QDateTime naiveDateTime(const QDate& date, qint64 seconds) {
    return QDateTime(date, QTime(0, 0), Qt::UTC).addSecs(seconds);
}

void init_NongLiTables() {
    static const int kWeights[5][4] = {{0}, {0}, {100, 100}, {100, 60, 40}, {100, 60, 25, 15}};
    for (int i = 1; i <= 60; ++i) {
        JiaZiRecord r;
        r.xuHao = i;
        r.ganZhi = TianGan[(i - 1) % 10] + DiZhi[(i - 1) % 12];
        r.naYin = get_NaYin(r.ganZhi);
        r.naYinWuXing = r.naYin.right(1);
        r.shengXiao = ShengXiao[(i - 1) % 12];
        const QString s = r.ganZhi.left(1) + hiddenStems(r.ganZhi.at(1));
        for (int c = 0; c < s.size(); ++c) addStrength(r, stemElement(s.at(c)), kWeights[s.size()][c]);
        JiaZiBiao[i] = r;
    }
}

int get_LunarMonthDays(int year, int month) {
    return (yearWord(year) & (0x10000 >> month)) ? 30 : 29;
}

int get_LeapMonth(int year) {
    return year < 1900 ? 0 : yearWord(year) & 0xF;
}

int get_LeapMonthDays(int year) {
    if (get_LeapMonth(year) == 0) return 0;
    return (yearWord(year) & 0x10000) ? 30 : 29;
}

int get_LunarYearDays(int year) {
    int sum = 0;
    for (int m = 1; m <= 12; ++m) sum += get_LunarMonthDays(year, m);
    return sum + get_LeapMonthDays(year);
}

QString solar2Lunar(const QDate& date) {
    static const QDate kAnchor1900(1900, 1, 31), kAnchor2000(2000, 2, 5);
    qint64 offset;
    int year, stop;
    if (date <= kAnchor2000) {
        offset = kAnchor1900.daysTo(date);
        year = 1900;
        stop = 2001;
    } else {
        offset = kAnchor2000.daysTo(date);
        year = 2000;
        stop = 2101;
    }
    int temp = 0;
    while (year < stop && offset >= 0) {
        temp = get_LunarYearDays(year);
        offset -= temp;
        ++year;
    }
    if (offset < 0) {
        offset += temp;
        --year;
    }
    const int leap = get_LeapMonth(year);
    bool isLeap = false;
    int month = 1;
    while (month < 13 && offset >= 1) {
        if (leap > 0 && month == leap + 1 && !isLeap) {
            --month;
            isLeap = true;
            temp = get_LeapMonthDays(year);
        } else {
            temp = get_LunarMonthDays(year, month);
        }
        if (isLeap && month == leap + 1) isLeap = false;
        offset -= temp;
        ++month;
    }
    if (offset == 0 && leap > 0 && month == leap + 1) {
        if (isLeap) {
            isLeap = false;
        } else {
            isLeap = true;
            --month;
        }
    }
    if (offset < 0) {
        offset += temp;
        --month;
    }
    const qint64 day = offset + 1;
    return QStringLiteral("%1%2%3%4")
        .arg(isLeap ? 1 : 0)
        .arg(year, 4, 10, QLatin1Char('0'))
        .arg(month, 2, 10, QLatin1Char('0'))
        .arg(day, 2, 10, QLatin1Char('0'));
}

QString get_GanZhiYear(int year, bool withSuffix) {
    QString s = TianGan[cyc(year - 1894, 10)] + DiZhi[cyc(year - 1888, 12)];
    if (withSuffix) s += QStringLiteral("年");
    return s;
}

QString get_ShengXiaoOfYear(int year) {
    return ShengXiao[cyc(year - 1900, 12)];
}

QString get_LunarMonthName(int month) {
    if (month < 10) return ShuZi[month - 1] + QStringLiteral("月");
    if (month == 10) return QStringLiteral("十月");
    return QStringLiteral("十") + ShuZi[month % 10 - 1] + QStringLiteral("月");
}

QString get_LunarDayName(int day) {
    if (day <= 10) return QStringLiteral("初") + ShuZi[day - 1];
    // As calendars print them: 十一 .. 十九, 二十, 廿一 .. 廿九, 三十.
    if (day < 20) return QStringLiteral("十") + ShuZi[day % 10 - 1];
    if (day == 20) return QStringLiteral("二十");
    if (day < 30) return QStringLiteral("廿") + ShuZi[day % 10 - 1];
    return QStringLiteral("三十");
}

QString get_NaYin(const QString& ganZhi) {
    if (ganZhi.isEmpty()) return {};
    for (const QString& entry : naYinEntries())
        if (entry.contains(ganZhi)) return entry.right(3);
    return {};
}

QDateTime get_JieQiDate(int year, int n, bool withTime) {
    static const QDateTime kEpoch = naiveDateTime(QDate(1970, 1, 1));
    static const double kOrigin = double(kEpoch.secsTo(naiveDateTime(QDate(1900, 1, 6), 2 * 3600 + 5 * 60)));
    const double total = (year - 1900) * 31556925.9747 + JieQiFenZhong.at(n - 1) * 60 + kOrigin;
    const double half = total / 2;
    // Two steps, each rounded half to even, as a 32-bit second count would need.
    const QDateTime t =
        kEpoch.addSecs(qint64(std::nearbyint(half))).addSecs(qint64(std::nearbyint(total - half)));
    return withTime ? t : naiveDateTime(t.date());
}

QDateTime solarTermTime(int year, int n) {
    if (const almanac::YearTerms* terms = almanac::yearTerms(year)) return terms->moment.at(n - 1);
    return get_JieQiDate(year, n, true);
}

QDate solarTermDay(int year, int n) {
    if (const almanac::YearTerms* terms = almanac::yearTerms(year)) return terms->day.at(n - 1);
    return get_JieQiDate(year, n, false).date();
}

int findSexagenaryIndex(const QString& ganZhi) {
    for (int i = 1; i <= 60; ++i)
        if (TianGan[(i - 1) % 10] + DiZhi[(i - 1) % 12] == ganZhi) return i;
    return 0;
}

int nianZhuIndex(const QDateTime& dateTime, const QString& termList) {
    const int year = dateTime.date().year();
    qint64 n = year - 1900;
    if (dateTime < openingTerm(termList, 2, year, 3)) --n;
    return wrapPillar(n, 37);
}

QString get_BaZi(const QDateTime& dateTime, int which, const QString& termList) {
    const QDate date = dateTime.date();
    const int year = date.year();
    auto pillar = [](int i) { return TianGan[(i - 1) % 10] + DiZhi[(i - 1) % 12]; };

    const QString nian = pillar(nianZhuIndex(dateTime, termList));

    qint64 n = qint64(year - 1900) * 12 + (date.month() - 1);
    const int m12 = cyc(n, 12);
    if (dateTime < openingTerm(termList, 2 * m12, year, (m12 + 1) * 2 - 1)) --n;
    const QString yue = pillar(wrapPillar(n, 14));

    const int hour = dateTime.time().hour();
    n = QDate(1900, 8, 19).daysTo(date);
    if (hour == 23) ++n;
    const int riIndex = cyc(n, 60) + 1;
    const QString ri = pillar(riIndex);

    const int p = ((hour + 1) / 2) % 12 + 1;
    static const int kBase[5] = {1, 13, 25, 37, 49};  // 甲己, 乙庚, 丙辛, 丁壬, 戊癸
    const QString shi = pillar(kBase[(riIndex - 1) % 10 % 5] + p - 1);

    switch (which) {
        case 1:
            return nian;
        case 2:
            return yue;
        case 3:
            return ri;
        case 4:
            return shi;
        default:
            return nian + QStringLiteral("年 ") + yue + QStringLiteral("月 ") + ri + QStringLiteral("日 ") +
                   shi + QStringLiteral("时");
    }
}

void set_JiaZiFanXu(const QString& ganZhi) {
    const int k = findSexagenaryIndex(ganZhi);
    if (k == 0) return;
    int order = 1;
    for (int i = k; i >= 1; --i) JiaZiBiao[i].fanXu = order++;
    for (int i = 60; i > k; --i) JiaZiBiao[i].fanXu = order++;
}

void build_MonthGrid(int year, int month) {
    const QDate first(year, month, 1);
    const int w = first.dayOfWeek() % 7 + 1;  // Sunday 1
    const int days = first.daysInMonth();
    RiLiGeZi.fill(0);
    for (int i = w - 1, day = 1; i < 37 && day <= days; ++i, ++day) RiLiGeZi[i] = std::int16_t(day);
}

QString solarHolidayName(const QDate& date) {
    const QString key = date.toString(QStringLiteral("MMdd"));
    for (const QString& f : GongLiJieRi)
        if (f.startsWith(key)) return f.mid(4);
    return {};
}

QString lunarHolidayName(const QDate& date) {
    const QString lunar = solar2Lunar(date);
    if (lunar.at(0) == QLatin1Char('1')) return {};
    QString key = lunar.mid(5, 4);
    // The last day of the twelfth month is the one before the new year.
    if (key.startsWith(QStringLiteral("12")) &&
        solar2Lunar(date.addDays(1)).mid(5, 4) == QStringLiteral("0101"))
        key = QStringLiteral("0100");
    for (const QString& f : NongLiJieRi)
        if (f.startsWith(key)) return f.mid(4);
    return {};
}

}  // namespace dovrex
