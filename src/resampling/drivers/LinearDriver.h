#pragma once
// Evenly spaced X in plain arrays: each bucket's end is predicted from the
// mean spacing, so X is read only at the two ends of the visible stretch.

#include "model/ElementTypes.h"
#include "resampling/buckets/BucketPoints.h"
#include "resampling/buckets/EvenlySpacedResamplingMethod.h"
#include "resampling/buckets/Grid.h"
#include "resampling/drivers/EvenGridWalk.h"
#include "resampling/drivers/ReducingMethods.h"

namespace qm {

template <class TX, class TY>
class LinearResamplingMethodBase : public EvenlySpacedResamplingMethod<TX, TY> {
public:
    using Points = PlainPoints<TX, TY, false>;
    using EvenlySpacedResamplingMethod<TX, TY>::EvenlySpacedResamplingMethod;

    void Execute(const TX* x, const TY* y, double* outX, double* outY, IntVector& indices,
                 const ResamplingArgs& args) const override {
        const double step = GridStep(args);
        BucketOutput output(outX, outY, indices, args);
        if (!(args.StartIndex < WrappingAdd(args.EndIndex, 1))) return;
        const double base = ToDouble(x[args.StartIndex]);
        const double spacing = MeanSpacing(base, ToDouble(x[args.EndIndex]), args.StartIndex, args.EndIndex);
        const std::int32_t budget = WalkBudget(args, step, output, this->MaxPointsPerBucket());
        WalkEvenGrid(args, FirstBoundaryAbove(base, step), step, budget,
                     LinearPrediction{args.StartIndex, base, spacing},
                     [&](std::int32_t start, std::int32_t end) { ReduceBucket(x, y, output, start, end); });
    }

    virtual void ReduceBucket(const TX* x, const TY* y, BucketOutput& output, std::int32_t start,
                              std::int32_t end) const = 0;
};

template <class TX, class TY>
using LinearMinResamplingMethod = PlainReducingMethod<LinearResamplingMethodBase<TX, TY>, MinReduction>;
template <class TX, class TY>
using LinearMaxResamplingMethod = PlainReducingMethod<LinearResamplingMethodBase<TX, TY>, MaxReduction>;
template <class TX, class TY>
using LinearMidResamplingMethod = PlainReducingMethod<LinearResamplingMethodBase<TX, TY>, MidReduction>;
template <class TX, class TY>
using LinearMinMaxResamplingMethod = PlainReducingMethod<LinearResamplingMethodBase<TX, TY>, MinMaxReduction>;
template <class TX, class TY>
using LinearMinOrMaxResamplingMethod = PlainReducingMethod<LinearResamplingMethodBase<TX, TY>, MinOrMaxReduction>;

}  // namespace qm
