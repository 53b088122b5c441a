// Worked, hand-checked runs of the rules that look like mistakes and must
// stay, or that random data hardly meets: a "fix" of one of them, or a
// reference that shares a misreading with the library, shows here. (The
// bucket edges of an even grid and NaN runs, which random runs meet all the
// time, are hand-checked through the managed layer in ResamplerTests.cs.)

#include <cmath>
#include <numeric>

#include "interop/InterfaceTestSupport.h"

using namespace qmtest;

namespace {

class Quirks : public InterfaceTest {};
using DoubleDouble = QM_PAIR_EXPORTS(Double, double, Double, double);
using DoubleSingle = QM_PAIR_EXPORTS(Double, double, Single, float);
using DoubleUInt16 = QM_PAIR_EXPORTS(Double, double, UInt16, uint16_t);
using DoubleInt32 = QM_PAIR_EXPORTS(Double, double, Int32, int32_t);
using DoubleInt64 = QM_PAIR_EXPORTS(Double, double, Int64, int64_t);
using UInt64UInt32 = QM_PAIR_EXPORTS(UInt64, uint64_t, UInt32, uint32_t);

// One run on a fresh engine of the pair; a category axis gets no X at all.
template <class P>
Frame RunOnce(std::int32_t mode, const std::vector<typename P::X>& x, const std::vector<typename P::Y>& y, const Shape& shape) {
    auto* engine = P::make();
    VectorPtr indices = MakeVector({});
    const Frame f = P::Run(engine, shape.data == Category ? nullptr : x.data(), y.data(), mode, MakeArgs(shape).get(), indices.get());
    P::destroy(engine);
    return f;
}
Shape S(std::int32_t data, std::int32_t end, double maxX, std::int32_t width, std::int32_t hasNaN = 0, std::int32_t start = 0) {
    return {.data = data, .start = start, .end = end, .width = width, .maxX = maxX, .hasNaN = hasNaN};
}

// One bucket wholly below the zero line 10: Min keeps index 1 (the 1), Max
// and the nearest-to-the-line MinOrMax of plain NaN-aware runs index 3 (the
// 9), Mid index 4 (the 5, nearest the middle 5); a ring's MinOrMax keeps the
// farthest point, the 1. Double runs the plain Linear row one column over.
TEST_F(Quirks, DoubleRunsThePlainNaNAwareLinearRowOneColumnOver) {
    const std::vector<double> x{0, 1, 2, 3, 4, 5, 6, 7}, y{2, 1, 4, 9, 5, 3, 7, 6};
    Shape plain = S(Linear, 7, 8, 1, 1), ring = plain;
    plain.zeroLine = ring.zeroLine = 10, ring.size = 9, ring.base = 3;
    const std::tuple<std::int32_t, Ints, Ints, Ints> rows[] = {  // Double, Single, Double in a ring
        {Min, {3}, {1}, {1}}, {Mid, {1}, {4}, {4}}, {MinOrMax, {4}, {3}, {1}}};
    for (const auto& [mode, doubles, singles, rings] : rows) {
        EXPECT_EQ(RunOnce<DoubleDouble>(mode, x, y, plain).indices, doubles) << "mode " << mode;
        EXPECT_EQ(RunOnce<DoubleSingle>(mode, x, {y.begin(), y.end()}, plain).indices, singles) << "mode " << mode;
        EXPECT_EQ(RunOnce<DoubleDouble>(mode, ToRing(x, 9, 3), ToRing(y, 9, 3), ring).indices, rings) << "mode " << mode;
    }
}

// A scan nothing beats keeps position -1 and the point goes out all the same:
// a bucket of unsigned zeros has no Max; in a ring (size 5, base 1) -1 turns
// into logical 3. No X is read before the array. NaN-aware, a run of only
// +inf has no Min and one of only -inf no Max, and -1 gathers a NaN gap.
TEST_F(Quirks, PositionsNobodyBeatStayMinusOne) {
    const std::vector<double> x{0, 1, 2, 3};
    const std::vector<std::uint16_t> zeros(4);
    Shape ring = S(Linear, 3, 4, 1);
    ring.size = 5, ring.base = 1;
    const Frame max = RunOnce<DoubleUInt16>(Max, x, zeros, S(Linear, 3, 4, 1));
    EXPECT_EQ(max.indices, Ints{-1});
    EXPECT_TRUE(std::isnan(max.x[0]) && max.y[0] == 0.0);
    EXPECT_EQ(RunOnce<DoubleUInt16>(MinMax, x, zeros, S(Linear, 3, 4, 1)).indices, (Ints{-1, 0}));  // the Max point first
    EXPECT_EQ(RunOnce<DoubleUInt16>(Max, {}, zeros, S(Category, 3, 4, 1)).x[0], -1.0);
    EXPECT_EQ(RunOnce<DoubleUInt16>(Max, ToRing(x, 5, 1), ToRing(zeros, 5, 1), ring).indices, Ints{3});

    const std::vector<float> inf{INFINITY, NAN, -INFINITY};
    const Frame min = RunOnce<DoubleSingle>(Min, {}, inf, S(Category, 2, 3, 1, 1));
    EXPECT_EQ(min.indices, (Ints{-1, 1, 2}));
    EXPECT_EQ(Comparable(min.y), Comparable({NAN, NAN, -INFINITY}));
    EXPECT_EQ(RunOnce<DoubleSingle>(Max, {}, inf, S(Category, 2, 3, 1, 1)).indices, (Ints{0, 1, -1}));
    EXPECT_EQ(RunOnce<DoubleSingle>(MinMax, {}, inf, S(Category, 2, 3, 1, 1)).indices, (Ints{-1, 0, 1, -1, 2}));
}

// Max + Min is formed in the Y type: in Single it overflows to infinity, no
// distance beats the start value and the first point stays; in Int32 it wraps
// to a middle of -147483647.5, nearest the smaller value. MinOrMax compares
// Min with Max in Int64, where they differ though their doubles are equal:
// below the line the minimum stays.
TEST_F(Quirks, MiddlesAndComparisonsStayInTheYType) {
    const std::vector<float> huge{2e38f, 3e38f, 2.6e38f};
    EXPECT_EQ(RunOnce<DoubleSingle>(Mid, {}, huge, S(Category, 2, 3, 1)).indices, Ints{0});
    EXPECT_EQ(RunOnce<DoubleSingle>(Mid, {}, huge, S(Category, 2, 3, 1, 1)).indices, Ints{0});
    EXPECT_EQ(RunOnce<DoubleInt32>(Mid, {}, {2000000001, 2000000000}, S(Category, 1, 2, 1)).indices, Ints{1});
    EXPECT_EQ(RunOnce<DoubleInt64>(MinOrMax, {}, {-9007199254740992, -9007199254740993}, S(Category, 1, 2, 1)).indices,
              Ints{1});
}

// A ring of 19 with base 1 whose two visible points (logical 17 and 18, slots
// 18 and 0) lie at MaxXInclusive: the seam splits the last bucket into two
// passes, one more than the grid has cells, and the walk guard must let the
// second one run. Out come the first point, then each pass's reduction.
TEST_F(Quirks, RingSeamSplitsTheLastBucketAndBothPassesRun) {
    std::vector<std::uint64_t> x(19);
    std::iota(x.begin(), x.end(), 0u);
    x[18] = x[0] = 100;
    Shape ring = S(UnevenlySpaced, 18, 100, 1, 0, 17);
    ring.size = 19, ring.base = 1;
    for (std::int32_t mode = MinMax; mode <= MinOrMax; ++mode)
        EXPECT_EQ(RunOnce<UInt64UInt32>(mode, x, std::vector<std::uint32_t>(19, 5), ring).indices,
                  (Ints{17, 17, 18})) << "mode " << mode;
}

// The same extra pass where it makes more points than UpdateIndices counted,
// which is what the caller sized X and Y to: the walk stops at that room.
// Ring of 19, base 2, logical 13 to 18 (slots 15 to 18, then 0 and 1) at X
// 96.5, 97, 98.5, 99.5, 99.5, 99.5 on a grid of step 2 from 96: two cells,
// room for 6 in MinMax. The passes keep 13, then 13 and 14, then 15 and 16
// up to the seam, then 17 and 18: the last one finds no room.
TEST_F(Quirks, RingSeamPassBeyondTheRoomIsCut) {
    std::vector<double> x(19, 99.5);
    std::vector<std::int32_t> y(19, 1);
    const double xs[] = {96.5, 97, 98.5, 99.5};
    const std::int32_t ys[] = {1, 9, 9, 1, 1, 9};
    for (std::int32_t i = 0; i < 6; ++i) {
        const std::size_t slot = static_cast<std::size_t>((13 + i + 2) % 19);
        if (i < 4) x[slot] = xs[i];
        y[slot] = ys[i];
    }
    Shape ring = S(UnevenlySpaced, 18, 99.5, 1, 0, 13);
    ring.minX = 96.5, ring.size = 19, ring.base = 2;
    const Frame f = RunOnce<DoubleInt32>(MinMax, x, y, ring);
    EXPECT_EQ(f.count, 6);
    EXPECT_EQ(f.indices, (Ints{13, 13, 14, 15, 16, 17}));
}

}  // namespace
