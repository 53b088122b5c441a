// Worked, hand-checked runs of the rules that look like mistakes and must
// stay, or that random data hardly meets: a "fix" of one of them, or a
// reference that shares a misreading with the library, shows here.

#include <numeric>

#include "resampling/ResamplingTestSupport.h"

namespace qm::test {
namespace {

using Indices = std::vector<std::int32_t>;
const std::vector<double> kNoX;

// One run on a fresh engine; a category axis gets no X at all.
template <class TX, class TY>
Output RunOnce(std::int32_t mode, const std::vector<TX>& x, const std::vector<TY>& y, ResamplingArgs args, bool nan = false) {
    args.HasNaN = nan;
    return Resample(ExtremeResampler<TX, TY>{}, mode, args.Data == Category ? nullptr : x.data(), y.data(), args);
}

// X = Y = 0..1000 over 100 pixels: step 8, 126 cells reserved; the buckets
// [0,9), [9,17), ..., [985,993) and the last one cut at EndIndex, [993,1001).
TEST(Quirks, FirstBucketHoldsNinePointsAndTheLastIsCutAtEndIndex) {
    std::vector<double> x(1001);
    std::iota(x.begin(), x.end(), 0.0);
    Indices maxima;
    for (std::int32_t i = 8; i <= 1000; i += 8) maxima.push_back(i);
    const Output out = RunOnce(Max, x, x, Args(Linear, 0, 1000, 0, 1000, 100));
    EXPECT_EQ(out.indices, maxima);
    EXPECT_EQ(out.reserved, 126);
}

// One bucket wholly below the zero line 10: Min keeps index 1 (the 1), Max
// and the nearest-to-the-line MinOrMax of plain NaN-aware runs index 3 (the
// 9), Mid index 4 (the 5, nearest the middle 5); a ring's MinOrMax keeps the
// farthest point, the 1. Double runs the plain Linear row one column over.
TEST(Quirks, DoubleRunsThePlainNaNAwareLinearRowOneColumnOver) {
    const std::vector<double> x{0, 1, 2, 3, 4, 5, 6, 7}, y{2, 1, 4, 9, 5, 3, 7, 6};
    ResamplingArgs plain = Args(Linear, 0, 7, 0, 8, 1), ring = Args(Linear, 0, 7, 0, 8, 1, 9, 3);
    plain.ZeroLineY = ring.ZeroLineY = 10;
    const std::tuple<ResamplingMode, Indices, Indices, Indices> rows[] = {  // Double, Single, Double in a ring
        {Min, {3}, {1}, {1}}, {Mid, {1}, {4}, {4}}, {MinOrMax, {4}, {3}, {1}}};
    for (const auto& [mode, doubles, singles, rings] : rows) {
        EXPECT_EQ(RunOnce(mode, x, y, plain, true).indices, doubles) << "mode " << mode;
        EXPECT_EQ(RunOnce(mode, x, std::vector<float>(y.begin(), y.end()), plain, true).indices, singles) << "mode " << mode;
        EXPECT_EQ(RunOnce(mode, ToRing(x, 9, 3), ToRing(y, 9, 3), ring, true).indices, rings) << "mode " << mode;
    }
}

// A scan nothing beats keeps position -1 and the point goes out all the same:
// a bucket of unsigned zeros has no Max; in a ring (size 5, base 1) -1 turns
// into logical 3. No X is read before the array. NaN-aware, a run of only
// +inf has no Min and one of only -inf no Max, and -1 gathers a NaN gap.
TEST(Quirks, PositionsNobodyBeatStayMinusOne) {
    const std::vector<double> x{0, 1, 2, 3};
    const std::vector<std::uint16_t> zeros(4);
    const Output max = RunOnce(Max, x, zeros, Args(Linear, 0, 3, 0, 4, 1));
    EXPECT_EQ(max.indices, Indices{-1});
    EXPECT_TRUE(std::isnan(max.x[0]) && max.y[0] == 0.0);
    EXPECT_EQ(RunOnce(MinMax, x, zeros, Args(Linear, 0, 3, 0, 4, 1)).indices, (Indices{-1, 0}));  // the Max point first
    EXPECT_EQ(RunOnce(Max, kNoX, zeros, Args(Category, 0, 3, 0, 4, 1)).x, std::vector<double>{-1.0});
    EXPECT_EQ(RunOnce(Max, ToRing(x, 5, 1), ToRing(zeros, 5, 1), Args(Linear, 0, 3, 0, 4, 1, 5, 1)).indices, Indices{3});

    const std::vector<float> inf{INFINITY, NAN, -INFINITY};
    const Output min = RunOnce(Min, kNoX, inf, Args(Category, 0, 2, 0, 3, 1), true);
    EXPECT_EQ(min.indices, (Indices{-1, 1, 2}));
    EXPECT_EQ(Comparable(min.y), Comparable({NAN, NAN, -INFINITY}));
    EXPECT_EQ(RunOnce(Max, kNoX, inf, Args(Category, 0, 2, 0, 3, 1), true).indices, (Indices{0, 1, -1}));
    EXPECT_EQ(RunOnce(MinMax, kNoX, inf, Args(Category, 0, 2, 0, 3, 1), true).indices, (Indices{-1, 0, 1, -1, 2}));
}

// Buckets [1,5) and [5,9): a NaN run leaves its first index once in each
// bucket it touches (1; 4 and 5; the trailing 8), and the stretches between
// are reduced alone (3; 6 then 7, the maximum first).
TEST(Quirks, NaNRunKeepsItsFirstIndexInEachBucket) {
    const std::vector<float> y{7, NAN, NAN, 2, NAN, NAN, 3, 1, NAN};
    EXPECT_EQ(RunOnce(MinMax, kNoX, y, Args(Category, 1, 8, 0, 8, 2), true).indices, (Indices{1, 3, 4, 5, 6, 7, 8}));
}

// Max + Min is formed in the Y type: in Single it overflows to infinity, no
// distance beats the start value and the first point stays; in Int32 it wraps
// to a middle of -147483647.5, nearest the smaller value. MinOrMax compares
// Min with Max in Int64, where they differ though their doubles are equal:
// below the line the minimum stays.
TEST(Quirks, MiddlesAndComparisonsStayInTheYType) {
    const std::vector<float> huge{2e38f, 3e38f, 2.6e38f};
    EXPECT_EQ(RunOnce(Mid, kNoX, huge, Args(Category, 0, 2, 0, 3, 1)).indices, Indices{0});
    EXPECT_EQ(RunOnce(Mid, kNoX, huge, Args(Category, 0, 2, 0, 3, 1), true).indices, Indices{0});
    EXPECT_EQ(RunOnce(Mid, kNoX, std::vector<std::int32_t>{2000000001, 2000000000}, Args(Category, 0, 1, 0, 2, 1)).indices, Indices{1});
    const std::vector<std::int64_t> close{-9007199254740992, -9007199254740993};
    EXPECT_EQ(RunOnce(MinOrMax, kNoX, close, Args(Category, 0, 1, 0, 2, 1)).indices, Indices{1});
}

// A ring of 19 with base 1 whose two visible points (logical 17 and 18, slots
// 18 and 0) lie at MaxXInclusive: the seam splits the last bucket into two
// passes, one more than the grid has cells, and the walk guard must let the
// second one run. Out come the first point, then each pass's reduction.
TEST(Quirks, RingSeamSplitsTheLastBucketAndBothPassesRun) {
    std::vector<std::uint64_t> x(19);
    std::iota(x.begin(), x.end(), 0u);
    x[18] = x[0] = 100;
    for (ResamplingMode mode : {MinMax, Min, Max, Mid, MinOrMax})
        EXPECT_EQ(RunOnce(mode, x, std::vector<std::uint32_t>(19, 5), Args(UnevenlySpaced, 17, 18, 0, 100, 1, 19, 1)).indices,
                  (Indices{17, 17, 18})) << "mode " << mode;
}

}  // namespace
}  // namespace qm::test
