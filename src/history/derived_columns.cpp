#include "history/derived_columns.h"

#include <QStringList>
#include <vector>

#include "domain/metrics.h"
#include "history/history_queries.h"
#include "screen/shared_state.h"
#include "store/store.h"

namespace dovrex {

namespace {

// Per-number lookup tables read from 号码特性 at every pass: groups and intervals are user data.
struct NumberTables {
    int daShu[34] = {}, xiaoShu[34] = {};
    int diWei[34] = {}, gaoWei[34] = {};
    int quJian[34][4] = {};
    int ziDingYi[34][10] = {};
    int wei[34][10] = {}, qi[34][10] = {}, jiu[34][10] = {}, shiYi[34][11] = {}, shiEr[34][12] = {},
        tou[34][10] = {};
    int touShu[34] = {}, weiShu[34] = {};
    int jiHe[34] = {}, ouHe[34] = {}, jiShu[34] = {}, ouShu[34] = {};
};

bool flagAt(const Cursor& c, int pos) {
    return c.value(pos).toInt() != 0;
}

template <int N>
void readGroups(int (&table)[34][N], const QString& prefix, bool ordered) {
    QStringList cols;
    for (int k = 0; k < N; ++k) cols << prefix + QString::number(k);
    auto c =
        store_Query(QStringLiteral("select 号码,%1 from 号码特性 %2")
                        .arg(cols.join(u','), ordered ? QStringLiteral(" ORDER BY INDEX ASC") : QString()));
    for (; !c->eof(); c->moveNext()) {
        const int x = c->intValue(0);
        if (x < 1 || x > 33) continue;
        for (int k = 0; k < N; ++k) table[x][k] = flagAt(*c, k + 1);
    }
}

void readQuJian(NumberTables& t) {
    auto c = store_Query(QStringLiteral("select 号码,区间1,区间2,区间3,区间4 from 号码特性  "));
    for (; !c->eof(); c->moveNext()) {
        const int x = c->intValue(0);
        if (x < 1 || x > 33) continue;
        for (int k = 0; k < 4; ++k) t.quJian[x][k] = flagAt(*c, k + 1);
    }
}

NumberTables readNumberTables() {
    NumberTables t;
    for (auto c = store_Query(QStringLiteral("select 号码,大数 from 号码特性  ORDER BY INDEX ASC"));
         !c->eof(); c->moveNext()) {
        const int x = c->intValue(0);
        if (x < 1 || x > 33) continue;
        (flagAt(*c, 1) ? t.daShu : t.xiaoShu)[x] = 1;
    }
    for (auto c = store_Query(QStringLiteral("select 号码,低尾码 from 号码特性  ORDER BY INDEX ASC"));
         !c->eof(); c->moveNext()) {
        const int x = c->intValue(0);
        if (x < 1 || x > 33) continue;
        (flagAt(*c, 1) ? t.diWei : t.gaoWei)[x] = 1;
    }
    readQuJian(t);
    {
        auto c = store_Query(QStringLiteral(
            "select "
            "号码,自定义组1,自定义组2,自定义组3,自定义组4,自定义组5,自定义组6,自定义组7,自定义组8,自定义组9,"
            "自定义组10 from 号码特性  "));
        for (; !c->eof(); c->moveNext()) {
            const int x = c->intValue(0);
            if (x < 1 || x > 33) continue;
            for (int k = 0; k < 10; ++k) t.ziDingYi[x][k] = flagAt(*c, k + 1);
        }
    }
    readGroups(t.wei, QStringLiteral("尾"), true);
    readGroups(t.qi, QStringLiteral("七"), true);
    readGroups(t.jiu, QStringLiteral("九"), true);
    readGroups(t.shiYi, QStringLiteral("十一"), true);
    readGroups(t.shiEr, QStringLiteral("十二"), true);
    readGroups(t.tou, QStringLiteral("头"), true);
    for (int x = 1; x <= 33; ++x) {
        t.touShu[x] = x / 10;
        t.weiShu[x] = x % 10;
        if (x % 2) {
            t.jiHe[x] = x;
            t.jiShu[x] = 1;
        } else {
            t.ouHe[x] = x;
            t.ouShu[x] = 1;
        }
    }
    return t;
}

Reds readReds(const Cursor& c, int firstRedPos) {
    Reds r{};
    for (int i = 1; i <= 6; ++i) r[size_t(i)] = c.intValue(firstRedPos + i - 1);
    return r;
}

// The reds of the current row, checked: a number outside 1..33, or one that comes twice, stops the
// pass at that row (the rows before it stay written). Six distinct reds are also what keeps every
// shape within its pattern table: no five-ball group can then hold six.
Reds checkedReds(const Cursor& c, int firstRedPos) {
    const Reds r = readReds(c, firstRedPos);
    bool seen[kRedCount + 1] = {};
    for (int i = 1; i <= 6; ++i) {
        const int n = r[size_t(i)];
        const bool valid = n >= 1 && n <= kRedCount && !seen[n];
        if (!valid)
            throw StoreError(QStringLiteral("期号 %1: 红球%2 = %3")
                                 .arg(c.value(QStringLiteral("期号")).toString())
                                 .arg(i)
                                 .arg(n));
        seen[n] = true;
    }
    return r;
}

int sum(const int (&table)[34], const Reds& r) {
    int s = 0;
    for (int i = 1; i <= 6; ++i) s += table[r[size_t(i)]];
    return s;
}

template <int N>
int sumGroup(const int (&table)[34][N], const Reds& r, int k) {
    int s = 0;
    for (int i = 1; i <= 6; ++i) s += table[r[size_t(i)]][k];
    return s;
}

template <int N>
const QString& shape5(const int (&table)[34][N], const Reds& r) {
    const ShapeCounts s = shapeCounts(r, table);
    return gesTable5Text(gesTable5Code(s.m, s.g));
}

// Temperature of the draw at `index` of an issue-ordered list: how often its six reds came up in
// the n draws before it (all earlier draws when there are fewer).
int temperatureAt(const std::vector<Reds>& draws, size_t index, int n) {
    int hits[34] = {};
    const size_t first = index >= size_t(n) ? index - size_t(n) : 0;
    for (size_t j = first; j < index; ++j)
        for (int i = 1; i <= 6; ++i) ++hits[draws[j][size_t(i)]];
    int value = 0;
    for (int i = 1; i <= 6; ++i) value += hits[draws[index][size_t(i)]];
    return value;
}

}  // namespace

void recalc_LiShiLie(IssueNumber from, IssueNumber to, bool showProgress) {
    const IssueNumber start = prev_QiHao(from, 1);
    auto c =
        store_Query(QStringLiteral("select * from 历史记录 where 期号>=%1 and 期号<=%2 ORDER BY 期号 ASC")
                        .arg(start)
                        .arg(to));
    if (c->recordCount() == 0) return;
    const NumberTables t = readNumberTables();
    Screen& ui = screen();
    if (showProgress) ui.ui_Progress(0, c->recordCount(), 0, true);

    const int red1 = c->fieldIndex(QStringLiteral("红球1"));
    Reds prev{};
    if (c->recordCount() > 1) {
        prev = checkedReds(*c, red1);
        c->moveNext();
    }
    const QStringList derived = [] {
        QStringList cols{
            QStringLiteral("和值"),     QStringLiteral("奇数和值"),   QStringLiteral("偶数和值"),
            QStringLiteral("奇数个数"), QStringLiteral("偶数个数"),   QStringLiteral("大数个数"),
            QStringLiteral("小数个数"), QStringLiteral("高尾码个数"), QStringLiteral("低尾码个数")};
        for (int k = 1; k <= 4; ++k) cols << QStringLiteral("区间%1").arg(k);
        for (int k = 1; k <= 10; ++k) cols << QStringLiteral("自定义组%1").arg(k);
        cols << QStringLiteral("跨度") << QStringLiteral("最大间距") << QStringLiteral("AC值")
             << QStringLiteral("连号") << QStringLiteral("重叠号") << QStringLiteral("斜位码")
             << QStringLiteral("尾数形式") << QStringLiteral("间距七") << QStringLiteral("间距九")
             << QStringLiteral("间距十一") << QStringLiteral("间距十二") << QStringLiteral("头数形式")
             << QStringLiteral("头数和值") << QStringLiteral("尾数和值") << QStringLiteral("已完成");
        return cols;
    }();
    std::vector<int> pos;
    for (const QString& name : derived) pos.push_back(c->fieldIndex(name));

    {
        Transaction tx(store());
        int done = 0;
        for (; !c->eof(); ++done) {
            const Reds cur = checkedReds(*c, red1);
            int k = 0;
            auto put = [&](const QVariant& v) { c->setValue(pos[size_t(k++)], v); };
            put(sum(t.jiHe, cur) + sum(t.ouHe, cur));
            put(sum(t.jiHe, cur));
            put(sum(t.ouHe, cur));
            put(sum(t.jiShu, cur));
            put(sum(t.ouShu, cur));
            put(sum(t.daShu, cur));
            put(sum(t.xiaoShu, cur));
            put(sum(t.gaoWei, cur));
            put(sum(t.diWei, cur));
            for (int q = 0; q < 4; ++q) put(sumGroup(t.quJian, cur, q));
            for (int q = 0; q < 10; ++q) put(sumGroup(t.ziDingYi, cur, q));
            put(calc_KuaDu(cur));
            put(calc_JianJuMax(cur));
            put(calc_AC(cur));
            put(lianHaoText(calc_LianHaoMax(cur)));
            put(calc_CongDie(prev, cur));
            put(calc_XieWeiMa(prev, cur));
            put(shape5(t.wei, cur));
            put(shape5(t.qi, cur));
            put(shape5(t.jiu, cur));
            put(shape5(t.shiYi, cur));
            put(shape5(t.shiEr, cur));
            {
                const ShapeCounts s = shapeCounts(cur, t.tou);
                put(gesTable6Text(gesTable6Code(s.m, s.g)));
            }
            put(sum(t.touShu, cur));
            put(sum(t.weiShu, cur));
            put(QStringLiteral("Y"));
            c->update();
            prev = cur;
            c->moveNext();
            ui.ui_Pump();
            if (showProgress) ui.ui_Progress(0, c->recordCount(), done + 1, true);
        }
    }
    if (showProgress) {
        ui.ui_Progress(0, c->recordCount(), c->recordCount(), true);
        ui.ui_Progress(0, c->recordCount(), c->recordCount(), false);
    }
    recalc_WenDu(from, to, showProgress);
}

int calc_WenDu(IssueNumber issue, int n) {
    auto own = store_Query(
        QStringLiteral("select 红球1,红球2,红球3,红球4,红球5,红球6 from 历史记录 where 期号=%1").arg(issue));
    if (own->recordCount() == 0) return 0;
    const IssueNumber start = prev_QiHao(issue, n);
    auto before =
        store_Query(QStringLiteral("select 红球1,红球2,红球3,红球4,红球5,红球6 from 历史记录 where 期号<%1 "
                                   "and 期号>=%2")
                        .arg(issue)
                        .arg(start));
    int hits[34] = {};
    for (; !before->eof(); before->moveNext())
        for (int i = 0; i < 6; ++i) {
            const int x = before->intValue(i);
            if (x >= 1 && x <= 33) ++hits[x];
        }
    int value = 0;
    for (int i = 0; i < 6; ++i) {
        const int x = own->intValue(i);
        if (x >= 1 && x <= 33) value += hits[x];
    }
    return value;
}

void recalc_WenDu(IssueNumber from, IssueNumber to, bool showProgress) {
    // All draws up to `to` in issue order, so that each value is counted over the rows before it
    // without a query per number.
    std::vector<Reds> draws;
    std::vector<IssueNumber> issues;
    {
        auto all = store_Query(QStringLiteral("select 期号,红球1,红球2,红球3,红球4,红球5,红球6 from 历史记录 "
                                              "where 期号<=%1 order by 期号 asc")
                                   .arg(to));
        draws.reserve(size_t(all->recordCount()));
        for (; !all->eof(); all->moveNext()) {
            issues.push_back(all->intValue(0));
            Reds r = readReds(*all, 1);
            for (int i = 1; i <= 6; ++i)
                if (r[size_t(i)] < 1 || r[size_t(i)] > 33) r[size_t(i)] = 0;
            draws.push_back(r);
        }
    }
    auto c = store_Query(
        QStringLiteral(
            "select 期号, 温度值5, 温度值10 from 历史记录 where 期号>=%1 and 期号<=%2 order by 期号 asc")
            .arg(from)
            .arg(to));
    Screen& ui = screen();
    if (showProgress) ui.ui_Progress(0, c->recordCount(), 0, true);
    Transaction tx(store());
    size_t index = size_t(std::lower_bound(issues.begin(), issues.end(), from) - issues.begin());
    for (int done = 0; !c->eof(); ++done, ++index) {
        c->setValue(1, temperatureAt(draws, index, 5));
        c->setValue(2, temperatureAt(draws, index, 10));
        c->update();
        c->moveNext();
        ui.ui_Pump();
        if (showProgress) ui.ui_Progress(0, c->recordCount(), done + 1, true);
    }
    if (showProgress) ui.ui_Progress(0, c->recordCount(), c->recordCount(), false);
}

void recalc_QuJian(IssueNumber from, IssueNumber to) {
    Screen& ui = screen();
    ui.ui_Message(QStringLiteral("区间重新划分之后，各区间的开出号码个数需要重新计算。。。"));
    auto c =
        store_Query(QStringLiteral("select * from 历史记录 where 期号>=%1 and 期号<=%2 ORDER BY 期号 ASC")
                        .arg(from)
                        .arg(to));
    NumberTables t;
    readQuJian(t);
    const int red1 = c->fieldIndex(QStringLiteral("红球1"));
    int pos[4];
    for (int k = 0; k < 4; ++k) pos[k] = c->fieldIndex(QStringLiteral("区间%1").arg(k + 1));
    ui.ui_Progress(0, c->recordCount(), 0, true);
    Transaction tx(store());
    for (int done = 0; !c->eof(); ++done) {
        const Reds cur = checkedReds(*c, red1);
        for (int k = 0; k < 4; ++k) c->setValue(pos[k], sumGroup(t.quJian, cur, k));
        c->update();
        c->moveNext();
        ui.ui_Pump();
        ui.ui_Progress(0, c->recordCount(), done + 1, true);
    }
    ui.ui_Progress(0, c->recordCount(), c->recordCount(), false);
}

}  // namespace dovrex
