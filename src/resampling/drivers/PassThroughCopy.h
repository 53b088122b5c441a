#pragma once
// The copy behind the pass-through strategies, compiled once per Y type.

#include <cstdint>

#include "interop/IntVector.h"
#include "model/Int32Arithmetic.h"
#include "model/ResamplingArgs.h"
#include "model/XAxis.h"
#include "quillmap/QuillmapTypes.h"

namespace qm {

inline std::int32_t VisibleCount(const ResamplingArgs& args) {
    return WrappingAdd(WrappingSub(args.EndIndex, args.StartIndex), 1);
}

struct PassThroughSource {
    XAxis x;
    bool indexAsX;  // X is the logical index; x is not read
    bool ring;
};

template <class TY>
struct PassThroughCopy {
    // Appends the visible points to `indices` and writes their values. It
    // writes no more points than the vector was sized for, so a ring request
    // whose first and last slot coincide (which walks the whole ring) cannot
    // run past the caller's room.
    static void Run(const PassThroughSource& source, const TY* y, double* outX, double* outY, IntVector& indices,
                    const ResamplingArgs& args);
};

#define QM_PASS_THROUGH_COPY_(prefix, W, T, N) prefix struct PassThroughCopy<T>;
QM_Y_TYPES(QM_PASS_THROUGH_COPY_, extern template)

}  // namespace qm
