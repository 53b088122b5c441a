#pragma once
// Unevenly spaced X in a ring buffer. The sorted visible stretch may be cut
// in two by the end of the storage, so a boundary is searched in each piece
// and the nearer answer wins; everything that leaves is a logical index.

#include <cmath>

#include "model/ElementTypes.h"
#include "resampling/buckets/BucketPoints.h"
#include "resampling/buckets/Grid.h"
#include "resampling/buckets/UnevenlySpacedResamplingMethodBase.h"
#include "resampling/drivers/BoundarySearch.h"
#include "resampling/drivers/ReducingMethods.h"

namespace qm {

template <class TX, class TY>
class UnevenlySpacedFifoResamplingMethod : public UnevenlySpacedResamplingMethodBase<TX, TY> {
public:
    using Points = RingPoints<TX, TY, false>;
    using UnevenlySpacedResamplingMethodBase<TX, TY>::UnevenlySpacedResamplingMethodBase;

    // Slots are compared to tell an empty bucket, so a bucket that fills the
    // whole ring reads as empty: a ring full of points that all fall into
    // the first bucket yields nothing. Callers know this.
    void Execute(const TX* x, const TY* y, double* outX, double* outY, IntVector& indices,
                 const ResamplingArgs& args) const override {
        const double step = GridStep(args);
        double boundary = FirstBoundaryAbove(args.MinXInclusive, step);
        BucketOutput output(outX, outY, indices, args);
        const std::int32_t size = args.InputSize;
        const std::int32_t baseIndex = args.InputBaseIndex;
        const std::int32_t endExclusive = WrappingAdd(args.EndIndex, 1);
        const std::int32_t ringEnd = SlotOf(endExclusive, baseIndex, size);
        std::int32_t slot = SlotOf(args.StartIndex, baseIndex, size);
        if (!(args.StartIndex < endExclusive)) return;
        const std::int32_t budget = WalkBudget(args, step, output, this->MaxPointsPerBucket());
        const Points points{x, y, size, baseIndex};
        bool previousEmpty = true;
        for (std::int32_t bucket = 1; bucket <= budget; ++bucket) {
            std::int32_t logicalEnd = endExclusive;
            if (bucket != budget) {
                const std::int32_t found = FindBoundary(x, slot, ringEnd, size, boundary);
                logicalEnd = LogicalOf(found, baseIndex, size);
                if (found != ringEnd && ClosesBucket(x, found, boundary)) logicalEnd = WrappingAdd(logicalEnd, 1);
            }
            const std::int32_t nextSlot = SlotOf(logicalEnd, baseIndex, size);
            if (nextSlot != slot) {
                if (previousEmpty) points.Emit(output, slot, ToDouble(y[slot]));
                ReduceBucket(x, y, output, slot, nextSlot, size, baseIndex);
            } else if (!previousEmpty) {
                const std::int32_t lastBeforeGap = LogicalOf(slot, baseIndex, size) - 1;
                const std::int32_t gapSlot = SlotOf(lastBeforeGap, baseIndex, size);
                points.Emit(output, gapSlot, ToDouble(y[gapSlot]));
            }
            previousEmpty = nextSlot == slot;
            boundary = boundary + step;
            slot = nextSlot;
            if (!(logicalEnd < endExclusive)) break;
        }
    }

    virtual void ReduceBucket(const TX* x, const TY* y, BucketOutput& output, std::int32_t start, std::int32_t end,
                              std::int32_t size, std::int32_t baseIndex) const = 0;

private:
    // The slot that ends the bucket, searched where the remaining points lie:
    // one sorted run, or two when they wrap. Of two answers the one whose X
    // is nearer the boundary wins; a tie stays in the older piece.
    static std::int32_t FindBoundary(const TX* x, std::int32_t slot, std::int32_t ringEnd, std::int32_t size,
                                     double boundary) {
        if (slot < ringEnd) return SearchSortedRun(x, slot, ringEnd - 1, boundary);
        if (size - slot <= 0) return slot;
        const std::int32_t first = SearchSortedRun(x, slot, size - 1, boundary);
        if (ringEnd <= 0) return first;
        const std::int32_t second = SearchSortedRun(x, 0, ringEnd - 1, boundary);
        const double firstDistance = std::fabs(ToDouble(x[first]) - boundary);
        const double secondDistance = std::fabs(ToDouble(x[second]) - boundary);
        return firstDistance > secondDistance ? second : first;
    }
};

template <class TX, class TY>
using UnevenlySpacedMinFifoResamplingMethod =
    RingReducingMethod<UnevenlySpacedFifoResamplingMethod<TX, TY>, MinReduction>;
template <class TX, class TY>
using UnevenlySpacedMaxFifoResamplingMethod =
    RingReducingMethod<UnevenlySpacedFifoResamplingMethod<TX, TY>, MaxReduction>;
template <class TX, class TY>
using UnevenlySpacedMidFifoResamplingMethod =
    RingReducingMethod<UnevenlySpacedFifoResamplingMethod<TX, TY>, MidReduction>;
template <class TX, class TY>
using UnevenlySpacedMinMaxFifoResamplingMethod =
    RingReducingMethod<UnevenlySpacedFifoResamplingMethod<TX, TY>, MinMaxReduction>;
template <class TX, class TY>
using UnevenlySpacedMinOrMaxFifoResamplingMethod =
    RingReducingMethod<UnevenlySpacedFifoResamplingMethod<TX, TY>, MinOrMaxReduction>;

}  // namespace qm
