#include "calendar/calendar_text.h"

#include "calendar/nongli.h"

namespace dovrex {

namespace {

struct Lunar {
    bool leap;
    int year, month, day;
};

Lunar lunarOf(const QDate& date) {
    const QString s = solar2Lunar(date);
    return {s.at(0) == QLatin1Char('1'), s.mid(1, 4).toInt(), s.mid(5, 2).toInt(), s.mid(7, 2).toInt()};
}

}  // namespace

QString get_NongLiText(const QDate& date) {
    const Lunar l = lunarOf(date);
    const QString year = (l.leap ? QStringLiteral("(闰)") : QString()) + get_GanZhiYear(l.year, true);
    return QStringLiteral("农历") + year + get_LunarMonthName(l.month) + get_LunarDayName(l.day);
}

QString get_NongLiMonthText(const QDate& date) {
    return get_LunarMonthName(lunarOf(date).month);
}

QString get_NongLiDayText(const QDate& date) {
    return get_LunarDayName(lunarOf(date).day);
}

QString get_XingZuo(const QDate& date) {
    // Each sign from its first "mmdd"; 魔羯座 runs over the turn of the year.
    static const struct {
        int from;
        const char* name;
    } kSigns[] = {{120, "水瓶座"}, {219, "双鱼座"},  {321, "白羊座"},  {420, "金牛座"},
                  {521, "双子座"}, {622, "巨蟹座"},  {723, "狮子座"},  {823, "处女座"},
                  {923, "天秤座"}, {1024, "天蝎座"}, {1122, "射手座"}, {1222, "魔羯座"}};
    const int mmdd = date.month() * 100 + date.day();
    const char* name = "魔羯座";
    for (const auto& s : kSigns)
        if (mmdd >= s.from) name = s.name;
    return QString::fromUtf8(name);
}

QString get_XingQi(const QDate& date, int style) {
    static const char* const kPlain[7] = {"日", "一", "二", "三", "四", "五", "六"};
    static const char* const kFormal[7] = {"日", "壹", "贰", "叁", "肆", "伍", "陆"};
    const int w = date.dayOfWeek() % 7;  // Sunday 0
    return QStringLiteral("星期") + QString::fromUtf8(style == 1 ? kFormal[w] : kPlain[w]);
}

namespace {

QString termOfDay(const QDate& date) {
    for (int n = date.month() * 2 - 1; n <= date.month() * 2; ++n)
        if (solarTermDay(date.year(), n) == date) return JieQiMing[n - 1];
    return {};
}

}  // namespace

QString calendarCellText(const QDate& date) {
    if (QString t = termOfDay(date); !t.isEmpty()) return t;
    if (QString f = lunarHolidayName(date); !f.isEmpty()) return f;
    if (QString f = solarHolidayName(date); !f.isEmpty()) return f;
    const Lunar l = lunarOf(date);
    if (l.day == 1) return (l.leap ? QStringLiteral("闰") : QString()) + get_LunarMonthName(l.month);
    return get_LunarDayName(l.day);
}

bool isRiLiSpecialDay(const QDate& date) {
    return !termOfDay(date).isEmpty() || !lunarHolidayName(date).isEmpty() ||
           !solarHolidayName(date).isEmpty();
}

QDate moveToMonth(const QDate& from, int year, int month) {
    const QDate first(year, month, 1);
    return QDate(year, month, std::min(from.day(), first.daysInMonth()));
}

std::optional<QDate> stepCalendar(const QDate& from, int mode) {
    int y = from.year(), m = from.month();
    switch (mode) {
        case 1:
            ++y;
            break;
        case 2:
            --y;
            break;
        case 3:
            if (--m < 1) m = 12, --y;
            break;
        case 4:
            if (++m > 12) m = 1, ++y;
            break;
        default:
            return std::nullopt;
    }
    if (y < kCalendarFirst.year() || y > kCalendarLast.year()) return std::nullopt;
    return moveToMonth(from, y, m);
}

}  // namespace dovrex
