#pragma once
// The reference picture of the raw data: for every pixel column of the
// viewport, the lowest and highest Y of the source points in it, and whether
// a NaN gap touches it. Computed
// here by a plain loop, independently of the library, so that the drawing
// compares the resampled lines against the truth.

#include <cstdint>
#include <vector>

namespace demo {

struct ColumnEnvelope {
    double minX = 0.0, maxX = 1.0;  // X range mapped onto the columns
    std::int32_t width = 0;         // number of columns
    std::vector<double> low, high;  // per column, NaN left out; low > high: no number in the column
    std::vector<bool> gap;          // per column: a NaN of the source lies in it
    double yLow = 0.0, yHigh = 1.0; // over all columns
};

ColumnEnvelope BuildEnvelope(const std::vector<double>& x, const std::vector<double>& y, double minX, double maxX,
                             std::int32_t width);

}  // namespace demo
