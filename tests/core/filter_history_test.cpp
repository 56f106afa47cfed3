// The filters against the shipped history: a draw and a ticket measure alike.
#include "core/filter_fixture.h"
#include "domain/metrics.h"
#include "history/derived_columns.h"
#include "history/history_queries.h"
#include "store/schema.h"

namespace dovrex::test {
namespace {

class FilterHistoryTest : public ShippedStoreTest {};

// How a filter's value reads in the history: a number column, or a text column whose index in a
// key list is the value.
enum class Kind { Number, TailOfSum, RunText, Shape5, Shape6 };
struct Measure {
    const FilterDef* def;
    QString column;
    Kind kind;
    TicketTest fixed;  // for a filter whose verdict does not depend on the issue
};

int keyIndex(Kind kind, const QString& text) {
    const int n = kind == Kind::RunText  ? kLianHaoCodes
                  : kind == Kind::Shape5 ? kGesTable5Keys
                                         : kGesTable6Keys;
    for (int i = 0; i < n; ++i) {
        const QString& key = kind == Kind::RunText  ? lianHaoText(i)
                             : kind == Kind::Shape5 ? gesTable5Text(i)
                                                    : gesTable6Text(i);
        if (key == text) return i;
    }
    return -1;
}

TEST_F(FilterHistoryTest, EveryDrawMeasuresAsATicket) {
    // Ten custom groups with members, and every column computed afresh with them.
    const QStringList presets{QStringLiteral("奇数号码"),    QStringLiteral("除3余0(0路)"),
                              QStringLiteral("除3余1(1路)"), QStringLiteral("５_尾"),
                              QStringLiteral("除4余1"),      QStringLiteral("除5余2"),
                              QStringLiteral("除6余3"),      QStringLiteral("偶数号码"),
                              QStringLiteral("０_尾"),       QStringLiteral("除4余3")};
    for (int k = 1; k <= 10; ++k) ASSERT_TRUE(makeGroupPreset(k, presets[k - 1]));
    store_Execute(QStringLiteral("UPDATE 号码特性 SET 区间2=1 WHERE 号码 IN (1,2,30)"));  // overlapping
    recalc_LiShiLie(earliest_QiHao(), latest_QiHao(), false);

    // Every filter whose value has a column named as its label: 和值尾 reads the tail of 和值.
    std::vector<Measure> measures;
    for (const FilterStep& step : filterSteps())
        for (const FilterDef& def : step.filters) {
            QString column = def.label;
            column.remove(QRegularExpression(QStringLiteral("[\\[\\] ]")));
            const Kind kind = column == u"和值尾"                                   ? Kind::TailOfSum
                              : column == u"连号"                                   ? Kind::RunText
                              : column == u"头数形式"                               ? Kind::Shape6
                              : column == u"尾数形式" || column.startsWith(u"间距") ? Kind::Shape5
                                                                                    : Kind::Number;
            if (kind == Kind::TailOfSum) column = QStringLiteral("和值");
            if (def.prepare && schema::historyColumns().contains(column))
                measures.push_back({&def, column, kind, def.dependsOnIssue ? TicketTest{} : testOf(def, 0)});
        }
    ASSERT_EQ(measures.size(), 26u + 4 + 10);

    auto c = store_Query(QStringLiteral("select * from 历史记录 order by 期号"));
    ASSERT_GT(c->recordCount(), 2000);
    int compared = 0, mismatches = 0;
    c->moveNext();  // the first draw has no draw before it
    for (; !c->eof(); c->moveNext()) {
        const IssueNumber issue = c->intValue(QStringLiteral("期号"));
        TicketBalls b;
        for (int i = 1; i <= 6; ++i) b.reds[size_t(i)] = c->intValue(QStringLiteral("红球%1").arg(i));
        b.blue = c->intValue(QStringLiteral("蓝球"));
        for (const Measure& ms : measures) {
            const QVariant cell = c->value(ms.column);
            const int expected = ms.kind == Kind::Number      ? cell.toInt()
                                 : ms.kind == Kind::TailOfSum ? cell.toInt() % 10
                                                              : keyIndex(ms.kind, cell.toString());
            const int value = ms.def->dependsOnIssue ? testOf(*ms.def, issue).value(b) : ms.fixed.value(b);
            ++compared;
            if (value != expected && ++mismatches <= 10)
                ADD_FAILURE() << issue << " " << ms.column.toStdString() << ": filter " << value
                              << ", history " << expected;
        }
    }
    EXPECT_EQ(mismatches, 0);
    EXPECT_GT(compared, 2000 * 40);
}

}  // namespace
}  // namespace dovrex::test
