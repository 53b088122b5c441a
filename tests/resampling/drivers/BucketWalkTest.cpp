// The bucket strategies against plain walks written from their rules
// (ReferenceWalk.h), on random valid runs of every data kind and mode,
// plain and in a turned ring; and the run that a ring's seam splits.

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <random>
#include <vector>

#include "resampling/ResamplingTestSupport.h"
#include "resampling/ReferenceWalk.h"

namespace qm {
namespace {

using namespace drivertest;

template <class TY>
class BucketWalk : public ::testing::Test {};
using YTypes = ::testing::Types<double, float, std::int32_t>;
TYPED_TEST_SUITE(BucketWalk, YTypes);

// What the strategy must produce, point by point: a gap edge keeps its own
// Y; a bucket keeps what its reduction picks. A ring reports a position no
// element beat as the logical index of slot -1.
template <class TY>
Output Expected(const RandomRun<TY>& run, ResamplingMode mode, std::int32_t size, std::int32_t base, bool* hasEmpty) {
    const ResamplingArgs& a = run.args;
    const bool ring = base != 0;
    const std::int32_t seam = ring ? size - base : INT32_MAX;
    const std::vector<reference::Step> steps = a.Data == UnevenlySpaced
                                                   ? reference::UnevenWalk(run.x, a, seam)
                                                   : reference::EvenWalk(a.Data == Category, run.x, a);
    Output out;
    for (const reference::Step& step : steps) {
        std::vector<reference::Pick> picks{{step.start, static_cast<double>(run.y[step.start])}};
        if (step.end >= 0) {
            *hasEmpty = *hasEmpty || step.end == step.start;
            picks = reference::Reduce(mode, reference::Sense::Farthest, run.y, step.start, step.end, a.ZeroLineY,
                                      ring ? size - 1 - base : -1);
        }
        for (const reference::Pick& p : picks) {
            out.indices.push_back(p.index);
            out.y.push_back(p.y);
            out.x.push_back(a.Data == Category ? p.index : p.found ? run.x[p.index] : std::nan(""));
        }
    }
    return out;
}

void ExpectSame(const std::vector<double>& actual, const std::vector<double>& expected) {
    ASSERT_EQ(actual.size(), expected.size());
    for (std::size_t i = 0; i < actual.size(); ++i)
        if (!(std::isnan(actual[i]) && std::isnan(expected[i]))) {
            EXPECT_EQ(actual[i], expected[i]) << "at " << i;
        }
}

TYPED_TEST(BucketWalk, MatchesPlainWalk) {
    using TY = TypeParam;
    ExtremeResampler<double, TY> engine;
    std::mt19937 rng(11);
    std::int32_t ringRunsChecked = 0;
    for (std::int32_t trial = 0; trial < 400; ++trial) {
        const RandomRun<TY> run(rng, kBucketData[trial % 3], false);
        const std::int32_t n = static_cast<std::int32_t>(run.x.size());
        const std::int32_t size = n + 1 + static_cast<std::int32_t>(rng() % 4);
        const std::int32_t base = 1 + static_cast<std::int32_t>(rng() % static_cast<unsigned>(size - 1));
        for (ResamplingMode mode : kBucketModes) {
            SCOPED_TRACE(testing::Message() << "trial " << trial << " data " << run.args.Data << " mode " << mode);
            bool hasEmpty = false;
            const Output plain = Resample(engine, mode, run.x.data(), run.y.data(), run.args);
            const Output expected = Expected(run, mode, size, 0, &hasEmpty);
            EXPECT_EQ(plain.indices, expected.indices);
            ExpectSame(plain.x, expected.x);
            ExpectSame(plain.y, expected.y);
            // An empty evenly spaced bucket is a whole ring to a ring strategy.
            if (hasEmpty && run.args.Data != UnevenlySpaced) continue;
            ++ringRunsChecked;
            const Output ring = Resample(engine, mode, ToRing(run.x, size, base).data(),
                                         ToRing(run.y, size, base).data(), InRing(run.args, size, base));
            const Output ringExpected = Expected(run, mode, size, base, &hasEmpty);
            EXPECT_EQ(ring.indices, ringExpected.indices);
            ExpectSame(ring.x, ringExpected.x);
            ExpectSame(ring.y, ringExpected.y);
        }
    }
    EXPECT_GT(ringRunsChecked, 1000);
}

// The seam splits the last bucket in two passes, one more than the grid
// has cells; both must run.
TEST(RingSeam, SplitBucketKeepsItsLastPoint) {
    ExtremeResampler<std::uint64_t, std::uint32_t> engine;
    std::vector<std::uint64_t> x(19);
    std::vector<std::uint32_t> y(19, 5);
    for (std::int32_t i = 0; i < 19; ++i) x[static_cast<std::size_t>(i)] = static_cast<std::uint64_t>(i);
    x[18] = x[0] = 100;  // logical 17 and 18
    const ResamplingArgs args = InRing(Args(UnevenlySpaced, 17, 18, 0.0, 100.0, 1), 19, 1);
    for (ResamplingMode mode : kBucketModes) {
        const Output out = Resample(engine, mode, x.data(), y.data(), args);
        EXPECT_EQ(out.indices, (std::vector<std::int32_t>{17, 17, 18})) << "mode " << mode;
    }
}

}  // namespace
}  // namespace qm
