// The NaN-aware strategies: each walk against a plain walk written from its
// rules on random runs with NaN runs of every length, +-inf, ties and +-0,
// plain and in a turned ring; hand-checked runs for the rules a random run
// rarely meets; the table quirk of Double; and the guards that end runs
// outside the caller's contract.

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <memory>
#include <random>
#include <vector>

#include "resampling/ResamplingTestSupport.h"
#include "resampling/ReferenceWalk.h"
#include "arrayops/GenericArrayOperations.h"
#include "resampling/nan/NaNAwareMethods.h"

namespace qm {
namespace {

using namespace drivertest;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

Reduction ReductionOf(ResamplingMode mode) {
    switch (mode) {
        case Min: return Reduction::Min;
        case Max: return Reduction::Max;
        case MinMax: return Reduction::MinMax;
        case MinOrMax: return Reduction::MinOrMax;
        default: return Reduction::Mid;
    }
}

template <class TX, class TY>
std::unique_ptr<ResamplingMethod<TX, TY>> NaNAware(ResamplingData data, bool ring, ResamplingMode mode,
                                                   const ArrayOperations<TY>& ops) {
    const Reduction r = ReductionOf(mode);
    using P = PlainLayout;
    using R = RingLayout;
    if (data == Linear && !ring) return std::make_unique<NaNAwareMethod<TX, TY, P, Linear>>(&ops, r);
    if (data == Linear) return std::make_unique<NaNAwareMethod<TX, TY, R, Linear>>(&ops, r);
    if (data == Category && !ring) return std::make_unique<NaNAwareMethod<TX, TY, P, Category>>(&ops, r);
    if (data == Category) return std::make_unique<NaNAwareMethod<TX, TY, R, Category>>(&ops, r);
    if (!ring) return std::make_unique<NaNAwareMethod<TX, TY, P, UnevenlySpaced>>(&ops, r);
    return std::make_unique<NaNAwareMethod<TX, TY, R, UnevenlySpaced>>(&ops, r);
}

// One index per NaN run of a bucket, its first; each non-NaN run reduced on
// its own, with the point nearest the zero line kept by a one-sided
// MinOrMax run on plain arrays and the farthest in a ring.
//
// In a ring an empty bucket that starts at slot 0 stops at the end of the
// storage, so it runs over the whole ring; `seamEmpty` tells of one.
template <class TY>
std::vector<std::int32_t> Expected(const RandomRun<TY>& run, ResamplingMode mode, std::int32_t size,
                                   std::int32_t base, bool* seamEmpty) {
    const ResamplingArgs& a = run.args;
    const bool ring = base != 0;
    const std::vector<reference::Step> steps =
        a.Data == UnevenlySpaced ? reference::UnevenWalk(run.x, a, ring ? size - base : INT32_MAX)
                                 : reference::EvenWalk(a.Data == Category, run.x, a);
    std::vector<std::int32_t> out;
    for (const reference::Step& step : steps) {
        if (step.end < 0) {
            out.push_back(step.start);
            continue;
        }
        if (ring && step.start == step.end && step.start == size - base) *seamEmpty = true;
        for (std::int32_t i = step.start; i < step.end;) {
            std::int32_t j = i;
            const bool nan = std::isnan(run.y[i]);
            while (j < step.end && std::isnan(run.y[j]) == nan) ++j;
            if (nan) {
                out.push_back(i);
            } else {
                const auto sense = ring ? reference::Sense::Farthest : reference::Sense::Nearest;
                for (const reference::Pick& p :
                     reference::Reduce(mode, sense, run.y, i, j, a.ZeroLineY, ring ? size - 1 - base : -1))
                    out.push_back(p.index);
            }
            i = j;
        }
    }
    return out;
}

template <class TY>
class NaNAwareWalk : public ::testing::Test {};
using FloatTypes = ::testing::Types<double, float>;
TYPED_TEST_SUITE(NaNAwareWalk, FloatTypes);

// Also checks that the vector's earlier content stays in front and that
// Execute gathers X (or the index, on a category axis) and Y by index.
TYPED_TEST(NaNAwareWalk, MatchesPlainWalk) {
    using TY = TypeParam;
    GenericArrayOperations<TY> ops;
    std::mt19937 rng(3);
    for (std::int32_t trial = 0; trial < 600; ++trial) {
        const RandomRun<TY> run(rng, kBucketData[trial % 3], true);
        const std::int32_t n = static_cast<std::int32_t>(run.x.size());
        const std::int32_t size = n + 1 + static_cast<std::int32_t>(rng() % 4);
        const std::int32_t base = 1 + static_cast<std::int32_t>(rng() % static_cast<unsigned>(size - 1));
        for (ResamplingMode mode : kBucketModes) {
            for (std::int32_t b : {0, base}) {
                SCOPED_TRACE(testing::Message() << "trial " << trial << " data " << run.args.Data << " mode " << mode
                                                << " base " << b);
                const std::vector<double> x = b == 0 ? run.x : ToRing(run.x, size, b);
                const std::vector<TY> y = b == 0 ? run.y : ToRing(run.y, size, b);
                const ResamplingArgs args = b == 0 ? run.args : InRing(run.args, size, b);
                const auto method = NaNAware<double, TY>(static_cast<ResamplingData>(run.args.Data), b != 0, mode, ops);
                IntVector indices;
                indices.PushBack(-5);
                const std::int32_t count = method->UpdateIndices(indices, x.data(), y.data(), args);
                bool seamEmpty = false;
                std::vector<std::int32_t> expected = Expected(run, mode, size, b, &seamEmpty);
                if (seamEmpty) continue;
                expected.insert(expected.begin(), -5);
                ASSERT_EQ(std::vector<std::int32_t>(indices.data(), indices.data() + indices.size()), expected);
                ASSERT_EQ(count, indices.size());
                std::vector<double> outX(expected.size()), outY(expected.size());
                method->Execute(x.data(), y.data(), outX.data(), outY.data(), indices, args);
                for (std::size_t k = 1; k < expected.size(); ++k) {
                    const std::int32_t slot = b == 0 ? expected[k] : (expected[k] + b) % size;
                    if (slot < 0) continue;
                    const double wantX = run.args.Data == Category ? expected[k] : x[slot];
                    EXPECT_EQ(outX[k], wantX);
                    if (std::isnan(y[slot])) {
                        EXPECT_TRUE(std::isnan(outY[k]));
                    } else {
                        EXPECT_EQ(outY[k], static_cast<double>(y[slot]));
                    }
                }
            }
        }
    }
}

class NaNAwareRuns : public ::testing::Test {
protected:
    GenericArrayOperations<float> ops;

    // Category runs over 0..6 in a grid of step 4: buckets [0, 5), [5, 7).
    std::vector<std::int32_t> Category7(ResamplingMode mode, const std::vector<float>& y, double zeroLine = 0) {
        ResamplingArgs args = Args(Category, 0, static_cast<std::int32_t>(y.size()) - 1, 0, 6, 1);
        args.ZeroLineY = zeroLine;
        IntVector indices;
        NaNAware<double, float>(Category, false, mode, ops)->UpdateIndices(indices, nullptr, y.data(), args);
        return {indices.data(), indices.data() + indices.size()};
    }
};

TEST_F(NaNAwareRuns, GapsStayGaps) {
    const float n = std::nanf("");
    // The minimum on each side of a lone NaN, and the NaN itself.
    EXPECT_EQ(Category7(Min, {3, 1, 2, n, 5, 4, 6}), (std::vector<std::int32_t>{1, 3, 4, 5}));
    // All NaN: the first point of each bucket; leading and trailing NaN.
    EXPECT_EQ(Category7(MinMax, {n, n, n, n, n, n, n}), (std::vector<std::int32_t>{0, 5}));
    EXPECT_EQ(Category7(MinMax, {n, n, 2, 9, 1, n, n}), (std::vector<std::int32_t>{0, 3, 4, 5}));
    // A run of only +inf leaves Min at -1; it gathers as a gap.
    const std::vector<float> y = {INFINITY, n, 1, 1, 1, 1, 1};
    EXPECT_EQ(Category7(Min, y), (std::vector<std::int32_t>{-1, 1, 2, 5}));
    // Max + Min overflows in Single: the first point of the run.
    EXPECT_EQ(Category7(Mid, {2e38f, 3e38f, 2.6e38f, n, 1, 1, 1}), (std::vector<std::int32_t>{0, 3, 4, 5}));
    // One-sided MinOrMax keeps the point nearest the zero line.
    EXPECT_EQ(Category7(MinOrMax, {1, 2, 3, n, 1, 1, 1}, 0), (std::vector<std::int32_t>{0, 3, 4, 5}));
    EXPECT_EQ(Category7(MinOrMax, {1, 2, 3, n, 1, 1, 1}, 4), (std::vector<std::int32_t>{2, 3, 4, 5}));
}

TEST_F(NaNAwareRuns, ExecuteGathersNaNForAnIndexWithoutSlot) {
    const std::vector<double> x = {10, 11};
    const std::vector<float> y = {INFINITY, 1};
    IntVector indices;
    indices.PushBack(-1);
    indices.PushBack(1);
    double outX[2], outY[2];
    NaNAware<double, float>(Linear, false, Min, ops)->Execute(x.data(), y.data(), outX, outY, indices, {});
    EXPECT_TRUE(std::isnan(outX[0]) && std::isnan(outY[0]));
    EXPECT_EQ(outX[1], 11);
    EXPECT_EQ(outY[1], 1);
}

// Where TY is Double the plain NaN-aware Linear row runs Min as MinOrMax,
// Mid as Min and MinOrMax as Mid; Single, the ring table and the other rows
// follow the grid.
template <class TY>
void ExpectNaNTable(std::int32_t base, ResamplingData data, bool quirk) {
    std::mt19937 rng(5);
    const RandomRun<TY> run(rng, data, true);
    const std::int32_t size = static_cast<std::int32_t>(run.x.size()) + 1;
    const std::vector<double> x = base == 0 ? run.x : ToRing(run.x, size, base);
    const std::vector<TY> y = base == 0 ? run.y : ToRing(run.y, size, base);
    ResamplingArgs args = base == 0 ? run.args : InRing(run.args, size, base);
    args.HasNaN = true;
    args.ZeroLineY = 0.5;
    ExtremeResampler<double, TY> engine;
    GenericArrayOperations<TY> ops;
    for (ResamplingMode mode : kBucketModes) {
        ResamplingMode runs = mode;
        if (quirk) runs = mode == Min ? MinOrMax : mode == Mid ? Min : mode == MinOrMax ? Mid : mode;
        IntVector viaEngine, direct;
        engine.UpdateIndices(viaEngine, x.data(), y.data(), mode, args);
        NaNAware<double, TY>(data, base != 0, runs, ops)->UpdateIndices(direct, x.data(), y.data(), args);
        EXPECT_EQ(std::vector<std::int32_t>(viaEngine.data(), viaEngine.data() + viaEngine.size()),
                  std::vector<std::int32_t>(direct.data(), direct.data() + direct.size()))
            << "mode " << mode << " base " << base << " data " << data;
    }
}

TEST(NaNAwareTables, DoubleQuirkOnlyInPlainLinearRow) {
    for (ResamplingData data : kBucketData)
        for (std::int32_t base : {0, 1}) {
            ExpectNaNTable<double>(base, data, base == 0 && data == Linear);
            ExpectNaNTable<float>(base, data, false);
        }
}

}  // namespace
}  // namespace qm
