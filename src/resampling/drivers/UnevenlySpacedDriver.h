#pragma once
// Unevenly spaced, ascending X in plain arrays: each grid boundary is found
// by binary search. Buckets may be empty where X has a gap; the last point
// before a gap and the first after it are kept as extra points so the gap
// is drawn where it is.

#include "model/ElementTypes.h"
#include "resampling/buckets/BucketPoints.h"
#include "resampling/buckets/Grid.h"
#include "resampling/buckets/UnevenlySpacedResamplingMethodBase.h"
#include "resampling/drivers/BoundarySearch.h"
#include "resampling/drivers/ReducingMethods.h"

namespace qm {

template <class TX, class TY>
class UnevenlySpacedResamplingMethod : public UnevenlySpacedResamplingMethodBase<TX, TY> {
public:
    using Points = PlainPoints<TX, TY, false>;
    using UnevenlySpacedResamplingMethodBase<TX, TY>::UnevenlySpacedResamplingMethodBase;

    // The budget ends walks that degenerate arguments keep from ending; its
    // last bucket takes all remaining points (see GridCapacity.h).
    void Execute(const TX* x, const TY* y, double* outX, double* outY, IntVector& indices,
                 const ResamplingArgs& args) const override {
        const double step = GridStep(args);
        double boundary = FirstBoundaryAbove(args.MinXInclusive, step);
        BucketOutput output(outX, outY, indices, args);
        const std::int32_t endExclusive = WrappingAdd(args.EndIndex, 1);
        const std::int32_t budget = WalkBudget(args, step, output, this->MaxPointsPerBucket());
        const Points points{x, y};
        bool previousEmpty = true;
        std::int32_t bucketStart = args.StartIndex;
        for (std::int32_t bucket = 1; bucket <= budget && bucketStart < endExclusive; ++bucket) {
            const std::int32_t bucketEnd =
                bucket == budget ? endExclusive : BucketEnd(x, bucketStart, endExclusive, boundary);
            if (bucketEnd != bucketStart) {
                if (previousEmpty) points.Emit(output, bucketStart, ToDouble(y[bucketStart]));
                ReduceBucket(x, y, output, bucketStart, bucketEnd);
            } else if (!previousEmpty) {
                const std::int32_t lastBeforeGap = bucketStart - 1;
                points.Emit(output, lastBeforeGap, ToDouble(y[lastBeforeGap]));
            }
            previousEmpty = bucketEnd == bucketStart;
            boundary = boundary + step;
            bucketStart = bucketEnd;
        }
    }

    virtual void ReduceBucket(const TX* x, const TY* y, BucketOutput& output, std::int32_t start,
                              std::int32_t end) const = 0;

private:
    static std::int32_t BucketEnd(const TX* x, std::int32_t bucketStart, std::int32_t endExclusive, double boundary) {
        std::int32_t end = SearchSortedRun(x, bucketStart, endExclusive - 1, boundary);
        if (end != endExclusive && ClosesBucket(x, end, boundary)) ++end;
        return end;
    }
};

template <class TX, class TY>
using UnevenlySpacedMinResamplingMethod = PlainReducingMethod<UnevenlySpacedResamplingMethod<TX, TY>, MinReduction>;
template <class TX, class TY>
using UnevenlySpacedMaxResamplingMethod = PlainReducingMethod<UnevenlySpacedResamplingMethod<TX, TY>, MaxReduction>;
template <class TX, class TY>
using UnevenlySpacedMidResamplingMethod = PlainReducingMethod<UnevenlySpacedResamplingMethod<TX, TY>, MidReduction>;
template <class TX, class TY>
using UnevenlySpacedMinMaxResamplingMethod =
    PlainReducingMethod<UnevenlySpacedResamplingMethod<TX, TY>, MinMaxReduction>;
template <class TX, class TY>
using UnevenlySpacedMinOrMaxResamplingMethod =
    PlainReducingMethod<UnevenlySpacedResamplingMethod<TX, TY>, MinOrMaxReduction>;

}  // namespace qm
