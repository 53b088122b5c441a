#include "resampling/buckets/Reductions.h"

#include "model/ElementTypes.h"
#include "resampling/buckets/Midpoint.h"
#include "resampling/buckets/ScanSeeds.h"

namespace qm {
namespace {

template <class TY, class Range>
MinMaxPointSearchResult<TY> ScanBoth(const ArrayOperations<TY>& operations, const TY* y, const Range& range) {
    MinMaxPointSearchResult<TY> result = ScanSeeds<TY>::Record();
    range.ForEachPiece([&](std::int32_t a, std::int32_t b) { operations.MinMax(y, a, b, result); });
    return result;
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

}  // namespace

template <class TY, class Range>
Picks Reduce(Reduction reduction, const ArrayOperations<TY>& operations, const TY* y, const Range& range,
             double zeroLine) {
    Picks picks;
    switch (reduction) {
        case Reduction::Min: {
            TY value = ScanSeeds<TY>::kMin;
            std::int32_t position = -1;
            range.ForEachPiece([&](std::int32_t a, std::int32_t b) { operations.Min(y, a, b, value, position); });
            picks.Add(position, ToDouble(value));
            break;
        }
        case Reduction::Max: {
            TY value = ScanSeeds<TY>::kMax;
            std::int32_t position = -1;
            range.ForEachPiece([&](std::int32_t a, std::int32_t b) { operations.Max(y, a, b, value, position); });
            picks.Add(position, ToDouble(value));
            break;
        }
        case Reduction::MinMax:
            PickBoth(range, ScanBoth(operations, y, range), picks);
            break;
        case Reduction::MinOrMax:
        case Reduction::MinOrMaxNearest:
            PickMinOrMax(range, ScanBoth(operations, y, range), zeroLine, reduction == Reduction::MinOrMaxNearest,
                         picks);
            break;
        case Reduction::Mid: {
            const MinMaxPointSearchResult<TY> r = ScanBoth(operations, y, range);
            const double mid = Midpoint(r.Max, r.Min);
            const std::int32_t chosen = range.NearestOfPieces(
                [&](std::int32_t a, std::int32_t b) { return NearestToMid(y, a, b, mid, a); },
                [&](std::int32_t p) { return DistanceToMid(y[p], mid); });
            picks.Add(chosen, ToDouble(y[chosen]));
            break;
        }
    }
    return picks;
}

#define QM_INSTANTIATE_REDUCE_(ctx, W, T, N)                                                                \
    template Picks Reduce<T, PlainRange>(Reduction, const ArrayOperations<T>&, const T*, const PlainRange&, \
                                         double);                                                          \
    template Picks Reduce<T, RingRange>(Reduction, const ArrayOperations<T>&, const T*, const RingRange&, double);
QM_Y_TYPES(QM_INSTANTIATE_REDUCE_, _)

}  // namespace qm
