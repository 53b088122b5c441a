#pragma once
// The bucket strategies without NaN handling: one class per data kind and
// layout, generic over both. UpdateIndices reserves the grid's room;
// Execute walks the grid and hands each bucket to ReduceBucket, which
// reduces it in TY (Reductions.h) and turns the picks into output points.
// The mode is a member, so all five modes of a row share one walk.
//
//  - Linear: evenly spaced X; each bucket's end is predicted from the mean
//    spacing, so X is read only at the two ends of the visible stretch.
//  - Category: X is the point's index; the grid lies over the indices, and a
//    ring that has turned gives the same buckets as a straight array.
//  - UnevenlySpaced: ascending X searched per boundary; a bucket may yield
//    one point more than its reduction, the edge of a gap in X, so that the
//    gap is drawn where it is. In a ring a bucket that fills the whole ring
//    reads as empty: a ring full of points that all fall into the first
//    bucket yields nothing. Callers know this.

#include <cstdint>

#include "model/ElementTypes.h"
#include "resampling/ResamplingMethod.h"
#include "resampling/buckets/BucketOutput.h"
#include "resampling/buckets/BucketPoints.h"
#include "resampling/buckets/GridCapacity.h"
#include "resampling/buckets/Reductions.h"
#include "resampling/drivers/EvenGridWalk.h"
#include "resampling/drivers/StorageLayouts.h"
#include "resampling/drivers/UnevenGridWalk.h"

namespace qm {

template <class TX, class TY, class Layout, ResamplingData kData>
class BucketMethod : public ResamplingMethod<TX, TY> {
public:
    using Range = decltype(Layout{}.Range(0, 0));

    BucketMethod(const ArrayOperations<TY>* operations, Reduction reduction)
        : ResamplingMethod<TX, TY>(operations), _reduction(reduction) {}

    std::int32_t UpdateIndices(IntVector& indices, const TX*, const TY*, const ResamplingArgs& args) const override {
        return ReserveGridRoom(indices, args, MaxPointsPerBucket());
    }

    void Execute(const TX* x, const TY* y, double* outX, double* outY, IntVector& indices,
                 const ResamplingArgs& args) const override {
        const double step = GridStep(args);
        RequireGridRoom(indices, args, step, MaxPointsPerBucket());
        const Layout layout = LayoutOf<Layout>(args);
        BucketOutput output(outX, outY, indices, args);
        if constexpr (kData == UnevenlySpaced) {
            const Emitter emitter{x};
            WalkUnevenGrid(
                x, args, layout, step,
                [&](std::int32_t start, std::int32_t end, bool afterEmpty) {
                    if (afterEmpty) emitter.Emit(output, layout.Range(start, end), start, ToDouble(y[start]));
                    ReduceBucket(x, y, output, layout.Range(start, end));
                },
                [&](std::int32_t lastBeforeGap) {
                    const std::int32_t slot = layout.Slot(lastBeforeGap);
                    emitter.Emit(output, layout.Range(slot, slot), slot, ToDouble(y[slot]));
                },
                [&] { return output.Full(); });
        } else {
            const std::int32_t budget = WalkBudget(args, step, output, MaxPointsPerBucket());
            WalkEvenBuckets<kData>(x, args, layout, step, budget, [&](std::int32_t start, std::int32_t end) {
                ReduceBucket(x, y, output, layout.Range(start, end));
            });
        }
    }

    virtual void ReduceBucket(const TX* x, const TY* y, BucketOutput& output, const Range& range) const {
        const Picks picks = Reduce(_reduction, this->Operations(), y, range, output.RunArgs().ZeroLineY);
        Emitter{x}.Emit(output, range, picks);
    }

protected:
    std::int32_t MaxPointsPerBucket() const {
        return PointsPerBucket(_reduction) + (kData == UnevenlySpaced ? 1 : 0);
    }

private:
    using Emitter = PointEmitter<TX, kData == Category>;

    const Reduction _reduction;
};

template <class TX, class TY>
using LinearResamplingMethodBase = BucketMethod<TX, TY, PlainLayout, Linear>;
template <class TX, class TY>
using CategoryResamplingMethodBase = BucketMethod<TX, TY, PlainLayout, Category>;
template <class TX, class TY>
using UnevenlySpacedResamplingMethod = BucketMethod<TX, TY, PlainLayout, UnevenlySpaced>;
template <class TX, class TY>
using FifoLinearResamplingMethodBase = BucketMethod<TX, TY, RingLayout, Linear>;
template <class TX, class TY>
using FifoCategoryResamplingMethodBase = BucketMethod<TX, TY, RingLayout, Category>;
template <class TX, class TY>
using UnevenlySpacedFifoResamplingMethod = BucketMethod<TX, TY, RingLayout, UnevenlySpaced>;

}  // namespace qm
