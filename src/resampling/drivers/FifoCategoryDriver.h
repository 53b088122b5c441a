#pragma once
// Category axis in a ring buffer: the grid lies over logical indices, so a
// ring that has turned gives the same buckets as a straight array.

#include "resampling/buckets/BucketPoints.h"
#include "resampling/buckets/EvenlySpacedResamplingMethod.h"
#include "resampling/buckets/Grid.h"
#include "resampling/drivers/EvenGridWalk.h"
#include "resampling/drivers/ReducingMethods.h"

namespace qm {

template <class TX, class TY>
class FifoCategoryResamplingMethodBase : public EvenlySpacedResamplingMethod<TX, TY> {
public:
    using Points = RingPoints<TX, TY, true>;
    using EvenlySpacedResamplingMethod<TX, TY>::EvenlySpacedResamplingMethod;

    void Execute(const TX* x, const TY* y, double* outX, double* outY, IntVector& indices,
                 const ResamplingArgs& args) const override {
        const double step = GridStep(args);
        const double firstBoundary = FirstBoundaryAbove(static_cast<double>(args.StartIndex), step);
        const std::int32_t size = args.InputSize;
        const std::int32_t baseIndex = args.InputBaseIndex;
        const std::int32_t firstSlot = SlotOf(args.StartIndex, baseIndex, size);
        BucketOutput output(outX, outY, indices, args);
        const std::int32_t budget = WalkBudget(args, step, output, this->MaxPointsPerBucket());
        std::int32_t slotStart = firstSlot;
        WalkEvenGrid(args, firstBoundary, step, budget, CategoryPrediction{},
                     [&](std::int32_t, std::int32_t end) {
                         const std::int32_t slotEnd = SlotOf(end, baseIndex, size);
                         ReduceBucket(x, y, output, slotStart, slotEnd, size, baseIndex);
                         slotStart = slotEnd;
                     });
    }

    virtual void ReduceBucket(const TX* x, const TY* y, BucketOutput& output, std::int32_t start, std::int32_t end,
                              std::int32_t size, std::int32_t baseIndex) const = 0;
};

template <class TX, class TY>
using CategoryMinFifoResamplingMethod = RingReducingMethod<FifoCategoryResamplingMethodBase<TX, TY>, MinReduction>;
template <class TX, class TY>
using CategoryMaxFifoResamplingMethod = RingReducingMethod<FifoCategoryResamplingMethodBase<TX, TY>, MaxReduction>;
template <class TX, class TY>
using CategoryMidFifoResamplingMethod = RingReducingMethod<FifoCategoryResamplingMethodBase<TX, TY>, MidReduction>;
template <class TX, class TY>
using CategoryMinMaxFifoResamplingMethod =
    RingReducingMethod<FifoCategoryResamplingMethodBase<TX, TY>, MinMaxReduction>;
template <class TX, class TY>
using CategoryMinOrMaxFifoResamplingMethod =
    RingReducingMethod<FifoCategoryResamplingMethodBase<TX, TY>, MinOrMaxReduction>;

}  // namespace qm
