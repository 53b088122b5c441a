// The six seeded scans, their variants that stop at the first NaN, and the
// search for the first number: on every ISA the processor has, each gives
// exactly what a plain walk gives, on random data full of ties, NaN runs,
// both zeros and both infinities, at lengths around every unroll boundary,
// from unaligned starts, up to an unreadable page, and at positions that end
// at the largest int32. Seeds come from the same values, NaN among them, so
// a seed an equal element replaced or a NaN seed dropped shows too.

#include <climits>
#include <cstdint>
#include <cstring>
#include <numeric>
#include <string>
#include <vector>

#include "arrayops/GenericArrayOperations.h"
#include "support/GuardedArray.h"
#include "support/KernelTestSupport.h"

namespace qm {
namespace {

// A scan's outcome as text, each value with its bits: -0.0 differs from +0.0
// and a NaN that was carried equals itself.
template <class T>
std::string Shown(const Extremes<T>& e) {
    auto bits = [](T v) {
        std::uint64_t b = 0;
        std::memcpy(&b, &v, sizeof v);
        return std::to_string(+v) + "#" + std::to_string(b);
    };
    return bits(e.lo) + " at " + std::to_string(e.loAt) + ", " + bits(e.hi) + " at " + std::to_string(e.hiAt) + ", stop " +
           std::to_string(e.stop);
}

// Every scan from one seed against the plain walk; the forms without an index
// must leave the positions alone. Floating types also run the variants that
// stop at NaN and the search for the first number.
template <class T>
void ExpectPlainWalk(const T* d, std::int32_t s, std::int32_t e, const Extremes<T>& seed) {
    const GenericArrayOperations<T> ops{};
    const Extremes<T> want = Walk(d, s, e, seed), values{want.lo, seed.loAt, want.hi, seed.hiAt, e};
    Extremes<T> indexed = seed, plain = seed, both = seed;
    indexed.stop = plain.stop = both.stop = e;
    ops.Min(d, s, e, indexed.lo, indexed.loAt), ops.Max(d, s, e, indexed.hi, indexed.hiAt);
    ops.Min(d, s, e, plain.lo), ops.Max(d, s, e, plain.hi), ops.MinMax(d, s, e, both.lo, both.hi);
    MinMaxPointSearchResult<T> r{seed.loAt, seed.hiAt, seed.lo, seed.hi};
    ops.MinMax(d, s, e, r);
    // In order: Min and Max with index, the MinMax record, Min and Max, MinMax.
    EXPECT_EQ((std::vector{Shown(indexed), Shown(Extremes<T>{r.Min, r.MinIndex, r.Max, r.MaxIndex, e}), Shown(plain), Shown(both)}),
              (std::vector{Shown(want), Shown(want), Shown(values), Shown(values)}));
    if constexpr (std::is_floating_point_v<T>) {
        const ScanTable<T>& scans = simd::ActiveScans<T>();
        const Extremes<T> toNaN = Walk(d, s, e, seed, true);
        Extremes<T> apart = seed;
        apart.stop = scans.minToNaN(d, s, e, apart.lo, apart.loAt);
        const std::int32_t maxStop = scans.maxToNaN(d, s, e, apart.hi, apart.hiAt);
        r = {seed.loAt, seed.hiAt, seed.lo, seed.hi};
        const std::int32_t stop = scans.minMaxToNaN(d, s, e, r);
        std::int32_t number = s;
        while (number < e && d[number] != d[number]) ++number;
        // In order: Min and Max up to NaN, where Max stopped, the MinMax record up to NaN, the first number.
        EXPECT_EQ((std::vector{Shown(apart), std::to_string(maxStop), Shown(Extremes<T>{r.Min, r.MinIndex, r.Max, r.MaxIndex, stop}),
                               std::to_string(scans.firstNumber(d, s, e))}),
                  (std::vector{Shown(toNaN), std::to_string(toNaN.stop), Shown(toNaN), std::to_string(number)}));
    }
}

template <class T>
class ExtremumScan : public ::testing::Test {};
TYPED_TEST_SUITE(ExtremumScan, ElementTypes);

TYPED_TEST(ExtremumScan, EveryIsaMatchesThePlainWalk) {
    using T = TypeParam;
    using L = std::numeric_limits<T>;
    const std::vector<T> all = Alphabet<T>();
    // Lengths around every unroll boundary of every ISA: a vector of 1 to 64
    // lanes, four chains of them, and stretches of 8 KiB.
    const auto stretch = static_cast<std::int32_t>(8192 / sizeof(T));
    std::vector<std::int32_t> counts(71);
    std::iota(counts.begin(), counts.end(), 0);
    counts.insert(counts.end(), {127, 128, 129, 255, 256, 257, 300, 511, 512, 513, stretch - 1, stretch, stretch + 1,
                                 2 * stretch + 3, 3 * stretch + 77});
    std::mt19937_64 rng(20240611u);
    for (const std::int32_t count : counts) {
        for (std::int32_t trial = 0; trial < 8; ++trial) {
            // In front of the range (an unaligned start) and behind it lie
            // values that would win if they were read; behind those an
            // unreadable page, right at the range's end when there are none.
            const auto start = static_cast<std::int32_t>(rng() % 10), end = start + count, pad = trial / 2 % 4;
            GuardedArray<T> d(static_cast<std::size_t>(end + pad), L::has_infinity ? L::infinity() : L::max());
            for (std::int32_t k = 1; k < end + pad; k += 2) d[k] = L::has_infinity ? -L::infinity() : L::lowest();
            const std::vector<T> values = Series<T>(count, (trial + count) % kShapes, rng);
            std::copy(values.begin(), values.end(), d.data() + start);
            Extremes<T> seed;
            if (trial % 2) seed = {all[rng() % all.size()], trial, all[rng() % all.size()], trial + 1};
            // Once per length the positions end at the largest int32, which they must reach without wrapping.
            const std::int32_t shift = trial == 5 ? INT_MAX - end : 0;
            SCOPED_TRACE(::testing::Message() << "count " << count << " start " << start << " trial " << trial);
            ForEachIsa([&] { ExpectPlainWalk(d.data() - shift, start + shift, end + shift, seed); });
            if (this->HasFailure()) return;
        }
    }
}

}  // namespace
}  // namespace qm
