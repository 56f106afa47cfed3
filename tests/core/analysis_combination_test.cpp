#include <gtest/gtest.h>

#include <map>

#include "analysis/combination_omission.h"
#include "analysis/jindu.h"
#include "support/test_support.h"

namespace dovrex {
namespace {

struct Expected {
    int total = 0, qs = 0, pre = 0, longest = 0;
    double avg = 0;
};

// A plain recount over the draws: indices of the hits in the ordered history.
std::map<QString, Expected> recount(int size) {
    std::vector<quint64> draws;
    auto c =
        store_Query(QStringLiteral("select 红球1,红球2,红球3,红球4,红球5,红球6 from 历史记录 order by 期号"));
    for (c->moveFirst(); !c->eof(); c->moveNext()) {
        quint64 m = 0;
        for (int i = 0; i < 6; ++i) m |= quint64(1) << c->intValue(i);
        draws.push_back(m);
    }
    const int n = int(draws.size());
    std::map<QString, Expected> out;
    auto one = [&](std::initializer_list<int> g) {
        quint64 want = 0;
        QStringList name;
        for (int x : g) want |= quint64(1) << x, name << twoDigits(x);
        std::vector<int> hits;
        for (int i = 0; i < n; ++i)
            if ((draws[size_t(i)] & want) == want) hits.push_back(i);
        Expected e;
        e.total = int(hits.size());
        e.qs = hits.empty() ? n : n - 1 - hits.back();
        e.avg = hits.empty() ? 0 : double(n) / double(hits.size());
        e.pre = hits.size() > 1 ? hits.back() - hits[hits.size() - 2] - 1 : 0;
        for (size_t i = 1; i < hits.size(); ++i) e.longest = std::max(e.longest, hits[i] - hits[i - 1] - 1);
        out[name.join(u',')] = e;
    };
    for (int a = 1; a <= 33; ++a)
        for (int b = a + 1; b <= 33; ++b)
            if (size == 2) {
                one({a, b});
            } else {
                for (int d = b + 1; d <= 33; ++d) one({a, b, d});
            }
    return out;
}

// Runs the statistics and compares every group with the recount. With `rareGroups` the history
// must also hold never-drawn and once-drawn groups (a short history has them; the whole one does
// not for triples).
void checkAgainstRecount(int size, int groups, bool rareGroups) {
    myJinDuCTL progress;
    ASSERT_EQ(runCombinationOmission(size, progress), groups);
    const auto expected = recount(size);
    auto c = store_Query(QStringLiteral("select * from TBLyilouZhuhe"));
    ASSERT_EQ(c->recordCount(), groups);
    int neverDrawn = 0, drawnNewest = 0, oneHit = 0;
    for (c->moveFirst(); !c->eof(); c->moveNext()) {
        const QString name = c->value(QStringLiteral("Haoma")).toString();
        const Expected& e = expected.at(name);
        SCOPED_TRACE(name.toStdString());
        const auto column = [&](const char* name) { return c->intValue(QLatin1String(name)); };
        ASSERT_EQ(
            (QList<int>{column("YilouTotal"), column("YilouQS"), column("YilouPre"), column("YilouLongest")}),
            (QList<int>{e.total, e.qs, e.pre, e.longest}));
        ASSERT_DOUBLE_EQ(c->value(QStringLiteral("YilouAvg")).toDouble(), e.avg);
        neverDrawn += e.total == 0;
        drawnNewest += e.total > 0 && e.qs == 0;
        oneHit += e.total == 1;
    }
    EXPECT_GT(drawnNewest, 0);
    if (rareGroups) {
        EXPECT_GT(neverDrawn, 0);
        EXPECT_GT(oneHit, 0);
    }
    EXPECT_FALSE(progress.visible());
}

class CombinationOmission : public test::ShippedStoreTest {};
class ShortHistoryCombinationOmission : public test::FreshStoreTest {};

TEST_F(CombinationOmission, PairsAgreeWithARecount) {
    checkAgainstRecount(2, 528, false);
    // The window's order: most overdue first.
    auto view = openCombinationOmissionTable();
    int prevQs = INT_MAX, prevPre = INT_MAX;
    for (view->moveFirst(); !view->eof(); view->moveNext()) {
        const int qs = view->intValue(QStringLiteral("YilouQS")),
                  pre = view->intValue(QStringLiteral("YilouPre"));
        ASSERT_TRUE(qs < prevQs || (qs == prevQs && pre <= prevPre));
        prevQs = qs;
        prevPre = pre;
    }
    EXPECT_EQ(zhuHeYLTJ_Title(), QStringLiteral("截止２０２６０９６期号码组合遗漏统计表"));
    EXPECT_EQ(count_Between(2026090, 2026096), 5);
}

TEST_F(CombinationOmission, TriplesAgreeWithARecount) {
    checkAgainstRecount(3, 5456, false);
}

TEST_F(ShortHistoryCombinationOmission, NeverAndOnceDrawnGroupsAgreeWithARecount) {
    test::addDraw(2020001, QStringLiteral("2020/01/02"), makeReds(1, 2, 3, 4, 5, 6));
    test::addDraw(2020002, QStringLiteral("2020/01/05"), makeReds(1, 2, 3, 10, 11, 12));
    test::addDraw(2020003, QStringLiteral("2020/01/07"), makeReds(4, 5, 6, 20, 21, 22));
    test::addDraw(2020004, QStringLiteral("2020/01/09"), makeReds(1, 2, 3, 30, 31, 33));
    checkAgainstRecount(2, 528, true);
    store_ClearTable(QStringLiteral("TBLyilouZhuhe"));
    checkAgainstRecount(3, 5456, true);
}

TEST_F(CombinationOmission, CancelAndStopKeepWhatWasWritten) {
    myJinDuCTL progress;
    ui().answerConfirm(false);
    EXPECT_EQ(runCombinationOmission(2, progress), -1);
    EXPECT_EQ(test::intScalar(QStringLiteral("select count(*) from TBLyilouZhuhe")), 0);
    EXPECT_EQ(test::intScalar(QStringLiteral("select count(*) from TBLhmYLTJfenbu")), 3493);

    store_ClearTable(QStringLiteral("TBLyilouZhuhe"));
    ui().stopAfterPumps(11);
    EXPECT_EQ(calc_ZhuHe2(progress), 10);
    EXPECT_EQ(test::intScalar(QStringLiteral("select count(*) from TBLyilouZhuhe")), 10);
}

TEST(JinDuPanel, BoundsValueAndStop) {
    myJinDuCTL p;
    p.setMaxJindu(-5);  // below the lower bound: kept, but the bar keeps its old pair
    EXPECT_EQ(p.barMaximum(), 100);
    p.setMinJindu(-10);
    p.setMaxJindu(-5);
    EXPECT_EQ(std::pair(p.barMinimum(), p.barMaximum()), std::pair(-10, -5));
    p.setMaxJindu(50);
    p.setValueJindu(80);
    EXPECT_EQ(p.ValueJindu(), 80);
    EXPECT_EQ(p.shownValue(), 50);
    EXPECT_EQ(QStringList({p.labelJindu(), p.labelJinduAll()}), QStringList({"50", "50"}));
    p.setValueJindu(-20);
    EXPECT_EQ(p.shownValue(), -10);

    p.cmm_stop_Click();
    EXPECT_EQ(p.Tingzhi(), 1);
    EXPECT_FALSE(p.stopButtonEnabled());
    p.setTingzhi(0);
    p.cmm_stop_Click();  // the button is disabled: a second press does nothing
    EXPECT_EQ(p.Tingzhi(), 0);

    myJinDuCTL copy;
    copy.readProperties(p.writeProperties());
    EXPECT_EQ(copy.writeProperties(), p.writeProperties());
}

}  // namespace
}  // namespace dovrex
