#pragma once
// The scan loops, written once for every element type.
//
// A scan walks [start, end) upward and compares each element with the
// running value, strictly. Ranges of more than 16 elements go in blocks of
// 16 and then one by one. A block is first tested as a whole: if none of its
// elements would replace a running value, the element-wise walk could not
// change anything there and the block is passed over. Only a block that
// holds an improvement is walked element by element, in order, so values,
// indices and tie-breaks are exactly those of the plain walk. The block test
// has no dependency between lanes, which lets it run as packed compares.

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "arrayops/MinMaxPointSearchResult.h"
#include "model/Int32Arithmetic.h"

namespace qm::scan {

inline constexpr std::int32_t kBlock = 16;

// A block is tested in chunks of one SSE register; the lane masks of all
// chunks are OR-ed, so the test is a few packed compares per block.
template <class T>
struct ChunkOf {
    typedef T type __attribute__((vector_size(16)));
};
template <class T>
using Chunk = typename ChunkOf<T>::type;
template <class T>
inline constexpr std::int32_t kChunkLanes = static_cast<std::int32_t>(16 / sizeof(T));

template <class T>
[[gnu::always_inline]] inline Chunk<T> LoadChunk(const T* p) {
    Chunk<T> v;
    std::memcpy(&v, p, sizeof v);
    return v;
}

template <class T>
[[gnu::always_inline]] inline Chunk<T> Broadcast(T value) {
    Chunk<T> v;
    for (std::int32_t k = 0; k < kChunkLanes<T>; ++k) v[k] = value;
    return v;
}

// True when `lanes(chunk)` sets a mask lane for any chunk of the block.
template <class T, class Lanes>
[[gnu::always_inline]] inline bool AnyInBlock(const T* block, Lanes lanes) {
    auto mask = lanes(LoadChunk(block));
    for (std::int32_t k = kChunkLanes<T>; k < kBlock; k += kChunkLanes<T>) mask |= lanes(LoadChunk(block + k));
    std::uint64_t words[2];
    std::memcpy(words, &mask, sizeof words);
    return (words[0] | words[1]) != 0;
}

// The running minimum: replaced only when running > element, so equal values,
// -0.0 against +0.0 and NaN on either side keep the running value.
template <class T>
struct MinValue {
    T min;
    bool BlockImproves(const T* block) const {
        const Chunk<T> m = Broadcast(min);
        return AnyInBlock(block, [m](Chunk<T> e) { return m > e; });
    }
    void Visit(T e, std::int32_t) {
        if (min > e) min = e;
    }
};

template <class T>
struct MaxValue {
    T max;
    bool BlockImproves(const T* block) const {
        const Chunk<T> m = Broadcast(max);
        return AnyInBlock(block, [m](Chunk<T> e) { return e > m; });
    }
    void Visit(T e, std::int32_t) {
        if (e > max) max = e;
    }
};

template <class T>
struct MinWithIndex {
    T min;
    std::int32_t index;
    bool BlockImproves(const T* block) const {
        const Chunk<T> m = Broadcast(min);
        return AnyInBlock(block, [m](Chunk<T> e) { return m > e; });
    }
    void Visit(T e, std::int32_t i) {
        if (min > e) {
            min = e;
            index = i;
        }
    }
};

template <class T>
struct MaxWithIndex {
    T max;
    std::int32_t index;
    bool BlockImproves(const T* block) const {
        const Chunk<T> m = Broadcast(max);
        return AnyInBlock(block, [m](Chunk<T> e) { return e > m; });
    }
    void Visit(T e, std::int32_t i) {
        if (e > max) {
            max = e;
            index = i;
        }
    }
};

// Both extremes with their positions; per element the Max test runs first.
template <class T>
struct MinMaxWithIndex {
    MinMaxPointSearchResult<T> r;
    bool BlockImproves(const T* block) const {
        const Chunk<T> lo = Broadcast(r.Min);
        const Chunk<T> hi = Broadcast(r.Max);
        return AnyInBlock(block, [lo, hi](Chunk<T> e) { return (e > hi) | (lo > e); });
    }
    void Visit(T e, std::int32_t i) {
        if (e > r.Max) {
            r.Max = e;
            r.MaxIndex = i;
        }
        if (r.Min > e) {
            r.Min = e;
            r.MinIndex = i;
        }
    }
};

template <class T>
struct MinMaxValue {
    T min;
    T max;
    bool BlockImproves(const T* block) const {
        const Chunk<T> lo = Broadcast(min);
        const Chunk<T> hi = Broadcast(max);
        return AnyInBlock(block, [lo, hi](Chunk<T> e) { return (e > hi) | (lo > e); });
    }
    void Visit(T e, std::int32_t) {
        if (e > max) max = e;
        if (min > e) min = e;
    }
};

// Blocks are tested in groups covering 128 bytes (16 doubles, 64 shorts),
// so narrow types get as few tests per byte as wide ones.
template <class T>
inline constexpr std::int32_t kBlocksPerTest = static_cast<std::int32_t>(sizeof(double) / sizeof(T));

template <class Tracker, class T>
void Run(Tracker& tracker, const T* data, std::int32_t start, std::int32_t end) {
    std::int32_t i = start;
    const std::int32_t count = WrappingSub(end, start);
    if (count > kBlock) {
        const std::int32_t blockEnd = i + (count - count % kBlock);
        constexpr std::int32_t kGroup = kBlock * kBlocksPerTest<T>;
        for (; blockEnd - i >= kGroup; i += kGroup) {
            bool improves = false;
            for (std::int32_t b = 0; b < kGroup; b += kBlock) improves |= tracker.BlockImproves(data + i + b);
            if (!improves) continue;
            for (std::int32_t k = 0; k < kGroup; ++k) tracker.Visit(data[i + k], i + k);
        }
        for (; i < blockEnd; i += kBlock) {
            if (!tracker.BlockImproves(data + i)) continue;
            for (std::int32_t k = 0; k < kBlock; ++k) tracker.Visit(data[i + k], i + k);
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
