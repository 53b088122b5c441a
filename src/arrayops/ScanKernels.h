#pragma once
// The scan loops, written once for every element type and every ISA, over a
// set of lane operations `Ops` (see simd/LaneBasics.h).
//
// A scan walks [start, end) upward and compares each element with the
// running value, strictly; the faster path below gives exactly that walk's
// value, index and tie-break. Whole vectors are folded lane-wise into
// chains of lane bests that run through the whole range; after each
// stretch one packed compare tells whether the stretch beat the running
// value. Only the last stretch that did can hold the winner: every element
// before it is strictly worse than the final value. So the winner is
// searched once, at the end, as the first element of that stretch equal to
// the final value, and its value is read back from memory (a -0.0/+0.0 tie
// keeps the sign of the first, as the walk would). NaN never enters a lane,
// since it beats nothing.
//
// A range of at least one vector ends on a vector that overlaps the one
// before it, so no load reaches past `end`; shorter ranges are read in one
// masked load where the ISA has one, else walked one by one.
//
// The variants that stop at NaN (for the NaN-aware strategies) look for the
// first NaN of each stretch before taking it, and take only what lies in
// front of it.
//
// Everything here depends on `Ops`, whose ISA tag makes each translation
// unit's instantiations its own.

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>
#include <utility>

#include "arrayops/MinMaxPointSearchResult.h"

namespace qm::scan {

// Which element replaces the running value: strictly below (or above) it, so
// equal values, -0.0 against +0.0 and NaN on either side keep the running
// one. Beats works on scalars and on vectors alike.
template <class Ops>
struct Below {
    template <class A, class B>
    [[gnu::always_inline]] static auto Beats(A element, B running) {
        return running > element;
    }
    [[gnu::always_inline]] static auto Keep(typename Ops::V best, typename Ops::V e) { return Ops::Lower(best, e); }
};
template <class Ops>
struct Above {
    template <class A, class B>
    [[gnu::always_inline]] static auto Beats(A element, B running) {
        return element > running;
    }
    [[gnu::always_inline]] static auto Keep(typename Ops::V best, typename Ops::V e) { return Ops::Higher(best, e); }
};

// Independent chains of lane bests, so that consecutive folds do not wait on
// each other (a packed min takes three or four cycles, and two issue per cycle).
inline constexpr std::int32_t kChains = 4;

// The cache line of every x86-64 and arm64 core the library plans for.
inline constexpr std::uintptr_t kCacheLine = 64;

// A stretch is what one packed test covers, and what the final search may
// have to read again, from cache, while memory waits. Shorter stretches make
// that search cheap next to the stretches around it; longer ones spend less
// on the tests at their ends. On Zen 4, 2 KiB beat 4 KiB by up to 0.06 of
// the summing loop (Int16 MinMax). On Zen 5 the same loops read memory a
// quarter to a third slower at 2 KiB than at 8 KiB or more, for every type
// and on buckets from 8 KiB up (1 KiB and 4 KiB in between), while 8 KiB
// costs the final search next to nothing there: whole runs gained 0.12 to
// 0.35 of the summing loop. That outweighs what Zen 4 may lose (not yet
// measured there at 8 KiB).
template <class T>
inline constexpr std::int32_t kStretch = static_cast<std::int32_t>(8192 / sizeof(T));

// The length of the first of a range's stretches of `stretch` elements (a
// whole number of cache lines), cut so that every later one starts on a
// cache line: a vector load that straddles two lines costs a 64-byte ISA
// about a third of its memory bandwidth on most processors (not all: see
// the streaming scans of ScanTable.h), and arrays from a managed heap or
// malloc seldom start on a line. An address that is no multiple of the
// element's size can never be aligned, and keeps whole stretches.
template <class T>
[[gnu::always_inline]] inline std::int32_t FirstStretchLength(const T* p, std::int32_t stretch) {
    const auto address = reinterpret_cast<std::uintptr_t>(p);
    if (address % sizeof(T) != 0) return stretch;
    return stretch - static_cast<std::int32_t>(address % kCacheLine / sizeof(T));
}

// How many elements lie in front of p's next cache line, when p lies inside
// one (0 when it starts a line, or can never be aligned). The first stretch
// of a range takes them in vectors of their own, so that all its groups
// load whole lines. With that stretch's loads straddling lines, ranges of
// 256 KiB from such starts read memory about 9 % slower on Zen 5; a whole
// array, where one such stretch hides in the rest, does not show it, but a
// walk's buckets do (bench/README.md).
template <class T>
[[gnu::always_inline]] inline std::int32_t LeadToLine(const T* p) {
    const auto address = reinterpret_cast<std::uintptr_t>(p);
    if (address % sizeof(T) != 0 || address % kCacheLine == 0) return 0;
    return static_cast<std::int32_t>((kCacheLine - address % kCacheLine) / sizeof(T));
}

// The length of the next stretch where `left` elements remain, stretches
// being `stretch` long: a last piece shorter than a quarter stretch goes
// with the one before it. On its own it costs far more than its size (its
// few vectors reach back over the one before, straddling lines): ranges of
// 256 KiB that ended on one read memory about 8 % slower on Zen 5. The
// final search may now read a quarter more, from cache.
[[gnu::always_inline]] inline std::int32_t NextStretchLength(std::int32_t left, std::int32_t stretch) {
    return left > stretch + stretch / 4 ? stretch : left;
}

// Lane i of the result is lane (i + kShift) mod kLanes of v; with kInBlocks
// the lane kShift further on within i's block of 16 bytes.
template <class Ops, std::int32_t kShift, bool kInBlocks, std::size_t... I>
[[gnu::always_inline]] inline typename Ops::V Rotate(typename Ops::V v, std::index_sequence<I...>) {
    constexpr std::size_t kBlock = kInBlocks ? 16 / sizeof(typename Ops::Element) : Ops::kLanes;
    return __builtin_shufflevector(v, v, static_cast<int>(I / kBlock * kBlock + (I % kBlock + kShift) % kBlock)...);
}

// Folds each half of the lanes onto the other until every lane holds the
// best of all; which of equal lanes survives does not matter, since the
// winner is searched in memory. Halves of 16 bytes or more move across the
// register; after them every block of 16 bytes holds the same lanes, so the
// rest fold within blocks, which the wide ISAs do in one cycle rather than
// three or four.
template <class Ops, class Rule, std::int32_t kHalf = Ops::kLanes / 2>
[[gnu::always_inline]] inline typename Ops::V FoldLanes(typename Ops::V v) {
    if constexpr (kHalf == 0) {
        return v;
    } else {
        constexpr bool kInBlocks = kHalf * sizeof(typename Ops::Element) < 16;
        return FoldLanes<Ops, Rule, kHalf / 2>(
            Rule::Keep(v, Rotate<Ops, kHalf, kInBlocks>(v, std::make_index_sequence<Ops::kLanes>{})));
    }
}

// `taken` if `take`, else `kept`, by arithmetic: a select on a condition
// that is as good as random, which neither a branch (mispredicted half the
// time) nor a vectorised reduction (packed through memory) serves.
[[gnu::always_inline]] inline std::int32_t Choose(bool take, std::int32_t taken, std::int32_t kept) {
    return kept ^ ((taken ^ kept) & -static_cast<std::int32_t>(take));
}

// Of kCount vectors' compare bits, the position of the first lane set,
// where vector v starts at at[v] and some lane is set: each vector with a
// lane set, from the last to the first, replaces the answer.
template <class Ops, std::size_t kCount>
[[gnu::always_inline]] inline std::int32_t FirstOf(const std::uint64_t (&bits)[kCount],
                                                   const std::int32_t (&at)[kCount]) {
    std::int32_t found = at[kCount - 1] + Ops::LaneOf(bits[kCount - 1]);
    for (std::size_t v = kCount - 1; v-- > 0;) found = Choose(bits[v] != 0, at[v] + Ops::LaneOf(bits[v]), found);
    return found;
}

// The first position of p[0, n) whose element `select` picks, when one is
// known to be there. Four vectors go to one test; the last eight (or four)
// are looked at together and end at p + n, overlapping where n is not a
// whole number of vectors. For n below a vector the one vector read ends
// at p + n: the scanned range goes on before p.
template <class Ops, class Select>
[[gnu::always_inline]] inline std::int32_t FirstSelectedIn(const typename Ops::Element* p, std::int32_t n,
                                                            Select select) {
    constexpr std::int32_t kLanes = Ops::kLanes;
    const std::int32_t last = n - kLanes;
    std::int32_t k = 0;
    for (; n - k > 8 * kLanes; k += 4 * kLanes) {
        const auto m0 = select(Ops::Load(p + k)), m1 = select(Ops::Load(p + k + kLanes));
        const auto m2 = select(Ops::Load(p + k + 2 * kLanes)), m3 = select(Ops::Load(p + k + 3 * kLanes));
        if (Ops::Any((m0 | m1) | (m2 | m3))) {
            const std::uint64_t bits[4] = {Ops::ByteBits(m0), Ops::ByteBits(m1), Ops::ByteBits(m2), Ops::ByteBits(m3)};
            const std::int32_t at[4] = {k, k + kLanes, k + 2 * kLanes, k + 3 * kLanes};
            return FirstOf<Ops>(bits, at);
        }
    }
    auto lastAt = [&](std::int32_t v) { return k + v * kLanes < last ? k + v * kLanes : last; };
    auto bitsAt = [&](std::int32_t at) { return Ops::ByteBits(select(Ops::Load(p + at))); };
    if (n - k > 4 * kLanes) {
        const std::int32_t at[8] = {lastAt(0), lastAt(1), lastAt(2), lastAt(3), lastAt(4), lastAt(5), lastAt(6), last};
        const std::uint64_t bits[8] = {bitsAt(at[0]), bitsAt(at[1]), bitsAt(at[2]), bitsAt(at[3]),
                                       bitsAt(at[4]), bitsAt(at[5]), bitsAt(at[6]), bitsAt(at[7])};
        return FirstOf<Ops>(bits, at);
    }
    const std::int32_t at[4] = {lastAt(0), lastAt(1), lastAt(2), last};
    const std::uint64_t bits[4] = {bitsAt(at[0]), bitsAt(at[1]), bitsAt(at[2]), bitsAt(at[3])};
    return FirstOf<Ops>(bits, at);
}

// One bit per lane where a equals b, by the ISA's own compare into bits
// where it has one.
template <class Ops>
[[gnu::always_inline]] inline std::uint64_t EqualBits(typename Ops::V a, typename Ops::V b) {
    if constexpr (requires { Ops::EqualBits(a, b); })
        return Ops::EqualBits(a, b);
    else
        return Ops::LaneBits(Ops::Equal(a, b));
}

// One running extreme with the position it came from. Only `value` and
// `index` mean anything before Start; the rest is set there.
template <class Ops, class Rule>
struct Extreme {
    using T = typename Ops::Element;
    using V = typename Ops::V;

    Extreme(T seed, std::int32_t seedIndex) : value(seed), index(seedIndex) {}

    T value;
    std::int32_t index;
    V c0, c1, c2, c3;          // the chains
    V running;                 // the running value in every lane
    const T* won;              // the last stretch that beat the running value
    std::int32_t wonAt;        // its position
    std::int32_t wonLength;

    void Visit(T e, std::int32_t i) {
        if (Rule::Beats(e, value)) {
            value = e;
            index = i;
        }
    }

    [[gnu::always_inline]] void Start() {
        running = Ops::Splat(value);
        c0 = c1 = c2 = c3 = running;
        won = nullptr;
        wonAt = wonLength = 0;
    }

    template <std::int32_t kChain>
    [[gnu::always_inline]] void Take(V e) {
        V& c = kChain == 0 ? c0 : kChain == 1 ? c1 : kChain == 2 ? c2 : c3;
        c = Rule::Keep(c, e);
    }

    // After the stretch of n elements at p (position at): did it beat the
    // running value? The chains hold everything so far, and every lane of
    // them is at best equal to the running value until this stretch, so a
    // lane that beats it came from this stretch.
    [[gnu::always_inline]] void EndStretch(const T* p, std::int32_t at, std::int32_t n) {
        const V merged = Rule::Keep(Rule::Keep(c0, c1), Rule::Keep(c2, c3));
        if (!Ops::Any(Rule::Beats(merged, running))) return;
        running = FoldLanes<Ops, Rule>(merged);
        won = p;
        wonAt = at;
        wonLength = n;
    }

    // A short range, whose kCount vectors (at p + at[v], in order) are all
    // held in registers: their best against the running value, and the
    // winner found among the registers without reading them again. Each
    // chain starts from the running value, so NaN never enters a lane.
    template <std::size_t kCount>
    [[gnu::always_inline]] void TakeShort(const V (&e)[kCount], const std::int32_t (&at)[kCount], const T* p,
                                          std::int32_t position) {
        constexpr std::size_t kUsed = kCount < 4 ? kCount : 4;
        const V seed = Ops::Splat(value);
        V chains[kUsed];
        for (std::size_t v = 0; v < kUsed; ++v) chains[v] = Rule::Keep(seed, e[v]);
        for (std::size_t v = 4; v < kCount; ++v) chains[v - 4] = Rule::Keep(chains[v - 4], e[v]);
        V merged = chains[0];
        if constexpr (kUsed == 4)
            merged = Rule::Keep(Rule::Keep(chains[0], chains[1]), Rule::Keep(chains[2], chains[3]));
        else if constexpr (kUsed == 2) merged = Rule::Keep(chains[0], chains[1]);
        const V final = FoldLanes<Ops, Rule>(merged);
        if (!Rule::Beats(final[0], value)) return;
        // One bit per position (the range is at most 64 long), each
        // vector's lanes at its own place, so the first set bit is the
        // winner; where vectors overlap they agree.
        std::uint64_t bits = 0;
        for (std::size_t v = 0; v < kCount; ++v) bits |= EqualBits<Ops>(e[v], final) << at[v];
        const auto k = static_cast<std::int32_t>(__builtin_ctzll(bits | (std::uint64_t{1} << 63)));
        value = p[k];
        index = position + k;
    }

    // The winner is the first element of the last stretch that won equal to
    // the final value; its value is read back, so that of -0.0 and +0.0 the
    // first one's sign stays.
    [[gnu::always_inline]] void Finish() {
        if (won == nullptr) return;
        const V final = running;
        const std::int32_t k = FirstSelectedIn<Ops>(won, wonLength, [final](V e) { return Ops::Equal(e, final); });
        value = won[k];
        index = wonAt + k;
        won = nullptr;
    }
};

// A scan for one extreme.
template <class Ops, class Rule>
struct OneSide {
    using T = typename Ops::Element;
    Extreme<Ops, Rule> side;
    void Visit(T e, std::int32_t i) { side.Visit(e, i); }
    [[gnu::always_inline]] void Start() { side.Start(); }
    template <std::int32_t kChain>
    [[gnu::always_inline]] void Take(typename Ops::V e) {
        side.template Take<kChain>(e);
    }
    [[gnu::always_inline]] void EndStretch(const T* p, std::int32_t at, std::int32_t n) { side.EndStretch(p, at, n); }
    [[gnu::always_inline]] void Finish() { side.Finish(); }
    template <std::size_t kCount>
    [[gnu::always_inline]] void TakeShort(const typename Ops::V (&e)[kCount], const std::int32_t (&at)[kCount],
                                          const T* p, std::int32_t position) {
        side.TakeShort(e, at, p, position);
    }
};

template <class Ops>
using MinScan = OneSide<Ops, Below<Ops>>;
template <class Ops>
using MaxScan = OneSide<Ops, Above<Ops>>;

// Both extremes at once, from one read of each vector (held in a register
// for both, not read again by each); the two sides never influence each
// other, so the element order of their tests (Max first) cannot change a
// result.
template <class Ops>
struct MinMaxScan {
    using T = typename Ops::Element;
    Extreme<Ops, Below<Ops>> min;
    Extreme<Ops, Above<Ops>> max;

    void Visit(T e, std::int32_t i) {
        max.Visit(e, i);
        min.Visit(e, i);
    }
    [[gnu::always_inline]] void Start() {
        min.Start();
        max.Start();
    }
    template <std::int32_t kChain>
    [[gnu::always_inline]] void Take(typename Ops::V e) {
        e = Ops::Held(e);
        min.template Take<kChain>(e);
        max.template Take<kChain>(e);
    }
    [[gnu::always_inline]] void EndStretch(const T* p, std::int32_t at, std::int32_t n) {
        max.EndStretch(p, at, n);
        min.EndStretch(p, at, n);
    }
    [[gnu::always_inline]] void Finish() {
        max.Finish();
        min.Finish();
    }
    template <std::size_t kCount>
    [[gnu::always_inline]] void TakeShort(const typename Ops::V (&e)[kCount], const std::int32_t (&at)[kCount],
                                          const T* p, std::int32_t position) {
        max.TakeShort(e, at, p, position);
        min.TakeShort(e, at, p, position);
    }
};

// Where the four vectors of the group at k start, for a stretch of n
// elements: whole groups while more than one group remains, then four that
// end at n, overlapping the ones before where n is not a whole number of
// groups (even reaching in front of the stretch, when it is the short end
// of a longer range). A lane best taken twice is the same lane best, so the
// overlap changes nothing and the stretch needs no tail of its own.
template <class Ops>
struct Groups {
    static constexpr std::int32_t kLanes = Ops::kLanes;
    static constexpr std::int32_t kLength = kChains * kLanes;

    static bool Whole(std::int32_t k, std::int32_t n) { return n - k > kLength; }

    template <std::int32_t kVector>
    static std::int32_t At(std::int32_t k, std::int32_t n) {
        const std::int32_t at = k + kVector * kLanes;
        return at < n - kLanes ? at : n - kLanes;
    }
};

// Every line of the group of vectors 4 KiB past `p` asked for from memory,
// ahead of the loads that need it (a prefetch is a hint: it never faults,
// wherever the address lies). On Zen 5 the hardware prefetchers left these
// loops waiting on memory: with every line asked for, whole MinMax runs
// read memory 6 to 11 % faster and those that stop at NaN 39 % faster;
// asking for every second or fourth line gained next to nothing, and
// distances of 6 to 12 KiB no more than 4 KiB.
template <class Ops>
[[gnu::always_inline]] inline void PrefetchGroupAhead(const typename Ops::Element* p) {
    constexpr std::uintptr_t kDistance = 4096;
    constexpr std::uintptr_t kGroupBytes = kChains * sizeof(typename Ops::V);
    const std::uintptr_t ahead = reinterpret_cast<std::uintptr_t>(p) + kDistance;
    for (std::uintptr_t line = 0; line < kGroupBytes; line += kCacheLine)
        __builtin_prefetch(reinterpret_cast<const void*>(ahead + line), 0, 3);
}

// Folds the n elements at p into the chains. With kTestNaN, answers
// whether any of them is NaN, tested beside the chains: one compare for two
// vectors, read once for both (held), and no branch until the end. The
// first `lead` elements (LeadToLine) come in vectors of their own, where
// the stretch is long enough that these stay inside it.
template <class Ops, bool kTestNaN = false, class Tracker>
[[gnu::always_inline]] inline bool TakeStretch(Tracker& tracker, const typename Ops::Element* p, std::int32_t n,
                                               std::int32_t lead = 0) {
    using G = Groups<Ops>;
    using V = typename Ops::V;
    decltype(Ops::Unordered(V{}, V{})) nan{};
    const auto load = [&p](std::int32_t at) { return kTestNaN ? Ops::Held(Ops::Load(p + at)) : Ops::Load(p + at); };
    if (lead != 0 && n >= lead + G::kLanes) {
        for (std::int32_t k = 0; k < lead; k += G::kLanes) {
            const V e = load(k);
            if constexpr (kTestNaN) nan = nan | Ops::Unordered(e, e);
            tracker.template Take<0>(e);
        }
        p += lead;
        n -= lead;
    }
    const auto group = [&](std::int32_t a0, std::int32_t a1, std::int32_t a2, std::int32_t a3) {
        PrefetchGroupAhead<Ops>(p + a0);
        const V e0 = load(a0), e1 = load(a1), e2 = load(a2), e3 = load(a3);
        if constexpr (kTestNaN) nan = nan | (Ops::Unordered(e0, e1) | Ops::Unordered(e2, e3));
        tracker.template Take<0>(e0);
        tracker.template Take<1>(e1);
        tracker.template Take<2>(e2);
        tracker.template Take<3>(e3);
    };
    std::int32_t k = 0;
    for (; G::Whole(k, n); k += G::kLength) group(k, k + G::kLanes, k + 2 * G::kLanes, k + 3 * G::kLanes);
    group(G::template At<0>(k, n), G::template At<1>(k, n), G::template At<2>(k, n), n - G::kLanes);
    return kTestNaN && Ops::Any(nan);
}

// TakeStretch up to the first NaN of p[0, n): answers where that NaN lies,
// or n; `taken` is where the vectors taken end. NaN is rare, so the stretch
// is taken whole with one test at its end, and a stretch that holds one is
// taken again from the chains as they were, up to the vectors wholly in
// front of it, from L1. A test per group of vectors, with its branch, slows
// a loop that waits on memory by a fifth.
template <class Ops, class Tracker>
[[gnu::always_inline]] inline std::int32_t TakeStretchToNaN(Tracker& tracker, const typename Ops::Element* p,
                                                             std::int32_t n, std::int32_t& taken,
                                                             std::int32_t lead = 0) {
    using V = typename Ops::V;
    const Tracker before = tracker;
    if (!TakeStretch<Ops, true>(tracker, p, n, lead)) [[likely]] {
        taken = n;
        return n;
    }
    tracker = before;
    const std::int32_t nan = FirstSelectedIn<Ops>(p, n, [](V e) { return e != e; });
    taken = nan / Ops::kLanes * Ops::kLanes;
    if (taken > 0) TakeStretch<Ops>(tracker, p, taken);
    return nan;
}

// A range of n elements at p, from one vector to kCount of them and at most
// 64, read as kCount vectors that end at p + n (the last ones overlapping
// where n is shorter) and all held in registers: no stretches, no search in
// memory.
// With kPart, a range shorter than a vector, on an ISA that loads part of
// one: a single vector whose lanes past the range hold its first element,
// which can win no search that the first lane would not win first.
// Answers false, having taken nothing, when it meets a NaN it must stop at.
template <class Ops, std::size_t kCount, bool kStopAtNaN, bool kPart = false, class Tracker>
[[gnu::always_inline]] inline bool RunShort(Tracker& tracker, const typename Ops::Element* p, std::int32_t position,
                                            std::int32_t n) {
    constexpr std::int32_t kLanes = Ops::kLanes;
    const std::int32_t last = n - kLanes;
    std::int32_t at[kCount];
    typename Ops::V e[kCount];
    for (std::size_t v = 0; v < kCount; ++v) {
        const auto k = static_cast<std::int32_t>(v) * kLanes;
        at[v] = kPart ? 0 : k < last ? k : last;
        if constexpr (kPart)
            e[v] = Ops::Held(Ops::LoadPart(p, n));
        else
            e[v] = Ops::Held(Ops::Load(p + at[v]));
    }
    if constexpr (kStopAtNaN) {
        auto nan = Ops::Unordered(e[0], e[kCount > 1 ? 1 : 0]);
        for (std::size_t v = 2; v < kCount; v += 2) nan = nan | Ops::Unordered(e[v], e[v + 1]);
        if (Ops::Any(nan)) return false;
    }
    tracker.TakeShort(e, at, p, position);
    return true;
}

// A range of one vector up to eight of them and 64 elements, what small
// buckets are: taken in registers, as few vectors as cover it. False, having
// taken nothing, for any other range, or one with a NaN to stop at.
template <class Ops, bool kStopAtNaN, class Tracker, class T>
[[gnu::always_inline]] inline bool RunInRegisters(Tracker& tracker, const T* data, std::int32_t start, std::int32_t end) {
    constexpr std::int32_t kLanes = Ops::kLanes;
    const std::int64_t count = static_cast<std::int64_t>(end) - start;
    if (count < kLanes || count > 64) return false;
    const auto n = static_cast<std::int32_t>(count);
    if (n <= kLanes) return RunShort<Ops, 1, kStopAtNaN>(tracker, data + start, start, n);
    if (n <= 2 * kLanes) return RunShort<Ops, 2, kStopAtNaN>(tracker, data + start, start, n);
    if (n <= 4 * kLanes) return RunShort<Ops, 4, kStopAtNaN>(tracker, data + start, start, n);
    if (n <= 8 * kLanes) return RunShort<Ops, 8, kStopAtNaN>(tracker, data + start, start, n);
    return false;
}

// The scan of [start, end), or of the part of it in front of its first NaN
// when kStopAtNaN; returns where it stopped (end, or that NaN's position).
// Positions never pass `end`, so no index wraps even for ranges that end at
// the largest int32. With kOnLines the stretches after the first start on
// cache lines; without, every stretch is whole (the streaming scans).
template <class Ops, bool kStopAtNaN, bool kOnLines = true, class Tracker, class T>
[[gnu::always_inline]] inline std::int32_t Run(Tracker& tracker, const T* data, std::int32_t start, std::int32_t end) {
    constexpr std::int32_t kLanes = Ops::kLanes;
    if (static_cast<std::int64_t>(end) - start < kLanes) {
        if constexpr (Ops::kLoadsPart)
            if (start < end && RunShort<Ops, 1, kStopAtNaN, true>(tracker, data + start, start, end - start))
                return end;
        for (std::int32_t i = start; i < end; ++i) {
            if (kStopAtNaN && data[i] != data[i]) return i;
            tracker.Visit(data[i], i);
        }
        return end;
    }
    if (RunInRegisters<Ops, kStopAtNaN>(tracker, data, start, end)) return end;
    tracker.Start();
    std::int32_t i = start;
    std::int32_t stretch = kOnLines ? FirstStretchLength(data + start, kStretch<T>) : kStretch<T>;
    std::int32_t lead = kOnLines ? LeadToLine(data + start) : 0;
    do {
        const std::int32_t n = NextStretchLength(end - i, stretch);
        stretch = kStretch<T>;
        if constexpr (kStopAtNaN) {
            std::int32_t taken;
            const std::int32_t nan = TakeStretchToNaN<Ops>(tracker, data + i, n, taken, lead);
            if (nan != n) {
                // What lies between the vectors taken and the NaN goes one
                // by one. The stretch in front of the NaN holds no NaN, and
                // what it holds beyond the vectors taken comes after them,
                // so the search for the winner may cover it.
                tracker.EndStretch(data + i, i, nan);
                tracker.Finish();
                for (std::int32_t k = i + taken; k < i + nan; ++k) tracker.Visit(data[k], k);
                return i + nan;
            }
        } else {
            TakeStretch<Ops>(tracker, data + i, n, lead);
        }
        lead = 0;
        tracker.EndStretch(data + i, i, n);
        i += n;
    } while (i != end);
    tracker.Finish();
    return end;
}

// The first position of [start, end) that holds a number (not NaN), or end.
template <class Ops, class T>
std::int32_t FirstNumber(const T* data, std::int32_t start, std::int32_t end) {
    constexpr std::int32_t kLanes = Ops::kLanes;
    std::int32_t i = start;
    for (; static_cast<std::int64_t>(end) - i >= kLanes; i += kLanes) {
        const std::uint64_t bits = Ops::ByteBits(Ops::Equal(Ops::Load(data + i), Ops::Load(data + i)));
        if (bits != 0) return i + Ops::LaneOf(bits);
    }
    for (; i < end; ++i)
        if (data[i] == data[i]) return i;
    return end;
}

// The seeded scans as plain functions, the entries of an ISA's scan table.
template <class Ops>
struct ScanEntries {
    using T = typename Ops::Element;

    template <bool kStopAtNaN, bool kOnLines = true>
    static std::int32_t Min(const T* data, std::int32_t start, std::int32_t end, T& min, std::int32_t& minIndex) {
        MinScan<Ops> tracker{{min, minIndex}};
        const std::int32_t stop = Run<Ops, kStopAtNaN, kOnLines>(tracker, data, start, end);
        min = tracker.side.value;
        minIndex = tracker.side.index;
        return stop;
    }

    template <bool kStopAtNaN, bool kOnLines = true>
    static std::int32_t Max(const T* data, std::int32_t start, std::int32_t end, T& max, std::int32_t& maxIndex) {
        MaxScan<Ops> tracker{{max, maxIndex}};
        const std::int32_t stop = Run<Ops, kStopAtNaN, kOnLines>(tracker, data, start, end);
        max = tracker.side.value;
        maxIndex = tracker.side.index;
        return stop;
    }

    template <bool kStopAtNaN, bool kOnLines = true>
    static std::int32_t MinMax(const T* data, std::int32_t start, std::int32_t end, MinMaxPointSearchResult<T>& result) {
        MinMaxScan<Ops> tracker{{result.Min, result.MinIndex}, {result.Max, result.MaxIndex}};
        const std::int32_t stop = Run<Ops, kStopAtNaN, kOnLines>(tracker, data, start, end);
        Store(tracker, result);
        return stop;
    }

    // MinMax of each range [bounds[k], bounds[k + 1]) into results[k], from
    // the seed it holds: a batch of small buckets in one call, the short
    // ones taken here without a call each.
    static void MinMaxEach(const T* data, const std::int32_t* bounds, std::int32_t count,
                           MinMaxPointSearchResult<T>* results) {
        for (std::int32_t k = 0; k < count; ++k) {
            MinMaxPointSearchResult<T>& result = results[k];
            MinMaxScan<Ops> tracker{{result.Min, result.MinIndex}, {result.Max, result.MaxIndex}};
            if (RunInRegisters<Ops, false>(tracker, data, bounds[k], bounds[k + 1]))
                Store(tracker, result);
            else
                MinMax<false>(data, bounds[k], bounds[k + 1], result);
        }
    }

private:
    [[gnu::always_inline]] static void Store(const MinMaxScan<Ops>& tracker, MinMaxPointSearchResult<T>& result) {
        result.MinIndex = tracker.min.index;
        result.MaxIndex = tracker.max.index;
        if constexpr (sizeof(T) >= 4) {
            // Both values in one store: a caller may read the two as one (a
            // compiler converting both at once does), and a load that spans
            // two stores waits until both reach the cache, about as long
            // again as a small bucket's scan. Narrower values are read one by
            // one, and pairing them in general registers costs more.
            using Record = MinMaxPointSearchResult<T>;
            static_assert(offsetof(Record, Max) == offsetof(Record, Min) + sizeof(T));
            using Pair [[gnu::vector_size(2 * sizeof(T))]] = T;
            const Pair values = {tracker.min.value, tracker.max.value};
            std::memcpy(reinterpret_cast<unsigned char*>(&result) + offsetof(Record, Min), &values, sizeof values);
        } else {
            result.Min = tracker.min.value;
            result.Max = tracker.max.value;
        }
    }
};

}  // namespace qm::scan
