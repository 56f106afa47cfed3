#include "domain/date_value.h"

#include <QRegularExpression>
#include <cmath>
#include <optional>

namespace dovrex {

namespace {
const QDate kEpoch(1899, 12, 30);
QDate g_fixedToday;
}  // namespace

DateValue toDateValue(const QDate& date) {
    return double(kEpoch.daysTo(date));
}

QDate toQDate(DateValue value) {
    return kEpoch.addDays(qint64(std::floor(value)));
}

QString dateText(DateValue value) {
    return dateText(toQDate(value));
}

QString dateText(const QDate& date) {
    return date.toString(QStringLiteral("yyyy/MM/dd"));
}

std::optional<DateValue> parseDateText(const QString& text) {
    static const QRegularExpression re(
        QStringLiteral(R"(^\s*(\d{1,4})[/\-.](\d{1,2})[/\-.](\d{1,2})(\s.*)?$)"));
    const auto m = re.match(text);
    if (!m.hasMatch()) return std::nullopt;
    const QDate d(m.captured(1).toInt(), m.captured(2).toInt(), m.captured(3).toInt());
    if (!d.isValid()) return std::nullopt;
    return toDateValue(d);
}

QDate Clock::today() {
    return g_fixedToday.isValid() ? g_fixedToday : QDate::currentDate();
}
void Clock::setToday(const QDate& date) {
    g_fixedToday = date;
}
void Clock::useSystemClock() {
    g_fixedToday = QDate();
}

}  // namespace dovrex
