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
// before it, so no load reaches past `end`; shorter ranges are walked one
// by one.
//
// The variants that stop at NaN (for the NaN-aware strategies) look for the
// first NaN of each stretch before taking it, and take only what lies in
// front of it.
//
// Everything here depends on `Ops`, whose ISA tag makes each translation
// unit's instantiations its own.

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

// A stretch is what one packed test covers, and what the final search may
// have to read again: 8 KiB, from L1 or L2. Longer stretches spend less on
// the test at their end; the search is made once per scan.
template <class T>
inline constexpr std::int32_t kStretch = static_cast<std::int32_t>(8192 / sizeof(T));

// Lane i of the result is lane (i + kShift) mod kLanes of v.
template <class Ops, std::int32_t kShift, std::size_t... I>
[[gnu::always_inline]] inline typename Ops::V Rotate(typename Ops::V v, std::index_sequence<I...>) {
    return __builtin_shufflevector(v, v, static_cast<int>((I + kShift) % Ops::kLanes)...);
}

// Folds each half of the lanes onto the other until every lane holds the
// best of all; which of equal lanes survives does not matter, since the
// winner is searched in memory.
template <class Ops, class Rule, std::int32_t kHalf = Ops::kLanes / 2>
[[gnu::always_inline]] inline typename Ops::V FoldLanes(typename Ops::V v) {
    if constexpr (kHalf == 0) {
        return v;
    } else {
        return FoldLanes<Ops, Rule, kHalf / 2>(
            Rule::Keep(v, Rotate<Ops, kHalf>(v, std::make_index_sequence<Ops::kLanes>{})));
    }
}

// The first position in p[0, n) whose lanes select, or n. n is a whole
// number of vectors; nothing past p + n is loaded.
template <class Ops, class Select>
[[gnu::always_inline]] inline std::int32_t FirstSelected(const typename Ops::Element* p, std::int32_t n, Select select) {
    for (std::int32_t k = 0; k < n; k += Ops::kLanes) {
        const std::uint64_t bits = Ops::ByteBits(select(Ops::Load(p + k)));
        if (bits != 0) return k + Ops::LaneOf(bits);
    }
    return n;
}

// One running extreme with the position it came from.
template <class Ops, class Rule>
struct Extreme {
    using T = typename Ops::Element;
    using V = typename Ops::V;
    static constexpr std::int32_t kLanes = Ops::kLanes;

    T value;
    std::int32_t index;
    V chain[kChains]{};
    V running{};               // the running value in every lane
    const T* won = nullptr;    // the last stretch that beat the running value
    std::int32_t wonAt = 0;    // its position
    std::int32_t wonLength = 0;

    void Visit(T e, std::int32_t i) {
        if (Rule::Beats(e, value)) {
            value = e;
            index = i;
        }
    }

    [[gnu::always_inline]] void Start() {
        running = Ops::Splat(value);
        for (V& c : chain) c = running;
    }

    [[gnu::always_inline]] void Take(std::int32_t c, V e) { chain[c] = Rule::Keep(chain[c], e); }

    // After the stretch of n elements at p (position at): did it beat the
    // running value? The chains hold everything so far, and every lane of
    // them is at best equal to the running value until this stretch, so a
    // lane that beats it came from this stretch.
    [[gnu::always_inline]] void EndStretch(const T* p, std::int32_t at, std::int32_t n) {
        const V merged = Rule::Keep(Rule::Keep(chain[0], chain[1]), Rule::Keep(chain[2], chain[3]));
        if (!Ops::Any(Rule::Beats(merged, running))) return;
        running = FoldLanes<Ops, Rule>(merged);
        won = p;
        wonAt = at;
        wonLength = n;
    }

    // The winner is in the last stretch that won: in its whole vectors, or
    // else in the vector that ends it.
    [[gnu::always_inline]] void Finish() {
        if (won == nullptr) return;
        const V final = running;
        auto equal = [final](V e) { return Ops::Equal(e, final); };
        const std::int32_t whole = wonLength / kLanes * kLanes;
        std::int32_t k = FirstSelected<Ops>(won, whole, equal);
        if (k == whole) k = wonLength - kLanes + FirstSelected<Ops>(won + wonLength - kLanes, kLanes, equal);
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
    void Start() { side.Start(); }
    [[gnu::always_inline]] void Take(std::int32_t c, typename Ops::V e) { side.Take(c, e); }
    [[gnu::always_inline]] void EndStretch(const T* p, std::int32_t at, std::int32_t n) { side.EndStretch(p, at, n); }
    void Finish() { side.Finish(); }
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
    Extreme<Ops, Below<Ops>> min;
    Extreme<Ops, Above<Ops>> max;

    void Visit(T e, std::int32_t i) {
        max.Visit(e, i);
        min.Visit(e, i);
    }
    void Start() {
        min.Start();
        max.Start();
    }
    [[gnu::always_inline]] void Take(std::int32_t c, typename Ops::V e) {
        min.Take(c, e);
        max.Take(c, e);
    }
    [[gnu::always_inline]] void EndStretch(const T* p, std::int32_t at, std::int32_t n) {
        max.EndStretch(p, at, n);
        min.EndStretch(p, at, n);
    }
    void Finish() {
        max.Finish();
        min.Finish();
    }
};

// Folds the n elements at p (a whole number of vectors) into the chains.
template <class Ops, class Tracker>
[[gnu::always_inline]] inline void TakeVectors(Tracker& tracker, const typename Ops::Element* p, std::int32_t n) {
    constexpr std::int32_t kLanes = Ops::kLanes;
    std::int32_t k = 0;
    for (; n - k >= kChains * kLanes; k += kChains * kLanes)
        for (std::int32_t c = 0; c < kChains; ++c) tracker.Take(c, Ops::Load(p + k + c * kLanes));
    for (std::int32_t c = 0; k < n; k += kLanes, ++c) tracker.Take(c, Ops::Load(p + k));
}

// Where the first NaN of p[0, n) lies (n a whole number of vectors), or n.
template <class Ops>
[[gnu::always_inline]] inline std::int32_t FirstNaNIn(const typename Ops::Element* p, std::int32_t n) {
    return FirstSelected<Ops>(p, n, [](typename Ops::V e) { return e != e; });
}

// The scan of [start, end), or of the part of it in front of its first NaN
// when kStopAtNaN; returns where it stopped (end, or that NaN's position).
// Positions never pass `end`, so no index wraps even for ranges that end at
// the largest int32.
template <class Ops, bool kStopAtNaN, class Tracker, class T>
std::int32_t Run(Tracker& tracker, const T* data, std::int32_t start, std::int32_t end) {
    constexpr std::int32_t kLanes = Ops::kLanes;
    if (static_cast<std::int64_t>(end) - start < kLanes) {
        for (std::int32_t i = start; i < end; ++i) {
            if (kStopAtNaN && data[i] != data[i]) return i;
            tracker.Visit(data[i], i);
        }
        return end;
    }
    tracker.Start();
    std::int32_t i = start;
    while (i < end) {
        // A stretch, or the rest: its whole vectors and, when the range does
        // not end on one, the last vector, overlapping the one before.
        const std::int32_t n = end - i > kStretch<T> ? kStretch<T> : end - i;
        const std::int32_t whole = n / kLanes * kLanes;
        if constexpr (kStopAtNaN) {
            const std::int32_t nan = FirstNaNIn<Ops>(data + i, whole);
            const std::int32_t tailNaN = nan == whole && whole != n ? FirstNaNIn<Ops>(data + end - kLanes, kLanes) : kLanes;
            if (nan != whole || tailNaN != kLanes) {
                const std::int32_t stop = nan != whole ? i + nan : end - kLanes + tailNaN;
                const std::int32_t taken = (stop - i) / kLanes * kLanes;
                TakeVectors<Ops>(tracker, data + i, taken);
                tracker.EndStretch(data + i, i, taken);
                tracker.Finish();
                for (std::int32_t k = i + taken; k < stop; ++k) tracker.Visit(data[k], k);
                return stop;
            }
        }
        TakeVectors<Ops>(tracker, data + i, whole);
        if (whole != n) tracker.Take(kChains - 1, Ops::Load(data + end - kLanes));
        tracker.EndStretch(data + i, i, n);
        i += n;
    }
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

    template <bool kStopAtNaN>
    static std::int32_t Min(const T* data, std::int32_t start, std::int32_t end, T& min, std::int32_t& minIndex) {
        MinScan<Ops> tracker{{min, minIndex}};
        const std::int32_t stop = Run<Ops, kStopAtNaN>(tracker, data, start, end);
        min = tracker.side.value;
        minIndex = tracker.side.index;
        return stop;
    }

    template <bool kStopAtNaN>
    static std::int32_t Max(const T* data, std::int32_t start, std::int32_t end, T& max, std::int32_t& maxIndex) {
        MaxScan<Ops> tracker{{max, maxIndex}};
        const std::int32_t stop = Run<Ops, kStopAtNaN>(tracker, data, start, end);
        max = tracker.side.value;
        maxIndex = tracker.side.index;
        return stop;
    }

    template <bool kStopAtNaN>
    static std::int32_t MinMax(const T* data, std::int32_t start, std::int32_t end, MinMaxPointSearchResult<T>& result) {
        MinMaxScan<Ops> tracker{{result.Min, result.MinIndex}, {result.Max, result.MaxIndex}};
        const std::int32_t stop = Run<Ops, kStopAtNaN>(tracker, data, start, end);
        result = {tracker.min.index, tracker.max.index, tracker.min.value, tracker.max.value};
        return stop;
    }
};

}  // namespace qm::scan
