#pragma once
// The way back from logical indices to values: gathers X and two Y series
// at the given indices into double arrays. Checks nothing; the mode of
// copying is decided once, outside the loop.

#include <cstdint>

#include "model/ElementTypes.h"
#include "model/Int32Arithmetic.h"

namespace qm {

template <class TX, class TY>
struct CopyValuesByIndicesOperation {
    template <bool kRing, bool kIndexAsX>
    static void Gather(const TX* x, const TY* y, const TY* y1, const std::int32_t* indices, double* outX, double* outY,
                       double* outY1, std::int32_t count, std::int32_t size, std::int32_t baseIndex) {
        for (std::int32_t k = 0; k < count; ++k) {
            const std::int32_t i = indices[k];
            const std::int32_t slot = kRing ? WrappingAdd(i, baseIndex) % size : i;
            outX[k] = kIndexAsX ? static_cast<double>(i) : ToDouble(x[slot]);
            outY[k] = ToDouble(y[slot]);
            outY1[k] = ToDouble(y1[slot]);
        }
    }

    static void Run(const TX* x, const TY* y, const TY* y1, const std::int32_t* indices, double* outX, double* outY,
                    double* outY1, std::int32_t count, std::int32_t size, std::int32_t baseIndex, bool useIndexAsX) {
        const bool ring = baseIndex != 0;
        if (ring && useIndexAsX)
            Gather<true, true>(x, y, y1, indices, outX, outY, outY1, count, size, baseIndex);
        else if (ring)
            Gather<true, false>(x, y, y1, indices, outX, outY, outY1, count, size, baseIndex);
        else if (useIndexAsX)
            Gather<false, true>(x, y, y1, indices, outX, outY, outY1, count, size, baseIndex);
        else
            Gather<false, false>(x, y, y1, indices, outX, outY, outY1, count, size, baseIndex);
    }
};

}  // namespace qm
