#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <vector>

#include <gtest/gtest.h>

#include "model/Int32Arithmetic.h"

namespace qm {
namespace {

// The plain rule: std::round, then INT32_MIN for what lies outside int32.
std::int32_t PlainRoundToInt32(double value) {
    const double rounded = std::round(value);
    return rounded >= -2147483648.0 && rounded <= 2147483647.0 ? static_cast<std::int32_t>(rounded) : INT32_MIN;
}

// Catches a half rounded the wrong way, a value just under a half whose sum
// with the added half rounds up to the next whole number, and the ends of the
// int32 range, on whole numbers of every size up to 2^32 and on the doubles
// on either side of them and of their halves.
TEST(RoundToInt32, RoundsAsStdRoundWithinInt32) {
    constexpr double kInf = std::numeric_limits<double>::infinity();
    std::vector<double> values = {4503599627370495.5, 1e300, -1e300, kInf, -kInf,
                                  std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::denorm_min()};
    std::vector<double> wholes = {0.0, -0.0, 1.0, -1.0, 2147483647.0, 2147483648.0, -2147483648.0, -2147483649.0};
    std::mt19937_64 rng(5);
    for (int k = 0; k < 20000; ++k)
        wholes.push_back(static_cast<double>(static_cast<std::int64_t>(rng() >> (31 + k % 32)) * (k % 2 ? 1 : -1)));
    for (const double whole : wholes)
        for (const double at : {whole, whole + 0.5, whole - 0.5})
            values.insert(values.end(), {at, std::nextafter(at, -kInf), std::nextafter(at, kInf)});
    for (const double value : values) EXPECT_EQ(RoundToInt32(value), PlainRoundToInt32(value)) << std::hexfloat << value;
}

}  // namespace
}  // namespace qm
