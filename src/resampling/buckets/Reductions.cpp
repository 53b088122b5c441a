#include "resampling/buckets/Reductions.h"

#include "arrayops/Midrange.h"
#include "arrayops/simd/IsaChoice.h"
#include "model/ElementTypes.h"
#include "resampling/buckets/ScanSeeds.h"

namespace qm {
namespace {

// How a reduction reads its range. The bucket strategies scan through the
// ArrayOperations; the Mid search, which the interface does not have, runs
// the chosen ISA's kernel. Every scan answers where it stopped.
template <class TY>
struct ThroughOperations {
    const ArrayOperations<TY>& operations;

    std::int32_t Min(const TY* y, std::int32_t a, std::int32_t b, TY& value, std::int32_t& at) const {
        operations.Min(y, a, b, value, at);
        return b;
    }
    std::int32_t Max(const TY* y, std::int32_t a, std::int32_t b, TY& value, std::int32_t& at) const {
        operations.Max(y, a, b, value, at);
        return b;
    }
    std::int32_t MinMax(const TY* y, std::int32_t a, std::int32_t b, MinMaxPointSearchResult<TY>& r) const {
        operations.MinMax(y, a, b, r);
        return b;
    }
    NearestAnswer Nearest(const TY* y, const ScanPieces& pieces) const {
        return simd::ActiveScans<TY>().nearestToMid(y, pieces);
    }
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
std::int32_t ScanPiecesOf(const Range& range, Scan&& scan) {
    const ScanPieces pieces = range.Pieces();
    for (std::int32_t k = 0; k < pieces.count; ++k) {
        const std::int32_t stop = scan(pieces.start[k], pieces.end[k]);
        if (stop != pieces.end[k]) return stop;
    }
    return pieces.end[pieces.count - 1];
}

// Both extremes in source order; one point when they coincide.
template <class TY, class Range>
void PickBoth(const Range& range, const MinMaxPointSearchResult<TY>& r, Picks& picks) {
    const std::int32_t minOrder = range.Order(r.MinIndex);
    const std::int32_t maxOrder = range.Order(r.MaxIndex);
    if (minOrder < maxOrder) {
        picks.Add(r.MinIndex, ToDouble(r.Min));
        picks.Add(r.MaxIndex, ToDouble(r.Max));
    } else if (minOrder > maxOrder) {
        picks.Add(r.MaxIndex, ToDouble(r.Max));
        picks.Add(r.MinIndex, ToDouble(r.Min));
    } else {
        picks.Add(r.MinIndex, ToDouble(r.Min));
    }
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

template <class TY, class Range, class Scans>
Picks ReduceWith(Reduction reduction, const Scans& scans, const TY* y, const Range& range, double zeroLine,
                 std::int32_t& stop) {
    Picks picks;
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
            if (reduction == Reduction::MinMax)
                PickBoth(range, r, picks);
            else
                PickMinOrMax(range, r, zeroLine, reduction == Reduction::MinOrMaxNearest, picks);
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

}  // namespace

template <class TY, class Range>
Picks Reduce(Reduction reduction, const ArrayOperations<TY>& operations, const TY* y, const Range& range,
             double zeroLine) {
    std::int32_t stop;
    return ReduceWith(reduction, ThroughOperations<TY>{operations}, y, range, zeroLine, stop);
}

template <class TY, class Range>
Picks ReduceRun(Reduction reduction, const TY* y, const Range& range, double zeroLine, std::int32_t& runEnd) {
    return ReduceWith(reduction, StoppingAtNaN<TY>{}, y, range, zeroLine, runEnd);
}

#define QM_INSTANTIATE_REDUCE_(ctx, W, T, N)                                                                \
    template Picks Reduce<T, PlainRange>(Reduction, const ArrayOperations<T>&, const T*, const PlainRange&, \
                                         double);                                                          \
    template Picks Reduce<T, RingRange>(Reduction, const ArrayOperations<T>&, const T*, const RingRange&, double);
QM_Y_TYPES(QM_INSTANTIATE_REDUCE_, _)
#define QM_INSTANTIATE_REDUCE_RUN_(T)                                                                \
    template Picks ReduceRun<T, PlainRange>(Reduction, const T*, const PlainRange&, double, std::int32_t&); \
    template Picks ReduceRun<T, RingRange>(Reduction, const T*, const RingRange&, double, std::int32_t&);
QM_INSTANTIATE_REDUCE_RUN_(double)
QM_INSTANTIATE_REDUCE_RUN_(float)

}  // namespace qm
