// Fill step of the Category row: plain, NaN-aware, ring, NaN-aware ring.

#include "resampling/RowFilling.h"
#include "resampling/drivers/BucketMethods.h"
#include "resampling/nan/NaNAwareMethods.h"

namespace qm {

template <class TX, class TY>
void FillCategoryRow(const StrategyTables<TX, TY>& tables) {
    FillBucketRow<CategoryResamplingMethodBase<TX, TY>>(tables.methods, Category, tables.operations);
    if constexpr (kCanHoldNaN<TY>)
        FillBucketRow<CategoryResamplingMethodBaseWithNaN<TX, TY>>(tables.methodsWithNaN, Category,
                                                                    tables.operations);
    FillBucketRow<FifoCategoryResamplingMethodBase<TX, TY>>(tables.fifoMethods, Category, tables.operations);
    if constexpr (kCanHoldNaN<TY>)
        FillBucketRow<FifoCategoryResamplingMethodBaseWithNaN<TX, TY>>(tables.fifoMethodsWithNaN, Category,
                                                                        tables.operations);
}

#define QM_INSTANTIATE_(XW, XT, YW, YT) template void FillCategoryRow<XT, YT>(const StrategyTables<XT, YT>&);
QM_FOR_EACH_PAIR(QM_INSTANTIATE_)

}  // namespace qm
