#pragma once
// The middle of a range of values and the distance of a value to it, in the
// arithmetic every Mid reducer uses; and the band of values that can lie
// nearer to the middle than a given distance, which lets a search pass over
// whole vectors with one packed test.

#include <bit>
#include <cfloat>
#include <cmath>
#include <cstdint>
#include <limits>
#include <type_traits>

namespace qm {

// The scan kernels of every ISA call these, so each is inlined into its
// caller: an out-of-line copy built for a wide ISA could otherwise be the
// one the linker keeps for all. (Every element type converts to double by
// a plain cast, the library's one conversion for them.)

// Max + Min in TY's own arithmetic, then widened and halved. 32- and 64-bit
// integers wrap on overflow (kept on purpose: the reducer then takes the
// point nearest to the wrapped middle); narrower ones are summed as int32;
// Single sums in single precision.
template <class TY>
[[gnu::always_inline]] inline double Midpoint(TY max, TY min) {
    if constexpr (std::is_floating_point_v<TY>) {
        const TY sum = max + min;
        return static_cast<double>(sum) * 0.5;
    } else if constexpr (sizeof(TY) < sizeof(std::int32_t)) {
        const std::int32_t sum = static_cast<std::int32_t>(max) + static_cast<std::int32_t>(min);
        return static_cast<double>(sum) * 0.5;
    } else {
        using Unsigned = std::make_unsigned_t<TY>;
        const TY sum = static_cast<TY>(static_cast<Unsigned>(max) + static_cast<Unsigned>(min));
        return static_cast<double>(sum) * 0.5;
    }
}

template <class TY>
[[gnu::always_inline]] inline double DistanceToMid(TY value, double mid) {
    return std::fabs(static_cast<double>(value) - mid);
}

// The smallest distance to mid that a value in [low, high] can have: the
// distance grows monotonically away from mid on either side, rounding
// included, so it is the distance of the nearer end, or 0 when the range
// spans mid. No values (low above high): infinite.
template <class TY>
[[gnu::always_inline]] inline double LeastDistance(TY low, TY high, double mid) {
    if (low > high) return HUGE_VAL;
    if (static_cast<double>(high) <= mid) return DistanceToMid(high, mid);
    if (static_cast<double>(low) >= mid) return DistanceToMid(low, mid);
    return 0.0;
}

// The neighbour of x towards +infinity (up) or -infinity, as nextafter
// gives it, without a call into the C library.
template <class F>
[[gnu::always_inline]] inline F Step(F x, bool up) {
    using Bits = std::conditional_t<sizeof(F) == 8, std::uint64_t, std::uint32_t>;
    constexpr F kInfinity = std::numeric_limits<F>::infinity();
    if (x != x || x == (up ? kInfinity : -kInfinity)) return x;
    if (x == 0) return up ? std::numeric_limits<F>::denorm_min() : -std::numeric_limits<F>::denorm_min();
    const Bits bits = std::bit_cast<Bits>(x);
    return std::bit_cast<F>((x > 0) == up ? static_cast<Bits>(bits + 1) : static_cast<Bits>(bits - 1));
}

// For integers of up to 32 bits, whose values, middles and distances double
// holds exactly, distances are multiples of 0.5; for other types any double.
// The distance just above `d`: below it lie exactly the distances up to d.
template <class TY>
[[gnu::always_inline]] inline double NextDistance(double d) {
    if constexpr (std::is_integral_v<TY> && sizeof(TY) <= sizeof(std::int32_t))
        return d + 0.5;
    else
        return Step(d, true);
}

// Every value whose distance to mid is below `bound` lies in [low, high].
// For integers of up to 32 bits, with `bound` a distance (a multiple of 0.5)
// or DBL_MAX, that band is exact; for the others it is widened by the
// rounding of its ends (and, for 64-bit integers, of the conversion to
// double), so it may hold a few values more. `empty`: no value can be that
// near (a bound of 0, or a middle that is NaN or infinite, from which every
// distance is infinite or NaN).
// A double as TY, to nearest; beyond the largest finite TY, infinite.
template <class TY>
[[gnu::always_inline]] inline TY Narrowed(double value) {
    constexpr double kLargest = static_cast<double>(std::numeric_limits<TY>::max());
    if (value > kLargest) return std::numeric_limits<TY>::infinity();
    if (value < -kLargest) return -std::numeric_limits<TY>::infinity();
    return static_cast<TY>(value);
}

template <class TY>
struct Band {
    TY low;
    TY high;
    bool empty;
};

template <class TY>
[[gnu::always_inline]] inline Band<TY> BandOf(double mid, double bound) {
    using Limits = std::numeric_limits<TY>;
    if (!(bound > 0.0) || !std::isfinite(mid)) return {TY{}, TY{}, true};
    const double below = mid - bound;
    const double above = mid + bound;
    if constexpr (std::is_floating_point_v<TY>) {
        // The exact ends may lie one step beyond the rounded ones.
        const double low = Step(below, false);
        const double high = Step(above, true);
        TY lowT = Narrowed<TY>(low);
        TY highT = Narrowed<TY>(high);
        if (static_cast<double>(lowT) > low) lowT = Step(lowT, false);
        if (static_cast<double>(highT) < high) highT = Step(highT, true);
        return {lowT, highT, false};
    } else {
        double low, high;
        if constexpr (sizeof(TY) <= sizeof(std::int32_t)) {
            // Exact: mid - bound < y < mid + bound.
            low = std::floor(below) + 1.0;
            high = std::ceil(above) - 1.0;
        } else {
            // A 64-bit value converts to double within 1024 of itself.
            low = std::floor(Step(below, false)) - 1024.0;
            high = std::ceil(Step(above, true)) + 1024.0;
        }
        const double lowest = static_cast<double>(Limits::lowest());
        const double largest = static_cast<double>(Limits::max());  // rounds up for 64 bits
        if (low > high || high < lowest || low > largest) return {TY{}, TY{}, true};
        const TY lowT = low <= lowest ? Limits::lowest() : static_cast<TY>(low);
        const TY highT = high >= largest ? Limits::max() : static_cast<TY>(high);
        return {lowT, highT, false};
    }
}

}  // namespace qm
