#pragma once
// Helpers of the table fill steps: one bucket row (five modes, each cell its
// own object) and the stand-ins of the NaN-aware cells.

#include <memory>

#include "resampling/StrategyTables.h"
#include "resampling/buckets/Reductions.h"
#include "resampling/nan/NaNAwarePlaceholder.h"

namespace qm {

// `Method<Base, Mode>` is the concrete class of one mode over the driver
// `Base`. Columns are filled from MinMax to MinOrMax.
template <template <class, class> class Method, class Base, class TX, class TY>
void FillBucketRow(StrategyTable<TX, TY>& table, ResamplingData row, const ArrayOperations<TY>* operations) {
    table[TableIndex(row, MinMax)] = std::make_shared<Method<Base, MinMaxReduction>>(operations);
    table[TableIndex(row, Min)] = std::make_shared<Method<Base, MinReduction>>(operations);
    table[TableIndex(row, Max)] = std::make_shared<Method<Base, MaxReduction>>(operations);
    table[TableIndex(row, Mid)] = std::make_shared<Method<Base, MidReduction>>(operations);
    table[TableIndex(row, MinOrMax)] = std::make_shared<Method<Base, MinOrMaxReduction>>(operations);
}

template <class TX, class TY>
void FillNaNAwareRow(StrategyTable<TX, TY>* table, ResamplingData row, const ArrayOperations<TY>* operations) {
    if (table == nullptr) return;
    for (ResamplingMode mode : {MinMax, Min, Max, Mid, MinOrMax})
        (*table)[TableIndex(row, mode)] = MakeNaNAwarePlaceholder<TX, TY>(operations);
}

}  // namespace qm
