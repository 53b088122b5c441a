#pragma once
// Shared by the kernel tests: the ten element types, a run under each ISA
// the processor has, and data made to break a vectorised scan.

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <vector>

#include "arrayops/simd/IsaChoice.h"
#include "support/PlainRules.h"

namespace qm {

using namespace qmtest;
using ElementTypes = ::testing::Types<double, float, std::int64_t, std::uint64_t, std::int32_t, std::uint32_t,
                                      std::int16_t, std::uint16_t, std::uint8_t, std::int8_t>;

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

// Values that catch a wrong comparison: both ends of the type and their
// neighbours, the sign bit of unsigned types, 64-bit words that differ in
// the low half only, and for floating types NaN, both zeros and both
// infinities.
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
    const T few[3] = {all[rng() % all.size()], all[rng() % all.size()], all[rng() % all.size()]};
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

}  // namespace qm
