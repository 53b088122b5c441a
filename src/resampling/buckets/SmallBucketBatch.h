#pragma once
// Small buckets of the two-sided reductions (MinMax, MinOrMax), reduced in
// batches. A bucket of a few dozen points costs its scan less than the call
// into the kernel, the dispatch on the reduction and the handing back of
// its record, and each bucket waits on the one before. Here adjacent
// buckets, each one piece of storage, gather until kBatch of them are
// scanned in one kernel call (ScanTable::minMaxEach, the same scan per
// range), then picked as ReduceWith picks (PickTwoSided) and emitted: the
// points ReduceWith gives one bucket at a time, and in the same order.

#include <cstdint>

#include "arrayops/MinMaxPointSearchResult.h"
#include "resampling/buckets/ReduceWith.h"
#include "resampling/buckets/Reductions.h"
#include "resampling/buckets/ScanSeeds.h"

namespace qm {

// Whether a walk of this reduction through these scans batches its small buckets.
template <class TY>
bool BatchesSmallBuckets(Reduction reduction, const ThroughOperations<TY>& scans) {
    return PointsPerBucket(reduction) == 2 && scans.TakesBatches();
}

template <class TY, class Layout, class Emit>
class SmallBucketBatch {
public:
    static constexpr std::int32_t kBatch = 32;
    // The scans hold a range of up to 64 elements in registers.
    static constexpr std::int32_t kSmall = 64;

    SmallBucketBatch(Reduction reduction, const ThroughOperations<TY>& scans, const TY* y, const Layout& layout,
                     double zeroLine, Emit& emit)
        : reduction_(reduction), scans_(scans), y_(y), layout_(layout), zeroLine_(zeroLine), emit_(emit) {}

    // Takes the bucket of slots [start, end) if it is short and one piece
    // (a ring bucket with start not below end wraps, or is the whole ring);
    // false, with what it holds emitted, if the caller must reduce it.
    bool Take(std::int32_t start, std::int32_t end) {
        if (!(start < end && end - start <= kSmall)) {
            Flush();
            return false;
        }
        if (count_ > 0 && bounds_[count_] != start) Flush();
        if (count_ == 0) bounds_[0] = start;
        bounds_[++count_] = end;
        if (count_ == kBatch) Flush();
        return true;
    }

    void Flush() {
        // The count is read once: the points' index stores might otherwise
        // be taken to change it.
        const std::int32_t count = count_;
        if (count == 0) return;
        for (std::int32_t k = 0; k < count; ++k) results_[k] = ScanSeeds<TY>::Record();
        scans_.MinMaxEach(y_, bounds_, count, results_);
        for (std::int32_t k = 0; k < count; ++k) {
            const auto range = layout_.Range(bounds_[k], bounds_[k + 1]);
            Picks picks;
            PickTwoSided(reduction_, range, results_[k], zeroLine_, picks);
            emit_(range, picks);
        }
        count_ = 0;
    }

private:
    Reduction reduction_;
    const ThroughOperations<TY>& scans_;
    const TY* y_;
    Layout layout_;
    double zeroLine_;
    Emit& emit_;
    std::int32_t count_ = 0;
    std::int32_t bounds_[kBatch + 1];
    MinMaxPointSearchResult<TY> results_[kBatch];
};

}  // namespace qm
