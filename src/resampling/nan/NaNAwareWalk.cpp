#include "resampling/nan/NaNAwareWalk.h"

#include <limits>

#include "resampling/buckets/Grid.h"
#include "resampling/buckets/ReduceWith.h"
#include "resampling/drivers/EvenGridWalk.h"
#include "resampling/drivers/UnevenGridWalk.h"
#include "resampling/nan/NaNBucketOutput.h"
#include "resampling/nan/NaNRuns.h"

namespace qm {

template <class TY, class Layout, ResamplingData kData>
std::int32_t NaNAwareWalk<TY, Layout, kData>::UpdateIndices(Reduction reduction, IntVector& indices,
                                                            const XAxis& x, const TY* y,
                                                            const ResamplingArgs& args) {
    const NaNBucketOutput output{&indices, &args};
    const Layout layout = LayoutOf<Layout>(args);
    const double step = GridStep(args);
    const StoppingAtNaN<TY> scans;
    auto split = [&](std::int32_t start, std::int32_t end) {
        SplitAtNaN(y, layout, start, end, output, [&](const auto& range) {
            std::int32_t runEnd;
            const Picks picks = ReduceWith(reduction, scans, y, range, args.ZeroLineY, runEnd);
            for (std::int32_t k = 0; k < picks.count; ++k) output.Append(range.Order(picks.position[k]));
            return runEnd;
        });
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

template <class TY, class Layout, ResamplingData kData>
void NaNAwareWalk<TY, Layout, kData>::Execute(const XAxis& x, const TY* y, double* outX, double* outY,
                                              const IntVector& indices, const ResamplingArgs& args) {
    const Layout layout = LayoutOf<Layout>(args);
    constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
    for (std::int32_t i = 0; i < indices.size(); ++i) {
        const std::int32_t index = indices[i];
        const std::int32_t slot = layout.Slot(index);
        const bool readable = slot >= 0;
        if constexpr (kData == Category)
            outX[i] = static_cast<double>(index);
        else
            outX[i] = readable ? static_cast<double>(slot) : kNaN;
        outY[i] = readable ? ToDouble(y[slot]) : kNaN;
    }
    // X from the data in one call for all indices, not one per index.
    if constexpr (kData != Category) x.SlotsToX(outX, indices.size(), VisiblePoints(args));
}

QM_WALK_INSTANCES(template, NaNAwareWalk, double)
QM_WALK_INSTANCES(template, NaNAwareWalk, float)

}  // namespace qm
