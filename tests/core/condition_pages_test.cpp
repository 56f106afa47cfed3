#include <gtest/gtest.h>

#include "filters/condition_editing.h"
#include "filters/condition_help.h"
#include "filters/condition_pages.h"
#include "filters/condition_store.h"
#include "screen/shared_state.h"
#include "support/test_support.h"

namespace dovrex {
namespace {

class ConditionPagesTest : public test::FreshStoreTest {
  protected:
    static QStringList reportLines() {
        QStringList lines = make_BaoGao().split(QStringLiteral("\n\n"));
        lines.removeAll(QString());
        return lines;
    }
    static QString reportLine(QStringView label) {
        for (const QString& l : reportLines())
            if (l.startsWith(label)) return l.mid(label.size());
        return QStringLiteral("<missing>");
    }
    // The quick settings row of a condition, by its name.
    static int quickRow(const QString& name) {
        return test::intScalar(QStringLiteral("select 编号 from 快速设置 where 条件名称=?"), {name});
    }
};

TEST_F(ConditionPagesTest, ListsWriteTheirRowsAndTickThroughTheSharedArray) {
    const auto lists = conditionLists(7);
    ASSERT_EQ(lists.size(), 1);
    EXPECT_EQ(std::pair(lists[0].caption, lists[0].switchNo), std::pair(QStringLiteral("使用“连号”过滤"), 6));
    ASSERT_EQ(lists[0].lines.size(), 11);
    EXPECT_EQ(lists[0].lines[5].text, QStringLiteral("连号=3+2"));
    set_ConditionLine(lists[0].lines[5], true);
    EXPECT_EQ(get_GuoLvTiaoJian(3455), 1);
    QList<bool> ticks = loadListTicks(lists[0]);
    EXPECT_EQ(std::pair(ticks.count(true), ticks.indexOf(true)), std::pair(qsizetype(1), qsizetype(5)));
    set_ConditionLine(lists[0].lines[5], false);
    EXPECT_EQ(get_GuoLvTiaoJian(3455), 0);

    // A page fills its lines from guoLvShuZu and leaves its rows there: a later reader of the array
    // (a filter whose values run past its own range) finds what the visit loaded.
    auto& loaded = shared().guoLvShuZu;
    loaded.fill(-7);
    set_GuoLvTiaoJian(3000 + 150, 1);
    set_GuoLvTiaoJian(3000 + 170, 1);  // a row behind the last line still goes into the array
    ticks = loadListTicks(conditionLists(4)[0]);
    EXPECT_EQ(ticks.size(), 151);
    EXPECT_TRUE(ticks.last());
    EXPECT_EQ(ticks.count(true), 1);
    EXPECT_EQ(std::pair(loaded[170], loaded[171]), std::pair(1, -7));

    // Lines of the count pages, the intervals and the shapes.
    EXPECT_EQ(conditionLists(13).size(), 2);
    // 和值 runs from the least sum of six reds (1+2+..+6) to the greatest (28+..+33).
    EXPECT_EQ(QStringList({conditionLists(2)[0].lines.first().text, conditionLists(2)[0].lines.last().text}),
              QStringList({"和值=21", "和值=183"}));
    EXPECT_EQ(conditionLists(14).size(), 4);
    EXPECT_EQ(std::tuple(conditionLists(21)[0].lines.size(), conditionLists(21)[0].lines.last().text),
              std::tuple(9, QStringLiteral("6")));
    EXPECT_TRUE(conditionLists(1).isEmpty());
}

// The notes under the count and shape pages tell the division the filters read from the store.
TEST_F(ConditionPagesTest, NotesTellTheDivisionTheFiltersUse) {
    EXPECT_EQ(condition_Definition(12), QStringLiteral("大数：17～33（17个）；小数：01～16（16个）。"));
    EXPECT_EQ(condition_Definition(13),
              QStringLiteral(
                  "低尾码：尾数为0、1、2、3、4的红球（18个）；高尾码：尾数为5、6、7、8、9的红球（15个）。"));
    EXPECT_TRUE(condition_Definition(17).startsWith(QStringLiteral("间距九分组：九0：")));
    EXPECT_TRUE(condition_Definition(21).contains(QStringLiteral("头3：30 31 32 33")));
    store_Execute(QStringLiteral("UPDATE 号码特性 SET 大数=1 WHERE 号码=16"));
    EXPECT_EQ(condition_Definition(12), QStringLiteral("大数：16～33（18个）；小数：01～15（15个）。"));
    EXPECT_TRUE(condition_Definition(2).isEmpty());
}

TEST_F(ConditionPagesTest, RangeTextsPrintRunsOfAllowedValues) {
    set_GuoLvFanWei(1020, 1030, 1);
    set_GuoLvTiaoJian(1040, 1);
    set_GuoLvTiaoJian(1183, 1);
    EXPECT_EQ(text_FanWei(1), QStringLiteral("[２０-３０] , [４０] , [１８３]"));
    for (int page : {2, 6}) EXPECT_EQ(text_FanWei(page), QString()) << page;
    set_GuoLvTiaoJian(4180, 1);
    EXPECT_EQ(text_FanWei(25), QStringLiteral("[０]"));
    EXPECT_EQ(text_DanShuang({0, 1, 2, 1, 0, 2, 1}), QStringLiteral("双单*单双*单"));
}

TEST_F(ConditionPagesTest, ReportTellsOffFromOnWithNothingAllowed) {
    EXPECT_EQ(reportLine(u" 和值取值范围： "), QStringLiteral(" 未 使 用"));
    set_ShiYongQingKuang(1, 1);
    EXPECT_EQ(reportLine(u" 和值取值范围： "), QString());
    set_GuoLvFanWei(1100, 1102, 1);
    EXPECT_EQ(reportLine(u" 和值取值范围： "), QStringLiteral("[１００-１０２]"));

    set_ShiYongQingKuang(6, 1);
    for (int id : {3450, 3452}) set_GuoLvTiaoJian(id, 1);
    EXPECT_EQ(reportLine(u" 连号取值范围： "), QStringLiteral("（0）（2+2）"));
    set_ShiYongQingKuang(10, 1);
    set_GuoLvTiaoJian(3643, 1);
    EXPECT_EQ(reportLine(u" 奇数个数取值范围： "), QStringLiteral("３  "));

    // Picks, positions, custom groups, history match, parity patterns and the shrink.
    for (const auto& [id, pick] : {std::pair{5, 1}, {12, 2}, {107, 1}}) set_GuoLvTiaoJian(id, pick);
    EXPECT_EQ(reportLine(u" 红球“拖码”： "), QStringLiteral("０５  "));
    EXPECT_EQ(reportLine(u" 红球“胆码”： "), QStringLiteral("１２  "));
    EXPECT_EQ(reportLine(u" 蓝球“拖码”： "), QStringLiteral("０７  "));
    EXPECT_EQ(reportLine(u" 第 ７ 位允许开出的号码： "), QStringLiteral(" 未 使 用"));
    store_Execute(QStringLiteral("UPDATE 号码特性 SET 第7位=0 WHERE 号码>2"));
    set_ShiYongQingKuang(36, 1);
    EXPECT_EQ(reportLine(u" 第 ７ 位允许开出的号码： "), QStringLiteral("０１  ０２  "));

    EXPECT_EQ(reportLine(u"自定义组3 ——"), QStringLiteral("—— 未 使 用 "));
    set_ShiYongQingKuang(22, 1);
    EXPECT_EQ(reportLine(u"自定义组3 ——"), QStringLiteral("（ 无 号 码 ）（条 件 未 设 置）"));
    store_Execute(QStringLiteral("UPDATE 号码特性 SET 自定义组3=1 WHERE 号码 IN (3, 13)"));
    set_GuoLvTiaoJian(3821, 1);
    EXPECT_EQ(reportLine(u"自定义组3 ——"), QStringLiteral("号码：（０３,１３） 允许开出个数（１个,）"));

    writeHistoryMatch({true, 2025001, 2026096, 5});
    EXPECT_EQ(reportLine(u" 历史数据过滤： "),
              QStringLiteral(" 过滤掉与 ２０２５００１ ～ ２０２６０９６ 期,匹配值为： ５ 及以上的号码."));
    set_ShiYongQingKuang(72, 1);
    for (int p = 1; p <= 7; ++p) set_GuoLvTiaoJian(5020 + p, p % 3);
    set_ShiYongQingKuang(70, 1);
    const QStringList lines = reportLines();
    const int pattern = lines.indexOf(QStringLiteral(" √ 排除掉单双组合： 单*双单*双单"));
    EXPECT_GE(pattern, 0);
    EXPECT_EQ(lines.value(pattern + 1), QStringLiteral(" √ 【排除掉上一期的单双组合形式】"));
    set_GuoLvTiaoJian(3900, 6);
    EXPECT_EQ(reportLine(u" 缩 水 类 型： "), QStringLiteral("保六型"));
    EXPECT_EQ(lines.last(), QStringLiteral(" 缩水智能优化： 未 使 用"));
}

TEST_F(ConditionPagesTest, QuickSettingsWriteRangesFromText) {
    const int span = quickRow(QStringLiteral("跨度"));
    const int ac = quickRow(QStringLiteral("AC值"));
    QHash<int, QString> texts;
    auto rows = store_Query(QStringLiteral("select 编号 from 快速设置"));
    for (; !rows->eof(); rows->moveNext()) texts.insert(rows->intValue(0), QStringLiteral("[0]"));

    texts[span] = QStringLiteral("【1－5】，[7]");
    texts[ac] = QStringLiteral("1-5");
    ASSERT_TRUE(apply_KuaiSu(texts));
    EXPECT_TRUE(ui().messages().contains(QStringLiteral("条件设置完成！")));
    for (int id = 3300; id <= 3310; ++id)
        EXPECT_EQ(get_GuoLvTiaoJian(id), id >= 3301 && id <= 3305 || id == 3307) << id;
    EXPECT_EQ(text_KuaiSuFanWei(span), QStringLiteral("[1-5],[7]"));
    EXPECT_EQ(text_KuaiSuFanWei(ac), QStringLiteral("[1-5]"));

    texts[span] = QStringLiteral("[5-1]");  // an empty range: the earlier ticks go all the same
    texts[ac] = QStringLiteral("[28-99]");  // cut at the end of the range
    ASSERT_TRUE(apply_KuaiSu(texts));
    EXPECT_EQ(text_KuaiSuFanWei(span), QString());
    EXPECT_EQ(text_KuaiSuFanWei(ac), QStringLiteral("[28-30]"));

    texts[span] = QStringLiteral("[]");
    EXPECT_FALSE(apply_KuaiSu(texts));
    EXPECT_TRUE(ui().messages().contains(
        QStringLiteral("未设置[跨度的范围！(你可以自己设置，也可以点击下面的还原为默认值按钮)")));
    texts[span] = QStringLiteral("[1-x]");
    EXPECT_FALSE(apply_KuaiSu(texts));
    EXPECT_EQ(
        ui().messages().last(),
        QStringLiteral(
            "你设置的[跨度的范围包含非法字符！(只允许‘0123456789[]-’中的字符，如：[1-5]或者[5]是合法的)"));
    EXPECT_EQ(text_KuaiSuFanWei(ac), QStringLiteral("[28-30]"));  // a refused submit writes nothing

    // A number too large to hold is refused, not read as 0; the largest that fits is only cut.
    texts[span] = QStringLiteral("[99999999999]");
    EXPECT_FALSE(apply_KuaiSu(texts));
    EXPECT_EQ(ui().messages().last(), QStringLiteral("你设置的[跨度") + msg::kQuickNumberTooLarge);
    EXPECT_EQ(text_KuaiSuFanWei(ac), QStringLiteral("[28-30]"));
    texts[span] = QStringLiteral("[2147483647][1-2147483647]");
    ASSERT_TRUE(apply_KuaiSu(texts));
    EXPECT_EQ(std::pair(get_GuoLvTiaoJian(3300), get_GuoLvTiaoJian(3301)), std::pair(0, 1));
}

}  // namespace
}  // namespace dovrex
