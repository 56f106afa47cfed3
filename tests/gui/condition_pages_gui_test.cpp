#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMap>
#include <QPushButton>
#include <QTableView>
#include <QTest>
#include <functional>

#include "app/app_activate.h"
#include "filters/condition_store.h"
#include "support/test_support.h"
#include "ui/conditions/condition_list_page.h"
#include "ui/conditions/count_lists_page.h"
#include "ui/conditions/custom_group_page.h"
#include "ui/conditions/history_match_page.h"
#include "ui/conditions/interval_page.h"
#include "ui/conditions/position_page.h"
#include "ui/conditions/quick_settings_window.h"
#include "widgets/number_buttons.h"
#include "widgets/tick_list.h"

using namespace dovrex;

namespace {

// Every row of both condition tables, to tell exactly which rows a click wrote.
QMap<QString, int> conditionRows() {
    QMap<QString, int> rows;
    auto values = store_Query(QStringLiteral("select ID, VALUE from 过滤条件"));
    for (; !values->eof(); values->moveNext())
        rows.insert(QStringLiteral("ID %1").arg(values->intValue(0)), values->intValue(1));
    auto switches = store_Query(QStringLiteral("select 条件, 使用情况 from 过滤条件使用情况"));
    for (; !switches->eof(); switches->moveNext())
        rows.insert(QStringLiteral("switch %1").arg(switches->intValue(0)), switches->intValue(1));
    return rows;
}

// The rows of both condition tables that `act` changed, as "key=new" joined by blanks.
QString writes(const std::function<void()>& act) {
    const QMap<QString, int> before = conditionRows();
    act();
    const QMap<QString, int> after = conditionRows();
    QStringList out;
    for (auto it = after.begin(); it != after.end(); ++it)
        if (before.value(it.key(), -1) != it.value())
            out << QStringLiteral("%1=%2").arg(it.key()).arg(it.value());
    return out.join(u' ');
}

void clickLine(TickList* list, int row) {
    list->scrollToItem(list->item(row));
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(list->item(row)).center());
}

class ConditionPagesGuiTest : public test::ShippedStoreTest {};

TEST_F(ConditionPagesGuiTest, ListTickWritesOneRowAndRefillWritesNone) {
    auto page = std::make_unique<ConditionListPage>(5);  // 跨度
    page->resize(1100, 650);
    page->show();
    TickList* list = page->list();
    ASSERT_EQ(list->count(), 28);
    EXPECT_EQ(list->item(3)->text(), QStringLiteral("跨度=8"));

    EXPECT_EQ(writes([&] { clickLine(list, 3); }), QStringLiteral("ID 3308=1"));
    EXPECT_EQ(page->tip()->text(), QStringLiteral("当前取值阅览：[８]"));
    EXPECT_EQ(writes([&] {
                  for (int row : {20, 21, 3}) clickLine(list, row);  // 3 unticks
              }),
              QStringLiteral("ID 3308=0 ID 3325=1 ID 3326=1"));
    EXPECT_EQ(page->tip()->text(), QStringLiteral("当前取值阅览：[２５-２６]"));
    EXPECT_EQ(writes([&] { page->switchBox()->click(); }), QStringLiteral("switch 4=1"));

    // Filling again writes nothing; a new page shows what was ticked.
    std::unique_ptr<ConditionListPage> again;
    EXPECT_EQ(writes([&] {
                  page->reload();
                  page->hide();
                  page->show();
                  again = std::make_unique<ConditionListPage>(5);
                  again->show();
              }),
              QString());
    EXPECT_TRUE(again->switchBox()->isChecked());
    for (int row = 0; row < again->list()->count(); ++row)
        EXPECT_EQ(again->list()->isTicked(row), row == 20 || row == 21) << row;
}

// Each kind of list page writes its own rows: a key list (连号), List_TiaojianElse, a count pair.
TEST_F(ConditionPagesGuiTest, KeyListsAndCountPairsWriteTheirOwnRows) {
    auto lianHao = std::make_unique<ConditionListPage>(7);
    lianHao->show();
    // 连号=3+2: the line's index is the value.
    EXPECT_EQ(writes([&] { clickLine(lianHao->list(), 5); }), QStringLiteral("ID 3455=1"));
    EXPECT_EQ(lianHao->tip()->text(), QStringLiteral("当前取值阅览：（3+2）"));

    auto tail = std::make_unique<ConditionListPage>(21);  // 头数形式
    tail->show();
    EXPECT_EQ(tail->list()->objectName(), QStringLiteral("List_TiaojianElse"));
    EXPECT_EQ(writes([&] {
                  clickLine(tail->list(), 8);
                  tail->switchBox()->click();
              }),
              QStringLiteral("ID 4078=1 switch 42=1"));

    auto sizes = std::make_unique<CountListsPage>(12);  // 大数个数 / 小数个数
    sizes->show();
    ASSERT_EQ(sizes->lists().size(), 2);
    EXPECT_EQ(writes([&] {
                  clickLine(sizes->lists()[1], 2);
                  sizes->switches()[1]->click();
              }),
              QStringLiteral("ID 3672=1 switch 13=1"));
    EXPECT_GT(sizes->grid()->model()->rowCount(), 3000);
}

// What the report lines and the history range say: ConditionPagesTest.ReportTellsOffFromOn...
TEST_F(ConditionPagesGuiTest, EditingPagesWriteNumbersPatternsGroupsAndTheHistoryRange) {
    // Positions: a tick flips the number's cell; the switch is usable only with a tick.
    store_Execute(QStringLiteral("UPDATE 号码特性 SET 第2位=0"));
    auto positions = std::make_unique<PositionPage>();
    positions->show();
    EXPECT_FALSE(positions->positionSwitch(2)->isEnabled());
    clickLine(positions->numbers(2), 4);
    EXPECT_EQ(test::intScalar(QStringLiteral("select count(*) from 号码特性 where 第2位<>0")), 1);
    EXPECT_EQ(test::intScalar(QStringLiteral("select 第2位 from 号码特性 where 号码=5")), 1);
    EXPECT_TRUE(positions->positionSwitch(2)->isEnabled());
    EXPECT_EQ(writes([&] {
                  positions->tolerance()->button(2)->click();
                  positions->patternSwitch(3)->click();
                  positions->patternCombo(3, 7)->setCurrentIndex(2);
                  emit positions->patternCombo(3, 7)->activated(2);
              }),
              QStringLiteral("ID 3901=2 ID 5037=2 switch 73=1"));
    EXPECT_FALSE(positions->patternCombo(0, 1)->isEnabled());

    // Custom groups: members, counts and the switch, which is usable only with a count.
    auto groups = std::make_unique<CustomGroupPage>();
    groups->show();
    groups->selectGroup(12);
    ASSERT_EQ(groups->group(), 12);
    groups->numbers()->button(7)->click();
    EXPECT_EQ(test::intScalar(QStringLiteral("select 自定义组12 from 号码特性 where 号码=7")), 1);
    EXPECT_FALSE(groups->useBox()->isEnabled());
    EXPECT_EQ(writes([&] {
                  clickLine(groups->counts(), 1);
                  ASSERT_TRUE(groups->useBox()->isEnabled());
                  groups->useBox()->click();
              }),
              QStringLiteral("ID 4511=1 switch 52=1"));
    EXPECT_TRUE(groups->groups()->item(11)->text().contains(QStringLiteral("（０７）")));
    groups->empty(false);
    EXPECT_TRUE(groups->groups()->item(11)->text().contains(QStringLiteral("无 号 码")));

    // History match: a long range forces the match to 6.
    auto history = std::make_unique<HistoryMatchPage>();
    history->show();
    history->low()->setCurrentText(QStringLiteral("2026090"));
    emit history->low()->activated(history->low()->currentIndex());
    EXPECT_FALSE(history->match()->isEnabled());
    EXPECT_EQ(history->match()->currentText(), QStringLiteral("6"));
    history->low()->setCurrentIndex(history->low()->findText(QStringLiteral("2026093")));
    history->high()->setCurrentIndex(history->high()->findText(QStringLiteral("2026095")));
    emit history->high()->activated(history->high()->currentIndex());
    ASSERT_TRUE(history->match()->isEnabled());
    history->match()->setCurrentIndex(3);
    emit history->match()->activated(3);
    history->useBox()->click();
    EXPECT_EQ(test::scalar(
                  QStringLiteral("select 使用状态||' '||最小值||' '||最大值||' '||匹配值 from 历史数据过滤")),
              QStringLiteral("1 2026093 2026095 4"));
}

// The recount itself: DerivedColumnsTest.IntervalsRecountedAfterTheyChange.
TEST_F(ConditionPagesGuiTest, IntervalsRecountTheHistoryWhenThePageIsLeft) {
    auto page = std::make_unique<IntervalPage>();
    page->show();
    page->choice()->button(4)->click();
    page->numbers()->button(1)->click();  // 01 joins interval 4
    EXPECT_EQ(test::intScalar(QStringLiteral("select 区间4 from 号码特性 where 号码=1")), 1);
    const QString recount = QStringLiteral("区间重新划分之后，各区间的开出号码个数需要重新计算。。。");
    EXPECT_FALSE(ui().messages().contains(recount));
    page->hide();
    EXPECT_TRUE(ui().messages().contains(recount));
}

// What the range texts write: ConditionPagesTest.QuickSettingsWriteRangesFromText.
TEST_F(ConditionPagesGuiTest, QuickSettingsCheckAndWriteEveryRowAndHandOverTheOtherPages) {
    QuickSettingsWindow window(nullptr);
    const int span = test::intScalar(QStringLiteral("select 编号 from 快速设置 where 条件名称='跨度'"));
    for (int no = 0; no < window.rowCount(); ++no) window.rangeText(no)->setText(QStringLiteral("[0]"));
    window.rangeText(span)->setText(QStringLiteral("【1－5】[7]"));
    EXPECT_TRUE(window.submit());
    EXPECT_EQ(window.rangeText(span)->text(), QStringLiteral("[1-5],[7]"));
    EXPECT_EQ(writes([&] { window.useBox(span)->click(); }), QStringLiteral("switch 4=1"));

    EXPECT_EQ(window.page(), 0);
    EXPECT_FALSE(window.useBox(window.rowCount() - 1)->isVisibleTo(&window));
    window.showPage(1);
    EXPECT_TRUE(window.useBox(window.rowCount() - 1)->isVisibleTo(&window));

    window.show();
    window.handOver(9);
    EXPECT_EQ(shared().g_PendingCommand, 9);
    EXPECT_FALSE(window.isVisible());
    app_Activate();
    EXPECT_EQ(shared().g_PendingCommand, 0);
    EXPECT_TRUE(ui().lines().contains(QStringLiteral("PAGE 过滤条件 19")));
}

}  // namespace
