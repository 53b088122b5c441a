// Worked, hand-checked runs of the rules that look like mistakes and must
// stay, or that random data hardly meets: a "fix" of any of them, or a
// reference that shares the library's misreading, shows here. Each answer
// below was worked out by hand from the grid and the reduction rules.

#include <numeric>

#include "resampling/ResamplingTestSupport.h"

namespace qm::test {
namespace {

using Indices = std::vector<std::int32_t>;

// One run on a fresh engine of the pair; a category axis gets no X at all.
template <class TX, class TY>
Output RunOnce(std::int32_t mode, const std::vector<TX>& x, const std::vector<TY>& y, ResamplingArgs args,
               bool hasNaN = false) {
    args.HasNaN = hasNaN;
    return Resample(ExtremeResampler<TX, TY>{}, mode, args.Data == Category ? nullptr : x.data(), y.data(), args);
}
const std::vector<double> kNoX;

// X = Y = 0..1000 over 100 pixels: step 8, 126 cells reserved; buckets
// [0,9), [9,17), ..., [985,993), and the last one cut at EndIndex: [993,1001).
TEST(Quirks, FirstBucketHoldsNinePointsAndTheLastIsCutAtEndIndex) {
    std::vector<double> x(1001);
    std::iota(x.begin(), x.end(), 0.0);
    const Output out = RunOnce(Max, x, x, Args(Linear, 0, 1000, 0, 1000, 100));
    Indices expected;
    for (std::int32_t i = 8; i <= 1000; i += 8) expected.push_back(i);
    EXPECT_EQ(out.indices, expected);
    EXPECT_EQ(out.reserved, 126);
}

// One bucket of 8 points wholly below the zero line 10: Min is index 1 (the
// 1), Max and the nearest-to-the-line MinOrMax of plain NaN-aware runs index
// 3 (the 9), Mid index 4 (the 5, nearest the middle 5); a ring's MinOrMax
// keeps the farthest point, the 1.
TEST(Quirks, DoubleRunsThePlainNaNAwareLinearRowOneColumnOver) {
    const std::vector<double> x{0, 1, 2, 3, 4, 5, 6, 7}, y{2, 1, 4, 9, 5, 3, 7, 6};
    const std::vector<float> yf(y.begin(), y.end());
    ResamplingArgs args = Args(Linear, 0, 7, 0, 8, 1);
    args.ZeroLineY = 10;
    const ResamplingArgs ring = InRing(args, 9, 3);
    const std::pair<ResamplingMode, Indices> rows[][3] = {  // Double, Single, Double in a ring
        {{Min, {3}}, {Min, {1}}, {Min, {1}}},
        {{Mid, {1}}, {Mid, {4}}, {Mid, {4}}},
        {{MinOrMax, {4}}, {MinOrMax, {3}}, {MinOrMax, {1}}},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(RunOnce(row[0].first, x, y, args, true).indices, row[0].second) << "Double, mode " << row[0].first;
        EXPECT_EQ(RunOnce(row[1].first, x, yf, args, true).indices, row[1].second) << "Single, mode " << row[1].first;
        EXPECT_EQ(RunOnce(row[2].first, ToRing(x, 9, 3), ToRing(y, 9, 3), ring, true).indices, row[2].second)
            << "ring, mode " << row[2].first;
    }
}

// A scan that nothing beats keeps position -1 and the point goes out all the
// same: a bucket of unsigned zeros has no Max; in a ring -1 becomes the
// logical index of slot -1 (size 5, base 1: 3). Its X is not read from
// before the array.
TEST(Quirks, PositionsNobodyBeatStayMinusOne) {
    const std::vector<double> x{0, 1, 2, 3};
    const std::vector<std::uint16_t> zeros(4);
    const ResamplingArgs oneBucket = Args(Linear, 0, 3, 0, 4, 1);
    const Output max = RunOnce(Max, x, zeros, oneBucket);
    EXPECT_EQ(max.indices, Indices{-1});
    EXPECT_TRUE(std::isnan(max.x[0]));
    EXPECT_EQ(max.y[0], 0.0);
    EXPECT_EQ(RunOnce(MinMax, x, zeros, oneBucket).indices, (Indices{-1, 0}));  // the Max point comes first
    EXPECT_EQ(RunOnce(Max, kNoX, zeros, Args(Category, 0, 3, 0, 4, 1)).x, std::vector<double>{-1.0});
    EXPECT_EQ(RunOnce(Max, ToRing(x, 5, 1), ToRing(zeros, 5, 1), InRing(oneBucket, 5, 1)).indices, Indices{3});

    // NaN-aware: a run of only +inf has no Min, one of only -inf no Max; the
    // -1 gathers NaN, a gap, instead of a read before the arrays.
    const std::vector<float> inf{INFINITY, NAN, -INFINITY};
    const ResamplingArgs three = Args(Category, 0, 2, 0, 3, 1);
    const Output min = RunOnce(Min, kNoX, inf, three, true);
    EXPECT_EQ(min.indices, (Indices{-1, 1, 2}));
    EXPECT_EQ(Comparable(min.y), Comparable({NAN, NAN, -INFINITY}));
    EXPECT_EQ(RunOnce(Max, kNoX, inf, three, true).indices, (Indices{0, 1, -1}));
    EXPECT_EQ(RunOnce(MinMax, kNoX, inf, three, true).indices, (Indices{-1, 0, 1, -1, 2}));
}

// Buckets [1,5) and [5,9): a NaN run leaves its first index once per bucket
// it touches (1; 4 and 5; the trailing 8), the stretch between is reduced on
// its own (3; 6 then 7, the maximum first).
TEST(Quirks, NaNRunKeepsItsFirstIndexInEachBucket) {
    const std::vector<float> y{7, NAN, NAN, 2, NAN, NAN, 3, 1, NAN};
    EXPECT_EQ(RunOnce(MinMax, kNoX, y, Args(Category, 1, 8, 0, 8, 2), true).indices, (Indices{1, 3, 4, 5, 6, 7, 8}));
}

// Max + Min is formed in the Y type: in Single it overflows to infinity, so
// no distance beats the start value and the first point stays; in Int32 it
// wraps to a middle of -147483647.5, nearest the smaller value. MinOrMax
// compares Min with Max in Int64, where the two differ though their doubles
// are equal: below the line the minimum stays.
TEST(Quirks, MiddlesAndComparisonsStayInTheYType) {
    const ResamplingArgs three = Args(Category, 0, 2, 0, 3, 1), two = Args(Category, 0, 1, 0, 2, 1);
    const std::vector<float> huge{2e38f, 3e38f, 2.6e38f};
    EXPECT_EQ(RunOnce(Mid, kNoX, huge, three).indices, Indices{0});
    EXPECT_EQ(RunOnce(Mid, kNoX, huge, three, true).indices, Indices{0});
    EXPECT_EQ(RunOnce(Mid, kNoX, std::vector<std::int32_t>{2000000001, 2000000000}, two).indices, Indices{1});
    const std::vector<std::int64_t> close{-9007199254740992, -9007199254740993};
    EXPECT_EQ(RunOnce(MinOrMax, kNoX, close, two).indices, Indices{1});
}

// A ring of 19 with base 1, both visible points (logical 17 and 18, slots
// 18 and 0) at MaxXInclusive: the seam splits the last bucket into two
// passes, one more than the grid has cells, and the guard must let the
// second run. The first point of the run, then each pass's reduction.
TEST(Quirks, RingSeamSplitsTheLastBucketAndBothPassesRun) {
    std::vector<std::uint64_t> x(19);
    std::iota(x.begin(), x.end(), 0u);
    x[18] = x[0] = 100;
    const std::vector<std::uint32_t> y(19, 5);
    const ExtremeResampler<std::uint64_t, std::uint32_t> engine;
    for (ResamplingMode mode : {MinMax, Min, Max, Mid, MinOrMax})
        EXPECT_EQ(Resample(engine, mode, x.data(), y.data(), InRing(Args(UnevenlySpaced, 17, 18, 0, 100, 1), 19, 1)).indices,
                  (Indices{17, 17, 18}))
            << "mode " << mode;
}

}  // namespace
}  // namespace qm::test
