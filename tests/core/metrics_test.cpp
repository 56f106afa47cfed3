// The numbers measured on six reds, and the two shape tables.
#include <gtest/gtest.h>

#include "domain/game.h"
#include "domain/metrics.h"

namespace dovrex {
namespace {

Reds R(int a, int b, int c, int d, int e, int f) {
    return makeReds(a, b, c, d, e, f);
}

TEST(Metrics, SpanGapAcAndRunsOfWorkedDraws) {
    // {gap, AC, span, runs}: 12 distinct differences give AC 7; 12 13 is the one run.
    const auto measures = [](const Reds& r) {
        return std::tuple(calc_JianJuMax(r), calc_AC(r), calc_KuaDu(r), calc_LianHaoMax(r));
    };
    EXPECT_EQ(measures(R(2, 8, 12, 13, 17, 26)), std::tuple(9, 7, 24, 1));
    for (int first : {1, 14, 28}) {
        const Reds six = R(first, first + 1, first + 2, first + 3, first + 4, first + 5);
        EXPECT_EQ(measures(six), std::tuple(1, 0, 5, 10)) << first;
        EXPECT_EQ(lianHaoText(calc_LianHaoMax(six)), QStringLiteral("6"));
    }
    const Reds odd = R(1, 3, 5, 7, 9, 11);
    EXPECT_EQ(calc_LianHaoMax(odd), 0);
    EXPECT_EQ(calc_AC(odd), 0);  // differences 2 4 6 8 10
    EXPECT_EQ(calc_AC(R(1, 2, 4, 8, 13, 33)), 10);
    // The gap follows the given order; a number out of range fails.
    for (const Reds& r : {R(1, 33, 2, 3, 4, 5), R(33, 1, 2, 3, 4, 5), R(5, 4, 3, 2, 1, 33)})
        EXPECT_EQ(calc_JianJuMax(r), 32) << r[1];
    EXPECT_EQ(calc_KuaDu(R(5, 4, 3, 2, 1, 33)), 32);
    EXPECT_THROW(calc_AC(R(1, 2, 3, 4, 5, 34)), std::out_of_range);
}

TEST(Metrics, RunPatternCodes) {
    // clang-format off
    const struct { Reds r; int code; const char* text; } cases[] = {
        {R(1, 2, 4, 5, 7, 8), 3, "2+2+2"},
        {R(1, 2, 3, 5, 6, 7), 6, "3+3"},
        {R(1, 2, 3, 4, 6, 7), 8, "4+2"},
        {R(1, 2, 3, 5, 6, 9), 5, "3+2"},
        {R(4, 9, 19, 20, 21, 26), 4, "3"},
        {R(1, 2, 3, 4, 5, 9), 9, "5"},
        {R(1, 2, 5, 6, 20, 30), 2, "2+2"},
        {R(1, 5, 9, 20, 32, 33), 1, "2"},
        {R(3, 7, 11, 20, 21, 22), 4, "3"},
        {R(1, 2, 30, 31, 32, 33), 8, "4+2"},  // a run that ends at 33 counts
        {R(1, 2, 3, 4, 10, 20), 7, "4"},
    };
    // clang-format on
    for (const auto& c : cases) {
        EXPECT_EQ(calc_LianHaoMax(c.r), c.code) << c.text;
        EXPECT_EQ(lianHaoText(c.code), QString::fromLatin1(c.text));
    }
    // The order of the array does not matter.
    EXPECT_EQ(calc_LianHaoMax(R(7, 2, 5, 1, 8, 4)), 3);
}

TEST(Metrics, RepeatAndDiagonalNumbers) {
    const Reds prev = R(7, 9, 15, 20, 30, 33);
    EXPECT_EQ(calc_CongDie(prev, R(7, 9, 15, 20, 30, 33)), 6);
    EXPECT_EQ(calc_CongDie(prev, R(1, 2, 3, 4, 5, 6)), 0);
    EXPECT_EQ(calc_CongDie(prev, R(1, 7, 3, 33, 5, 6)), 2);
    // 8 has both neighbours in prev: counted once.
    EXPECT_EQ(calc_XieWeiMa(prev, R(8, 1, 3, 5, 11, 13)), 1);
    // A number equal to one of prev does not count by that fact.
    EXPECT_EQ(calc_XieWeiMa(prev, R(15, 1, 3, 5, 11, 24)), 0);
    EXPECT_EQ(calc_XieWeiMa(prev, R(6, 8, 10, 14, 16, 32)), 6);
    // 1 reads flag 0 and 33 reads flag 34: both clear.
    EXPECT_EQ(calc_XieWeiMa(R(3, 5, 10, 20, 25, 31), R(1, 33, 12, 14, 16, 18)), 0);
    EXPECT_EQ(calc_XieWeiMa(R(2, 5, 10, 20, 25, 32), R(1, 33, 12, 14, 16, 18)), 2);
    EXPECT_EQ(calc_CongDie(Reds{}, R(1, 2, 3, 4, 5, 6)), 0);
    // An all-zero prev (no draw before) has no neighbours, not even for a 1.
    EXPECT_EQ(calc_XieWeiMa(Reds{}, R(1, 2, 5, 7, 9, 11)), 0);
}

TEST(ShapeTables, FiveAndSix) {
    // Five in one group and one in another: the table's slot holds 0.
    // clang-format off
    struct Case { int m, g; const char* text; };
    const Case five[] = {
        {1, 6, "1,1,1,1,1,1"}, {2, 5, "2,1,1,1,1"}, {2, 4, "2,2,1,1"}, {2, 3, "2,2,2"}, {3, 4, "3,1,1,1"},
        {3, 3, "3,2,1"}, {3, 2, "3,3"}, {4, 3, "4,1,1"}, {4, 2, "4,2"}, {5, 1, "5,1"}, {5, 2, "1,1,1,1,1,1"},
        {1, 1, "1,1,1,1,1,1"}};
    const Case six[] = {
        {2, 4, "2,2,1,1"}, {2, 3, "2,2,2"}, {3, 4, "3,1,1,1"}, {3, 3, "3,2,1"}, {3, 2, "3,3"},
        {4, 3, "4,1,1"}, {4, 2, "4,2"}, {5, 2, "5,1"}, {6, 1, "6"}, {1, 6, "2,2,1,1"}};
    // clang-format on
    for (const Case& c : five)
        EXPECT_EQ(gesTable5Text(gesTable5Code(c.m, c.g)), QString::fromLatin1(c.text)) << c.m << "," << c.g;
    for (const Case& c : six)
        EXPECT_EQ(gesTable6Text(gesTable6Code(c.m, c.g)), QString::fromLatin1(c.text)) << c.m << "," << c.g;
    EXPECT_THROW(gesTable5Code(6, 1), std::out_of_range);
    EXPECT_THROW(gesTable5Code(1, 7), std::out_of_range);
    EXPECT_TRUE(gesTable6Text(9).isEmpty());
}

TEST(GameText, FullWidthDigitsAndRounding) {
    EXPECT_EQ(to_QuanJiao(QStringLiteral("第2026001期 共12注")),
              QStringLiteral("第２０２６００１期 共１２注"));
    EXPECT_EQ(to_QuanJiao(-305), QStringLiteral("-３０５"));
    for (const auto& [x, rounded] : {std::pair{2.5, 2}, {3.5, 4}, {-2.5, -2}, {2.51, 3}})
        EXPECT_EQ(roundHalfEven(x), rounded) << x;
    EXPECT_EQ(twoDigits(7), QStringLiteral("07"));
}

}  // namespace
}  // namespace dovrex
