#pragma once
// What a bucket run makes room for before it starts, and the promise that
// Execute keeps to it: UpdateIndices reserves cells * factor points, Execute
// refuses a run whose count exceeds the room the vector has (a caller that
// skipped UpdateIndices, or changed the args in between), and no walk
// writes past that room whatever the arguments.

#include <algorithm>
#include <cstdint>
#include <stdexcept>
#include <string>

#include "interop/IntVector.h"
#include "model/Int32Arithmetic.h"
#include "model/ResamplingArgs.h"
#include "resampling/buckets/BucketOutput.h"
#include "resampling/buckets/Grid.h"

namespace qm {

// cells * pointsPerCell with a wrapping product: a degenerate grid
// (INT32_MIN cells) gives 0 for an even factor and fails the reservation for
// an odd one, as callers of each mode expect.
inline std::int32_t GridRoom(const ResamplingArgs& args, double step, std::int32_t pointsPerCell) {
    return WrappingMul(GridBucketCount(args, step), pointsPerCell);
}

inline std::int32_t ReserveGridRoom(IntVector& indices, const ResamplingArgs& args, std::int32_t pointsPerCell) {
    const std::int32_t count = GridRoom(args, GridStep(args), pointsPerCell);
    indices.ReserveForAppend(count);
    return count;
}

// Answers that count: the room of the run.
inline std::int32_t RequireGridRoom(const IntVector& indices, const ResamplingArgs& args, double step,
                                    std::int32_t pointsPerCell) {
    const std::int32_t count = GridRoom(args, step, pointsPerCell);
    const std::int32_t room = indices.capacity() - indices.size();
    if (count > room)
        throw std::length_error("Execute needs room for " + std::to_string(count) +
                                " output points but the index vector has room for " + std::to_string(room) +
                                ": call UpdateIndices with the same mode and arguments first");
    return count;
}

// The most buckets an evenly spaced walk may visit. Within the caller's
// contract (X at StartIndex and EndIndex inside the viewport's X range) a
// walk never visits more than the grid's cells, so this bound changes
// nothing there; it only ends walks that degenerate arguments would keep
// going for ever.
inline std::int32_t WalkBudget(const ResamplingArgs& args, double step, const BucketOutput& output,
                               std::int32_t maxPointsPerBucket) {
    const std::int32_t cells = GridBucketCount(args, step);
    if (cells <= 0 || maxPointsPerBucket <= 0) return 0;
    return std::min(cells, output.Room() / maxPointsPerBucket);
}

}  // namespace qm
