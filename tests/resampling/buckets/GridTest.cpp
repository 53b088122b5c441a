// The power-of-two grid on worked viewports. The random comparisons take the
// grid from the library, so this is where a wrong order of operations, a
// floor instead of a snap toward zero, a signed precision or an undefined
// truncation of a non-finite count shows.

#include <gtest/gtest.h>

#include <cmath>

#include "resampling/buckets/Grid.h"

namespace qm {
namespace {

TEST(Grid, StepAndCellsOfWorkedViewports) {
    const struct {
        double minX, maxX;
        std::int32_t width;
        std::uint32_t precision;
        double step;  // NaN: expect NaN
        std::int32_t cells;
    } cases[] = {
        {0, 1000, 100, 0, 8, 126},         {0, 1000, 100, 1, 4, 251},          {0, 1000, 100, 3, 1, 1001},
        {0, 1024, 128, 0, 8, 129},         // on the grid, 1024 still gets a whole cell
        {-1000, 1000, 100, 0, 16, 125},    // both ends snap toward zero: not 126
        {0, 1, 1000, 0, 0.0009765625, 1025}, {1000, 0, -100, 0, 8, -124},     // both signs flipped: an ordinary step
        {0, 1e6, 1, 40, 1.0 / 2097152, INT32_MIN},  // cells beyond int32
        {0, 1000, 100, 0xFFFFFFFFu, 0, INT32_MIN},  // the precision is unsigned: the step underflows
        {5, 5, 100, 0, 0, INT32_MIN},      {10, 0, 100, 0, NAN, INT32_MIN},    {0, 1000, 0, 0, INFINITY, INT32_MIN},
        {5, 5, 0, 0, NAN, INT32_MIN},      {0, 1000, -100, 0, NAN, INT32_MIN},
    };
    for (const auto& c : cases) {
        ResamplingArgs args{};
        args.MinXInclusive = c.minX, args.MaxXInclusive = c.maxX, args.ViewportWidth = c.width, args.ResamplingPrecision = c.precision;
        const double step = GridStep(args);
        EXPECT_TRUE(step == c.step || (std::isnan(step) && std::isnan(c.step))) << c.minX << ".." << c.maxX << ": " << step;
        EXPECT_EQ(GridBucketCount(args, step), c.cells) << c.minX << ".." << c.maxX << " width " << c.width;
    }
    EXPECT_EQ(SnapToGrid(-13, 8), -8);  // a floor would give -16
    EXPECT_EQ(FirstBoundaryAbove(16, 8), 24);
}

}  // namespace
}  // namespace qm
