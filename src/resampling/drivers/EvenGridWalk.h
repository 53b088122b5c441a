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
#include "model/XAxis.h"
#include "resampling/buckets/Grid.h"

namespace qm {

template <class PredictLast, class Reduce>
void WalkEvenGrid(const ResamplingArgs& args, double firstBoundary, double step, std::int32_t budget,
                  PredictLast&& predictLast, Reduce&& reduce) {
    const std::int32_t limit = WrappingAdd(args.EndIndex, 1);
    std::int32_t bucketStart = args.StartIndex;
    if (!(bucketStart < limit)) return;
    double boundary = firstBoundary;
    // The ends of buckets are predicted kAhead buckets before their
    // reductions: a prediction (a division, a rounding) is a chain of some
    // forty cycles, and the boundaries one long chain of additions, which
    // would otherwise stand between one bucket's scan and the next, and a
    // small bucket's scan takes about as long. Taken in the same order, the
    // boundaries are the same; a prediction depends on its boundary alone,
    // and those past the last bucket are never used.
    constexpr std::int32_t kAhead = 32;
    std::int32_t predicted[kAhead];
    for (std::int32_t k = 0; k < kAhead; ++k) {
        predicted[k] = predictLast(boundary);
        boundary = boundary + step;
    }
    for (std::int32_t bucket = 1; bucket <= budget; ++bucket) {
        std::int32_t& ahead = predicted[(bucket - 1) % kAhead];
        std::int32_t bucketEnd = WrappingAdd(ahead, 1);
        ahead = predictLast(boundary);
        boundary = boundary + step;
        if (limit < bucketEnd || bucketEnd < bucketStart || bucket == budget) bucketEnd = limit;
        reduce(bucketStart, bucketEnd);
        bucketStart = bucketEnd;
        if (!(bucketEnd < limit)) return;
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
        return WrappingAdd(startIndex, RoundToInt32(position));
    }
};

// On a category axis a boundary is an index already.
struct CategoryPrediction {
    std::int32_t operator()(double boundary) const { return RoundToInt32(boundary); }
};

// Mean spacing of X from the two ends of the visible stretch only.
inline double MeanSpacing(double first, double last, std::int32_t startIndex, std::int32_t endIndex) {
    return (last - first) / static_cast<double>(WrappingSub(endIndex, startIndex));
}

// The walk of a Linear or Category run over any layout: `bucket(startSlot,
// endSlot)` for each bucket. A Linear axis reads X only at StartIndex and
// EndIndex, a Category axis never.
template <ResamplingData kData, class Layout, class Bucket>
void WalkEvenBuckets(const XAxis& x, const ResamplingArgs& args, const Layout& layout, double step, std::int32_t budget,
                     Bucket&& bucket) {
    std::int32_t slotStart = layout.Slot(args.StartIndex);
    auto walked = [&](std::int32_t, std::int32_t end) {
        const std::int32_t slotEnd = layout.Slot(end);
        bucket(slotStart, slotEnd);
        slotStart = slotEnd;
    };
    if constexpr (kData == Category) {
        const double first = FirstBoundaryAbove(static_cast<double>(args.StartIndex), step);
        WalkEvenGrid(args, first, step, budget, CategoryPrediction{}, walked);
    } else if (args.StartIndex < WrappingAdd(args.EndIndex, 1)) {
        const double base = x.At(layout.Slot(args.StartIndex));
        const double last = x.At(layout.Slot(args.EndIndex));
        const double spacing = MeanSpacing(base, last, args.StartIndex, args.EndIndex);
        WalkEvenGrid(args, FirstBoundaryAbove(base, step), step, budget,
                     LinearPrediction{args.StartIndex, base, spacing}, walked);
    }
}

}  // namespace qm
