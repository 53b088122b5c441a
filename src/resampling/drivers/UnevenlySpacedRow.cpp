// Fill step of the UnevenlySpaced row: plain, NaN-aware, ring, NaN-aware ring.

#include "resampling/RowFilling.h"
#include "resampling/drivers/UnevenlySpacedDriver.h"
#include "resampling/drivers/FifoUnevenlySpacedDriver.h"

namespace qm {

template <class TX, class TY>
void FillUnevenlySpacedRow(const StrategyTables<TX, TY>& tables) {
    FillBucketRow<PlainReducingMethod, UnevenlySpacedResamplingMethod<TX, TY>>(*tables.methods, UnevenlySpaced, tables.operations);
    FillNaNAwareRow(tables.methodsWithNaN, UnevenlySpaced, tables.operations);
    FillBucketRow<RingReducingMethod, UnevenlySpacedFifoResamplingMethod<TX, TY>>(*tables.fifoMethods, UnevenlySpaced, tables.operations);
    FillNaNAwareRow(tables.fifoMethodsWithNaN, UnevenlySpaced, tables.operations);
}

#define QM_INSTANTIATE_(XW, XT, YW, YT) template void FillUnevenlySpacedRow<XT, YT>(const StrategyTables<XT, YT>&);
QM_FOR_EACH_PAIR(QM_INSTANTIATE_)

}  // namespace qm
