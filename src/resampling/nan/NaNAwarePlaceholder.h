#pragma once
// Stands in the bucket cells of the NaN-aware tables until the NaN-aware
// strategies exist: a run that selects one fails cleanly (reported to the
// caller as an ApplicationException) instead of running a strategy that
// would let NaN gaps close.

#include <memory>
#include <stdexcept>

#include "resampling/ResamplingMethod.h"

namespace qm {

template <class TX, class TY>
class NaNAwarePlaceholder final : public ResamplingMethod<TX, TY> {
public:
    using ResamplingMethod<TX, TY>::ResamplingMethod;

    std::int32_t UpdateIndices(IntVector&, const TX*, const TY*, const ResamplingArgs&) const override { Fail(); }
    void Execute(const TX*, const TY*, double*, double*, IntVector&, const ResamplingArgs&) const override { Fail(); }

private:
    [[noreturn]] static void Fail() {
        throw std::logic_error("NaN-aware resampling (HasNaN with a bucket mode) is not available in this build");
    }
};

template <class TX, class TY>
std::shared_ptr<ResamplingMethod<TX, TY>> MakeNaNAwarePlaceholder(const ArrayOperations<TY>* operations) {
    return std::make_shared<NaNAwarePlaceholder<TX, TY>>(operations);
}

}  // namespace qm
