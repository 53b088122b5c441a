#pragma once
// The strategies of mode None: every point from StartIndex to EndIndex goes
// out as it stands, converted to double, with its logical index. They give
// the caller one calling sequence whatever the mode.

#include <algorithm>
#include <cstdint>

#include "model/ElementTypes.h"
#include "model/Int32Arithmetic.h"
#include "resampling/ResamplingMethod.h"

namespace qm {

inline std::int32_t VisibleCount(const ResamplingArgs& args) {
    return WrappingAdd(WrappingSub(args.EndIndex, args.StartIndex), 1);
}

template <class TX, class TY>
class NoneResamplingMethod : public ResamplingMethod<TX, TY> {
public:
    using ResamplingMethod<TX, TY>::ResamplingMethod;

    std::int32_t UpdateIndices(IntVector& indices, const TX*, const TY*, const ResamplingArgs& args) const override {
        const std::int32_t count = VisibleCount(args);
        indices.ReserveForAppend(count);
        return count;
    }
};

// Writes consecutive points of one run. It writes no more points than the
// vector was sized for, so a ring request whose first and last slot
// coincide (which walks the whole ring) cannot run past the caller's room.
template <class TX, class TY, bool kIndexAsX>
struct PassThroughWriter {
    const TX* x;
    const TY* y;
    double* outX;
    double* outY;
    std::int32_t* outIndex;
    std::int32_t room;
    std::int32_t logical;

    // Copies the slots [first, last] in order; logical indices run on.
    void CopySlots(std::int32_t first, std::int32_t last) {
        if (first > last) return;
        const std::int32_t n = std::min<std::int32_t>(room, WrappingAdd(WrappingSub(last, first), 1));
        for (std::int32_t k = 0; k < n; ++k) {
            const std::int32_t slot = first + k;
            *outX++ = kIndexAsX ? static_cast<double>(logical) : ToDouble(x[slot]);
            *outY++ = ToDouble(y[slot]);
            *outIndex++ = logical;
            logical = WrappingAdd(logical, 1);
        }
        room -= std::max<std::int32_t>(n, 0);
    }
};

template <class TX, class TY, bool kIndexAsX, bool kRing>
class PassThroughMethod final : public NoneResamplingMethod<TX, TY> {
public:
    using NoneResamplingMethod<TX, TY>::NoneResamplingMethod;

    void Execute(const TX* x, const TY* y, double* outX, double* outY, IntVector& indices,
                 const ResamplingArgs& args) const override {
        const std::int32_t size = args.InputSize;
        const std::int32_t first = kRing ? SlotOf(args.StartIndex, args.InputBaseIndex, size) : args.StartIndex;
        const std::int32_t last = kRing ? SlotOf(args.EndIndex, args.InputBaseIndex, size) : args.EndIndex;
        const std::int32_t offset = indices.size();
        const std::int32_t count = VisibleCount(args);
        indices.Resize(static_cast<std::uint32_t>(offset) + static_cast<std::uint32_t>(count));
        PassThroughWriter<TX, TY, kIndexAsX> writer{
            x, y, outX, outY, indices.data() + offset, std::max(count, 0), args.StartIndex};
        if constexpr (!kRing) {
            writer.CopySlots(first, last);
        } else if (first < last) {
            writer.CopySlots(first, last);
        } else {
            // The stretch wraps (or first == last, which walks the whole ring).
            writer.CopySlots(first, size - 1);
            writer.CopySlots(0, last);
        }
    }
};

template <class TX, class TY>
using LinearNoneResamplingMethod = PassThroughMethod<TX, TY, false, false>;
template <class TX, class TY>
using CategoryNoneResamplingMethod = PassThroughMethod<TX, TY, true, false>;
template <class TX, class TY>
using LinearNoneFifoResamplingMethod = PassThroughMethod<TX, TY, false, true>;
template <class TX, class TY>
using CategoryNoneFifoResamplingMethod = PassThroughMethod<TX, TY, true, true>;

}  // namespace qm
