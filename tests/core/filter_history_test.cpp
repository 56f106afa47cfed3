// The filters against the shipped history: a draw and a ticket measure alike.
#include "core/filter_fixture.h"
#include "domain/metrics.h"
#include "history/derived_columns.h"
#include "history/history_queries.h"

namespace dovrex::test {
namespace {

class FilterHistoryTest : public ShippedStoreTest {};

// How a filter's value reads in the history: a number column, or a text column whose index in a
// key list is the value.
enum class Kind { Number, TailOfSum, RunText, Shape5, Shape6 };
struct Measure {
    const char16_t* filter;
    int slot;
    QString column;
    Kind kind;
    bool perIssue;  // its tables depend on the draws before the issue
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

    std::vector<Measure> measures{
        {u"filter_HeZhi", 0, QStringLiteral("和值"), Kind::Number, false},
        {u"filter_HeZhiWei", 0, QStringLiteral("和值"), Kind::TailOfSum, false},
        {u"filter_TouShuHeZhi", 0, QStringLiteral("头数和值"), Kind::Number, false},
        {u"filter_WeiShuHeZhi", 0, QStringLiteral("尾数和值"), Kind::Number, false},
        {u"filter_JiShuHeZhi", 0, QStringLiteral("奇数和值"), Kind::Number, false},
        {u"filter_OuShuHeZhi", 0, QStringLiteral("偶数和值"), Kind::Number, false},
        {u"filter_JiShuGeShu", 0, QStringLiteral("奇数个数"), Kind::Number, false},
        {u"filter_OuShuGeShu", 0, QStringLiteral("偶数个数"), Kind::Number, false},
        {u"filter_DaShuGeShu", 0, QStringLiteral("大数个数"), Kind::Number, false},
        {u"filter_XiaoShuGeShu", 0, QStringLiteral("小数个数"), Kind::Number, false},
        {u"filter_GaoWeiMaGeShu", 0, QStringLiteral("高尾码个数"), Kind::Number, false},
        {u"filter_DiWeiMaGeShu", 0, QStringLiteral("低尾码个数"), Kind::Number, false},
        {u"filter_WenDu5", 0, QStringLiteral("温度值5"), Kind::Number, true},
        {u"filter_WenDu10", 0, QStringLiteral("温度值10"), Kind::Number, true},
        {u"filter_KuaDu", 0, QStringLiteral("跨度"), Kind::Number, false},
        {u"filter_JianJuMax", 0, QStringLiteral("最大间距"), Kind::Number, false},
        {u"filter_LianHao", 0, QStringLiteral("连号"), Kind::RunText, false},
        {u"filter_AC", 0, QStringLiteral("AC值"), Kind::Number, false},
        {u"filter_ChongDie", 0, QStringLiteral("重叠号"), Kind::Number, true},
        {u"filter_XieWeiMa", 0, QStringLiteral("斜位码"), Kind::Number, true},
        {u"filter_WeiShuXingShi", 0, QStringLiteral("尾数形式"), Kind::Shape5, false},
        {u"filter_JianJu9", 0, QStringLiteral("间距九"), Kind::Shape5, false},
        {u"filter_JianJu7", 0, QStringLiteral("间距七"), Kind::Shape5, false},
        {u"filter_JianJu11", 0, QStringLiteral("间距十一"), Kind::Shape5, false},
        {u"filter_JianJu12", 0, QStringLiteral("间距十二"), Kind::Shape5, false},
        {u"filter_TouShuXingShi", 0, QStringLiteral("头数形式"), Kind::Shape6, false},
    };
    for (int k = 1; k <= 4; ++k)
        measures.push_back({u"filter_QuJian", k, QStringLiteral("区间%1").arg(k), Kind::Number, false});
    for (int k = 1; k <= 10; ++k)
        measures.push_back(
            {u"filter_ZiDingYiZu", k, QStringLiteral("自定义组%1").arg(k), Kind::Number, false});

    std::vector<TicketTest> fixed(measures.size());
    for (size_t m = 0; m < measures.size(); ++m)
        if (!measures[m].perIssue) fixed[m] = testOf(filterNamed(measures[m].filter, measures[m].slot), 0);

    auto c = store_Query(QStringLiteral("select * from 历史记录 order by 期号"));
    ASSERT_GT(c->recordCount(), 2000);
    int compared = 0, mismatches = 0;
    c->moveNext();  // the first draw has no draw before it
    for (; !c->eof(); c->moveNext()) {
        const IssueNumber issue = c->intValue(QStringLiteral("期号"));
        TicketBalls b;
        for (int i = 1; i <= 6; ++i) b.reds[size_t(i)] = c->intValue(QStringLiteral("红球%1").arg(i));
        b.blue = c->intValue(QStringLiteral("蓝球"));
        for (size_t m = 0; m < measures.size(); ++m) {
            const Measure& ms = measures[m];
            const QVariant cell = c->value(ms.column);
            const int expected = ms.kind == Kind::Number      ? cell.toInt()
                                 : ms.kind == Kind::TailOfSum ? cell.toInt() % 10
                                                              : keyIndex(ms.kind, cell.toString());
            const int value =
                ms.perIssue ? testOf(filterNamed(ms.filter, ms.slot), issue).value(b) : fixed[m].value(b);
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
