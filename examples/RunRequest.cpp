#include "RunRequest.h"

namespace demo {

const char* ModeName(std::int32_t mode) {
    switch (mode) {
        case kNone: return "None";
        case kMinMax: return "MinMax";
        case kMin: return "Min";
        case kMax: return "Max";
        case kMid: return "Mid";
        case kMinOrMax: return "MinOrMax";
        default: return "?";
    }
}

const char* DataKindName(std::int32_t data) {
    switch (data) {
        case kLinear: return "Linear";
        case kCategory: return "Category";
        case kUnevenlySpaced: return "UnevenlySpaced";
        default: return "?";
    }
}

void FillArgs(QmResamplingArgs* args, const RunRequest& request) {
    CSharp_ResamplingArgs_Resampling_set(args, request.mode);
    CSharp_ResamplingArgs_Data_set(args, request.data);
    CSharp_ResamplingArgs_StartIndex_set(args, request.startIndex);
    CSharp_ResamplingArgs_EndIndex_set(args, request.endIndex);
    CSharp_ResamplingArgs_ViewportWidth_set(args, request.viewportWidth);
    CSharp_ResamplingArgs_ResamplingPrecision_set(args, 0);  // buckets of at most one pixel
    CSharp_ResamplingArgs_MinXInclusive_set(args, request.minX);
    CSharp_ResamplingArgs_MaxXInclusive_set(args, request.maxX);
    CSharp_ResamplingArgs_InputSize_set(args, request.inputSize);
    CSharp_ResamplingArgs_InputBaseIndex_set(args, request.inputBaseIndex);
    CSharp_ResamplingArgs_HasNaN_set(args, request.hasNaN ? 1 : 0);
    CSharp_ResamplingArgs_ZeroLineY_set(args, request.zeroLineY);
}

}  // namespace demo
