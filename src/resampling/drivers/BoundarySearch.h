#pragma once
// Finding a grid boundary in sorted X. All comparisons are in double, on X
// converted at each read, and strict.

#include <cstdint>

#include "model/XAxis.h"

namespace qm {

// The first position of the sorted run [first, last] whose X is not below
// `boundary`. A run that starts above the boundary (a gap) answers `first`
// and one that ends below it (the last bucket) answers `last`, each after a
// single comparison. Otherwise the search starts at `first + span`, where
// the caller expects the answer (the length of the bucket before), gallops
// from there in doubling steps towards the answer and halves the last
// step: buckets of one grid are of much the same length, so the reads stay
// within a few cache lines of the answer instead of spanning the bucket.
// Every step narrows [low, high], so it ends on unsorted or NaN X too.
inline std::int32_t SearchSortedRun(const XAxis& x, std::int32_t first, std::int32_t last, double boundary,
                                    std::int32_t span = 1) {
    if (x.At(first) > boundary) return first;
    if (boundary > x.At(last)) return last;
    // Here the answer lies in (first, last]: X at first is not above the
    // boundary, and if it equals it the answer is first itself.
    if (!(boundary > x.At(first))) return first;
    std::int32_t low = first + 1;  // the answer is in [low, high]
    std::int32_t high = last;
    const std::int32_t guess = span > 0 && span < last - first ? first + span : first + 1;
    if (boundary > x.At(guess)) {
        low = guess + 1;
        for (std::int32_t step = 1; low < high; step *= 2) {
            const std::int32_t probe = high - low > step ? low + step : high;
            if (!(boundary > x.At(probe))) {
                high = probe;
                break;
            }
            low = probe + 1;
            if (step > (high - low) / 2) break;
        }
    } else {
        high = guess;
        for (std::int32_t step = 1; low < high; step *= 2) {
            const std::int32_t probe = high - low > step ? high - step : low;
            if (boundary > x.At(probe)) {
                low = probe + 1;
                break;
            }
            high = probe;
            if (step > (high - low) / 2) break;
        }
    }
    while (low < high) {
        const std::int32_t middle = low + (high - low) / 2;
        if (boundary > x.At(middle))
            low = middle + 1;
        else
            high = middle;
    }
    return high;
}

// True when the point at `position` lies on or below the boundary and so
// still belongs to the bucket it closes. Applied once only: of several
// points on the boundary the later ones open the next bucket.
inline bool ClosesBucket(const XAxis& x, std::int32_t position, double boundary) {
    return boundary >= x.At(position);
}

}  // namespace qm
