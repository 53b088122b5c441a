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

#include <cstdint>

#include "arrayops/MinMaxPointSearchResult.h"
#include "model/Int32Arithmetic.h"

namespace qm::scan {

inline constexpr std::int32_t kBlock = 16;

// The running minimum: replaced only when running > element, so equal values,
// -0.0 against +0.0 and NaN on either side keep the running value.
template <class T>
struct MinValue {
    T min;
    bool Improves(T e) const { return min > e; }
    void Visit(T e, std::int32_t) {
        if (min > e) min = e;
    }
};

template <class T>
struct MaxValue {
    T max;
    bool Improves(T e) const { return e > max; }
    void Visit(T e, std::int32_t) {
        if (e > max) max = e;
    }
};

template <class T>
struct MinWithIndex {
    T min;
    std::int32_t index;
    bool Improves(T e) const { return min > e; }
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
    bool Improves(T e) const { return e > max; }
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
    bool Improves(T e) const { return (e > r.Max) | (r.Min > e); }
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
    bool Improves(T e) const { return (e > max) | (min > e); }
    void Visit(T e, std::int32_t) {
        if (e > max) max = e;
        if (min > e) min = e;
    }
};

template <class Tracker, class T>
bool BlockImproves(const Tracker& tracker, const T* block) {
    bool any = false;
    for (std::int32_t k = 0; k < kBlock; ++k) any |= tracker.Improves(block[k]);
    return any;
}

template <class Tracker, class T>
void Run(Tracker& tracker, const T* data, std::int32_t start, std::int32_t end) {
    std::int32_t i = start;
    const std::int32_t count = WrappingSub(end, start);
    if (count > kBlock) {
        const std::int32_t blockEnd = i + (count - count % kBlock);
        for (; i < blockEnd; i += kBlock) {
            if (!BlockImproves(tracker, data + i)) continue;
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
