// The search for the point nearest the middle passes over runs of eight with
// one packed test; it must pick exactly what the plain first-wins walk picks.

#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <vector>

#include "resampling/buckets/Midpoint.h"

namespace qm {
namespace {

template <class T>
class NearestToMidTest : public ::testing::Test {};
using MidTypes = ::testing::Types<double, float, std::int64_t, std::uint64_t, std::int32_t, std::int16_t, std::uint8_t>;
TYPED_TEST_SUITE(NearestToMidTest, MidTypes);

TYPED_TEST(NearestToMidTest, MatchesThePlainWalkOnTiesNaNAndInfinities) {
    using T = TypeParam;
    using Lim = std::numeric_limits<T>;
    std::vector<T> alphabet{T(0), T(3), T(4), T(6), T(7), T(10), Lim::max(), Lim::lowest()};
    if constexpr (Lim::has_quiet_NaN) alphabet.insert(alphabet.end(), {Lim::quiet_NaN(), Lim::infinity(), T(-0.0)});
    std::mt19937 rng(7u);
    std::uniform_int_distribution<std::size_t> pick(0, alphabet.size() - 1);
    const double mids[] = {5.0, 0.0, 4.0, 1e300, std::nan(""), HUGE_VAL};
    for (std::int32_t count = 0; count <= 40; ++count) {
        for (std::int32_t trial = 0; trial < 12; ++trial) {
            std::vector<T> y(static_cast<std::size_t>(count) + 3);
            for (T& v : y) v = alphabet[pick(rng)];
            const double mid = mids[trial % 6];
            std::int32_t want = 3;
            double best = DBL_MAX;
            for (std::int32_t i = 3; i < count + 3; ++i) {
                const double d = std::fabs(static_cast<double>(y[static_cast<std::size_t>(i)]) - mid);
                if (best > d) best = d, want = i;
            }
            EXPECT_EQ(NearestToMid(y.data(), 3, count + 3, mid, 3), want) << "count " << count << " mid " << mid;
        }
    }
}

}  // namespace
}  // namespace qm
