// The Mid reduction reads each bucket once and settles a speculative search
// at the end; it must pick exactly what the plain rule picks: a MinMax pass,
// the middle in TY's arithmetic, then the first point strictly nearest to
// it, the piece's start when no distance is below DBL_MAX, and in a wrapped
// ring each piece on its own, the older winning a tie. Compared on every ISA
// the processor has, for every Y type, on data made to break a speculation:
// extremes that arrive late, ramps, sawtooth, runs, ties, NaN, infinities,
// both zeros, sums that overflow Single or wrap 32 and 64 bits. The variant
// of the NaN-aware strategies also has to stop at the first NaN, in a ring
// possibly past the seam.

#include <algorithm>

#include "arrayops/GenericArrayOperations.h"
#include "resampling/buckets/BucketRange.h"
#include "resampling/buckets/Reductions.h"
#include "support/KernelTestSupport.h"

namespace qm {
namespace {

template <class T>
class NearestToMidTest : public ::testing::Test {};
TYPED_TEST_SUITE(NearestToMidTest, ElementTypes);

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

// Mostly short, some over many stretches, a few past the records' capacity
// (which then merges neighbours).
std::int32_t LengthFor(std::int32_t trial, std::mt19937_64& rng) {
    static const std::int32_t kLong[] = {4095, 4096, 4097, 33000, 70000, 300000};
    if (trial % 16 == 15) return kLong[rng() % 6];
    return static_cast<std::int32_t>(rng() % (trial % 4 == 0 ? 3000 : 130));
}

TYPED_TEST(NearestToMidTest, OnePassPicksWhatThePlainRulePicks) {
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
        SCOPED_TRACE(::testing::Message() << "n " << n << " shape " << trial % kShapes << " start " << start << " ring " << s << " to " << e);
        const std::int32_t want = PlainMid(y.data(), start, n), wantRing = PlainMid(y.data(), s, e, size);
        ForEachIsa([&] {
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
            ForEachIsa([&] {
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

}  // namespace
}  // namespace qm
