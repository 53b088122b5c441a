// Exact lookups: a linear scan that leaves at the first hit, and a lower
// bound whose last test reads data[lo] even when lo has reached end. Random
// ranges over every type against std::find and std::lower_bound catch an
// off-by-one at either end, a hit outside the range, a later equal found
// first, and a compare of part of a 64-bit word (the type's extremes share
// their low halves with 0); IEEE equality and a midpoint that must not wrap
// are shown on their own.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <random>
#include <vector>

#include "arrayops/GenericArrayOperations.h"

namespace qm {
namespace {

using ElementTypes = ::testing::Types<double, float, std::int64_t, std::uint64_t, std::int32_t, std::uint32_t,
                                      std::int16_t, std::uint16_t, std::uint8_t, std::int8_t>;

template <class T>
T V(int value) {
    return static_cast<T>(value);
}

template <class T>
class ExactLookup : public ::testing::Test {
protected:
    GenericArrayOperations<T> ops;
};
TYPED_TEST_SUITE(ExactLookup, ElementTypes);

TYPED_TEST(ExactLookup, RandomRunsMatchFindAndLowerBound) {
    using T = TypeParam;
    using L = std::numeric_limits<T>;
    const std::vector<T> alphabet{L::lowest(), V<T>(0), V<T>(1), V<T>(2), V<T>(3), L::max()};
    std::mt19937 rng(77u);
    auto any = [&](std::size_t n) { return std::uniform_int_distribution<std::size_t>(0, n - 1)(rng); };
    for (int trial = 0; trial < 400; ++trial) {
        const std::size_t n = 1 + any(40);
        std::vector<T> d(n);
        for (T& e : d) e = alphabet[any(alphabet.size())];
        const auto end = static_cast<std::int32_t>(any(n));  // data[end] stays readable
        const auto start = static_cast<std::int32_t>(any(static_cast<std::size_t>(end) + 1));
        const T value = alphabet[any(alphabet.size())];
        const T* b = d.data() + start;
        const T* e = d.data() + end;
        const T* hit = std::find(b, e, value);
        EXPECT_EQ(this->ops.FindIndexExactInUnsortedData(d.data(), start, end, value),
                  hit == e ? -1 : static_cast<std::int32_t>(hit - d.data()));
        std::sort(d.begin(), d.end());
        const auto lo = static_cast<std::int32_t>(std::lower_bound(b, e, value) - d.data());
        EXPECT_EQ(this->ops.FindIndexExactInSortedData(d.data(), start, end, value),
                  d[static_cast<std::size_t>(lo)] == value ? lo : -1)
            << "range [" << start << ", " << end << ") of " << n;
    }
}

template <class F>
void CheckFloatingEquality() {
    const GenericArrayOperations<F> ops{};
    const F nan = std::numeric_limits<F>::quiet_NaN();
    const F withNaN[] = {F(1), nan, F(3)};
    EXPECT_EQ(ops.FindIndexExactInUnsortedData(withNaN, 0, 3, nan), -1);
    EXPECT_EQ(ops.FindIndexExactInSortedData(withNaN, 1, 2, nan), -1);
    const F zeros[] = {F(-1), F(-0.0), F(2)};
    EXPECT_EQ(ops.FindIndexExactInUnsortedData(zeros, 0, 3, F(0)), 1);
    EXPECT_EQ(ops.FindIndexExactInSortedData(zeros, 0, 3, F(0)), 1);
    const F positiveZero[] = {F(0)};
    EXPECT_EQ(ops.FindIndexExactInSortedData(positiveZero, 0, 1, F(-0.0)), 0);
    // A NaN in sorted data sends the search left of it: the 5 is missed.
    const F broken[] = {F(1), F(2), nan, F(4), F(5)};
    EXPECT_EQ(ops.FindIndexExactInSortedData(broken, 0, 5, F(5)), -1);
    EXPECT_EQ(ops.FindIndexExactInUnsortedData(broken, 0, 5, F(5)), 4);
}

TEST(ExactLookupValues, FloatingEqualityIsIEEE) {
    CheckFloatingEquality<double>();
    CheckFloatingEquality<float>();
}

// The midpoint of a search that ends at the largest int32 must not wrap.
TEST(ExactLookupValues, SortedSearchNearTheLargestInt32) {
    const GenericArrayOperations<std::int32_t> ops{};
    constexpr std::int32_t kEnd = std::numeric_limits<std::int32_t>::max();
    std::vector<std::int32_t> storage(101);  // the last one is data[kEnd]
    for (std::size_t k = 0; k < storage.size(); ++k) storage[k] = static_cast<std::int32_t>(k);
    const std::int32_t shift = kEnd - 100;
    const std::int32_t* data = storage.data() - shift;
    EXPECT_EQ(ops.FindIndexExactInSortedData(data, shift, kEnd, 37), shift + 37);
    EXPECT_EQ(ops.FindIndexExactInSortedData(data, shift, kEnd, 100), kEnd);
}

}  // namespace
}  // namespace qm
