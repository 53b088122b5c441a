#pragma once
// The strategies of mode None: every point from StartIndex to EndIndex goes
// out as it stands, converted to double, with its logical index. They give
// the caller one calling sequence whatever the mode. The copy is compiled
// once per Y type (PassThroughCopy.h); the classes add the X type.

#include <cstdint>

#include "model/Int32Arithmetic.h"
#include "model/XAxis.h"
#include "resampling/ResamplingMethod.h"
#include "resampling/drivers/PassThroughCopy.h"

namespace qm {

template <class TX, class TY>
class NoneResamplingMethod : public ResamplingMethod<TX, TY> {
public:
    using ResamplingMethod<TX, TY>::ResamplingMethod;

    std::int32_t UpdateIndices(IntVector& indices, const TX*, const TY*, const ResamplingArgs& args) const override {
        const std::int32_t count = VisibleCount(args);
        indices.ReserveForAppend(count);
        return count;
    }
};

template <class TX, class TY, bool kIndexAsX, bool kRing>
class PassThroughMethod final : public NoneResamplingMethod<TX, TY> {
public:
    using NoneResamplingMethod<TX, TY>::NoneResamplingMethod;

    void Execute(const TX* x, const TY* y, double* outX, double* outY, IntVector& indices,
                 const ResamplingArgs& args) const override {
        PassThroughCopy<TY>::Run({XAxis::Of(x), kIndexAsX, kRing}, y, outX, outY, indices, args);
    }
};

template <class TX, class TY>
using LinearNoneResamplingMethod = PassThroughMethod<TX, TY, false, false>;
template <class TX, class TY>
using CategoryNoneResamplingMethod = PassThroughMethod<TX, TY, true, false>;
template <class TX, class TY>
using LinearNoneFifoResamplingMethod = PassThroughMethod<TX, TY, false, true>;
template <class TX, class TY>
using CategoryNoneFifoResamplingMethod = PassThroughMethod<TX, TY, true, true>;

}  // namespace qm
