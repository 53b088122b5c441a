#pragma once
// The engine of one type pair: a set of tables from the shape of a run
// (ring buffer or not, NaN gaps or not, data kind, mode) to a ready-made
// strategy, plus the one ArrayOperations all those strategies share. It
// holds no series and no result, so runs may overlap on one engine.

#include <cstdint>
#include <memory>
#include <type_traits>

#include "arrayops/ArrayOperations.h"
#include "interop/IntVector.h"
#include "model/ElementTypes.h"
#include "model/ResamplingArgs.h"
#include "quillmap/QuillmapTypes.h"
#include "resampling/StrategyTables.h"

namespace qm {

template <class TX, class TY>
struct NaNStrategyTables {
    StrategyTable<TX, TY> _fifoMethodsWithNaN;
    StrategyTable<TX, TY> _methodsWithNaN;
};

struct NoNaNStrategyTables {};

template <class TX, class TY>
class ExtremeResampler {
public:
    ExtremeResampler();
    ExtremeResampler(const ExtremeResampler&) = delete;
    ExtremeResampler& operator=(const ExtremeResampler&) = delete;
    ~ExtremeResampler();

    // `mode` (not args.Resampling) is the column: the caller passes the
    // answer of GetActualResampling. Neither it nor args.Data is
    // range-checked.
    std::int32_t UpdateIndices(IntVector& indices, const TX* x, const TY* y, std::int32_t mode,
                               const ResamplingArgs& args) const;
    void Execute(const TX* x, const TY* y, double* outX, double* outY, IntVector& indices, std::int32_t mode,
                 const ResamplingArgs& args) const;

private:
    static constexpr bool kHasNaNTables = kCanHoldNaN<TY>;

    // A copy of the shared pointer, so the strategy stays alive for the call.
    std::shared_ptr<ResamplingMethod<TX, TY>> Select(std::int32_t mode, const ResamplingArgs& args) const;

    std::unique_ptr<ArrayOperations<TY>> _arrayOperations;
    StrategyTable<TX, TY> _fifoMethods;
    StrategyTable<TX, TY> _methods;
    [[no_unique_address]] std::conditional_t<kHasNaNTables, NaNStrategyTables<TX, TY>, NoNaNStrategyTables> _nan;
};

#define QM_EXTERN_ENGINE_(XW, XT, YW, YT) extern template class ExtremeResampler<XT, YT>;
QM_FOR_EACH_PAIR(QM_EXTERN_ENGINE_)
#undef QM_EXTERN_ENGINE_

}  // namespace qm
