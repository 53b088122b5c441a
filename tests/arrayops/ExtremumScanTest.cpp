// The six seeded scans, their variants that stop at the first NaN, and the
// search for the first number: on every ISA the processor has, each gives
// exactly what a plain walk gives, on random data full of ties, NaN runs,
// both zeros and both infinities, at lengths around every unroll boundary,
// from unaligned starts and up to an unreadable page.

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
#include "arrayops/ScanKernels.h"
#include "arrayops/simd/IsaChoice.h"

namespace qm {
namespace {

using ElementTypes = ::testing::Types<double, float, std::int64_t, std::uint64_t, std::int32_t, std::uint32_t,
                                      std::int16_t, std::uint16_t, std::uint8_t, std::int8_t>;
using simd::Isa;

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
    std::int32_t stop;  // where a scan that stops at NaN stopped
};
template <class T>
bool operator==(const Ext<T>& a, const Ext<T>& b) {
    return Same(a.lo, b.lo) && a.loAt == b.loAt && Same(a.hi, b.hi) && a.hiAt == b.hiAt && a.stop == b.stop;
}
template <class T>
void PrintTo(const Ext<T>& e, std::ostream* os) {
    *os << "min " << +e.lo << " at " << e.loAt << ", max " << +e.hi << " at " << e.hiAt << ", stop " << e.stop;
}

// The plain rule, stopping at the first NaN when asked to.
template <class T>
Ext<T> Walk(const T* d, std::int32_t s, std::int32_t e, Ext<T> seed, bool stopAtNaN = false) {
    seed.stop = e;
    for (std::int32_t i = s; i < e; ++i) {
        if (stopAtNaN && d[i] != d[i]) {
            seed.stop = i;
            break;
        }
        if (seed.lo > d[i]) seed.lo = d[i], seed.loAt = i;
        if (d[i] > seed.hi) seed.hi = d[i], seed.hiAt = i;
    }
    return seed;
}

template <class T>
Ext<T> Unseeded() {
    return {std::numeric_limits<T>::max(), -1, std::numeric_limits<T>::lowest(), -1, 0};
}

// All six scans from one seed against the plain walk; the forms without an
// index must leave the positions alone. Floating types also run the
// variants that stop at NaN and the search for the first number.
template <class T>
void ExpectPlainWalk(const T* d, std::int32_t s, std::int32_t e, Ext<T> seed) {
    const GenericArrayOperations<T> ops{};
    Ext<T> want = Walk(d, s, e, seed);
    Ext<T> got = seed;
    got.stop = e;
    ops.Min(d, s, e, got.lo, got.loAt);
    ops.Max(d, s, e, got.hi, got.hiAt);
    EXPECT_EQ(got, want) << "Min and Max with index";
    MinMaxPointSearchResult<T> r{seed.loAt, seed.hiAt, seed.lo, seed.hi};
    ops.MinMax(d, s, e, r);
    EXPECT_EQ((Ext<T>{r.Min, r.MinIndex, r.Max, r.MaxIndex, e}), want) << "MinMax record";
    got = {seed.lo, seed.loAt, seed.hi, seed.hiAt, e};
    ops.Min(d, s, e, got.lo);
    ops.Max(d, s, e, got.hi);
    want.loAt = seed.loAt;
    want.hiAt = seed.hiAt;
    EXPECT_EQ(got, want) << "Min and Max values";
    got = {seed.lo, seed.loAt, seed.hi, seed.hiAt, e};
    ops.MinMax(d, s, e, got.lo, got.hi);
    EXPECT_EQ(got, want) << "MinMax values";

    if constexpr (std::is_floating_point_v<T>) {
        const ScanTable<T>& scans = simd::ActiveScans<T>();
        want = Walk(d, s, e, seed, true);
        got = seed;
        got.stop = scans.minToNaN(d, s, e, got.lo, got.loAt);
        EXPECT_EQ(scans.maxToNaN(d, s, e, got.hi, got.hiAt), want.stop);
        EXPECT_EQ(got, want) << "Min and Max up to NaN";
        r = {seed.loAt, seed.hiAt, seed.lo, seed.hi};
        got.stop = scans.minMaxToNaN(d, s, e, r);
        EXPECT_EQ((Ext<T>{r.Min, r.MinIndex, r.Max, r.MaxIndex, got.stop}), want) << "MinMax up to NaN";
        std::int32_t number = s;
        while (number < e && d[number] != d[number]) ++number;
        EXPECT_EQ(scans.firstNumber(d, s, e), number) << "first number";
    }
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

// Values that catch a wrong comparison: both ends of the type, the sign bit
// of unsigned types, 64-bit words that differ in the low half only, and for
// floating types NaN, both zeros and both infinities.
template <class T>
std::vector<T> Alphabet() {
    using L = std::numeric_limits<T>;
    std::vector<T> a{L::lowest(), T(0), T(1), T(2), T(3), L::max()};
    if constexpr (std::is_integral_v<T>) a.push_back(static_cast<T>(L::max() / 2 + 1));
    if constexpr (std::is_integral_v<T> && sizeof(T) == 8) a.insert(a.end(), {T(0x100000000), T(0x100000001)});
    if constexpr (L::has_quiet_NaN)
        a.insert(a.end(), {static_cast<T>(-0.0), T(-1), L::quiet_NaN(), L::quiet_NaN(), L::infinity(), -L::infinity()});
    return a;
}

// Lengths around every unroll boundary of every ISA: a vector of 1 to 64
// lanes, the short ranges held in registers (up to eight vectors and 64
// elements), four chains of vectors, and stretches.
template <class T>
std::vector<std::int32_t> Counts() {
    std::vector<std::int32_t> counts;
    for (std::int32_t c = 0; c <= 70; ++c) counts.push_back(c);
    counts.insert(counts.end(), {127, 128, 129, 255, 256, 257, 300, 511, 512, 513});
    const std::int32_t stretch = scan::kStretch<T>;
    counts.insert(counts.end(), {stretch - 1, stretch, stretch + 1, 2 * stretch + 3, 3 * stretch + 77});
    return counts;
}

template <class T>
class ExtremumScan : public ::testing::Test {};
TYPED_TEST_SUITE(ExtremumScan, ElementTypes);

TYPED_TEST(ExtremumScan, EveryIsaMatchesThePlainWalk) {
    using T = TypeParam;
    using Lim = std::numeric_limits<T>;
    const std::vector<T> all = Alphabet<T>();
    std::mt19937 rng(20240611u);
    auto pick = [&](const std::vector<T>& from) {
        return from[std::uniform_int_distribution<std::size_t>(0, from.size() - 1)(rng)];
    };
    for (const std::int32_t count : Counts<T>()) {
        for (std::int32_t trial = 0; trial < 8; ++trial) {
            const std::vector<T> few{pick(all), pick(all), pick(all)};  // many ties
            const std::int32_t start = std::uniform_int_distribution<std::int32_t>(0, 9)(rng);  // unaligned
            const std::int32_t end = start + count;
            // Around the range lie values that would win if they were read.
            std::vector<T> d(static_cast<std::size_t>(end + 10));
            for (std::size_t k = 0; k < d.size(); ++k)
                d[k] = Lim::has_infinity ? (k % 2 ? -Lim::infinity() : Lim::infinity())
                                         : (k % 2 ? Lim::lowest() : Lim::max());
            // Four patterns: any of few values; a rare value among one filler,
            // so that an extreme first turns up late; runs of one value (NaN
            // runs among them); a ramp, whose every stretch beats the last.
            std::bernoulli_distribution rare(2.0 / (count + 1));
            std::int32_t runLeft = 0;
            T run{};
            for (std::int32_t k = start; k < end; ++k) {
                T& e = d[static_cast<std::size_t>(k)];
                if (trial % 4 == 0) {
                    e = pick(few);
                } else if (trial % 4 == 1) {
                    e = rare(rng) ? few[0] : few[1];
                } else if (trial % 4 == 2) {
                    if (runLeft-- == 0) run = pick(few), runLeft = std::uniform_int_distribution<std::int32_t>(0, 40)(rng);
                    e = run;
                } else {
                    e = static_cast<T>(trial % 8 == 3 ? (k - start) % 100 : 99 - (k - start) % 100);
                }
            }
            const Ext<T> seed = trial % 2 == 0 ? Unseeded<T>() : Ext<T>{pick(all), trial, pick(all), trial + 1, 0};
            SCOPED_TRACE(::testing::Message() << "count " << count << " start " << start << " trial " << trial);
            ForEachIsa([&] { ExpectPlainWalk(d.data(), start, end, seed); });
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
    if constexpr (std::is_floating_point_v<T>) d[n - 40] = std::numeric_limits<T>::quiet_NaN();
    ForEachIsa([&] {
        for (std::int32_t count = 0; count <= 300 && count < n; ++count) {
            for (const std::int32_t skip : {1, 3}) {  // the last element, then unaligned ends
                const std::int32_t end = n - skip + 1;
                ExpectPlainWalk(d, end - count, end, Unseeded<T>());
            }
        }
    });
    munmap(map, 2 * page);
}

// Positions near the largest int32 are computed without wrapping.
TYPED_TEST(ExtremumScan, PositionsNearTheLargestInt32) {
    using T = TypeParam;
    constexpr std::int32_t kEnd = std::numeric_limits<std::int32_t>::max();
    std::vector<T> storage(3000);
    for (std::size_t k = 0; k < storage.size(); ++k) storage[k] = static_cast<T>((k * 37) % 101);
    const auto count = static_cast<std::int32_t>(storage.size());
    // data[kEnd - count] is storage[0].
    const T* data = storage.data() - (static_cast<std::ptrdiff_t>(kEnd) - count);
    ForEachIsa([&] { ExpectPlainWalk(data, kEnd - count, kEnd, Unseeded<T>()); });
}

// The rules the random data must not hide: strict against the seed, NaN
// seeds never replaced, the first of +0.0 and -0.0 kept.
TEST(ExtremumScanRules, SeedsZerosAndNaN) {
    const GenericArrayOperations<double> ops{};
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double d[] = {1, 1, nan, 0.0, -0.0, 5};
    double value = 1.0;
    std::int32_t at = 7;
    ops.Min(d, 0, 2, value, at);
    EXPECT_EQ(at, 7);  // an equal element never replaces the seed
    ops.Min(d, 0, 6, value, at);
    EXPECT_EQ(at, 3);
    EXPECT_FALSE(std::signbit(value));
    value = nan;
    at = 4;
    ops.Max(d, 0, 6, value, at);
    EXPECT_TRUE(value != value);
    EXPECT_EQ(at, 4);
}

}  // namespace
}  // namespace qm
