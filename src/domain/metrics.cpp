#include "domain/metrics.h"

#include <array>
#include <bit>
#include <cstdint>
#include <cstdlib>
#include <stdexcept>

namespace dovrex {

int calc_KuaDu(const Reds& r) {
    int span = 0;
    for (int i = 1; i <= 6; ++i)
        for (int j = i + 1; j <= 6; ++j) span = std::max(span, std::abs(r[i] - r[j]));
    return span;
}

int calc_JianJuMax(const Reds& r) {
    int gap = 0;
    for (int i = 1; i <= 5; ++i) gap = std::max(gap, std::abs(r[i] - r[i + 1]));
    return gap;
}

int calc_AC(const Reds& r) {
    std::uint64_t seen = 0;  // bit d: some two reds differ by d
    for (int i = 1; i <= 6; ++i)
        for (int j = i + 1; j <= 6; ++j) {
            const int d = std::abs(r[i] - r[j]);
            if (d > 32) throw std::out_of_range("calc_AC: difference out of range");
            seen |= std::uint64_t(1) << d;
        }
    return std::popcount(seen) - 5;
}

int calc_LianHaoMax(const Reds& r) {
    // Code by longest * 7 + total, where total sums the runs of two or more.
    static const std::array<int, 49> table = [] {
        std::array<int, 49> t{};
        t[16] = 1;
        t[18] = 2;
        t[20] = 3;
        t[24] = 4;
        t[26] = 5;
        t[27] = 6;
        t[32] = 7;
        t[34] = 8;
        t[40] = 9;
        t[48] = 10;
        return t;
    }();
    std::uint64_t balls = 0;  // bit x: red x is drawn (1..33)
    for (int i = 1; i <= 6; ++i)
        if (r[i] >= 1 && r[i] <= 33) balls |= std::uint64_t(1) << r[i];
    int longest = 0, total = 0;
    // Each turn takes the lowest run of consecutive reds off the set.
    while (balls != 0) {
        const int start = std::countr_zero(balls);
        const int run = std::countr_one(balls >> start);
        balls &= ~(((std::uint64_t(1) << run) - 1) << start);
        if (run > longest) longest = run;
        if (run >= 2) total += run;
    }
    if (longest < 2) longest = total = 0;
    return table.at(size_t(longest * 7 + total));
}

int calc_CongDie(const Reds& prev, const Reds& r) {
    bool flag[34] = {};
    for (int i = 1; i <= 6; ++i) flag[prev[i]] = true;
    int n = 0;
    for (int i = 1; i <= 6; ++i) n += flag[r[i]];
    return n;
}

int calc_XieWeiMa(const Reds& prev, const Reds& r) {
    bool flag[35] = {};
    // An all-zero prev stands for "no earlier draw": its zeros flag nothing.
    for (int i = 1; i <= 6; ++i)
        if (prev[i] >= 1) flag[prev[i]] = true;
    int n = 0;
    for (int i = 1; i <= 6; ++i) {
        const int x = r[i];
        if (flag[x - 1])
            ++n;
        else if (flag[x + 1])
            ++n;
    }
    return n;
}

const QString& lianHaoText(int code) {
    static const QString texts[kLianHaoCodes] = {
        QStringLiteral("0"),   QStringLiteral("2"),   QStringLiteral("2+2"), QStringLiteral("2+2+2"),
        QStringLiteral("3"),   QStringLiteral("3+2"), QStringLiteral("3+3"), QStringLiteral("4"),
        QStringLiteral("4+2"), QStringLiteral("5"),   QStringLiteral("6")};
    return texts[code];
}

// gesTable5: index (m-1) + (g-1)*5 over 30 entries. "5,1" sits at index 4, (m, g) = (5, 1), where the
// pair (5, 2) would be 9: a draw with five balls in one group and one in another reads code 0.
int gesTable5Code(int m, int g) {
    static const std::array<int, 30> table = [] {
        std::array<int, 30> t{};
        t[25] = 0;
        t[21] = 1;
        t[16] = 2;
        t[11] = 3;
        t[17] = 4;
        t[12] = 5;
        t[7] = 6;
        t[13] = 7;
        t[8] = 8;
        t[4] = 9;
        return t;
    }();
    if (m < 1 || m > 5 || g < 1 || g > 6) throw std::out_of_range("gesTable5: pattern out of range");
    return table[size_t((m - 1) + (g - 1) * 5)];
}

int gesTable6Code(int m, int g) {
    static const std::array<int, 36> table = [] {
        std::array<int, 36> t{};
        t[19] = 0;
        t[13] = 1;
        t[20] = 2;
        t[14] = 3;
        t[8] = 4;
        t[15] = 5;
        t[9] = 6;
        t[10] = 7;
        t[5] = 8;
        return t;
    }();
    if (m < 1 || m > 6 || g < 1 || g > 6) throw std::out_of_range("gesTable6: pattern out of range");
    return table[size_t((m - 1) + (g - 1) * 6)];
}

const QString& gesTable5Text(int code) {
    static const QString texts[kGesTable5Keys] = {QStringLiteral("1,1,1,1,1,1"), QStringLiteral("2,1,1,1,1"),
                                                  QStringLiteral("2,2,1,1"),     QStringLiteral("2,2,2"),
                                                  QStringLiteral("3,1,1,1"),     QStringLiteral("3,2,1"),
                                                  QStringLiteral("3,3"),         QStringLiteral("4,1,1"),
                                                  QStringLiteral("4,2"),         QStringLiteral("5,1")};
    return texts[code];
}

const QString& gesTable6Text(int code) {
    static const QString texts[10] = {QStringLiteral("2,2,1,1"), QStringLiteral("2,2,2"),
                                      QStringLiteral("3,1,1,1"), QStringLiteral("3,2,1"),
                                      QStringLiteral("3,3"),     QStringLiteral("4,1,1"),
                                      QStringLiteral("4,2"),     QStringLiteral("5,1"),
                                      QStringLiteral("6"),       QString()};
    return texts[code];
}

}  // namespace dovrex
