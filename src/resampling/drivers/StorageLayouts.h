#pragma once
// The layout of a run's storage as its arguments give it: plain arrays, or a
// ring of InputSize slots whose logical index 0 sits at InputBaseIndex.

#include "model/ResamplingArgs.h"
#include "resampling/buckets/BucketRange.h"

namespace qm {

template <class Layout>
Layout LayoutOf(const ResamplingArgs& args) {
    if constexpr (Layout::kRing)
        return Layout{args.InputSize, args.InputBaseIndex};
    else
        return Layout{};
}

}  // namespace qm
