#include "resampling/ExtremeResampler.h"

#include "arrayops/GenericArrayOperations.h"

namespace qm {

template <class TX, class TY>
ExtremeResampler<TX, TY>::ExtremeResampler() : _arrayOperations(std::make_unique<GenericArrayOperations<TY>>()) {
    StrategyTables<TX, TY> tables{_arrayOperations.get(), &_methods, nullptr, &_fifoMethods, nullptr};
    if constexpr (kHasNaNTables) {
        tables.methodsWithNaN = &_nan._methodsWithNaN;
        tables.fifoMethodsWithNaN = &_nan._fifoMethodsWithNaN;
    }
    FillPassThroughCells(tables);
    FillLinearRow(tables);
    FillCategoryRow(tables);
    FillUnevenlySpacedRow(tables);
}

template <class TX, class TY>
ExtremeResampler<TX, TY>::~ExtremeResampler() {
    for (std::int32_t i = 0; i < kStrategyTableSize; ++i) {
        _methods[i].reset();
        _fifoMethods[i].reset();
    }
    // Strategies never touch the operations in their destructors, so the NaN
    // tables may let go of theirs after this.
    _arrayOperations.reset();
}

template <class TX, class TY>
std::shared_ptr<ResamplingMethod<TX, TY>> ExtremeResampler<TX, TY>::Select(std::int32_t mode,
                                                                            const ResamplingArgs& args) const {
    const std::int32_t index = args.Data * RESAMPLING_MODE_COUNT + mode;
    const bool ring = args.InputBaseIndex != NORMALIZED_BASE_INDEX;
    if constexpr (kHasNaNTables) {
        if (args.HasNaN) return ring ? _nan._fifoMethodsWithNaN[index] : _nan._methodsWithNaN[index];
    }
    return ring ? _fifoMethods[index] : _methods[index];
}

template <class TX, class TY>
std::int32_t ExtremeResampler<TX, TY>::UpdateIndices(IntVector& indices, const TX* x, const TY* y, std::int32_t mode,
                                                     const ResamplingArgs& args) const {
    return Select(mode, args)->UpdateIndices(indices, x, y, args);
}

template <class TX, class TY>
void ExtremeResampler<TX, TY>::Execute(const TX* x, const TY* y, double* outX, double* outY, IntVector& indices,
                                       std::int32_t mode, const ResamplingArgs& args) const {
    Select(mode, args)->Execute(x, y, outX, outY, indices, args);
}

#define QM_INSTANTIATE_ENGINE_(XW, XT, YW, YT) template class ExtremeResampler<XT, YT>;
QM_FOR_EACH_PAIR(QM_INSTANTIATE_ENGINE_)
#undef QM_INSTANTIATE_ENGINE_

}  // namespace qm
