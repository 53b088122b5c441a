#pragma once
// The walk of unevenly spaced, ascending X over any layout: each grid
// boundary is found by a search in what remains of the visible stretch that
// starts where the boundary is expected (NextBoundaryGuess; in a ring, in
// each of its two pieces, the nearer answer winning). Buckets
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

// Where the search for the next boundary starts, and the lines of X asked
// for around it now, so that their misses overlap the bucket's reduction
// instead of following it. A bucket's length predicts the next one's; on
// unevenly spaced X a long bucket's misses it by about its square root,
// mostly outside the lines asked for, and the search then waits on memory.
// So in long buckets one line near the boundary after the next is asked
// for a pass ahead, and its X, at the last bucket's mean spacing, puts the
// next boundary within a few points. Only where the search starts and what
// is asked for depend on this, never what it finds.
class NextBoundaryGuess {
public:
    // After a bucket of `span` points that ends before logical index `end`,
    // the search for `boundary` among [end, last]: where it looks first,
    // counted from `end`.
    template <class Layout>
    std::int32_t Next(const XAxis& x, const Layout& layout, std::int32_t end, std::int32_t last, std::int32_t span,
                      double boundary, double step) {
        const auto within = [&](std::int64_t i) { return static_cast<std::int32_t>(i < end ? end : i > last ? last : i); };
        std::int32_t guess = within(static_cast<std::int64_t>(end) + span);
        std::intptr_t lines = 8;
        if (span >= kLong) {
            if (ahead_ >= end && ahead_ <= last) {
                const double offset = (boundary - x.At(layout.Slot(ahead_))) / step * span;
                if (std::fabs(offset) < 4.0 * span) {
                    guess = within(ahead_ + static_cast<std::int64_t>(offset));
                    lines = 4;
                }
            }
            ahead_ = within(static_cast<std::int64_t>(end) + 2 * static_cast<std::int64_t>(span));
            x.Prefetch(layout.Slot(ahead_), 0);
        }
        x.Prefetch(layout.Slot(guess), lines);
        return guess - end;
    }

private:
    // Below this the X of neighbouring boundaries share pages and mostly
    // lines, and a read a pass ahead would cost more than it saves.
    static constexpr std::int32_t kLong = 1024;
    std::int32_t ahead_ = -1;  // near the boundary after the next; its line was asked for a pass ago
};

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
    std::int32_t guess = 1;  // where the next search looks first, from where it starts
    NextBoundaryGuess forecast;
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
            const std::int32_t span = WrappingSub(logicalEnd, layout.Logical(slot));
            if (logicalEnd < endExclusive) guess = forecast.Next(x, layout, logicalEnd, endExclusive - 1, span, next, step);
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
