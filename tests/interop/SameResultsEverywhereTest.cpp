// One fixed workload through the exports, folded into a digest that every
// platform must reproduce bit for bit: random runs of ten type pairs (every
// data kind and mode, plain and ring storage, NaN gaps, DateTime kind bits,
// 64-bit magnitudes, the extremes of each Y type) and the gathers by index.
// The reference comparisons run on each platform against that platform's own
// C library (log2, pow, fmod, round) and compiler; only a number taken on
// another platform shows that Windows x64 and arm64 (generic scan kernels)
// give what x86-64 gives. The inputs come from mt19937_64 and integer
// arithmetic, which the language fixes. A deliberate change of results
// changes the digest too, and brings its reason and the new number.
//
// Runs may overlap on one engine as long as each has its own vector and
// arrays: eight threads fold the first trials at once on the same engines
// and must each get what one thread gets. A strategy that keeps state of a
// run, a shared scratch buffer or an unsynchronised reference count shows as
// another digest, or as a race under ThreadSanitizer (tools/run-tsan.sh
// builds this file alone).

#include <algorithm>
#include <random>
#include <thread>

#include "InterfaceTestSupport.h"

using namespace qmtest;

namespace {

constexpr std::uint64_t kExpectedDigest = 0x464e1492a4a2abb6;

struct Digest {
    std::uint64_t state = 0xcbf29ce484222325ULL;  // FNV-1a over the bytes
    template <class T>
    void Add(const T& value) {
        for (std::size_t k = 0; k < sizeof(T); ++k) state = (state ^ reinterpret_cast<const unsigned char*>(&value)[k]) * 0x100000001b3ULL;
    }
    template <class T>
    void AddAll(const std::vector<T>& values) { Add(values.size()), std::ranges::for_each(values, [&](const T& v) { Add(v); }); }
    void AddReports() {
        for (const Report& r : Reports()) {
            const std::string m = r.message.value_or("");
            Add(r.code), AddAll(std::vector<char>(m.begin(), m.end()));
        }
        Add(Reports().size()), Reports().clear();
    }
};

struct Draw {
    std::mt19937_64 engine;
    std::int32_t Below(std::int32_t n) { return static_cast<std::int32_t>(engine() % static_cast<std::uint64_t>(n)); }
    bool OneIn(std::int32_t n) { return Below(n) == 0; }
};

// X as the caller stores it, from whole steps of the type's own scale: dates
// around 2000 with their kind bits set at random, 64-bit values far from 0,
// narrow integer types ending in ties at their largest value.
template <class T>
T StoreX(std::int64_t step, Draw& draw) {
    if constexpr (std::is_same_v<T, QmDateTime>) return {static_cast<std::uint64_t>(630000000000000000 + step * 600000000) | draw.engine() << 62};
    else if constexpr (std::is_same_v<T, QmTimeSpan>) return {-(std::int64_t{1} << 60) + step * (std::int64_t{1} << 30)};
    else if constexpr (sizeof(T) == 8 && std::is_integral_v<T>) return static_cast<T>((std::int64_t{1} << 61) + step * 4096);
    else if constexpr (std::is_floating_point_v<T>) return static_cast<T>(static_cast<double>(step) * 0.25 - 300.0);
    else return static_cast<T>(std::min<std::int64_t>(step, std::numeric_limits<T>::max()));
}

// X as the library reads it: a date's ticks without its kind bits.
template <class T>
double AxisValue(T v) {
    if constexpr (std::is_same_v<T, QmDateTime>) return static_cast<double>(static_cast<std::int64_t>(v.Word & 0x3FFFFFFFFFFFFFFFu));
    else if constexpr (std::is_same_v<T, QmTimeSpan>) return static_cast<double>(v.Ticks);
    else return static_cast<double>(v);
}

// Y from a few small values (ties), the type's extremes, any bit pattern, and
// for floating types +-0, +-inf and NaN runs.
template <class T>
std::vector<T> MakeY(Draw& draw, std::int32_t n, bool nan) {
    using L = std::numeric_limits<T>;
    std::vector<T> y;
    for (std::int32_t i = 0; i < n; ++i) {
        const std::int32_t kind = draw.Below(12);
        const T special[] = {L::lowest(), L::max(), T(-0.0), L::infinity(), T(0) - L::infinity()};
        y.push_back(kind < 5 ? special[kind] : kind < 10 ? static_cast<T>(draw.Below(7) - 3)
                                                          : static_cast<T>(static_cast<std::int64_t>(draw.engine()) >> draw.Below(64)));
    }
    for (std::int32_t runs = nan ? draw.Below(5) : 0; runs > 0; --runs)
        for (std::int32_t i = draw.Below(n), last = std::min(n, i + 1 + draw.Below(draw.OneIn(4) ? n : 8)); i < last; ++i)
            y[static_cast<std::size_t>(i)] = L::quiet_NaN();
    return y;
}

// The first `trials` trials of a pair, on the pair's one engine.
template <class P>
void Fold(Digest& digest, std::uint64_t seed, int trials) {
    using TX = typename P::X;
    using TY = typename P::Y;
    static const std::unique_ptr<typename P::Engine, Deleter<P::destroy>> engine(P::make());
    Draw draw{std::mt19937_64(seed)};
    for (int trial = 0; trial < trials; ++trial) {
        const std::int32_t data = draw.Below(3), n = 2 + draw.Below(draw.OneIn(4) ? 3000 : 300);
        std::vector<std::int64_t> steps{draw.Below(2000)};
        for (std::int32_t i = 1; i < n; ++i)
            steps.push_back(steps.back() + (data != UnevenlySpaced ? 1 : draw.OneIn(10) ? 0 : draw.OneIn(15) ? 1 + draw.Below(60) : 1));
        std::vector<TX> x;
        for (const std::int64_t s : steps) x.push_back(StoreX<TX>(s, draw));
        const bool nan = std::is_floating_point_v<TY> && draw.OneIn(2);
        std::vector<TY> y = MakeY<TY>(draw, n, nan), y1 = MakeY<TY>(draw, n, nan);
        Shape s{.data = data, .start = draw.Below(n - 1)};
        s.end = s.start + 1 + draw.Below(n - 1 - s.start);
        auto axis = [&](std::int32_t i) { return data == Category ? i : AxisValue(x[static_cast<std::size_t>(i)]); };
        const double margin = draw.OneIn(3) ? 0.0 : (axis(s.end) - axis(s.start)) * draw.Below(30) / 100.0;
        s.minX = axis(s.start) - margin, s.maxX = axis(s.end) + (draw.OneIn(2) ? margin : 0.0);
        s.width = 1 + draw.Below(draw.OneIn(3) ? 2000 : 120), s.precision = static_cast<std::uint32_t>(draw.Below(3));
        s.hasNaN = nan, s.zeroLine = std::vector<double>{0.0, 1.0, -1.5, NAN}[static_cast<std::size_t>(draw.Below(4))];
        s.size = n, s.resampling = 1 + draw.Below(5);
        if (draw.OneIn(2)) {
            s.size = n + draw.Below(4), s.base = 1 + draw.Below(s.size - 1);
            x = ToRing(x, s.size, s.base), y = ToRing(y, s.size, s.base), y1 = ToRing(y1, s.size, s.base);
        }
        const ArgsPtr args = MakeArgs(s);
        const std::int32_t actual = CSharp_ExtremeResamplingHelpersWrapper_GetActualResampling(args.get());
        digest.Add(actual);
        for (const std::int32_t mode : {actual, 1, 2, 3, 4, 5}) {
            const VectorPtr indices(CSharp_new_IntVector__SWIG_0());
            const Frame f = P::Run(engine.get(), x.data(), y.data(), mode, args.get(), indices.get());
            digest.Add(f.count), digest.AddAll(f.indices), digest.AddAll(f.x), digest.AddAll(f.y), digest.AddReports();
        }
        Ints wanted;  // the caller's own logical indices, X read or replaced by the index
        for (std::int32_t k = draw.Below(20); k > 0; --k) wanted.push_back(draw.Below(n));
        std::vector<double> gx(wanted.size()), gy(wanted.size()), gy1(wanted.size());
        P::copy(x.data(), y.data(), y1.data(), wanted.data(), gx.data(), gy.data(), gy1.data(),
                static_cast<std::int32_t>(wanted.size()), s.size, s.base, draw.Below(2));
        digest.AddAll(gx), digest.AddAll(gy), digest.AddAll(gy1), digest.AddReports();
    }
}

std::uint64_t DigestOf(int trials) {
    Digest digest;
    std::uint64_t seed = 11;
    for (auto fold : {Fold<QM_PAIR_EXPORTS(Double, double, Double, double)>, Fold<QM_PAIR_EXPORTS(Single, float, Single, float)>,
                      Fold<QM_PAIR_EXPORTS(DateTime, QmDateTime, Double, double)>, Fold<QM_PAIR_EXPORTS(DateTime, QmDateTime, Single, float)>,
                      Fold<QM_PAIR_EXPORTS(Int64, int64_t, UInt64, uint64_t)>, Fold<QM_PAIR_EXPORTS(UInt64, uint64_t, Int64, int64_t)>,
                      Fold<QM_PAIR_EXPORTS(TimeSpan, QmTimeSpan, Int16, int16_t)>, Fold<QM_PAIR_EXPORTS(Int32, int32_t, SByte, int8_t)>,
                      Fold<QM_PAIR_EXPORTS(UInt32, uint32_t, Byte, uint8_t)>, Fold<QM_PAIR_EXPORTS(UInt16, uint16_t, UInt32, uint32_t)>})
        fold(digest, seed++, trials);
    return digest.state;
}

class SameResultsEverywhere : public InterfaceTest {};

TEST_F(SameResultsEverywhere, DigestOfRunsAndGathers) {
    const std::uint64_t digest = DigestOf(40);
    EXPECT_EQ(digest, kExpectedDigest) << std::hex << "digest 0x" << digest;
}

TEST_F(SameResultsEverywhere, OverlappingRunsOnSharedEnginesGiveTheSameDigest) {
    const std::uint64_t alone = DigestOf(8);
    std::vector<std::uint64_t> got(8);
    std::vector<std::thread> threads;
    for (std::size_t t = 0; t < got.size(); ++t) threads.emplace_back([&got, t] { got[t] = DigestOf(8); });
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(got, std::vector<std::uint64_t>(got.size(), alone));
}

}  // namespace
