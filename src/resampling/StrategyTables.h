#pragma once
// The tables that map the shape of a run to a strategy, and the four steps
// that fill them. Each step is one function template, defined and
// instantiated for all type pairs in StrategyTables.cpp, so that the
// strategy classes of the 120 pairs are compiled apart from the engine.

#include <array>
#include <memory>

#include "model/ElementTypes.h"
#include "model/ResamplingArgs.h"
#include "resampling/ResamplingMethod.h"

namespace qm {

template <class TX, class TY>
using StrategyTable = std::array<std::shared_ptr<ResamplingMethod<TX, TY>>, kStrategyTableSize>;

// A strategy in a table cell. The control block deletes through the base,
// so all the strategies of a type pair share one kind of it.
template <class TX, class TY, class Class, class... Args>
std::shared_ptr<ResamplingMethod<TX, TY>> MakeStrategy(Args... args) {
    using Base = ResamplingMethod<TX, TY>;
    return std::shared_ptr<Base>(static_cast<Base*>(new Class(args...)), std::default_delete<Base>());
}

constexpr std::int32_t TableIndex(ResamplingData data, ResamplingMode mode) {
    return data * RESAMPLING_MODE_COUNT + mode;
}

// The tables of one engine as the fill steps see them. The NaN tables are
// null where TY cannot hold NaN.
template <class TX, class TY>
struct StrategyTables {
    const ArrayOperations<TY>* operations;
    StrategyTable<TX, TY>* methods;
    StrategyTable<TX, TY>* methodsWithNaN;
    StrategyTable<TX, TY>* fifoMethods;
    StrategyTable<TX, TY>* fifoMethodsWithNaN;
};

// The None column and the whole NotResampled row of every table: four
// pass-through objects shared by all those cells.
template <class TX, class TY>
void FillPassThroughCells(const StrategyTables<TX, TY>& tables);
template <class TX, class TY>
void FillLinearRow(const StrategyTables<TX, TY>& tables);
template <class TX, class TY>
void FillCategoryRow(const StrategyTables<TX, TY>& tables);
template <class TX, class TY>
void FillUnevenlySpacedRow(const StrategyTables<TX, TY>& tables);

}  // namespace qm
