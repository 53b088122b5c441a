#pragma once
// The run-local record through which the NaN-aware strategies append the
// indices they keep. There is no preset room: the vector grows as it must,
// and what was in it before the run stays in front.

#include <cstdint>

#include "interop/IntVector.h"
#include "model/ResamplingArgs.h"

namespace qm {

struct NaNBucketOutput {
    IntVector* indices;
    const ResamplingArgs* args;

    void Append(std::int32_t index) const { indices->PushBack(index); }
};

}  // namespace qm
