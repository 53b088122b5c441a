// Every bucket walk, NaN-aware ones included, ends and stays inside the room
// its caller made, also for arguments outside the caller's contract: a
// prediction that goes backwards closes the walk with one bucket up to
// EndIndex, a walk past its bound takes everything left into one bucket, a
// grid without cells yields nothing, and Execute refuses a run whose grid
// needs more room than the vector has.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <random>
#include <stdexcept>
#include <vector>

#include "resampling/ResamplingTestSupport.h"

namespace qm {
namespace {

using namespace drivertest;

constexpr std::int32_t kRingSize = 1003;  // never quite full
constexpr std::int32_t kBases[] = {0, 7};  // plain arrays, then a ring

class WalkGuard : public ::testing::Test {
protected:
    ExtremeResampler<double, float> engine;
    std::vector<float> y = std::vector<float>(kRingSize);

    WalkGuard() {
        std::mt19937 rng(5);
        for (float& v : y) v = std::uniform_real_distribution<float>(-1.0f, 1.0f)(rng);
    }

    template <class Body>
    static void ForEachCell(Body&& body) {
        for (bool nan : {false, true})
            for (std::int32_t base : kBases)
                for (ResamplingData data : kBucketData)
                    for (ResamplingMode mode : kBucketModes) {
                        SCOPED_TRACE(testing::Message() << "base " << base << " data " << data << " mode " << mode
                                                        << " nan " << nan);
                        body(nan, base, data, mode);
                    }
    }

    // Runs the logical series x (Y from `y`) plain or in a ring turned by `base`.
    Output RunAs(bool nan, std::int32_t base, ResamplingMode mode, const std::vector<double>& x,
                 ResamplingArgs args) const {
        args.HasNaN = nan;
        if (base == 0) return Resample(engine, mode, x.data(), y.data(), args);
        std::vector<double> logicalX = x;
        logicalX.resize(kRingSize, x.back());
        return Resample(engine, mode, ToRing(logicalX, kRingSize, base).data(), ToRing(y, kRingSize, base).data(),
                        InRing(args, kRingSize, base));
    }

    // The reduction of [start, end] as a whole, in mode Min or MinMax.
    std::vector<std::int32_t> WholeRange(ResamplingMode mode, std::int32_t start, std::int32_t end) const {
        const auto first = y.begin() + start, last = y.begin() + end + 1;
        const auto lo = static_cast<std::int32_t>(std::min_element(first, last) - y.begin());
        const auto hi = static_cast<std::int32_t>(std::max_element(first, last) - y.begin());
        if (mode == Min) return {lo};
        return {std::min(lo, hi), std::max(lo, hi)};
    }
};

TEST_F(WalkGuard, OnePointRangeYieldsThatPoint) {
    const std::vector<double> x = Ramp(10, 0.0, 1.0);
    ForEachCell([&](bool nan, std::int32_t base, ResamplingData data, ResamplingMode mode) {
        // The unevenly spaced driver adds the first point after a gap.
        const std::vector<std::int32_t> expected(data == UnevenlySpaced ? 2 : 1, 4);
        EXPECT_EQ(RunAs(nan, base, mode, x, Args(data, 4, 4, 0.0, 9.0, 3)).indices, expected);
    });
}

// Spacing 0 (flat X), a spacing so fine that the position overflows int32,
// and falling X: the evenly spaced prediction makes no sense, and the whole
// range becomes one bucket.
TEST_F(WalkGuard, SenselessSpacingGivesOneBucket) {
    const struct {
        const char* name;
        std::vector<double> x;
        ResamplingArgs args;
    } cases[] = {
        {"flat", std::vector<double>(11, 5.0), Args(Linear, 0, 10, 0.0, 10.0, 5)},
        {"overflow", Ramp(11, 0.0, 1e-13), Args(Linear, 0, 10, 0.0, 10.0, 10)},
        {"falling", Ramp(11, 64.0, -2.0), Args(Linear, 0, 10, 0.0, 64.0, 8)},  // first position -4
    };
    for (const auto& c : cases)
        for (bool nan : {false, true})
        for (std::int32_t base : kBases)
            for (ResamplingMode mode : {Min, MinMax})
                EXPECT_EQ(RunAs(nan, base, mode, c.x, c.args).indices, WholeRange(mode, 0, 10))
                    << c.name << " base " << base << " mode " << mode;
}

// Width 0, an empty or reversed X range, and a precision that pushes the
// step below the double range all leave the grid without cells. Room in the
// index vector does not matter: no point is made, and every call returns.
TEST_F(WalkGuard, GridWithoutCellsYieldsNothing) {
    const std::vector<double> x = Ramp(kRingSize, 0.0, 1.0);
    const ResamplingArgs grids[] = {Args(Linear, 0, 99, 0.0, 100.0, 0), Args(Linear, 0, 99, 0.0, 0.0, 10),
                                    Args(Linear, 0, 99, 0.0, -5.0, 10), Args(Linear, 0, 99, 0.0, 100.0, 10, ~0u)};
    for (const ResamplingArgs& grid : grids)
        ForEachCell([&](bool nan, std::int32_t base, ResamplingData data, ResamplingMode mode) {
            ResamplingArgs args = base == 0 ? grid : InRing(grid, kRingSize, base);
            args.Data = data;
            args.HasNaN = nan;
            // The cell count is INT32_MIN: an even number of points per cell
            // wraps the room to 0, an odd number fails to reserve.
            const int perCell = (mode == MinMax || mode == MinOrMax ? 2 : 1) + (data == UnevenlySpaced ? 1 : 0);
            IntVector indices;
            indices.Reserve(64);
            if (nan || perCell % 2 == 0)
                EXPECT_EQ(engine.UpdateIndices(indices, x.data(), y.data(), mode, args), 0);
            else
                EXPECT_THROW(engine.UpdateIndices(indices, x.data(), y.data(), mode, args), std::length_error);
            std::vector<double> outX(64, kSentinel), outY(64, kSentinel);
            engine.Execute(x.data(), y.data(), outX.data(), outY.data(), indices, mode, args);
            EXPECT_EQ(indices.size(), 0);
            EXPECT_EQ(outX, std::vector<double>(64, kSentinel));
        });
}

// X at EndIndex lies ten times beyond MaxXInclusive: the grid has 101 cells
// of width 1 but the points go on to 999. An evenly spaced walk's last
// bucket (its 101st) takes all the rest; an unevenly spaced one goes on to
// the first boundary more than a step past MaxXInclusive, whose bucket takes
// all the rest. Resample checks the count and the sentinels.
TEST_F(WalkGuard, PointsBeyondTheViewportStayWithinTheRoom) {
    const std::vector<double> x = Ramp(1000, 0.0, 1.0);
    ForEachCell([&](bool nan, std::int32_t base, ResamplingData data, ResamplingMode mode) {
        const Output out = RunAs(nan, base, mode, x, Args(data, 0, 999, 0.0, 100.0, 100));
        if (mode != Min) return;
        // [0,2), [2,3), ..., [100,101), then [101,1000); the unevenly spaced
        // walk also emits the very first point and cuts [101,102) first.
        const bool uneven = data == UnevenlySpaced;
        EXPECT_EQ(out.indices.size(), uneven ? 103u : 101u);
        EXPECT_EQ(out.indices.back(), WholeRange(Min, uneven ? 102 : 101, 999).front());
    });
}

// A caller that skipped UpdateIndices (or ignored its failure) gets a report
// and nothing written; a NaN-aware Execute gathers what the vector holds.
TEST_F(WalkGuard, ExecuteWithoutRoomIsRefused) {
    const std::vector<double> x = Ramp(kRingSize, 0.0, 1.0);
    ForEachCell([&](bool nan, std::int32_t base, ResamplingData data, ResamplingMode mode) {
        ResamplingArgs args = InRing(Args(data, 0, 99, 0.0, 99.0, 10), kRingSize, base);
        args.HasNaN = nan;
        IntVector indices;
        double sink[1] = {kSentinel};
        if (nan)
            engine.Execute(x.data(), y.data(), sink, sink, indices, mode, args);
        else
            EXPECT_THROW(engine.Execute(x.data(), y.data(), sink, sink, indices, mode, args), std::length_error);
        EXPECT_EQ(indices.size(), 0);
        EXPECT_EQ(sink[0], kSentinel);
    });
}

}  // namespace
}  // namespace qm
