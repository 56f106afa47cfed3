#include <gtest/gtest.h>

#include "app/app_activate.h"
#include "filters/condition_editing.h"
#include "filters/condition_store.h"
#include "support/test_support.h"

namespace dovrex {
namespace {

class ConditionEditingTest : public test::FreshStoreTest {};

TEST_F(ConditionEditingTest, PendingCommandsRunOnceWhenTheMainWindowComesBack) {
    shared().g_PendingCommand = 6;
    shared().g_TablesDirty = true;
    app_Activate();
    app_Activate();
    EXPECT_EQ(ui().linesStartingWith(QStringLiteral("PAGE ")),
              QStringList{QStringLiteral("PAGE 过滤条件 16")});
    EXPECT_EQ(ui().linesStartingWith(QStringLiteral("REFRESH tables")).size(), 1);
    EXPECT_EQ(std::pair(shared().g_PendingCommand, shared().g_TablesDirty), std::pair(0, false));

    // Restore defaults runs where it was left, then the pages show the restored rows.
    set_GuoLvTiaoJian(3301, 1);
    ui().clear();
    shared().g_PendingCommand = kPendingDefaults;
    app_Activate();
    EXPECT_EQ(get_GuoLvTiaoJian(3301), 0);
    EXPECT_EQ(ui().linesStartingWith(QStringLiteral("PAGE ")),
              QStringList{QStringLiteral("PAGE 过滤条件 0")});

    const int tabs[] = {7, 21, 16, 18, 17, 19, 20, 28, 27, 0, 29, 15};  // of the commands 4..15
    for (int c = 4; c <= 15; ++c) EXPECT_EQ(pendingConditionTab(c), tabs[c - 4]) << c;
    EXPECT_EQ(pendingConditionTab(99), 0);
}

TEST_F(ConditionEditingTest, SummariesOfEveryKindOfList) {
    EXPECT_EQ(conditionSummary(5), QString());
    set_GuoLvFanWei(3305, 3307, 1);
    EXPECT_EQ(conditionSummary(5), QStringLiteral("[５-７]"));  // runs as RangeTextsPrintRunsOfAllowedValues
    for (int id : {4078, 4070}) set_GuoLvTiaoJian(id, 1);
    EXPECT_EQ(conditionSummary(21), QStringLiteral("（2,2,1,1）（6）"));
    EXPECT_EQ(conditionSummary(14), QString());  // several lists: no single summary
}

TEST_F(ConditionEditingTest, NumberColumnsGroupsAndHistoryMatch) {
    // Cells flip one at a time; clearing the intervals also turns their switches off.
    EXPECT_TRUE(haoMaTeXing(QStringLiteral("区间1"))[8]);
    EXPECT_FALSE(toggleNumberTrait(QStringLiteral("区间1"), 8));
    EXPECT_TRUE(toggleNumberTrait(QStringLiteral("区间1"), 30));
    EXPECT_EQ(quJianHaoMa(1), QStringLiteral("０１ ０２ ０３ ０４ ０５ ０６ ０７ ３０"));
    set_ShiYongQingKuang(17, 1);
    clearIntervalPartition();
    EXPECT_EQ(std::pair(quJianHaoMa(2), get_ShiYongQingKuang(17)), std::pair(QString(), 0));
    EXPECT_EQ(ui().messages().last(),
              QStringLiteral("请注意，重新划分区间后需要重新设置“区间过滤”的过滤条件。"));

    // A custom group: members, counts, alias, and emptying it puts all three back.
    EXPECT_EQ(std::pair(customGroupBase(12), customGroupSwitch(12)), std::pair(4510, 52));
    toggleNumberTrait(customGroupColumn(12), 5);
    set_GuoLvTiaoJian(4512, 1);
    EXPECT_FALSE(renameCustomGroup(12, QString()));
    EXPECT_TRUE(renameCustomGroup(12, QStringLiteral("我的组")));
    EXPECT_EQ(std::pair(zdyAlias(12), zdyAllowedCounts(12)), std::pair(QStringLiteral("我的组"), 1));
    clearCustomGroup(12);
    EXPECT_EQ(std::pair(zdyAlias(12), zdyAllowedCounts(12)), std::pair(QStringLiteral("自定义组12"), 0));
    EXPECT_FALSE(haoMaTeXing(customGroupColumn(12))[5]);

    // The previous draw's parity is read, not written; an empty history has none.
    EXPECT_EQ(shangQiDanShuang()[0], -1);
    test::addDraw(2026001, QStringLiteral("2026/01/01"), makeReds(1, 2, 3, 4, 5, 6), 9);
    test::addDraw(2026002, QStringLiteral("2026/01/04"), makeReds(2, 4, 7, 9, 10, 33), 12);
    EXPECT_EQ(shangQiDanShuang(), (std::array<int, 7>{0, 0, 1, 1, 0, 1, 0}));
    EXPECT_EQ(readParityPatterns(1), (std::array<int, 7>{}));
    EXPECT_EQ(get_GuoLvTiaoJian(5001), 0);

    writeHistoryMatch({true, 2026001, 2026002, 3});
    const LiShiGuoLv back = readHistoryMatch();
    EXPECT_EQ(std::tuple(back.on, back.low, back.high, back.match), std::tuple(true, 2026001, 2026002, 3));
    EXPECT_EQ(countIssues(2026001, 2026002), 2);
    EXPECT_EQ(countIssues(2026002, 2026001), 0);
}

}  // namespace
}  // namespace dovrex
