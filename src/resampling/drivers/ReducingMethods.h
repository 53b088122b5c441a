#pragma once
// The concrete bucket strategies: a driver base plus the reduction of one
// mode. A driver base names the point layout it hands its reducer
// (Base::Points); the reduction itself is shared by every family.

#include <cstdint>

#include "resampling/buckets/BucketOutput.h"
#include "resampling/buckets/BucketRange.h"
#include "resampling/buckets/Reductions.h"

namespace qm {

// For drivers over plain arrays: a bucket is [start, end) of positions.
template <class Base, class Mode>
class PlainReducingMethod final : public Base {
    using TX = typename Base::XType;
    using TY = typename Base::YType;

public:
    explicit PlainReducingMethod(const ArrayOperations<TY>* operations)
        : Base(operations, Mode::kPointsPerBucket) {}

    void ReduceBucket(const TX* x, const TY* y, BucketOutput& output, std::int32_t start,
                      std::int32_t end) const override {
        Mode::Reduce(this->Operations(), typename Base::Points{x, y}, output, PlainRange{start, end});
    }
};

// For drivers over ring buffers: a bucket runs from slot start to slot end,
// wrapping at size.
template <class Base, class Mode>
class RingReducingMethod final : public Base {
    using TX = typename Base::XType;
    using TY = typename Base::YType;

public:
    explicit RingReducingMethod(const ArrayOperations<TY>* operations)
        : Base(operations, Mode::kPointsPerBucket) {}

    void ReduceBucket(const TX* x, const TY* y, BucketOutput& output, std::int32_t start, std::int32_t end,
                      std::int32_t size, std::int32_t baseIndex) const override {
        Mode::Reduce(this->Operations(), typename Base::Points{x, y, size, baseIndex}, output,
                     RingRange{start, end, size});
    }
};

}  // namespace qm
