#pragma once
// The bucket strategies without NaN handling as the tables of one type pair
// hold them: one class per data kind and layout, with the mode as a member.
// All they add to the walk (BucketWalk.h) is the X type of the pair.

#include <cstdint>

#include "model/XAxis.h"
#include "resampling/ResamplingMethod.h"
#include "resampling/drivers/BucketWalk.h"

namespace qm {

template <class TX, class TY, class Layout, ResamplingData kData>
class BucketMethod final : public ResamplingMethod<TX, TY> {
public:
    BucketMethod(const ArrayOperations<TY>* operations, Reduction reduction)
        : ResamplingMethod<TX, TY>(operations), _reduction(reduction) {}

    std::int32_t UpdateIndices(IntVector& indices, const TX*, const TY*, const ResamplingArgs& args) const override {
        return Walk::UpdateIndices(_reduction, indices, args);
    }

    void Execute(const TX* x, const TY* y, double* outX, double* outY, IntVector& indices,
                 const ResamplingArgs& args) const override {
        Walk::Execute(this->Operations(), _reduction, XAxis::Of(x), y, outX, outY, indices, args);
    }

private:
    using Walk = BucketWalk<TY, Layout, kData>;

    const Reduction _reduction;
};

template <class TX, class TY>
using LinearResamplingMethodBase = BucketMethod<TX, TY, PlainLayout, Linear>;
template <class TX, class TY>
using CategoryResamplingMethodBase = BucketMethod<TX, TY, PlainLayout, Category>;
template <class TX, class TY>
using UnevenlySpacedResamplingMethod = BucketMethod<TX, TY, PlainLayout, UnevenlySpaced>;
template <class TX, class TY>
using FifoLinearResamplingMethodBase = BucketMethod<TX, TY, RingLayout, Linear>;
template <class TX, class TY>
using FifoCategoryResamplingMethodBase = BucketMethod<TX, TY, RingLayout, Category>;
template <class TX, class TY>
using UnevenlySpacedFifoResamplingMethod = BucketMethod<TX, TY, RingLayout, UnevenlySpaced>;

}  // namespace qm
