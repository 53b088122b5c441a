#include "resampling/CopyValuesByIndices.h"

#include "model/ElementTypes.h"
#include "model/Int32Arithmetic.h"

namespace qm {
namespace {

template <class TY, bool kRing, bool kIndexAsX>
void Gather(const XAxis& x, const TY* y, const TY* y1, const std::int32_t* indices, double* outX, double* outY,
            double* outY1, std::int32_t count, std::int32_t size, std::int32_t baseIndex) {
    for (std::int32_t k = 0; k < count; ++k) {
        const std::int32_t i = indices[k];
        const std::int32_t slot = kRing ? SlotOf(i, baseIndex, size) : i;
        outX[k] = kIndexAsX ? static_cast<double>(i) : x.At(slot);
        outY[k] = ToDouble(y[slot]);
        outY1[k] = ToDouble(y1[slot]);
    }
}

}  // namespace

template <class TY>
void IndexGather<TY>::Run(const XAxis& x, const TY* y, const TY* y1, const std::int32_t* indices, double* outX,
                          double* outY, double* outY1, std::int32_t count, std::int32_t size, std::int32_t baseIndex,
                          bool useIndexAsX) {
    const bool ring = baseIndex != 0;
    if (ring && useIndexAsX)
        Gather<TY, true, true>(x, y, y1, indices, outX, outY, outY1, count, size, baseIndex);
    else if (ring)
        Gather<TY, true, false>(x, y, y1, indices, outX, outY, outY1, count, size, baseIndex);
    else if (useIndexAsX)
        Gather<TY, false, true>(x, y, y1, indices, outX, outY, outY1, count, size, baseIndex);
    else
        Gather<TY, false, false>(x, y, y1, indices, outX, outY, outY1, count, size, baseIndex);
}

QM_Y_TYPES(QM_INDEX_GATHER_, template)

}  // namespace qm
