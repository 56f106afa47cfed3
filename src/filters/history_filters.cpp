// The filters that judge a ticket against the draws before the issue being filtered.

#include <QHash>
#include <QSet>
#include <algorithm>
#include <cstdint>
#include <memory>
#include <vector>

#include "filters/filter_families.h"
#include "filters/filter_run.h"
#include "history/history_queries.h"
#include "screen/run_panel.h"
#include "screen/shared_state.h"
#include "store/store.h"

namespace dovrex {

QString historyMatchText(const QString& name, IssueNumber issue) {
    const QString n = QStringLiteral("[") + name + QStringLiteral("]");
    const QString i = to_QuanJiao(issue);
    return QStringLiteral("注意，本次过滤使用了") + n + QStringLiteral("这个过滤条件,") + n +
           QStringLiteral("的设置与历史开奖记录相关！") + kCrLf2 +
           QStringLiteral("在不同的期号中由于对应的历史记录不同,有可能得出不同的结果。这是正常情况。") +
           kCrLf2 + QStringLiteral("【正在过滤： ") + i + QStringLiteral(" 期，此次结果仅适用于 ") + i +
           QStringLiteral(" 期！！！】");
}

void warnHistoryMatch(const QString& name, IssueNumber issue) {
    filterRun().liShiXiangGuan = true;
    screen().ui_TimedTip(historyMatchText(name, issue), 10);
}

namespace {

// The six reds of a draw; a draw that is not there fails the run, as reading a missing row does.
Reds drawReds(IssueNumber issue) {
    auto c = store_Query(
        QStringLiteral("select 期号,红球1,红球2,红球3,红球4,红球5,红球6 from 历史记录 where 期号=?"),
        {issue});
    if (c->eof()) throw StoreError(QStringLiteral("历史记录: no draw %1").arg(issue));
    Reds r{};
    for (int i = 1; i <= 6; ++i) r[size_t(i)] = c->intValue(i);
    return r;
}

// Flags 0..34 of the previous draw's numbers, so that both neighbours of 1 and 33 exist.
std::array<int, 36> previousMarks(IssueNumber issue) {
    const Reds prev = drawReds(prev_QiHao(issue, 1));
    std::array<int, 36> marks{};
    for (int i = 1; i <= 6; ++i)
        if (prev[size_t(i)] >= 1 && prev[size_t(i)] <= kRedCount) marks[size_t(prev[size_t(i)])] = 1;
    return marks;
}

TicketTest chongDie(FilterPass& pass) {
    warnHistoryMatch(QStringLiteral("重叠号"), pass.issue);
    const auto marks = previousMarks(pass.issue);
    return {[marks](const TicketBalls& b) {
                int v = 0;
                for (int i = 1; i <= 6; ++i) v += marks[size_t(b.reds[size_t(i)])];
                return v;
            },
            {}};
}

// A red counts once when either neighbour came up; being in the draw itself does not count.
TicketTest xieWeiMa(FilterPass& pass) {
    warnHistoryMatch(QStringLiteral("斜位码"), pass.issue);
    const auto marks = previousMarks(pass.issue);
    return {[marks](const TicketBalls& b) {
                int v = 0;
                for (int i = 1; i <= 6; ++i) {
                    const size_t n = size_t(b.reds[size_t(i)]);
                    if (marks[n - 1] == 1 || marks[n + 1] == 1) ++v;
                }
                return v;
            },
            {}};
}

// How many of the draws from the n-th before the issue up to the one before it hold each number.
// The value of a very hot ticket can pass the range loaded for the filter and then reads what an
// earlier filter left in guoLvShuZu.
std::function<TicketTest(FilterPass&)> wenDu(int n) {
    return [n](FilterPass& pass) {
        const IssueNumber start = prev_QiHao(pass.issue, n);
        auto c = store_Query(QStringLiteral("select 红球1,红球2,红球3,红球4,红球5,红球6 from 历史记录 "
                                            "where 期号<? and 期号>=?"),
                             {pass.issue, start});
        NumberTable t{};
        for (; !c->eof(); c->moveNext()) {
            std::array<bool, 34> seen{};
            for (int i = 0; i < 6; ++i) {
                const int x = c->intValue(i);
                if (x >= 1 && x <= kRedCount && !seen[size_t(x)]) {
                    seen[size_t(x)] = true;
                    ++t[size_t(x)];
                }
            }
        }
        return TicketTest{[t](const TicketBalls& b) { return sumOver(t, b.reds); }, {}};
    };
}

// Six reds in one number, compared position by position.
quint64 redsKey(const Reds& r) {
    quint64 k = 0;
    for (int i = 1; i <= 6; ++i) k = k * 64 + quint64(r[size_t(i)] & 63);
    return k;
}

const QString kLiShiLabel = QStringLiteral("[历史数据过滤]");

// The setting of 历史数据过滤 and the draws of its range, never the issue's own draw or a later one.
struct LiShiDraws {
    int match = 6;
    std::vector<Reds> draws;
    // With a HistoryDrawCache: the range within the cache instead of a copy in `draws`.
    const Reds* cachedFirst = nullptr;
    size_t cachedCount = 0;
};

// The copy a HistoryDrawCache keeps, in issue order; null when none lives.
struct CachedDraws {
    std::vector<IssueNumber> issues;
    std::vector<Reds> reds;
};
CachedDraws* cachedDraws = nullptr;

LiShiDraws readLiShiDraws(IssueNumber issue) {
    auto setting = store_Query(QStringLiteral("select * from 历史数据过滤"));
    LiShiDraws out;
    const IssueNumber low = setting->intValue(QStringLiteral("最小值"));
    IssueNumber high = setting->intValue(QStringLiteral("最大值"));
    out.match = setting->intValue(QStringLiteral("匹配值"));
    if (high >= issue) high = prev_QiHao(issue, 1);
    if (cachedDraws) {
        const auto& issues = cachedDraws->issues;
        const auto from = std::lower_bound(issues.begin(), issues.end(), low);
        const auto to = std::upper_bound(from, issues.end(), high);
        out.cachedFirst = cachedDraws->reds.data() + (from - issues.begin());
        out.cachedCount = size_t(to - from);
        return out;
    }
    auto c = store_Query(QStringLiteral("select 期号,红球1,红球2,红球3,红球4,红球5,红球6 from 历史记录 "
                                        "where 期号>=? and 期号<=? order by 期号 asc"),
                         {low, high});
    for (; !c->eof(); c->moveNext()) {
        Reds r{};
        for (int i = 1; i <= 6; ++i) r[size_t(i)] = c->intValue(i);
        out.draws.push_back(r);
    }
    return out;
}

// The reds of a draw as bits (red n is bit n).
using DrawMarks = std::uint64_t;

DrawMarks drawMarks(const Reds& draw) {
    DrawMarks marks = 0;
    for (int i = 1; i <= 6; ++i)
        if (draw[size_t(i)] >= 1 && draw[size_t(i)] <= kRedCount) marks |= DrawMarks(1) << draw[size_t(i)];
    return marks;
}

// The reds of a ticket that came up in a draw.
int sharedReds(DrawMarks marks, const Reds& reds) {
    int c = 0;
    for (int k = 1; k <= 6; ++k) {
        const int x = reds[size_t(k)];
        if (x >= 1 && x <= kRedCount) c += int(marks >> x & 1);
    }
    return c;
}

// Every `match` reds that some draw holds together, one bit each: a ticket of six different reds
// shares `match` of them with a draw exactly when one of its own subsets of that size is marked.
// One look-up per subset (20 at most) instead of a look at every draw of the range, for the passes
// over millions of tickets.
class SharedSubsets {
  public:
    SharedSubsets(const std::vector<DrawMarks>& draws, int match) : match_(match) {
        if (match_ < 1 || match_ > 5) return;
        for (int n = 0; n <= kRedCount; ++n) {
            binom_[size_t(n)][0] = 1;
            for (int k = 1; k <= 6; ++k)
                binom_[size_t(n)][size_t(k)] =
                    n == 0 ? 0 : binom_[size_t(n - 1)][size_t(k - 1)] + binom_[size_t(n - 1)][size_t(k)];
        }
        bits_.assign(size_t(binom_[kRedCount][size_t(match_)] / 64 + 1), 0);
        for (const DrawMarks m : draws) {
            int numbers[kRedCount];
            int count = 0;
            for (int x = 1; x <= kRedCount; ++x)
                if (m >> x & 1) numbers[count++] = x;
            markSubsets(numbers, count, 0, 0, 0);
        }
    }
    // Six different reds ascending, all of 1..33, and a match the table covers.
    bool applies(const Reds& r) const {
        if (bits_.empty() || r[1] < 1 || r[6] > kRedCount) return false;
        for (int i = 2; i <= 6; ++i)
            if (r[size_t(i)] <= r[size_t(i - 1)]) return false;
        return true;
    }
    bool any(const Reds& r) const { return anySubset(r, 1, 0, 0); }

  private:
    // The rank of a subset a1 < a2 < ... among all subsets of its size: sum of C(a_i - 1, i).
    void markSubsets(const int* numbers, int count, int from, int taken, std::uint64_t rank) {
        if (taken == match_) {
            bits_[rank / 64] |= std::uint64_t(1) << (rank % 64);
            return;
        }
        for (int i = from; i < count; ++i)
            markSubsets(numbers, count, i + 1, taken + 1,
                        rank + binom_[size_t(numbers[i] - 1)][size_t(taken + 1)]);
    }
    bool anySubset(const Reds& r, int from, int taken, std::uint64_t rank) const {
        if (taken == match_) return bits_[rank / 64] >> (rank % 64) & 1;
        for (int i = from; i <= 6 - (match_ - taken - 1); ++i)
            if (anySubset(r, i + 1, taken + 1, rank + binom_[size_t(r[size_t(i)] - 1)][size_t(taken + 1)]))
                return true;
        return false;
    }

    int match_;
    std::array<std::array<std::uint64_t, 7>, kRedCount + 1> binom_{};
    std::vector<std::uint64_t> bits_;
};

// The verdict of 历史数据过滤 on one ticket: below 6, fewer than `match` reds in common with every
// draw of the range; at 6, reds unequal to every draw's.
TicketTest liShiTest(FilterPass& pass) {
    const LiShiDraws d = readLiShiDraws(pass.issue);
    if (d.cachedFirst) {
        // The back-test judges one ticket an issue: straight over the cached draws, nothing built.
        const Reds* first = d.cachedFirst;
        const size_t count = d.cachedCount;
        const int match = d.match;
        return {{}, [first, count, match](const TicketBalls& b) {
                    for (size_t i = 0; i < count; ++i) {
                        const bool same = match >= 6 ? redsKey(first[i]) == redsKey(b.reds)
                                                     : sharedReds(drawMarks(first[i]), b.reds) >= match;
                        if (same) return false;
                    }
                    return true;
                }};
    }
    if (d.match >= 6) {
        auto keys = std::make_shared<QSet<quint64>>();
        for (const Reds& r : d.draws) keys->insert(redsKey(r));
        return {{}, [keys](const TicketBalls& b) { return !keys->contains(redsKey(b.reds)); }};
    }
    auto marks = std::make_shared<std::vector<DrawMarks>>();
    for (const Reds& r : d.draws) marks->push_back(drawMarks(r));
    const int match = d.match;
    auto shared = std::make_shared<const SharedSubsets>(*marks, match);
    return {{}, [marks, match, shared](const TicketBalls& b) {
                if (shared->applies(b.reds)) return !shared->any(b.reds);
                for (const DrawMarks m : *marks)
                    if (sharedReds(m, b.reds) >= match) return false;
                return true;
            }};
}

// 历史数据过滤: removes every ticket that shares `match` or more reds with a draw of the range.
// Below 6 each draw is a pass of its own over the tickets; at 6 a ticket goes when its reds equal
// a draw's, compared position by position (both tables hold their reds ascending).
int liShi(IssueNumber issue, const FilterDef& def) {
    SharedState& s = shared();
    if (!filter_SwitchedOn(def)) return 0;
    RunPanel panel(QStringLiteral("操作进行中。。。"));
    const LiShiDraws read = readLiShiDraws(issue);
    const int match = read.match;
    const std::vector<Reds>& draws = read.draws;
    const QString saved = s.operationLog;
    log_Set(saved + kCrLf2 + kLiShiLabel + QStringLiteral("过滤正进行中．．．"));

    Screen& ui = screen();
    int counter = 0;
    try {
        TicketSet& set = tickets_InPlay(issue);
        if (match < 6) {
            bool sized = false;
            int steps = 0;
            for (size_t d = 0; d < draws.size() && !s.tingZhi; ++d) {
                const DrawMarks marks = drawMarks(draws[d]);
                counter = 0;
                if (set.rows.empty()) continue;
                if (!sized) {
                    panel.setTotal(int(std::min<long long>(
                        (long long)draws.size() * (long long)set.rows.size(), 0x7fffffff)));
                    sized = true;
                }
                for (size_t i = 0; i < set.rows.size() && !s.tingZhi; ++i) {
                    TicketRecord& r = set.rows[i];
                    decide_Ticket(r, sharedReds(marks, r.balls.reds) < match, counter);
                    ui.ui_Pump();
                    panel.step(++steps);
                }
                // The DELETE of this draw runs after a Stop too.
                set.purge();
            }
        } else {
            panel.setTotal(int(draws.size()));
            // Each draw's DELETE takes the tickets equal to it; one look-up a ticket does the same.
            QHash<quint64, size_t> firstDraw;  // reds key -> index of the first draw with them
            for (size_t d = draws.size(); d-- > 0;) firstDraw.insert(redsKey(draws[d]), d);
            size_t reached = 0;
            int done = 0;
            for (; reached < draws.size() && !s.tingZhi; ++reached) {
                ui.ui_Pump();
                panel.step(++done);
            }
            set.remove([&](const TicketRecord& r) {
                const auto it = firstDraw.constFind(redsKey(r.balls.reds));
                return it != firstDraw.cend() && it.value() < reached;
            });
            panel.setTotal(int(set.rows.size()));
            for (size_t i = 0; i < set.rows.size() && !s.tingZhi; ++i) {
                set.rows[i].serial = ++counter;
                ui.ui_Pump();
                panel.step(counter);
            }
        }
    } catch (...) {
        tickets_Done(false);
        throw;
    }
    const bool stopped = s.tingZhi;
    tickets_Done(!stopped);
    if (!stopped) log_Set(saved + kCrLf2 + msg::filterLeft(kLiShiLabel, counter));
    return counter;
}

}  // namespace

HistoryDrawCache::HistoryDrawCache() {
    cachedDraws = new CachedDraws;
    auto c = store_Query(
        QStringLiteral("select 期号,红球1,红球2,红球3,红球4,红球5,红球6 from 历史记录 order by 期号 asc"));
    for (; !c->eof(); c->moveNext()) {
        Reds r{};
        for (int i = 1; i <= 6; ++i) r[size_t(i)] = c->intValue(i);
        cachedDraws->issues.push_back(c->intValue(0));
        cachedDraws->reds.push_back(r);
    }
}

HistoryDrawCache::~HistoryDrawCache() {
    delete cachedDraws;
    cachedDraws = nullptr;
}

bool attach_HistoryFilter(FilterDef& def) {
    const QString& n = def.name;
    if (n == u"filter_ChongDie") {
        def.prepare = chongDie;
    } else if (n == u"filter_XieWeiMa") {
        def.prepare = xieWeiMa;
    } else if (n == u"filter_WenDu5" || n == u"filter_WenDu10") {
        const bool five = n == u"filter_WenDu5";
        // These two warn before they look at the tickets.
        def.afterSwitch = [five](FilterPass& pass) {
            warnHistoryMatch(five ? QStringLiteral("温度值5") : QStringLiteral("温度值10"), pass.issue);
            return true;
        };
        def.prepare = wenDu(five ? 5 : 10);
    } else if (n == u"filter_LiShi") {
        def.run = liShi;
        def.ticketTest = liShiTest;
    } else {
        return false;
    }
    def.dependsOnIssue = true;
    return true;
}

}  // namespace dovrex
