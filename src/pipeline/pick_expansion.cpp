#include "pipeline/pick_expansion.h"

#include "filters/condition_store.h"
#include "pipeline/pick_state.h"
#include "screen/shared_state.h"
#include "store/store.h"

namespace dovrex {

PickSet read_PickSet() {
    PickSet p;
    auto& shu = shared().guoLvShuZu;
    load_GuoLvFanWei(1, kRedCount);
    for (int n = 1; n <= kRedCount; ++n) {
        p.red[n] = shu[size_t(n)] >= 1;
        p.banker[n] = shu[size_t(n)] == 2;
        p.reds += p.red[n];
        p.bankers += p.banker[n];
    }
    load_GuoLvFanWei(kBlueBase + 1, kBlueBase + kBlueCount);
    for (int n = 1; n <= kBlueCount; ++n) {
        if (shu[size_t(n)] == 2) {
            p.blues.assign(1, n);
            break;
        }
        if (shu[size_t(n)] >= 1) p.blues.push_back(n);
    }
    p.tickets = ticketCount(p.reds, p.bankers, int(p.blues.size()), 0);
    return p;
}

std::vector<int> read_ShrinkFormula(int drags) {
    std::vector<int> xuhao;
    auto c = store_Query(QStringLiteral("select * from Ssgs where Haomagesu=? order by Xuhao ASC"), {drags});
    xuhao.reserve(size_t(c->recordCount()) + 1);
    for (; !c->eof(); c->moveNext()) xuhao.push_back(c->intValue(QStringLiteral("Xuhao")));
    xuhao.push_back(0);
    return xuhao;
}

std::vector<RedSet> expand_RedSets(const PickSet& picks) {
    std::vector<int> numbers;
    for (int n = 1; n <= kRedCount; ++n)
        if (picks.red[n]) numbers.push_back(n);
    std::vector<RedSet> out;
    const int n = int(numbers.size());
    if (n < kRedsPerTicket) return out;
    out.reserve(size_t(ticketCount(picks.reds, picks.bankers, 1, 0)));
    int at[kRedsPerTicket];
    for (int i = 0; i < kRedsPerTicket; ++i) at[i] = i;
    for (;;) {
        int held = 0;
        RedSet set;
        for (int i = 0; i < kRedsPerTicket; ++i) {
            set[size_t(i)] = (unsigned char)numbers[size_t(at[i])];
            held += picks.banker[numbers[size_t(at[i])]];
        }
        if (held == picks.bankers) out.push_back(set);
        int i = kRedsPerTicket - 1;
        while (i >= 0 && at[i] == n - kRedsPerTicket + i) --i;
        if (i < 0) break;
        ++at[i];
        for (int j = i + 1; j < kRedsPerTicket; ++j) at[j] = at[j - 1] + 1;
    }
    return out;
}

}  // namespace dovrex
