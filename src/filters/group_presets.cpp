// 常用分组: fills a custom group with one of the usual number sets.

#include <QStringList>
#include <array>
#include <vector>

#include "filters/filter_families.h"
#include "history/history_queries.h"
#include "screen/shared_state.h"
#include "store/store.h"

namespace dovrex {

namespace {

const QString kSeparator = QStringLiteral("---");

QString plainDigits(QString text) {
    for (QChar& c : text)
        if (c.unicode() >= 0xFF10 && c.unicode() <= 0xFF19) c = QChar(u'0' + (c.unicode() - 0xFF10));
    return text;
}

int digitAt(const QString& text, int i) {
    return i < text.size() && text[i].isDigit() ? text[i].digitValue() : -1;
}

using NumberSet = std::array<bool, 34>;

// The reds of the newest draws, newest first.
std::vector<Reds> latestDraws(int n) {
    std::vector<Reds> out;
    auto c = store_Query(QStringLiteral("select TOP %1 红球1,红球2,红球3,红球4,红球5,红球6 from 历史记录 "
                                        "order by 期号 DESC")
                             .arg(n));
    for (; !c->eof() && int(out.size()) < n; c->moveNext()) {
        Reds r{};
        for (int i = 1; i <= 6; ++i) r[size_t(i)] = c->intValue(i - 1);
        out.push_back(r);
    }
    return out;
}

NumberSet setOf(const Reds& r) {
    NumberSet s{};
    for (int i = 1; i <= 6; ++i)
        if (r[size_t(i)] >= 1 && r[size_t(i)] <= kRedCount) s[size_t(r[size_t(i)])] = true;
    return s;
}

bool nextTo(const NumberSet& s, int n) {
    return (n > 1 && s[size_t(n - 1)]) || (n < kRedCount && s[size_t(n + 1)]);
}

}  // namespace

QStringList listGroupPresets() {
    const QString issue = to_QuanJiao(latest_QiHao());
    QStringList items{QStringLiteral("奇数号码"), QStringLiteral("偶数号码"), kSeparator};
    for (const char16_t* tail :
         {u"期旧码(复码)", u"期斜码", u"期孤码", u"期新码(中码)", u"期跳码(隔码)", u"期旧码尾数"})
        items << issue + QString::fromUtf16(tail);
    items << kSeparator;
    for (int b = 0; b < 3; ++b) items << QStringLiteral("除3余%1(%1路)").arg(b);
    items << kSeparator;
    for (int d = 0; d <= 9; ++d) items << to_QuanJiao(d) + QStringLiteral("_尾");
    for (int a = 4; a <= 6; ++a) {
        items << kSeparator;
        for (int b = 0; b < a; ++b) items << QStringLiteral("除%1余%2").arg(a).arg(b);
    }
    return items;
}

bool makeGroupPreset(int k, const QString& item) {
    if (k < 1 || k > 20) return false;
    const QString text = plainDigits(item.trimmed());
    NumberSet set{};
    auto fill = [&set](const std::function<bool(int)>& member) {
        for (int n = 1; n <= kRedCount; ++n) set[size_t(n)] = member(n);
    };
    auto needDraws = [](int n, const QString& message, std::vector<Reds>& draws) {
        draws = latestDraws(n);
        if (int(draws.size()) >= n) return true;
        screen().ui_Message(message);
        return false;
    };
    const QString lastMissing = QStringLiteral("无法提取上期开奖号码！");
    std::vector<Reds> draws;
    if (text.contains(u'除') && text.contains(u'余')) {
        const int a = digitAt(text, 1), b = digitAt(text, 3);
        if (a <= 0 || b < 0) return false;
        fill([a, b](int n) { return n % a == b; });
    } else if (text == u"奇数号码") {
        fill([](int n) { return n % 2 == 1; });
    } else if (text == u"偶数号码") {
        fill([](int n) { return n % 2 == 0; });
    } else if (text.contains(QStringLiteral("(复码)"))) {
        if (!needDraws(1, lastMissing, draws)) return false;
        set = setOf(draws[0]);
    } else if (text.contains(QStringLiteral("期斜码"))) {
        if (!needDraws(1, lastMissing, draws)) return false;
        const NumberSet last = setOf(draws[0]);
        fill([&last](int n) { return !last[size_t(n)] && nextTo(last, n); });
    } else if (text.contains(QStringLiteral("期孤码"))) {
        if (!needDraws(1, lastMissing, draws)) return false;
        const NumberSet last = setOf(draws[0]);
        fill([&last](int n) { return !last[size_t(n)] && !nextTo(last, n); });
    } else if (text.contains(QStringLiteral("(中码)"))) {
        if (!needDraws(2, QStringLiteral("无法提取最近2期的开奖号码！"), draws)) return false;
        const NumberSet a = setOf(draws[0]), b = setOf(draws[1]);
        fill([&a, &b](int n) { return !a[size_t(n)] && !b[size_t(n)]; });
    } else if (text.contains(QStringLiteral("(隔码)"))) {
        if (!needDraws(2, QStringLiteral("无法提取上上期开奖号码！"), draws)) return false;
        set = setOf(draws[1]);
    } else if (text.contains(QStringLiteral("旧码尾数"))) {
        if (!needDraws(1, lastMissing, draws)) return false;
        std::array<bool, 10> tails{};
        for (int i = 1; i <= 6; ++i) tails[size_t(draws[0][size_t(i)] % 10)] = true;
        fill([&tails](int n) { return tails[size_t(n % 10)]; });
    } else if (text.contains(QStringLiteral("_尾"))) {
        const int d = digitAt(text, 0);
        if (d < 0) return false;
        fill([d](int n) { return n % 10 == d; });
    } else {
        return false;
    }

    Transaction tx(store());
    const QString column = QStringLiteral("自定义组%1").arg(k);
    for (int n = 1; n <= kRedCount; ++n)
        store_Execute(QStringLiteral("UPDATE 号码特性 SET [%1]=? WHERE 号码=?").arg(column),
                      {set[size_t(n)] ? 1 : 0, n});
    store_Execute(QStringLiteral("UPDATE 自定义别名 SET 别名=? WHERE 序号=?"), {item, k});
    return true;
}

}  // namespace dovrex
