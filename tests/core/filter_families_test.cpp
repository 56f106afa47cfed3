// Edge cases of each filter family on hand-made tickets and draws.
#include <optional>

#include "core/filter_fixture.h"
#include "filters/condition_editing.h"
#include "filters/condition_store.h"
#include "support/table_rows.h"

namespace dovrex::test {
namespace {

const Reds kOneToSix = makeReds(1, 2, 3, 4, 5, 6);

QList<int> membersOf(const QString& column) {
    QList<int> out;
    for (auto c =
             store_Query(QStringLiteral("select 号码 from 号码特性 where [%1]<>0 order by 号码").arg(column));
         !c->eof(); c->moveNext())
        out << c->intValue(0);
    return out;
}

// The reds for which `keep` holds.
QList<int> numbersWhere(const std::function<bool(int)>& keep) {
    QList<int> out;
    for (int n = 1; n <= 33; ++n)
        if (keep(n)) out << n;
    return out;
}

// --- range filters ---

TEST_F(FilterTest, RangeValuesAndCountsOfQuotedTickets) {
    EXPECT_EQ(valueOf(u"filter_KuaDu", kOneToSix), 5);
    EXPECT_EQ(valueOf(u"filter_JianJuMax", kOneToSix), 1);
    EXPECT_EQ(valueOf(u"filter_LianHao", kOneToSix), 10);
    EXPECT_EQ(valueOf(u"filter_AC", kOneToSix), 0);
    EXPECT_EQ(valueOf(u"filter_LianHao", makeReds(1, 2, 3, 10, 11, 20)), 5);  // "3+2"
    EXPECT_EQ(valueOf(u"filter_LianHao", makeReds(1, 2, 5, 6, 10, 11)), 3);   // "2+2+2"
    EXPECT_EQ(valueOf(u"filter_LianHao", makeReds(1, 3, 5, 7, 9, 11)), 0);
    // Span and largest gap read the numbers, not the ticket's order.
    const Reds shuffled = makeReds(26, 2, 17, 8, 13, 12);
    EXPECT_EQ(valueOf(u"filter_KuaDu", shuffled), 24);
    EXPECT_EQ(valueOf(u"filter_JianJuMax", shuffled), 9);
    // A store whose 低尾码 is not the complement of 高尾码: the low-tail count ignores it.
    store_Execute(QStringLiteral("UPDATE 号码特性 SET 低尾码=0"));
    const Reds r = makeReds(1, 5, 17, 20, 26, 33);
    EXPECT_EQ(valueOf(u"filter_JiShuGeShu", r), 4);
    EXPECT_EQ(valueOf(u"filter_OuShuGeShu", r), 2);
    EXPECT_EQ(valueOf(u"filter_DaShuGeShu", r), 4);
    EXPECT_EQ(valueOf(u"filter_XiaoShuGeShu", r), 2);
    EXPECT_EQ(valueOf(u"filter_GaoWeiMaGeShu", r), 3);
    EXPECT_EQ(valueOf(u"filter_DiWeiMaGeShu", r), 3);
    // And a changed 大数 moves both counts together.
    store_Execute(QStringLiteral("UPDATE 号码特性 SET 大数=1 WHERE 号码=1"));
    EXPECT_EQ(valueOf(u"filter_DaShuGeShu", r), 5);
    EXPECT_EQ(valueOf(u"filter_XiaoShuGeShu", r), 1);
}

TEST_F(FilterTest, IntervalsOverlapOrStayEmptyAndCustomGroupsCountAndStop) {
    store_Execute(QStringLiteral("UPDATE 号码特性 SET 区间1=(号码<=20), 区间2=(号码>=10), 区间3=0"));
    EXPECT_EQ(valueOf(u"filter_QuJian", kOneToSix, kIssue, 1), 6);
    EXPECT_EQ(valueOf(u"filter_QuJian", kOneToSix, kIssue, 2), 0);
    EXPECT_EQ(valueOf(u"filter_QuJian", makeReds(10, 11, 12, 13, 14, 15), kIssue, 2), 6);
    addTickets({kOneToSix, makeReds(10, 11, 12, 13, 14, 15)});
    on(18);  // 区间3: every ticket counts 0
    allow(3720, 3720);
    EXPECT_EQ(runFilter(u"filter_QuJian", 3), 2);
    allow(3720, 3720, 0);
    allow(3721, 3726);
    EXPECT_EQ(runFilter(u"filter_QuJian", 3), 0);
    EXPECT_TRUE(tickets(kIssue).empty());
    // A custom group counts its members; a Stop returns at once.
    addTickets({kOneToSix, makeReds(3, 6, 9, 12, 15, 18)});
    EXPECT_TRUE(makeGroupPreset(12, QStringLiteral("除3余0(0路)")));
    EXPECT_EQ(valueOf(u"filter_ZiDingYiZu", kOneToSix, kIssue, 12), 2);
    on(52);
    allow(4512, 4512);  // group 12: two members allowed
    shared().tingZhi = 1;
    EXPECT_EQ(runFilter(u"filter_ZiDingYiZu", 12), 0);  // returns at once on Stop
    EXPECT_EQ(tickets(kIssue).size(), 2u);
    shared().tingZhi = 0;
    EXPECT_EQ(runFilter(u"filter_ZiDingYiZu", 12), 1);
    EXPECT_EQ(redsLeft(), std::vector<Reds>{kOneToSix});
    EXPECT_TRUE(logEndsWith(u"[自定义组12]过滤后余：１ 注"));
}

// --- shape filters ---

TEST_F(FilterTest, ShapeKeysAndTheirQuirks) {
    EXPECT_EQ(valueOf(u"filter_WeiShuXingShi", makeReds(1, 2, 11, 12, 21, 31)), 8);  // "4,2"
    EXPECT_EQ(valueOf(u"filter_TouShuXingShi", kOneToSix), 8);                       // "6"
    EXPECT_EQ(valueOf(u"filter_JianJu9", makeReds(1, 2, 10, 11, 19, 28)), 8);
    EXPECT_EQ(valueOf(u"filter_TouShuXingShi", makeReds(1, 10, 30, 31, 32, 33)), 5);  // "4,1,1"
    EXPECT_EQ(valueOf(u"filter_JianJu11", kOneToSix), 0);
    EXPECT_EQ(valueOf(u"filter_JianJu12", makeReds(1, 13, 25, 2, 14, 3)), 5);  // "3,2,1"
    // Five reds in one step-7 group find no entry and are decided by "1,1,1,1,1,1".
    const Reds five = makeReds(1, 8, 15, 22, 29, 30);
    EXPECT_EQ(valueOf(u"filter_JianJu7", five), 0);
    addTickets({five});
    on(39);
    allow(4029, 4029);  // "5,1" on the screen decides nothing
    EXPECT_EQ(runFilter(u"filter_JianJu7"), 0);
    addTickets({five});
    allow(4020, 4020);
    EXPECT_EQ(runFilter(u"filter_JianJu7"), 1);
    // A head shape without a key (five groups, only a changed store has them) reads index 0.
    store_Execute(QStringLiteral("UPDATE 号码特性 SET 头4=1, 头3=0 WHERE 号码=33"));
    EXPECT_EQ(valueOf(u"filter_TouShuXingShi", makeReds(1, 10, 20, 30, 31, 33)), 0);  // (2, 5)
}

// --- history-relative filters ---

class HistoryFilterTest : public FilterTest {
  protected:
    HistoryFilterTest() {
        addDraw(2008115, QStringLiteral("2008/09/30"), makeReds(1, 2, 3, 4, 5, 6));
        addDraw(2008116, QStringLiteral("2008/10/02"), makeReds(1, 2, 3, 10, 20, 30));
        addDraw(2008117, QStringLiteral("2008/10/05"), makeReds(5, 7, 9, 11, 13, 15), 3);
        addDraw(2008118, QStringLiteral("2008/10/07"), makeReds(8, 9, 10, 11, 12, 13));  // the issue itself
    }
};

TEST_F(HistoryFilterTest, RepeatAndDiagonalAgainstThePreviousDraw) {
    // A back-test of 2008118 sees 2008117, never its own draw.
    const Reds prev = makeReds(5, 7, 9, 11, 13, 15);
    EXPECT_EQ(valueOf(u"filter_ChongDie", prev), 6);
    EXPECT_EQ(valueOf(u"filter_XieWeiMa", prev), 0);
    EXPECT_EQ(valueOf(u"filter_ChongDie", makeReds(8, 9, 10, 11, 12, 13)), 3);
    EXPECT_EQ(valueOf(u"filter_XieWeiMa", makeReds(6, 8, 10, 12, 14, 16)), 6);  // 8 counts once
    EXPECT_EQ(valueOf(u"filter_XieWeiMa", makeReds(1, 2, 3, 31, 32, 33)), 0);
    // An issue to come takes the newest draw.
    EXPECT_EQ(valueOf(u"filter_ChongDie", makeReds(8, 9, 10, 11, 12, 13), 2008119), 6);
    EXPECT_EQ(valueOf(u"filter_XieWeiMa", makeReds(7, 14, 20, 21, 22, 33), 2008119), 2);
}

TEST_F(HistoryFilterTest, WarningsAndTheClosingLine) {
    // 重叠号 warns only once it has tickets; 温度值5 before it looks.
    on(7);
    on(46);
    allow(3470, 3480);
    allow(4160, 4179);
    runFilter(u"filter_ChongDie");
    EXPECT_TRUE(ui().lines().filter(QStringLiteral("TIP")).isEmpty());
    runFilter(u"filter_WenDu5");
    EXPECT_EQ(ui().lines().filter(QStringLiteral("TIP")),
              QStringList{QStringLiteral("TIP 10s ") +
                          ScriptedScreen::oneLine(historyMatchText(QStringLiteral("温度值5"), kIssue))});
    EXPECT_EQ(
        historyMatchText(QStringLiteral("重叠号"), kIssue),
        QStringLiteral("注意，本次过滤使用了[重叠号]这个过滤条件,[重叠号]的设置与历史开奖记录相关！\r\n\r\n"
                       "在不同的期号中由于对应的历史记录不同,有可能得出不同的结果。这是正常情况。\r\n\r\n"
                       "【正在过滤： ２００８１１８ 期，此次结果仅适用于 ２００８１１８ 期！！！】"));

    addTickets({kOneToSix, makeReds(5, 7, 9, 20, 21, 22)});
    set_ShiYongQingKuang(46, 0);
    allow(3473, 3480, 0);  // at most two repeats
    run_GuoLv(kIssue);
    EXPECT_EQ(redsLeft(), std::vector<Reds>{kOneToSix});
    EXPECT_TRUE(logEndsWith(u"全部条件过滤完成,余：１ 注\r\n\r\n【此结果仅适用于 ２００８１１８ 期！！！】"));
    // 历史数据过滤 alone does not say so.
    set_ShiYongQingKuang(7, 0);
    writeHistoryMatch({true, 2008110, 2008112, 6});
    run_GuoLv(kIssue);
    EXPECT_TRUE(
        logEndsWith(u"[历史数据过滤]过滤后余：１ 注\r\n\r\n"
                    "全部条件过滤完成,余：１ 注"));
}

TEST_F(HistoryFilterTest, TemperatureCountsEarlierDrawsAndReadsStaleEntries) {
    // Three draws before 2008118: fewer than five, so all of them count.
    EXPECT_EQ(valueOf(u"filter_WenDu5", kOneToSix), 2 * 3 + 3 + 1);
    EXPECT_EQ(valueOf(u"filter_WenDu10", makeReds(5, 9, 10, 11, 30, 33)), 2 + 1 + 1 + 1 + 1);
    for (int i = 0; i < 6; ++i)
        addDraw(2008101 + i, QStringLiteral("2008/09/0%1").arg(i + 1), makeReds(1, 2, 3, 4, 5, 6));
    EXPECT_EQ(valueOf(u"filter_WenDu5", kOneToSix), 2 * 3 + 3 + 1 + 2 * 6);
    // 温度值10 loads indices 0..29; a value of 30 or more reads what an earlier filter left.
    const Reds hot = makeReds(1, 2, 3, 4, 5, 6);
    EXPECT_EQ(valueOf(u"filter_WenDu10", hot), 2 * 3 + 3 + 1 + 6 * 6);
    addTickets({hot, makeReds(20, 21, 22, 23, 24, 25)});
    on(3);
    allow(3000, 3170);  // 偶数和值: every value, so index 46 holds 1 when 温度值10 reads it
    on(47);
    run_GuoLv(kIssue);
    EXPECT_EQ(redsLeft(), std::vector<Reds>{hot});
}

// Both ends of the range count, the issue's own draw never does, and red 33 is a red like the
// others: the run, the verdict the back-test takes and the same over its copy of the history agree.
// A range with its low end above its high one removes nothing.
TEST_F(HistoryFilterTest, BothEndsOfTheRangeCountAndRedThirtyThreeToo) {
    addDraw(2008113, QStringLiteral("2008/09/25"), makeReds(16, 17, 18, 19, 21, 22));
    addDraw(2008114, QStringLiteral("2008/09/27"), makeReds(28, 29, 30, 31, 32, 33));
    struct Case {
        int low, high, match;
        Reds ticket;
        bool goes;
    };
    // clang-format off
    const Case cases[] = {
        {2008114, 2008116, 3, makeReds(23, 24, 25, 31, 32, 33), true},   // the low end, by 31 32 33
        {2008114, 2008116, 3, makeReds(8, 10, 12, 14, 20, 30), true},    // the high end
        {2008114, 2008116, 3, makeReds(5, 7, 9, 22, 24, 26), false},     // like the draw above it
        {2008114, 2008116, 3, makeReds(16, 17, 18, 23, 25, 27), false},  // like the draw below it
        {2008114, 2008116, 6, makeReds(28, 29, 30, 31, 32, 33), true},
        {2008114, 2008116, 6, makeReds(1, 2, 3, 10, 20, 30), true},
        {2008114, 2008116, 6, makeReds(16, 17, 18, 19, 21, 22), false},
        {2008114, 2008116, 6, makeReds(5, 7, 9, 11, 13, 15), false},
        {2008117, 2008200, 6, makeReds(5, 7, 9, 11, 13, 15), true},      // the end stops before the issue
        {2008117, 2008200, 6, makeReds(8, 9, 10, 11, 12, 13), false},    // the issue's own draw
    };
    // clang-format on
    FilterPass pass{kIssue};
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message()
                     << c.low << ".." << c.high << " at " << c.match << ", ticket from " << c.ticket[1]);
        writeHistoryMatch({true, c.low, c.high, c.match});
        const TicketBalls b{c.ticket};
        for (bool cached : {false, true}) {
            std::optional<HistoryDrawCache> cache;
            if (cached) cache.emplace();
            EXPECT_EQ(filterNamed(u"filter_LiShi").ticketTest(pass).accept(b), !c.goes) << cached;
        }
        store_Execute(QStringLiteral("DELETE FROM 日志表"));
        addTickets({c.ticket});
        runFilter(u"filter_LiShi");
        EXPECT_EQ(tickets(kIssue).empty(), c.goes);
    }
    // Low above high: nothing is compared, nothing goes, and the log says 0.
    store_Execute(QStringLiteral("DELETE FROM 日志表"));
    addTickets({makeReds(1, 2, 3, 4, 5, 6), makeReds(8, 9, 10, 11, 12, 13)});
    writeHistoryMatch({true, 2008117, 2008115, 3});
    EXPECT_EQ(runFilter(u"filter_LiShi"), 0);
    EXPECT_EQ(tickets(kIssue).size(), 2u);
    EXPECT_TRUE(logEndsWith(u"[历史数据过滤]过滤后余：０ 注"));
}

TEST_F(HistoryFilterTest, StopInsideAMatchPassStillDeletesItsRejects) {
    addTickets({makeReds(1, 2, 3, 4, 5, 6), makeReds(1, 2, 3, 10, 20, 31), makeReds(8, 9, 10, 11, 12, 13),
                makeReds(1, 2, 21, 22, 23, 24)});
    writeHistoryMatch({true, 2008115, 2008117, 3});
    const QString before = shared().operationLog;
    ui().stopAfterPumps(2);  // two tickets into the first draw, both rejects
    EXPECT_EQ(runFilter(u"filter_LiShi"), 0);
    // Not reached: old number and mark.
    EXPECT_EQ(queryLines(store(), QStringLiteral("select 序号, 过滤标记, 红球1 from 日志表 order by ID")),
              words("3|0|8 4|0|1"));
    EXPECT_EQ(shared().operationLog, before + QStringLiteral("\r\n\r\n[历史数据过滤]过滤正进行中．．．"));
}

TEST_F(FilterTest, NoPreviousDrawFailsTheHistoryFilters) {
    addTickets({kOneToSix});
    on(7);
    EXPECT_THROW(runFilter(u"filter_ChongDie"), StoreError);
    EXPECT_EQ(tickets(kIssue).size(), 1u);
    // The parity of the last draw fails only when its slot is on.
    EXPECT_EQ(runFilter(u"filter_DanShuang", 0), 0);
    on(70);
    EXPECT_THROW(runFilter(u"filter_DanShuang", 0), StoreError);
}

// --- position and parity filters ---

TEST_F(FilterTest, PositionToleranceCountsWrongPositions) {
    store_Execute(QStringLiteral("UPDATE 号码特性 SET 第1位=(号码<=5), 第7位=(号码<=8)"));
    addTickets({kOneToSix, makeReds(6, 7, 8, 9, 10, 11)});
    addTickets({makeReds(7, 8, 9, 10, 11, 12)}, 9);
    on(30);
    on(36);
    set_GuoLvTiaoJian(3901, 1);
    EXPECT_EQ(runFilter(u"filter_DingWei"), 2);
    EXPECT_TRUE(logEndsWith(u"[号码定位,容错值=１]过滤后余：２ 注"));
    set_GuoLvTiaoJian(3901, 0);
    EXPECT_EQ(runFilter(u"filter_DingWei"), 1);
    EXPECT_EQ(redsLeft(), std::vector<Reds>{kOneToSix});
    // A tolerance as large as the positions on: said, and no pass.
    set_GuoLvTiaoJian(3901, 2);
    addTickets({makeReds(7, 8, 9, 10, 11, 12)}, 9);
    EXPECT_EQ(runFilter(u"filter_DingWei"), 0);
    EXPECT_TRUE(logEndsWith(u"\r\n\r\n[号码定位,容错值=２] <容错值太大无法过滤掉号码.>"));
    EXPECT_EQ(tickets(kIssue).size(), 2u);
    // A position on with no number allowed fails every ticket.
    store_Execute(QStringLiteral("UPDATE 号码特性 SET 第3位=0"));
    on(32);
    set_GuoLvTiaoJian(3901, 0);
    EXPECT_EQ(runFilter(u"filter_DingWei"), 0);
    EXPECT_TRUE(tickets(kIssue).empty());
}

TEST_F(FilterTest, ParityPatternsExcludeWhatTheyEqual) {
    addTickets({kOneToSix, makeReds(2, 3, 4, 5, 6, 7)}, 4);
    // 单双单双单双, blue either: the first ticket equals it.
    const int pattern[] = {1, 0, 1, 0, 1, 0, 2};
    for (int i = 0; i < 7; ++i) set_GuoLvTiaoJian(5021 + i, pattern[i]);
    on(72);
    EXPECT_EQ(runFilter(u"filter_DanShuang", 2), 1);
    EXPECT_EQ(redsLeft(), std::vector<Reds>{makeReds(2, 3, 4, 5, 6, 7)});
    EXPECT_TRUE(logEndsWith(u"[排除掉单双组合2：] 单双单双单双*\r\n\r\n过滤后余：１ 注"));
    // All "*": everything goes.
    set_GuoLvFanWei(5021, 5027, 2);
    EXPECT_EQ(runFilter(u"filter_DanShuang", 2), 0);
    EXPECT_TRUE(tickets(kIssue).empty());
    // The last draw's pattern, blue included, is written even while its slot is off.
    addDraw(2008117, QStringLiteral("2008/10/05"), makeReds(1, 3, 4, 6, 8, 9), 11);
    runFilter(u"filter_DanShuang", 0);
    QList<int> written;
    for (int id = 5001; id <= 5007; ++id) written << get_GuoLvTiaoJian(id);
    EXPECT_EQ(written, (QList<int>{1, 1, 0, 0, 0, 1, 1}));
    addTickets({makeReds(1, 3, 4, 6, 8, 9)}, 5);
    addTickets({makeReds(1, 3, 4, 6, 8, 9)}, 6);
    on(70);
    EXPECT_EQ(runFilter(u"filter_DanShuang", 0), 1);
    EXPECT_EQ(tickets(kIssue)[0].blue, 6);
}

// --- the common group generator ---

TEST_F(FilterTest, CommonGroupsFromArithmetic) {
    set_GuoLvTiaoJian(3805, 1);
    EXPECT_TRUE(makeGroupPreset(1, QStringLiteral("除3余0(0路)")));
    EXPECT_EQ(membersOf(QStringLiteral("自定义组1")), numbersWhere([](int n) { return n % 3 == 0; }));
    EXPECT_EQ(scalar(QStringLiteral("select 别名 from 自定义别名 where 序号=1")).toString(),
              QStringLiteral("除3余0(0路)"));
    EXPECT_EQ(get_GuoLvTiaoJian(3805), 1);  // the counts stay
    EXPECT_TRUE(makeGroupPreset(1, QStringLiteral("０_尾")));
    EXPECT_EQ(membersOf(QStringLiteral("自定义组1")), (QList<int>{10, 20, 30}));
    EXPECT_TRUE(makeGroupPreset(20, QStringLiteral("除6余5")));
    EXPECT_EQ(membersOf(QStringLiteral("自定义组20")), numbersWhere([](int n) { return n % 6 == 5; }));
    EXPECT_TRUE(makeGroupPreset(2, QStringLiteral("偶数号码")));
    EXPECT_EQ(membersOf(QStringLiteral("自定义组2")), numbersWhere([](int n) { return n % 2 == 0; }));
    EXPECT_FALSE(makeGroupPreset(2, QStringLiteral("---")));
    // No draws: the draw items say so and change nothing.
    EXPECT_FALSE(makeGroupPreset(2, QStringLiteral("２００３００１期旧码(复码)")));
    EXPECT_FALSE(makeGroupPreset(2, QStringLiteral("２００３００１期新码(中码)")));
    EXPECT_EQ(ui().lines().filter(QStringLiteral("MESSAGE")),
              (QStringList{QStringLiteral("MESSAGE 无法提取上期开奖号码！"),
                           QStringLiteral("MESSAGE 无法提取最近2期的开奖号码！")}));
    EXPECT_EQ(membersOf(QStringLiteral("自定义组2")), numbersWhere([](int n) { return n % 2 == 0; }));
    EXPECT_TRUE(listGroupPresets().contains(QStringLiteral("２００３００１期孤码")));
    EXPECT_EQ(listGroupPresets().size(), 2 + 1 + 6 + 1 + 3 + 1 + 10 + 3 * 1 + 4 + 5 + 6);
}

TEST_F(HistoryFilterTest, CommonGroupsFromTheLatestDraws) {
    // Latest 08 09 10 11 12 13, before it 05 07 09 11 13 15.
    const QString issue = QStringLiteral("２００８１１８");
    EXPECT_TRUE(listGroupPresets().contains(issue + QStringLiteral("期旧码(复码)")));
    auto members = [&](const QString& tail) {
        EXPECT_TRUE(makeGroupPreset(3, issue + tail));
        return membersOf(QStringLiteral("自定义组3"));
    };
    EXPECT_EQ(members(QStringLiteral("期旧码(复码)")), (QList<int>{8, 9, 10, 11, 12, 13}));
    EXPECT_EQ(members(QStringLiteral("期斜码")), (QList<int>{7, 14}));
    EXPECT_EQ(members(QStringLiteral("期孤码")), numbersWhere([](int n) { return n < 7 || n > 14; }));
    EXPECT_EQ(members(QStringLiteral("期新码(中码)")),
              numbersWhere([](int n) { return !QList<int>{5, 7, 8, 9, 10, 11, 12, 13, 15}.contains(n); }));
    EXPECT_EQ(members(QStringLiteral("期跳码(隔码)")), (QList<int>{5, 7, 9, 11, 13, 15}));
    EXPECT_EQ(members(QStringLiteral("期旧码尾数")),
              numbersWhere([](int n) { return QList<int>{8, 9, 0, 1, 2, 3}.contains(n % 10); }));
}

}  // namespace
}  // namespace dovrex::test
