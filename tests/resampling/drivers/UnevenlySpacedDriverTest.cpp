// The unevenly spaced drivers search each grid line in X and keep both edges
// of every gap. Checked on hand-made series and against a brute-force
// assignment of points to grid cells, plain and in a ring.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <random>
#include <vector>

#include "resampling/buckets/Grid.h"
#include "resampling/drivers/DriverTestSupport.h"
#include "resampling/drivers/UnevenlySpacedDriver.h"

namespace qm {
namespace {

using namespace drivertest;

std::int32_t Pick(std::mt19937& rng, std::int32_t low, std::int32_t high) {
    return std::uniform_int_distribution<std::int32_t>(low, high)(rng);
}

// What the driver should emit, found the slow way: every visible point gets
// the first grid line at or above its X, except that of several points
// equal to a line only the first joins it (the others join the next line).
// Then cell by cell: the first point after a run of empty cells, the
// reduction, and the last point before a gap.
std::vector<std::int32_t> BruteForce(const std::vector<double>& x, const std::vector<double>& y,
                                     const ResamplingArgs& args, ResamplingMode mode) {
    const double step = GridStep(args);
    std::vector<double> lines{(args.MinXInclusive - std::fmod(args.MinXInclusive, step)) + step};
    const auto at = [](std::int32_t i) { return static_cast<std::size_t>(i); };
    std::vector<std::size_t> cell(x.size());
    std::size_t line = 0;
    for (std::int32_t i = args.StartIndex; i <= args.EndIndex; ++i) {
        for (; lines[line] < x[at(i)]; ++line)
            if (line + 1 == lines.size()) lines.push_back(lines.back() + step);
        const bool laterOnLine = lines[line] == x[at(i)] && i > args.StartIndex && x[at(i - 1)] == x[at(i)];
        cell[at(i)] = line + (laterOnLine ? 1 : 0);
    }
    std::vector<std::int32_t> out;
    bool previousEmpty = true;
    std::int32_t i = args.StartIndex;
    for (std::size_t c = 0; i <= args.EndIndex; ++c) {
        std::int32_t j = i;
        while (j <= args.EndIndex && cell[at(j)] == c) ++j;
        if (j > i) {
            if (previousEmpty) out.push_back(i);
            std::int32_t lo = i, hi = i;
            for (std::int32_t k = i; k < j; ++k) {
                if (y[at(k)] < y[at(lo)]) lo = k;
                if (y[at(k)] > y[at(hi)]) hi = k;
            }
            out.push_back(mode == Min ? lo : std::min(lo, hi));
            if (mode == MinMax && lo != hi) out.push_back(std::max(lo, hi));
        } else if (!previousEmpty) {
            out.push_back(i - 1);
        }
        previousEmpty = j == i;
        i = j;
    }
    return out;
}

// Integer X, sorted, with repeats and occasional wide gaps; Y repeats too.
struct Series {
    std::vector<double> x;
    std::vector<double> y;
    ResamplingArgs args;
};

Series RandomSeries(std::mt19937& rng, std::int32_t size, std::int32_t start, std::int32_t end) {
    Series s{std::vector<double>(static_cast<std::size_t>(size)), std::vector<double>(static_cast<std::size_t>(size)),
             {}};
    double value = Pick(rng, 100, 200);
    for (std::size_t i = 0; i < s.x.size(); ++i) {
        const std::int32_t kind = Pick(rng, 0, 9);
        value += kind == 0 ? Pick(rng, 10, 60) : kind < 3 ? 0 : Pick(rng, 1, 3);
        s.x[i] = value;
        s.y[i] = Pick(rng, -6, 6);
    }
    const double lo = s.x[static_cast<std::size_t>(start)] - Pick(rng, 0, 9);
    const double hi = s.x[static_cast<std::size_t>(end)] + Pick(rng, 1, 9);
    s.args = Args(UnevenlySpaced, start, end, lo, hi, Pick(rng, 1, static_cast<std::int32_t>(hi - lo)),
                  static_cast<std::uint32_t>(Pick(rng, 0, 1)));
    s.args.ZeroLineY = Pick(rng, -3, 3);
    return s;
}

class UnevenlySpacedDriver : public ::testing::Test {
protected:
    ExtremeResampler<double, double> engine;
};

// Step 1 from 0: the first bucket (0.5, 0.7) gives its first point and its
// minimum; the empty bucket at 2 gives the point at 0.7; 3 to 5 give
// nothing; the bucket at 6 gives the point at 5.5 and its minimum.
TEST_F(UnevenlySpacedDriver, KeepsBothEdgesOfAGap) {
    const std::vector<double> x{0.5, 0.7, 5.5};
    const std::vector<double> y{5.0, 4.0, 9.0};
    const Output out = Resample(engine, Min, x.data(), y.data(), Args(UnevenlySpaced, 0, 2, 0.0, 6.0, 6));
    EXPECT_EQ(out.indices, (std::vector<std::int32_t>{0, 1, 1, 2, 2}));
    EXPECT_EQ(out.x, (std::vector<double>{0.5, 0.7, 0.7, 5.5, 5.5}));
    EXPECT_EQ(out.y, (std::vector<double>{5.0, 4.0, 4.0, 9.0, 9.0}));

    // Ten empty grid lines (2 to 11) still cost one point per edge.
    const std::vector<double> wide{0.5, 0.6, 11.5, 11.6};
    const std::vector<double> wideY{1.0, 2.0, 4.0, 3.0};
    EXPECT_EQ(Resample(engine, Min, wide.data(), wideY.data(), Args(UnevenlySpaced, 0, 3, 0.0, 12.0, 12)).indices,
              (std::vector<std::int32_t>{0, 0, 1, 2, 3}));
}

TEST_F(UnevenlySpacedDriver, OnlyTheFirstOfEqualPointsOnAGridLineClosesTheBucket) {
    Recorder<UnevenlySpacedResamplingMethod<double, double>> recorder(1);
    const std::vector<double> x{1.0, 2.0, 2.0, 2.0, 3.0};
    EXPECT_EQ(Record(recorder, x.data(), x.data(), Args(UnevenlySpaced, 0, 4, 0.0, 3.0, 3)),
              (std::vector<Bucket>{{0, 1}, {1, 2}, {2, 5}}));
}

TEST_F(UnevenlySpacedDriver, OneVisiblePointComesOutTwiceInEveryMode) {
    const std::vector<double> x{0.5, 1.5, 2.5};
    const std::vector<double> y{3.0, -2.0, 7.0};
    for (ResamplingMode mode : kBucketModes) {
        const Output out = Resample(engine, mode, x.data(), y.data(), Args(UnevenlySpaced, 1, 1, 0.0, 3.0, 3));
        EXPECT_EQ(out.indices, (std::vector<std::int32_t>{1, 1})) << "mode " << mode;
    }
}

TEST_F(UnevenlySpacedDriver, MatchesBruteForceOnRandomSeries) {
    std::mt19937 rng(4242);
    for (int round = 0; round < 400; ++round) {
        const std::int32_t size = Pick(rng, 1, 300);
        const std::int32_t start = Pick(rng, 0, size - 1);
        const Series s = RandomSeries(rng, size, start, Pick(rng, start, size - 1));
        for (ResamplingMode mode : {Min, MinMax}) {
            SCOPED_TRACE(testing::Message() << "round " << round << " mode " << mode);
            ASSERT_EQ(Resample(engine, mode, s.x.data(), s.y.data(), s.args).indices, BruteForce(s.x, s.y, s.args, mode));
        }
    }
}

// In a ring the search is split at the seam and the nearer answer wins.
// With the point just before the seam on a grid line (and apart from its
// neighbours) that rule agrees with a straight search, so the ring must
// match the brute force in logical indices, and the straight layout in
// every mode.
TEST_F(UnevenlySpacedDriver, RingMatchesBruteForceAndStraightLayout) {
    std::mt19937 rng(77);
    int compared = 0;
    for (int round = 0; round < 300; ++round) {
        const std::int32_t size = Pick(rng, 6, 250);
        const std::int32_t start = Pick(rng, 0, size / 4);
        Series s = RandomSeries(rng, size, start, Pick(rng, std::max(start + 2, size / 2), size - 2));
        std::vector<std::int32_t> seams;
        for (std::int32_t i = start + 1; i < s.args.EndIndex; ++i) {
            const auto at = [](std::int32_t k) { return static_cast<std::size_t>(k); };
            if (s.x[at(i - 1)] < s.x[at(i)] && s.x[at(i)] < s.x[at(i + 1)]) seams.push_back(i);
        }
        if (seams.empty()) continue;
        ++compared;
        const std::int32_t seam = seams[static_cast<std::size_t>(Pick(rng, 0, static_cast<std::int32_t>(seams.size()) - 1))];
        // Shifting the whole series keeps the grid and puts the seam point on it.
        const double step = GridStep(s.args);
        const double shift = step - std::fmod(s.x[static_cast<std::size_t>(seam)], step);
        for (double& v : s.x) v += shift;
        s.args.MinXInclusive += shift;
        s.args.MaxXInclusive += shift;
        const std::int32_t base = size - 1 - seam;
        const std::vector<double> ringX = ToRing(s.x, size, base);
        const std::vector<double> ringY = ToRing(s.y, size, base);
        const ResamplingArgs ringArgs = InRing(s.args, size, base);
        for (ResamplingMode mode : kBucketModes) {
            SCOPED_TRACE(testing::Message() << "round " << round << " mode " << mode << " seam " << seam);
            const Output plain = Resample(engine, mode, s.x.data(), s.y.data(), s.args);
            const Output ring = Resample(engine, mode, ringX.data(), ringY.data(), ringArgs);
            if (mode == Min || mode == MinMax) {
                ASSERT_EQ(ring.indices, BruteForce(s.x, s.y, s.args, mode));
            }
            ASSERT_EQ(ring.indices, plain.indices);
            ASSERT_EQ(ring.x, plain.x);
            ASSERT_EQ(ring.y, plain.y);
        }
    }
    EXPECT_GT(compared, 150);
}

// Logical 0..3 (X 0..3) fill the ring's tail, logical 4..7 (X 3.5, 3.8, 5,
// 9) start at slot 0; grid lines 4, 8, 12. For line 4 the tail's newest X
// (3) is as near as the first X not below 4 (5), and the tie stays in the
// older part: the bucket ends at the seam and 3.5 and 3.8 move to the next
// bucket. A straight layout puts them in the first.
TEST_F(UnevenlySpacedDriver, RingSeamKeepsTheOlderSideOfTheBoundaryOnATie) {
    const std::vector<double> x{0.0, 1.0, 2.0, 3.0, 3.5, 3.8, 5.0, 9.0};
    const std::vector<double> y{8.0, 7.0, 6.0, 5.0, 4.0, 3.0, 2.0, 1.0};  // each bucket's minimum is its last point
    const ResamplingArgs args = Args(UnevenlySpaced, 0, 7, 0.0, 16.0, 4);
    const Output plain = Resample(engine, Min, x.data(), y.data(), args);
    const Output ring = Resample(engine, Min, ToRing(x, 10, 6).data(), ToRing(y, 10, 6).data(), InRing(args, 10, 6));
    EXPECT_EQ(plain.indices, (std::vector<std::int32_t>{0, 5, 6, 7}));
    EXPECT_EQ(ring.indices, (std::vector<std::int32_t>{0, 3, 6, 7}));
}

// A ring full of visible points starts with its first slot equal to the
// slot behind the last point, so a first bucket that takes them all looks
// empty and the run yields nothing.
TEST_F(UnevenlySpacedDriver, FullRingInOneBucketYieldsNothing) {
    const std::vector<double> x{0.1, 0.2, 0.3, 0.4};
    const std::vector<double> y{4.0, 3.0, 2.0, 1.0};
    const ResamplingArgs args = InRing(Args(UnevenlySpaced, 0, 3, 0.0, 4.0, 4), 4, 2);
    EXPECT_TRUE(Resample(engine, MinMax, ToRing(x, 4, 2).data(), ToRing(y, 4, 2).data(), args).indices.empty());
}

}  // namespace
}  // namespace qm
