#pragma once
// The power-of-two grid that every bucket strategy cuts the X axis by. The
// order of the floating-point operations is binding: it decides which point
// falls into which bucket, so nothing here may be rearranged.

#include <cstdint>

#include "model/ResamplingArgs.h"

namespace qm {

// The largest power of two at or below one pixel's width of X, halved
// ResamplingPrecision times.
double GridStep(const ResamplingArgs& args);

// Snaps toward zero (fmod keeps the sign of the value): a negative value
// moves up to the grid.
double SnapToGrid(double value, double step);

// The number of grid cells from the cell of MinXInclusive through one cell
// past the cell of MaxXInclusive; INT32_MIN when that is not a finite int32.
std::int32_t GridBucketCount(const ResamplingArgs& args, double step);

// The first grid line strictly above `value`: snap, then one step up.
inline double FirstBoundaryAbove(double value, double step) { return SnapToGrid(value, step) + step; }

}  // namespace qm
