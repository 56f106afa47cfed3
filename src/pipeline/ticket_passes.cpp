#include "pipeline/ticket_passes.h"

#include <algorithm>
#include <numeric>

#include "filters/condition_store.h"
#include "pipeline/selection.h"
#include "pipeline/shrink.h"
#include "pipeline/shrink_optimise.h"
#include "screen/shared_state.h"

namespace dovrex {

namespace {

std::vector<int> scores(const std::vector<SpaceTicket>& tickets, IssueNumber issue) {
    const ChaZhiBlock block = loadDifferenceBlock(issue);
    const ChaZhiMoShi pattern = calc_ChaZhiMoShi(block);
    std::vector<int> out;
    out.reserve(tickets.size());
    for (const SpaceTicket& t : tickets) out.push_back(calc_PiPeiShu(block, pattern, t.reds, t.blue));
    return out;
}

// The indices of the `keep` lowest scores, 序号 (the index) breaking ties.
std::vector<int> lowest(const std::vector<int>& score, size_t keep) {
    std::vector<int> order(score.size());
    std::iota(order.begin(), order.end(), 0);
    keep = std::min(keep, order.size());
    std::partial_sort(order.begin(), order.begin() + std::ptrdiff_t(keep), order.end(), [&](int a, int b) {
        return score[size_t(a)] != score[size_t(b)] ? score[size_t(a)] < score[size_t(b)] : a < b;
    });
    order.resize(keep);
    return order;
}

bool isFormula(const SpaceTicket& t) {
    return t.formula >= 1 && t.formula < kOutsideFormula;
}

// 临时数据 as the shrink leaves it before its scan: 0 from the filter run; the smart optimisation's
// score with the lower 60 per cent (rounded up) at 0; the weight sum when weights are set, which
// replaces the scores. Returns whether weights are in use (the heavier tickets then go first).
bool scanKeys(const std::vector<SpaceTicket>& tickets, IssueNumber issue, int t, std::vector<int>& key) {
    key.assign(tickets.size(), 0);
    const auto& weight = shared().quanZhong;
    if (std::accumulate(weight.begin() + 1, weight.end(), 0LL) != 0) {
        for (size_t i = 0; i < tickets.size(); ++i)
            for (int k = 1; k <= kRedsPerTicket; ++k) {
                const int red = tickets[i].reds[size_t(k)];
                if (red >= 1 && red <= kRedCount) key[i] += weight[size_t(red)];
            }
        return true;
    }
    if (get_ShiYongQingKuang(kSmartSwitch) == 1 && t < 7) {
        key = scores(tickets, issue);
        for (int i : lowest(key, (tickets.size() * 60 + 99) / 100)) key[size_t(i)] = 0;
    }
    return false;
}

}  // namespace

std::vector<int> shrink_HeldTickets(const std::vector<SpaceTicket>& tickets, IssueNumber issue,
                                    const ShrinkChoice& choice, const std::function<bool()>& stopped,
                                    bool* wasStopped) {
    if (wasStopped) *wasStopped = false;
    std::vector<int> all(tickets.size());
    std::iota(all.begin(), all.end(), 0);
    const int t = choice.t;
    if (t < 3 || t >= 7 || tickets.empty()) return all;

    std::vector<int> key;
    const bool weights = scanKeys(tickets, issue, t, key);
    // At t 6 the formula's tickets go first, by their place in it, and are kept whole.
    const int keptWhole = t == 6 ? int(std::count_if(tickets.begin(), tickets.end(),
                                                     [](const SpaceTicket& x) { return isFormula(x); }))
                                 : 0;
    std::vector<int> order = all;
    std::stable_sort(order.begin(), order.end(), [&](int a, int b) {
        if (keptWhole > 0) {
            const int fa = isFormula(tickets[size_t(a)]) ? tickets[size_t(a)].formula : kOutsideFormula;
            const int fb = isFormula(tickets[size_t(b)]) ? tickets[size_t(b)].formula : kOutsideFormula;
            if (fa != fb) return fa < fb;
        }
        const int ka = key[size_t(a)], kb = key[size_t(b)];
        return weights ? ka > kb : ka < kb;
    });

    std::vector<std::uint64_t> masks;
    masks.reserve(order.size());
    for (int i : order) masks.push_back(ballMask(tickets[size_t(i)].reds, tickets[size_t(i)].blue));
    const std::vector<int> marks(masks.size(), 0);
    ShrinkScan scan = scan_SuoShui(
        masks, marks, t, [&](int) { return stopped && stopped(); }, keptWhole);
    std::vector<int> kept = scan.kept;
    if (!scan.stopped && choice.optimised) {
        kept = optimise_SuoShui(coverProblemOf(masks, marks, t, keptWhole), scan.kept,
                                std::max(choice.budgetMs, 1),
                                [&](const CoverProgress&) { return stopped && stopped(); });
    }
    if (wasStopped) *wasStopped = scan.stopped || (stopped && stopped());
    std::vector<int> out;
    out.reserve(kept.size());
    for (int i : kept) out.push_back(order[size_t(i)]);
    std::sort(out.begin(), out.end());
    return out;
}

std::vector<int> select_HeldTickets(const std::vector<SpaceTicket>& tickets, IssueNumber issue, int n) {
    if (n <= 0 || size_t(n) >= tickets.size()) {
        std::vector<int> all(tickets.size());
        std::iota(all.begin(), all.end(), 0);
        return all;
    }
    std::vector<int> kept = lowest(scores(tickets, issue), size_t(n));
    std::sort(kept.begin(), kept.end());
    return kept;
}

}  // namespace dovrex
