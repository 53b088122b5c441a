#pragma once
// Base of the unevenly spaced bucket strategies, plain and ring. A bucket may
// yield one point more than its reduction: the edge of a gap in X.

#include "resampling/ResamplingMethod.h"
#include "resampling/buckets/GridCapacity.h"

namespace qm {

template <class TX, class TY>
class UnevenlySpacedResamplingMethodBase : public ResamplingMethod<TX, TY> {
public:
    UnevenlySpacedResamplingMethodBase(const ArrayOperations<TY>* operations, std::int32_t pointsPerBucket)
        : ResamplingMethod<TX, TY>(operations), PointsPerBucket(pointsPerBucket) {}

    std::int32_t UpdateIndices(IntVector& indices, const TX*, const TY*, const ResamplingArgs& args) const override {
        return ReserveGridRoom(indices, args, MaxPointsPerBucket());
    }

protected:
    std::int32_t MaxPointsPerBucket() const { return WrappingAdd(PointsPerBucket, 1); }

private:
    const std::int32_t PointsPerBucket;
};

}  // namespace qm
