#include <gtest/gtest.h>

#include <cmath>

#include "analysis/probability.h"
#include "support/table_rows.h"
#include "support/test_support.h"

namespace dovrex {
namespace {

TEST(UniformRandom, ReseedIsAPureFunctionOfTheSeedAndValuesAreInRange) {
    UniformRandom a, b;
    for (int i = 0; i < 100; ++i) b();  // whatever ran before
    double sum = 0;
    int distinct = 0;
    float previous = -1;
    for (std::int32_t seed = -1; seed > -20001; --seed) {
        const float u = a(seed);
        EXPECT_EQ(u, b(seed));
        EXPECT_EQ(u, UniformRandom::firstAfter(seed));
        ASSERT_TRUE(u >= 0.0f && u < 1.0f) << u;
        sum += u;
        if (u != previous) ++distinct;
        previous = u;
    }
    EXPECT_NEAR(sum / 20000, 0.5, 0.01);
    EXPECT_GT(distinct, 19900);
    // After a reseed the stream goes on from it; zero repeats the last value.
    const float first = a(-7), second = a();
    EXPECT_EQ(a(0), second);
    EXPECT_EQ(a(-7), first);
    EXPECT_EQ(a(), second);
}

TEST(CaiPiaoSampler, NumbersDependOnTheSeedSumOnly) {
    CaiPiao c;
    int seen[34] = {};
    for (int t = 2; t < 2000; ++t) {
        const int r = c.rnd_HongQiu(t, 2024050);
        ASSERT_TRUE(r >= 1 && r <= 33) << r;
        ++seen[r];
        EXPECT_EQ(r, c.rnd_HongQiu(t + 5, 2024045));
        const int b = c.rnd_LanQiu(t, 2024050);
        ASSERT_TRUE(b >= 1 && b <= 16) << b;
    }
    for (int n = 1; n <= 33; ++n) EXPECT_GT(seen[n], 20) << n;
    EXPECT_EQ(c.KillCOUNT(5), 0);  // no history given: nothing is counted
    EXPECT_EQ(c.KillCOUNT(34), -1);
    EXPECT_EQ(c.KillCOUNTblue(17), -1);
}

class ProbabilityShipped : public test::ShippedStoreTest {
  protected:
    struct Run {
        GaiLvBiaoJi marks;
        QList<QVariantList> table;
    };
    Run analyse(const QString& answer) {
        ui().answerText(answer);
        cmd_FX_Click();
        return {gaiLvBiaoJi(),
                test::queryRows(store(),
                                QStringLiteral("select 号码,红球,蓝球,红开,蓝开 from 概率表 order by 号码"))};
    }
    static int count(const auto& flags) { return int(std::count(flags.begin(), flags.end(), true)); }
};

TEST_F(ProbabilityShipped, RepeatedRunsGiveTheSameMarks) {
    analyse(QStringLiteral("2026050"));  // the first run ranks the reds by the 红开 left before
    const Run second = analyse(QStringLiteral(" 2026050xyz "));
    const Run third = analyse(QStringLiteral("2026050"));
    EXPECT_EQ(std::pair(second.marks.red, second.marks.blue), std::pair(third.marks.red, third.marks.blue));
    EXPECT_EQ(second.table, third.table);
    EXPECT_EQ(third.marks.issue, 2026050);
    EXPECT_EQ(count(third.marks.red), 8);
    EXPECT_TRUE(count(third.marks.blue) >= 1 && count(third.marks.blue) <= 6) << count(third.marks.blue);

    // The marked reds are the eight highest counts, ties to 红开 then the lower number.
    std::vector<QVariantList> rows(third.table.begin(), third.table.end());
    std::stable_sort(rows.begin(), rows.end(), [](const QVariantList& a, const QVariantList& b) {
        if (a[1].toInt() != b[1].toInt()) return a[1].toInt() > b[1].toInt();
        return a[3].toInt() > b[3].toInt();
    });
    for (int i = 0; i < 8; ++i) EXPECT_TRUE(third.marks.red[size_t(rows[size_t(i)][0].toInt())]) << i;

    // 红开 counts the ten draws before the issue (2026040 .. 2026049).
    int recount = 0;
    auto c = store_Query(QStringLiteral(
        "select 红球1,红球2,红球3,红球4,红球5,红球6 from 历史记录 where 期号>=2026040 and 期号<=2026049"));
    for (c->moveFirst(); !c->eof(); c->moveNext())
        for (int i = 0; i < 6; ++i) recount += c->intValue(i) == 7 ? 1 : 0;
    EXPECT_EQ(third.table[6][3].toInt(), recount);

    // The buttons were disabled for the run and the status cleared after it.
    EXPECT_EQ(ui().linesStartingWith(QStringLiteral("SET cmd_FX.enabled")).last(),
              QStringLiteral("SET cmd_FX.enabled = true"));
    EXPECT_EQ(ui().lastStatus(1), QString());
}

TEST_F(ProbabilityShipped, MarkedNumbersAreQuestionedOnlyWhenUnpicked) {
    analyse(QStringLiteral("2026050"));
    int marked = 0;
    for (int n = 1; n <= 33 && !marked; ++n)
        if (gaiLv_IsMarked(n)) marked = n;
    ASSERT_GT(marked, 0);
    EXPECT_EQ(gaiLv_WarningText(marked),
              QStringLiteral("根据概率统计,号码 ") + to_QuanJiao(twoDigits(marked)) +
                  QStringLiteral(" 在２０２６０５０期中开出的机率很低！确实想要选取这个号码吗？\r\n\r\n"
                                 "[注意,此概率算法以历史开奖记录为依据来分析,请确保历史记录的完整及正确！]"));
    ui().clear();
    ui().answerConfirm(false);
    EXPECT_FALSE(gaiLv_ConfirmPick(marked, 0));
    EXPECT_TRUE(gaiLv_ConfirmPick(marked, 1));  // already picked: no question
    EXPECT_EQ(ui().linesStartingWith(QStringLiteral("CONFIRM")).size(), 1);
}

TEST_F(ProbabilityShipped, CancelledAnswerRunsNothing) {
    analyse(QString());
    EXPECT_EQ(gaiLvBiaoJi().issue, 0);
    EXPECT_EQ(count(gaiLvBiaoJi().red), 0);
}

class ProbabilityEmpty : public test::FreshStoreTest {};

TEST_F(ProbabilityEmpty, EmptyHistoryStillMarksEightReds) {
    calc_HongQiuGaiLv(2026001, 8);
    for (int n = 1; n <= 33; ++n) EXPECT_EQ(gaiLvBiaoJi().red[size_t(n)], n <= 8) << n;
}

}  // namespace
}  // namespace dovrex
