#include "analysis/probability.h"

#include <memory>

#include "screen/control_roles.h"
#include "screen/shared_state.h"
#include "store/store.h"

namespace dovrex {

namespace {

// What the analysis says where it was started, once its marks are on the pick page.
QString analysisDoneText(IssueNumber issue) {
    return QStringLiteral(
               "第 %1 期的号码开出概率分析已完成：\r\n开出概率低的号码已在“选取号码”页的号码上标出。")
        .arg(issue);
}

int numberFromSeed(UniformRandom& rnd, int t, int x, double scale, int modulus) {
    const float u = rnd(-(t + x));
    const auto v = static_cast<std::int32_t>(roundHalfEven(double(u) * scale + 1.0));
    return v % modulus + 1;
}

// The ball columns of 历史记录 by position 1..7.
QString ballColumn(int c) {
    return c <= 6 ? QStringLiteral("红球%1").arg(c) : QStringLiteral("蓝球");
}

// M[r][c] of the transition passes: r = 1 the draw right before the issue, 3 the third before.
using RecentDraws = std::array<std::array<int, 8>, 4>;

RecentDraws loadRecentDraws(IssueNumber issue) {
    const IssueNumber p1 = prev_QiHao(issue, 1), p3 = prev_QiHao(issue, 3);
    RecentDraws m{};
    auto c =
        store_Query(QStringLiteral("select 期号,红球1,红球2,红球3,红球4,红球5,红球6,蓝球 from 历史记录 where "
                                   "期号>=%1 and 期号<=%2 order by 期号 asc")
                        .arg(p3)
                        .arg(p1));
    int r = 3;
    for (c->moveFirst(); !c->eof() && r >= 1; c->moveNext(), --r)
        for (int col = 1; col <= 7; ++col) m[size_t(r)][size_t(col)] = c->intValue(col);
    return m;
}

// 红开 and 蓝开: hits of each number in the ten draws before the issue.
void writeRecentCounts(IssueNumber issue) {
    const IssueNumber p1 = prev_QiHao(issue, 1), p10 = prev_QiHao(issue, 10);
    const QString head =
        QStringLiteral("select 遗漏数据 from 历史记录 where 期号<=%1 and 期号>=%2").arg(p1).arg(p10);
    std::array<int, 34> red{}, blue{};
    for (int n = 1; n <= kRedCount; ++n) {
        screen().ui_Pump();
        red[size_t(n)] =
            store_Query(head +
                        QStringLiteral(" and ( 红球1=%1 or 红球2=%1 or 红球3=%1 or 红球4=%1 or 红球5=%1 "
                                       "or 红球6=%1 )")
                            .arg(n))
                ->recordCount();
    }
    for (int n = 1; n <= kBlueCount; ++n) {
        screen().ui_Pump();
        blue[size_t(n)] = store_Query(head + QStringLiteral(" and 蓝球=%1").arg(n))->recordCount();
    }
    auto c = store_Query(QStringLiteral("select 红开,蓝开 from 概率表 order by 号码 asc"));
    int n = 1;
    for (c->moveFirst(); !c->eof(); c->moveNext(), ++n) {
        c->setValue(0, n <= kRedCount ? red[size_t(n)] : 0);
        c->setValue(1, n <= kRedCount ? blue[size_t(n)] : 0);
        c->update();
    }
    c->close();
}

// The blue ball of issue q; a missing row is the store's error.
int blueOf(IssueNumber q) {
    auto c = store_Query(QStringLiteral("select 蓝球 from 历史记录 where 期号=%1").arg(q));
    return c->intValue(0);
}

void tally(std::array<double, 34>& t, int blue) {
    if (blue >= 1 && blue <= kBlueCount) t[size_t(blue)] += 1;
}

// Writes (or adds) the tally into 蓝球 of every row; rows past 16 get 0.
void writeBlueTally(const std::array<double, 34>& t, bool add) {
    auto c = store_Query(QStringLiteral("select 蓝球,号码 from 概率表 order by 号码 asc"));
    for (c->moveFirst(); !c->eof(); c->moveNext()) {
        const int n = c->intValue(1);
        const double v = n >= 1 && n <= kRedCount ? t[size_t(n)] : 0.0;
        c->setValue(0, add ? c->value(0).toDouble() + v : v);
        c->update();
    }
    c->close();
}

void giveHistory(IssueNumber issue) {
    HistoryArray hist{};
    getHistoryRecord(hist, issue);
    CaiPiao& cp = caiPiao();
    cp.setQiHao(int(issue));
    cp.setZhongZi(1);
    cp.setHistoryRcord(hist);
}

void markTop(const QString& sql, bool red) {
    auto c = store_Query(sql);
    for (c->moveFirst(); !c->eof(); c->moveNext()) {
        const int n = c->intValue(0);
        if (red && n >= 1 && n <= kRedCount) gaiLvBiaoJi().red[size_t(n)] = true;
        if (!red && n >= 1 && n <= kBlueCount) gaiLvBiaoJi().blue[size_t(n)] = true;
    }
}

}  // namespace

// --- CaiPiao ---

void CaiPiao::setHistoryRcord(const HistoryArray& hist) {
    liShi_ = hist;
    youShuJu_ = true;
    yiJiSuan_ = false;
}

int CaiPiao::KillCOUNT(int n) {
    if (!yiJiSuan_) calc_JiShu();
    return n >= 1 && n <= kRedCount ? hongJiShu_[size_t(n)] : -1;
}

int CaiPiao::KillCOUNTblue(int n) {
    if (!yiJiSuan_) calc_JiShu();
    return n >= 1 && n <= kBlueCount ? lanJiShu_[size_t(n)] : -1;
}

int CaiPiao::rnd_HongQiu(int t, int x) {
    return numberFromSeed(rnd_, t, x, 88123456.0, kRedCount);
}
int CaiPiao::rnd_LanQiu(int t, int x) {
    return numberFromSeed(rnd_, t, x, 63345678.0, kBlueCount);
}

void CaiPiao::calc_JiShu() {
    if (!youShuJu_ || qiHao_ < 1) return;
    const int N = qiHao_, S = zhongZi_;
    hongJiShu_.fill(0);
    lanJiShu_.fill(0);
    for (int t = S + 1; t <= S + kSeeds; ++t) {
        screen().ui_Pump();
        int flag[4] = {0, 0, 0, 0};
        for (int k = 1; k <= 2; ++k) {
            const int r = rnd_HongQiu(t, N - k);
            // All seven columns: a red that names the previous blue ball counts as a hit too.
            for (int col = 1; col <= 7; ++col)
                if (r == liShi_[size_t(k)][size_t(col)]) flag[k] = 1;
        }
        const int r = rnd_HongQiu(t, N);
        if (flag[1] == 1) ++hongJiShu_[size_t(r)];  // the vote looks at the previous draw only
        if (t <= S + kBlueSeeds) {
            for (int k = 1; k <= 3; ++k) flag[k] = rnd_LanQiu(t, N - k) == liShi_[size_t(k)][7] ? 1 : 0;
            const int b = rnd_LanQiu(t, N);
            if (flag[1] + flag[2] + flag[3] > 0) ++lanJiShu_[size_t(b)];
        }
    }
    yiJiSuan_ = true;
}

CaiPiao& caiPiao() {
    auto& instance = shared().caiPiao;
    if (!instance) instance = std::make_shared<CaiPiao>();
    return *instance;
}

// --- the analyses ---

void calc_HongQiuGaiLv(IssueNumber issue, int topN) {
    gaiLvBiaoJi().issue = issue;
    giveHistory(issue);
    Transaction tx(store());
    auto c = store_Query(QStringLiteral("select 红球,号码 from 概率表 order by 号码 asc"));
    for (c->moveFirst(); !c->eof(); c->moveNext()) {
        c->setValue(0, caiPiao().KillCOUNT(c->intValue(1)));
        c->update();
    }
    c->close();
    gaiLvBiaoJi().red.fill(false);
    markTop(QStringLiteral("select top %1 号码 from 概率表 order by 红球 desc ,红开 desc,号码 asc").arg(topN),
            true);
}

void calc_LanKaiZhuanYi(IssueNumber issue) {
    Transaction tx(store());
    writeRecentCounts(issue);
    const RecentDraws m = loadRecentDraws(issue);
    std::array<double, 34> t{};
    for (int r = 1; r <= 3; ++r) {
        for (int col = 1; col <= 7; ++col) {
            screen().ui_Pump();
            const IssueNumber pr = prev_QiHao(issue, r);
            auto c = store_Query(
                QStringLiteral("select top 1 期号 from 历史记录 where %1=%2 and 期号<%3 order by 期号 desc")
                    .arg(ballColumn(col))
                    .arg(m[size_t(r)][size_t(col)])
                    .arg(pr));
            if (c->recordCount() == 0) continue;
            // The draw that stands to the one found as the issue stands to draw r before it.
            tally(t, blueOf(next_QiHao_n(c->intValue(0), r)));
        }
    }
    writeBlueTally(t, false);
}

void calc_LanKaiZhuanYi2(IssueNumber issue) {
    calc_LanKaiZhuanYi(issue);
    Transaction tx(store());
    const RecentDraws m = loadRecentDraws(issue);
    std::array<double, 34> t{};
    for (int k = 1; k <= 3; ++k) {
        for (int col = 1; col <= 7; ++col) {
            screen().ui_Pump();
            const IssueNumber p1 = prev_QiHao(issue, 1);
            auto c = store_Query(
                QStringLiteral("select top 4 期号 from 历史记录 where %1=%2 and 期号<%3 order by 期号 desc")
                    .arg(ballColumn(col))
                    .arg(m[1][size_t(col)])
                    .arg(p1));
            if (c->recordCount() == 0) continue;
            // Round k: the (k + 1)-th earlier draw with the newest draw's ball at this place.
            c->moveFirst();
            for (int i = 0; i < k; ++i) c->moveNext();
            if (c->eof()) continue;
            tally(t, blueOf(next_QiHao_n(c->intValue(0), 1)));
        }
    }
    {
        auto c = store_Query(QStringLiteral("select 蓝球,号码 from 概率表 order by 蓝球 desc,号码 asc"));
        int row = 0;
        for (c->moveFirst(); !c->eof(); c->moveNext(), ++row) {
            c->setValue(0, row < 2 ? 2 : 0);
            c->update();
        }
        c->close();
    }
    writeBlueTally(t, true);
    gaiLvBiaoJi().blue.fill(false);
    markTop(QStringLiteral("select top 1 号码 from 概率表 order by 蓝球 desc ,蓝开 desc,号码 asc"), false);
}

void calc_LanQiuGaiLv(IssueNumber issue, int topN) {
    calc_LanKaiZhuanYi2(issue);
    gaiLvBiaoJi().issue = issue;
    giveHistory(issue);
    Transaction tx(store());
    auto c = store_Query(QStringLiteral("select 蓝球,号码 from 概率表 where 号码<=16 order by 号码 asc"));
    for (c->moveFirst(); !c->eof(); c->moveNext()) {
        c->setValue(0, caiPiao().KillCOUNTblue(c->intValue(1)));
        c->update();
    }
    c->close();
    // The mark of the transition pass stays.
    markTop(
        QStringLiteral("select top %1 号码 from 概率表 where 号码<=16 order by 蓝球 desc ,蓝开 desc,号码 asc")
            .arg(topN),
        false);
}

double leadingNumber(const QString& text) {
    QString digits;
    bool point = false;
    int i = 0;
    while (i < text.size() && text[i].isSpace()) ++i;
    if (i < text.size() && (text[i] == u'-' || text[i] == u'+')) digits += text[i++];
    for (; i < text.size(); ++i) {
        const QChar ch = text[i];
        if (ch >= u'0' && ch <= u'9') {
            digits += ch;
        } else if (ch == u'.' && !point) {
            point = true;
            digits += ch;
        } else if (!ch.isSpace()) {
            break;
        }
    }
    bool ok = false;
    const double v = digits.toDouble(&ok);
    return ok ? v : 0.0;
}

void cmd_FX_Click() {
    Screen& ui = screen();
    ui.ui_Set(role::cmd_FX, QStringLiteral("enabled"), false);
    struct Restore {
        ~Restore() {
            screen().ui_RefreshPicks();
            screen().ui_Status(2, QString());
            screen().ui_Set(role::cmd_FX, QStringLiteral("enabled"), true);
        }
    } restore;
    try {
        ui.ui_Message(msg::kAnalysisNote, MessageKind::Information);
        const QString answer =
            ui.ui_AskText(QStringLiteral("分析哪期的号码？"), QStringLiteral("号码开出概率分析"),
                          QString::number(next_QiHao(Clock::today())));
        const auto issue = IssueNumber(roundHalfEven(leadingNumber(answer.trimmed().left(7))));
        // The work under way goes to the middle of the status line; the history's state stays.
        ui.ui_Status(2, QStringLiteral("号码开出概率分析正在进行中。。。。。。"));
        if (issue > 0) {
            calc_HongQiuGaiLv(issue, 8);
            calc_LanQiuGaiLv(issue, 5);
            ui.ui_TimedTip(analysisDoneText(issue), 5);
        }
    } catch (const StoreError&) {
        // The command's general trap: leave silently, keeping what was written.
    }
}

}  // namespace dovrex
