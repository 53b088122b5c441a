#pragma once
// The checks of a resampling run that the exports add: an enumeration value
// that would index past the strategy tables, a ring that would divide by
// zero or map a logical index outside the caller's slots, and a null array
// that the selected strategy would really touch. Valid runs pass whatever
// pointers they leave unused (a category run never reads X, an empty range
// reads nothing, a bucket UpdateIndices only reads args).

#include <cstdint>

#include "model/ResamplingArgs.h"

namespace qm::interop {

enum class RunCall { UpdateIndices, Execute };

struct RunPointers {
    const void* self;
    const void* x;
    const void* y;
    const void* outX;  // null in UpdateIndices, which writes no values
    const void* outY;
};

// True (after one report) when the run must not start. `nanTables` tells
// whether TY has the NaN-aware tables; `indexCount` is the size of the index
// vector at entry, which is what a NaN-aware Execute gathers by, and `room`
// its spare capacity, the most a bucket Execute writes.
bool IsRunRefused(RunCall call, const RunPointers& pointers, std::int32_t mode, const ResamplingArgs& args,
                  bool nanTables, std::int32_t indexCount, std::int32_t room);

// The same for CopyValuesByIndices, which gathers `count` points.
bool IsCopyRefused(const void* x, const void* y, const void* y1, const void* indices, const void* outX,
                   const void* outY, const void* outY1, std::int32_t count, std::int32_t size,
                   std::int32_t baseIndex, bool useIndexAsX);

}  // namespace qm::interop
