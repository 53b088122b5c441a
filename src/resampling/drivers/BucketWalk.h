#pragma once
// The bucket walks without NaN handling, one per data kind and layout,
// compiled once per Y type (BucketWalk.cpp): X is read through an XAxis, so
// nothing here depends on the X type. UpdateIndices reserves the grid's
// room; Execute walks the grid and reduces each bucket in TY (Reductions.h),
// turning the picks into output points.
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

#include "arrayops/ArrayOperations.h"
#include "interop/IntVector.h"
#include "model/ResamplingArgs.h"
#include "model/XAxis.h"
#include "quillmap/QuillmapTypes.h"
#include "resampling/buckets/GridCapacity.h"
#include "resampling/buckets/Reductions.h"
#include "resampling/drivers/StorageLayouts.h"

namespace qm {

template <class TY, class Layout, ResamplingData kData>
struct BucketWalk {
    // A bucket's reduction, and on unevenly spaced X the edge of a gap.
    static constexpr std::int32_t MaxPointsPerBucket(Reduction reduction) {
        return PointsPerBucket(reduction) + (kData == UnevenlySpaced ? 1 : 0);
    }

    static std::int32_t UpdateIndices(Reduction reduction, IntVector& indices, const ResamplingArgs& args) {
        return ReserveGridRoom(indices, args, MaxPointsPerBucket(reduction));
    }

    static void Execute(const ArrayOperations<TY>& operations, Reduction reduction, const XAxis& x, const TY* y,
                        double* outX, double* outY, IntVector& indices, const ResamplingArgs& args);
};

#define QM_BUCKET_WALKS_(prefix, W, T, N) QM_WALK_INSTANCES(prefix, BucketWalk, T)
QM_Y_TYPES(QM_BUCKET_WALKS_, extern template)

}  // namespace qm
