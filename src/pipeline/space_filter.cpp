#include "pipeline/space_filter.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdint>
#include <thread>

#include "filters/backtest.h"
#include "pipeline/pick_expansion.h"
#include "screen/shared_state.h"
#include "store/store.h"

namespace dovrex {

namespace {

// Red sets a worker takes at a time: small enough for Stop to act within a few milliseconds, large
// enough that taking one costs nothing beside judging it.
constexpr size_t kChunk = 2048;

// The verdict of one condition; a condition that cannot judge a ticket keeps it, as 容错 does.
inline bool passes(const PreparedCondition& c, const TicketBalls& t) {
    try {
        return ticket_Passes(c.test, t, c.values, true);
    } catch (const StoreError&) {
        return true;
    }
}

// True when the reds alone pass a blue-reading condition, whatever the blue; false when the blue
// must be asked (or the reds cannot be judged alone, where `passes` keeps the ticket).
inline bool redsSettle(const PreparedCondition& c, const TicketBalls& t) {
    try {
        return c.test.redsPass && c.test.redsPass(t);
    } catch (const StoreError&) {
        return false;
    }
}

struct Survivor {
    std::uint32_t redSet;
    std::uint8_t blue;  // index into the picked blues
};

// What one worker counted, summed when every worker is done.
struct Tally {
    std::vector<long long> removed, passed;
    explicit Tally(size_t conditions) : removed(conditions, 0), passed(conditions, 0) {}
};

class SpacePass {
  public:
    SpacePass(const std::vector<PreparedCondition>& conditions, const std::vector<RedSet>& sets,
              const std::vector<int>& blues, int tolerance, bool each, long long limit)
        : conditions_(conditions),
          sets_(sets),
          blues_(blues),
          tolerance_(tolerance),
          full_(each || tolerance > 0),
          limit_(limit),
          chunks_((sets.size() + kChunk - 1) / kChunk) {
        for (size_t i = 0; i < conditions.size(); ++i)
            (conditions[i].test.readsBlue ? blueReading_ : redOnly_).push_back(i);
    }

    // Runs the workers; `progress` is called from this thread while they work.
    void run(const SpaceProgress& progress) {
        const size_t workers = std::clamp<size_t>(std::thread::hardware_concurrency(), 1, 8);
        std::vector<Tally> tallies(workers, Tally(conditions_.size()));
        if (chunks_.size() <= 1 || workers == 1) {
            work(tallies[0], progress);
        } else {
            std::vector<std::thread> threads;
            std::atomic<size_t> running{workers};
            for (size_t w = 0; w < workers; ++w)
                threads.emplace_back([this, &tallies, &running, w] {
                    work(tallies[w], {});
                    --running;
                });
            while (running > 0) {
                std::this_thread::sleep_for(std::chrono::milliseconds(10));
                if (progress && !stop_ && progress(setsDone_, (long long)sets_.size())) stop_ = true;
            }
            for (std::thread& t : threads) t.join();
        }
        removed.assign(conditions_.size(), 0);
        passed.assign(conditions_.size(), 0);
        for (const Tally& t : tallies)
            for (size_t c = 0; c < conditions_.size(); ++c) {
                removed[c] += t.removed[c];
                passed[c] += t.passed[c];
            }
    }

    bool stopped() const { return stop_; }
    long long kept() const { return kept_; }
    bool overLimit() const { return overLimit_; }
    const std::vector<std::vector<Survivor>>& chunks() const { return chunks_; }
    std::vector<long long> removed, passed;

  private:
    void work(Tally& tally, const SpaceProgress& progress) {
        std::vector<size_t> askBlue;  // the blue-reading conditions the reds of a set leave open
        askBlue.reserve(blueReading_.size());
        for (;;) {
            const size_t chunk = nextChunk_++;
            if (chunk >= chunks_.size() || stop_) return;
            const size_t from = chunk * kChunk;
            const size_t to = std::min(sets_.size(), from + kChunk);
            std::vector<Survivor>& out = chunks_[chunk];
            long long keptHere = 0;
            for (size_t s = from; s < to; ++s)
                keptHere += full_ ? judgeEach(s, tally, out, askBlue) : judge(s, tally, out, askBlue);
            setsDone_ += (long long)(to - from);
            if ((kept_ += keptHere) > limit_) overLimit_ = true;
            if (overLimit_) std::vector<Survivor>().swap(out);
            if (progress && progress(setsDone_, (long long)sets_.size())) stop_ = true;
        }
    }

    TicketBalls ballsOf(size_t s) const {
        TicketBalls t;
        for (int i = 0; i < kRedsPerTicket; ++i) t.reds[size_t(i + 1)] = sets_[s][size_t(i)];
        t.blue = blues_.front();
        return t;
    }

    void keep(std::vector<Survivor>& out, size_t s, size_t blue) {
        if (!overLimit_) out.push_back({std::uint32_t(s), std::uint8_t(blue)});
    }

    // The run without a tolerance: a ticket goes by the first condition it fails, in the run's order.
    long long judge(size_t s, Tally& tally, std::vector<Survivor>& out, std::vector<size_t>& askBlue) {
        TicketBalls t = ballsOf(s);
        const size_t none = conditions_.size();
        size_t firstRed = none;
        for (size_t c : redOnly_)
            if (!passes(conditions_[c], t)) {
                firstRed = c;
                break;
            }
        askBlue.clear();
        for (size_t c : blueReading_) {
            if (c >= firstRed) break;
            if (!redsSettle(conditions_[c], t)) askBlue.push_back(c);
        }
        const size_t blues = blues_.size();
        if (askBlue.empty()) {
            if (firstRed != none) {
                tally.removed[firstRed] += (long long)blues;
                return 0;
            }
            for (size_t b = 0; b < blues; ++b) keep(out, s, b);
            return (long long)blues;
        }
        long long kept = 0;
        for (size_t b = 0; b < blues; ++b) {
            t.blue = blues_[b];
            size_t first = firstRed;
            for (size_t c : askBlue)
                if (!passes(conditions_[c], t)) {
                    first = c;
                    break;
                }
            if (first != none) {
                ++tally.removed[first];
            } else {
                keep(out, s, b);
                ++kept;
            }
        }
        return kept;
    }

    // Every condition judges the ticket: a tolerance counts the failures, `passed` each one alone.
    long long judgeEach(size_t s, Tally& tally, std::vector<Survivor>& out, std::vector<size_t>& askBlue) {
        TicketBalls t = ballsOf(s);
        const size_t none = conditions_.size();
        const long long blues = (long long)blues_.size();
        int redFails = 0;
        size_t firstRed = none;
        for (size_t c : redOnly_) {
            if (passes(conditions_[c], t)) {
                tally.passed[c] += blues;
            } else {
                ++redFails;
                firstRed = std::min(firstRed, c);
                if (tolerance_ > 0) tally.removed[c] += blues;
            }
        }
        askBlue.clear();
        for (size_t c : blueReading_) {
            if (redsSettle(conditions_[c], t))
                tally.passed[c] += blues;
            else
                askBlue.push_back(c);
        }
        long long kept = 0;
        for (size_t b = 0; b < blues_.size(); ++b) {
            t.blue = blues_[b];
            int fails = redFails;
            size_t first = firstRed;
            for (size_t c : askBlue) {
                if (passes(conditions_[c], t)) {
                    ++tally.passed[c];
                } else {
                    ++fails;
                    first = std::min(first, c);
                    if (tolerance_ > 0) ++tally.removed[c];
                }
            }
            if (tolerance_ == 0 && first != none) ++tally.removed[first];
            if (fails <= tolerance_) {
                keep(out, s, b);
                ++kept;
            }
        }
        return kept;
    }

    const std::vector<PreparedCondition>& conditions_;
    const std::vector<RedSet>& sets_;
    const std::vector<int>& blues_;
    std::vector<size_t> redOnly_, blueReading_;
    const int tolerance_;
    const bool full_;
    const long long limit_;
    std::vector<std::vector<Survivor>> chunks_;
    std::atomic<size_t> nextChunk_{0};
    std::atomic<long long> setsDone_{0}, kept_{0};
    std::atomic<bool> overLimit_{false}, stop_{false};
};

}  // namespace

SpaceResult filter_Space(IssueNumber issue, long long limit, const SpaceProgress& progress,
                         bool eachCondition) {
    SpaceResult r;
    // Reading the picks and preparing the conditions go through guoLvShuZu; it is left as it was.
    struct KeepArray {
        ConditionArray saved = shared().guoLvShuZu;
        ~KeepArray() { shared().guoLvShuZu = saved; }
    } keepArray;
    const PickSet picks = read_PickSet();
    const std::vector<RedSet> sets = expand_RedSets(picks);
    r.redSets = (long long)sets.size();
    r.space = r.redSets * (long long)picks.blues.size();
    r.tolerance = filter_Tolerance();
    const std::vector<PreparedCondition> conditions = prepare_Conditions(issue);
    for (const PreparedCondition& c : conditions) r.removedBy.push_back({c.label, 0, -1});
    if (r.space == 0) return r;

    SpacePass pass(conditions, sets, picks.blues, r.tolerance, eachCondition, limit);
    pass.run(progress);
    r.stopped = pass.stopped();
    r.kept = pass.kept();
    for (size_t c = 0; c < conditions.size(); ++c) {
        r.removedBy[c].removed = pass.removed[c];
        if (eachCondition) r.removedBy[c].passed = pass.passed[c];
    }
    if (r.stopped || pass.overLimit()) return r;

    std::vector<int> formula;
    if (picks.usesFormula()) {
        formula = read_ShrinkFormula(picks.drags());
        formula.pop_back();  // the spare 0 behind
    }
    const long long blues = (long long)picks.blues.size();
    r.tickets.reserve(size_t(r.kept));
    for (const std::vector<Survivor>& chunk : pass.chunks())
        for (const Survivor& s : chunk) {
            SpaceTicket& t = r.tickets.emplace_back();
            for (int i = 0; i < kRedsPerTicket; ++i) t.reds[size_t(i + 1)] = sets[s.redSet][size_t(i)];
            t.blue = picks.blues[s.blue];
            const long long serial = (long long)s.redSet * blues + s.blue + 1;
            // Without a formula the column keeps its default, as 第1步 leaves it.
            if (!picks.usesFormula())
                t.formula = 0;
            else if (std::binary_search(formula.begin(), formula.end(), int(serial)))
                t.formula = int(serial);
        }
    return r;
}

}  // namespace dovrex
