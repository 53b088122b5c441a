#pragma once
// The five ways of reducing one bucket to real source points, written once
// for every layout. `Points` says how a position becomes an output point
// (plain or ring, X from data or index as X); `Range` says which pieces of
// storage the bucket covers. Scans go through ArrayOperations, seeded as in
// ScanSeeds; a position nobody beat stays -1 and is emitted all the same.

#include <cstdint>

#include "arrayops/ArrayOperations.h"
#include "model/ElementTypes.h"
#include "resampling/buckets/BucketOutput.h"
#include "resampling/buckets/BucketRange.h"
#include "resampling/buckets/Midpoint.h"
#include "resampling/buckets/ScanSeeds.h"

namespace qm {

template <class TY, class Range>
MinMaxPointSearchResult<TY> ScanBoth(const ArrayOperations<TY>& operations, const TY* y, const Range& range) {
    MinMaxPointSearchResult<TY> result = ScanSeeds<TY>::Record();
    range.ForEachPiece([&](std::int32_t a, std::int32_t b) { operations.MinMax(y, a, b, result); });
    return result;
}

// Both extremes in source order; one point when they coincide.
template <class TY, class Points>
void EmitBothInSourceOrder(const Points& points, BucketOutput& output, const MinMaxPointSearchResult<TY>& r) {
    const std::int32_t minOrder = points.Order(r.MinIndex);
    const std::int32_t maxOrder = points.Order(r.MaxIndex);
    if (minOrder < maxOrder) {
        points.Emit(output, r.MinIndex, ToDouble(r.Min));
        points.Emit(output, r.MaxIndex, ToDouble(r.Max));
    } else if (minOrder > maxOrder) {
        points.Emit(output, r.MaxIndex, ToDouble(r.Max));
        points.Emit(output, r.MinIndex, ToDouble(r.Min));
    } else {
        points.Emit(output, r.MinIndex, ToDouble(r.Min));
    }
}

struct MinReduction {
    static constexpr std::int32_t kPointsPerBucket = 1;

    template <class TY, class Points, class Range>
    static void Reduce(const ArrayOperations<TY>& operations, const Points& points, BucketOutput& output,
                       const Range& range) {
        TY value = ScanSeeds<TY>::kMin;
        std::int32_t position = -1;
        range.ForEachPiece([&](std::int32_t a, std::int32_t b) { operations.Min(points.y, a, b, value, position); });
        points.Emit(output, position, ToDouble(value));
    }
};

struct MaxReduction {
    static constexpr std::int32_t kPointsPerBucket = 1;

    template <class TY, class Points, class Range>
    static void Reduce(const ArrayOperations<TY>& operations, const Points& points, BucketOutput& output,
                       const Range& range) {
        TY value = ScanSeeds<TY>::kMax;
        std::int32_t position = -1;
        range.ForEachPiece([&](std::int32_t a, std::int32_t b) { operations.Max(points.y, a, b, value, position); });
        points.Emit(output, position, ToDouble(value));
    }
};

struct MinMaxReduction {
    static constexpr std::int32_t kPointsPerBucket = 2;

    template <class TY, class Points, class Range>
    static void Reduce(const ArrayOperations<TY>& operations, const Points& points, BucketOutput& output,
                       const Range& range) {
        EmitBothInSourceOrder(points, output, ScanBoth(operations, points.y, range));
    }
};

// Of a bucket wholly on one side of the zero line only the point farthest
// from it; of a bucket touching or crossing it both extremes.
struct MinOrMaxReduction {
    static constexpr std::int32_t kPointsPerBucket = 2;

    template <class TY, class Points, class Range>
    static void Reduce(const ArrayOperations<TY>& operations, const Points& points, BucketOutput& output,
                       const Range& range) {
        const MinMaxPointSearchResult<TY> r = ScanBoth(operations, points.y, range);
        const double z = output.RunArgs().ZeroLineY;
        const double min = ToDouble(r.Min);
        const double max = ToDouble(r.Max);
        if (z > min && z > max) {
            // Min against Max in TY, so 64-bit values that share a double differ.
            if (r.Max > r.Min)
                points.Emit(output, r.MinIndex, min);
            else
                points.Emit(output, r.MaxIndex, max);
        } else if (min > z && max > z) {
            if (r.Min > r.Max)
                points.Emit(output, r.MinIndex, min);
            else
                points.Emit(output, r.MaxIndex, max);
        } else {
            EmitBothInSourceOrder(points, output, r);
        }
    }
};

// The existing point nearest the middle of the bucket's value range.
struct MidReduction {
    static constexpr std::int32_t kPointsPerBucket = 1;

    template <class TY, class Points, class Range>
    static void Reduce(const ArrayOperations<TY>& operations, const Points& points, BucketOutput& output,
                       const Range& range) {
        const MinMaxPointSearchResult<TY> r = ScanBoth(operations, points.y, range);
        const double mid = Midpoint(r.Max, r.Min);
        const std::int32_t chosen = ChooseNearest(points.y, range, mid);
        points.Emit(output, chosen, ToDouble(points.y[chosen]));
    }

    template <class TY>
    static std::int32_t ChooseNearest(const TY* y, const PlainRange& range, double mid) {
        return NearestToMid(y, range.start, range.end, mid, range.start);
    }

    // A wrapped ring bucket searches its two pieces apart and then keeps the
    // nearer of the two winners; a tie (or NaN) stays with the older piece.
    template <class TY>
    static std::int32_t ChooseNearest(const TY* y, const RingRange& range, double mid) {
        if (!range.Wraps()) return NearestToMid(y, range.start, range.end, mid, range.start);
        if (range.size - range.start <= 0) return range.start;
        const std::int32_t first = NearestToMid(y, range.start, range.size, mid, range.start);
        if (range.end <= 0) return first;
        const std::int32_t second = NearestToMid(y, 0, range.end, mid, 0);
        return DistanceToMid(y[first], mid) > DistanceToMid(y[second], mid) ? second : first;
    }
};

}  // namespace qm
