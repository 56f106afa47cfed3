#include "domain/record_checks.h"

#include "domain/condition_catalogue.h"
#include "domain/date_value.h"

namespace dovrex {

namespace {
constexpr int kShownPositions = 5;
}  // namespace

QDate firstDrawDate() {
    return QDate(kFirstDrawYear, 2, 23);
}

bool issueCanExist(long long issue) {
    const long long year = issue / 1000, number = issue % 1000;
    return issue > 0 && year >= kFirstDrawYear && year <= Clock::today().year() + 1 && number >= 1 &&
           number <= kIssuesPerYearMax;
}

QString issueFault(long long issue) {
    if (issueCanExist(issue)) return {};
    return QStringLiteral("期号 %1 不存在（应为 %2 年至 %3 年的第 001 至 %4 期）")
        .arg(issue)
        .arg(kFirstDrawYear)
        .arg(Clock::today().year() + 1)
        .arg(kIssuesPerYearMax);
}

QString ticketFault(const Reds& reds, int blue, long long issue) {
    bool seen[kRedCount + 1] = {};
    for (int k = 1; k <= kRedsPerTicket; ++k) {
        const int red = reds[size_t(k)];
        if (red < 1 || red > kRedCount) return QStringLiteral("红球 %1 不在 1-33 之间").arg(red);
        if (seen[red]) return QStringLiteral("红球 %1 重复").arg(red);
        seen[red] = true;
    }
    if (blue < 1 || blue > kBlueCount) return QStringLiteral("蓝球 %1 不在 1-16 之间").arg(blue);
    return issueFault(issue);
}

QString drawFault(const Reds& reds, int blue, long long issue, const QDate& date) {
    if (QString fault = ticketFault(reds, blue, issue); !fault.isEmpty()) return fault;
    if (!date.isValid()) return QStringLiteral("开奖日期无效");
    if (date.year() != issue / 1000)
        return QStringLiteral("开奖日期 %1 不在期号 %2 的年份").arg(dateText(date)).arg(issue);
    if (date < firstDrawDate() || date > Clock::today())
        return QStringLiteral("开奖日期 %1 不在 %2 至今天之间")
            .arg(dateText(date), dateText(firstDrawDate()));
    return {};
}

bool conditionValueRange(int id, int& low, int& high) {
    low = 0;
    high = 1;
    const bool pick = (id >= 1 && id <= 38) || (id > 100 && id <= 100 + kBlueCount);
    const bool parity = id >= kParityRowsFirstId && id <= kParityRowsLastId && id % 10 >= 1 && id % 10 <= 7;
    if (pick || parity) {
        high = 2;  // none, drag, banker; or 双, 单, *
        return true;
    }
    switch (id) {
        case kShrinkTypeId:
            high = 7;  // 0 before a type is chosen, else 3..7 (see conditionValueFits)
            return true;
        case kToleranceId:
            high = 7;
            return true;
        case kFilterToleranceId:
            high = kFilterToleranceMax;
            return true;
        case kShrinkBudgetId:
            high = kShrinkBudgetMax;
            return true;
        default:
            break;
    }
    for (const auto& [lo, hi] : conditionIdRanges())
        if (id >= lo && id <= hi) return true;
    return false;
}

bool conditionValueFits(int id, long long value) {
    int low = 0, high = 0;
    if (!conditionValueRange(id, low, high) || value < low || value > high) return false;
    return id != kShrinkTypeId || value == 0 || value >= 3;
}

void RefusedRecords::add(long long position) {
    ++count_;
    if (first_.size() < kShownPositions) first_ << position;
}

void RefusedRecords::add(const RefusedRecords& more) {
    count_ += more.count_;
    for (long long p : more.first_)
        if (first_.size() < kShownPositions) first_ << p;
}

QString RefusedRecords::text() const {
    if (count_ == 0) return {};
    QStringList positions;
    for (long long p : first_) positions << QString::number(p);
    return QStringLiteral("已拒绝 %1 %2：第 %3 %2%4")
        .arg(count_)
        .arg(unit_, positions.join(u'、'), count_ > first_.size() ? QStringLiteral(" …") : QString());
}

}  // namespace dovrex
