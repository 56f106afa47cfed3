#include "history/history_queries.h"

#include <QStringList>
#include <cmath>

#include "screen/shared_state.h"
#include "store/schema.h"
#include "store/store.h"

namespace dovrex {

namespace {
// The last row of a result, or the fallback when there is none.
IssueNumber lastIssueOr(const QString& sql, IssueNumber fallback) {
    auto c = store_Query(sql);
    if (c->recordCount() == 0) return fallback;
    c->moveLast();
    return c->intValue(0);
}
}  // namespace

IssueNumber latest_QiHao() {
    return lastIssueOr(QStringLiteral("select TOP 1 期号 from 历史记录 order by 期号 DESC"), kFallbackIssue);
}

IssueNumber earliest_QiHao() {
    auto c = store_Query(QStringLiteral("select TOP 1 期号  from 历史记录 order by 期号 asc"));
    if (c->recordCount() == 0) return c->recordCount();
    return c->intValue(0);
}

IssueNumber top_QiHao(IssueNumber x, int n) {
    return lastIssueOr(
        QStringLiteral("select TOP %1 期号 from 历史记录 where 期号<=%2 order by 期号 DESC").arg(n).arg(x),
        kFallbackIssue);
}

IssueNumber prev_QiHao(IssueNumber x, int n) {
    return lastIssueOr(
        QStringLiteral("select top %1  期号 from 历史记录 where 期号<%2 order by 期号 desc").arg(n).arg(x),
        kFallbackIssue);
}

IssueNumber next_QiHao_n(IssueNumber x, int n) {
    auto c = store_Query(
        QStringLiteral("select top %1  期号 from 历史记录 where 期号>%2 order by 期号 asc").arg(n).arg(x));
    if (c->recordCount() == 0) return latest_QiHao();
    c->moveLast();
    return c->intValue(0);
}

DateValue latest_KaiJiangRi() {
    auto c = store_Query(QStringLiteral("select 开奖日期 from 历史记录 order by 开奖日期 asc"));
    if (c->recordCount() == 0) return kFallbackDate;
    c->moveLast();
    return c->value(0).toDouble();
}

int calc_WeekDay(DateValue date) {
    const qint64 days = QDate(2000, 1, 2).daysTo(toQDate(date));
    return int(((days % 7) + 7) % 7);
}

DateValue next_KaiJiangRi(const std::array<bool, 7>& flags, DateValue date) {
    DateValue day = std::floor(date);
    for (int i = 0; i < 7; ++i) {
        day += 1;
        if (flags[size_t(calc_WeekDay(day))]) return day;
    }
    return day + 1;
}

IssueNumber next_QiHao(const QDate& pickerDate) {
    const IssueNumber latest = latest_QiHao();
    const int year = toQDate(latest_KaiJiangRi()).year();
    if (year > latest / 1000) return pickerDate.year() * 1000 + 1;
    return latest + 1;
}

int getHistoryRecord(HistoryArray& array, IssueNumber issue) {
    const IssueNumber to = top_QiHao(issue, 1);
    const IssueNumber from = top_QiHao(issue, 10);
    auto c =
        store_Query(QStringLiteral("select 期号,红球1,红球2,红球3,红球4,红球5,红球6,蓝球 from 历史记录 where "
                                   "期号>=%1 and 期号<=%2 order by 期号 asc")
                        .arg(from)
                        .arg(to));
    int row = 10;
    for (; !c->eof() && row >= 1; c->moveNext(), --row)
        for (int k = 1; k <= 7; ++k) array[size_t(row)][size_t(k)] = short(c->intValue(k));
    return c->recordCount();
}

int missing_DrawCount(const std::array<bool, 7>& flags, DateValue latest, const QDate& today) {
    int missing = 0;
    // Capped at some twenty years of draws, so that a date far off never loops long.
    for (DateValue d = next_KaiJiangRi(flags, latest); toQDate(d) < today && missing < 3000;
         d = next_KaiJiangRi(flags, d))
        ++missing;
    return missing;
}

QString prizeTableText(IssueNumber issue) {
    createPrizeSchema(store());  // a store older than the table has no prizes yet
    std::array<qint64, 7> winners{}, prize{};
    winners.fill(-1);
    prize.fill(-1);
    for (auto c = store_Query(QStringLiteral("SELECT 奖级, 注数, 奖金 FROM 奖级奖金 WHERE 期号=?"), {issue});
         !c->eof(); c->moveNext()) {
        const int tier = c->intValue(0);
        if (tier < 1 || tier > 6) continue;
        if (!c->value(1).isNull()) winners[size_t(tier)] = c->value(1).toLongLong();
        if (!c->value(2).isNull() && c->value(2).toLongLong() > 0)
            prize[size_t(tier)] = c->value(2).toLongLong();
    }
    QStringList parts;
    for (int tier = 1; tier <= 6; ++tier) {
        const qint64 money = prize[size_t(tier)] >= 0 ? prize[size_t(tier)] : kFixedPrize[size_t(tier)];
        QString part = prizeTierName(tier) + QStringLiteral("：");
        if (winners[size_t(tier)] >= 0)
            part += QString::number(winners[size_t(tier)]) + QStringLiteral(" 注 ");
        part += money >= 0 ? QString::number(money) + QStringLiteral(" 元") : QStringLiteral("奖金未知");
        parts << part;
    }
    return QString::number(issue) + QStringLiteral(" 期奖金　") + parts.join(QStringLiteral("　"));
}

QList<IssueNumber> issues_NewestFirst() {
    QList<IssueNumber> issues;
    for (auto c = store_Query(QStringLiteral("select 期号 from 历史记录 order by 期号 desc")); !c->eof();
         c->moveNext())
        issues << c->intValue(0);
    return issues;
}

IssueChoice fill_QiShuZuhe(int n) {
    IssueChoice choice;
    for (auto c = store_Query(QStringLiteral("select TOP %1 期号 from 历史记录  order by 期号 DESC").arg(n));
         !c->eof(); c->moveNext())
        choice.items << QString::number(c->intValue(0));
    choice.text = choice.items.isEmpty() ? QString::number(earliest_QiHao()) : choice.items.first();
    return choice;
}

std::shared_ptr<Cursor> open_CountColumns() {
    return store_Query(QStringLiteral(
        "select 期号,奇数个数,偶数个数,大数个数,小数个数,低尾码个数,高尾码个数,区间1,区间2,区间3,区间4 "
        "from 历史记录 order by 期号 desc"));
}

}  // namespace dovrex
