#pragma once
// Category axis in plain arrays: X is the point's index, so the grid lies
// over the indices and a boundary, rounded, is the index that closes its
// bucket. X is never read.

#include "resampling/buckets/BucketPoints.h"
#include "resampling/buckets/EvenlySpacedResamplingMethod.h"
#include "resampling/buckets/Grid.h"
#include "resampling/drivers/EvenGridWalk.h"
#include "resampling/drivers/ReducingMethods.h"

namespace qm {

template <class TX, class TY>
class CategoryResamplingMethodBase : public EvenlySpacedResamplingMethod<TX, TY> {
public:
    using Points = PlainPoints<TX, TY, true>;
    using EvenlySpacedResamplingMethod<TX, TY>::EvenlySpacedResamplingMethod;

    void Execute(const TX* x, const TY* y, double* outX, double* outY, IntVector& indices,
                 const ResamplingArgs& args) const override {
        const double step = GridStep(args);
        const double firstBoundary = FirstBoundaryAbove(static_cast<double>(args.StartIndex), step);
        BucketOutput output(outX, outY, indices, args);
        const std::int32_t budget = WalkBudget(args, step, output, this->MaxPointsPerBucket());
        WalkEvenGrid(args, firstBoundary, step, budget, CategoryPrediction{},
                     [&](std::int32_t start, std::int32_t end) { ReduceBucket(x, y, output, start, end); });
    }

    virtual void ReduceBucket(const TX* x, const TY* y, BucketOutput& output, std::int32_t start,
                              std::int32_t end) const = 0;
};

template <class TX, class TY>
using CategoryMinResamplingMethod = PlainReducingMethod<CategoryResamplingMethodBase<TX, TY>, MinReduction>;
template <class TX, class TY>
using CategoryMaxResamplingMethod = PlainReducingMethod<CategoryResamplingMethodBase<TX, TY>, MaxReduction>;
template <class TX, class TY>
using CategoryMidResamplingMethod = PlainReducingMethod<CategoryResamplingMethodBase<TX, TY>, MidReduction>;
template <class TX, class TY>
using CategoryMinMaxResamplingMethod = PlainReducingMethod<CategoryResamplingMethodBase<TX, TY>, MinMaxReduction>;
template <class TX, class TY>
using CategoryMinOrMaxResamplingMethod =
    PlainReducingMethod<CategoryResamplingMethodBase<TX, TY>, MinOrMaxReduction>;

}  // namespace qm
