// One fixed workload through the exports, folded into a digest that every
// platform must reproduce bit for bit: whole runs of ten type pairs over
// random series (every data kind and mode, plain and ring storage, NaN gaps,
// DateTime kind bits, the extremes and 64-bit magnitudes of each type), the
// gathers by index, and the seeded scans and lookups of all ten element
// types. The inputs come from mt19937_64 and integer arithmetic, which the
// C++ standard fixes, so they are the same everywhere; what differs between
// platforms is the compiler, the C library (log2, pow, fmod, round) and the
// scan kernels (SSE2, AVX2 or AVX-512 on x86-64, the generic operations on
// arm64). The digest was taken on x86-64 Linux; Windows x64 and Linux arm64
// must give the same. A deliberate change of results changes it as well:
// such a change brings its reason and the new number.

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <random>
#include <string>
#include <type_traits>
#include <vector>

#include "InterfaceTestSupport.h"

using namespace qmtest;

namespace {

constexpr std::uint64_t kExpectedDigest = 0x5544522c151e632c;

// FNV-1a over the little-endian bytes of each value.
class Digest {
public:
    void Add(std::uint64_t v) {
        for (int b = 0; b < 8; ++b) {
            state_ ^= (v >> (8 * b)) & 0xFF;
            state_ *= 0x100000001b3ULL;
        }
    }
    void AddSigned(std::int64_t v) { Add(static_cast<std::uint64_t>(v)); }
    void AddDouble(double v) {
        std::uint64_t bits;
        std::memcpy(&bits, &v, sizeof bits);
        Add(bits);
    }
    void AddText(const std::string& text) {
        Add(text.size());
        for (const char c : text) Add(static_cast<unsigned char>(c));
    }
    template <class T>
    void AddElement(T v) {
        if constexpr (std::is_same_v<T, QmDateTime>)
            Add(v.Word);
        else if constexpr (std::is_same_v<T, QmTimeSpan>)
            AddSigned(v.Ticks);
        else if constexpr (std::is_floating_point_v<T>)
            AddDouble(static_cast<double>(v));
        else if constexpr (std::is_signed_v<T>)
            AddSigned(v);
        else
            Add(v);
    }
    std::uint64_t Value() const { return state_; }

private:
    std::uint64_t state_ = 0xcbf29ce484222325ULL;
};

// Draws built on the raw engine output only.
class Draw {
public:
    explicit Draw(std::uint64_t seed) : engine_(seed) {}
    std::uint64_t Bits() { return engine_(); }
    std::int32_t Below(std::int32_t n) { return static_cast<std::int32_t>(engine_() % static_cast<std::uint64_t>(n)); }
    bool OneIn(std::int32_t n) { return Below(n) == 0; }
    double Unit() { return static_cast<double>(engine_() >> 11) * 0x1.0p-53; }
    double Between(double lo, double hi) { return lo + (hi - lo) * Unit(); }

private:
    std::mt19937_64 engine_;
};

// X as the caller's arrays hold it. Series are laid out in double first,
// whole numbers for the integer types, then stored.
template <class T>
T StoreX(double v, Draw& draw) {
    if constexpr (std::is_same_v<T, QmDateTime>)
        return QmDateTime{static_cast<std::uint64_t>(v) | (draw.Bits() << 62)};  // the kind bits vary
    else if constexpr (std::is_same_v<T, QmTimeSpan>)
        return QmTimeSpan{static_cast<std::int64_t>(v)};
    else
        return static_cast<T>(v);
}

// The largest X a series of a narrow integer type may reach.
template <class T>
constexpr double kTopX = [] {
    if constexpr (std::is_integral_v<T>)
        return static_cast<double>(std::numeric_limits<T>::max());
    else
        return std::numeric_limits<double>::infinity();
}();

// Where an X series may start and how far apart its points lie, in the
// type's own range.
template <class T>
void XScale(Draw& draw, double& first, double& spacing) {
    if constexpr (std::is_same_v<T, QmDateTime>) {
        first = 6.3e17 + static_cast<double>(draw.Below(1 << 30)) * 1e7;  // around the year 2000, in ticks
        spacing = std::vector<double>{1e4, 1e7, 6e8, 3.6e10}[static_cast<std::size_t>(draw.Below(4))];
    } else if constexpr (std::is_same_v<T, QmTimeSpan> || std::is_same_v<T, std::int64_t>) {
        const bool far = draw.OneIn(2);  // far from zero, or steps of a few ticks
        first = far ? -0x1.0p60 + static_cast<double>(draw.Below(1 << 20)) * 0x1.0p40
                    : static_cast<double>(draw.Below(2000000) - 1000000);
        spacing = far ? 0x1.0p30 : 7.0;
    } else if constexpr (std::is_same_v<T, std::uint64_t>) {
        first = 0x1.0p62 + static_cast<double>(draw.Below(1 << 20)) * 0x1.0p40;
        spacing = 0x1.0p12;  // the smallest step a double resolves up there
    } else if constexpr (std::is_floating_point_v<T>) {
        first = draw.Between(-1e4, 1e4);
        spacing = std::vector<double>{0.001, 0.25, 1.0, 3.7}[static_cast<std::size_t>(draw.Below(4))];
    } else {
        first = static_cast<double>(draw.Below(2000));
        spacing = static_cast<double>(1 + draw.Below(20));
    }
}

// Y draws: repeated small values for ties, the type's extremes, spread
// values, and for floating types +-0, +-inf and NaN runs.
template <class T>
std::vector<T> MakeY(Draw& draw, std::int32_t n, bool nan) {
    using L = std::numeric_limits<T>;
    std::vector<T> y;
    for (std::int32_t i = 0; i < n; ++i) {
        const std::int32_t kind = draw.Below(16);
        T v;
        if (kind == 0)
            v = L::lowest();
        else if (kind == 1)
            v = L::max();
        else if (kind < 8)
            v = static_cast<T>(draw.Below(7) - (std::is_signed_v<T> ? 3 : 0));
        else if constexpr (std::is_floating_point_v<T>)
            v = kind == 8    ? static_cast<T>(draw.OneIn(2) ? 0.0 : -0.0)
                : kind == 9  ? (draw.OneIn(2) ? L::infinity() : -L::infinity())
                             : static_cast<T>(draw.Between(-1.0, 1.0) * std::vector<double>{1e-30, 1, 1e6, 1e30}
                                                                          [static_cast<std::size_t>(draw.Below(4))]);
        else
            v = static_cast<T>(draw.Bits());
        y.push_back(v);
    }
    if constexpr (std::is_floating_point_v<T>) {
        for (std::int32_t runs = nan ? draw.Below(5) : 0; runs > 0; --runs) {
            const std::int32_t at = draw.Below(n), length = 1 + draw.Below(draw.OneIn(4) ? n : 8);
            for (std::int32_t i = at; i < n && i < at + length; ++i) y[static_cast<std::size_t>(i)] = L::quiet_NaN();
        }
    }
    return y;
}

// Logical point i at slot (i + base) % size; the slots no point uses hold
// the first point.
template <class T>
std::vector<T> InRing(const std::vector<T>& logical, std::int32_t size, std::int32_t base) {
    std::vector<T> ring(static_cast<std::size_t>(size), logical.front());
    for (std::size_t i = 0; i < logical.size(); ++i)
        ring[(i + static_cast<std::size_t>(base)) % static_cast<std::size_t>(size)] = logical[i];
    return ring;
}

void AddReports(Digest& digest) {
    for (const Report& r : reports) {
        digest.Add(static_cast<std::uint64_t>(r.kind));
        digest.AddSigned(r.code);
        digest.AddText(r.message.value_or("<null>"));
        digest.AddText(r.paramName.value_or("<null>"));
    }
    reports.clear();
}

template <class TX, class TY, auto kNew, auto kDelete, auto kUpdate, auto kExecute, auto kCopy>
struct Pair {
    static void Run(Digest& digest, std::uint64_t seed) {
        Draw draw(seed);
        auto* engine = kNew();
        ArgsPtr args(CSharp_new_ResamplingArgs());
        for (int trial = 0; trial < 40; ++trial) {
            const std::int32_t data = draw.Below(3);  // Linear, Category, UnevenlySpaced
            const std::int32_t n = 2 + draw.Below(draw.OneIn(4) ? 3000 : 300);
            double first = 0, spacing = 0;
            XScale<TX>(draw, first, spacing);
            std::vector<double> xs{first};
            for (std::int32_t i = 1; i < n; ++i) {
                const std::int32_t gap = data != 2 ? 1 : draw.OneIn(10) ? 0 : draw.OneIn(15) ? 1 + draw.Below(60) : 1;
                const double next = xs.back() + spacing * gap;
                xs.push_back(next <= kTopX<TX> ? next : xs.back());  // a narrow type ends in ties
            }
            std::vector<TX> x;
            for (const double v : xs) x.push_back(StoreX<TX>(v, draw));
            const bool nan = std::is_floating_point_v<TY> && draw.OneIn(2);
            std::vector<TY> y = MakeY<TY>(draw, n, nan);

            const std::int32_t start = draw.Below(n - 1);
            const std::int32_t end = start + 1 + draw.Below(n - 1 - start);
            const double lo = data == 1 ? start : xs[static_cast<std::size_t>(start)];
            const double hi = data == 1 ? end : xs[static_cast<std::size_t>(end)];
            const double margin = draw.OneIn(3) ? 0.0 : (hi - lo) * draw.Between(0.0, 0.3);
            CSharp_ResamplingArgs_Data_set(args.get(), data);
            CSharp_ResamplingArgs_StartIndex_set(args.get(), start);
            CSharp_ResamplingArgs_EndIndex_set(args.get(), end);
            CSharp_ResamplingArgs_MinXInclusive_set(args.get(), lo - margin);
            CSharp_ResamplingArgs_MaxXInclusive_set(args.get(), hi + (draw.OneIn(2) ? margin : 0.0));
            CSharp_ResamplingArgs_ViewportWidth_set(args.get(), 1 + draw.Below(draw.OneIn(3) ? 2000 : 120));
            CSharp_ResamplingArgs_ResamplingPrecision_set(args.get(), static_cast<std::uint32_t>(draw.Below(3)));
            CSharp_ResamplingArgs_HasNaN_set(args.get(), nan ? 1 : 0);
            CSharp_ResamplingArgs_ZeroLineY_set(
                args.get(), std::vector<double>{0.0, 1.0, -1.5, std::numeric_limits<double>::quiet_NaN(),
                                                draw.Between(-1e6, 1e6)}[static_cast<std::size_t>(draw.Below(5))]);
            std::int32_t size = n, base = 0;
            if (draw.OneIn(2)) {
                size = n + draw.Below(4);
                base = 1 + draw.Below(size - 1);
                x = InRing(x, size, base);
                y = InRing(y, size, base);
            }
            CSharp_ResamplingArgs_InputSize_set(args.get(), size);
            CSharp_ResamplingArgs_InputBaseIndex_set(args.get(), base);
            CSharp_ResamplingArgs_Resampling_set(args.get(), 1 + draw.Below(5));

            const std::int32_t actual = CSharp_ExtremeResamplingHelpersWrapper_GetActualResampling(args.get());
            digest.AddSigned(actual);
            for (const std::int32_t mode : {actual, 1, 2, 3, 4, 5}) {
                VectorPtr indices(CSharp_new_IntVector__SWIG_0());
                const std::int32_t room = kUpdate(engine, indices.get(), x.data(), y.data(), mode, args.get());
                digest.AddSigned(room);
                AddReports(digest);
                const std::int32_t held = CSharp_IntVector_size(indices.get());
                const std::size_t cells = static_cast<std::size_t>(room > held ? room : held) + 1;
                if (room < 0 || cells > 1000000) continue;
                std::vector<double> outX(cells, -1.0), outY(cells, -1.0);
                kExecute(engine, x.data(), y.data(), outX.data(), outY.data(), indices.get(), mode, args.get());
                AddReports(digest);
                const Ints kept = Contents(indices.get());
                digest.Add(kept.size());
                for (std::size_t k = 0; k < kept.size(); ++k) {
                    digest.AddSigned(kept[k]);
                    digest.AddDouble(outX[k]);
                    digest.AddDouble(outY[k]);
                }
            }

            // The gather of the caller's own logical indices, X read or
            // replaced by the index.
            Ints wanted;
            for (std::int32_t k = draw.Below(20); k > 0; --k) wanted.push_back(draw.Below(n));
            const std::vector<TY> y1 = InRing(MakeY<TY>(draw, n, nan), size, base);
            const auto count = static_cast<std::int32_t>(wanted.size());
            std::vector<double> gx(wanted.size() + 1, -1.0), gy(wanted.size() + 1, -1.0), gy1(wanted.size() + 1, -1.0);
            const bool indexAsX = draw.OneIn(2);
            kCopy(x.data(), y.data(), y1.data(), wanted.data(), gx.data(), gy.data(), gy1.data(), count, size, base,
                 indexAsX ? 1 : 0);
            AddReports(digest);
            for (std::size_t k = 0; k < gx.size(); ++k) {
                digest.AddDouble(gx[k]);
                digest.AddDouble(gy[k]);
                digest.AddDouble(gy1[k]);
            }
        }
        kDelete(engine);
    }
};

#define QM_PAIR_(XW, TX, YW, TY)                                                                               \
    &Pair<TX, TY, &CSharp_new_ExtremeResampler##XW##YW, &CSharp_delete_ExtremeResampler##XW##YW,               \
          &CSharp_ExtremeResampler##XW##YW##_UpdateIndices, &CSharp_ExtremeResampler##XW##YW##_Execute,        \
          &CSharp_ExtremeResampler##XW##YW##_CopyValuesByIndices>::Run
using PairRun = void (*)(Digest&, std::uint64_t);
const PairRun kPairs[] = {
    QM_PAIR_(Double, double, Double, double),       QM_PAIR_(Single, float, Single, float),
    QM_PAIR_(DateTime, QmDateTime, Double, double), QM_PAIR_(DateTime, QmDateTime, Single, float),
    QM_PAIR_(Int64, int64_t, UInt64, uint64_t),     QM_PAIR_(UInt64, uint64_t, Int64, int64_t),
    QM_PAIR_(TimeSpan, QmTimeSpan, Int16, int16_t), QM_PAIR_(Int32, int32_t, SByte, int8_t),
    QM_PAIR_(UInt32, uint32_t, Byte, uint8_t),      QM_PAIR_(UInt16, uint16_t, UInt32, uint32_t),
};
#undef QM_PAIR_

// The seeded scans and the lookups of one element type: seeds from the data
// or the type's extremes, ranges that end anywhere, a sorted copy for the
// sorted lookup.
template <class T, auto kNew, auto kDelete, auto kMinAt, auto kMaxAt, auto kMinMax, auto kFindUnsorted,
          auto kFindSorted>
void Scans(Digest& digest, std::uint64_t seed) {
    Draw draw(seed);
    auto* ops = kNew();
    for (int trial = 0; trial < 60; ++trial) {
        const std::int32_t n = 1 + draw.Below(draw.OneIn(3) ? 5000 : 70);
        std::vector<T> data = MakeY<T>(draw, n, draw.OneIn(2));
        const std::int32_t start = draw.Below(n);
        const std::int32_t end = start + draw.Below(n - start + 1);
        const T seedValue = data[static_cast<std::size_t>(draw.Below(n))];
        T lo = seedValue, hi = seedValue, both0 = seedValue, both1 = seedValue;
        std::int32_t loAt = -1, hiAt = -1;
        kMinAt(ops, data.data(), start, end, &lo, &loAt);
        kMaxAt(ops, data.data(), start, end, &hi, &hiAt);
        kMinMax(ops, data.data(), start, end, &both0, &both1);
        digest.AddElement(lo), digest.AddSigned(loAt), digest.AddElement(hi), digest.AddSigned(hiAt);
        digest.AddElement(both0), digest.AddElement(both1);
        const T probe = data[static_cast<std::size_t>(draw.Below(n))];
        digest.AddSigned(kFindUnsorted(ops, data.data(), start, end, probe));
        std::vector<T> sorted;
        for (const T v : data)
            if (v == v) sorted.push_back(v);
        if (sorted.empty()) continue;
        // -0 before +0, so that the order is one sequence whatever the sort.
        std::sort(sorted.begin(), sorted.end(), [](T a, T b) {
            if constexpr (std::is_floating_point_v<T>)
                return a < b || (a == b && std::signbit(a) && !std::signbit(b));
            else
                return a < b;
        });
        sorted.push_back(sorted.back());  // the sorted lookup may read one element past its range
        const auto m = static_cast<std::int32_t>(sorted.size()) - 1;
        digest.AddSigned(kFindSorted(ops, sorted.data(), 0, m, sorted[static_cast<std::size_t>(draw.Below(m))]));
        AddReports(digest);
    }
    kDelete(ops);
}

#define QM_SCANS_(ctx, W, T, N)                                                                                \
    &Scans<T, &CSharp_new_ArrayOperations##W, &CSharp_delete_ArrayOperations##W,                               \
           &CSharp_ArrayOperations##W##_Min__SWIG_1, &CSharp_ArrayOperations##W##_Max__SWIG_1,                 \
           &CSharp_ArrayOperations##W##_MinMax__SWIG_0, &CSharp_ArrayOperations##W##_FindIndexExactInUnsortedData, \
           &CSharp_ArrayOperations##W##_FindIndexExactInSortedData>,
const PairRun kScans[] = {QM_Y_TYPES(QM_SCANS_, _)};
#undef QM_SCANS_

class SameResultsEverywhere : public InterfaceTest {};

TEST_F(SameResultsEverywhere, DigestOfRunsGathersAndScans) {
    Digest digest;
    std::uint64_t seed = 11;
    for (const PairRun run : kPairs) run(digest, seed++);
    for (const PairRun scan : kScans) scan(digest, seed++);
    EXPECT_EQ(digest.Value(), kExpectedDigest) << std::hex << "digest 0x" << digest.Value();
}

}  // namespace
