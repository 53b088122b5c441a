// Mode None: every requested point goes out unchanged, with its logical
// index, from plain arrays and from rings.

#include <gtest/gtest.h>

#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

#include "arrayops/GenericArrayOperations.h"
#include "resampling/ResamplingTestSupport.h"
#include "resampling/drivers/PassThroughMethods.h"

namespace qm {
namespace {

using namespace drivertest;

class PassThrough : public ::testing::Test {
protected:
    GenericArrayOperations<double> ops;
    LinearNoneResamplingMethod<double, double> linear{&ops};
    CategoryNoneResamplingMethod<double, double> category{&ops};
    LinearNoneFifoResamplingMethod<double, double> linearRing{&ops};
    CategoryNoneFifoResamplingMethod<double, double> categoryRing{&ops};

    // Point i has X 100 + i and Y -i.
    std::vector<double> x{100, 101, 102, 103, 104, 105, 106, 107};
    std::vector<double> y{0, -1, -2, -3, -4, -5, -6, -7};

    static ResamplingArgs Range(std::int32_t start, std::int32_t end) {
        return Args(NotResampled, start, end, 0.0, 0.0, 0);
    }
};

TEST_F(PassThrough, CopiesTheRequestedRangeAndNothingElse) {
    const Output one = Resample(linear, x.data(), y.data(), Range(4, 4));
    EXPECT_EQ(one.reserved, 1);
    EXPECT_EQ(one.indices, (std::vector<std::int32_t>{4}));
    EXPECT_EQ(one.x, (std::vector<double>{104.0}));
    EXPECT_EQ(one.y, (std::vector<double>{-4.0}));

    const Output none = Resample(linear, x.data(), y.data(), Range(5, 4));
    EXPECT_EQ(none.reserved, 0);
    EXPECT_TRUE(none.indices.empty());

    const Output three = Resample(category, static_cast<const double*>(nullptr), y.data(), Range(2, 4));
    EXPECT_EQ(three.indices, (std::vector<std::int32_t>{2, 3, 4}));
    EXPECT_EQ(three.x, (std::vector<double>{2.0, 3.0, 4.0})) << "a category axis writes the index, never X";
    EXPECT_EQ(three.y, (std::vector<double>{-2.0, -3.0, -4.0}));
}

TEST_F(PassThrough, NewIndicesFollowTheOldOnesWhileOutputArraysStartAtZero) {
    IntVector indices;
    for (std::int32_t v : {70, 80, 90}) indices.PushBack(v);
    const ResamplingArgs args = Range(2, 4);
    ASSERT_EQ(linear.UpdateIndices(indices, x.data(), y.data(), args), 3);
    double outX[3] = {};
    double outY[3] = {};
    linear.Execute(x.data(), y.data(), outX, outY, indices, args);
    ASSERT_EQ(indices.size(), 6);
    EXPECT_EQ(std::vector<std::int32_t>(indices.data(), indices.data() + 6),
              (std::vector<std::int32_t>{70, 80, 90, 2, 3, 4}));
    EXPECT_EQ(outX[0], 102.0);
    EXPECT_EQ(outY[2], -4.0);
}

TEST_F(PassThrough, ReversedRangeFailsToReserveAndExecuteAloneShortensTheVector) {
    IntVector indices;
    for (std::int32_t v = 0; v < 5; ++v) indices.PushBack(v);
    const std::int32_t capacity = indices.capacity();
    const ResamplingArgs reversed = Range(9, 6);  // count -2
    try {
        linear.UpdateIndices(indices, x.data(), y.data(), reversed);
        ADD_FAILURE() << "a negative count must not reserve";
    } catch (const std::length_error& e) {
        EXPECT_EQ(std::string(e.what()), "vector<T> too long");
    }
    EXPECT_EQ(indices.size(), 5);
    EXPECT_EQ(indices.capacity(), capacity);

    double sink[1] = {kSentinel};
    linear.Execute(x.data(), y.data(), sink, sink, indices, reversed);
    EXPECT_EQ(indices.size(), 3);
    EXPECT_EQ(indices[2], 2);
    EXPECT_EQ(sink[0], kSentinel);

    IntVector single;
    single.PushBack(1);
    EXPECT_THROW(linear.Execute(x.data(), y.data(), sink, sink, single, reversed), std::length_error);
}

TEST_F(PassThrough, RingCountsLogicalIndicesAcrossTheWrap) {
    struct Case {
        std::int32_t start, end, base;
    };
    // Size 8: one pass (slots 5..7); two passes (6,7 then 0..2); a full ring
    // starting at slot 0 (one pass) and one starting at slot 3 (two passes);
    // first == last slot with a range one longer than the ring, and with a
    // single point, where the wrapping branch must still stop at the room.
    for (const Case c : {Case{0, 2, 5}, Case{1, 5, 5}, Case{5, 12, 3}, Case{0, 7, 3}, Case{0, 8, 5}, Case{2, 2, 5}}) {
        SCOPED_TRACE(testing::Message() << "start " << c.start << " end " << c.end << " base " << c.base);
        const ResamplingArgs args = InRing(Range(c.start, c.end), 8, c.base);
        const Output lin = Resample(linearRing, x.data(), y.data(), args);
        const Output cat = Resample(categoryRing, static_cast<const double*>(nullptr), y.data(), args);
        const std::int32_t count = c.end - c.start + 1;
        ASSERT_EQ(lin.indices.size(), static_cast<std::size_t>(count));
        ASSERT_EQ(cat.indices.size(), static_cast<std::size_t>(count));
        for (std::int32_t k = 0; k < count; ++k) {
            const std::int32_t logical = c.start + k;
            const std::int32_t slot = (logical + c.base) % 8;
            const auto at = static_cast<std::size_t>(k);
            EXPECT_EQ(lin.indices[at], logical);
            EXPECT_EQ(lin.x[at], 100.0 + slot);
            EXPECT_EQ(lin.y[at], -slot);
            EXPECT_EQ(cat.indices[at], logical);
            EXPECT_EQ(cat.x[at], logical);
            EXPECT_EQ(cat.y[at], -slot);
        }
    }
}

TEST(PassThroughDateTime, KindBitsDoNotReachTheOutput) {
    GenericArrayOperations<float> ops;
    LinearNoneResamplingMethod<DateTime, float> method{&ops};
    const std::uint64_t ticks = 638400000000000000ull >> 8;  // exact in a double
    const std::vector<DateTime> x{{ticks}, {ticks | (1ull << 63)}, {ticks | (3ull << 62)}, {(1ull << 62) | 7}};
    const std::vector<float> y{1.5f, 2.5f, 3.5f, 4.5f};
    const Output out = Resample(method, x.data(), y.data(), Args(Linear, 0, 3, 0.0, 0.0, 0));
    EXPECT_EQ(out.x, (std::vector<double>{static_cast<double>(ticks), static_cast<double>(ticks),
                                          static_cast<double>(ticks), 7.0}));
    EXPECT_EQ(out.y, (std::vector<double>{1.5, 2.5, 3.5, 4.5}));
}

}  // namespace
}  // namespace qm
