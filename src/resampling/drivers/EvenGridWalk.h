#pragma once
// The walk shared by the Linear and Category drivers, plain and ring. It
// works in logical indices: each grid boundary is turned into the index
// nearest to it (`predictLast`), which closes the bucket, and the next
// bucket starts one index behind it. The last bucket is cut at EndIndex.
//
// Two guards make every walk end without touching valid runs, where
// predictions never go backwards and no more buckets are visited than the
// grid has cells:
//  - a prediction below the bucket's start (an overflowed position, a NaN
//    or infinite step, a spacing of 0, NaN or below 0) closes the walk with
//    one last bucket up to EndIndex;
//  - so does the last bucket the budget allows.

#include <cstdint>

#include "model/Int32Arithmetic.h"
#include "model/ResamplingArgs.h"

namespace qm {

template <class PredictLast, class Reduce>
void WalkEvenGrid(const ResamplingArgs& args, double firstBoundary, double step, std::int32_t budget,
                  PredictLast&& predictLast, Reduce&& reduce) {
    const std::int32_t limit = WrappingAdd(args.EndIndex, 1);
    std::int32_t bucketStart = args.StartIndex;
    if (!(bucketStart < limit)) return;
    double boundary = firstBoundary;
    for (std::int32_t bucket = 1; bucket <= budget; ++bucket) {
        std::int32_t bucketEnd = WrappingAdd(predictLast(boundary), 1);
        if (limit < bucketEnd || bucketEnd < bucketStart || bucket == budget) bucketEnd = limit;
        reduce(bucketStart, bucketEnd);
        boundary = boundary + step;
        bucketStart = bucketEnd;
        if (!(bucketEnd < limit)) break;
    }
}

// The index nearest to a boundary on an evenly spaced axis: measured from the
// first point with the one mean spacing, never corrected by the data.
struct LinearPrediction {
    std::int32_t startIndex;
    double base;
    double spacing;

    std::int32_t operator()(double boundary) const {
        const double position = (boundary - base) / spacing;
        return WrappingAdd(startIndex, TruncateToInt32(RoundHalfAwayFromZero(position)));
    }
};

// On a category axis a boundary is an index already.
struct CategoryPrediction {
    std::int32_t operator()(double boundary) const { return TruncateToInt32(RoundHalfAwayFromZero(boundary)); }
};

// Mean spacing of X from the two ends of the visible stretch only.
inline double MeanSpacing(double first, double last, std::int32_t startIndex, std::int32_t endIndex) {
    return (last - first) / static_cast<double>(WrappingSub(endIndex, startIndex));
}

}  // namespace qm
