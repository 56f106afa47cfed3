#include "analysis/history_tables.h"

#include <array>

#include "domain/date_value.h"
#include "history/history_queries.h"
#include "screen/control_roles.h"
#include "screen/shared_state.h"
#include "store/store.h"

namespace dovrex {

namespace {

QString kColumn(int k) {
    return QStringLiteral("k") + twoDigits(k);
}

std::shared_ptr<Cursor> openDraws(IssueNumber from, IssueNumber to) {
    // The blank missing before "and" is the statement as the program has always had it.
    return store_Query(
        QStringLiteral("select 期号,红球1,红球2,红球3,红球4,红球5,红球6,蓝球 from 历史记录 where 期号>=") +
        QString::number(from) + QStringLiteral("and 期号<=") + QString::number(to) +
        QStringLiteral(" order by 期号 asc"));
}

void progress(int value, int max) {
    screen().ui_Set(role::ProgressBar_TuBiao, QStringLiteral("max"), max);
    screen().ui_Set(role::ProgressBar_TuBiao, QStringLiteral("value"), value);
}

// The group source of 分析表 or 自定义表.
struct GroupSource {
    QString table;   // 分析表号码组 / 号码特性
    QString prefix;  // 号码组合 / 自定义组
    QString target;  // 分析表 / 自定义表
};

GroupSource groupSource(bool custom) {
    if (custom) return {QStringLiteral("号码特性"), QStringLiteral("自定义组"), QStringLiteral("自定义表")};
    return {QStringLiteral("分析表号码组"), QStringLiteral("号码组合"), QStringLiteral("分析表")};
}

QString groupSelect(const GroupSource& g) {
    QStringList cols{QStringLiteral("号码")};
    for (int i = 1; i <= 20; ++i) cols << g.prefix + QString::number(i);
    return QStringLiteral("select ") + cols.join(u',') + QStringLiteral(" from ") + g.table;
}

int fillGroupTable(IssueNumber from, IssueNumber to, bool custom) {
    const GroupSource g = groupSource(custom);
    store_Execute(QStringLiteral("DELETE FROM %1 ").arg(g.target));
    // Group membership of every number: one read of the group table serves every draw.
    std::array<std::array<bool, 21>, kRedCount + 1> member{};
    {
        auto c = store_Query(groupSelect(g));
        for (c->moveFirst(); !c->eof(); c->moveNext()) {
            const int n = c->intValue(0);
            if (n < 1 || n > kRedCount) continue;
            for (int i = 1; i <= 20; ++i) member[size_t(n)][size_t(i)] = c->value(i).toBool();
        }
    }
    auto draws = openDraws(from, to);
    const int total = draws->recordCount();
    int done = 0;
    {
        Transaction tx(store());
        auto out = store_Query(QStringLiteral("select * from %1").arg(g.target));
        for (draws->moveFirst(); !draws->eof(); draws->moveNext()) {
            screen().ui_Pump();
            if (shared().tingZhi) break;
            out->addNew();
            out->setValue(0, draws->value(0));
            std::array<QString, 21> text;
            for (int b = 1; b <= 6; ++b) {
                const int ball = draws->intValue(b);
                if (ball < 1 || ball > kRedCount) continue;
                for (int i = 1; i <= 20; ++i)
                    if (member[size_t(ball)][size_t(i)])
                        text[size_t(i)] += twoDigits(ball) + QLatin1Char(' ');
            }
            for (int i = 1; i <= 20; ++i)
                if (!text[size_t(i)].isEmpty()) out->setValue(i, text[size_t(i)]);
            out->update();
            progress(++done, total);
        }
        out->close();
    }
    screen().ui_Grid(role::TDBGrid_zdy, store_Query(QStringLiteral("select * from %1").arg(g.target)));
    QList<int> widths{900};
    for (int i = 1; i <= 20; ++i) widths << -1;
    screen().ui_DressGrid(role::TDBGrid_zdy, fenXiBiao_Captions(custom), widths);
    return done;
}

std::vector<HitBar> recentHits(IssueNumber from, IssueNumber to, bool red) {
    static bool running = false;  // a click on the chart during the count does not start another
    std::vector<HitBar> bars;
    if (running) return bars;
    running = true;
    struct Reset {
        bool& flag;
        ~Reset() { flag = false; }
    } reset{running};
    const int count = red ? kRedCount : kBlueCount;
    const QString head =
        QStringLiteral("select 遗漏数据 from 历史记录 where 期号<=%1 and 期号>=%2").arg(to).arg(from);
    for (int n = 1; n <= count; ++n) {
        screen().ui_Pump();
        const QString cond =
            red ? QStringLiteral(
                      " and ( 红球1=%1 or 红球2=%1 or 红球3=%1 or 红球4=%1 or 红球5=%1 or 红球6=%1 )")
                      .arg(n)
                : QStringLiteral(" and 蓝球=%1").arg(n);
        bars.push_back({(red ? QStringLiteral("红球:") : QStringLiteral("蓝球:")) + twoDigits(n),
                        store_Query(head + cond)->recordCount()});
    }
    return bars;
}

}  // namespace

IssueNumber fenBu_PickIssue() {
    return next_QiHao(Clock::today());
}

std::shared_ptr<Cursor> open_HaoMaFenBu() {
    return store_Query(QStringLiteral("select * from 号码分布"));
}

int fill_HaoMaFenBu(IssueNumber fromIssue, IssueNumber toIssue) {
    screen().ui_Status(2, QStringLiteral(" 》》》》》 正在加载历史数据 《《《《《  "));
    screen().ui_Set(role::TDBGrid_FenBu, QStringLiteral("visible"), false);
    store_Execute(QStringLiteral("DELETE FROM 号码分布 "));
    auto draws = openDraws(fromIssue, toIssue);
    const int total = draws->recordCount();
    int done = 0;
    {
        Transaction tx(store());
        auto out = store_Query(QStringLiteral("select * from 号码分布"));
        for (draws->moveFirst(); !draws->eof(); draws->moveNext()) {
            screen().ui_Pump();
            if (shared().tingZhi) break;
            out->addNew();
            out->setValue(QStringLiteral("期号"), draws->value(0));
            for (int b = 1; b <= 6; ++b) {
                const int ball = draws->intValue(b);
                if (ball >= 1 && ball <= kRedCount) out->setValue(kColumn(ball), ball);
            }
            const int blue = draws->intValue(7);
            if (blue >= 1 && blue <= kBlueCount) out->setValue(kColumn(33 + blue), blue);
            out->update();
            progress(++done, total);
        }
        // The pick row: the next issue with the picks of 过滤条件.
        out->addNew();
        out->setValue(QStringLiteral("期号"), fenBu_PickIssue());
        auto picks = store_Query(QStringLiteral("select * from 过滤条件 where ID<200"));
        for (picks->moveFirst(); !picks->eof(); picks->moveNext()) {
            const int id = picks->intValue(0), value = picks->intValue(1);
            int k = 0;
            if (id >= 1 && id <= kRedCount) k = id;
            if (id >= 101 && id <= 100 + kBlueCount) k = 33 + id - 100;
            if (k == 0 || value == 0) continue;
            out->setValue(kColumn(k), value == 2 ? QStringLiteral("+") : QStringLiteral("*"));
        }
        out->update();
        out->close();
    }
    screen().ui_Grid(role::TDBGrid_FenBu, open_HaoMaFenBu());
    screen().ui_Set(role::TDBGrid_FenBu, QStringLiteral("visible"), true);
    screen().ui_Set(role::TDBGrid_FenBu, QStringLiteral("caption"), fenBu_Caption());
    screen().ui_Set(role::TDBGrid_FenBu, QStringLiteral("tooltip"), fenBu_Tip());
    screen().ui_Status(2, QString());
    return done;
}

QString fenBu_Caption() {
    return QStringLiteral("图表模式");
}

QString fenBu_Tip() {
    return QStringLiteral(
               "提示：在此图表模式下你可以方便的选取号码,只要在最下边一行的号码对应的位置上点一下鼠标。") +
           QStringLiteral("\r\n") +
           QStringLiteral(
               "[点击鼠标左键可以把号码设为“拖码”，点击右键可以把号码设为“胆码”，再次点击可取消选取]");
}

int fill_FenXiBiao(IssueNumber fromIssue, IssueNumber toIssue) {
    return fillGroupTable(fromIssue, toIssue, false);
}
int fill_ZiDingYiBiao(IssueNumber fromIssue, IssueNumber toIssue) {
    return fillGroupTable(fromIssue, toIssue, true);
}

QStringList fenXiBiao_Captions(bool custom) {
    const GroupSource g = groupSource(custom);
    QStringList captions{QStringLiteral("期号")};
    for (int i = 1; i <= 20; ++i) {
        auto c = store_Query(QStringLiteral("select 号码,") + g.prefix + QString::number(i) +
                             QStringLiteral(" from ") + g.table + QStringLiteral(" order by 号码 asc"));
        QStringList members;
        for (c->moveFirst(); !c->eof(); c->moveNext())
            if (c->value(1).toBool()) members << twoDigits(c->intValue(0));
        captions << (members.isEmpty() ? g.prefix + QString::number(i) : members.join(u' '));
    }
    return captions;
}

std::vector<HitBar> calc_RedRecentHits(IssueNumber fromIssue, IssueNumber toIssue) {
    return recentHits(fromIssue, toIssue, true);
}

std::vector<HitBar> calc_BlueRecentHits(IssueNumber fromIssue, IssueNumber toIssue) {
    return recentHits(fromIssue, toIssue, false);
}

FenXiZu readAnalysisGroups() {
    FenXiZu member{};
    auto c = store_Query(groupSelect(groupSource(false)));
    for (c->moveFirst(); !c->eof(); c->moveNext()) {
        const int n = c->intValue(0);
        if (n < 1 || n > kRedCount) continue;
        for (int i = 1; i <= 20; ++i) member[size_t(n)][size_t(i)] = c->value(i).toBool();
    }
    return member;
}

void writeAnalysisGroups(int number, int group, bool member) {
    if (number < 1 || number > kRedCount || group < 1 || group > 20) return;
    store_Execute(QStringLiteral("UPDATE 分析表号码组 SET 号码组合%1=? WHERE 号码=?").arg(group),
                  {member ? 1 : 0, number});
}

IssueRange fill_IssueCombos() {
    IssueRange range;
    auto c = store_Query(QStringLiteral("select 期号 from 历史记录 order by 期号 DESC"));
    for (c->moveFirst(); !c->eof(); c->moveNext()) range.issues << c->value(0).toString();
    if (range.issues.isEmpty()) return range;
    // From the tenth newest; a shorter history runs from its oldest draw.
    range.fromIndex = range.issues.size() >= 11 ? 9 : int(range.issues.size()) - 1;
    range.toIndex = 0;
    return range;
}

}  // namespace dovrex
