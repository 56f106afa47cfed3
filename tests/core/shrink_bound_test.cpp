#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <map>
#include <random>

#include "pipeline/cover_bound.h"
#include "pipeline/shrink.h"
#include "pipeline/shrink_optimise.h"
#include "pipeline/ssgs_formulas.h"

namespace dovrex::test {
namespace {

// A covering of at most 64 tickets as bit sets, for a search that trusts nothing of the code
// under test: the first ticket left uncovered must be covered by one of its neighbours, so
// trying each of them, deepening one ticket at a time, finds the true minimum.
struct SmallCover {
    std::vector<std::uint64_t> masks;
    CoverProblem problem;
    std::vector<std::uint64_t> covers;  // ticket -> the tickets owed the guarantee it covers

    void prepare() {
        problem.masks = &masks;
        covers.assign(masks.size(), 0);
        for (size_t c = 0; c < masks.size(); ++c)
            for (size_t u = 0; u < masks.size(); ++u)
                if (problem.mustCover[u] && std::popcount(masks[c] & masks[u]) >= problem.t)
                    covers[c] |= std::uint64_t(1) << u;
    }
    std::uint64_t owed() const {
        std::uint64_t m = 0;
        for (size_t u = 0; u < masks.size(); ++u)
            if (problem.mustCover[u]) m |= std::uint64_t(1) << u;
        return m;
    }
    bool deepen(std::uint64_t left, int depth) const {
        if (left == 0) return true;
        if (depth == 0) return false;
        const int u = std::countr_zero(left);
        for (size_t c = 0; c < masks.size(); ++c)
            if (problem.mayKeep[c] && (covers[c] >> u & 1) && deepen(left & ~covers[c], depth - 1))
                return true;
        return false;
    }
    int minimum() const {
        std::uint64_t left = owed();
        for (int f : problem.fixed) left &= ~covers[size_t(f)];
        int extra = 0;
        while (!deepen(left, extra)) ++extra;
        return int(problem.fixed.size()) + extra;
    }
    bool valid(const std::vector<int>& kept) const {
        std::uint64_t left = owed();
        for (int k : kept) left &= ~covers[size_t(k)];
        for (int f : problem.fixed)
            if (!std::count(kept.begin(), kept.end(), f)) return false;
        return left == 0;
    }
};

// Random sets of 12..60 tickets over a few balls, at t 3..6; some draw from two pools of balls
// no ticket shares (parts covered apart), some carry tickets not owed the guarantee or kept
// whatever happens.
SmallCover randomCover(std::mt19937& random, int round) {
    SmallCover s;
    s.problem.t = 3 + round % 4;
    const int n = 12 + int(random() % 49);
    const bool twoPools = round % 3 == 1;
    while (int(s.masks.size()) < n) {
        const int pool = twoPools ? int(random() % 2) : 0;
        Reds reds{};
        std::uint32_t picked = 0;
        for (int k = 1; k <= 6; ++k) {
            int r;
            do r = 1 + pool * 16 + int(random() % 9);
            while (picked >> r & 1);
            picked |= 1u << r;
            reds[size_t(k)] = r;
        }
        const std::uint64_t m = ballMask(reds, 1 + pool * 8 + int(random() % 2));
        if (std::find(s.masks.begin(), s.masks.end(), m) != s.masks.end()) continue;
        s.masks.push_back(m);
        const bool owed = round % 5 != 4 || random() % 6 != 0;
        s.problem.mustCover.push_back(owed);
        s.problem.mayKeep.push_back(owed);
    }
    if (round % 7 == 6) s.problem.fixed = {0, 1};
    s.prepare();
    return s;
}

// Every bound is at most the true minimum; the exhaustive search and the optimiser, given the
// time, reach it and say so; what they keep covers.
TEST(ShrinkBound, BoundsAndProofsAgreeWithTheTrueMinimum) {
    std::mt19937 random(32);
    int tight = 0;
    for (int round = 0; round < 60; ++round) {
        const SmallCover s = randomCover(random, round);
        const int minimum = s.minimum();
        NeighbourIndex index(s.masks, s.problem.t);
        const CoverBound bound = lowerBound_SuoShui(s.problem, index);
        EXPECT_LE(bound.value(), minimum) << "round " << round;
        tight += bound.value() == minimum;

        std::vector<int> all;
        for (int i = 0; i < int(s.masks.size()); ++i) all.push_back(i);
        const ExactCover exact = exact_SuoShui(s.problem, index, all);
        EXPECT_TRUE(exact.proven) << round;
        EXPECT_EQ(int(exact.kept.size()), minimum) << round;
        EXPECT_TRUE(s.valid(exact.kept)) << round;

        const ShrinkScan plain = scan_SuoShui(s.masks, std::vector<int>(s.masks.size(), 0), s.problem.t);
        const OptimiseResult r = optimise_Cover(s.problem, s.problem.fixed.empty() ? plain.kept : all, 20000);
        EXPECT_TRUE(s.valid(r.kept)) << round;
        EXPECT_LE(r.bound, minimum) << round;
        EXPECT_EQ(int(r.kept.size()), minimum) << round;
        EXPECT_TRUE(r.optimal) << round;
        EXPECT_EQ(r.end, OptimiseEnd::Proven) << round;
    }
    EXPECT_GT(tight, 10) << "the bound alone proves some minima";
}

std::vector<std::uint64_t> completeSet(int drags, int blues) {
    std::vector<std::uint64_t> out;
    for (std::uint32_t m = 0; m < (1u << drags); ++m) {
        if (std::popcount(m) != 6) continue;
        Reds reds{};
        int k = 0;
        for (int b = 0; b < drags; ++b)
            if (m >> b & 1) reds[size_t(++k)] = b + 1;
        for (int blue = 1; blue <= blues; ++blue) out.push_back(ballMask(reds, blue));
    }
    return out;
}

CoverProblem wholeProblem(const std::vector<std::uint64_t>& masks, int t) {
    CoverProblem p;
    p.masks = &masks;
    p.t = t;
    p.mustCover.assign(masks.size(), 1);
    p.mayKeep.assign(masks.size(), 1);
    return p;
}

// The optimiser on random parts of an eleven-drag, two-blue set: the guarantee holds, the
// kept-whole tickets stay, it never keeps more than the plain scan and keeps fewer overall, and a
// Stop at once still returns a valid set.
TEST(ShrinkOptimise, KeepsTheGuaranteeWithNoMoreTicketsThanThePlainScan) {
    std::mt19937 random(11);
    const std::vector<std::uint64_t> all = completeSet(11, 2);
    int plainTotal = 0, optimisedTotal = 0;
    for (int round = 0; round < 9; ++round) {
        const int t = 4 + round % 3;
        std::vector<std::uint64_t> masks, owed;
        std::vector<int> marks;
        for (std::uint64_t m : all)
            if (random() % 3 != 0) {
                masks.push_back(m);
                marks.push_back(random() % 40 == 0 ? -1 : 0);
                if (marks.back() == 0) owed.push_back(m);
            }
        const int keptWhole = round % 3 == 2 ? 5 : 0;
        const ShrinkScan plain = scan_SuoShui(masks, marks, t, {}, keptWhole);
        CoverProblem problem = wholeProblem(masks, t);
        for (size_t i = 0; i < marks.size(); ++i) problem.mustCover[i] = problem.mayKeep[i] = marks[i] >= 0;
        for (int i = 0; i < keptWhole; ++i) problem.fixed.push_back(i);
        const auto stopAtOnce = [](const CoverProgress&) { return true; };
        for (const auto& kept : {optimise_SuoShui(problem, plain.kept, 100),
                                 optimise_SuoShui(problem, plain.kept, 100, stopAtOnce)}) {
            EXPECT_LE(kept.size(), plain.kept.size()) << "round " << round;
            std::vector<std::uint64_t> keptMasks;
            for (int i : kept) keptMasks.push_back(masks[size_t(i)]);
            EXPECT_TRUE(uncovered_Tickets(owed, keptMasks, t).empty()) << "round " << round;
            for (int i = 0; i < keptWhole; ++i) EXPECT_TRUE(std::count(kept.begin(), kept.end(), i)) << round;
        }
        plainTotal += int(plain.kept.size());
        optimisedTotal += int(optimise_SuoShui(problem, plain.kept, 100).size());
    }
    EXPECT_LT(optimisedTotal, plainTotal);
}

// The report counts each original ticket by its best match with a kept one.
TEST(ShrinkOptimise, CoverageReportCountsTheBestMatch) {
    const Reds a{0, 1, 2, 3, 4, 5, 6}, b{0, 1, 2, 3, 4, 5, 7}, c{0, 1, 2, 3, 4, 9, 10};
    const std::vector<std::uint64_t> original{ballMask(a, 1), ballMask(a, 2), ballMask(b, 2), ballMask(c, 3)};
    EXPECT_EQ(coverage_Line(coverage_Report(original, {ballMask(a, 1)})),
              QStringLiteral("若开奖号码在过滤后的 4 注之中: 中7球 1 注 (25.0%), 中6球 1 注 "
                             "(25.0%), 中5球 1 注 (25.0%), 中4球 1 注 (25.0%)"));
}

// On complete sets: it ends well before a long budget and says why; with several blues it keeps
// no more than the one-blue cover repeated; the bound of a complete set is its count bound.
TEST(ShrinkBound, CompleteSetsEndEarlyAndUseTheBlues) {
    struct Case {
        int drags, blues, t, bound;
    };
    // clang-format off
    const Case cases[] = {
        {10, 1, 5, 2},  // 210 sixes, 1 + 24 + 90 neighbours sharing four reds: 210 / 115
        {10, 2, 4, 2},
        {9, 3, 5, 3},
    };
    // clang-format on
    for (const Case& c : cases) {
        const auto masks = completeSet(c.drags, c.blues);
        const auto one = completeSet(c.drags, 1);
        const OptimiseResult oneBlue = optimise_Cover(wholeProblem(one, c.t), {}, 5000);
        std::vector<int> all;
        for (int i = 0; i < int(masks.size()); ++i) all.push_back(i);
        const OptimiseResult r = optimise_Cover(wholeProblem(masks, c.t), all, 10000);
        EXPECT_NE(r.end, OptimiseEnd::TimeLimit) << c.drags << "x" << c.blues;
        EXPECT_LT(r.elapsedMs, 10000) << c.drags << "x" << c.blues;
        EXPECT_GE(r.bound, c.bound) << c.drags << "x" << c.blues;
        EXPECT_LE(r.bound, int(r.kept.size()));
        if (c.blues > 1) EXPECT_LE(r.kept.size(), oneBlue.kept.size() * size_t(c.blues));
    }
}

// No shipped formula grows: a new search result replaces a formula only when it is no larger
// (their guarantee is checked in the formulas' own test).
TEST(ShrinkBound, FormulasAreNoLargerThanBefore) {
    // clang-format off
    const std::map<int, size_t> ceiling{{10, 14}, {11, 22}, {12, 38}, {13, 61}, {14, 98}, {15, 142},
                                        {16, 224}, {17, 336}, {18, 481}, {19, 676}, {20, 824}};
    // clang-format on
    SsgsFormulas formulas;
    ASSERT_TRUE(read_SsgsFile(QStringLiteral(DOVREX_SSGS_FILE), formulas));
    for (const auto& [drags, most] : ceiling) EXPECT_LE(formulas.value(drags).size(), most) << drags;
}

}  // namespace
}  // namespace dovrex::test
