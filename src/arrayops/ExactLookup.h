#pragma once
// The two exact lookups: a linear scan that leaves at the first hit, and a
// lower bound.

#include <cstdint>

namespace qm::scan {

template <class T>
std::int32_t FindExactUnsorted(const T* data, std::int32_t start, std::int32_t end, T value) {
    for (std::int32_t i = start; i < end; ++i) {
        if (data[i] == value) return i;
    }
    return -1;
}

// A lower bound whose final test reads data[lo] even when lo == end: the
// caller keeps that position readable. The midpoint is taken as
// lo + (hi - lo) / 2, which is (lo + hi) >> 1 without the wrap of the sum
// for ranges near the largest int32.
template <class T>
std::int32_t FindExactSorted(const T* data, std::int32_t start, std::int32_t end, T value) {
    std::int32_t lo = start;
    std::int32_t hi = end;
    while (lo < hi) {
        const std::int32_t mid = lo + (hi - lo) / 2;
        if (value > data[mid])
            lo = mid + 1;
        else
            hi = mid;
    }
    return data[lo] == value ? lo : -1;
}

}  // namespace qm::scan
