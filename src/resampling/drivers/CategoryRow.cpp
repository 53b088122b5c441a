// Fill step of the Category row: plain, NaN-aware, ring, NaN-aware ring.

#include "resampling/RowFilling.h"
#include "resampling/drivers/CategoryDriver.h"
#include "resampling/drivers/FifoCategoryDriver.h"

namespace qm {

template <class TX, class TY>
void FillCategoryRow(const StrategyTables<TX, TY>& tables) {
    FillBucketRow<PlainReducingMethod, CategoryResamplingMethodBase<TX, TY>>(*tables.methods, Category, tables.operations);
    FillNaNAwareRow(tables.methodsWithNaN, Category, tables.operations);
    FillBucketRow<RingReducingMethod, FifoCategoryResamplingMethodBase<TX, TY>>(*tables.fifoMethods, Category, tables.operations);
    FillNaNAwareRow(tables.fifoMethodsWithNaN, Category, tables.operations);
}

#define QM_INSTANTIATE_(XW, XT, YW, YT) template void FillCategoryRow<XT, YT>(const StrategyTables<XT, YT>&);
QM_FOR_EACH_PAIR(QM_INSTANTIATE_)

}  // namespace qm
