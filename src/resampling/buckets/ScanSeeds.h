#pragma once
// The values a reducer hands to a scan before the first element: the
// largest value of TY for a minimum, the lowest for a maximum. A scan only
// replaces on a strict improvement, so an element equal to its seed never
// wins, which the reducers pass on as position -1.

#include <limits>

#include "arrayops/MinMaxPointSearchResult.h"

namespace qm {

template <class TY>
struct ScanSeeds {
    static constexpr TY kMin = std::numeric_limits<TY>::max();
    static constexpr TY kMax = std::numeric_limits<TY>::lowest();

    static constexpr MinMaxPointSearchResult<TY> Record() { return {-1, -1, kMin, kMax}; }
};

}  // namespace qm
