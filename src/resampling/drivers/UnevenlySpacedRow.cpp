// Fill step of the UnevenlySpaced row: plain, NaN-aware, ring, NaN-aware ring.

#include "resampling/RowFilling.h"
#include "resampling/drivers/BucketMethods.h"
#include "resampling/nan/NaNAwareMethods.h"

namespace qm {

template <class TX, class TY>
void FillUnevenlySpacedRow(const StrategyTables<TX, TY>& tables) {
    FillBucketRow<UnevenlySpacedResamplingMethod<TX, TY>>(tables.methods, UnevenlySpaced, tables.operations);
    if constexpr (kCanHoldNaN<TY>)
        FillBucketRow<UnevenlySpacedResamplingMethodWithNaN<TX, TY>>(tables.methodsWithNaN, UnevenlySpaced,
                                                                      tables.operations);
    FillBucketRow<UnevenlySpacedFifoResamplingMethod<TX, TY>>(tables.fifoMethods, UnevenlySpaced,
                                                              tables.operations);
    if constexpr (kCanHoldNaN<TY>)
        FillBucketRow<UnevenlySpacedFifoResamplingMethodWithNaN<TX, TY>>(tables.fifoMethodsWithNaN, UnevenlySpaced,
                                                                          tables.operations);
}

#define QM_INSTANTIATE_(XW, XT, YW, YT) template void FillUnevenlySpacedRow<XT, YT>(const StrategyTables<XT, YT>&);
QM_FOR_EACH_PAIR(QM_INSTANTIATE_)

}  // namespace qm
