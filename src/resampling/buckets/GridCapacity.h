#pragma once
// What a bucket run makes room for before it starts, and how far its walk
// may go. The two are one promise: UpdateIndices reserves cells * factor
// points, and Execute visits no more buckets than that room can take, so a
// run never writes past what the caller was told to provide, whatever the
// arguments.

#include <algorithm>
#include <cstdint>

#include "interop/IntVector.h"
#include "model/Int32Arithmetic.h"
#include "model/ResamplingArgs.h"
#include "resampling/buckets/BucketOutput.h"
#include "resampling/buckets/Grid.h"

namespace qm {

// cells * pointsPerCell with a wrapping product: a degenerate grid
// (INT32_MIN cells) gives 0 for an even factor and fails the reservation for
// an odd one, as callers of each mode expect.
inline std::int32_t ReserveGridRoom(IntVector& indices, const ResamplingArgs& args, std::int32_t pointsPerCell) {
    const std::int32_t count = WrappingMul(GridBucketCount(args, GridStep(args)), pointsPerCell);
    indices.ReserveForAppend(count);
    return count;
}

// The most buckets a walk may visit. Within the caller's contract (X at
// StartIndex and EndIndex inside the viewport's X range) a walk never
// visits more than the grid's cells, so this bound changes nothing there; it
// only ends walks that degenerate arguments would keep going for ever.
inline std::int32_t WalkBudget(const ResamplingArgs& args, double step, const BucketOutput& output,
                               std::int32_t maxPointsPerBucket) {
    const std::int32_t cells = GridBucketCount(args, step);
    if (cells <= 0 || maxPointsPerBucket <= 0) return 0;
    return std::min(cells, output.Room() / maxPointsPerBucket);
}

}  // namespace qm
