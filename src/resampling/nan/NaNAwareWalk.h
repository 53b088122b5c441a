#pragma once
// The NaN-aware walks for Y that holds NaN gaps, compiled once per
// floating Y type (NaNAwareWalk.cpp): the walks of the bucket strategies,
// but the walk runs in UpdateIndices, splits each bucket at every NaN
// boundary (NaNRuns.h), appends the indices it keeps to the caller's vector
// and returns its size; Execute only gathers X and Y by those indices.
//
// Guards: within the caller's contract an evenly spaced walk visits no more
// buckets than the grid has cells, and an unevenly spaced one ends as
// UnevenGridWalk.h says, so the bounds of those walks change nothing there;
// they only end walks that a degenerate grid or spacing (StartIndex equal to
// EndIndex, equal or falling X, MaxXInclusive not above MinXInclusive)
// would keep going for ever. A degenerate grid appends nothing; a walk that
// meets its bound takes all remaining points into its last bucket.

#include <cstdint>

#include "interop/IntVector.h"
#include "model/ResamplingArgs.h"
#include "model/XAxis.h"
#include "resampling/buckets/Reductions.h"
#include "resampling/drivers/StorageLayouts.h"

namespace qm {

template <class TY, class Layout, ResamplingData kData>
struct NaNAwareWalk {
    static std::int32_t UpdateIndices(Reduction reduction, IntVector& indices, const XAxis& x, const TY* y,
                                      const ResamplingArgs& args);

    // An index with no slot (a -1 left by a run of only infinities) has no
    // values to read: it gathers NaN, a gap, rather than a read outside the
    // arrays.
    static void Execute(const XAxis& x, const TY* y, double* outX, double* outY, const IntVector& indices,
                        const ResamplingArgs& args);
};

QM_WALK_INSTANCES(extern template, NaNAwareWalk, double)
QM_WALK_INSTANCES(extern template, NaNAwareWalk, float)

}  // namespace qm
