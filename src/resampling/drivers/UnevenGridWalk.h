#pragma once
// The walk of unevenly spaced, ascending X over any layout: each grid
// boundary is found by a search in what remains of the visible stretch that
// starts where the last bucket's length predicts it (in a ring, in each of
// its two pieces, the nearer answer winning). Buckets
// may be empty where X has a gap; the walk tells its caller the bucket
// (`bucket(startSlot, endSlot, afterEmpty)`) and the last point before a
// gap (`gap(logicalIndex)`, one less than the gap's end with no wrap), and
// the caller decides what to keep.
//
// Within the caller's contract every X lies at or below MaxXInclusive, so
// the walk has ended by the pass after the first boundary above it (one
// pass later than that when a ring's seam splits a bucket and the two
// pieces tie), and it makes at most two passes more than the grid has
// cells. The guard leans on this and nothing else: once the boundary is
// more than a step past MaxXInclusive, stops moving (a step of 0, NaN or
// below the precision of X), or has passed the grid's cells by two, the pass
// takes all remaining points; a grid without cells yields nothing. `full()`
// ends the walk when its output has no room left.

#include <cmath>
#include <cstdint>

#include "model/Int32Arithmetic.h"
#include "model/ResamplingArgs.h"
#include "model/XAxis.h"
#include "resampling/buckets/Grid.h"
#include "resampling/drivers/BoundarySearch.h"

namespace qm {

template <class Layout, class Bucket, class Gap, class Full>
void WalkUnevenGrid(const XAxis& x, const ResamplingArgs& args, const Layout& layout, double step, Bucket&& bucket,
                    Gap&& gap, Full&& full) {
    const std::int32_t endExclusive = WrappingAdd(args.EndIndex, 1);
    const std::int32_t cells = GridBucketCount(args, step);
    if (!(args.StartIndex < endExclusive) || cells <= 0) return;
    const std::int32_t ringEnd = layout.Slot(endExclusive);
    const double lastBoundary = args.MaxXInclusive + step;
    const std::int32_t maxPasses = WrappingAdd(cells, 2);
    double boundary = FirstBoundaryAbove(args.MinXInclusive, step);
    std::int32_t slot = layout.Slot(args.StartIndex);
    bool afterEmpty = true;
    std::int32_t span = 1;   // the length of the last bucket with points
    std::int32_t guess = 1;  // where the next search looks first, from where it starts
    std::int32_t ahead = -1;  // near the boundary after the next one; its X was asked for a pass ago
    for (std::int32_t pass = 1;; ++pass) {
        const double next = boundary + step;
        std::int32_t logicalEnd = endExclusive;
        if (boundary <= lastBoundary && next > boundary && pass <= maxPasses) {
            const std::int32_t found = layout.Range(slot, ringEnd).NearestOfPieces(
                [&](std::int32_t a, std::int32_t b) { return SearchSortedRun(x, a, b - 1, boundary, guess); },
                [&](std::int32_t p) { return std::fabs(x.At(p) - boundary); });
            logicalEnd = layout.Logical(found);
            if (found != ringEnd && ClosesBucket(x, found, boundary)) logicalEnd = WrappingAdd(logicalEnd, 1);
        }
        const std::int32_t nextSlot = layout.Slot(logicalEnd);
        const bool empty = nextSlot == slot;
        if (!empty) {
            span = WrappingSub(logicalEnd, layout.Logical(slot));
            // The next search starts where this bucket's length predicts its
            // boundary: X there is asked for now, so that its misses overlap
            // this bucket's reduction instead of following it. A long
            // bucket's length misses the next one's by about its square root
            // on unevenly spaced X, mostly outside the lines asked for, and
            // the search then waits on memory. So one line near the boundary
            // after the next is asked for a pass ahead; its X, at this
            // bucket's mean spacing, then puts the next boundary within a
            // few points. Only where the search starts and what is asked for
            // depend on this, never what it finds.
            if (logicalEnd < endExclusive) {
                const std::int64_t last = endExclusive - 1;
                const auto within = [&](std::int64_t i) {
                    return static_cast<std::int32_t>(i < logicalEnd ? logicalEnd : i > last ? last : i);
                };
                std::int32_t predicted = within(static_cast<std::int64_t>(logicalEnd) + span);
                std::intptr_t lines = 8;
                if (span >= 1024) {
                    if (ahead >= logicalEnd && ahead <= last) {
                        const double offset = (next - x.At(layout.Slot(ahead))) / step * span;
                        if (std::fabs(offset) < 4.0 * span) {
                            predicted = within(ahead + static_cast<std::int64_t>(offset));
                            lines = 4;
                        }
                    }
                    ahead = within(static_cast<std::int64_t>(logicalEnd) + 2 * static_cast<std::int64_t>(span));
                    x.Prefetch(layout.Slot(ahead), 0);
                }
                guess = predicted - logicalEnd;
                x.Prefetch(layout.Slot(predicted), lines);
            }
            bucket(slot, nextSlot, afterEmpty);
        }
        else if (!afterEmpty)
            gap(WrappingSub(layout.Logical(slot), 1));
        if (full() || !(logicalEnd < endExclusive)) return;
        afterEmpty = empty;
        boundary = next;
        slot = nextSlot;
    }
}

}  // namespace qm
