#pragma once
// The split of one bucket, [start, end) of slots, into alternating runs of
// NaN and non-NaN Y. Each NaN run leaves one index, its first point's, so
// the line stays broken there; each non-NaN run is reduced on its own, so
// no reduction joins the two sides of a gap. A reduction finds where its
// run ends as it reads it (`reduceRun(range)` reduces the run at the start
// of `range` and answers its end), so Y is read once; the NaN runs are
// passed over by a packed search.

#include <cstdint>

#include "arrayops/simd/IsaChoice.h"
#include "resampling/nan/NaNBucketOutput.h"

namespace qm {

// NaN by its own inequality; infinities are not NaN.
template <class TY>
bool IsNaN(TY value) {
    return value != value;
}

// The first slot of `range` that holds a number, or its end.
template <class TY, class Range>
std::int32_t FirstNumber(const TY* y, const Range& range) {
    const auto firstNumber = simd::ActiveScans<TY>().firstNumber;
    const ScanPieces pieces = range.Pieces();
    for (std::int32_t k = 0; k < pieces.count; ++k) {
        const std::int32_t found = firstNumber(y, pieces.start[k], pieces.end[k]);
        if (found != pieces.end[k]) return found;
    }
    return pieces.end[pieces.count - 1];
}

template <class TY, class Layout, class ReduceRun>
void SplitAtNaN(const TY* y, const Layout& layout, std::int32_t start, std::int32_t end,
                const NaNBucketOutput& output, ReduceRun&& reduceRun) {
    const std::int32_t stop = layout.Stop(end);
    std::int32_t pos = start;
    while (layout.Before(pos, stop)) {
        if (IsNaN(y[pos])) {
            output.Append(layout.Logical(pos));
            pos = FirstNumber(y, layout.Range(pos, stop));
        } else {
            pos = reduceRun(layout.Range(pos, stop));
        }
    }
}

}  // namespace qm
