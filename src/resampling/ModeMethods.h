#pragma once
// The names of the strategy classes: a family (data kind and layout) with
// one mode. The five modes of a family are one class with the mode as a
// member, so that they share one compiled walk and one vtable; a name says
// which family and mode a table cell is made of.

#include "resampling/buckets/Reductions.h"
#include "resampling/drivers/BucketMethods.h"
#include "resampling/nan/NaNAwareMethods.h"

namespace qm {

template <class Family, Reduction kReduction>
struct ModeMethod {
    using Class = Family;
    static constexpr Reduction kMode = kReduction;
};

// Names the five classes Stem<Mode>Tail of a family.
#define QM_NAME_MODE_METHODS_(Stem, Tail, Family)                                             \
    template <class TX, class TY>                                                             \
    using Stem##Min##Tail = ModeMethod<Family<TX, TY>, Reduction::Min>;                       \
    template <class TX, class TY>                                                             \
    using Stem##Max##Tail = ModeMethod<Family<TX, TY>, Reduction::Max>;                       \
    template <class TX, class TY>                                                             \
    using Stem##Mid##Tail = ModeMethod<Family<TX, TY>, Reduction::Mid>;                       \
    template <class TX, class TY>                                                             \
    using Stem##MinMax##Tail = ModeMethod<Family<TX, TY>, Reduction::MinMax>;                 \
    template <class TX, class TY>                                                             \
    using Stem##MinOrMax##Tail = ModeMethod<Family<TX, TY>, Reduction::MinOrMax>;


QM_NAME_MODE_METHODS_(Linear, ResamplingMethod, LinearResamplingMethodBase)
QM_NAME_MODE_METHODS_(Category, ResamplingMethod, CategoryResamplingMethodBase)
QM_NAME_MODE_METHODS_(UnevenlySpaced, ResamplingMethod, UnevenlySpacedResamplingMethod)
QM_NAME_MODE_METHODS_(Linear, FifoResamplingMethod, FifoLinearResamplingMethodBase)
QM_NAME_MODE_METHODS_(Category, FifoResamplingMethod, FifoCategoryResamplingMethodBase)
QM_NAME_MODE_METHODS_(UnevenlySpaced, FifoResamplingMethod, UnevenlySpacedFifoResamplingMethod)
QM_NAME_MODE_METHODS_(Linear, ResamplingMethodWithNaN, ResamplingMethodBaseWithNaN)
QM_NAME_MODE_METHODS_(Category, ResamplingMethodWithNaN, CategoryResamplingMethodBaseWithNaN)
QM_NAME_MODE_METHODS_(UnevenlySpaced, ResamplingMethodWithNaN, UnevenlySpacedResamplingMethodWithNaN)
QM_NAME_MODE_METHODS_(Linear, FifoResamplingMethodWithNaN, FifoResamplingMethodBaseWithNaN)
QM_NAME_MODE_METHODS_(Category, FifoResamplingMethodWithNaN, FifoCategoryResamplingMethodBaseWithNaN)
QM_NAME_MODE_METHODS_(UnevenlySpaced, FifoResamplingMethodWithNaN, UnevenlySpacedFifoResamplingMethodWithNaN)

}  // namespace qm
