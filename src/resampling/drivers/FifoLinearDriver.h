#pragma once
// Evenly spaced X in a ring buffer. The walk is the plain one, in logical
// indices; the ring comes in only where an index becomes a slot, to read X
// and to hand a bucket (possibly wrapping) to the reducer. No unrolling.

#include "model/ElementTypes.h"
#include "resampling/buckets/BucketPoints.h"
#include "resampling/buckets/EvenlySpacedResamplingMethod.h"
#include "resampling/buckets/Grid.h"
#include "resampling/drivers/EvenGridWalk.h"
#include "resampling/drivers/ReducingMethods.h"

namespace qm {

template <class TX, class TY>
class FifoLinearResamplingMethodBase : public EvenlySpacedResamplingMethod<TX, TY> {
public:
    using Points = RingPoints<TX, TY, false>;
    using EvenlySpacedResamplingMethod<TX, TY>::EvenlySpacedResamplingMethod;

    void Execute(const TX* x, const TY* y, double* outX, double* outY, IntVector& indices,
                 const ResamplingArgs& args) const override {
        const double step = GridStep(args);
        const std::int32_t size = args.InputSize;
        const std::int32_t baseIndex = args.InputBaseIndex;
        const std::int32_t firstSlot = SlotOf(args.StartIndex, baseIndex, size);
        BucketOutput output(outX, outY, indices, args);
        if (!(args.StartIndex < WrappingAdd(args.EndIndex, 1))) return;
        const double base = ToDouble(x[firstSlot]);
        const double last = ToDouble(x[SlotOf(args.EndIndex, baseIndex, size)]);
        const double spacing = MeanSpacing(base, last, args.StartIndex, args.EndIndex);
        const std::int32_t budget = WalkBudget(args, step, output, this->MaxPointsPerBucket());
        std::int32_t slotStart = firstSlot;
        WalkEvenGrid(args, FirstBoundaryAbove(base, step), step, budget,
                     LinearPrediction{args.StartIndex, base, spacing}, [&](std::int32_t, std::int32_t end) {
                         const std::int32_t slotEnd = SlotOf(end, baseIndex, size);
                         ReduceBucket(x, y, output, slotStart, slotEnd, size, baseIndex);
                         slotStart = slotEnd;
                     });
    }

    virtual void ReduceBucket(const TX* x, const TY* y, BucketOutput& output, std::int32_t start, std::int32_t end,
                              std::int32_t size, std::int32_t baseIndex) const = 0;
};

template <class TX, class TY>
using LinearMinFifoResamplingMethod = RingReducingMethod<FifoLinearResamplingMethodBase<TX, TY>, MinReduction>;
template <class TX, class TY>
using LinearMaxFifoResamplingMethod = RingReducingMethod<FifoLinearResamplingMethodBase<TX, TY>, MaxReduction>;
template <class TX, class TY>
using LinearMidFifoResamplingMethod = RingReducingMethod<FifoLinearResamplingMethodBase<TX, TY>, MidReduction>;
template <class TX, class TY>
using LinearMinMaxFifoResamplingMethod =
    RingReducingMethod<FifoLinearResamplingMethodBase<TX, TY>, MinMaxReduction>;
template <class TX, class TY>
using LinearMinOrMaxFifoResamplingMethod =
    RingReducingMethod<FifoLinearResamplingMethodBase<TX, TY>, MinOrMaxReduction>;

}  // namespace qm
