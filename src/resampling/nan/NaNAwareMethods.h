#pragma once
// The NaN-aware strategies for Y that holds NaN gaps: the walks of the
// bucket strategies, but the walk runs in UpdateIndices, splits each bucket
// at every NaN boundary (NaNRuns.h), appends the indices it keeps to the
// caller's vector and returns its size; Execute only gathers X and Y by
// those indices.
//
// Guards: within the caller's contract an evenly spaced walk visits no more
// buckets than the grid has cells, and an unevenly spaced one ends as
// UnevenGridWalk.h says, so the bounds of those walks change nothing there;
// they only end walks that a degenerate grid or spacing (StartIndex equal to
// EndIndex, equal or falling X, MaxXInclusive not above MinXInclusive)
// would keep going for ever. A degenerate grid appends nothing; a walk that
// meets its bound takes all remaining points into its last bucket.

#include <cstdint>
#include <limits>

#include "model/ElementTypes.h"
#include "resampling/ResamplingMethod.h"
#include "resampling/buckets/Grid.h"
#include "resampling/buckets/Reductions.h"
#include "resampling/drivers/EvenGridWalk.h"
#include "resampling/drivers/StorageLayouts.h"
#include "resampling/drivers/UnevenGridWalk.h"
#include "resampling/nan/NaNBucketOutput.h"
#include "resampling/nan/NaNRuns.h"

namespace qm {

template <class TX, class TY, class Layout, ResamplingData kData>
class NaNAwareMethod : public ResamplingMethod<TX, TY> {
public:
    using Range = decltype(Layout{}.Range(0, 0));

    // On plain arrays a one-sided MinOrMax run keeps the point nearest the
    // zero line, in a ring the farthest, as the bucket strategies do.
    NaNAwareMethod(const ArrayOperations<TY>* operations, Reduction reduction)
        : ResamplingMethod<TX, TY>(operations),
          _reduction(!Layout::kRing && reduction == Reduction::MinOrMax ? Reduction::MinOrMaxNearest : reduction) {}

    std::int32_t UpdateIndices(IntVector& indices, const TX* x, const TY* y,
                               const ResamplingArgs& args) const override {
        const NaNBucketOutput output{&indices, &args};
        const Layout layout = LayoutOf<Layout>(args);
        const double step = GridStep(args);
        auto split = [&](std::int32_t start, std::int32_t end) {
            SplitAtNaN(y, layout, start, end, output, [&](const Range& run) { ReduceBucket(x, y, output, run); });
        };
        if constexpr (kData == UnevenlySpaced) {
            WalkUnevenGrid(
                x, args, layout, step,
                [&](std::int32_t start, std::int32_t end, bool afterEmpty) {
                    if (afterEmpty) output.Append(layout.Logical(start));
                    split(start, end);
                },
                [&](std::int32_t lastBeforeGap) { output.Append(lastBeforeGap); }, [] { return false; });
        } else {
            const std::int32_t cells = GridBucketCount(args, step);
            WalkEvenBuckets<kData>(x, args, layout, step, cells > 0 ? cells : 0, split);
        }
        return indices.size();
    }

    // An index with no slot (a -1 left by a run of only infinities) has no
    // values to read: it gathers NaN, a gap, rather than a read outside the
    // arrays.
    void Execute(const TX* x, const TY* y, double* outX, double* outY, IntVector& indices,
                 const ResamplingArgs& args) const override {
        const Layout layout = LayoutOf<Layout>(args);
        constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
        for (std::int32_t i = 0; i < indices.size(); ++i) {
            const std::int32_t index = indices[i];
            const std::int32_t slot = layout.Slot(index);
            const bool readable = slot >= 0;
            if constexpr (kData == Category)
                outX[i] = static_cast<double>(index);
            else
                outX[i] = readable ? ToDouble(x[slot]) : kNaN;
            outY[i] = readable ? ToDouble(y[slot]) : kNaN;
        }
    }

    virtual void ReduceBucket(const TX*, const TY* y, const NaNBucketOutput& output, const Range& run) const {
        const Picks picks = Reduce(_reduction, this->Operations(), y, run, output.args->ZeroLineY);
        for (std::int32_t k = 0; k < picks.count; ++k) output.Append(run.Order(picks.position[k]));
    }

private:
    const Reduction _reduction;
};

template <class TX, class TY>
using ResamplingMethodBaseWithNaN = NaNAwareMethod<TX, TY, PlainLayout, Linear>;
template <class TX, class TY>
using CategoryResamplingMethodBaseWithNaN = NaNAwareMethod<TX, TY, PlainLayout, Category>;
template <class TX, class TY>
using UnevenlySpacedResamplingMethodWithNaN = NaNAwareMethod<TX, TY, PlainLayout, UnevenlySpaced>;
template <class TX, class TY>
using FifoResamplingMethodBaseWithNaN = NaNAwareMethod<TX, TY, RingLayout, Linear>;
template <class TX, class TY>
using FifoCategoryResamplingMethodBaseWithNaN = NaNAwareMethod<TX, TY, RingLayout, Category>;
template <class TX, class TY>
using UnevenlySpacedFifoResamplingMethodWithNaN = NaNAwareMethod<TX, TY, RingLayout, UnevenlySpaced>;

}  // namespace qm
