#pragma once
// The scans of one element type as built for one ISA: the seeded scans of
// ArrayOperations, their variants that stop in front of the first NaN (for
// the NaN-aware strategies; floating types only), and the Mid search.

#include <cstdint>

#include "arrayops/MinMaxPointSearchResult.h"

namespace qm {

// A range in one or two pieces, searched in this order: a ring buffer's
// bucket that wraps is [start, size) and then [0, end).
struct ScanPieces {
    std::int32_t start[2];
    std::int32_t end[2];
    std::int32_t count;
};

// What the Mid search answers: the middle of the values, the element of
// each piece nearest to it (the piece's start when no distance is below
// DBL_MAX), and where the search stopped: the end of the last piece, or the
// first NaN for the variant that stops there (the pieces behind it not
// searched).
struct NearestAnswer {
    double mid;
    std::int32_t chosen[2];
    std::int32_t stop;
};

template <class T>
struct ScanTable {
    // Each returns where it stopped: `end`, or the first NaN for the
    // variants that stop there.
    using Extreme = std::int32_t (*)(const T* data, std::int32_t start, std::int32_t end, T& value, std::int32_t& index);
    using Both = std::int32_t (*)(const T* data, std::int32_t start, std::int32_t end, MinMaxPointSearchResult<T>& result);
    using Nearest = NearestAnswer (*)(const T* data, const ScanPieces& pieces);

    Extreme min;
    Extreme max;
    Both minMax;
    Nearest nearestToMid;
    Extreme minToNaN;
    Extreme maxToNaN;
    Both minMaxToNaN;
    Nearest nearestToMidToNaN;
    // The first position of [start, end) that is not NaN, or end.
    std::int32_t (*firstNumber)(const T* data, std::int32_t start, std::int32_t end);
    // min, max and minMax with every stretch whole, so that their loads
    // straddle cache lines wherever the range does not start on one: from
    // memory faster on some processors, from cache slower on all. Reads
    // from memory take them where they are faster (simd::StreamsUnaligned);
    // an ISA without such processors gives min, max and minMax here.
    Extreme minStreaming;
    Extreme maxStreaming;
    Both minMaxStreaming;
    // minMax of `count` adjacent ranges, [bounds[k], bounds[k + 1]), each
    // into results[k] as seeded by the caller: small buckets in one call.
    using BothEach = void (*)(const T* data, const std::int32_t* bounds, std::int32_t count,
                              MinMaxPointSearchResult<T>* results);
    BothEach minMaxEach = nullptr;
};

}  // namespace qm
