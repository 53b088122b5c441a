#include "resampling/drivers/PassThroughCopy.h"

#include <algorithm>

namespace qm {
namespace {

// Writes consecutive points of one run; logical indices run on from slot to
// slot, also across the seam of a ring.
template <class TY>
struct PassThroughWriter {
    const PassThroughSource& source;
    const TY* y;
    double* outX;
    double* outY;
    std::int32_t* outIndex;
    std::int32_t room;
    std::int32_t logical;

    // Copies the slots [first, last] in order.
    void CopySlots(std::int32_t first, std::int32_t last) {
        if (first > last) return;
        const std::int32_t n = std::min<std::int32_t>(room, WrappingAdd(WrappingSub(last, first), 1));
        if (n <= 0) return;
        if (!source.indexAsX) source.x.Copy(first, n, outX);
        for (std::int32_t k = 0; k < n; ++k) {
            const std::int32_t index = WrappingAdd(logical, k);
            if (source.indexAsX) outX[k] = static_cast<double>(index);
            outY[k] = ToDouble(y[first + k]);
            outIndex[k] = index;
        }
        outX += n;
        outY += n;
        outIndex += n;
        logical = WrappingAdd(logical, n);
        room -= n;
    }
};

}  // namespace

template <class TY>
void PassThroughCopy<TY>::Run(const PassThroughSource& source, const TY* y, double* outX, double* outY,
                              IntVector& indices, const ResamplingArgs& args) {
    const std::int32_t size = args.InputSize;
    const bool ring = source.ring;
    const std::int32_t first = ring ? SlotOf(args.StartIndex, args.InputBaseIndex, size) : args.StartIndex;
    const std::int32_t last = ring ? SlotOf(args.EndIndex, args.InputBaseIndex, size) : args.EndIndex;
    const std::int32_t offset = indices.size();
    const std::int32_t count = VisibleCount(args);
    indices.Resize(static_cast<std::uint32_t>(offset) + static_cast<std::uint32_t>(count));
    PassThroughWriter<TY> writer{source, y, outX, outY, indices.data() + offset, std::max(count, 0), args.StartIndex};
    if (!ring || first < last) {
        writer.CopySlots(first, last);
    } else {
        // The stretch wraps (or first == last, which walks the whole ring).
        writer.CopySlots(first, size - 1);
        writer.CopySlots(0, last);
    }
}

QM_Y_TYPES(QM_PASS_THROUGH_COPY_, template)

}  // namespace qm
