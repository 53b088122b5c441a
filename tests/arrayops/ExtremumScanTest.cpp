// The six seeded scans of GenericArrayOperations: strict comparisons against
// the caller's seed, first of equal extremes wins, NaN never wins, and the
// block-skipping loops give exactly what a plain walk gives.

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <limits>
#include <ostream>
#include <random>
#include <vector>

#include "arrayops/GenericArrayOperations.h"

namespace qm {
namespace {

using ElementTypes = ::testing::Types<double, float, std::int64_t, std::uint64_t, std::int32_t, std::uint32_t,
                                      std::int16_t, std::uint16_t, std::uint8_t, std::int8_t>;
using FloatingTypes = ::testing::Types<double, float>;

template <class T>
T V(int value) {
    return static_cast<T>(value);
}

// Bitwise identity: tells -0.0 from +0.0 and accepts a NaN that was carried.
template <class T>
bool Same(T a, T b) {
    return std::memcmp(&a, &b, sizeof(T)) == 0;
}

template <class T>
struct Ext {
    T lo;
    std::int32_t loAt;
    T hi;
    std::int32_t hiAt;
};
template <class T>
bool operator==(const Ext<T>& a, const Ext<T>& b) {
    return Same(a.lo, b.lo) && a.loAt == b.loAt && Same(a.hi, b.hi) && a.hiAt == b.hiAt;
}
template <class T>
void PrintTo(const Ext<T>& e, std::ostream* os) {
    *os << "min " << +e.lo << " at " << e.loAt << ", max " << +e.hi << " at " << e.hiAt;
}

// Runs all six scans from one seed; the forms without an index must leave
// the values of `want` and touch no position.
template <class T>
void ExpectAllSix(const T* d, std::int32_t s, std::int32_t e, Ext<T> seed, Ext<T> want) {
    const GenericArrayOperations<T> ops{};
    Ext<T> got = seed;
    ops.Min(d, s, e, got.lo, got.loAt);
    ops.Max(d, s, e, got.hi, got.hiAt);
    EXPECT_EQ(got, want) << "Min and Max with index";
    MinMaxPointSearchResult<T> r{seed.loAt, seed.hiAt, seed.lo, seed.hi};
    ops.MinMax(d, s, e, r);
    EXPECT_EQ((Ext<T>{r.Min, r.MinIndex, r.Max, r.MaxIndex}), want) << "MinMax record";
    want.loAt = seed.loAt;
    want.hiAt = seed.hiAt;
    got = seed;
    ops.Min(d, s, e, got.lo);
    ops.Max(d, s, e, got.hi);
    EXPECT_EQ(got, want) << "Min and Max values";
    got = seed;
    ops.MinMax(d, s, e, got.lo, got.hi);
    EXPECT_EQ(got, want) << "MinMax values";
}
#define EXPECT_SIX(...)             \
    do {                            \
        SCOPED_TRACE(#__VA_ARGS__); \
        ExpectAllSix(__VA_ARGS__);  \
    } while (0)

template <class T>
Ext<T> Unseeded() {
    return {std::numeric_limits<T>::max(), -1, std::numeric_limits<T>::lowest(), -1};
}

template <class T>
class ExtremumScan : public ::testing::Test {};
TYPED_TEST_SUITE(ExtremumScan, ElementTypes);

TYPED_TEST(ExtremumScan, StrictAgainstTheSeedFirstIndexWins) {
    using T = TypeParam;
    const T d[] = {V<T>(3), V<T>(1), V<T>(1), V<T>(5), V<T>(5), V<T>(2)};
    const Ext<T> fresh = Unseeded<T>();
    EXPECT_SIX(d, 0, 6, fresh, {V<T>(1), 1, V<T>(5), 3});
    EXPECT_SIX(d, 2, 6, fresh, {V<T>(1), 2, V<T>(5), 3});  // positions are absolute
    EXPECT_SIX(d, 5, 6, fresh, {V<T>(2), 5, V<T>(2), 5});  // one element sets both sides
    // A seed as extreme as the best element keeps its own index.
    EXPECT_SIX(d, 0, 6, {V<T>(1), 7, V<T>(5), 8}, {V<T>(1), 7, V<T>(5), 8});
    EXPECT_SIX(d, 0, 6, {V<T>(2), 9, V<T>(4), 9}, {V<T>(1), 1, V<T>(5), 3});
    EXPECT_SIX(d, 0, 1, {V<T>(2), 4, V<T>(4), 6}, {V<T>(2), 4, V<T>(4), 6});
    for (std::int32_t at = 0; at <= 6; ++at) EXPECT_SIX(d, at, at, fresh, fresh);
}

template <class T>
std::vector<T> Alphabet() {
    using L = std::numeric_limits<T>;
    std::vector<T> a{L::lowest(), V<T>(0), V<T>(1), V<T>(2), V<T>(3), L::max()};
    if constexpr (L::has_quiet_NaN)
        a.insert(a.end(),
                 {static_cast<T>(-0.0), V<T>(-1), L::quiet_NaN(), L::quiet_NaN(), L::infinity(), -L::infinity()});
    return a;
}

TYPED_TEST(ExtremumScan, AllSixScansMatchAPlainWalk) {
    using T = TypeParam;
    using Lim = std::numeric_limits<T>;
    const std::vector<T> all = Alphabet<T>();
    std::mt19937 rng(20240611u);
    auto pick = [&](const std::vector<T>& from) {
        return from[std::uniform_int_distribution<std::size_t>(0, from.size() - 1)(rng)];
    };
    std::vector<std::int32_t> counts;
    for (std::int32_t c = 0; c <= 70; ++c) counts.push_back(c);
    // Narrow types test 128 bytes at a time: reach past such groups too.
    counts.insert(counts.end(), {127, 128, 129, 143, 144, 145, 255, 256, 257, 300});
    // Long ranges are first reduced in 4 KiB stretches: one, several, and a rest.
    counts.insert(counts.end(), {520, 1100, 2100, 4200, 9000});
    for (const std::int32_t count : counts) {
        for (std::int32_t trial = 0; trial < 16; ++trial) {
            const std::vector<T> few{pick(all), pick(all), pick(all)};  // many ties
            const std::int32_t start = std::uniform_int_distribution<std::int32_t>(0, 9)(rng);
            const std::int32_t end = start + count;
            // Around the range lie values that would win if they were read.
            std::vector<T> d(static_cast<std::size_t>(end + 10));
            for (std::size_t k = 0; k < d.size(); ++k)
                d[k] = Lim::has_infinity ? (k % 2 ? -Lim::infinity() : Lim::infinity())
                                         : (k % 2 ? Lim::lowest() : Lim::max());
            // Odd trials hide a rare value among one filler, so that an extreme
            // first turns up late, in any block.
            std::bernoulli_distribution rare(2.0 / (count + 1));
            for (std::int32_t k = start; k < end; ++k)
                d[static_cast<std::size_t>(k)] = trial % 2 ? (rare(rng) ? few[0] : few[1]) : pick(few);
            const Ext<T> seed = trial % 3 == 0 ? Unseeded<T>() : Ext<T>{pick(all), trial, pick(all), trial + 1};
            Ext<T> want = seed;  // the plain walk
            for (std::int32_t i = start; i < end; ++i) {
                const T e = d[static_cast<std::size_t>(i)];
                if (want.lo > e) want.lo = e, want.loAt = i;
                if (e > want.hi) want.hi = e, want.hiAt = i;
            }
            SCOPED_TRACE(::testing::Message() << "count " << count << " start " << start << " trial " << trial);
            ExpectAllSix(d.data(), start, end, seed, want);
        }
    }
}

template <class T>
class ExtremumScanFloating : public ::testing::Test {};
TYPED_TEST_SUITE(ExtremumScanFloating, FloatingTypes);

TYPED_TEST(ExtremumScanFloating, NaNNeverWinsZerosKeepTheFirstInfinitiesAreOrdinary) {
    using T = TypeParam;
    using Lim = std::numeric_limits<T>;
    const T nan = Lim::quiet_NaN(), inf = Lim::infinity();
    const T d[] = {V<T>(1), nan, V<T>(0), nan, nan, V<T>(2), V<T>(3)};
    EXPECT_SIX(d, 0, 3, Unseeded<T>(), {V<T>(0), 2, V<T>(1), 0});
    EXPECT_SIX(d, 3, 5, Unseeded<T>(), Unseeded<T>());
    EXPECT_SIX(d, 0, 7, {nan, 4, nan, 6}, {nan, 4, nan, 6});  // a NaN seed is never replaced

    const T pz = V<T>(0), nz = static_cast<T>(-0.0);
    const T positiveFirst[] = {pz, nz};
    const T negativeFirst[] = {nz, pz};
    EXPECT_SIX(positiveFirst, 0, 2, Unseeded<T>(), {pz, 0, pz, 0});
    EXPECT_SIX(negativeFirst, 0, 2, Unseeded<T>(), {nz, 0, nz, 0});
    EXPECT_SIX(negativeFirst, 1, 2, {nz, 3, nz, 4}, {nz, 3, nz, 4});

    const T infs[] = {inf, -inf, -inf, inf};
    EXPECT_SIX(infs, 0, 1, Unseeded<T>(), {Lim::max(), -1, inf, 0});
    EXPECT_SIX(infs, 1, 3, Unseeded<T>(), {-inf, 1, Lim::lowest(), -1});
    EXPECT_SIX(infs, 0, 4, Unseeded<T>(), {-inf, 1, inf, 0});
}

// One differing element among fillers, in the tail, in a block and in a
// skipped group, decided by the comparison of T alone.
template <class T>
void CheckOrdering(T filler, T spike, bool spikeIsMax) {
    for (const std::int32_t n : {5, 40, 300}) {
        for (const std::int32_t at : {n - 1, n / 2, 1}) {
            std::vector<T> d(static_cast<std::size_t>(n), filler);
            d[static_cast<std::size_t>(at)] = spike;
            SCOPED_TRACE(::testing::Message() << "n " << n << " spike at " << at);
            ExpectAllSix(d.data(), 0, n, Unseeded<T>(),
                         spikeIsMax ? Ext<T>{filler, 0, spike, at} : Ext<T>{spike, at, filler, 0});
        }
    }
}

TEST(ExtremumScanOrdering, SignednessDecidesTheComparison) {
    CheckOrdering<std::int64_t>(0x100000001, 0x100000000, false);  // low word only
    CheckOrdering<std::int64_t>(1, -1, false);
    CheckOrdering<std::int64_t>(-0x100000000, 0x7FFFFFFF, true);
    CheckOrdering<std::uint64_t>(5, 0x8000000000000001u, true);
    CheckOrdering<std::int32_t>(1, INT32_MIN, false);
    CheckOrdering<std::uint32_t>(5, 0x80000000u, true);
    CheckOrdering<std::int16_t>(100, -1, false);
    CheckOrdering<std::uint16_t>(100, 0x8000, true);
    CheckOrdering<std::uint8_t>(100, 200, true);
    CheckOrdering<std::int8_t>(100, -56, false);
}

}  // namespace
}  // namespace qm
