#pragma once
// What a run asks the library for, in the words of the interface's
// ResamplingArgs record and its two enumerations.

#include <cstdint>

#include "quillmap/QuillmapCore.h"

namespace demo {

// ResamplingMode and ResamplingData values of the interface.
enum Mode : std::int32_t { kNone = 0, kMinMax = 1, kMin = 2, kMax = 3, kMid = 4, kMinOrMax = 5 };
enum DataKind : std::int32_t { kLinear = 0, kCategory = 1, kUnevenlySpaced = 2 };

const char* ModeName(std::int32_t mode);
const char* DataKindName(std::int32_t data);

struct RunRequest {
    std::int32_t data = kLinear;
    std::int32_t mode = kMinMax;  // what the user asks for; the library may answer None
    std::int32_t startIndex = 0;  // logical, inclusive
    std::int32_t endIndex = 0;    // logical, inclusive
    std::int32_t viewportWidth = 1920;
    double minX = 0.0;
    double maxX = 0.0;
    std::int32_t inputSize = 0;       // ring buffers only
    std::int32_t inputBaseIndex = 0;  // not 0: the arrays are a ring
    double zeroLineY = 0.0;
    bool hasNaN = false;              // Y may hold NaN gaps: the NaN-aware strategies run
};

// Sets every field of the record through its exported setter.
void FillArgs(QmResamplingArgs* args, const RunRequest& request);

}  // namespace demo
