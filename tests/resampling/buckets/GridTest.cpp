// The power-of-two grid: its step, its cell count, snapping toward zero, and
// the room a run reserves, including what the arithmetic gives for ranges
// and widths outside the caller's contract.

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <stdexcept>
#include <string>

#include "interop/IntVector.h"
#include "resampling/buckets/Grid.h"
#include "resampling/buckets/GridCapacity.h"

namespace qm {
namespace {

ResamplingArgs Viewport(double minX, double maxX, std::int32_t width, std::uint32_t precision = 0) {
    ResamplingArgs args{};
    args.MinXInclusive = minX;
    args.MaxXInclusive = maxX;
    args.ViewportWidth = width;
    args.ResamplingPrecision = precision;
    return args;
}

TEST(Grid, StepAndCellCountOfWorkedViewports) {
    const double nan = std::nan(""), inf = INFINITY;
    struct {
        double minX, maxX;
        std::int32_t width;
        std::uint32_t precision;
        double step;  // NaN: expect NaN
        std::int32_t cells;
    } const cases[] = {
        {0, 1000, 100, 0, 8, 126},
        {0, 1000, 100, 1, 4, 251},
        {0, 1000, 100, 3, 1, 1001},
        {0, 1024, 128, 0, 8, 129},       // 1024 on the grid still gets a whole cell
        {-1000, 1000, 100, 0, 16, 125},  // snaps toward zero: not 126
        {0, 1, 1000, 0, 0.0009765625, 1025},
        {0, 1e6, 1, 40, 1.0 / 2097152, INT32_MIN},  // cells beyond int32
        {1000, 0, -100, 0, 8, -124},                // both signs flipped: an ordinary step
        // Degenerate rows: all end as INT32_MIN cells.
        {0, 1000, 100, 0xFFFFFFFFu, 0, INT32_MIN},  // precision is unsigned
        {5, 5, 100, 0, 0, INT32_MIN},
        {10, 0, 100, 0, nan, INT32_MIN},
        {0, 1000, 0, 0, inf, INT32_MIN},
        {5, 5, 0, 0, nan, INT32_MIN},
        {10, 0, 0, 0, nan, INT32_MIN},
        {0, 1000, -100, 0, nan, INT32_MIN},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(::testing::Message()
                     << c.minX << ".." << c.maxX << " width " << c.width << " precision " << c.precision);
        const ResamplingArgs args = Viewport(c.minX, c.maxX, c.width, c.precision);
        const double step = GridStep(args);
        if (std::isnan(c.step))
            EXPECT_TRUE(std::isnan(step)) << step;
        else
            EXPECT_EQ(step, c.step);
        EXPECT_EQ(GridBucketCount(args, step), c.cells);
    }
}

TEST(Grid, SnapsTowardZero) {
    EXPECT_EQ(SnapToGrid(13, 8), 8);
    EXPECT_EQ(SnapToGrid(-13, 8), -8);  // a floor would give -16
    EXPECT_EQ(SnapToGrid(-3, 8), 0);
    EXPECT_EQ(SnapToGrid(-1000, 16), -992);
    // The first boundary is strictly above, a whole step even on a grid line.
    EXPECT_EQ(FirstBoundaryAbove(16, 8), 24);
    EXPECT_EQ(FirstBoundaryAbove(-13, 8), 0);
    EXPECT_EQ(FirstBoundaryAbove(-16, 8), -8);
}

TEST(Grid, RoomIsCellsTimesFactorReservedExactly) {
    const ResamplingArgs args = Viewport(0, 1000, 100);
    for (const auto& [factor, expected] : {std::pair{1, 126}, std::pair{2, 252}, std::pair{3, 378}}) {
        IntVector indices;
        EXPECT_EQ(ReserveGridRoom(indices, args, factor), expected);
        EXPECT_EQ(ReserveGridRoom(indices, args, factor), expected);  // a second run reuses the room
        EXPECT_EQ(indices.capacity(), expected);
        EXPECT_EQ(indices.size(), 0);
    }
    const std::int32_t held[] = {4, 3, 2, 1, 0};
    IntVector indices(held, 5);
    EXPECT_EQ(ReserveGridRoom(indices, args, 1), 126);
    EXPECT_EQ(indices.capacity(), 131);
    ASSERT_EQ(indices.size(), 5);
    EXPECT_EQ(indices[0], 4);
    EXPECT_EQ(indices[4], 0);
}

TEST(Grid, DegenerateGridWrapsForEvenFactorsAndFailsForOdd) {
    const ResamplingArgs flat = Viewport(5, 5, 100);
    const ResamplingArgs noWidth = Viewport(0, 1000, 0);
    for (const ResamplingArgs& args : {flat, noWidth}) {
        IntVector indices;
        EXPECT_EQ(ReserveGridRoom(indices, args, 2), 0);
        EXPECT_EQ(indices.capacity(), 0);
        for (const std::int32_t odd : {1, 3}) {
            try {
                ReserveGridRoom(indices, args, odd);
                ADD_FAILURE() << "factor " << odd << " reserved on a degenerate grid";
            } catch (const std::length_error& e) {
                EXPECT_EQ(std::string(e.what()), "vector<T> too long");
            }
        }
        EXPECT_EQ(indices.capacity(), 0);
    }
}

}  // namespace
}  // namespace qm
