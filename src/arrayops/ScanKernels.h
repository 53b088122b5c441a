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

#include "arrayops/LaneFolds.h"
#include "arrayops/MinMaxPointSearchResult.h"
#include "arrayops/ScanStretches.h"
#include "arrayops/ScanTrackers.h"

namespace qm::scan {

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

// A range of up to eight vectors and 64 elements, what small buckets are:
// taken in registers, as few vectors as cover it (part of one, on an ISA
// that loads part of one). False, having taken nothing, for any other range,
// or one with a NaN to stop at.
template <class Ops, bool kStopAtNaN, class Tracker, class T>
[[gnu::always_inline]] inline bool RunInRegisters(Tracker& tracker, const T* data, std::int32_t start, std::int32_t end) {
    constexpr std::int32_t kLanes = Ops::kLanes;
    const std::int64_t count = static_cast<std::int64_t>(end) - start;
    if (count <= 0 || count > 64) return false;
    const auto n = static_cast<std::int32_t>(count);
    if (n < kLanes) {
        if constexpr (Ops::kLoadsPart) return RunShort<Ops, 1, kStopAtNaN, true>(tracker, data + start, start, n);
        return false;
    }
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
    if (RunInRegisters<Ops, kStopAtNaN>(tracker, data, start, end)) return end;
    if (static_cast<std::int64_t>(end) - start < kLanes) {
        for (std::int32_t i = start; i < end; ++i) {
            if (kStopAtNaN && data[i] != data[i]) return i;
            tracker.Visit(data[i], i);
        }
        return end;
    }
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
