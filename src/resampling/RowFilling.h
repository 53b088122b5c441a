#pragma once
// Helper of the table fill steps: one bucket row, five modes, each cell its
// own object, columns filled from MinMax to MinOrMax. The NaN-aware tables
// exist only where TY can hold NaN.

#include <memory>

#include "resampling/ModeMethods.h"
#include "resampling/StrategyTables.h"

namespace qm {

// `Column` lists the class of each column; the Double quirk of the plain
// NaN-aware Linear row is spelled out by its caller.
template <class TX, class TY, class Base, Reduction kMinMax, Reduction kMin, Reduction kMax, Reduction kMid,
          Reduction kMinOrMax>
void FillRow(StrategyTable<TX, TY>* table, ResamplingData row, const ArrayOperations<TY>* operations) {
    if (table == nullptr) return;
    (*table)[TableIndex(row, MinMax)] = std::make_shared<ModeMethod<Base, kMinMax>>(operations);
    (*table)[TableIndex(row, Min)] = std::make_shared<ModeMethod<Base, kMin>>(operations);
    (*table)[TableIndex(row, Max)] = std::make_shared<ModeMethod<Base, kMax>>(operations);
    (*table)[TableIndex(row, Mid)] = std::make_shared<ModeMethod<Base, kMid>>(operations);
    (*table)[TableIndex(row, MinOrMax)] = std::make_shared<ModeMethod<Base, kMinOrMax>>(operations);
}

template <class Base, class TX, class TY>
void FillBucketRow(StrategyTable<TX, TY>* table, ResamplingData row, const ArrayOperations<TY>* operations) {
    FillRow<TX, TY, Base, Reduction::MinMax, Reduction::Min, Reduction::Max, Reduction::Mid, Reduction::MinOrMax>(
        table, row, operations);
}

}  // namespace qm
