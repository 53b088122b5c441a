#pragma once
// How a reducer turns a found position into an output point, for the four
// layouts: plain or ring storage, X from the data or the index as X.
//
// A scan that no element beat leaves its position at -1. Such a point keeps
// index -1 (plain) or the logical index of slot -1 (ring), and since there
// is no element to read its X from, X from the data is NaN rather than a
// read before the start of the array.

#include <cstdint>
#include <limits>

#include "model/ElementTypes.h"
#include "model/Int32Arithmetic.h"
#include "resampling/buckets/BucketOutput.h"

namespace qm {

template <class TX>
double XAtPosition(const TX* x, std::int32_t position) {
    return position < 0 ? std::numeric_limits<double>::quiet_NaN() : ToDouble(x[position]);
}

// Positions are array positions and output indices at once.
template <class TX, class TY, bool kIndexAsX>
struct PlainPoints {
    const TX* x;
    const TY* y;

    std::int32_t Order(std::int32_t position) const { return position; }

    void Emit(BucketOutput& output, std::int32_t position, double yValue) const {
        const double xValue = kIndexAsX ? static_cast<double>(position) : XAtPosition(x, position);
        output.Append(xValue, yValue, position);
    }
};

// Positions are slots of a ring; output indices and source order are logical.
template <class TX, class TY, bool kIndexAsX>
struct RingPoints {
    const TX* x;
    const TY* y;
    std::int32_t size;
    std::int32_t baseIndex;

    std::int32_t Order(std::int32_t slot) const { return LogicalOf(slot, baseIndex, size); }

    void Emit(BucketOutput& output, std::int32_t slot, double yValue) const {
        const std::int32_t logical = Order(slot);
        const double xValue = kIndexAsX ? static_cast<double>(logical) : XAtPosition(x, slot);
        output.Append(xValue, yValue, logical);
    }
};

}  // namespace qm
