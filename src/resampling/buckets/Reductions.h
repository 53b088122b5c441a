#pragma once
// The ways of reducing one bucket (or one NaN-free run of it) to real source
// points. They depend only on TY and on the range's layout, never on X, so
// they are compiled once per Y type in Reductions.cpp. A reduction picks
// positions and their Y; what becomes of them (an output point with X, or an
// index only) is up to the caller.
//
// Scans go through ArrayOperations, seeded as in ScanSeeds; a position
// nobody beat stays -1 and is picked all the same.

#include <cstdint>

#include "arrayops/ArrayOperations.h"
#include "quillmap/QuillmapTypes.h"
#include "resampling/buckets/BucketRange.h"

namespace qm {

enum class Reduction : std::int8_t {
    Min,
    Max,
    MinMax,
    // Of a bucket wholly on one side of the zero line the point farthest
    // from it; of a bucket touching or crossing it both extremes.
    MinOrMax,
    // The same with the point nearest the line on a one-sided bucket: the
    // sense of the plain NaN-aware strategies.
    MinOrMaxNearest,
    // The existing point nearest the middle of the bucket's value range.
    Mid,
};

// How many points a bucket reduces to at most.
constexpr std::int32_t PointsPerBucket(Reduction reduction) {
    return reduction == Reduction::MinMax || reduction == Reduction::MinOrMax ||
                   reduction == Reduction::MinOrMaxNearest
               ? 2
               : 1;
}

// Up to two picked positions, in source order.
struct Picks {
    std::int32_t count = 0;
    // Both entries always hold something, so that two points can be
    // emitted as one piece of which the first `count` are kept.
    std::int32_t position[2]{};
    double value[2]{};

    void Add(std::int32_t p, double v) {
        position[count] = p;
        value[count] = v;
        ++count;
    }
};

template <class TY, class Range>
Picks Reduce(Reduction reduction, const ArrayOperations<TY>& operations, const TY* y, const Range& range,
             double zeroLine);

// The reduction of the part of `range` in front of its first NaN, whose
// first element is a number: the NaN-aware strategies reduce each unbroken
// run on its own and find where it ends while they reduce it, in one read.
// `runEnd` is set to where the run ends (the first NaN, or range's end).
// Floating TY only.
template <class TY, class Range>
Picks ReduceRun(Reduction reduction, const TY* y, const Range& range, double zeroLine, std::int32_t& runEnd);

#define QM_EXTERN_REDUCE_(ctx, W, T, N)                                                                     \
    extern template Picks Reduce<T, PlainRange>(Reduction, const ArrayOperations<T>&, const T*, const PlainRange&, \
                                                double);                                                          \
    extern template Picks Reduce<T, RingRange>(Reduction, const ArrayOperations<T>&, const T*, const RingRange&,   \
                                               double);
QM_Y_TYPES(QM_EXTERN_REDUCE_, _)
#undef QM_EXTERN_REDUCE_
#define QM_EXTERN_REDUCE_RUN_(T)                                                                           \
    extern template Picks ReduceRun<T, PlainRange>(Reduction, const T*, const PlainRange&, double, std::int32_t&); \
    extern template Picks ReduceRun<T, RingRange>(Reduction, const T*, const RingRange&, double, std::int32_t&);
QM_EXTERN_REDUCE_RUN_(double)
QM_EXTERN_REDUCE_RUN_(float)
#undef QM_EXTERN_REDUCE_RUN_

}  // namespace qm
