#pragma once
// How the scans read a long range: in stretches of whole cache lines, each
// folded into four chains of lane bests by groups of four vectors, with the
// lines of the group 8 KiB ahead asked for from memory. What the chains
// belong to is the tracker's (ScanTrackers.h); a stretch only feeds it.

#include <atomic>
#include <cstdint>
#include <utility>

#include "arrayops/LaneFolds.h"

namespace qm::scan {

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

// Whether the lines asked for ahead go to L2 rather than all the way to L1:
// chosen with the ISA, by the processor's maker (simd/IsaChoice.cpp).
inline constinit std::atomic<bool> gAheadToL2{false};

// Every line of the group of vectors kDistance (8 KiB) past `p` asked for
// from memory, ahead of the loads that need it (a prefetch is a hint: it
// never faults, wherever the address lies). On Zen 5 the hardware
// prefetchers left these loops waiting on memory: with every line asked
// for, whole MinMax runs read memory 6 to 11 % faster and those that stop
// at NaN 39 % faster; asking for every second or fourth line gained next
// to nothing, and distances of 6 to 12 KiB no more than 4 KiB. On an Intel
// Xeon (AVX-512) the same lines asked into L1 made MinMax runs read 15 to
// 30 % slower than with no prefetch at all, on every ISA (most likely each
// held one of its few line fill buffers for a whole trip to memory); asked
// into L2 (`toL2`) they read memory as fast as the plain Min or Max scans
// there, and 8 KiB ahead rather than 4 KiB took 0.01 to 0.07 of the
// summing loop off whole runs of every type (16 KiB no more).
template <class Ops, std::uintptr_t kDistance = 8192>
[[gnu::always_inline]] inline void PrefetchGroupAhead(const typename Ops::Element* p, bool toL2) {
    constexpr std::uintptr_t kGroupBytes = kChains * sizeof(typename Ops::V);
    const std::uintptr_t ahead = reinterpret_cast<std::uintptr_t>(p) + kDistance;
    for (std::uintptr_t line = 0; line < kGroupBytes; line += kCacheLine) {
        const auto* at = reinterpret_cast<const void*>(ahead + line);
        if (toL2)
            __builtin_prefetch(at, 0, 2);
        else
            __builtin_prefetch(at, 0, 3);
    }
}

// `take.template operator()<kSide>()` for every side of the tracker, the
// first side first (a two-sided scan keeps a minimum and a maximum).
template <class Tracker, class Take>
[[gnu::always_inline]] inline void ForEverySide(Take take) {
    [&]<std::int32_t... kSide>(std::integer_sequence<std::int32_t, kSide...>) {
        (take.template operator()<kSide>(), ...);
    }(std::make_integer_sequence<std::int32_t, Tracker::kSides>{});
}

// Folds the n elements at p into the chains. With kTestNaN, answers
// whether any of them is NaN, tested beside the chains: one compare for two
// vectors, and no branch until the end. A vector that more than one test
// or side takes is read once and held in a register for all of them. The
// first `lead` elements (LeadToLine) come in vectors of their own, where
// the stretch is long enough that these stay inside it.
template <class Ops, bool kTestNaN = false, class Tracker>
[[gnu::always_inline]] inline bool TakeStretch(Tracker& tracker, const typename Ops::Element* p, std::int32_t n,
                                               std::int32_t lead = 0) {
    using G = Groups<Ops>;
    using V = typename Ops::V;
    constexpr bool kHeld = kTestNaN || Tracker::kSides > 1;
    decltype(Ops::Unordered(V{}, V{})) nan{};
    const auto load = [&p](std::int32_t at) { return kHeld ? Ops::Held(Ops::Load(p + at)) : Ops::Load(p + at); };
    const bool toL2 = gAheadToL2.load(std::memory_order_relaxed);  // once a stretch, not once a group
    if (lead != 0 && n >= lead + G::kLanes) {
        for (std::int32_t k = 0; k < lead; k += G::kLanes) {
            const V e = load(k);
            if constexpr (kTestNaN) nan = nan | Ops::Unordered(e, e);
            ForEverySide<Tracker>([&]<std::int32_t kSide>() { tracker.template Take<0, kSide>(e); });
        }
        p += lead;
        n -= lead;
    }
    const auto group = [&](std::int32_t a0, std::int32_t a1, std::int32_t a2, std::int32_t a3) {
        PrefetchGroupAhead<Ops>(p + a0, toL2);
        const V e0 = load(a0), e1 = load(a1), e2 = load(a2), e3 = load(a3);
        if constexpr (kTestNaN) nan = nan | (Ops::Unordered(e0, e1) | Ops::Unordered(e2, e3));
        // Side after side: every vector into the first side's chains before
        // any goes into the next side's. With each vector's minimum and
        // maximum next to each other, a MinMax loop read memory 2 to 3 %
        // slower on an Intel Xeon (a standalone loop over 512 MB of Double:
        // 1.01 of the summing loop against 0.98, the instructions otherwise
        // the same).
        ForEverySide<Tracker>([&]<std::int32_t kSide>() {
            tracker.template Take<0, kSide>(e0);
            tracker.template Take<1, kSide>(e1);
            tracker.template Take<2, kSide>(e2);
            tracker.template Take<3, kSide>(e3);
        });
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

}  // namespace qm::scan
