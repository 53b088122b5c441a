#pragma once
// The concrete strategy classes: a driver base with one mode. They add
// nothing but the mode they pass their base, so that every class named in
// the strategy tables exists under its own name while the five modes of a
// row share one compiled walk.

#include "resampling/ResamplingMethod.h"
#include "resampling/buckets/Reductions.h"

namespace qm {

template <class Base, Reduction kReduction>
class ModeMethod final : public Base {
public:
    explicit ModeMethod(const ArrayOperations<typename Base::YType>* operations) : Base(operations, kReduction) {}
};

// Names the five classes Stem<Mode>Tail of a driver base.
#define QM_NAME_MODE_METHODS_(Stem, Tail, Base)                                               \
    template <class TX, class TY>                                                             \
    using Stem##Min##Tail = ModeMethod<Base<TX, TY>, Reduction::Min>;                         \
    template <class TX, class TY>                                                             \
    using Stem##Max##Tail = ModeMethod<Base<TX, TY>, Reduction::Max>;                         \
    template <class TX, class TY>                                                             \
    using Stem##Mid##Tail = ModeMethod<Base<TX, TY>, Reduction::Mid>;                         \
    template <class TX, class TY>                                                             \
    using Stem##MinMax##Tail = ModeMethod<Base<TX, TY>, Reduction::MinMax>;                   \
    template <class TX, class TY>                                                             \
    using Stem##MinOrMax##Tail = ModeMethod<Base<TX, TY>, Reduction::MinOrMax>;

}  // namespace qm
