#pragma once
// Shared by the resampling suites: a run's arguments, a series laid into a
// ring, a run made the way the caller makes it and checked as every run must
// be, and random runs within the caller's contract.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <stdexcept>
#include <vector>

#include "resampling/ExtremeResampler.h"

namespace qm::test {

inline constexpr ResamplingMode kModes[] = {None, MinMax, Min, Max, Mid, MinOrMax};
inline constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

inline ResamplingArgs Args(std::int32_t data, std::int32_t start, std::int32_t end, double minX, double maxX,
                           std::int32_t width, std::int32_t size = 0, std::int32_t base = 0) {
    ResamplingArgs a{};
    a.Data = data, a.StartIndex = start, a.EndIndex = end, a.MinXInclusive = minX, a.MaxXInclusive = maxX;
    a.ViewportWidth = width, a.InputSize = size, a.InputBaseIndex = base;
    return a;
}

// Logical point i goes to slot (i + base) % size; a slot no point fills holds
// NaN (in floating types), so that reading it shows.
template <class T>
std::vector<T> ToRing(const std::vector<T>& logical, std::int32_t size, std::int32_t base) {
    std::vector<T> ring(static_cast<std::size_t>(size), std::numeric_limits<T>::quiet_NaN());
    for (std::size_t i = 0; i < logical.size(); ++i) ring[(i + base) % ring.size()] = logical[i];
    return ring;
}

// So that whole outputs compare at once, NaN equal to NaN.
inline std::vector<double> Comparable(std::vector<double> v) {
    for (double& d : v) d = std::isnan(d) ? -1.5e-300 : d;
    return v;
}

struct Output {
    std::int32_t reserved = 0;
    bool refused = false;  // UpdateIndices or Execute raised the length failure
    std::vector<std::int32_t> indices;
    std::vector<double> x, y;
};

// The caller's side of a run: a vector that already holds one index, which
// must stay in front; UpdateIndices; outputs sized by its count; Execute.
// Nothing may be written past the points made, nor more made than reserved.
// A NaN-aware Execute gathers for the whole vector, the held index included.
template <class TX, class TY>
Output Resample(const ExtremeResampler<TX, TY>& engine, std::int32_t mode, const TX* x, const TY* y,
                const ResamplingArgs& args) {
    const std::int32_t skip = kCanHoldNaN<TY> && args.HasNaN && mode != None && args.Data != NotResampled;
    IntVector indices;
    indices.PushBack(-5);
    Output out;
    try {
        out.reserved = engine.UpdateIndices(indices, x, y, mode, args);
    } catch (const std::length_error&) {
        out.refused = true;
    }
    std::vector<double> outX(static_cast<std::size_t>(std::max(out.reserved, 0)) + 8, -7.25e300), outY = outX;
    try {
        engine.Execute(x, y, outX.data(), outY.data(), indices, mode, args);
    } catch (const std::length_error&) {
        out.refused = true;
    }
    const std::int32_t made = indices.size() - 1;
    EXPECT_EQ(indices[0], -5) << "the index held before the run was lost";
    EXPECT_LE(made + skip, std::max(out.reserved, 0)) << "more points than room was asked for";
    for (std::size_t k = static_cast<std::size_t>(made + skip); k < outX.size(); ++k)
        EXPECT_TRUE(outX[k] == -7.25e300 && outY[k] == -7.25e300) << "written past the points at " << k;
    out.indices.assign(indices.data() + 1, indices.data() + indices.size());
    out.x.assign(outX.begin() + skip, outX.begin() + skip + made), out.y.assign(outY.begin() + skip, outY.begin() + skip + made);
    return out;
}

// A random run within the caller's contract: X rising (evenly for Linear,
// with ties and wide holes for UnevenlySpaced), Y from a few values so that
// ties are common, with +-0 and +-inf, and with NaN runs of every length
// (leading, trailing, whole buckets, everything) when `nan`.
template <class TY>
struct RandomRun {
    std::vector<double> x;
    std::vector<TY> y;
    ResamplingArgs args;

    RandomRun(std::mt19937& rng, ResamplingData data, bool nan) {
        auto uniform = [&](double a, double b) { return std::uniform_real_distribution<double>(a, b)(rng); };
        auto below = [&](std::int32_t n) { return static_cast<std::int32_t>(rng() % static_cast<unsigned>(n)); };
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
        const std::int32_t spread = std::is_floating_point_v<TY> && below(8) == 0 ? 9 : 7;
        for (std::int32_t i = 0; i < n; ++i) y.push_back(below(3) == 0 ? TY(uniform(-4, 4)) : values[below(spread)]);
        for (std::int32_t runs = nan ? below(6) : 0; runs > 0; --runs)
            for (std::int32_t i = below(n), last = std::min(n, i + 1 + below(below(4) == 0 ? n : 6)); i < last; ++i)
                y[i] = std::numeric_limits<TY>::quiet_NaN();
        const std::int32_t s = below(n - 1), e = data == Linear ? s + 1 + below(n - 1 - s) : s + below(n - s);
        const double first = data == Category ? s : x[s], last = data == Category ? e : x[e];
        args = Args(data, s, e, first - (below(3) == 0 ? uniform(0, 60) : uniform(0, 2)), last + uniform(0.01, 3),
                    1 + below(25));
        args.ResamplingPrecision = static_cast<std::uint32_t>(below(3));
        args.ZeroLineY = std::vector<double>{0.0, 1.0, -1.5, kNaN}[below(4)];
    }
};

}  // namespace qm::test
