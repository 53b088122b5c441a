#pragma once
// Base of the Linear and Category bucket strategies, plain and ring: the
// room a run needs is one grid's cells times the points a bucket yields.

#include "resampling/ResamplingMethod.h"
#include "resampling/buckets/GridCapacity.h"

namespace qm {

template <class TX, class TY>
class EvenlySpacedResamplingMethod : public ResamplingMethod<TX, TY> {
public:
    EvenlySpacedResamplingMethod(const ArrayOperations<TY>* operations, std::int32_t pointsPerBucket)
        : ResamplingMethod<TX, TY>(operations), PointsPerBucket(pointsPerBucket) {}

    std::int32_t UpdateIndices(IntVector& indices, const TX*, const TY*, const ResamplingArgs& args) const override {
        return ReserveGridRoom(indices, args, PointsPerBucket);
    }

protected:
    std::int32_t MaxPointsPerBucket() const { return PointsPerBucket; }

private:
    const std::int32_t PointsPerBucket;
};

}  // namespace qm
