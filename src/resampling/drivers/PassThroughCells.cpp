// Fill step 1: the None column and the NotResampled row of every table. Four
// pass-through objects per engine, each shared by all the cells naming it.

#include <memory>

#include "resampling/StrategyTables.h"
#include "resampling/drivers/PassThroughMethods.h"

namespace qm {
namespace {

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

template <class TX, class TY>
void FillPassThroughCells(const StrategyTables<TX, TY>& tables) {
    const std::shared_ptr<ResamplingMethod<TX, TY>> linearNone =
        std::make_shared<LinearNoneResamplingMethod<TX, TY>>(tables.operations);
    const std::shared_ptr<ResamplingMethod<TX, TY>> categoryNone =
        std::make_shared<CategoryNoneResamplingMethod<TX, TY>>(tables.operations);
    const std::shared_ptr<ResamplingMethod<TX, TY>> linearNoneFifo =
        std::make_shared<LinearNoneFifoResamplingMethod<TX, TY>>(tables.operations);
    const std::shared_ptr<ResamplingMethod<TX, TY>> categoryNoneFifo =
        std::make_shared<CategoryNoneFifoResamplingMethod<TX, TY>>(tables.operations);
    FillPassThroughTable(tables.methods, linearNone, categoryNone);
    FillPassThroughTable(tables.methodsWithNaN, linearNone, categoryNone);
    FillPassThroughTable(tables.fifoMethods, linearNoneFifo, categoryNoneFifo);
    FillPassThroughTable(tables.fifoMethodsWithNaN, linearNoneFifo, categoryNoneFifo);
}

#define QM_INSTANTIATE_(XW, XT, YW, YT) template void FillPassThroughCells<XT, YT>(const StrategyTables<XT, YT>&);
QM_FOR_EACH_PAIR(QM_INSTANTIATE_)

}  // namespace qm
