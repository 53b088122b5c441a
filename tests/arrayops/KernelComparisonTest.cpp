// The kernels against plain versions of their rules (support/PlainRules.h),
// on every ISA the processor has, for every element type, on data made to
// break a vectorised scan (ties, NaN runs, both zeros and infinities, late
// extremes, ramps, runs of one value, sums that overflow or wrap). Faults
// caught: a scan that differs from the plain walk in value, index, tie or
// seed (lengths around every unroll boundary, unaligned starts, the
// streaming scans whose loads straddle lines, ranges that end at an
// unreadable page or at the largest int32); a Mid pick other than
// the plain rule's (the first strictly nearest point to the middle formed in
// TY, each piece of a wrapped ring on its own, the NaN-aware variant stopping
// at the first NaN, past the seam too); a lookup that differs from std::find
// or std::lower_bound (an off-by-one at either end, a later equal found first,
// half a 64-bit word compared, a non-IEEE equality, a midpoint that wraps).

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <numeric>
#include <random>
#include <string>
#include <vector>

#include "arrayops/GenericArrayOperations.h"
#include "arrayops/ScanKernels.h"
#include "arrayops/simd/IsaChoice.h"
#include "model/CacheSizes.h"
#include "resampling/buckets/BucketRange.h"
#include "resampling/buckets/Reductions.h"
#include "support/GuardedArray.h"
#include "support/PlainRules.h"

namespace qm {
namespace {

using namespace qmtest;

template <class T>
class Kernels : public ::testing::Test {};
using ElementTypes = ::testing::Types<double, float, std::int64_t, std::uint64_t, std::int32_t, std::uint32_t,
                                      std::int16_t, std::uint16_t, std::uint8_t, std::int8_t>;
TYPED_TEST_SUITE(Kernels, ElementTypes);

// Runs `body` once under each ISA the processor has, and restores the
// processor's own choice afterwards.
template <class Body>
void ForEachIsa(Body body) {
    const simd::Isa best = simd::ActiveIsa();
    for (const simd::Isa isa : {simd::Isa::Generic, simd::Isa::Sse2, simd::Isa::Avx2, simd::Isa::Avx512}) {
        if (!simd::ForceIsa(isa)) continue;
        SCOPED_TRACE(simd::IsaName(isa));
        body();
    }
    simd::ForceIsa(best);
}

// Runs `body` under each ISA with every Mid range searched the way of long
// ones (against the middle as it moves) and then the way of those that stay
// in cache, whatever this processor's cache makes of each length.
template <class Body>
void ForEachIsaAndMidPath(Body body) {
    for (const std::int64_t cachedBytes : {std::int64_t{1}, std::int64_t{1} << 40}) {
        ForceMidCachedBytes(cachedBytes);
        SCOPED_TRACE(cachedBytes == 1 ? "speculating" : "from cache");
        ForEachIsa(body);
    }
    ForceMidCachedBytes(0);
}

// Values that catch a wrong comparison: the type's ends and neighbours, the
// unsigned sign bit, 64-bit words alike in their high half, NaN, +-0, +-inf.
template <class T>
std::vector<T> Alphabet() {
    using L = std::numeric_limits<T>;
    std::vector<T> a{L::lowest(), T(0), T(1), T(2), T(3), L::max(), static_cast<T>(L::max() - 1)};
    if constexpr (std::is_integral_v<T>) a.push_back(static_cast<T>(L::max() / 2 + 1));
    if constexpr (std::is_integral_v<T> && sizeof(T) == 8) a.insert(a.end(), {T(0x100000000), T(0x100000001)});
    if constexpr (L::has_quiet_NaN) a.insert(a.end(), {T(-0.0), T(-1), L::quiet_NaN(), L::infinity(), -L::infinity()});
    return a;
}

// n values in one of kShapes shapes, scaled to T; each names what it is to
// break.
constexpr std::int32_t kShapes = 10;
template <class T>
std::vector<T> Series(std::int32_t n, std::int32_t shape, std::mt19937_64& rng) {
    using L = std::numeric_limits<T>;
    const std::vector<T> all = Alphabet<T>();
    T few[3] = {all[rng() % all.size()], all[rng() % all.size()], all[rng() % all.size()]};
    // Often both zeros, so that a tie between them shows which sign is kept.
    if (!L::is_integer && rng() % 2 == 0) few[0] = T(0), few[1] = -T(0);
    std::uniform_real_distribution<double> unit(0.0, 1.0);
    const double bottom = L::is_integer ? static_cast<double>(L::lowest()) : -1e6, top = L::is_integer ? static_cast<double>(L::max()) : 1e6;
    auto in = [&](double v) {  // v in [0, 1] onto T's range (floating types: +-1e6)
        const double x = bottom + v * (top - bottom);
        if constexpr (L::is_integer) return x >= top ? L::max() : x <= bottom ? L::lowest() : static_cast<T>(x);
        else return static_cast<T>(x);
    };
    std::vector<T> y(static_cast<std::size_t>(n));
    double walk = 0.5;
    T run = few[0];
    for (std::int32_t i = 0; i < n; ++i) {
        const double t = n > 1 ? static_cast<double>(i) / (n - 1) : 0.0;
        T& v = y[static_cast<std::size_t>(i)];
        switch (shape) {
            case 0: v = in(unit(rng)); break;                                // noise
            case 1: v = few[rng() % 3]; break;                              // ties, of specials too
            case 2: v = rng() % static_cast<std::uint64_t>(n + 1) < 2 ? few[0] : few[1]; break;  // an extreme that turns up late
            case 3: v = in(0.25 + 0.5 * t); break;                          // ramp up: every stretch beats the last
            case 4: v = in(0.75 - 0.5 * t); break;                          // ramp down
            case 5: v = in(0.3 + 0.4 * std::fmod(t * 7.0, 1.0)); break;     // sawtooth
            case 6: v = run = rng() % 40 == 0 ? few[rng() % 3] : run; break;  // runs of one value, NaN runs among them
            case 7:                                                         // walk with late extremes
                walk = std::fmin(1.0, std::fmax(0.0, walk + (unit(rng) - 0.5) * 0.01));
                v = in(0.25 + 0.5 * walk * t + (unit(rng) - 0.5) * 0.05);
                break;
            case 8: v = static_cast<T>(L::max() - static_cast<T>(rng() % 5)); break;  // sums that wrap or overflow
            default: v = (i / 13) % 5 == 0 && L::has_quiet_NaN ? L::quiet_NaN() : in(unit(rng));  // NaN runs over noise
        }
    }
    return y;
}

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
    // The streaming scans, whose loads straddle cache lines.
    const ScanTable<T>& scans = simd::ActiveScans<T>();
    Extremes<T> streamed = seed;
    streamed.stop = e;
    scans.minStreaming(d, s, e, streamed.lo, streamed.loAt), scans.maxStreaming(d, s, e, streamed.hi, streamed.hiAt);
    MinMaxPointSearchResult<T> streamedRecord{seed.loAt, seed.hiAt, seed.lo, seed.hi};
    scans.minMaxStreaming(d, s, e, streamedRecord);
    const auto shown = [](const MinMaxPointSearchResult<T>& x, std::int32_t stop) {
        return Shown(Extremes<T>{x.Min, x.MinIndex, x.Max, x.MaxIndex, stop});
    };
    // In order: Min and Max with index, the MinMax record, Min and Max, MinMax, and the streaming ones.
    EXPECT_EQ((std::vector{Shown(indexed), shown(r, e), Shown(plain), Shown(both), Shown(streamed), shown(streamedRecord, e)}),
              (std::vector{Shown(want), Shown(want), Shown(values), Shown(values), Shown(want), Shown(want)}));
    // The range cut into adjacent ranges of one batch, each scanned from the
    // seed: of one length (whole groups of them) or of lengths from 1 to 70.
    std::vector<std::int32_t> bounds{s};
    const std::int32_t first = 1 + (e - s) % 64;
    for (std::int32_t k = 0; bounds.back() < e; ++k) {
        const std::int32_t piece = s % 2 == 0 ? first : 1 + (first + 37 * k) % 70;
        bounds.push_back(e - bounds.back() > piece ? bounds.back() + piece : e);
    }
    const auto count = static_cast<std::int32_t>(bounds.size()) - 1;
    std::vector<MinMaxPointSearchResult<T>> batch(static_cast<std::size_t>(count), {seed.loAt, seed.hiAt, seed.lo, seed.hi});
    scans.minMaxEach(d, bounds.data(), count, batch.data());
    std::vector<std::string> got, plainBatch;
    for (std::int32_t k = 0; k < count; ++k) {
        got.push_back(shown(batch[static_cast<std::size_t>(k)], bounds[k + 1]));
        plainBatch.push_back(Shown(Walk(d, bounds[k], bounds[k + 1], seed)));
    }
    EXPECT_EQ(got, plainBatch);
    if constexpr (std::is_floating_point_v<T>) {
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

TYPED_TEST(Kernels, ScansMatchThePlainWalk) {
    using T = TypeParam;
    using L = std::numeric_limits<T>;
    const std::vector<T> all = Alphabet<T>();
    // Lengths around every unroll boundary of every ISA: vectors of 1 to 64
    // lanes, short ranges held in registers, four chains, and stretches,
    // with a last piece short enough to join the stretch before it or not.
    const std::int32_t stretch = scan::kStretch<T>, joined = stretch + stretch / 4;
    std::vector<std::int32_t> counts(71);
    std::iota(counts.begin(), counts.end(), 0);
    counts.insert(counts.end(), {127, 128, 129, 255, 256, 257, 300, 511, 512, 513, stretch - 1, stretch, stretch + 1,
                                 joined, joined + 1, 2 * stretch + 3, 3 * stretch + 77});
    std::mt19937_64 rng(20240611u);
    for (const std::int32_t count : counts) {
        for (std::int32_t trial = 0; trial < 8; ++trial) {
            // Around the range (from an unaligned start) lie values that would
            // win if read, and behind them an unreadable page.
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

// The plain rule over [start, end), or with a ring's size over the ring
// bucket from slot start that wraps to slot end when end <= start.
template <class T>
std::int32_t PlainMid(const T* y, std::int32_t start, std::int32_t end, std::int32_t size = 0) {
    const bool wraps = size > 0 && end <= start;
    const Extremes<T> m = wraps ? Walk(y, 0, end, Walk(y, start, size)) : Walk(y, start, end);
    const double mid = Midpoint(m.hi, m.lo);
    const std::int32_t first = Nearest(y, start, wraps ? size : end, mid);
    if (!wraps || end <= 0) return first;
    const std::int32_t second = Nearest(y, 0, end, mid);
    return std::fabs(static_cast<double>(y[first]) - mid) > std::fabs(static_cast<double>(y[second]) - mid) ? second : first;
}

// Mostly short, some over many stretches or past the records' capacity.
std::int32_t LengthFor(std::int32_t trial, std::mt19937_64& rng) {
    static const std::int32_t kLong[] = {4095, 4096, 4097, 33000, 70000, 300000};
    if (trial % 16 == 15) return kLong[rng() % 6];
    return static_cast<std::int32_t>(rng() % (trial % 4 == 0 ? 3000 : 130));
}

// Mid reductions: a bucket and a ring bucket over the same slots.
TYPED_TEST(Kernels, MidPicksWhatThePlainRulePicks) {
    using T = TypeParam;
    const GenericArrayOperations<T> ops{};
    std::mt19937_64 rng(11u);
    for (std::int32_t trial = 0; trial < 160; ++trial) {
        const std::int32_t n = LengthFor(trial, rng), size = std::max(n, 1);
        std::vector<T> y = Series<T>(n + 1, trial % kShapes, rng);  // one spare: an empty range reads its start
        // A plain range from a few slots in, and a ring bucket over the same
        // slots from slot s to slot e, which wraps when e <= s.
        const auto start = n > 0 ? static_cast<std::int32_t>(rng() % 5 % static_cast<std::uint64_t>(n)) : 0;
        const auto s = static_cast<std::int32_t>(rng() % static_cast<std::uint64_t>(size));
        const auto e = static_cast<std::int32_t>(rng() % static_cast<std::uint64_t>(size + 1));
        if (std::numeric_limits<T>::has_quiet_NaN && trial % 2)
            for (std::int32_t k = 0; k <= n / 500; ++k) y[rng() % y.size()] = std::numeric_limits<T>::quiet_NaN();
        // The middle itself among the last elements, which whole vectors
        // leave to the element loops.
        if (trial % 3 == 1 && n > start) {
            const Extremes<T> m = Walk(y.data(), start, n);
            if (m.lo <= m.hi) y[n - 1 - static_cast<std::int32_t>(rng() % 16) % (n - start)] = static_cast<T>(Midpoint(m.hi, m.lo));
        }
        SCOPED_TRACE(::testing::Message() << "n " << n << " shape " << trial % kShapes << " start " << start << " ring " << s << " to " << e);
        const std::int32_t want = PlainMid(y.data(), start, n), wantRing = PlainMid(y.data(), s, e, size);
        ForEachIsaAndMidPath([&] {
            EXPECT_EQ(Reduce(Reduction::Mid, ops, y.data(), PlainRange{start, n}, 0.0).position[0], want);
            EXPECT_EQ(Reduce(Reduction::Mid, ops, y.data(), RingRange{s, e, size, 1}, 0.0).position[0], wantRing) << "ring";
        });
        if constexpr (std::is_floating_point_v<T>) {
            // The NaN-aware variant reduces the run from a number up to the
            // first NaN, which in a wrapped ring may lie past the seam.
            if (y[start] != y[start]) y[start] = 1;
            if (y[s] != y[s]) y[s] = 1;
            std::int32_t runEnd = start, ringRunEnd = s;
            while (runEnd < n && y[runEnd] == y[runEnd]) ++runEnd;
            for (std::int32_t k = 0, slots = s < e ? e - s : size - s + e; k < slots && y[ringRunEnd] == y[ringRunEnd]; ++k)
                if (++ringRunEnd == size && e <= s) ringRunEnd = 0;
            const std::int32_t wantRun = PlainMid(y.data(), start, runEnd), wantRingRun = PlainMid(y.data(), s, ringRunEnd, size);
            ForEachIsaAndMidPath([&] {
                std::int32_t stop = -2;
                EXPECT_EQ(ReduceRun(Reduction::Mid, y.data(), RingRange{s, e, size, 0}, 0.0, stop).position[0], wantRingRun) << "ring";
                EXPECT_EQ(stop, ringRunEnd) << "ring";
                if (n == 0) return;
                EXPECT_EQ(ReduceRun(Reduction::Mid, y.data(), PlainRange{start, n}, 0.0, stop).position[0], wantRun);
                EXPECT_EQ(stop, runEnd);
            });
        }
        if (this->HasFailure()) return;
    }
}

TYPED_TEST(Kernels, LookupsMatchFindAndLowerBound) {
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
        EXPECT_EQ(GenericArrayOperations<T>{}.FindIndexExactInUnsortedData(d.data() - shift, start + shift, end + shift, value),
                  hit == e ? -1 : static_cast<std::int32_t>(hit - d.data()) + shift);
        for (T& v : d) v = v == v ? v : T(0);  // sorted data holds no NaN
        std::sort(d.begin(), d.end());
        const auto lo = static_cast<std::int32_t>(std::lower_bound(b, e, value) - d.data());
        EXPECT_EQ(GenericArrayOperations<T>{}.FindIndexExactInSortedData(d.data() - shift, start + shift, end + shift, value),
                  d[static_cast<std::size_t>(lo)] == value ? lo + shift : -1)
            << "range [" << start << ", " << end << ") of " << n << " moved by " << shift;
    }
}

// A NaN in sorted data sends the search left of it: the 5 is missed, which
// the scan finds.
TEST(KernelRules, NaNInSortedDataHidesWhatLiesRightOfIt) {
    const GenericArrayOperations<double> ops{};
    const double broken[] = {1, 2, NAN, 4, 5};
    EXPECT_EQ(ops.FindIndexExactInSortedData(broken, 0, 5, 5.0), -1);
    EXPECT_EQ(ops.FindIndexExactInUnsortedData(broken, 0, 5, 5.0), 4);
}

}  // namespace
}  // namespace qm
