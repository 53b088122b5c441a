// The even ring drivers walk the logical series exactly as the plain ones
// do and only turn indices into slots at the edges. So a ring gives the
// output of the same points laid out straight, except where a bucket is
// empty. (The unevenly spaced ring has its own suite.)

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <random>
#include <vector>

#include "resampling/buckets/Grid.h"
#include "resampling/drivers/DriverTestSupport.h"
#include "resampling/drivers/FifoCategoryDriver.h"
#include "resampling/drivers/FifoLinearDriver.h"

namespace qm {
namespace {

using namespace drivertest;

std::int32_t Pick(std::mt19937& rng, std::int32_t low, std::int32_t high) {
    return std::uniform_int_distribution<std::int32_t>(low, high)(rng);
}

// Logical [0,9), [9,17), ..., [985,993), [993,1000) of a 1000-slot ring
// whose oldest point sits at slot 400, as start and end slots.
std::vector<Bucket> Base400Slots() {
    std::vector<Bucket> slots;
    std::int32_t start = 0;
    for (std::int32_t end = 9; start < 1000; end = std::min(end + 8, 1000)) {
        slots.push_back({(start + 400) % 1000, (end + 400) % 1000});
        start = end;
    }
    return slots;
}

TEST(RingDrivers, TurnedRingOfAThousandPoints) {
    const std::vector<double> x = ToRing(Ramp(1000, 0.0, 1.0), 1000, 400);
    const ResamplingArgs args = InRing(Args(Linear, 0, 999, 0.0, 999.0, 100), 1000, 400);

    Recorder<FifoLinearResamplingMethodBase<double, double>> linear(2);
    Recorder<FifoCategoryResamplingMethodBase<double, double>> category(1);
    const std::vector<Bucket> expected = Base400Slots();
    ASSERT_EQ(expected.size(), 125u);
    ASSERT_EQ(expected.front(), (Bucket{400, 409}));
    ASSERT_EQ(expected[74], (Bucket{993, 1}));  // logical [593,601) runs over the seam
    ASSERT_EQ(expected.back(), (Bucket{393, 400}));  // ends on the first slot
    EXPECT_EQ(Record(linear, x.data(), x.data(), args), expected);
    EXPECT_EQ(Record(category, x.data(), x.data(), args), expected);
}

// Step 1 under X spacing 2 (Linear), or step 0.5 over indices (Category),
// makes every other bucket empty. A ring reads an empty bucket as the whole
// ring, so it reports the ring's minimum where a straight array reports
// the seed at index -1.
TEST(RingDrivers, EmptyBucketScansTheWholeRing) {
    constexpr std::int32_t kSize = 16;
    const std::vector<double> logicalX = Ramp(kSize, 0.0, 2.0);
    std::vector<double> logicalY = Ramp(kSize, 50.0, 1.0);
    logicalY[14] = 1.0;  // outside the visible range 0..10
    const std::vector<double> ringX = ToRing(logicalX, kSize, 5);
    const std::vector<double> ringY = ToRing(logicalY, kSize, 5);
    ExtremeResampler<double, double> engine;
    for (const ResamplingArgs& args : {Args(Linear, 0, 10, 0.0, 20.0, 20), Args(Category, 0, 10, 0.0, 10.0, 20)}) {
        SCOPED_TRACE(args.Data == Linear ? "Linear" : "Category");
        const Output plain = Resample(engine, Min, logicalX.data(), logicalY.data(), args);
        const Output ring = Resample(engine, Min, ringX.data(), ringY.data(), InRing(args, kSize, 5));
        ASSERT_EQ(plain.indices.size(), 19u);
        ASSERT_EQ(ring.indices.size(), 19u);
        for (std::size_t k = 0; k < 19; ++k) {
            if (k % 2 == 0) {
                EXPECT_EQ(ring.indices[k], plain.indices[k]) << k;
            } else {
                EXPECT_EQ(plain.indices[k], -1) << k;
                EXPECT_EQ(ring.indices[k], 14) << k;
                EXPECT_EQ(ring.y[k], 1.0) << k;
                EXPECT_EQ(ring.x[k], args.Data == Linear ? 28.0 : 14.0) << k;
            }
        }
    }
}

// Random rings (size, turn, visible range, grid) against the same points
// laid out straight, all five modes. The grid is kept no finer than the
// spacing so that no bucket is empty. Y repeats values so that ties meet
// the seam.
TEST(RingDrivers, RingMatchesStraightLayoutOnRandomEvenData) {
    std::mt19937 rng(20240611);
    ExtremeResampler<double, double> engine;
    int compared = 0;
    for (int round = 0; round < 300; ++round) {
        const std::int32_t size = Pick(rng, 8, 300);
        const std::int32_t base = Pick(rng, 1, size - 1);
        const std::int32_t start = Pick(rng, 0, size - 2);
        const std::int32_t end = Pick(rng, start + 1, size - 1);
        const double spacing = std::ldexp(1.0, Pick(rng, -2, 2)) * (1 + Pick(rng, 0, 2));
        const double first = Pick(rng, -500, 500) * 0.25;
        std::vector<double> x(static_cast<std::size_t>(size)), y(static_cast<std::size_t>(size));
        for (std::int32_t i = 0; i < size; ++i) {
            x[static_cast<std::size_t>(i)] = first + spacing * i;
            y[static_cast<std::size_t>(i)] = Pick(rng, -6, 6);
        }
        const ResamplingData data = round % 2 == 0 ? Linear : Category;
        const double lo = data == Linear ? x[static_cast<std::size_t>(start)] : start;
        const double hi = data == Linear ? x[static_cast<std::size_t>(end)] : end;
        const double unit = data == Linear ? spacing : 1.0;
        ResamplingArgs args = Args(data, start, end, lo - Pick(rng, 0, 4) * unit, hi + Pick(rng, 0, 4) * unit,
                                   Pick(rng, 1, std::max(1, (end - start) / 2)), static_cast<std::uint32_t>(Pick(rng, 0, 1)));
        args.ZeroLineY = Pick(rng, -3, 3);
        if (GridStep(args) < unit) continue;
        ++compared;
        const std::vector<double> ringX = ToRing(x, size, base);
        const std::vector<double> ringY = ToRing(y, size, base);
        for (ResamplingMode mode : kBucketModes) {
            SCOPED_TRACE(testing::Message() << "round " << round << " mode " << mode << " size " << size << " base "
                                            << base << " range " << start << ".." << end);
            const Output plain = Resample(engine, mode, x.data(), y.data(), args);
            const Output ring = Resample(engine, mode, ringX.data(), ringY.data(), InRing(args, size, base));
            ASSERT_EQ(ring.indices, plain.indices);
            ASSERT_EQ(ring.x, plain.x);
            ASSERT_EQ(ring.y, plain.y);
        }
    }
    EXPECT_GT(compared, 100);
}

}  // namespace
}  // namespace qm
