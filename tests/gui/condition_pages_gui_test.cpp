#include <gtest/gtest.h>

#include <QCheckBox>
#include <QLabel>
#include <QMap>
#include <QTableView>
#include <QTest>

#include "filters/condition_store.h"
#include "support/test_support.h"
#include "ui/condition_list_pages.h"
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

// The rows whose values differ, as "key=new" joined by blanks.
QString changed(const QMap<QString, int>& before, const QMap<QString, int>& after) {
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

    auto before = conditionRows();
    clickLine(list, 3);
    EXPECT_EQ(changed(before, conditionRows()), QStringLiteral("ID 3308=1"));
    EXPECT_EQ(page->tip()->text(), QStringLiteral("当前取值阅览：[８]"));

    before = conditionRows();
    clickLine(list, 20);
    clickLine(list, 21);
    clickLine(list, 3);  // untick
    EXPECT_EQ(changed(before, conditionRows()), QStringLiteral("ID 3308=0 ID 3325=1 ID 3326=1"));
    EXPECT_EQ(page->tip()->text(), QStringLiteral("当前取值阅览：[２５-２６]"));

    before = conditionRows();
    page->switchBox()->click();
    EXPECT_EQ(changed(before, conditionRows()), QStringLiteral("switch 4=1"));

    // Filling again writes nothing; a new page shows what was ticked.
    before = conditionRows();
    page->reload();
    page->hide();
    page->show();
    auto again = std::make_unique<ConditionListPage>(5);
    again->show();
    EXPECT_EQ(changed(before, conditionRows()), QString());
    EXPECT_TRUE(again->switchBox()->isChecked());
    for (int row = 0; row < again->list()->count(); ++row)
        EXPECT_EQ(again->list()->isTicked(row), row == 20 || row == 21) << row;
}

TEST_F(ConditionPagesGuiTest, KeyListsAndCountPairsWriteTheirOwnRows) {
    auto lianHao = std::make_unique<ConditionListPage>(7);
    lianHao->show();
    auto before = conditionRows();
    clickLine(lianHao->list(), 5);  // 连号=3+2: the line's index is the value
    EXPECT_EQ(changed(before, conditionRows()), QStringLiteral("ID 3455=1"));
    EXPECT_EQ(lianHao->tip()->text(), QStringLiteral("当前取值阅览：（3+2）"));

    auto tail = std::make_unique<ConditionListPage>(21);  // 头数形式, List_TiaojianElse
    tail->show();
    EXPECT_EQ(tail->list()->objectName(), QStringLiteral("List_TiaojianElse"));
    before = conditionRows();
    clickLine(tail->list(), 8);
    tail->switchBox()->click();
    EXPECT_EQ(changed(before, conditionRows()), QStringLiteral("ID 4078=1 switch 42=1"));

    auto sizes = std::make_unique<CountListsPage>(12);  // 大数个数 / 小数个数
    sizes->show();
    ASSERT_EQ(sizes->lists().size(), 2);
    before = conditionRows();
    clickLine(sizes->lists()[1], 2);
    sizes->switches()[1]->click();
    EXPECT_EQ(changed(before, conditionRows()), QStringLiteral("ID 3672=1 switch 13=1"));
    EXPECT_GT(sizes->grid()->model()->rowCount(), 3000);
}

}  // namespace
