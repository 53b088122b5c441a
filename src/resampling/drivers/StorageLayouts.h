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

// Declares (prefix `extern template`) or defines (prefix `template`) a walk
// class Walk<T, Layout, Data> for the two layouts and three data kinds.
#define QM_WALK_INSTANCES(prefix, Walk, T)              \
    prefix struct Walk<T, PlainLayout, Linear>;         \
    prefix struct Walk<T, PlainLayout, Category>;       \
    prefix struct Walk<T, PlainLayout, UnevenlySpaced>; \
    prefix struct Walk<T, RingLayout, Linear>;          \
    prefix struct Walk<T, RingLayout, Category>;        \
    prefix struct Walk<T, RingLayout, UnevenlySpaced>;

