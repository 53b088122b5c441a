// The six seeded scans: strict comparisons against the caller's seed, first
// of equal extremes wins, NaN never wins, and on every ISA the processor
// has, the vector loops give exactly what a plain walk gives.

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <cstring>
#include <limits>
#include <ostream>
#include <random>
#include <vector>

#include "arrayops/GenericArrayOperations.h"
#include "arrayops/simd/IsaChoice.h"

namespace qm {
namespace {

using ElementTypes = ::testing::Types<double, float, std::int64_t, std::uint64_t, std::int32_t, std::uint32_t,
                                      std::int16_t, std::uint16_t, std::uint8_t, std::int8_t>;
using FloatingTypes = ::testing::Types<double, float>;
using simd::Isa;

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

// The plain rule.
template <class T>
Ext<T> Walk(const T* d, std::int32_t s, std::int32_t e, Ext<T> seed) {
    for (std::int32_t i = s; i < e; ++i) {
        if (seed.lo > d[i]) seed.lo = d[i], seed.loAt = i;
        if (d[i] > seed.hi) seed.hi = d[i], seed.hiAt = i;
    }
    return seed;
}

template <class T>
Ext<T> Unseeded() {
    return {std::numeric_limits<T>::max(), -1, std::numeric_limits<T>::lowest(), -1};
}

// Runs `body` once under each ISA the processor has, and restores the
// processor's own choice afterwards.
template <class Body>
void ForEachIsa(Body body) {
    const Isa best = simd::ActiveIsa();
    for (const Isa isa : {Isa::Generic, Isa::Sse2, Isa::Avx2, Isa::Avx512}) {
        if (!simd::ForceIsa(isa)) continue;
        SCOPED_TRACE(simd::IsaName(isa));
        body();
    }
    simd::ForceIsa(best);
}

template <class T>
class ExtremumScan : public ::testing::Test {};
TYPED_TEST_SUITE(ExtremumScan, ElementTypes);

TYPED_TEST(ExtremumScan, StrictAgainstTheSeedFirstIndexWins) {
    using T = TypeParam;
    const T d[] = {V<T>(3), V<T>(1), V<T>(1), V<T>(5), V<T>(5), V<T>(2)};
    const Ext<T> fresh = Unseeded<T>();
    ExpectAllSix(d, 0, 6, fresh, {V<T>(1), 1, V<T>(5), 3});
    ExpectAllSix(d, 2, 6, fresh, {V<T>(1), 2, V<T>(5), 3});  // positions are absolute
    ExpectAllSix(d, 5, 6, fresh, {V<T>(2), 5, V<T>(2), 5});  // one element sets both sides
    // A seed as extreme as the best element keeps its own index.
    ExpectAllSix(d, 0, 6, {V<T>(1), 7, V<T>(5), 8}, {V<T>(1), 7, V<T>(5), 8});
    ExpectAllSix(d, 0, 6, {V<T>(2), 9, V<T>(4), 9}, {V<T>(1), 1, V<T>(5), 3});
    for (std::int32_t at = 0; at <= 6; ++at) ExpectAllSix(d, at, at, fresh, fresh);
}

// Values that catch a wrong comparison: both ends of the type, the sign bit
// of unsigned types, 64-bit words that differ in the low half only, and for
// floating types NaN, both zeros and both infinities.
template <class T>
std::vector<T> Alphabet() {
    using L = std::numeric_limits<T>;
    std::vector<T> a{L::lowest(), V<T>(0), V<T>(1), V<T>(2), V<T>(3), L::max()};
    if constexpr (std::is_integral_v<T>) a.push_back(static_cast<T>(L::max() / 2 + 1));
    if constexpr (std::is_integral_v<T> && sizeof(T) == 8) a.insert(a.end(), {T(0x100000000), T(0x100000001)});
    if constexpr (L::has_quiet_NaN)
        a.insert(a.end(),
                 {static_cast<T>(-0.0), V<T>(-1), L::quiet_NaN(), L::quiet_NaN(), L::infinity(), -L::infinity()});
    return a;
}

// Lengths around every unroll boundary of every ISA: a vector of 1 to 64
// lanes, four chains of them, and stretches of 4 KiB.
template <class T>
std::vector<std::int32_t> Counts() {
    std::vector<std::int32_t> counts;
    for (std::int32_t c = 0; c <= 70; ++c) counts.push_back(c);
    counts.insert(counts.end(), {127, 128, 129, 255, 256, 257, 300, 511, 512, 513});
    const auto stretch = static_cast<std::int32_t>(4096 / sizeof(T));
    counts.insert(counts.end(), {stretch - 1, stretch, stretch + 1, 2 * stretch + 3, 3 * stretch + 77});
    return counts;
}

TYPED_TEST(ExtremumScan, EveryIsaMatchesThePlainWalk) {
    using T = TypeParam;
    using Lim = std::numeric_limits<T>;
    const std::vector<T> all = Alphabet<T>();
    std::mt19937 rng(20240611u);
    auto pick = [&](const std::vector<T>& from) {
        return from[std::uniform_int_distribution<std::size_t>(0, from.size() - 1)(rng)];
    };
    for (const std::int32_t count : Counts<T>()) {
        for (std::int32_t trial = 0; trial < 6; ++trial) {
            const std::vector<T> few{pick(all), pick(all), pick(all)};  // many ties
            const std::int32_t start = std::uniform_int_distribution<std::int32_t>(0, 9)(rng);  // unaligned
            const std::int32_t end = start + count;
            // Around the range lie values that would win if they were read.
            std::vector<T> d(static_cast<std::size_t>(end + 10));
            for (std::size_t k = 0; k < d.size(); ++k)
                d[k] = Lim::has_infinity ? (k % 2 ? -Lim::infinity() : Lim::infinity())
                                         : (k % 2 ? Lim::lowest() : Lim::max());
            // Three patterns: any of few values; a rare value among one filler,
            // so that an extreme first turns up late; runs of one value (NaN
            // runs among them).
            std::bernoulli_distribution rare(2.0 / (count + 1));
            std::int32_t runLeft = 0;
            T run{};
            for (std::int32_t k = start; k < end; ++k) {
                T& e = d[static_cast<std::size_t>(k)];
                if (trial % 3 == 0) {
                    e = pick(few);
                } else if (trial % 3 == 1) {
                    e = rare(rng) ? few[0] : few[1];
                } else {
                    if (runLeft-- == 0) run = pick(few), runLeft = std::uniform_int_distribution<std::int32_t>(0, 40)(rng);
                    e = run;
                }
            }
            const Ext<T> seed = trial % 2 == 0 ? Unseeded<T>() : Ext<T>{pick(all), trial, pick(all), trial + 1};
            const Ext<T> want = Walk(d.data(), start, end, seed);
            SCOPED_TRACE(::testing::Message() << "count " << count << " start " << start << " trial " << trial);
            ForEachIsa([&] { ExpectAllSix(d.data(), start, end, seed, want); });
            if (this->HasFailure()) return;
        }
    }
}

// A range that ends one element before an unreadable page: a load past the
// range would fault.
TYPED_TEST(ExtremumScan, NoLoadPassesTheEndOfTheRange) {
    using T = TypeParam;
    const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    void* map = mmap(nullptr, 2 * page, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    ASSERT_NE(map, MAP_FAILED);
    ASSERT_EQ(mprotect(static_cast<char*>(map) + page, page, PROT_NONE), 0);
    T* d = static_cast<T*>(map);
    const auto n = static_cast<std::int32_t>(page / sizeof(T));
    std::mt19937 rng(5u);
    for (std::int32_t k = 0; k < n; ++k) d[k] = static_cast<T>(rng() % 97);
    ForEachIsa([&] {
        for (std::int32_t count = 0; count <= 300 && count < n; ++count) {
            for (const std::int32_t skip : {1, 3}) {  // the last element, then unaligned ends
                const std::int32_t end = n - skip + 1;
                const std::int32_t start = end - count;
                ExpectAllSix(d, start, end, Unseeded<T>(), Walk(d, start, end, Unseeded<T>()));
            }
        }
    });
    munmap(map, 2 * page);
}

// Positions near the largest int32 are computed without wrapping.
TYPED_TEST(ExtremumScan, PositionsNearTheLargestInt32) {
    using T = TypeParam;
    constexpr std::int32_t kEnd = std::numeric_limits<std::int32_t>::max();
    std::vector<T> storage(700);
    for (std::size_t k = 0; k < storage.size(); ++k) storage[k] = static_cast<T>((k * 37) % 101);
    const auto count = static_cast<std::int32_t>(storage.size());
    // data[kEnd - count] is storage[0].
    const T* data = storage.data() - (static_cast<std::ptrdiff_t>(kEnd) - count);
    const Ext<T> local = Walk(storage.data(), 0, count, Unseeded<T>());
    const std::int32_t shift = kEnd - count;
    ForEachIsa([&] {
        ExpectAllSix(data, shift, kEnd, Unseeded<T>(), {local.lo, local.loAt + shift, local.hi, local.hiAt + shift});
    });
}

template <class T>
class ExtremumScanFloating : public ::testing::Test {};
TYPED_TEST_SUITE(ExtremumScanFloating, FloatingTypes);

TYPED_TEST(ExtremumScanFloating, NaNNeverWinsZerosKeepTheFirstInfinitiesAreOrdinary) {
    using T = TypeParam;
    using Lim = std::numeric_limits<T>;
    const T nan = Lim::quiet_NaN(), inf = Lim::infinity();
    const T d[] = {V<T>(1), nan, V<T>(0), nan, nan, V<T>(2), V<T>(3)};
    ExpectAllSix(d, 0, 3, Unseeded<T>(), {V<T>(0), 2, V<T>(1), 0});
    ExpectAllSix(d, 3, 5, Unseeded<T>(), Unseeded<T>());
    ExpectAllSix(d, 0, 7, {nan, 4, nan, 6}, {nan, 4, nan, 6});  // a NaN seed is never replaced

    const T pz = V<T>(0), nz = static_cast<T>(-0.0);
    const T positiveFirst[] = {pz, nz};
    const T negativeFirst[] = {nz, pz};
    ExpectAllSix(positiveFirst, 0, 2, Unseeded<T>(), {pz, 0, pz, 0});
    ExpectAllSix(negativeFirst, 0, 2, Unseeded<T>(), {nz, 0, nz, 0});
    ExpectAllSix(negativeFirst, 1, 2, {nz, 3, nz, 4}, {nz, 3, nz, 4});

    const T infs[] = {inf, -inf, -inf, inf};
    ExpectAllSix(infs, 0, 1, Unseeded<T>(), {Lim::max(), -1, inf, 0});
    ExpectAllSix(infs, 1, 3, Unseeded<T>(), {-inf, 1, Lim::lowest(), -1});
}

}  // namespace
}  // namespace qm
