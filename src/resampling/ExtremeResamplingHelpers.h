#pragma once
// Operations beside the engine that depend on no element type.

#include <cstdint>

#include "interop/IntVector.h"
#include "model/ResamplingArgs.h"

namespace qm {

struct ExtremeResamplingHelpersWrapper {
    // The mode to run: args.Resampling when the visible points are more than
    // twice the grid's cells, None otherwise. Looks at the range only.
    static std::int32_t GetActualResampling(const ResamplingArgs& args);

    // Merges two ascending runs stored back to back in `indices` into
    // `output`; a value in both runs goes out once. Returns the count.
    static std::int32_t MergeIndices(const IntVector& indices, std::int32_t firstCount, std::int32_t secondCount,
                                     std::int32_t* output);

    static void CopyVectorTo(const IntVector& source, std::int32_t* destination);
};

}  // namespace qm
