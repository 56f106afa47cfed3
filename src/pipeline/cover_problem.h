#pragma once

#include <algorithm>
#include <bit>
#include <cstdint>
#include <utility>
#include <vector>

namespace dovrex {

// A covering to find: keep as few tickets as possible so that every ticket the guarantee is owed to
// shares at least t balls with a kept one. Tickets are ball masks (ballMask) in scan order; the
// order is the tie-break everywhere, so the weights and the smart optimisation's scores still decide
// which of two equal choices stays.
struct CoverProblem {
    const std::vector<std::uint64_t>* masks = nullptr;
    std::vector<char> mustCover;  // tickets the guarantee is owed to
    std::vector<char> mayKeep;    // tickets that may be kept
    std::vector<int> fixed;       // tickets kept whatever happens (the whole formula at t 6)
    int t = 5;
};

// The problem of a scan over `masks` with their 缩水标记: a ticket with a mark of 0 or more is owed
// the guarantee and may be kept; the first `keptWhole` (the formula at t 6) are kept whatever happens.
inline CoverProblem coverProblemOf(const std::vector<std::uint64_t>& masks, const std::vector<int>& marks,
                                   int t, int keptWhole) {
    CoverProblem problem;
    problem.masks = &masks;
    problem.t = t;
    problem.mustCover.resize(masks.size());
    problem.mayKeep.resize(masks.size());
    for (size_t i = 0; i < masks.size(); ++i) problem.mustCover[i] = problem.mayKeep[i] = marks[i] >= 0;
    for (int i = 0; i < keptWhole; ++i) problem.fixed.push_back(i);
    return problem;
}

// Two tickets share at least t balls exactly when they share a t-subset of their balls. Every
// ticket is filed under each of its t-subsets, so a ticket's neighbours (itself included) are the
// members of its groups: no pair of tickets is ever compared blindly.
class NeighbourIndex {
  public:
    NeighbourIndex(const std::vector<std::uint64_t>& masks, int t) : stamp_(masks.size(), 0) {
        const int n = int(masks.size());
        std::vector<std::pair<std::uint64_t, int>> filed;
        std::vector<int> balls;
        for (int i = 0; i < n; ++i) {
            balls.clear();
            for (std::uint64_t m = masks[size_t(i)]; m; m &= m - 1) balls.push_back(std::countr_zero(m));
            const int k = int(balls.size());
            if (t < 1 || k < t) continue;
            // Every t of the k balls, as a bit pattern over their positions.
            for (std::uint32_t pick = (1u << t) - 1; pick < (1u << k);) {
                std::uint64_t key = 0;
                for (int b = 0; b < k; ++b)
                    if (pick & (1u << b)) key |= std::uint64_t(1) << balls[size_t(b)];
                filed.emplace_back(key, i);
                const std::uint32_t low = pick & -pick, ripple = pick + low;
                pick = ripple | (((ripple ^ pick) >> 2) / low);
            }
        }
        std::sort(filed.begin(), filed.end());
        std::vector<std::vector<int>> groupsOf(static_cast<size_t>(n));
        for (size_t i = 0; i < filed.size();) {
            const int group = int(groupStart_.size());
            groupStart_.push_back(int(members_.size()));
            size_t j = i;
            for (; j < filed.size() && filed[j].first == filed[i].first; ++j) {
                members_.push_back(filed[j].second);
                groupsOf[size_t(filed[j].second)].push_back(group);
            }
            i = j;
        }
        groupStart_.push_back(int(members_.size()));
        for (int i = 0; i < n; ++i) {
            ticketStart_.push_back(int(ticketGroups_.size()));
            ticketGroups_.insert(ticketGroups_.end(), groupsOf[size_t(i)].begin(), groupsOf[size_t(i)].end());
        }
        ticketStart_.push_back(int(ticketGroups_.size()));
    }

    bool hasGroups(int i) const { return ticketStart_[size_t(i) + 1] > ticketStart_[size_t(i)]; }

    // The sum of the sizes of a ticket's groups: at least the number of its neighbours.
    int bound(int i) const {
        int sum = 0;
        for (int g = ticketStart_[size_t(i)]; g < ticketStart_[size_t(i) + 1]; ++g) {
            const int group = ticketGroups_[size_t(g)];
            sum += groupStart_[size_t(group) + 1] - groupStart_[size_t(group)];
        }
        return sum;
    }

    // Calls f(first, last) with the tickets of each group; all of them share the group's t balls.
    template <class F>
    void forEachGroup(F&& f) const {
        for (size_t g = 0; g + 1 < groupStart_.size(); ++g)
            f(members_.data() + groupStart_[g], members_.data() + groupStart_[g + 1]);
    }

    // Calls f once for each neighbour of ticket i. Not re-entrant: f must not enumerate.
    template <class F>
    void forNeighbours(int i, F&& f) {
        if (++now_ == 0) {
            std::fill(stamp_.begin(), stamp_.end(), 0);
            now_ = 1;
        }
        for (int g = ticketStart_[size_t(i)]; g < ticketStart_[size_t(i) + 1]; ++g) {
            const int group = ticketGroups_[size_t(g)];
            for (int m = groupStart_[size_t(group)]; m < groupStart_[size_t(group) + 1]; ++m) {
                const int j = members_[size_t(m)];
                if (stamp_[size_t(j)] == now_) continue;
                stamp_[size_t(j)] = now_;
                f(j);
            }
        }
    }

  private:
    std::vector<int> groupStart_, members_;        // group -> its tickets
    std::vector<int> ticketStart_, ticketGroups_;  // ticket -> its groups
    std::vector<std::uint32_t> stamp_;
    std::uint32_t now_ = 0;
};

}  // namespace dovrex
