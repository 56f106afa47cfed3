#include "core/pipeline_fixture.h"
#include "filters/backtest.h"
#include "pipeline/ticket_init.h"
#include "screen/run_panel.h"
#include "support/table_rows.h"

namespace dovrex::test {
namespace {

constexpr IssueNumber kIssue = 2008118;
const QString kInitLog = QStringLiteral("初始化选号完成!共 ４２０ 注！\r\n\r\n\r\n");
const QString kLoading =
    QStringLiteral("\r\n\r\n正载入数据[２００８１１８期]．．．\r\n\r\n当前数据共：４２０注．");

class FilterRunTest : public PipelineTest {
  protected:
    // 420 tickets of ten red drags and two blues, as the first step leaves them.
    void expand() {
        pickDrags(10, 2);
        ASSERT_EQ(init_TouZhu(kIssue), 420);
        ui().clear();
    }
    static int sum(const Reds& r) { return r[1] + r[2] + r[3] + r[4] + r[5] + r[6]; }
    // 和值 on, allowing the sums for which `allow` holds.
    static void allowSums(const std::function<bool(int)>& allow) {
        for (int v = 0; v <= 183; ++v) set_GuoLvTiaoJian(1000 + v, allow(v) ? 1 : 0);
        set_ShiYongQingKuang(1, 1);
    }
    // A count as the log writes it.
    static QString wide(size_t n) { return to_QuanJiao(qlonglong(n)); }
};

TEST(FilterSteps, FixedOrderOfTheRun) {
    QStringList order;
    int filterCount = 0;
    for (const FilterStep& step : filterSteps()) {
        EXPECT_EQ(step.step, order.size() + 1);
        order << step.filters.front().label;
        filterCount += int(step.filters.size());
    }
    EXPECT_EQ(order.join(u' '),
              QStringLiteral(
                  "[ 和 值 ] [ 和值尾 ] [头数和值] [尾数和值] [奇数和值] [偶数和值] [奇数个数] [偶数个数] "
                  "[大数个数] [小数个数] [高尾码个数] [低尾码个数] [温度值5] [温度值10] [区间1] [自定义组1] "
                  "[ 跨 度 ] [最大间距] [连号] [AC值] [重叠号] [斜位码] [号码定位] [历史数据过滤] [尾数形式] "
                  "[间距九] [间距七] [间距十一] [间距十二] [头数形式] [排除掉上期单双组合：]"));
    EXPECT_EQ(filterCount, 28 + 4 + 20 + 6);
    const FilterDef& group11 = filterSteps()[15].filters[10];
    EXPECT_EQ(group11.switchNo, 51);
    EXPECT_EQ(group11.minId, 4500);
}

TEST_F(FilterRunTest, LoaderIndexing) {
    auto& a = shared().guoLvShuZu;
    const auto slice = [&](size_t from, size_t to) {
        return QList<int>(a.begin() + from, a.begin() + to + 1);
    };
    a.fill(-7);
    set_GuoLvFanWei(5011, 5017, 2);
    load_GuoLvFanWei(5011, 5017);  // starts at 5011 % 10 = 1
    EXPECT_EQ(slice(0, 8), (QList<int>{-7, 2, 2, 2, 2, 2, 2, 2, -7}));
    set_GuoLvFanWei(5070, 5079, 1);
    load_GuoLvFanWei(5070, 5079);  // 0..9; what lies behind stays
    EXPECT_EQ(slice(0, 10), (QList<int>{1, 1, 1, 1, 1, 1, 1, 1, 1, 1, -7}));
    store_Execute(QStringLiteral("UPDATE 过滤条件 SET VALUE=5 WHERE ID=1183"));  // a mark no writer makes
    load_GuoLvFanWei(1000, 1190);  // the widest range: 191 rows from index 0
    EXPECT_EQ(a[183], 5);
    EXPECT_EQ(slice(189, 191), (QList<int>{0, 0, -7}));
    // Rows missing from a range do not leave gaps: the index counts rows, not IDs.
    a.fill(-7);
    set_GuoLvTiaoJian(101, 2);
    load_GuoLvFanWei(39, 101);  // rows 39 and 101 exist
    EXPECT_EQ(slice(9, 11), (QList<int>{0, 2, -7}));
}

TEST_F(FilterRunTest, NoSwitchOnClearsTheMarksKeepsEverythingAndTheLoadingNamesTheIssue) {
    shared().operationLog = QStringLiteral("x");
    run_GuoLv(kIssue);
    EXPECT_EQ(shared().operationLog, QStringLiteral("x\r\n\r\n表格中无[２００８１１８]期数据．"));
    EXPECT_TRUE(ui().lines().filter(QStringLiteral("GRID")).isEmpty());
    expand();
    store_Execute(
        QStringLiteral("UPDATE 日志表 SET 过滤标记=1, 缩水标记=2, 精选标记=999, 临时数据=5 WHERE 序号<=10"));
    shared().biaoJiQingLing = 0;
    run_GuoLv(kIssue);
    EXPECT_EQ(shared().operationLog,
              kInitLog + kLoading + QStringLiteral("\r\n\r\n全部条件过滤完成,余：４２０ 注"));
    EXPECT_EQ(
        intScalar(QStringLiteral(
            "select count(*) from 日志表 where 过滤标记<>0 or 缩水标记<>0 or 精选标记<>0 or 临时数据<>0")),
        0);
    EXPECT_EQ(tickets().size(), 420u);
    EXPECT_EQ(shared().biaoJiQingLing, 1);
    EXPECT_EQ(ui().lines().filter(QStringLiteral("GRID TDBGrid_RZ 420 rows")).size(), 1);
    EXPECT_EQ(ui().lines().last(), QStringLiteral("SET mnu_UserQiehuan.enabled = true"));
    // A long log is replaced at the loading.
    shared().operationLog = QString(31, u'x');
    run_GuoLv(kIssue);
    EXPECT_EQ(shared().operationLog, kLoading + QStringLiteral("\r\n\r\n全部条件过滤完成,余：４２０ 注"));
}

TEST_F(FilterRunTest, RejectAllEmptiesTheTable) {
    expand();
    set_ShiYongQingKuang(1, 1);   // 和值 on with no value allowed
    set_ShiYongQingKuang(76, 1);  // the next filter then finds no ticket
    run_GuoLv(kIssue);
    EXPECT_EQ(shared().operationLog, kInitLog + kLoading +
                                         QStringLiteral("\r\n\r\n[ 和 值 ]过滤后余：０ 注"
                                                        "\r\n\r\n全部条件过滤完成,余：０ 注"));
    EXPECT_TRUE(tickets().empty());
    // The in-progress line was shown and then replaced by the result line.
    EXPECT_TRUE(ui().lines().contains(
        QStringLiteral("LOG ") +
        ScriptedScreen::oneLine(kInitLog + kLoading +
                                QStringLiteral("\r\n\r\n[ 和 值 ]过滤正在进行中．．．"))));
}

TEST_F(FilterRunTest, StopInsideAFilterOrALaterFaultKeepsWhatWasDecided) {
    expand();
    allowSums([](int v) { return v % 2 == 0; });
    // ID|序号|过滤标记: the first 100 decided, those kept renumbered from 1 and marked, the 320 not
    // reached as the first step left them.
    QStringList expected;
    int kept = 0;
    for (const auto& t : tickets())
        if (t.id > 100)
            expected << QStringLiteral("%1|%1|0").arg(t.id);
        else if (sum(t.reds) % 2 == 0)
            expected << QStringLiteral("%1|%2|1").arg(t.id).arg(++kept);
    ui().stopAfterPumps(420 + 100);  // the loading takes 420, then 100 tickets are decided
    run_GuoLv(kIssue);
    EXPECT_EQ(queryLines(store(), QStringLiteral("select ID, 序号, 过滤标记 from 日志表 order by ID")),
              expected);
    // No result line of the stopped filter, the stop line instead of the closing one.
    EXPECT_EQ(shared().operationLog,
              kInitLog + kLoading +
                  QStringLiteral("\r\n\r\n[ 和 值 ]过滤正在进行中．．．\r\n\r\n用户中止,当前记录余：") +
                  wide(kept + 320) + QStringLiteral(" 注"));
    EXPECT_EQ(shared().tingZhi, 0);
    // A second run starts over on what is left.
    run_GuoLv(kIssue);
    for (const auto& t : tickets()) EXPECT_EQ(sum(t.reds) % 2, 0);
    // A fault in a later filter leaves the run; the earlier passes stay done.
    allowSums([](int v) { return v % 4 == 0; });
    store_Execute(QStringLiteral("UPDATE 号码特性 SET 尾0=1"));
    set_ShiYongQingKuang(37, 1);
    EXPECT_THROW(run_GuoLv(kIssue), StoreError);
    const auto rows = tickets();
    for (const auto& t : rows) EXPECT_EQ(sum(t.reds) % 4, 0);
    EXPECT_EQ(rows.back().serial, int(rows.size()));
    EXPECT_EQ(shared().tingZhi, 0);
}

// With a tolerance the run counts each condition's misses over every ticket and removes those
// failing more than k. Of the 420: 220 have an odd sum, 280 a span other than 9 (not both 1 and
// 10), 144 both. A Stop keeps the verdicts given and names no result; a verdict that cannot be
// given breaks the run as it breaks the plain one.
TEST_F(FilterRunTest, ToleranceCountsEachConditionsMissesAndStopsOrFailsLikeThePlainRun) {
    expand();
    allowSums([](int v) { return v % 2 == 0; });
    set_GuoLvFanWei(3300, 3340, 0);
    set_GuoLvTiaoJian(3309, 1);
    set_ShiYongQingKuang(4, 1);  // 跨度 9 only
    set_FilterTolerance(1);
    run_GuoLv(kIssue);
    EXPECT_TRUE(
        logEndsWith(u"[ 和 值 ]未通过：２２０ 注\r\n\r\n[ 跨 度 ]未通过：２８０ 注\r\n\r\n"
                    "[容错值=１]失败超过１个条件的号码已删除：１４４ 注，余：２７６ "
                    "注\r\n\r\n全部条件过滤完成,余：２７６ 注"))
        << shared().operationLog.toStdString();
    const auto left = tickets();
    ASSERT_EQ(left.size(), 276u);
    for (size_t i = 0; i < left.size(); ++i) {
        EXPECT_EQ(left[i].serial, int(i) + 1);
        EXPECT_TRUE(sum(left[i].reds) % 2 == 0 || (left[i].reds[1] == 1 && left[i].reds[6] == 10));
    }

    store_Execute(QStringLiteral("DELETE FROM 日志表"));
    expand();
    ui().stopAfterPumps(420 + 100);  // the loading, then 100 tickets judged
    run_GuoLv(kIssue);
    const auto stopped = tickets();
    std::map<int, int> marks;  // mark -> tickets: those judged and kept, and the 320 not reached
    for (const auto& t : stopped) ++marks[t.mark];
    EXPECT_EQ(marks, (std::map<int, int>{{0, 320}, {1, int(stopped.size()) - 320}}));
    EXPECT_LT(stopped.size(), 420u);
    EXPECT_FALSE(logContains(u"已删除"));
    EXPECT_TRUE(
        logEndsWith(QStringLiteral("用户中止,当前记录余：") + wide(stopped.size()) + QStringLiteral(" 注")));

    store_Execute(QStringLiteral("UPDATE 号码特性 SET 尾0=1"));
    set_ShiYongQingKuang(37, 1);
    EXPECT_THROW(run_GuoLv(kIssue), StoreError);
    EXPECT_EQ(tickets().size(), stopped.size());
    EXPECT_EQ(shared().tingZhi, 0);
}

TEST_F(FilterRunTest, OtherIssuesAreUntouched) {
    expand();
    store_Execute(QStringLiteral("UPDATE 日志表 SET 期号=2008117 WHERE 序号>400"));
    store_Execute(QStringLiteral("UPDATE 日志表 SET 序号=序号+1000 WHERE 期号=2008117"));
    const auto others = [] {
        return queryLines(store(), QStringLiteral("select * from 日志表 where 期号=2008117"));
    };
    const QStringList othersBefore = others();
    ASSERT_EQ(othersBefore.size(), 20);
    allowSums([](int v) { return v == 30; });  // most go: the few kept are named to the store
    run_GuoLv(kIssue);
    for (const auto& t : tickets(kIssue)) EXPECT_EQ(sum(t.reds), 30);
    allowSums([](int) { return true; });  // all pass: one statement marks them
    run_GuoLv(kIssue);
    for (const auto& t : tickets(kIssue)) EXPECT_EQ(t.mark, 1);
    EXPECT_EQ(others(), othersBefore);
}

TEST_F(FilterRunTest, StopWhileLoadingRunsNoFilter) {
    expand();
    store_Execute(QStringLiteral("UPDATE 日志表 SET 临时数据=5"));
    allowSums([](int) { return false; });
    shared().biaoJiQingLing = 1;
    ui().stopAfterPumps(10);
    run_GuoLv(kIssue);
    EXPECT_EQ(tickets().size(), 420u);
    EXPECT_EQ(intScalar(QStringLiteral("select count(*) from 日志表 where 临时数据=0")), 10);
    EXPECT_EQ(shared().operationLog, kInitLog + QStringLiteral("\r\n\r\n正载入数据[２００８１１８期]．．．"));
    EXPECT_EQ(shared().biaoJiQingLing, 0);
    EXPECT_EQ(shared().tingZhi, 0);
}

TEST_F(FilterRunTest, EveryFilterIsProvidedAndAMissingOneIsNamed) {
    for (const FilterStep& step : filterSteps())
        for (const FilterDef& def : step.filters) EXPECT_TRUE(def.provided()) << def.label.toStdString();
    expand();
    FilterDef missing;
    missing.label = QStringLiteral("[测试]");
    missing.switchedOn = [] { return true; };
    const QString said =
        kInitLog + QStringLiteral("\r\n\r\n") + msg::filterNotProvided(QStringLiteral("[测试]"));
    filter_Run(kIssue, missing);
    EXPECT_EQ(shared().operationLog, said);
    // Silent once no ticket is left to look at.
    store_Execute(QStringLiteral("DELETE FROM 日志表"));
    filter_Run(kIssue, missing);
    EXPECT_EQ(shared().operationLog, said);
}

TEST_F(FilterRunTest, ValueOutOfRangeBreaksThePassWithoutDeleting) {
    expand();
    FilterDef def;
    def.label = QStringLiteral("[测试]");
    def.switchedOn = [] { return true; };
    int seen = 0;
    def.prepare = [&](FilterPass&) {
        TicketTest t;
        t.value = [&](const TicketBalls& b) { return ++seen > 3 ? 200 : b.reds[1] == 1 ? 1 : 0; };
        return t;
    };
    shared().guoLvShuZu[0] = 0;
    shared().guoLvShuZu[1] = 1;
    EXPECT_THROW(filter_SharedLoop(kIssue, def), StoreError);
    EXPECT_EQ(tickets().size(), 420u);
    EXPECT_EQ(columnValues(store(), QStringLiteral("select 过滤标记 from 日志表 order by ID limit 5")),
              (QList<int>{1, 1, 1, 0, 0}));
}

}  // namespace
}  // namespace dovrex::test
