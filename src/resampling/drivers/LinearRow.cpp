// Fill step of the Linear row: plain, NaN-aware, ring, NaN-aware ring.

#include "resampling/RowFilling.h"
#include "resampling/drivers/LinearDriver.h"
#include "resampling/drivers/FifoLinearDriver.h"

namespace qm {

template <class TX, class TY>
void FillLinearRow(const StrategyTables<TX, TY>& tables) {
    FillBucketRow<PlainReducingMethod, LinearResamplingMethodBase<TX, TY>>(*tables.methods, Linear, tables.operations);
    FillNaNAwareRow(tables.methodsWithNaN, Linear, tables.operations);
    FillBucketRow<RingReducingMethod, FifoLinearResamplingMethodBase<TX, TY>>(*tables.fifoMethods, Linear, tables.operations);
    FillNaNAwareRow(tables.fifoMethodsWithNaN, Linear, tables.operations);
}

#define QM_INSTANTIATE_(XW, XT, YW, YT) template void FillLinearRow<XT, YT>(const StrategyTables<XT, YT>&);
QM_FOR_EACH_PAIR(QM_INSTANTIATE_)

}  // namespace qm
