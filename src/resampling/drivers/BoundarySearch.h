#pragma once
// Finding a grid boundary in sorted X. All comparisons are in double, on X
// converted at each read, and strict.

#include <cstdint>

#include "model/XAxis.h"

namespace qm {

// The first position of the sorted run [first, last] whose X is not below
// `boundary`. A run that starts above the boundary (a gap) answers `first`
// and one that ends below it (the last bucket) answers `last`, each after a
// single comparison. Otherwise the search gallops from `first` (the bucket
// start) in doubling steps and then halves the last step: a bucket's end
// lies near its start, so the reads stay close together instead of
// spanning the whole remaining X. Every step moves forward, so it ends on
// unsorted or NaN X too.
inline std::int32_t SearchSortedRun(const XAxis& x, std::int32_t first, std::int32_t last, double boundary) {
    if (x.At(first) > boundary) return first;
    if (boundary > x.At(last)) return last;
    std::int32_t low = first;
    std::int32_t high = last;
    for (std::int32_t step = 1; step < last - first; step *= 2) {
        const std::int32_t probe = first + step;
        if (!(boundary > x.At(probe))) {
            high = probe;
            break;
        }
        low = probe + 1;
        if (step > (last - first) / 2) break;
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
