#pragma once
// Shared by the resampling suites: building a run's arguments, random valid
// runs, laying a series into a ring, and running a strategy (or the engine)
// the way the caller does.

#include <gtest/gtest.h>

#include <cstdint>
#include <cmath>
#include <limits>
#include <random>
#include <vector>

#include "interop/IntVector.h"
#include "model/ResamplingArgs.h"
#include "resampling/ExtremeResampler.h"
#include "resampling/ResamplingMethod.h"
#include "resampling/buckets/BucketOutput.h"

namespace qm::drivertest {

inline constexpr ResamplingMode kBucketModes[] = {MinMax, Min, Max, Mid, MinOrMax};
inline constexpr ResamplingData kBucketData[] = {Linear, Category, UnevenlySpaced};

inline ResamplingArgs Args(ResamplingData data, std::int32_t start, std::int32_t end, double minX, double maxX,
                           std::int32_t width, std::uint32_t precision = 0) {
    ResamplingArgs args{};
    args.Data = data;
    args.StartIndex = start;
    args.EndIndex = end;
    args.MinXInclusive = minX;
    args.MaxXInclusive = maxX;
    args.ViewportWidth = width;
    args.ResamplingPrecision = precision;
    return args;
}

inline ResamplingArgs InRing(ResamplingArgs args, std::int32_t size, std::int32_t baseIndex) {
    args.InputSize = size;
    args.InputBaseIndex = baseIndex;
    return args;
}

inline std::vector<double> Ramp(std::size_t n, double first, double spacing) {
    std::vector<double> v(n);
    for (std::size_t i = 0; i < n; ++i) v[i] = first + spacing * static_cast<double>(i);
    return v;
}

// Lays logical point i at slot (i + baseIndex) % size.
template <class T>
std::vector<T> ToRing(const std::vector<T>& logical, std::int32_t size, std::int32_t baseIndex) {
    std::vector<T> ring(static_cast<std::size_t>(size), logical.empty() ? T{} : logical.front());
    for (std::int32_t i = 0; i < static_cast<std::int32_t>(logical.size()); ++i)
        ring[static_cast<std::size_t>((i + baseIndex) % size)] = logical[static_cast<std::size_t>(i)];
    return ring;
}

struct Output {
    std::int32_t reserved = 0;
    std::vector<std::int32_t> indices;
    std::vector<double> x;
    std::vector<double> y;
};

inline constexpr double kSentinel = -7.25e300;
inline constexpr std::int32_t kTail = 8;

// The caller's side of a run: UpdateIndices, output arrays sized by its
// count, Execute. Whatever lies behind the count must stay untouched.
template <class Update, class Execute>
Output RunSized(Update&& update, Execute&& execute) {
    IntVector indices;
    Output out;
    out.reserved = update(indices);
    const std::size_t room = static_cast<std::size_t>(out.reserved > 0 ? out.reserved : 0) + kTail;
    std::vector<double> outX(room, kSentinel);
    std::vector<double> outY(room, kSentinel);
    execute(outX.data(), outY.data(), indices);
    const std::int32_t produced = indices.size();
    EXPECT_LE(produced, out.reserved) << "a run made more points than it asked room for";
    for (std::size_t k = static_cast<std::size_t>(produced); k < room; ++k) {
        EXPECT_EQ(outX[k], kSentinel) << "outX written past the run's points at " << k;
        EXPECT_EQ(outY[k], kSentinel) << "outY written past the run's points at " << k;
    }
    out.indices.assign(indices.data(), indices.data() + produced);
    out.x.assign(outX.begin(), outX.begin() + produced);
    out.y.assign(outY.begin(), outY.begin() + produced);
    return out;
}

template <class TX, class TY>
Output Resample(const ResamplingMethod<TX, TY>& method, const TX* x, const TY* y, const ResamplingArgs& args) {
    return RunSized([&](IntVector& v) { return method.UpdateIndices(v, x, y, args); },
                    [&](double* ox, double* oy, IntVector& v) { method.Execute(x, y, ox, oy, v, args); });
}

template <class TX, class TY>
Output Resample(const ExtremeResampler<TX, TY>& engine, ResamplingMode mode, const TX* x, const TY* y,
           const ResamplingArgs& args) {
    return RunSized([&](IntVector& v) { return engine.UpdateIndices(v, x, y, mode, args); },
                    [&](double* ox, double* oy, IntVector& v) { engine.Execute(x, y, ox, oy, v, mode, args); });
}

// A random run within the caller's contract: X rising (evenly spaced for
// Linear, with ties and holes for UnevenlySpaced), Y drawn from a few values
// so that ties are common, with +-0 and +-inf, and with NaN runs of every
// length (leading, trailing, whole buckets, everything) when `nan`.
template <class TY>
struct RandomRun {
    std::vector<double> x;
    std::vector<TY> y;
    ResamplingArgs args;

    RandomRun(std::mt19937& rng, ResamplingData data, bool nan) {
        auto uniform = [&](double a, double b) { return std::uniform_real_distribution<double>(a, b)(rng); };
        auto below = [&](int n) { return static_cast<std::int32_t>(rng() % static_cast<unsigned>(n)); };
        const std::int32_t n = 2 + below(90);
        const double spacing = std::vector<double>{0.25, 1.0, 3.0, 0.7}[below(4)];
        x.push_back(uniform(-60.0, 60.0));
        for (std::int32_t i = 1; i < n; ++i) {
            const std::int32_t kind = below(20);
            x.push_back(data != UnevenlySpaced ? x[0] + spacing * i
                                               : x.back() + (kind == 0 ? 0.0 : kind == 1 ? uniform(5, 40) : uniform(0.05, 2)));
        }
        constexpr TY inf = std::numeric_limits<TY>::infinity();
        const TY values[] = {TY(-2), TY(-1), TY(-0.0), TY(0), TY(1), TY(2.5), TY(3), inf, -inf};
        const std::int32_t spread = std::is_floating_point_v<TY> ? (below(8) == 0 ? 9 : 7) : 7;
        for (std::int32_t i = 0; i < n; ++i) y.push_back(below(3) == 0 ? TY(uniform(-4, 4)) : values[below(spread)]);
        if constexpr (std::is_floating_point_v<TY>) {
            for (std::int32_t runs = nan ? below(6) : 0; runs > 0; --runs) {
                const std::int32_t at = below(n), length = 1 + below(below(4) == 0 ? n : 6);
                for (std::int32_t i = at; i < std::min(n, at + length); ++i) y[i] = std::numeric_limits<TY>::quiet_NaN();
            }
        }
        const std::int32_t s = below(n - 1);
        const std::int32_t e = data == Linear ? s + 1 + below(n - 1 - s) : s + below(n - s);
        const double first = data == Category ? s : x[s], last = data == Category ? e : x[e];
        args = Args(data, s, e, first - (below(3) == 0 ? uniform(0, 60) : uniform(0, 2)), last + uniform(0, 3),
                    1 + below(25), static_cast<std::uint32_t>(below(3)));
        if (!(args.MaxXInclusive > args.MinXInclusive)) args.MaxXInclusive = args.MinXInclusive + 1;
        args.ZeroLineY = std::vector<double>{0.0, 1.0, -1.5, std::nan("")}[below(4)];
    }
};

}  // namespace qm::drivertest
