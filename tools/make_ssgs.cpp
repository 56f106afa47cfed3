// Writes the shrink formulas shipped in table Ssgs: for 10 to 20 red drags, a set of tickets such
// that any six drawn among the drags share at least five with one of them. Each ticket is given
// by its 序号 in the order of the first step (sixes of the drags in lexicographic order, one blue),
// so the file serves whatever numbers the drags are. With --independent no two tickets of a formula
// share five reds, so that a shrink at T 6, which scans the formula first, keeps exactly the
// formula; the shipped file is made without it, for the smallest sizes.
//
//   dovrex-makessgs [--independent] [--tickets] [--seed S] [--from FILE] [--gen PERM]... <seconds per size>
//       [<first n> <last n> [<temperature>]] > formulas.txt
//   dovrex-makessgs --from FILE --recover K:C,C... [--round S] [--seed S] <seconds per size>
//       [<first n> <last n>] > formulas.txt
//
// Method: a greedy cover, then a local search at a fixed size; each time it covers every six the
// size goes down by one and the search goes on from there, until the time for that size is spent.
// The search is a weighted swap (the best exchange that brings in a six next to an uncovered one;
// uncovered sixes gain weight). With --gen it works on the orbits of the group the given
// permutations make and keeps formulas made of whole orbits: the graph is many times smaller and
// the search far stronger. The shipped sizes came from single rotations with a few drags left in
// place, one size at a time, for example
//   dovrex-makessgs --gen 13 120 18 18     (a 13-cycle with five drags fixed)
//   dovrex-makessgs --gen 7,7 120 17 17    (two 7-cycles turned together, three fixed)
// Over orbits the size steps down one orbit at a time; with --tickets it steps down by tickets
// instead, letting a large orbit go for a small one, which is what counts once the group's orbits
// differ in size (a cycle with a group turning the fixed drags as well, say).
// With --from the search starts from the formula a file holds for that size (one found over the
// orbits of a larger group, say) and goes on dropping from there, plain or over the orbits of the
// group given.
// With --recover it goes on from the file's formula region by region, each round (--round seconds,
// 30 by default) freeing the tickets that hold C of K drags, drawn at random or given by their
// numbers from 0 ("11.12.13.14.15.16.17.18.19:4,5,6"), and covering again with fewer tickets what
// only they covered.
// With --independent an annealing walk at the given temperature that also counts the pairs sharing
// five. Results depend on the time given, the seed and the machine's speed, so the file is checked
// in rather than made at build time.
#include <algorithm>
#include <bit>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <limits>
#include <random>
#include <string>
#include <vector>

namespace {

// Time is the process's own processor time, so that a search given so many seconds does the same
// work on a busy machine as on an idle one.
struct CpuClock {
    using duration = std::chrono::nanoseconds;
    using rep = duration::rep;
    using period = duration::period;
    using time_point = std::chrono::time_point<CpuClock>;
    static constexpr bool is_steady = true;
    static time_point now() {
        timespec ts{};
        clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &ts);
        return time_point(duration(std::int64_t(ts.tv_sec) * 1000000000 + ts.tv_nsec));
    }
};

// Vertices with closed neighbourhoods that are symmetric: x covers v exactly when v covers x.
struct Graph {
    std::vector<std::vector<int>> closed;
    std::vector<int> sixes;  // vertex -> sixes it stands for (empty: one each)
    int size() const { return int(closed.size()); }
    long sixesOf(int v) const { return sixes.empty() ? 1 : sixes[size_t(v)]; }
};

struct Johnson : Graph {
    int n = 0;
    std::vector<std::uint32_t> masks;  // rank -> bit set of the six
    std::vector<int> rankOf;           // bit set -> rank
    // closed: rank -> itself and every six sharing five with it

    explicit Johnson(int n_) : n(n_), rankOf(size_t(1) << n_, -1) {
        // Lexicographic order of the sixes: the order of the first step.
        int c[6];
        for (int i = 0; i < 6; ++i) c[i] = i;
        for (;;) {
            std::uint32_t m = 0;
            for (int v : c) m |= 1u << v;
            rankOf[m] = int(masks.size());
            masks.push_back(m);
            int i = 5;
            while (i >= 0 && c[i] == n - 6 + i) --i;
            if (i < 0) break;
            ++c[i];
            for (int j = i + 1; j < 6; ++j) c[j] = c[j - 1] + 1;
        }
        closed.resize(masks.size());
        for (size_t r = 0; r < masks.size(); ++r) {
            const std::uint32_t m = masks[r];
            closed[r].push_back(int(r));
            for (int out = 0; out < n; ++out) {
                if (!(m >> out & 1)) continue;
                for (int in = 0; in < n; ++in)
                    if (!(m >> in & 1)) closed[r].push_back(rankOf[(m & ~(1u << out)) | (1u << in)]);
            }
        }
    }
};

// A set of vertices kept as a list, for a random pick and a walk over it, each knowing its place.
struct IndexedSet {
    std::vector<int> items, where;
    void reset(size_t n) {
        items.clear();
        where.assign(n, -1);
    }
    void set(int v, bool on) {
        if (on) {
            where[size_t(v)] = int(items.size());
            items.push_back(v);
        } else {
            const int at = where[size_t(v)], last = items.back();
            items[size_t(at)] = last;
            where[size_t(last)] = at;
            items.pop_back();
            where[size_t(v)] = -1;
        }
    }
    bool contains(int v) const { return where[size_t(v)] >= 0; }
    bool empty() const { return items.empty(); }
    size_t size() const { return items.size(); }
    int operator[](size_t i) const { return items[i]; }
    auto begin() const { return items.begin(); }
    auto end() const { return items.end(); }
};

struct Search {
    const Johnson& j;
    std::mt19937_64 rng;
    std::vector<int> blocks;  // chosen sixes
    std::vector<int> cover;   // rank -> how many chosen sixes cover it
    IndexedSet uncovered;     // ranks with cover 0
    std::vector<int> slotOf;  // rank -> index in blocks, or -1 (a six is chosen once at most)

    bool independent = false;  // no two chosen sixes may share five

    Search(const Johnson& j_, std::uint64_t seed, bool independent_)
        : j(j_), rng(seed), independent(independent_) {}

    void reset(const std::vector<int>& b) {
        blocks = b;
        slotOf.assign(size_t(j.size()), -1);
        for (size_t i = 0; i < blocks.size(); ++i) slotOf[size_t(blocks[i])] = int(i);
        cover.assign(size_t(j.size()), 0);
        for (int x : blocks)
            for (int v : j.closed[size_t(x)]) ++cover[size_t(v)];
        uncovered.reset(size_t(j.size()));
        for (int v = 0; v < j.size(); ++v)
            if (cover[size_t(v)] == 0) uncovered.set(v, true);
    }
    void add(int x) {
        for (int v : j.closed[size_t(x)])
            if (cover[size_t(v)]++ == 0) uncovered.set(v, false);
    }
    void remove(int x) {
        for (int v : j.closed[size_t(x)])
            if (--cover[size_t(v)] == 0) uncovered.set(v, true);
    }
    // Chosen sixes sharing five with z, z itself left out.
    int clashes(int z, int except) const {
        int c = 0;
        for (int v : j.closed[size_t(z)]) c += v != z && v != except && slotOf[size_t(v)] >= 0;
        return c;
    }
    // Change in the cost if x goes and y comes: the sixes left uncovered, plus the pairs of chosen
    // sixes that share five (a shrink at T 6 keeps the formula whole only when there is none).
    int delta(int x, int y) {
        int d = 0;
        for (int v : j.closed[size_t(x)]) --cover[size_t(v)];
        for (int v : j.closed[size_t(x)]) d += cover[size_t(v)] == 0;
        for (int v : j.closed[size_t(y)]) d -= cover[size_t(v)] == 0;
        // A six in both lists counts in both: it stays covered, and d counts +1 -1 for it.
        for (int v : j.closed[size_t(x)]) ++cover[size_t(v)];
        return independent ? d + clashes(y, x) - clashes(x, -1) : d;
    }
    int totalClashes() const {
        int c = 0;
        for (int x : blocks) c += clashes(x, -1);
        return c / 2;
    }

    // Anneals at the present size; true once every six is covered and no two chosen share five.
    bool anneal(double seconds, double temperature) {
        const auto until = CpuClock::now() + std::chrono::duration<double>(seconds);
        std::uniform_real_distribution<double> unit(0.0, 1.0);
        long step = 0;
        int clash = independent ? totalClashes() : 0;
        while (!uncovered.empty() || clash > 0) {
            if ((++step & 1023) == 0) {
                if (CpuClock::now() > until) return false;
                clash = independent ? totalClashes() : 0;
                if (uncovered.empty() && clash == 0) break;
            }
            size_t xi;
            int y;
            if (uncovered.empty() || (clash > 0 && (rng() & 3) == 0)) {
                // Move a chosen six that clashes to a six next to it.
                xi = rng() % blocks.size();
                if (clashes(blocks[xi], -1) == 0) continue;
                const auto& near = j.closed[size_t(blocks[xi])];
                y = near[rng() % near.size()];
                if (slotOf[size_t(y)] >= 0) continue;
            } else {
                // Bring in a six next to an uncovered one; let go of a chosen one next to it when
                // there is such (a small step), otherwise any.
                const int u = uncovered[rng() % uncovered.size()];
                const auto& near = j.closed[size_t(u)];
                y = near[rng() % near.size()];
                if (slotOf[size_t(y)] >= 0) continue;
                int options[96], count = 0;
                for (int v : j.closed[size_t(y)])
                    if (slotOf[size_t(v)] >= 0) options[count++] = slotOf[size_t(v)];
                xi = count > 0 && (rng() & 7) != 0 ? size_t(options[rng() % unsigned(count)])
                                                   : rng() % blocks.size();
            }
            const int x = blocks[xi];
            const int d = delta(x, y);
            if (d <= 0 || unit(rng) < std::exp(-d / temperature)) {
                if (independent) clash += clashes(y, x) - clashes(x, -1);
                remove(x);
                add(y);
                blocks[xi] = y;
                slotOf[size_t(x)] = -1;
                slotOf[size_t(y)] = int(xi);
            }
        }
        return true;
    }
};

// Weighted swap search at a fixed size. Each step takes a random uncovered vertex u and makes the
// best swap that brings in a vertex next to u: for every candidate y the cost of letting each chosen
// x go is loss[x] (weight x alone covers) less what y would cover again of it, less what y newly
// covers. Swapped vertices are tabu for a few steps, and uncovered vertices gain weight each step, so
// vertices hard to cover pull the search towards them.
struct WeightedSwap {
    const Graph& g;
    std::mt19937_64 rng;
    std::vector<int> blocks, slotOf, cover;
    IndexedSet uncovered;
    std::vector<long> coverSum;  // sum of the chosen vertices covering v: v's sole coverer when cover is 1
    std::vector<long> weight, loss;  // loss[x]: weight covered by x alone (x chosen)
    std::vector<long> tabuUntil, bonus;
    long step = 0;
    // Tickets the chosen orbits stand for, and the most a step may leave chosen: orbits of a group
    // differ in size, and the formula's size is its tickets, not its orbits.
    long tickets = 0, budget = std::numeric_limits<long>::max();

    WeightedSwap(const Graph& g_, std::uint64_t seed) : g(g_), rng(seed) {}

    void reset(const std::vector<int>& b) {
        const size_t n = size_t(g.size());
        blocks = b;
        slotOf.assign(n, -1);
        cover.assign(n, 0);
        coverSum.assign(n, 0);
        if (weight.empty())
            for (size_t v = 0; v < n; ++v) weight.push_back(g.sixesOf(int(v)));
        loss.assign(n, 0);
        tabuUntil.assign(n, 0);
        bonus.assign(n, 0);
        uncovered.reset(n);
        tickets = 0;
        for (size_t i = 0; i < blocks.size(); ++i) {
            slotOf[size_t(blocks[i])] = int(i);
            tickets += g.sixesOf(blocks[i]);
        }
        for (int x : blocks)
            for (int v : g.closed[size_t(x)]) ++cover[size_t(v)], coverSum[size_t(v)] += x;
        for (size_t v = 0; v < n; ++v) {
            if (cover[v] == 0)
                uncovered.set(int(v), true);
            else if (cover[v] == 1)
                loss[size_t(coverSum[v])] += weight[v];
        }
    }
    void add(int y) {
        slotOf[size_t(y)] = int(blocks.size());
        blocks.push_back(y);
        tickets += g.sixesOf(y);
        for (int v : g.closed[size_t(y)]) {
            const int c = ++cover[size_t(v)];
            if (c == 1) {
                uncovered.set(v, false);
                loss[size_t(y)] += weight[size_t(v)];
            } else if (c == 2) {
                loss[size_t(coverSum[size_t(v)])] -= weight[size_t(v)];
            }
            coverSum[size_t(v)] += y;
        }
    }
    void removeAt(size_t i) {
        const int x = blocks[i];
        blocks[i] = blocks.back();
        slotOf[size_t(blocks[i])] = int(i);
        blocks.pop_back();
        slotOf[size_t(x)] = -1;
        loss[size_t(x)] = 0;
        tickets -= g.sixesOf(x);
        for (int v : g.closed[size_t(x)]) {
            coverSum[size_t(v)] -= x;
            const int c = --cover[size_t(v)];
            if (c == 0)
                uncovered.set(v, true);
            else if (c == 1)
                loss[size_t(coverSum[size_t(v)])] += weight[size_t(v)];
        }
    }
    // The chosen vertex whose loss uncovers the least weight for each six it stands for.
    size_t cheapest() const {
        size_t best = 0;
        for (size_t i = 1; i < blocks.size(); ++i)
            if (loss[size_t(blocks[i])] * g.sixesOf(blocks[best]) <
                loss[size_t(blocks[best])] * g.sixesOf(blocks[i]))
                best = i;
        return best;
    }

    // True once every vertex is covered.
    static constexpr size_t kCheap = 16;
    bool run(CpuClock::time_point until) {
        std::vector<int> touched, cheap;
        while (!uncovered.empty()) {
            if ((++step & 63) == 0 && CpuClock::now() > until) return false;
            const int u = uncovered[rng() % uncovered.size()];
            long best = std::numeric_limits<long>::max();
            int bestX = -1, bestY = -1;
            unsigned ties = 0;
            // The chosen vertices that lose least, lowest first: for a candidate y the best vertex
            // to let go is one of those or one whose loss y gives back, so the whole list of
            // chosen vertices is walked once a step instead of once a candidate.
            cheap.clear();
            for (int x : blocks) {
                if (tabuUntil[size_t(x)] > step) continue;
                const long l = loss[size_t(x)];
                if (cheap.size() < kCheap || l < loss[size_t(cheap.back())]) {
                    if (cheap.size() == kCheap) cheap.pop_back();
                    auto at = std::upper_bound(cheap.begin(), cheap.end(), l,
                                               [&](long v, int c) { return v < loss[size_t(c)]; });
                    // Equal losses go in at a random place among themselves.
                    while (at != cheap.begin() && loss[size_t(*(at - 1))] == l && (rng() & 1)) --at;
                    cheap.insert(at, x);
                }
            }
            // Whether letting x go (none when x < 0) and bringing y in keeps within the budget.
            const auto fits = [&](int x, int y) {
                return tickets - (x >= 0 ? g.sixesOf(x) : 0) + g.sixesOf(y) <= budget;
            };
            const auto consider = [&](int x, int y, long cost) {
                if (!fits(x, y)) return;
                if (cost < best) {
                    best = cost, bestX = x, bestY = y, ties = 1;
                } else if (cost == best && rng() % ++ties == 0) {
                    bestX = x, bestY = y;
                }
            };
            for (int y : g.closed[size_t(u)]) {
                if (slotOf[size_t(y)] >= 0 || tabuUntil[size_t(y)] > step) continue;
                long gain = 0;
                touched.clear();
                for (int v : g.closed[size_t(y)]) {
                    if (cover[size_t(v)] == 0) {
                        gain += weight[size_t(v)];
                    } else if (cover[size_t(v)] == 1) {
                        const int x = int(coverSum[size_t(v)]);
                        if (bonus[size_t(x)] == 0) touched.push_back(x);
                        bonus[size_t(x)] += weight[size_t(v)];
                    }
                }
                for (int x : touched)
                    if (tabuUntil[size_t(x)] <= step)
                        consider(x, y, loss[size_t(x)] - bonus[size_t(x)] - gain);
                for (int x : cheap)
                    if (bonus[size_t(x)] == 0 && fits(x, y)) {
                        consider(x, y, loss[size_t(x)] - gain);
                        break;
                    }
                // Room left by letting a larger orbit go: y may come in on its own (only while
                // the size is counted in tickets; counted in orbits, every step is a swap).
                if (budget < std::numeric_limits<long>::max()) consider(-1, y, -gain);
                for (int x : touched) bonus[size_t(x)] = 0;
            }
            if (bestY < 0) continue;
            if (bestX >= 0) {
                removeAt(size_t(slotOf[size_t(bestX)]));
                tabuUntil[size_t(bestX)] = step + 5 + long(rng() % 3);
            }
            add(bestY);
            tabuUntil[size_t(bestY)] = step + 2 + long(rng() % 3);
            for (int v : uncovered) ++weight[size_t(v)];
        }
        return true;
    }
};

// Reads a whole number within [low, high] at p and moves p past it; false when there is none or it
// lies outside.
bool readNumber(const char*& p, long low, long high, long& out) {
    char* end = nullptr;
    out = std::strtol(p, &end, 10);
    const bool ok = end != p && out >= low && out <= high;
    p = end;
    return ok;
}

// A permutation of the drags, written either as cycle lengths ("17" turns drags 0..16, "5,5,5" turns
// three runs of five together, a 1 leaves a drag where it is) or, after a 'p', as the image of each
// drag in turn ("p0,2,4,..."). Drags not named stay. Empty unless the whole text is such a list and
// it makes a permutation of the n drags (cycles that fit, images that are drags and come once).
std::vector<int> parsePermutation(const char* text, int n) {
    std::vector<int> perm(static_cast<size_t>(n));
    for (int i = 0; i < n; ++i) perm[size_t(i)] = i;
    const bool images = text[0] == 'p';
    std::vector<int> numbers;
    const char* p = images ? text + 1 : text;
    long x = 0;
    do {
        if (!numbers.empty()) ++p;
        if (!readNumber(p, images ? 0 : 1, n - (images ? 1 : 0), x)) return {};
        numbers.push_back(int(x));
    } while (*p == ',');
    if (*p != '\0' || (images && numbers.size() > size_t(n))) return {};
    if (images) {
        std::copy(numbers.begin(), numbers.end(), perm.begin());
        std::vector<int> sorted = perm;
        std::sort(sorted.begin(), sorted.end());
        for (int i = 0; i < n; ++i)
            if (sorted[size_t(i)] != i) return {};
        return perm;
    }
    int start = 0;
    for (int len : numbers) {
        if (start + len > n) return {};
        for (int i = 0; i < len; ++i) perm[size_t(start + i)] = start + (i + 1) % len;
        start += len;
    }
    return perm;
}

// The sixes up to the group the given permutations make. A formula made of whole orbits covers
// every six when it covers one six of each orbit, so the search works on far fewer vertices.
struct Orbits : Graph {
    std::vector<std::vector<int>> members;  // orbit -> its sixes (ranks)
    std::vector<int> orbitOf;               // rank -> its orbit

    Orbits(const Johnson& j, const std::vector<std::vector<int>>& generators) {
        auto apply = [&](const std::vector<int>& perm, std::uint32_t mask) {
            std::uint32_t out = 0;
            for (int i = 0; i < j.n; ++i)
                if (mask >> i & 1) out |= 1u << perm[size_t(i)];
            return out;
        };
        orbitOf.assign(size_t(j.size()), -1);
        for (int r = 0; r < j.size(); ++r) {
            if (orbitOf[size_t(r)] >= 0) continue;
            const int id = int(members.size());
            members.emplace_back();
            std::vector<int>& m = members.back();
            orbitOf[size_t(r)] = id;
            m.push_back(r);
            for (size_t k = 0; k < m.size(); ++k)
                for (const auto& gen : generators) {
                    const int rr = j.rankOf[apply(gen, j.masks[size_t(m[k])])];
                    if (orbitOf[size_t(rr)] < 0) {
                        orbitOf[size_t(rr)] = id;
                        m.push_back(rr);
                    }
                }
        }
        closed.resize(members.size());
        for (size_t o = 0; o < members.size(); ++o) {
            sixes.push_back(int(members[o].size()));
            std::vector<int>& c = closed[o];
            for (int v : j.closed[size_t(members[o][0])]) c.push_back(orbitOf[size_t(v)]);
            std::sort(c.begin(), c.end());
            c.erase(std::unique(c.begin(), c.end()), c.end());
        }
    }
};

// A greedy start: the six covering most uncovered ones (when independent, among those sharing five
// with no chosen one: what it ends with is then independent and, being maximal, covers every six).
std::vector<int> greedy(const Graph& j, bool independent) {
    // gain[x]: uncovered sixes x would cover; closed neighbourhoods are symmetric, so covering v
    // lowers the gain of every six around v.
    std::vector<int> cover(size_t(j.size()), 0), gain(size_t(j.size())), blocks;
    std::vector<char> blocked(size_t(j.size()), 0);
    for (int x = 0; x < j.size(); ++x) gain[size_t(x)] = int(j.closed[size_t(x)].size());
    int left = j.size();
    while (left > 0) {
        int best = -1;
        for (int x = 0; x < j.size(); ++x)
            if ((!independent || !blocked[size_t(x)]) && (best < 0 || gain[size_t(x)] > gain[size_t(best)]))
                best = x;
        for (int v : j.closed[size_t(best)]) {
            blocked[size_t(v)] = 1;
            if (cover[size_t(v)]++ == 0) {
                --left;
                for (int x : j.closed[size_t(v)]) --gain[size_t(x)];
            }
        }
        blocks.push_back(best);
    }
    return blocks;
}

// The formula for j's drags in a file this tool wrote (ranks from 0), or none. A rank that is no
// six of the drags, or comes again, is left out.
std::vector<int> readFormula(const char* path, const Johnson& j) {
    std::vector<int> ranks;
    std::vector<char> seen(size_t(j.size()), 0);
    std::FILE* f = std::fopen(path, "r");
    if (!f) return ranks;
    char line[1 << 16];
    const std::string head = std::to_string(j.n) + ":";
    while (std::fgets(line, sizeof line, f)) {
        if (std::string(line).rfind(head, 0) != 0) continue;
        for (char* p = line + head.size(); *p;) {
            char* end = nullptr;
            const long x = std::strtol(p, &end, 10);
            if (end == p) break;
            if (x >= 1 && x <= j.size() && !seen[size_t(x - 1)]++) ranks.push_back(int(x) - 1);
            p = end;
        }
        break;
    }
    std::fclose(f);
    return ranks;
}

// One line of the formulas file; the search also writes each smaller formula to its log as it
// finds it, so that a run cut short still leaves its best.
void printFormula(std::FILE* to, int n, std::vector<int> ranks) {
    std::sort(ranks.begin(), ranks.end());
    std::fprintf(to, "%d:", n);
    for (int x : ranks) std::fprintf(to, " %d", x + 1);
    std::fprintf(to, "\n");
    std::fflush(to);
}

// The search on a region of a formula: the sixes the tickets outside it leave uncovered are the
// only ones that count (its rows), and any six may come in. Each step lets go of the chosen six whose
// loss weighs least and brings in, next to a random uncovered row, the six covering most weight;
// uncovered rows gain weight. Two moves a step rather than the best exchange: on a region of a
// hundred tickets and thousands of rows it makes many more steps in the same time.
struct RegionSwap {
    const Johnson& j;
    std::mt19937_64 rng;
    std::vector<int> rowSix;               // row -> its six
    std::vector<std::vector<int>> rowsOf;  // six -> the rows it covers
    std::vector<int> cover;
    IndexedSet uncovered, chosen;
    std::vector<long> weight, age;
    long step = 0;

    RegionSwap(const Johnson& j_, const std::vector<int>& rows, std::uint64_t seed)
        : j(j_),
          rng(seed),
          rowSix(rows),
          rowsOf(size_t(j_.size())),
          cover(rows.size(), 0),
          weight(rows.size(), 1),
          age(size_t(j_.size()), 0) {
        for (size_t r = 0; r < rows.size(); ++r)
            for (int x : j.closed[size_t(rows[r])]) rowsOf[size_t(x)].push_back(int(r));
        uncovered.reset(rows.size());
        chosen.reset(size_t(j.size()));
        for (size_t r = 0; r < rows.size(); ++r) uncovered.set(int(r), true);
    }
    void add(int x) {
        chosen.set(x, true);
        for (int r : rowsOf[size_t(x)])
            if (cover[size_t(r)]++ == 0) uncovered.set(r, false);
    }
    void removeAt(size_t i) {
        const int x = chosen[i];
        chosen.set(x, false);
        for (int r : rowsOf[size_t(x)])
            if (--cover[size_t(r)] == 0) uncovered.set(r, true);
    }
    long loss(int x) const {
        long l = 0;
        for (int r : rowsOf[size_t(x)]) l += cover[size_t(r)] == 1 ? weight[size_t(r)] : 0;
        return l;
    }
    // The chosen six whose loss weighs least, the longest unmoved among equals, not `except`.
    size_t cheapest(int except = -1) const {
        size_t best = chosen.size();
        long bestLoss = 0;
        for (size_t i = 0; i < chosen.size(); ++i) {
            if (chosen[i] == except) continue;
            const long l = loss(chosen[i]);
            if (best == chosen.size() || l < bestLoss ||
                (l == bestLoss && age[size_t(chosen[i])] < age[size_t(chosen[best])]))
                best = i, bestLoss = l;
        }
        return best;
    }
    // True once every row is covered.
    bool run(CpuClock::time_point until) {
        int lastIn = -1;
        while (!uncovered.empty()) {
            if ((++step & 255) == 0 && CpuClock::now() > until) return false;
            const size_t out = cheapest(lastIn);
            if (out == chosen.size()) return false;
            const int lastOut = chosen[out];
            age[size_t(lastOut)] = step;
            removeAt(out);
            const int row = uncovered[rng() % uncovered.size()];
            int in = -1;
            long bestGain = -1;
            for (int x : j.closed[size_t(rowSix[size_t(row)])]) {
                if (chosen.contains(x) || x == lastOut) continue;
                long gain = 0;
                for (int r : rowsOf[size_t(x)]) gain += cover[size_t(r)] == 0 ? weight[size_t(r)] : 0;
                if (gain > bestGain || (gain == bestGain && age[size_t(x)] < age[size_t(in)]))
                    bestGain = gain, in = x;
            }
            add(in);
            age[size_t(in)] = step;
            lastIn = in;
            for (int r : uncovered) ++weight[size_t(r)];
        }
        return true;
    }
};

// Goes on from a formula region by region: each round picks `drags` drags at random (or takes the
// `given` ones), frees the tickets of the formula holding a number of them in `counts`, and re-covers
// with fewer tickets the sixes only those covered. Such a region (every ticket holding four or more
// of nine drags, say) is far larger than a walk over single exchanges can rebuild, and it is where
// an orbit formula keeps its waste. Each smaller formula goes to the log.
std::vector<int> recoverRegions(const Johnson& j, std::vector<int> formula, int drags, std::uint32_t given,
                                const std::vector<int>& counts, double roundSeconds,
                                CpuClock::time_point until, std::uint64_t seed) {
    std::mt19937_64 rng(seed);
    std::vector<int> order(size_t(j.n));
    for (int round = 0; CpuClock::now() < until; ++round) {
        for (int d = 0; d < j.n; ++d) order[size_t(d)] = d;
        std::shuffle(order.begin(), order.end(), rng);
        std::uint32_t region = given;
        for (int d = 0; !given && d < drags && d < j.n; ++d) region |= 1u << order[size_t(d)];
        std::vector<int> kept, freed;
        for (int x : formula) {
            const int held = std::popcount(j.masks[size_t(x)] & region);
            (std::find(counts.begin(), counts.end(), held) != counts.end() ? freed : kept).push_back(x);
        }
        std::vector<char> coveredByKept(size_t(j.size()), 0);
        for (int x : kept)
            for (int v : j.closed[size_t(x)]) coveredByKept[size_t(v)] = 1;
        std::vector<int> rows;
        for (int v = 0; v < j.size(); ++v)
            if (!coveredByKept[size_t(v)]) rows.push_back(v);
        const auto roundEnd =
            std::min(until, CpuClock::now() + std::chrono::duration_cast<CpuClock::duration>(
                                                  std::chrono::duration<double>(roundSeconds)));
        RegionSwap s(j, rows, rng());
        for (int x : freed) s.add(x);
        while (!s.chosen.empty()) {
            s.removeAt(s.cheapest());
            if (!s.run(roundEnd)) break;
            formula = kept;
            formula.insert(formula.end(), s.chosen.begin(), s.chosen.end());
            printFormula(stderr, j.n, formula);
            std::fprintf(stderr, "n %d: round %d, %zu tickets\n", j.n, round, formula.size());
        }
    }
    return formula;
}

// A region as --recover takes it: "9:4,5,6" is nine drags drawn at random each round, freeing the
// tickets holding four to six of them; "11.12.13:2,3" is those drags (from 0) every round. False
// unless the whole text is such a region, with drags that fit a mask and counts a six can hold.
bool parseRegion(const char* text, int& drags, std::uint32_t& given, std::vector<int>& counts) {
    const char* p = text;
    long x = 0;
    if (!readNumber(p, 0, 32, x)) return false;
    given = 0;
    if (*p == '.') {
        if (x > 31) return false;
        given = 1u << x;
        while (*p == '.') {
            if (!readNumber(++p, 0, 31, x)) return false;
            given |= 1u << x;
        }
        drags = std::popcount(given);
    } else {
        if (x < 1) return false;
        drags = int(x);
    }
    counts.clear();
    if (*p != ':') return false;
    do {
        if (!readNumber(++p, 0, 6, x)) return false;
        counts.push_back(int(x));
    } while (*p == ',');
    return *p == '\0';
}

}  // namespace

int main(int argc, char** argv) {
    bool independent = false;
    bool byTickets = false;  // --tickets: step the size down by tickets rather than by orbits
    std::vector<const char*> generators;
    std::uint64_t seed = 20081118u;
    const char* from = nullptr;   // a formulas file to start from, sizes it has
    int regionDrags = 0;          // --recover: drags per region, and the counts of them it frees
    std::uint32_t regionSet = 0;  // the drags themselves, when given
    std::vector<int> regionCounts;
    double roundSeconds = 30;
    for (;;) {
        const std::string option = argc > 1 ? argv[1] : "";
        if (option == "--independent") {
            independent = true;
            --argc, ++argv;
        } else if (option == "--tickets") {
            byTickets = true;
            --argc, ++argv;
        } else if (argc > 2 && option == "--gen") {
            generators.push_back(argv[2]);
            argc -= 2, argv += 2;
        } else if (argc > 2 && option == "--from") {
            from = argv[2];
            argc -= 2, argv += 2;
        } else if (argc > 2 && option == "--recover") {
            if (!parseRegion(argv[2], regionDrags, regionSet, regionCounts)) regionDrags = -1;
            argc -= 2, argv += 2;
        } else if (argc > 2 && option == "--round") {
            roundSeconds = std::atof(argv[2]);
            argc -= 2, argv += 2;
        } else if (argc > 2 && option == "--seed") {
            seed = std::strtoull(argv[2], nullptr, 10);
            argc -= 2, argv += 2;
        } else {
            break;
        }
    }
    // The drag counts index a table of 2^n entries by a six's bit set: fewer than six drags would
    // write outside it, and more than 24 ask for gigabytes.
    long first = 10, last = 20;
    auto readDrags = [](const char* text, long& out) {
        return readNumber(text, 6, 24, out) && *text == '\0';
    };
    const bool sizesRead = argc <= 3 || (readDrags(argv[2], first) && readDrags(argv[3], last));
    if (argc < 2 || !sizesRead || regionDrags < 0 || (regionDrags > 0 && !from)) {
        std::fprintf(
            stderr,
            "usage: dovrex-makessgs [--independent] [--tickets] [--seed S] [--from FILE] [--gen PERM]... "
            "<seconds per size> [<first n> <last n> [<temperature>]]\n"
            "       dovrex-makessgs --from FILE --recover K:C,C... [--round S] [--seed S] "
            "<seconds per size> [<first n> <last n>]\n");
        return 2;
    }
    const double seconds = std::atof(argv[1]);
    const double temperature = argc > 4 ? std::atof(argv[4]) : 0.3;
    for (int n = int(first); n <= int(last); ++n) {
        const Johnson j(n);
        const auto until = CpuClock::now() + std::chrono::duration_cast<CpuClock::duration>(
                                                 std::chrono::duration<double>(seconds));
        std::vector<int> best;
        if (regionDrags > 0) {
            best = readFormula(from, j);
            if (best.empty()) continue;
            best = recoverRegions(j, best, regionDrags, regionSet, regionCounts, roundSeconds, until,
                                  seed + unsigned(n));
        } else if (!independent) {
            // On the orbits of the group the generators make (each six its own orbit without any):
            // drop the cheapest orbit each time the rest covers everything, keep the last cover.
            std::vector<std::vector<int>> perms;
            for (const char* text : generators) {
                perms.push_back(parsePermutation(text, n));
                if (perms.back().empty()) {
                    std::fprintf(stderr, "dovrex-makessgs: --gen %s is no permutation of %d drags\n", text,
                                 n);
                    return 2;
                }
            }
            const Orbits g(j, perms);
            auto expand = [&](const std::vector<int>& orbits) {
                std::vector<int> sixes;
                for (int o : orbits)
                    for (int r : g.members[size_t(o)]) sixes.push_back(r);
                return sixes;
            };
            WeightedSwap w(g, seed + unsigned(n));
            // A start read from a file is taken orbit by orbit: every orbit it touches comes in
            // whole, so a formula made of orbits of a larger group starts the search unchanged.
            std::vector<int> start;
            if (from) {
                std::vector<char> taken(size_t(g.size()), 0);
                for (int r : readFormula(from, j)) {
                    const int o = g.orbitOf[size_t(r)];
                    if (!taken[size_t(o)]) taken[size_t(o)] = 1, start.push_back(o);
                }
            }
            w.reset(start.empty() ? greedy(g, false) : start);
            best = expand(w.blocks);
            for (;;) {
                // Drop the cheapest orbits until the rest stand for fewer tickets than the best.
                if (byTickets) w.budget = long(best.size()) - 1;
                do {
                    std::vector<int> trial = w.blocks;
                    trial.erase(trial.begin() + long(w.cheapest()));
                    w.reset(trial);
                } while (w.tickets > w.budget);
                if (!w.run(until)) break;
                if (size_t(w.tickets) < best.size()) {
                    best = expand(w.blocks);
                    printFormula(stderr, n, best);
                }
                std::fprintf(stderr, "n %d: %zu orbits, %zu tickets\n", n, w.blocks.size(), best.size());
            }
        } else {
            best = greedy(j, true);
            Search s(j, seed + unsigned(n), independent);
            s.reset(best);
            for (;;) {
                // Drop the chosen six whose loss uncovers least, then walk on at the smaller size
                // from where the search stands.
                std::vector<int> trial = s.blocks;
                int drop = 0, dropCost = 1 << 30;
                for (size_t i = 0; i < trial.size(); ++i) {
                    int cost = 0;
                    for (int v : j.closed[size_t(trial[i])]) cost += s.cover[size_t(v)] == 1;
                    if (cost < dropCost) dropCost = cost, drop = int(i);
                }
                trial.erase(trial.begin() + drop);
                s.reset(trial);
                const double left = std::chrono::duration<double>(until - CpuClock::now()).count();
                if (left <= 0 || !s.anneal(left, temperature)) break;
                best = s.blocks;
                std::fprintf(stderr, "n %d: %zu\n", n, best.size());
            }
        }
        printFormula(stdout, n, best);
        std::fprintf(stderr, "n %d done: %zu tickets\n", n, best.size());
    }
    return 0;
}
