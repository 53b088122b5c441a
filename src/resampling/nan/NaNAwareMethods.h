#pragma once
// The NaN-aware strategies as the tables of one type pair hold them: one
// class per data kind and layout, with the mode as a member. All they add
// to the walk (NaNAwareWalk.h) is the X type of the pair.

#include <cstdint>

#include "model/XAxis.h"
#include "resampling/ResamplingMethod.h"
#include "resampling/nan/NaNAwareWalk.h"

namespace qm {

template <class TX, class TY, class Layout, ResamplingData kData>
class NaNAwareMethod final : public ResamplingMethod<TX, TY> {
public:
    // On plain arrays a one-sided MinOrMax run keeps the point nearest the
    // zero line, in a ring the farthest, as the bucket strategies do.
    NaNAwareMethod(const ArrayOperations<TY>* operations, Reduction reduction)
        : ResamplingMethod<TX, TY>(operations),
          _reduction(!Layout::kRing && reduction == Reduction::MinOrMax ? Reduction::MinOrMaxNearest : reduction) {}

    std::int32_t UpdateIndices(IntVector& indices, const TX* x, const TY* y,
                               const ResamplingArgs& args) const override {
        return Walk::UpdateIndices(_reduction, indices, XAxis::Of(x), y, args);
    }

    void Execute(const TX* x, const TY* y, double* outX, double* outY, IntVector& indices,
                 const ResamplingArgs& args) const override {
        Walk::Execute(XAxis::Of(x), y, outX, outY, indices, args);
    }

private:
    using Walk = NaNAwareWalk<TY, Layout, kData>;

    const Reduction _reduction;
};

template <class TX, class TY>
using ResamplingMethodBaseWithNaN = NaNAwareMethod<TX, TY, PlainLayout, Linear>;
template <class TX, class TY>
using CategoryResamplingMethodBaseWithNaN = NaNAwareMethod<TX, TY, PlainLayout, Category>;
template <class TX, class TY>
using UnevenlySpacedResamplingMethodWithNaN = NaNAwareMethod<TX, TY, PlainLayout, UnevenlySpaced>;
template <class TX, class TY>
using FifoResamplingMethodBaseWithNaN = NaNAwareMethod<TX, TY, RingLayout, Linear>;
template <class TX, class TY>
using FifoCategoryResamplingMethodBaseWithNaN = NaNAwareMethod<TX, TY, RingLayout, Category>;
template <class TX, class TY>
using UnevenlySpacedFifoResamplingMethodWithNaN = NaNAwareMethod<TX, TY, RingLayout, UnevenlySpaced>;

}  // namespace qm
