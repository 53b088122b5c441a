#pragma once
// The scan loops, written once for every element type.
//
// A scan walks [start, end) upward and compares each element with the
// running value, strictly; every faster path below gives exactly that walk's
// value, index and tie-break. Ranges of more than 16 elements go in blocks of
// 16 and then one by one. Where the lanes have a native min and max, whole
// 4 KiB stretches are reduced lane-wise first. The remaining blocks are
// tested in groups: if no element would replace a running value, the group
// is passed over. A stretch or a group is settled by a packed reduction and
// a search for the first element equal to its extreme.

#include <cstdint>
#include <cstring>

#include "arrayops/Chunks.h"
#include "arrayops/MinMaxPointSearchResult.h"
#include "model/Int32Arithmetic.h"

namespace qm::scan {

inline constexpr std::int32_t kBlock = 16;

// True when `lanes(chunk)` sets a mask lane for any chunk of the block.
template <class T, class Lanes>
[[gnu::always_inline]] inline bool AnyInBlock(const T* block, Lanes lanes) {
    auto mask = lanes(LoadChunk(block));
    for (std::int32_t k = kChunkLanes<T>; k < kBlock; k += kChunkLanes<T>) mask |= lanes(LoadChunk(block + k));
    return AnyLane(mask);
}

// Which element replaces the running value: strictly below (or above) it, so
// equal values, -0.0 against +0.0 and NaN on either side keep the running one.
// Works on scalars and on chunks alike.
struct Below {
    template <class A, class B>
    static auto Beats(A element, B running) {
        return running > element;
    }
    template <class T>
    static Chunk<T> Keep(Chunk<T> best, Chunk<T> e) {
        return KeepLower<T>(best, e);
    }
};
struct Above {
    template <class A, class B>
    static auto Beats(A element, B running) {
        return element > running;
    }
    template <class T>
    static Chunk<T> Keep(Chunk<T> best, Chunk<T> e) {
        return KeepHigher<T>(best, e);
    }
};

// One running extreme with the position it came from.
template <class T, class Rule>
struct Extreme {
    T value;
    std::int32_t index;

    [[gnu::always_inline]] auto LanesBeating(Chunk<T> running, Chunk<T> e) const { return Rule::Beats(e, running); }

    void Visit(T e, std::int32_t i) {
        if (Rule::Beats(e, value)) {
            value = e;
            index = i;
        }
    }

    // Keeps, lane by lane, the element that beats the lane's best so far.
    [[gnu::always_inline]] static void Fold(Chunk<T>& best, Chunk<T> e) { best = Rule::template Keep<T>(best, e); }

    // The element walk over p[0, n) ends on the first element equal to the
    // stretch's extreme, if that beats the running value: found here from the
    // lane-wise bests of the stretch and one search, instead of a branch per
    // element. The value is read back from memory, so a -0.0/+0.0 tie keeps
    // the sign of the first of them, as the walk would. NaN never enters a
    // lane, since it beats nothing.
    void Settle(const T* p, std::int32_t base, Chunk<T> best) {
        // Lanes through memory: a generic shuffle of narrow lanes compiles badly.
        T lanes[kChunkLanes<T>];
        std::memcpy(lanes, &best, sizeof lanes);
        T winner = lanes[0];
        for (std::int32_t lane = 1; lane < kChunkLanes<T>; ++lane) {
            if (Rule::Beats(lanes[lane], winner)) winner = lanes[lane];
        }
        if (!Rule::Beats(winner, value)) return;
        const Chunk<T> wanted = Broadcast(winner);
        std::int32_t k = 0;
        while (!AnyLane(LoadChunk(p + k) == wanted)) k += kChunkLanes<T>;
        while (!(p[k] == winner)) ++k;
        value = p[k];
        index = base + k;
    }

    // Four chains of lane bests, so that consecutive folds do not wait on
    // each other (a packed double min takes four cycles); n is a whole
    // number of chunks.
    void TakeGroup(const T* p, std::int32_t base, std::int32_t n) {
        constexpr std::int32_t kLanes = kChunkLanes<T>;
        Chunk<T> best[4] = {Broadcast(value), Broadcast(value), Broadcast(value), Broadcast(value)};
        std::int32_t k = 0;
        for (; n - k >= 4 * kLanes; k += 4 * kLanes) {
            for (std::int32_t c = 0; c < 4; ++c) Fold(best[c], LoadChunk(p + k + c * kLanes));
        }
        for (; k < n; k += kLanes) Fold(best[0], LoadChunk(p + k));
        Fold(best[0], best[1]);
        Fold(best[2], best[3]);
        Fold(best[0], best[2]);
        Settle(p, base, best[0]);
    }
};

// A scan for one extreme.
template <class T, class Rule>
struct OneSide {
    Extreme<T, Rule> side;
    bool BlockImproves(const T* block) const {
        const Chunk<T> running = Broadcast(side.value);
        return AnyInBlock(block, [&](Chunk<T> e) { return side.LanesBeating(running, e); });
    }
    void Visit(T e, std::int32_t i) { side.Visit(e, i); }
    void TakeGroup(const T* p, std::int32_t base, std::int32_t n) { side.TakeGroup(p, base, n); }
};

template <class T>
using MinScan = OneSide<T, Below>;
template <class T>
using MaxScan = OneSide<T, Above>;

// Both extremes at once; the two sides never influence each other, so the
// element order of their tests (Max first) cannot change a result.
template <class T>
struct MinMaxScan {
    Extreme<T, Below> min;
    Extreme<T, Above> max;
    bool BlockImproves(const T* block) const {
        const Chunk<T> lo = Broadcast(min.value);
        const Chunk<T> hi = Broadcast(max.value);
        return AnyInBlock(block, [&](Chunk<T> e) { return max.LanesBeating(hi, e) | min.LanesBeating(lo, e); });
    }
    void Visit(T e, std::int32_t i) {
        max.Visit(e, i);
        min.Visit(e, i);
    }
    // One side after the other: the second reads the stretch from L1.
    void TakeGroup(const T* p, std::int32_t base, std::int32_t n) {
        max.TakeGroup(p, base, n);
        min.TakeGroup(p, base, n);
    }
};

// Blocks are tested in groups covering 128 bytes (16 doubles, 64 shorts),
// so narrow types get as few tests per byte as wide ones.
template <class T>
inline constexpr std::int32_t kBlocksPerTest = static_cast<std::int32_t>(sizeof(double) / sizeof(T));

// Where the lanes have a native min and max, long ranges go first in
// stretches of 4 KiB, each reduced lane-wise without a branch and settled
// once: data with frequent new extremes (a random walk) would make the group
// tests mispredict again and again.
template <class T>
inline constexpr std::int32_t kStretch = static_cast<std::int32_t>(4096 / sizeof(T));

template <class Tracker, class T>
void Run(Tracker& tracker, const T* data, std::int32_t start, std::int32_t end) {
    std::int32_t i = start;
    const std::int32_t count = WrappingSub(end, start);
    if (count > kBlock) {
        const std::int32_t blockEnd = i + (count - count % kBlock);
        constexpr std::int32_t kGroup = kBlock * kBlocksPerTest<T>;
        if constexpr (kNativeLaneMinMax<T>) {
            for (; blockEnd - i >= kStretch<T>; i += kStretch<T>) tracker.TakeGroup(data + i, i, kStretch<T>);
        }
        for (; blockEnd - i >= kGroup; i += kGroup) {
            bool improves = false;
            for (std::int32_t b = 0; b < kGroup; b += kBlock) improves |= tracker.BlockImproves(data + i + b);
            if (improves) tracker.TakeGroup(data + i, i, kGroup);
        }
        for (; i < blockEnd; i += kBlock) {
            if (tracker.BlockImproves(data + i)) tracker.TakeGroup(data + i, i, kBlock);
        }
    }
    for (; i < end; ++i) tracker.Visit(data[i], i);
}

template <class T>
std::int32_t FindExactUnsorted(const T* data, std::int32_t start, std::int32_t end, T value) {
    for (std::int32_t i = start; i < end; ++i) {
        if (data[i] == value) return i;
    }
    return -1;
}

// A lower bound whose final test reads data[lo] even when lo == end: the
// caller keeps that position readable.
template <class T>
std::int32_t FindExactSorted(const T* data, std::int32_t start, std::int32_t end, T value) {
    std::int32_t lo = start;
    std::int32_t hi = end;
    while (lo < hi) {
        const std::int32_t mid = WrappingMidpoint(lo, hi);
        if (value > data[mid])
            lo = mid + 1;
        else
            hi = mid;
    }
    return data[lo] == value ? lo : -1;
}

}  // namespace qm::scan
