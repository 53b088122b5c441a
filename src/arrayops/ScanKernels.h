#pragma once
// The scan loops, written once for every element type and every ISA, over a
// set of lane operations `Ops` (see simd/LaneBasics.h): Load, Splat, the
// strict lane Lower and Higher, and Any over a compare mask.
//
// A scan walks [start, end) upward and compares each element with the
// running value, strictly; the faster path below gives exactly that walk's
// value, index and tie-break. The whole vectors of the range go in stretches
// of at most 4 KiB, each reduced lane-wise without a branch and settled once:
// the lanes are folded into the stretch's extreme, and if that beats the
// running value, the first element equal to it is searched. The last partial
// vector is walked one by one, so no load reaches past `end`.
//
// Everything here depends on `Ops`, whose ISA tag makes each translation
// unit's instantiations its own.

#include <cstdint>
#include <cstring>
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

// One running extreme with the position it came from.
template <class Ops, class Rule>
struct Extreme {
    using T = typename Ops::Element;
    using V = typename Ops::V;
    static constexpr std::int32_t kLanes = Ops::kLanes;

    T value;
    std::int32_t index;

    void Visit(T e, std::int32_t i) {
        if (Rule::Beats(e, value)) {
            value = e;
            index = i;
        }
    }

    // Lane i of the result is lane (i + kShift) mod kLanes of v.
    template <std::int32_t kShift, std::size_t... I>
    [[gnu::always_inline]] static V Rotate(V v, std::index_sequence<I...>) {
        return __builtin_shufflevector(v, v, static_cast<int>((I + kShift) % kLanes)...);
    }

    // Folds each half of the lanes onto the other until every lane holds the
    // best of all; which of equal lanes survives does not matter, since the
    // winner is searched in memory.
    template <std::int32_t kHalf = kLanes / 2>
    [[gnu::always_inline]] static V FoldLanes(V v) {
        if constexpr (kHalf == 0) {
            return v;
        } else {
            return FoldLanes<kHalf / 2>(Rule::Keep(v, Rotate<kHalf>(v, std::make_index_sequence<kLanes>{})));
        }
    }

    [[gnu::always_inline]] void StartChains(V (&best)[kChains]) const {
        for (V& b : best) b = Ops::Splat(value);
    }

    [[gnu::always_inline]] static V MergeChains(V (&best)[kChains]) {
        return FoldLanes(Rule::Keep(Rule::Keep(best[0], best[1]), Rule::Keep(best[2], best[3])));
    }

    // The element walk over p[0, n) ends on the first element equal to the
    // stretch's extreme, if that beats the running value: found here from the
    // lane-wise bests of the stretch and one search, instead of a branch per
    // element. The value is read back from memory, so a -0.0/+0.0 tie keeps
    // the sign of the first of them, as the walk would. NaN never enters a
    // lane, since it beats nothing. The search stops at the winner, which
    // lies inside the stretch, so it loads nothing past it.
    void Settle(const T* p, std::int32_t base, V folded) {
        const T winner = folded[0];
        if (!Rule::Beats(winner, value)) return;
        std::int32_t k = 0;
        while (!Ops::Any(Ops::Load(p + k) == folded)) k += kLanes;
        while (!(p[k] == winner)) ++k;
        value = p[k];
        index = base + k;
    }

    // n is a whole number of vectors.
    void TakeStretch(const T* p, std::int32_t base, std::int32_t n) {
        V best[kChains];
        StartChains(best);
        std::int32_t k = 0;
        for (; n - k >= kChains * kLanes; k += kChains * kLanes) {
            for (std::int32_t c = 0; c < kChains; ++c) best[c] = Rule::Keep(best[c], Ops::Load(p + k + c * kLanes));
        }
        for (; k < n; k += kLanes) best[0] = Rule::Keep(best[0], Ops::Load(p + k));
        Settle(p, base, MergeChains(best));
    }
};

// A scan for one extreme.
template <class Ops, class Rule>
struct OneSide {
    Extreme<Ops, Rule> side;
    void Visit(typename Ops::Element e, std::int32_t i) { side.Visit(e, i); }
    void TakeStretch(const typename Ops::Element* p, std::int32_t base, std::int32_t n) { side.TakeStretch(p, base, n); }
};

template <class Ops>
using MinScan = OneSide<Ops, Below<Ops>>;
template <class Ops>
using MaxScan = OneSide<Ops, Above<Ops>>;

// Both extremes at once, from one read of each vector; the two sides never
// influence each other, so the element order of their tests (Max first)
// cannot change a result.
template <class Ops>
struct MinMaxScan {
    using T = typename Ops::Element;
    using V = typename Ops::V;
    static constexpr std::int32_t kLanes = Ops::kLanes;

    Extreme<Ops, Below<Ops>> min;
    Extreme<Ops, Above<Ops>> max;

    void Visit(T e, std::int32_t i) {
        max.Visit(e, i);
        min.Visit(e, i);
    }

    void TakeStretch(const T* p, std::int32_t base, std::int32_t n) {
        V lo[kChains], hi[kChains];
        min.StartChains(lo);
        max.StartChains(hi);
        std::int32_t k = 0;
        for (; n - k >= kChains * kLanes; k += kChains * kLanes) {
            for (std::int32_t c = 0; c < kChains; ++c) {
                const V e = Ops::Load(p + k + c * kLanes);
                lo[c] = Below<Ops>::Keep(lo[c], e);
                hi[c] = Above<Ops>::Keep(hi[c], e);
            }
        }
        for (; k < n; k += kLanes) {
            const V e = Ops::Load(p + k);
            lo[0] = Below<Ops>::Keep(lo[0], e);
            hi[0] = Above<Ops>::Keep(hi[0], e);
        }
        max.Settle(p, base, max.MergeChains(hi));
        min.Settle(p, base, min.MergeChains(lo));
    }
};

// Stretches of 4 KiB stay in L1 for the search that settles them.
template <class T>
inline constexpr std::int32_t kStretch = static_cast<std::int32_t>(4096 / sizeof(T));

// Positions never pass `end`, so no index wraps even for ranges that end at
// the largest int32.
template <class Ops, class Tracker, class T>
void Run(Tracker& tracker, const T* data, std::int32_t start, std::int32_t end) {
    std::int32_t i = start;
    if (static_cast<std::int64_t>(end) - start >= Ops::kLanes) {
        const auto whole = static_cast<std::int32_t>(end - (static_cast<std::int64_t>(end) - start) % Ops::kLanes);
        for (; whole - i > kStretch<T>; i += kStretch<T>) tracker.TakeStretch(data + i, i, kStretch<T>);
        tracker.TakeStretch(data + i, i, whole - i);
        i = whole;
    }
    for (; i < end; ++i) tracker.Visit(data[i], i);
}

// The seeded scans as plain functions, the entries of an ISA's scan table.
template <class Ops>
struct ScanEntries {
    using T = typename Ops::Element;

    static void Min(const T* data, std::int32_t start, std::int32_t end, T& min, std::int32_t& minIndex) {
        MinScan<Ops> tracker{{min, minIndex}};
        Run<Ops>(tracker, data, start, end);
        min = tracker.side.value;
        minIndex = tracker.side.index;
    }

    static void Max(const T* data, std::int32_t start, std::int32_t end, T& max, std::int32_t& maxIndex) {
        MaxScan<Ops> tracker{{max, maxIndex}};
        Run<Ops>(tracker, data, start, end);
        max = tracker.side.value;
        maxIndex = tracker.side.index;
    }

    static void MinMax(const T* data, std::int32_t start, std::int32_t end, MinMaxPointSearchResult<T>& result) {
        MinMaxScan<Ops> tracker{{result.Min, result.MinIndex}, {result.Max, result.MaxIndex}};
        Run<Ops>(tracker, data, start, end);
        result = {tracker.min.index, tracker.max.index, tracker.min.value, tracker.max.value};
    }
};

}  // namespace qm::scan
