#pragma once
// The split of one bucket, [start, end) of slots, into alternating runs of
// NaN and non-NaN Y. Each NaN run leaves one index, its first point's, so
// the line stays broken there; each non-NaN run goes to `reduce` on its own,
// so no reduction joins the two sides of a gap.

#include <cstdint>

#include "resampling/nan/NaNBucketOutput.h"

namespace qm {

// NaN by its own inequality; infinities are not NaN.
template <class TY>
bool IsNaN(TY value) {
    return value != value;
}

template <class TY, class Layout, class Reduce>
void SplitAtNaN(const TY* y, const Layout& layout, std::int32_t start, std::int32_t end,
                const NaNBucketOutput& output, Reduce&& reduce) {
    const std::int32_t stop = layout.Stop(end);
    std::int32_t pos = start;
    if (!layout.Before(pos, stop)) return;
    bool inNaN = IsNaN(y[pos]);
    while (layout.Before(pos, stop)) {
        if (inNaN) {
            output.Append(layout.Logical(pos));
            pos = layout.Range(pos, stop).FirstWhere([y](std::int32_t i) { return !IsNaN(y[i]); });
        } else {
            const std::int32_t runEnd =
                layout.Range(pos, stop).FirstWhere([y](std::int32_t i) { return IsNaN(y[i]); });
            reduce(layout.Range(pos, runEnd));
            pos = runEnd;
        }
        inNaN = !inNaN;
    }
}

}  // namespace qm
