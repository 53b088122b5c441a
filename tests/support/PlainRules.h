#pragma once
// The scan rules written plainly, shared by the kernel comparisons and the
// reference walk: strict comparisons against a seed, so that the first of
// equal values wins, a NaN never wins and a position may keep its seed.

#include <cfloat>
#include <cmath>
#include <cstdint>
#include <limits>
#include <type_traits>

namespace qmtest {

// Both extremes with their positions, and where a walk that stops at the
// first NaN stopped (the end when it did not). Unseeded by default.
template <class T>
struct Extremes {
    T lo = std::numeric_limits<T>::max();
    std::int32_t loAt = -1;
    T hi = std::numeric_limits<T>::lowest();
    std::int32_t hiAt = -1, stop = 0;
};

template <class T>
Extremes<T> Walk(const T* d, std::int32_t s, std::int32_t e, Extremes<T> seed = {}, bool stopAtNaN = false) {
    for (seed.stop = s; seed.stop < e && !(stopAtNaN && d[seed.stop] != d[seed.stop]); ++seed.stop) {
        if (seed.lo > d[seed.stop]) seed.lo = d[seed.stop], seed.loAt = seed.stop;
        if (d[seed.stop] > seed.hi) seed.hi = d[seed.stop], seed.hiAt = seed.stop;
    }
    return seed;
}

// Half of Max + Min formed in the element type: a floating sum may overflow
// to infinity, narrow integers add in int32, 32- and 64-bit integers wrap.
template <class T>
double Midpoint(T max, T min) {
    using U = std::make_unsigned_t<std::conditional_t<std::is_integral_v<T>, T, int>>;
    if constexpr (std::is_floating_point_v<T>) return static_cast<double>(static_cast<T>(max + min)) * 0.5;
    else if constexpr (sizeof(T) < 4) return (std::int32_t{max} + std::int32_t{min}) * 0.5;
    else return static_cast<double>(static_cast<T>(static_cast<U>(max) + static_cast<U>(min))) * 0.5;
}

// The first position of [a, b) strictly nearest to mid; a when no distance
// is below DBL_MAX.
template <class T>
std::int32_t Nearest(const T* y, std::int32_t a, std::int32_t b, double mid) {
    double best = DBL_MAX;
    std::int32_t chosen = a;
    for (std::int32_t i = a; i < b; ++i)
        if (best > std::fabs(static_cast<double>(y[i]) - mid)) best = std::fabs(static_cast<double>(y[i]) - mid), chosen = i;
    return chosen;
}

}  // namespace qmtest
