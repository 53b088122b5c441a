#pragma once
// How picked positions become output points: the index is the position's
// place in the series (a slot of a ring turned back into a logical index),
// X is read from the data at the position or is that index itself.
//
// X from the data is read for all the points of a run at once, when its walk
// is over (XAxis::SlotsToX): a conversion call per point would cost a walk
// of small buckets more than the rest of its emitting. Until then a point's
// X holds its slot.
//
// A scan that no element beat leaves its position at -1. Such a point keeps
// index -1 (plain) or the logical index of slot -1 (ring), and since there
// is no element to read its X from, X from the data is NaN rather than a
// read before the start of the array.

#include <cstdint>
#include <limits>

#include "model/XAxis.h"
#include "resampling/buckets/BucketOutput.h"
#include "resampling/buckets/Reductions.h"

namespace qm {

template <bool kIndexAsX>
struct PointEmitter {
    XAxis x;
    double* firstX;  // the run's output X

    template <class Range>
    void Emit(BucketOutput& output, const Range& range, std::int32_t position, double yValue) const {
        const std::int32_t index = range.Order(position);
        output.Append(XOf(position, index), yValue, index);
    }

    // Once the walk is over: the slots become X.
    void Finish(const BucketOutput& output) const {
        if constexpr (!kIndexAsX) x.SlotsToX(firstX, output.Produced(), VisiblePoints(output.RunArgs()));
    }

    template <class Range>
    void Emit(BucketOutput& output, const Range& range, const Picks& picks) const {
        if (output.Room() < 2) {
            for (std::int32_t k = 0; k < picks.count; ++k) Emit(output, range, picks.position[k], picks.value[k]);
            return;
        }
        std::int32_t index[2];
        double xValue[2];
        for (std::int32_t k = 0; k < 2; ++k) {
            index[k] = range.Order(picks.position[k]);
            xValue[k] = XOf(picks.position[k], index[k]);
        }
        output.AppendUpToTwo(xValue, picks.value, index, picks.count);
    }

private:
    static double XOf(std::int32_t position, std::int32_t index) {
        return kIndexAsX     ? static_cast<double>(index)
               : position < 0 ? std::numeric_limits<double>::quiet_NaN()
                              : static_cast<double>(position);
    }
};

}  // namespace qm
