// Exact lookups: a linear scan that leaves at the first hit, and a lower
// bound whose last test reads data[lo] even when lo has reached end. Random
// ranges over every type against std::find and std::lower_bound catch an
// off-by-one at either end, a hit outside the range, a later equal found
// first, a compare of part of a 64-bit word (the alphabet holds words that
// differ in their low half only), an equality that is not IEEE's (NaN found,
// -0.0 not taken for 0.0), and a midpoint that wraps (some ranges end at the
// largest int32). What a NaN in sorted data does is shown on its own.

#include <algorithm>
#include <climits>

#include "arrayops/GenericArrayOperations.h"
#include "support/KernelTestSupport.h"

namespace qm {
namespace {

template <class T>
class ExactLookup : public ::testing::Test {
protected:
    GenericArrayOperations<T> ops;
};
TYPED_TEST_SUITE(ExactLookup, ElementTypes);

TYPED_TEST(ExactLookup, RandomRunsMatchFindAndLowerBound) {
    using T = TypeParam;
    const std::vector<T> alphabet = Alphabet<T>();
    std::mt19937 rng(77u);
    auto any = [&](std::size_t n) { return std::uniform_int_distribution<std::size_t>(0, n - 1)(rng); };
    for (int trial = 0; trial < 400; ++trial) {
        const std::size_t n = 1 + any(40);
        std::vector<T> d(n);
        for (T& e : d) e = alphabet[any(alphabet.size())];
        const auto end = static_cast<std::int32_t>(any(n));  // data[end] stays readable
        const auto start = static_cast<std::int32_t>(any(static_cast<std::size_t>(end) + 1));
        const T value = alphabet[any(alphabet.size())];
        // Every fourth range is moved to end at the largest int32.
        const std::int32_t shift = trial % 4 == 3 ? INT_MAX - end : 0;
        const T* const b = d.data() + start;
        const T* const e = d.data() + end;
        const T* hit = std::find(b, e, value);
        EXPECT_EQ(this->ops.FindIndexExactInUnsortedData(d.data() - shift, start + shift, end + shift, value),
                  hit == e ? -1 : static_cast<std::int32_t>(hit - d.data()) + shift);
        for (T& v : d) v = v == v ? v : T(0);  // sorted data holds no NaN
        std::sort(d.begin(), d.end());
        const auto lo = static_cast<std::int32_t>(std::lower_bound(b, e, value) - d.data());
        EXPECT_EQ(this->ops.FindIndexExactInSortedData(d.data() - shift, start + shift, end + shift, value),
                  d[static_cast<std::size_t>(lo)] == value ? lo + shift : -1)
            << "range [" << start << ", " << end << ") of " << n << " moved by " << shift;
    }
}

// A NaN in sorted data sends the search left of it: the 5 is missed, which
// the scan finds.
TEST(ExactLookupValues, NaNInSortedDataHidesWhatLiesRightOfIt) {
    const GenericArrayOperations<double> ops{};
    const double broken[] = {1, 2, NAN, 4, 5};
    EXPECT_EQ(ops.FindIndexExactInSortedData(broken, 0, 5, 5.0), -1);
    EXPECT_EQ(ops.FindIndexExactInUnsortedData(broken, 0, 5, 5.0), 4);
}

}  // namespace
}  // namespace qm
