// The four fill steps of an engine's tables, for all type pairs. The
// strategies are thin classes over walks compiled per Y type, so this is
// light however many pairs there are.

#include "resampling/StrategyTables.h"

#include <type_traits>

#include "resampling/ModeMethods.h"
#include "resampling/drivers/PassThroughMethods.h"

namespace qm {
namespace {

// One bucket row of a table, each cell an object of its own, columns filled
// from MinMax to MinOrMax. The class of each column is named by the caller,
// so the one row that holds other classes than the grid reads as such. The
// NaN-aware tables exist only where TY can hold NaN (a null table is
// skipped).
template <class MinMaxClass, class MinClass, class MaxClass, class MidClass, class MinOrMaxClass, class TX, class TY>
void FillRow(StrategyTable<TX, TY>* table, ResamplingData row, const ArrayOperations<TY>* operations) {
    if (table == nullptr) return;
    auto make = [&]<class M>(M) { return MakeStrategy<TX, TY, typename M::Class>(operations, M::kMode); };
    (*table)[TableIndex(row, MinMax)] = make(MinMaxClass{});
    (*table)[TableIndex(row, Min)] = make(MinClass{});
    (*table)[TableIndex(row, Max)] = make(MaxClass{});
    (*table)[TableIndex(row, Mid)] = make(MidClass{});
    (*table)[TableIndex(row, MinOrMax)] = make(MinOrMaxClass{});
}

// A row as the grid has it: the family's five modes in their own columns.
template <class Family, class TX, class TY>
void FillBucketRow(StrategyTable<TX, TY>* table, ResamplingData row, const ArrayOperations<TY>* operations) {
    FillRow<ModeMethod<Family, Reduction::MinMax>, ModeMethod<Family, Reduction::Min>,
            ModeMethod<Family, Reduction::Max>, ModeMethod<Family, Reduction::Mid>,
            ModeMethod<Family, Reduction::MinOrMax>>(table, row, operations);
}

template <class TX, class TY>
void FillPassThroughTable(StrategyTable<TX, TY>* table, const std::shared_ptr<ResamplingMethod<TX, TY>>& linearNone,
                          const std::shared_ptr<ResamplingMethod<TX, TY>>& categoryNone) {
    if (table == nullptr) return;
    (*table)[TableIndex(Linear, None)] = linearNone;
    (*table)[TableIndex(Category, None)] = categoryNone;
    (*table)[TableIndex(UnevenlySpaced, None)] = linearNone;  // uneven data has no pass-through of its own
    for (ResamplingMode mode : {None, MinMax, Min, Max, Mid, MinOrMax})
        (*table)[TableIndex(NotResampled, mode)] = linearNone;
}

}  // namespace

// Four pass-through objects per engine, each shared by all the cells naming it.
template <class TX, class TY>
void FillPassThroughCells(const StrategyTables<TX, TY>& tables) {
    const auto linearNone = MakeStrategy<TX, TY, LinearNoneResamplingMethod<TX, TY>>(tables.operations);
    const auto categoryNone = MakeStrategy<TX, TY, CategoryNoneResamplingMethod<TX, TY>>(tables.operations);
    const auto linearNoneFifo = MakeStrategy<TX, TY, LinearNoneFifoResamplingMethod<TX, TY>>(tables.operations);
    const auto categoryNoneFifo = MakeStrategy<TX, TY, CategoryNoneFifoResamplingMethod<TX, TY>>(tables.operations);
    FillPassThroughTable(tables.methods, linearNone, categoryNone);
    FillPassThroughTable(tables.methodsWithNaN, linearNone, categoryNone);
    FillPassThroughTable(tables.fifoMethods, linearNoneFifo, categoryNoneFifo);
    FillPassThroughTable(tables.fifoMethodsWithNaN, linearNoneFifo, categoryNoneFifo);
}

template <class TX, class TY>
void FillLinearRow(const StrategyTables<TX, TY>& tables) {
    FillBucketRow<LinearResamplingMethodBase<TX, TY>>(tables.methods, Linear, tables.operations);
    if constexpr (kCanHoldNaN<TY>) {
        // Where TY is Double the plain NaN-aware table holds other classes in
        // three columns: Min runs MinOrMax, Mid runs Min, MinOrMax runs Mid.
        // Callers rely on it; the ring table follows the grid.
        if constexpr (std::is_same_v<TY, double>)
            FillRow<LinearMinMaxResamplingMethodWithNaN<TX, TY>, LinearMinOrMaxResamplingMethodWithNaN<TX, TY>,
                    LinearMaxResamplingMethodWithNaN<TX, TY>, LinearMinResamplingMethodWithNaN<TX, TY>,
                    LinearMidResamplingMethodWithNaN<TX, TY>>(tables.methodsWithNaN, Linear, tables.operations);
        else
            FillBucketRow<ResamplingMethodBaseWithNaN<TX, TY>>(tables.methodsWithNaN, Linear, tables.operations);
    }
    FillBucketRow<FifoLinearResamplingMethodBase<TX, TY>>(tables.fifoMethods, Linear, tables.operations);
    if constexpr (kCanHoldNaN<TY>)
        FillBucketRow<FifoResamplingMethodBaseWithNaN<TX, TY>>(tables.fifoMethodsWithNaN, Linear, tables.operations);
}

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

#define QM_INSTANTIATE_FILL_STEPS_(XW, XT, YW, YT)                                \
    template void FillPassThroughCells<XT, YT>(const StrategyTables<XT, YT>&);  \
    template void FillLinearRow<XT, YT>(const StrategyTables<XT, YT>&);         \
    template void FillCategoryRow<XT, YT>(const StrategyTables<XT, YT>&);       \
    template void FillUnevenlySpacedRow<XT, YT>(const StrategyTables<XT, YT>&);
QM_FOR_EACH_PAIR(QM_INSTANTIATE_FILL_STEPS_)

}  // namespace qm
