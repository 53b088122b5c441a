// Fill step of the Linear row: plain, NaN-aware, ring, NaN-aware ring.

#include <type_traits>

#include "resampling/RowFilling.h"
#include "resampling/drivers/BucketMethods.h"
#include "resampling/nan/NaNAwareMethods.h"

namespace qm {

template <class TX, class TY>
void FillLinearRow(const StrategyTables<TX, TY>& tables) {
    FillBucketRow<LinearResamplingMethodBase<TX, TY>>(tables.methods, Linear, tables.operations);
    if constexpr (kCanHoldNaN<TY>) {
        using WithNaN = ResamplingMethodBaseWithNaN<TX, TY>;
        // Where TY is Double the plain NaN-aware table holds other classes in
        // three columns: Min runs MinOrMax, Mid runs Min, MinOrMax runs Mid.
        // Callers rely on it; the ring table follows the grid.
        if constexpr (std::is_same_v<TY, double>)
            FillRow<TX, TY, WithNaN, Reduction::MinMax, Reduction::MinOrMax, Reduction::Max, Reduction::Min,
                    Reduction::Mid>(tables.methodsWithNaN, Linear, tables.operations);
        else
            FillBucketRow<WithNaN>(tables.methodsWithNaN, Linear, tables.operations);
    }
    FillBucketRow<FifoLinearResamplingMethodBase<TX, TY>>(tables.fifoMethods, Linear, tables.operations);
    if constexpr (kCanHoldNaN<TY>)
        FillBucketRow<FifoResamplingMethodBaseWithNaN<TX, TY>>(tables.fifoMethodsWithNaN, Linear, tables.operations);
}

#define QM_INSTANTIATE_(XW, XT, YW, YT) template void FillLinearRow<XT, YT>(const StrategyTables<XT, YT>&);
QM_FOR_EACH_PAIR(QM_INSTANTIATE_)

}  // namespace qm
