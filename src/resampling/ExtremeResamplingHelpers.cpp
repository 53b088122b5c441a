#include "resampling/ExtremeResamplingHelpers.h"

#include <cstring>

#include "model/Int32Arithmetic.h"
#include "resampling/buckets/Grid.h"

namespace qm {

std::int32_t ExtremeResamplingHelpersWrapper::GetActualResampling(const ResamplingArgs& args) {
    if (args.Data == NotResampled) return None;
    if (args.Resampling == None) return None;
    const std::int32_t pointCount = WrappingAdd(WrappingSub(args.EndIndex, args.StartIndex), 1);
    const std::int32_t buckets = GridBucketCount(args, GridStep(args));
    // Doubled for every mode; a degenerate grid (INT32_MIN buckets) wraps to
    // 0 here, so such a range always answers the requested mode.
    const std::int32_t threshold = WrappingAdd(buckets, buckets);
    return pointCount > threshold ? args.Resampling : None;
}

std::int32_t ExtremeResamplingHelpersWrapper::MergeIndices(const IntVector& indices, std::int32_t firstCount,
                                                           std::int32_t secondCount, std::int32_t* output) {
    const std::int32_t* first = indices.data();
    const std::int32_t* second = first + (firstCount > 0 ? firstCount : 0);
    std::int32_t i = 0;
    std::int32_t j = 0;
    std::int32_t k = 0;
    if (firstCount > 0) {
        while (i < firstCount && j < secondCount) {
            const std::int32_t a = first[i];
            const std::int32_t b = second[j];
            if (a < b) {
                output[k] = a;
                ++i;
            } else if (a > b) {
                output[k] = b;
                ++j;
            } else {
                output[k] = a;
                ++i;
                ++j;
            }
            ++k;
        }
        while (i < firstCount) output[k++] = first[i++];
    }
    while (j < secondCount) output[k++] = second[j++];
    return k;
}

void ExtremeResamplingHelpersWrapper::CopyVectorTo(const IntVector& source, std::int32_t* destination) {
    if (source.size() > 0)
        std::memcpy(destination, source.data(), static_cast<std::size_t>(source.size()) * sizeof(std::int32_t));
}

}  // namespace qm
