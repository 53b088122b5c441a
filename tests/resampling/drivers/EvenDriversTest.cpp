// Where the Linear and Category drivers cut a plain series: the buckets
// they hand their reducer, checked by hand on small grids.

#include <gtest/gtest.h>

#include <cfloat>
#include <cstdint>
#include <vector>

#include "resampling/drivers/CategoryDriver.h"
#include "resampling/drivers/DriverTestSupport.h"
#include "resampling/drivers/LinearDriver.h"

namespace qm {
namespace {

using namespace drivertest;

using LinearRecorder = Recorder<LinearResamplingMethodBase<double, double>>;
using CategoryRecorder = Recorder<CategoryResamplingMethodBase<double, double>>;

// [first, firstEnd), then buckets of `width` up to `lastEnd`, then the rest
// up to `limit`.
std::vector<Bucket> Cuts(std::int32_t first, std::int32_t firstEnd, std::int32_t width, std::int32_t lastEnd,
                         std::int32_t limit) {
    std::vector<Bucket> cuts{{first, firstEnd}};
    for (std::int32_t end = firstEnd + width; end <= lastEnd; end += width) cuts.push_back({end - width, end});
    if (cuts.back().end != limit) cuts.push_back({cuts.back().end, limit});
    return cuts;
}

// Boundaries every half index from 0: they round to 1, 1, 2, 2, 3, 3, ...
// (halves away from zero), so every other bucket is empty.
std::vector<Bucket> HalfStepCuts(std::int32_t endIndex) {
    std::vector<Bucket> cuts{{0, 2}};
    for (std::int32_t m = 2; m <= endIndex; ++m) {
        cuts.push_back({m, m});
        cuts.push_back({m, m + 1});
    }
    return cuts;
}

TEST(LinearDriver, UnitSpacingFirstBucketHoldsNinePointsTheOthersEight) {
    const std::vector<double> x = Ramp(1001, 0.0, 1.0);
    const ResamplingArgs args = Args(Linear, 0, 1000, 0.0, 1000.0, 100);
    LinearRecorder recorder(1);
    IntVector room;
    EXPECT_EQ(recorder.UpdateIndices(room, x.data(), x.data(), args), 126);
    const std::vector<Bucket> cuts = Record(recorder, x.data(), x.data(), args);
    EXPECT_EQ(cuts.size(), 125u);
    EXPECT_EQ(cuts, Cuts(0, 9, 8, 1001, 1001));
}

TEST(LinearDriver, HalfUnitSpacingFromAnOffGridStart) {
    const std::vector<double> x = Ramp(2001, 3.0, 0.5);
    const ResamplingArgs args = Args(Linear, 0, 2000, 3.0, 1003.0, 100);
    LinearRecorder recorder(2);
    const std::vector<Bucket> cuts = Record(recorder, x.data(), x.data(), args);
    EXPECT_EQ(cuts.size(), 126u);
    EXPECT_EQ(cuts, Cuts(0, 11, 16, 1995, 2001));
}

// Spacing 2 with step 1: positions 0.5, 1, 1.5, ... A rounding to even would
// give the bucket ends 1, 2, 3, 3, ... and no empty bucket at the front.
TEST(LinearDriver, HalfPositionsRoundUpAndEmptyBucketsReachTheReducer) {
    const std::vector<double> x = Ramp(11, 0.0, 2.0);
    LinearRecorder recorder(1);
    EXPECT_EQ(Record(recorder, x.data(), x.data(), Args(Linear, 0, 10, 0.0, 20.0, 20)), HalfStepCuts(10));
}

// Y falls, so each bucket's minimum is its last point: the run's output is
// the list of bucket ends minus one, behind what the vector held before.
TEST(LinearDriver, MinStrategyAppendsEachBucketsLastPoint) {
    const std::vector<double> x = Ramp(1001, 0.0, 1.0);
    const std::vector<double> y = Ramp(1001, 0.0, -1.0);
    const ResamplingArgs args = Args(Linear, 0, 1000, 0.0, 1000.0, 100);
    ExtremeResampler<double, double> engine;
    IntVector indices;
    for (std::int32_t v = 0; v < 7; ++v) indices.PushBack(-100 - v);
    const std::int32_t count = engine.UpdateIndices(indices, x.data(), y.data(), Min, args);
    std::vector<double> outX(static_cast<std::size_t>(count)), outY(static_cast<std::size_t>(count));
    engine.Execute(x.data(), y.data(), outX.data(), outY.data(), indices, Min, args);
    ASSERT_EQ(indices.size(), 7 + 125);
    for (std::int32_t v = 0; v < 7; ++v) EXPECT_EQ(indices[v], -100 - v);
    std::int32_t k = 0;
    for (const Bucket& b : Cuts(0, 9, 8, 1001, 1001)) {
        EXPECT_EQ(indices[7 + k], b.end - 1);
        EXPECT_EQ(outX[static_cast<std::size_t>(k)], b.end - 1);  // outputs start at 0
        EXPECT_EQ(outY[static_cast<std::size_t>(k++)], 1 - b.end);
    }
}

TEST(CategoryDriver, BoundariesAreIndicesOnTheSameGrid) {
    CategoryRecorder recorder(2);
    const double* none = nullptr;  // X is never read
    const auto cut = [&](std::int32_t start, std::int32_t end) {
        recorder.buckets.clear();
        return Record(recorder, none, none, Args(Category, start, end, 0.0, 1000.0, 100));
    };
    EXPECT_EQ(cut(0, 1000), Cuts(0, 9, 8, 1001, 1001));
    EXPECT_EQ(cut(5, 1000), Cuts(5, 9, 8, 1001, 1001));
    EXPECT_EQ(cut(8, 1000), Cuts(8, 17, 8, 1001, 1001));
    EXPECT_EQ(cut(8, 8), (std::vector<Bucket>{{8, 9}}));
    EXPECT_TRUE(cut(9, 8).empty());
}

// -20 snaps toward zero, to -16, so the first bucket runs up to the grid line
// -8 and is wider than a step; flooring would have ended it at -16.
TEST(CategoryDriver, NegativeStartSnapsTowardZero) {
    CategoryRecorder recorder(1);
    const double* none = nullptr;
    EXPECT_EQ(Record(recorder, none, none, Args(Category, -20, 10, -20.0, 1000.0, 100)),
              (std::vector<Bucket>{{-20, -7}, {-7, 1}, {1, 9}, {9, 11}}));
}

TEST(CategoryDriver, HalfStepGivesEmptyBucketsThatTheReducerStillSees) {
    CategoryRecorder recorder(1);
    const double* none = nullptr;
    const ResamplingArgs args = Args(Category, 0, 10, 0.0, 10.0, 20);
    EXPECT_EQ(Record(recorder, none, none, args), HalfStepCuts(10));

    // An empty range leaves the scan at its seed: index -1, X -1, the seed as Y.
    const std::vector<double> y = Ramp(11, 0.0, 1.0);
    ExtremeResampler<double, double> engine;
    const Output out = Resample(engine, Min, none, y.data(), args);
    ASSERT_EQ(out.indices.size(), 19u);
    EXPECT_EQ(out.indices[0], 0);
    EXPECT_EQ(out.indices[1], -1);
    EXPECT_EQ(out.x[1], -1.0);
    EXPECT_EQ(out.y[1], DBL_MAX);
    EXPECT_EQ(out.indices[2], 2);
    EXPECT_EQ(out.indices[18], 10);
}

}  // namespace
}  // namespace qm
