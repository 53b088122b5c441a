#pragma once
// A packed test that tells when a block of values holds none nearer to the
// middle than the best distance so far, so that the Mid search can pass the
// block over. It may answer yes in vain, never no in vain: the element walk
// that follows a yes decides, so results are those of the plain walk.

#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <type_traits>

#include "arrayops/simd/GenericOps.h"

namespace qm {

template <class T>
using Lanes = simd::generic::Ops<T>;

inline constexpr std::int32_t kNearerBlock = 16;

// Floating types and 64-bit integers: the distance in double, lane by lane,
// exactly as the walk computes it. For best >= 0, |v - mid| < best holds
// exactly when -best < v - mid < best, and a NaN fails both sides.
template <class TY>
class DistanceFilter {
public:
    explicit DistanceFilter(double mid) : mid_(Lanes<double>::Splat(mid)) {}

    void Narrow(double best) {
        below_ = Lanes<double>::Splat(best);
        above_ = Lanes<double>::Splat(-best);
    }

    bool AnyIn(const TY* block) const {
        using Pair = typename PairOf::type;
        using Doubles = Lanes<double>::V;
        decltype(Doubles{} < Doubles{}) nearer{};
        for (std::int32_t k = 0; k < kNearerBlock; k += 2) {
            Pair pair;
            std::memcpy(&pair, block + k, sizeof pair);
            const Doubles diff = __builtin_convertvector(pair, Doubles) - mid_;
            nearer |= (diff < below_) & (diff > above_);
        }
        return Lanes<double>::Any(nearer);
    }

private:
    struct PairOf {
        typedef TY type __attribute__((vector_size(2 * sizeof(TY))));
    };

    Lanes<double>::V mid_;
    Lanes<double>::V below_{};
    Lanes<double>::V above_{};
};

// Integers of up to 32 bits, whose values double holds exactly: a value the
// walk would take lies strictly between mid - best and mid + best, so the test
// is a range check in the type itself, on the bounds widened by one to cover
// the rounding of computing them. Bounds outside the type (or NaN) open that
// side fully.
template <class TY>
class RangeFilter {
public:
    explicit RangeFilter(double mid) : mid_(mid) {}

    void Narrow(double best) {
        low_ = Lanes<TY>::Splat(Bound(std::floor(mid_ - best) - 1.0, Limits::lowest()));
        high_ = Lanes<TY>::Splat(Bound(std::ceil(mid_ + best) + 1.0, Limits::max()));
    }

    bool AnyIn(const TY* block) const {
        auto inside = (Lanes<TY>::Load(block) >= low_) & (Lanes<TY>::Load(block) <= high_);
        for (std::int32_t k = Lanes<TY>::kLanes; k < kNearerBlock; k += Lanes<TY>::kLanes) {
            const typename Lanes<TY>::V e = Lanes<TY>::Load(block + k);
            inside |= (e >= low_) & (e <= high_);
        }
        return Lanes<TY>::Any(inside);
    }

private:
    using Limits = std::numeric_limits<TY>;

    static TY Bound(double value, TY open) {
        const bool inType = value >= static_cast<double>(Limits::lowest()) && value <= static_cast<double>(Limits::max());
        return inType ? static_cast<TY>(value) : open;
    }

    double mid_;
    typename Lanes<TY>::V low_{};
    typename Lanes<TY>::V high_{};
};

template <class TY>
using NearerFilter =
    std::conditional_t<std::is_integral_v<TY> && sizeof(TY) <= sizeof(std::int32_t), RangeFilter<TY>, DistanceFilter<TY>>;

}  // namespace qm
