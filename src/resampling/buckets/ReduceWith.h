#pragma once
// The one body of every reduction, over a policy that says how the range is
// scanned (ThroughOperations for the bucket strategies, StoppingAtNaN for
// the NaN-aware ones). Included where a walk reduces its buckets, so that
// each bucket costs a kernel call and no more; compiled once per Y type.

#include <cstdint>

#include "arrayops/GenericArrayOperations.h"
#include "arrayops/Midrange.h"
#include "arrayops/simd/IsaChoice.h"
#include "model/ElementTypes.h"
#include "resampling/buckets/Reductions.h"
#include "resampling/buckets/ScanSeeds.h"

namespace qm {

// How a reduction reads its range. The bucket strategies scan through the
// ArrayOperations they were given; when that is the library's own (it
// always is, but for tests that bring another), the chosen ISA's kernels
// are called directly, which spares each bucket a virtual call and the
// lookup of the ISA; those for a walk of `walkElements` are chosen once
// (simd::ExtremeScansFor). The Mid search, which the interface does not
// have, always runs the kernel. Every scan answers where it stopped.
template <class TY>
class ThroughOperations {
public:
    explicit ThroughOperations(const ArrayOperations<TY>& operations, std::int64_t walkElements = 0)
        : operations_(operations),
          scans_(dynamic_cast<const GenericArrayOperations<TY>*>(&operations) != nullptr ? &simd::ActiveScans<TY>()
                                                                                          : nullptr),
          extremes_(simd::ExtremeScansFor<TY>(walkElements)) {}

    std::int32_t Min(const TY* y, std::int32_t a, std::int32_t b, TY& value, std::int32_t& at) const {
        if (scans_ != nullptr) return extremes_.min(y, a, b, value, at);
        operations_.Min(y, a, b, value, at);
        return b;
    }
    std::int32_t Max(const TY* y, std::int32_t a, std::int32_t b, TY& value, std::int32_t& at) const {
        if (scans_ != nullptr) return extremes_.max(y, a, b, value, at);
        operations_.Max(y, a, b, value, at);
        return b;
    }
    std::int32_t MinMax(const TY* y, std::int32_t a, std::int32_t b, MinMaxPointSearchResult<TY>& r) const {
        if (scans_ != nullptr) return extremes_.minMax(y, a, b, r);
        operations_.MinMax(y, a, b, r);
        return b;
    }
    NearestAnswer Nearest(const TY* y, const ScanPieces& pieces) const {
        return (scans_ != nullptr ? *scans_ : simd::ActiveScans<TY>()).nearestToMid(y, pieces);
    }
    // Whether MinMaxEach may take a batch: only the library's own scans do.
    bool TakesBatches() const { return scans_ != nullptr; }
    void MinMaxEach(const TY* y, const std::int32_t* bounds, std::int32_t count,
                    MinMaxPointSearchResult<TY>* results) const {
        scans_->minMaxEach(y, bounds, count, results);
    }

private:
    const ArrayOperations<TY>& operations_;
    const ScanTable<TY>* scans_;
    simd::ExtremeScans<TY> extremes_;
};

// The scans of the NaN-aware strategies, which end in front of the first NaN.
template <class TY>
struct StoppingAtNaN {
    const ScanTable<TY>& scans = simd::ActiveScans<TY>();

    std::int32_t Min(const TY* y, std::int32_t a, std::int32_t b, TY& value, std::int32_t& at) const {
        return scans.minToNaN(y, a, b, value, at);
    }
    std::int32_t Max(const TY* y, std::int32_t a, std::int32_t b, TY& value, std::int32_t& at) const {
        return scans.maxToNaN(y, a, b, value, at);
    }
    std::int32_t MinMax(const TY* y, std::int32_t a, std::int32_t b, MinMaxPointSearchResult<TY>& r) const {
        return scans.minMaxToNaN(y, a, b, r);
    }
    NearestAnswer Nearest(const TY* y, const ScanPieces& pieces) const { return scans.nearestToMidToNaN(y, pieces); }
};

// `scan(a, b)` over the pieces in order, each continuing from the last,
// until one stops short; answers where the scanning stopped.
template <class Range, class Scan>
[[gnu::always_inline]] inline std::int32_t ScanPiecesOf(const Range& range, Scan&& scan) {
    const ScanPieces pieces = range.Pieces();
    for (std::int32_t k = 0; k < pieces.count; ++k) {
        const std::int32_t stop = scan(pieces.start[k], pieces.end[k]);
        if (stop != pieces.end[k]) return stop;
    }
    return pieces.end[pieces.count - 1];
}

// Both extremes in source order; one point when they coincide. Which of
// them comes first is as good as random, so it is chosen by selects, not by
// a branch that would be mispredicted every other bucket.
template <class TY, class Range>
void PickBoth(const Range& range, const MinMaxPointSearchResult<TY>& r, Picks& picks) {
    const std::int32_t minOrder = range.Order(r.MinIndex);
    const std::int32_t maxOrder = range.Order(r.MaxIndex);
    const double min = ToDouble(r.Min);
    const double max = ToDouble(r.Max);
    const bool maxFirst = minOrder > maxOrder;
    picks.position[0] = maxFirst ? r.MaxIndex : r.MinIndex;
    picks.value[0] = maxFirst ? max : min;
    picks.position[1] = maxFirst ? r.MinIndex : r.MaxIndex;
    picks.value[1] = maxFirst ? min : max;
    picks.count = minOrder == maxOrder ? 1 : 2;
}

// Min against Max stays in TY, so 64-bit values that share a double differ.
template <class TY, class Range>
void PickMinOrMax(const Range& range, const MinMaxPointSearchResult<TY>& r, double z, bool nearest, Picks& picks) {
    const double min = ToDouble(r.Min);
    const double max = ToDouble(r.Max);
    const bool below = z > min && z > max;
    const bool above = !below && min > z && max > z;
    if (!below && !above) return PickBoth(range, r, picks);
    // The farthest point of a run below the line is its minimum, of a run
    // above it its maximum; `nearest` swaps the two. Equal extremes fall to
    // the maximum's position.
    const bool pickMin = below != nearest ? r.Max > r.Min : r.Min > r.Max;
    if (pickMin)
        picks.Add(r.MinIndex, min);
    else
        picks.Add(r.MaxIndex, max);
}

// The picks of the two-sided reductions (MinMax, MinOrMax, MinOrMaxNearest)
// from a bucket's MinMax record. Inlined where a bucket is reduced: as a
// call it cost the NaN-aware walks of small buckets a sixth of their time.
template <class TY, class Range>
[[gnu::always_inline]] inline void PickTwoSided(Reduction reduction, const Range& range,
                                                const MinMaxPointSearchResult<TY>& r, double zeroLine, Picks& picks) {
    if (reduction == Reduction::MinMax)
        PickBoth(range, r, picks);
    else
        PickMinOrMax(range, r, zeroLine, reduction == Reduction::MinOrMaxNearest, picks);
}

template <class TY, class Range, class Scans>
inline Picks ReduceWith(Reduction reduction, const Scans& scans, const TY* y, const Range& range, double zeroLine,
                 std::int32_t& stop) {
    Picks picks;
    stop = range.end;
    switch (reduction) {
        case Reduction::Min: {
            TY value = ScanSeeds<TY>::kMin;
            std::int32_t position = -1;
            stop = ScanPiecesOf(range, [&](std::int32_t a, std::int32_t b) { return scans.Min(y, a, b, value, position); });
            picks.Add(position, ToDouble(value));
            break;
        }
        case Reduction::Max: {
            TY value = ScanSeeds<TY>::kMax;
            std::int32_t position = -1;
            stop = ScanPiecesOf(range, [&](std::int32_t a, std::int32_t b) { return scans.Max(y, a, b, value, position); });
            picks.Add(position, ToDouble(value));
            break;
        }
        case Reduction::MinMax:
        case Reduction::MinOrMax:
        case Reduction::MinOrMaxNearest: {
            MinMaxPointSearchResult<TY> r = ScanSeeds<TY>::Record();
            stop = ScanPiecesOf(range, [&](std::int32_t a, std::int32_t b) { return scans.MinMax(y, a, b, r); });
            PickTwoSided(reduction, range, r, zeroLine, picks);
            break;
        }
        case Reduction::Mid: {
            const NearestAnswer answer = scans.Nearest(y, range.Pieces());
            stop = answer.stop;
            const std::int32_t chosen =
                range.Until(stop).NearestOf(answer, [&](std::int32_t p) { return DistanceToMid(y[p], answer.mid); });
            picks.Add(chosen, ToDouble(y[chosen]));
            break;
        }
    }
    return picks;
}

}  // namespace qm
