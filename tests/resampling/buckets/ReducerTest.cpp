// The five bucket reductions, driven directly with a BucketOutput, for plain
// storage (X from the data and position as X) and for ring storage, and the
// BucketOutput record itself.

#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <cstdint>
#include <ostream>
#include <stdexcept>
#include <utility>
#include <vector>

#include "arrayops/GenericArrayOperations.h"
#include "interop/IntVector.h"
#include "resampling/buckets/BucketOutput.h"
#include "resampling/buckets/BucketPoints.h"
#include "resampling/buckets/BucketRange.h"
#include "resampling/buckets/Reductions.h"

namespace qm {
namespace {

const double kNaN = std::nan("");

struct Pt {
    double x, y;
    std::int32_t index;
};

bool SameDouble(double a, double b) { return (std::isnan(a) && std::isnan(b)) || a == b; }
bool operator==(const Pt& a, const Pt& b) { return SameDouble(a.x, b.x) && SameDouble(a.y, b.y) && a.index == b.index; }
void PrintTo(const Pt& p, std::ostream* os) { *os << "(x " << p.x << ", y " << p.y << ", #" << p.index << ")"; }
using Pts = std::vector<Pt>;

const double kX[] = {100, 101, 102, 103, 104, 105, 106, 107, 108, 109, 110, 111, 112};

// Y with X from the data (kX) or the index as X.
template <class TY, bool kIndexAsX>
struct Source {
    const TY* y;
};

// One bucket through one reduction, the way a driver hands it over.
template <Reduction kReduction, class TY, bool kIndexAsX, class Range>
Pts Reduce(const Source<TY, kIndexAsX>& points, const Range& range, double zeroLine = 0.0) {
    static const GenericArrayOperations<TY> ops{};
    ResamplingArgs args{};
    args.ZeroLineY = zeroLine;
    IntVector indices;
    indices.ReserveForAppend(4);
    double xs[4] = {}, ys[4] = {};
    {
        BucketOutput output(xs, ys, indices, args);
        const Picks picks = qm::Reduce(kReduction, ops, points.y, range, zeroLine);
        PointEmitter<kIndexAsX>{XAxis::Of(kX)}.Emit(output, range, picks);
    }
    Pts got;
    for (std::int32_t k = 0; k < indices.size(); ++k) got.push_back({xs[k], ys[k], indices[k]});
    return got;
}

template <class TY>
Source<TY, false> XData(const TY* y) {
    return {y};
}
template <class TY>
Source<TY, true> XIndex(const TY* y) {
    return {y};
}

TEST(PlainReduction, ExtremesKeepSourceOrder) {
    const double a[] = {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 5, 1, 9};
    const double b[] = {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 9, 1, 5};
    const PlainRange bucket{10, 13};
    EXPECT_EQ(Reduce<Reduction::MinMax>(XData(a), bucket), (Pts{{111, 1, 11}, {112, 9, 12}}));
    EXPECT_EQ(Reduce<Reduction::MinMax>(XData(b), bucket), (Pts{{110, 9, 10}, {111, 1, 11}}));
    EXPECT_EQ(Reduce<Reduction::Min>(XData(a), bucket), (Pts{{111, 1, 11}}));
    EXPECT_EQ(Reduce<Reduction::Max>(XData(a), bucket), (Pts{{112, 9, 12}}));
    EXPECT_EQ(Reduce<Reduction::MinMax>(XIndex(a), bucket), (Pts{{11, 1, 11}, {12, 9, 12}}));

    const std::int32_t twice[] = {1, 7, 1, 7};  // equal extremes: the first of each
    EXPECT_EQ(Reduce<Reduction::MinMax>(XData(twice), PlainRange{0, 4}), (Pts{{100, 1, 0}, {101, 7, 1}}));
    // A single point goes out once, whatever the mode.
    const PlainRange one{12, 13};
    EXPECT_EQ(Reduce<Reduction::MinMax>(XData(a), one), (Pts{{112, 9, 12}}));
    EXPECT_EQ(Reduce<Reduction::Mid>(XData(a), one), (Pts{{112, 9, 12}}));
    EXPECT_EQ(Reduce<Reduction::MinOrMax>(XData(a), one, 9.0), (Pts{{112, 9, 12}}));
}

TEST(PlainReduction, MidTakesTheExistingPointNearestTheMiddleOfTheValues) {
    const double even[] = {0, 4, 6, 10};  // middle 5: the 4 and the 6 tie, the 4 stays
    EXPECT_EQ(Reduce<Reduction::Mid>(XData(even), PlainRange{0, 4}), (Pts{{101, 4, 1}}));
    // Max + Min wraps in Int32: the middle is -147483647.5, nearest the smaller.
    const std::int32_t big[] = {2000000001, 2000000000};
    EXPECT_EQ(Reduce<Reduction::Mid>(XData(big), PlainRange{0, 2}), (Pts{{101, 2000000000, 1}}));
    // Single sums in single precision: infinity, every distance infinite, the first stays.
    const float huge[] = {0.0f, 3e38f, 2e38f, 2.9e38f};
    EXPECT_EQ(Reduce<Reduction::Mid>(XData(huge), PlainRange{1, 4}), (Pts{{101, static_cast<double>(3e38f), 1}}));
    const double gap[] = {1, kNaN, kNaN};
    EXPECT_EQ(Reduce<Reduction::Mid>(XData(gap), PlainRange{1, 3}), (Pts{{101, kNaN, 1}}));
    EXPECT_EQ(Reduce<Reduction::Mid>(XData(even), PlainRange{3, 3}), (Pts{{103, 10, 3}}));  // empty: reads start
}

TEST(PlainReduction, MinOrMaxKeepsTheFarSideOfTheZeroLine) {
    const double below[] = {-1, -5, -2};
    const double above[] = {5, 1, 3};
    const double crossing[] = {2, -1, 5};
    const double onLine[] = {0, 3, 5};
    const double flat[] = {-3, -3, -3};
    const PlainRange all{0, 3};
    EXPECT_EQ(Reduce<Reduction::MinOrMax>(XData(below), all), (Pts{{101, -5, 1}}));
    EXPECT_EQ(Reduce<Reduction::MinOrMax>(XData(above), all), (Pts{{100, 5, 0}}));
    EXPECT_EQ(Reduce<Reduction::MinOrMax>(XData(crossing), all), (Pts{{101, -1, 1}, {102, 5, 2}}));
    EXPECT_EQ(Reduce<Reduction::MinOrMax>(XData(onLine), all), (Pts{{100, 0, 0}, {102, 5, 2}}));
    EXPECT_EQ(Reduce<Reduction::MinOrMax>(XData(flat), all), (Pts{{100, -3, 0}}));
    EXPECT_EQ(Reduce<Reduction::MinOrMax>(XData(above), all, 2.0), (Pts{{100, 5, 0}, {101, 1, 1}}));
    EXPECT_EQ(Reduce<Reduction::MinOrMax>(XData(above), all, -2.0), (Pts{{100, 5, 0}}));
    EXPECT_EQ(Reduce<Reduction::MinOrMax>(XData(below), all, kNaN), (Pts{{100, -1, 0}, {101, -5, 1}}));
    // Min against Max in Int64: equal as doubles, still told apart.
    const std::int64_t close[] = {-9007199254740992, -9007199254740993};
    EXPECT_EQ(Reduce<Reduction::MinOrMax>(XData(close), PlainRange{0, 2}), (Pts{{101, -9007199254740992.0, 1}}));
}

TEST(PlainReduction, PositionsNobodyBeatStayMinusOne) {
    const std::uint16_t zeros[] = {0, 0, 0};
    EXPECT_EQ(Reduce<Reduction::Max>(XData(zeros), PlainRange{0, 3}), (Pts{{kNaN, 0, -1}}));
    EXPECT_EQ(Reduce<Reduction::Max>(XIndex(zeros), PlainRange{0, 3}), (Pts{{-1, 0, -1}}));
    EXPECT_EQ(Reduce<Reduction::MinMax>(XData(zeros), PlainRange{0, 3}), (Pts{{kNaN, 0, -1}, {100, 0, 0}}));

    const double d[] = {1, 2, 3, 4};
    const PlainRange empty{3, 3};
    EXPECT_EQ(Reduce<Reduction::Min>(XData(d), empty), (Pts{{kNaN, DBL_MAX, -1}}));
    EXPECT_EQ(Reduce<Reduction::Max>(XData(d), empty), (Pts{{kNaN, -DBL_MAX, -1}}));
    EXPECT_EQ(Reduce<Reduction::MinMax>(XData(d), empty), (Pts{{kNaN, DBL_MAX, -1}}));
    EXPECT_EQ(Reduce<Reduction::MinOrMax>(XData(d), empty), (Pts{{kNaN, DBL_MAX, -1}}));
    EXPECT_EQ(Reduce<Reduction::Min>(XIndex(d), empty), (Pts{{-1, DBL_MAX, -1}}));
    const std::int8_t bottom[] = {-128, -128};
    EXPECT_EQ(Reduce<Reduction::Max>(XIndex(bottom), PlainRange{0, 2}), (Pts{{-1, -128, -1}}));
}

// A ring of 8 slots whose oldest point lies in slot 5: slot s holds logical
// index (s - 5 + 8) % 8, and X of slot s is 100 + s.
template <class TY>
Source<TY, false> RingXData(const TY* y) {
    return {y};
}
template <class TY>
Source<TY, true> RingXIndex(const TY* y) {
    return {y};
}

TEST(RingReduction, WrappedBucketOrdersByLogicalIndex) {
    // Slots 6, 7, 0, 1 are logical 1..4; slots 2..5 lie outside the bucket.
    const double y[] = {-9, 3, -100, 0, 0, 100, 2, 9};
    const RingRange bucket{6, 2, 8, 5};
    EXPECT_EQ(Reduce<Reduction::MinMax>(RingXData(y), bucket), (Pts{{107, 9, 2}, {100, -9, 3}}));
    EXPECT_EQ(Reduce<Reduction::MinMax>(RingXIndex(y), bucket), (Pts{{2, 9, 2}, {3, -9, 3}}));
    EXPECT_EQ(Reduce<Reduction::Min>(RingXData(y), bucket), (Pts{{100, -9, 3}}));
    EXPECT_EQ(Reduce<Reduction::Max>(RingXIndex(y), bucket), (Pts{{2, 9, 2}}));
    EXPECT_EQ(Reduce<Reduction::MinOrMax>(RingXData(y), bucket), (Pts{{107, 9, 2}, {100, -9, 3}}));
    EXPECT_EQ(Reduce<Reduction::MinOrMax>(RingXData(y), bucket, -50.0), (Pts{{107, 9, 2}}));
    EXPECT_EQ(Reduce<Reduction::Min>(RingXData(y), RingRange{0, 2, 8, 5}), (Pts{{100, -9, 3}}));  // not wrapped
}

TEST(RingReduction, OlderPartWinsTiesAndEqualEndsCoverTheWholeRing) {
    const double tie[] = {-9, 3, -100, 0, 0, 100, 2, -9};
    EXPECT_EQ(Reduce<Reduction::Min>(RingXData(tie), RingRange{6, 2, 8, 5}), (Pts{{107, -9, 2}}));
    // start == end: slots 5..7 then 0..4; of the two minima slot 6 is older.
    const double twoLows[] = {0, -4, 0, 0, 0, 0, -4, 0};
    EXPECT_EQ(Reduce<Reduction::Min>(RingXData(twoLows), RingRange{5, 5, 8, 5}), (Pts{{106, -4, 1}}));
    EXPECT_EQ(Reduce<Reduction::Max>(RingXData(twoLows), RingRange{5, 5, 8, 5}), (Pts{{105, 0, 0}}));
    // end 0: only start..size; slot 0 is not part of the bucket.
    const double tail[] = {-100, 5, 5, 5, 5, 5, 2, 9};
    EXPECT_EQ(Reduce<Reduction::Min>(RingXData(tail), RingRange{6, 0, 8, 5}), (Pts{{106, 2, 1}}));
    const double midTail[] = {5, 5, 5, 5, 5, 5, 0, 10};
    EXPECT_EQ(Reduce<Reduction::Mid>(RingXData(midTail), RingRange{6, 0, 8, 5}), (Pts{{106, 0, 1}}));
}

TEST(RingReduction, WrappedMidComparesTheWinnersOfBothParts) {
    const double tie[] = {6, 10, 50, 50, 50, 50, 0, 4};  // middle 5: slot 7 and slot 0 tie
    EXPECT_EQ(Reduce<Reduction::Mid>(RingXData(tie), RingRange{6, 2, 8, 5}), (Pts{{107, 4, 2}}));
    const double later[] = {6, 10, 50, 50, 50, 50, 0, 3};  // slot 0 strictly nearer
    EXPECT_EQ(Reduce<Reduction::Mid>(RingXIndex(later), RingRange{6, 2, 8, 5}), (Pts{{3, 6, 3}}));
}

TEST(RingReduction, UnbeatenSlotBecomesTheLogicalIndexOfMinusOne) {
    const std::uint8_t zeros[8] = {};
    const RingRange bucket{6, 2, 8, 5};
    // logical(-1) = size - 1 - base = 2
    EXPECT_EQ(Reduce<Reduction::Max>(RingXData(zeros), bucket), (Pts{{kNaN, 0, 2}}));
    EXPECT_EQ(Reduce<Reduction::Max>(RingXIndex(zeros), bucket), (Pts{{2, 0, 2}}));
    EXPECT_EQ(Reduce<Reduction::MinMax>(RingXData(zeros), bucket), (Pts{{106, 0, 1}, {kNaN, 0, 2}}));
}

TEST(BucketOutputRecord, ClosesAlsoWhenAnExceptionLeaves) {
    IntVector indices;
    indices.ReserveForAppend(6);
    double xs[6] = {}, ys[6] = {};
    ResamplingArgs args{};
    EXPECT_THROW(
        {
            BucketOutput output(xs, ys, indices, args);
            output.Append(1, 1, 5);
            throw std::runtime_error("reducer failed");
        },
        std::runtime_error);
    ASSERT_EQ(indices.size(), 1);
    EXPECT_EQ(indices[0], 5);
    EXPECT_EQ(indices.capacity(), 6);
}

}  // namespace
}  // namespace qm
