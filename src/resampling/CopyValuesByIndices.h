#pragma once
// The way back from logical indices to values: gathers X and two Y series
// at the given indices into double arrays. Checks nothing; the mode of
// copying is decided once, outside the loop. The gather is compiled once
// per Y type; X is read through an XAxis.

#include <cstdint>

#include "model/XAxis.h"
#include "quillmap/QuillmapTypes.h"

namespace qm {

template <class TY>
struct IndexGather {
    static void Run(const XAxis& x, const TY* y, const TY* y1, const std::int32_t* indices, double* outX,
                    double* outY, double* outY1, std::int32_t count, std::int32_t size, std::int32_t baseIndex,
                    bool useIndexAsX);
};

#define QM_INDEX_GATHER_(prefix, W, T, N) prefix struct IndexGather<T>;
QM_Y_TYPES(QM_INDEX_GATHER_, extern template)

template <class TX, class TY>
struct CopyValuesByIndicesOperation {
    static void Run(const TX* x, const TY* y, const TY* y1, const std::int32_t* indices, double* outX, double* outY,
                    double* outY1, std::int32_t count, std::int32_t size, std::int32_t baseIndex, bool useIndexAsX) {
        IndexGather<TY>::Run(XAxis::Of(x), y, y1, indices, outX, outY, outY1, count, size, baseIndex, useIndexAsX);
    }
};

}  // namespace qm
