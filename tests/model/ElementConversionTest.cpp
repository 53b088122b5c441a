// Conversion of every element type to double: the one path by which X is
// read and Y leaves for an output array.

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>

#include "model/ElementTypes.h"

namespace qm {
namespace {

TEST(ElementConversion, DateTimeIgnoresTheKindBits) {
    const std::uint64_t ticks = 638000000000000000ull;
    EXPECT_EQ(ToDouble(DateTime{ticks | (3ull << 62)}), ToDouble(DateTime{ticks}));
    EXPECT_EQ(ToDouble(DateTime{1ull << 63}), 0.0);  // flag only: not negative
    EXPECT_EQ(ToDouble(DateTime{(1ull << 62) | 5}), 5.0);
}

TEST(ElementConversion, TimeSpanConvertsLikeInt64) {
    EXPECT_EQ(ToDouble(TimeSpan{-42}), -42.0);
    EXPECT_EQ(ToDouble(TimeSpan{INT64_MIN}), ToDouble(std::int64_t{INT64_MIN}));
}

TEST(ElementConversion, UnsignedValuesStayPositive) {
    EXPECT_EQ(ToDouble(std::uint64_t{18446744073709551615ull}), 18446744073709551616.0);
    EXPECT_EQ(ToDouble(std::uint32_t{4294967295u}), 4294967295.0);
    EXPECT_EQ(ToDouble(std::uint8_t{200}), 200.0);
}

TEST(ElementConversion, Int64AboveTwoToThe53RoundsOnce) {
    EXPECT_EQ(ToDouble(std::int64_t{9007199254740992}), ToDouble(std::int64_t{9007199254740993}));
}

TEST(ElementConversion, SingleWidensExactlyAndKeepsNaN) {
    EXPECT_EQ(ToDouble(0.1f), static_cast<double>(0.1f));
    EXPECT_NE(ToDouble(0.1f), 0.1);
    EXPECT_TRUE(std::isnan(ToDouble(std::numeric_limits<float>::quiet_NaN())));
    EXPECT_TRUE(std::signbit(ToDouble(-0.0f)));
}

}  // namespace
}  // namespace qm
