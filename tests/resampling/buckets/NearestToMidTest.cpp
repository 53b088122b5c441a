// The Mid reduction reads each bucket once and settles a speculative search
// at the end; it must pick exactly what the plain rule picks: a MinMax pass,
// the middle in TY's arithmetic, then the first point strictly nearest to
// it, the piece's start when no distance is below DBL_MAX, and in a wrapped
// ring each piece on its own, the older winning a tie. Compared on every ISA
// the processor has, for every Y type, on data made to break a speculation:
// extremes that arrive late, ramps, sawtooth, steps, ties, NaN, infinities,
// both zeros, sums that overflow Single or wrap 32 and 64 bits. The variant
// of the NaN-aware strategies also has to stop at the first NaN.

#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <type_traits>
#include <vector>

#include "arrayops/GenericArrayOperations.h"
#include "arrayops/simd/IsaChoice.h"
#include "resampling/buckets/BucketRange.h"
#include "resampling/buckets/Reductions.h"

namespace qm {
namespace {

using simd::Isa;

template <class T>
class NearestToMidTest : public ::testing::Test {};
using MidTypes = ::testing::Types<double, float, std::int64_t, std::uint64_t, std::int32_t, std::uint32_t, std::int16_t,
                                  std::uint16_t, std::uint8_t, std::int8_t>;
TYPED_TEST_SUITE(NearestToMidTest, MidTypes);

// The plain rule over the pieces [a, b) of one bucket.
template <class T>
struct Plain {
    const T* y;

    double Mid(const std::vector<std::pair<std::int32_t, std::int32_t>>& pieces) const {
        T max = std::numeric_limits<T>::lowest(), min = std::numeric_limits<T>::max();
        for (auto [a, b] : pieces)
            for (std::int32_t i = a; i < b; ++i) {
                if (y[i] > max) max = y[i];
                if (min > y[i]) min = y[i];
            }
        if constexpr (std::is_floating_point_v<T>) {
            const T sum = max + min;
            return static_cast<double>(sum) * 0.5;
        } else if constexpr (sizeof(T) < 4) {
            return static_cast<double>(std::int32_t{max} + std::int32_t{min}) * 0.5;
        } else {
            using U = std::make_unsigned_t<T>;
            return static_cast<double>(static_cast<T>(static_cast<U>(max) + static_cast<U>(min))) * 0.5;
        }
    }

    double Distance(std::int32_t i, double mid) const { return std::fabs(static_cast<double>(y[i]) - mid); }

    std::int32_t Nearest(std::int32_t a, std::int32_t b, double mid) const {
        double best = DBL_MAX;
        std::int32_t chosen = a;
        for (std::int32_t i = a; i < b; ++i)
            if (best > Distance(i, mid)) best = Distance(i, mid), chosen = i;
        return chosen;
    }

    // A ring bucket from slot start to slot end, wrapping when end <= start.
    std::int32_t Ring(std::int32_t start, std::int32_t end, std::int32_t size) const {
        if (start < end) return Nearest(start, end, Mid({{start, end}}));
        const double mid = Mid({{start, size}, {0, end}});
        const std::int32_t first = Nearest(start, size, mid);
        if (end <= 0) return first;
        const std::int32_t second = Nearest(0, end, mid);
        return Distance(first, mid) > Distance(second, mid) ? second : first;
    }
};

// One of nine shapes, scaled to T; the names say what each is to break.
template <class T>
std::vector<T> Series(std::int32_t n, std::int32_t shape, std::mt19937_64& rng) {
    using L = std::numeric_limits<T>;
    std::vector<T> y(static_cast<std::size_t>(n));
    const double top = std::is_floating_point_v<T> ? 1e6 : static_cast<double>(L::max());
    const double bottom = std::is_floating_point_v<T> ? -1e6 : static_cast<double>(L::lowest());
    std::uniform_real_distribution<double> unit(0.0, 1.0);
    auto in = [&](double v) {  // v in [0, 1] onto T's range
        const double x = bottom + v * (top - bottom);
        if constexpr (std::is_floating_point_v<T>) return static_cast<T>(x);
        else return x >= static_cast<double>(L::max()) ? L::max() : x <= bottom ? L::lowest() : static_cast<T>(x);
    };
    std::vector<T> alphabet{L::lowest(), T(0), T(1), T(2), T(3), T(4), L::max(), static_cast<T>(L::max() - 1)};
    if constexpr (L::has_quiet_NaN)
        alphabet.insert(alphabet.end(), {static_cast<T>(-0.0), L::quiet_NaN(), L::infinity(), -L::infinity(), T(-4)});
    double walk = 0.5;
    for (std::int32_t i = 0; i < n; ++i) {
        const double t = n > 1 ? static_cast<double>(i) / (n - 1) : 0.0;
        T& v = y[static_cast<std::size_t>(i)];
        switch (shape) {
            case 0: v = in(unit(rng)); break;                                  // noise
            case 1: v = alphabet[rng() % alphabet.size()]; break;             // ties and specials
            case 2: v = in(0.25 + 0.5 * t); break;                            // ramp up: the middle moves every stretch
            case 3: v = in(0.75 - 0.5 * t); break;                            // ramp down
            case 4: v = in(0.3 + 0.4 * std::fmod(t * 7.0, 1.0)); break;       // sawtooth
            case 5: v = in(0.1 * static_cast<double>((i / 97) % 9)); break;   // steps: plateaus of ties
            case 6:                                                           // walk with late extremes
                walk = std::fmin(1.0, std::fmax(0.0, walk + (unit(rng) - 0.5) * 0.01));
                v = in(0.25 + 0.5 * walk * t + (unit(rng) - 0.5) * 0.05);
                break;
            case 7: v = static_cast<T>(L::max() - static_cast<T>(rng() % 5)); break;  // sums that wrap or overflow
            default:                                                                   // NaN runs over noise
                v = (i / 13) % 5 == 0 && L::has_quiet_NaN ? L::quiet_NaN() : in(unit(rng));
        }
    }
    return y;
}

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

std::int32_t LengthFor(std::int32_t trial, std::mt19937_64& rng) {
    // Mostly short, some over many stretches, a few past the records'
    // capacity (which then merges neighbours).
    static const std::int32_t kLong[] = {4095, 4096, 4097, 33000, 70000, 300000};
    if (trial % 16 == 15) return kLong[rng() % 6];
    return static_cast<std::int32_t>(rng() % (trial % 4 == 0 ? 3000 : 130));
}

TYPED_TEST(NearestToMidTest, OnePassPicksWhatThePlainRulePicks) {
    using T = TypeParam;
    const GenericArrayOperations<T> ops{};
    std::mt19937_64 rng(11u);
    for (std::int32_t trial = 0; trial < 160; ++trial) {
        const std::int32_t n = LengthFor(trial, rng);
        const std::int32_t shape = trial % 9;
        const std::vector<T> y = Series<T>(n + 1, shape, rng);  // one spare: an empty range reads its start
        const Plain<T> plain{y.data()};
        const std::int32_t start = n > 0 ? static_cast<std::int32_t>(rng() % 5) % n : 0;
        SCOPED_TRACE(::testing::Message() << "n " << n << " shape " << shape << " start " << start);
        const std::int32_t want = plain.Nearest(start, n, plain.Mid({{start, n}}));
        // A ring over the same slots: the bucket from slot s wraps to slot e.
        const std::int32_t size = n > 0 ? n : 1;
        const std::int32_t s = static_cast<std::int32_t>(rng() % static_cast<std::uint64_t>(size));
        const std::int32_t e = static_cast<std::int32_t>(rng() % static_cast<std::uint64_t>(s + 1));
        const std::int32_t wantRing = plain.Ring(s, e, size);
        ForEachIsa([&] {
            EXPECT_EQ(Reduce(Reduction::Mid, ops, y.data(), PlainRange{start, n}, 0.0).position[0], want);
            EXPECT_EQ(Reduce(Reduction::Mid, ops, y.data(), RingRange{s, e, size, 1}, 0.0).position[0], wantRing)
                << "ring " << s << " to " << e;
        });
        if (this->HasFailure()) return;
    }
}

// The NaN-aware variant: the run from a number up to the first NaN (in a
// ring, possibly past the seam), reduced by the plain rule.
TEST(NearestToMidNaNAware, StopsAtTheFirstNaNAndPicksFromTheRun) {
    std::mt19937_64 rng(3u);
    for (std::int32_t trial = 0; trial < 200; ++trial) {
        const std::int32_t n = 1 + LengthFor(trial, rng);
        std::vector<double> y = Series<double>(n, trial % 8, rng);
        for (std::int32_t k = 0; k < 1 + n / 500; ++k) y[rng() % static_cast<std::uint64_t>(n)] = NAN;
        const std::int32_t start = static_cast<std::int32_t>(rng() % static_cast<std::uint64_t>(n));
        if (y[start] != y[start]) y[start] = 1.0;
        // The range to scan: [start, end), or wrapping over the seam to end.
        const bool wrap = trial % 2 == 1;
        const std::int32_t end = wrap ? static_cast<std::int32_t>(rng() % static_cast<std::uint64_t>(start + 1))
                                      : start + 1 + static_cast<std::int32_t>(rng() % static_cast<std::uint64_t>(n - start));
        const std::int32_t slots = wrap ? n - start + end : end - start;
        std::int32_t runEnd = start;
        for (std::int32_t count = 0; count < slots && y[runEnd] == y[runEnd]; ++count)
            if (++runEnd == n && wrap) runEnd = 0;
        const std::int32_t want = Plain<double>{y.data()}.Ring(start, runEnd, n);
        SCOPED_TRACE(::testing::Message() << "n " << n << " start " << start << " end " << end);
        ForEachIsa([&] {
            std::int32_t gotEnd = -2;
            EXPECT_EQ(ReduceRun(Reduction::Mid, y.data(), RingRange{start, end, n, 0}, 0.0, gotEnd).position[0], want);
            EXPECT_EQ(gotEnd, runEnd);
            if (wrap) return;
            EXPECT_EQ(ReduceRun(Reduction::Mid, y.data(), PlainRange{start, end}, 0.0, gotEnd).position[0], want);
            EXPECT_EQ(gotEnd, runEnd);
        });
        if (::testing::Test::HasFailure()) return;
    }
}

}  // namespace
}  // namespace qm
