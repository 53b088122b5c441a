#pragma once
// The middle of a bucket's value range and the search for the point nearest
// to it, shared by every Mid reducer.

#include <cfloat>
#include <cmath>
#include <cstdint>
#include <type_traits>

#include "model/ElementTypes.h"
#include "resampling/buckets/NearerFilter.h"

namespace qm {

// Max + Min in TY's own arithmetic, then widened and halved. 32- and 64-bit
// integers wrap on overflow (kept on purpose: the reducer then takes the
// point nearest to the wrapped middle); narrower ones are summed as int32;
// Single sums in single precision.
template <class TY>
double Midpoint(TY max, TY min) {
    if constexpr (std::is_floating_point_v<TY>) {
        const TY sum = max + min;
        return ToDouble(sum) * 0.5;
    } else if constexpr (sizeof(TY) < sizeof(std::int32_t)) {
        const std::int32_t sum = static_cast<std::int32_t>(max) + static_cast<std::int32_t>(min);
        return ToDouble(sum) * 0.5;
    } else {
        using Unsigned = std::make_unsigned_t<TY>;
        const TY sum = static_cast<TY>(static_cast<Unsigned>(max) + static_cast<Unsigned>(min));
        return ToDouble(sum) * 0.5;
    }
}

template <class TY>
double DistanceToMid(TY value, double mid) {
    return std::fabs(ToDouble(value) - mid);
}

// The first position in [start, end) whose value is strictly nearest to mid;
// `chosen` when no distance is below DBL_MAX (all NaN or infinite). Blocks
// that the filter shows to hold nothing nearer than the best so far are
// passed over; the others are walked, so the result is the plain walk's.
template <class TY>
std::int32_t NearestToMid(const TY* y, std::int32_t start, std::int32_t end, double mid, std::int32_t chosen) {
    double best = DBL_MAX;
    auto step = [&](std::int32_t i) {
        const double d = DistanceToMid(y[i], mid);
        if (best > d) {
            best = d;
            chosen = i;
        }
    };
    NearerFilter<TY> filter(mid);
    filter.Narrow(best);
    std::int32_t i = start;
    for (; static_cast<std::int64_t>(end) - i >= kNearerBlock; i += kNearerBlock) {
        if (!filter.AnyIn(y + i)) continue;
        const double before = best;
        for (std::int32_t k = 0; k < kNearerBlock; ++k) step(i + k);
        if (best != before) filter.Narrow(best);
    }
    for (; i < end; ++i) step(i);
    return chosen;
}

}  // namespace qm
