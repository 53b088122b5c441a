#include "resampling/buckets/Grid.h"

#include <cmath>

#include "model/Int32Arithmetic.h"

namespace qm {

double GridStep(const ResamplingArgs& args) {
    const double range = args.MaxXInclusive - args.MinXInclusive;
    const double perPixel = range / static_cast<double>(args.ViewportWidth);
    const double level = std::floor(std::log2(perPixel));
    const double exponent = level - static_cast<double>(args.ResamplingPrecision);
    return std::pow(2.0, exponent);
}

double SnapToGrid(double value, double step) { return value - std::fmod(value, step); }

std::int32_t GridBucketCount(const ResamplingArgs& args, double step) {
    const double upper = (args.MaxXInclusive - std::fmod(args.MaxXInclusive, step)) + step;
    const double lower = args.MinXInclusive - std::fmod(args.MinXInclusive, step);
    const double cells = (upper - lower) / step;
    return TruncateToInt32(cells);
}

}  // namespace qm
