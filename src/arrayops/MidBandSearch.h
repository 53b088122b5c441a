#pragma once
// The Mid search's band in lanes: the values that can lie nearer to the
// middle than the best distance found (BandOf, Midrange.h), tested a vector
// at a time, and the visits of the elements a test finds in it, each
// measured exactly and, if strictly nearer, narrowing the band. Written
// once over a set of lane operations `Ops` for NearestToMidScan.h.

#include <cstdint>
#include <limits>
#include <type_traits>

#include "arrayops/Midrange.h"

namespace qm::scan {

// Where the band ends are; an empty band is one no value falls in.
template <class Ops>
struct BandLanes {
    using T = typename Ops::Element;
    using V = typename Ops::V;

    V low, high;
    T lowT, highT;
    explicit BandLanes(const Band<T>& band) { Set(band); }
    // The ends stay finite (InBandOfFour needs that): an infinite
    // element is never strictly nearer than any bound, so a band that
    // reaches to infinity loses nothing at the largest finite value.
    void Set(const Band<T>& band) {
        constexpr T kLowest = std::numeric_limits<T>::lowest(), kLargest = std::numeric_limits<T>::max();
        lowT = band.empty ? kLargest : band.low < kLowest ? kLowest : band.low;
        highT = band.empty ? kLowest : band.high > kLargest ? kLargest : band.high;
        low = Ops::Splat(lowT);
        high = Ops::Splat(highT);
    }
    [[gnu::always_inline]] auto In(V e) const { return Ops::InBand(e, low, high); }
    bool In(T e) const { return !(lowT > e) && !(e > highT) && e == e; }
};

// What a pass keeps while it searches: the band and the best so far.
template <class Ops>
struct BandSearch {
    using T = typename Ops::Element;
    using V = typename Ops::V;
    static constexpr std::int32_t kLanes = Ops::kLanes;

    const T* p;
    std::int32_t at;
    double mid;
    double& bound;
    std::int32_t& chosen;
    BandLanes<Ops> band;

    // An element in the band: measured exactly, and taken only if
    // strictly nearer; the band then narrows to the new distance.
    void Visit(std::int32_t i) {
        const double d = DistanceToMid(p[i], mid);
        if (!(bound > d)) return;
        bound = d;
        chosen = at + i;
        band.Set(BandOf<T>(mid, bound));
    }

    // The vectors at p + i, k of them, of which some lane is in the band.
    [[gnu::noinline]] void VisitVectors(std::int32_t i, std::int32_t k) {
        for (std::int32_t v = i; v < i + k * kLanes; v += kLanes) {
            std::uint64_t bits = Ops::ByteBits(band.In(Ops::Load(p + v)));
            while (bits != 0) {
                const std::int32_t lane = Ops::LaneOf(bits);
                Visit(v + lane);
                const auto next = static_cast<unsigned>((lane + 1) * sizeof(T));
                bits = next >= 64 ? 0 : bits & (~std::uint64_t{0} << next) & Ops::ByteBits(band.In(Ops::Load(p + v)));
            }
        }
    }
};

// Lanes where one of four vectors holds an element of [low, high], both
// finite. Floating types measure how far each element lies outside the
// band, at most 0 inside it (a difference of two floating values has
// the exact sign), and test the least of the four once: one compare
// where there were eight, which is what the search from cache waits on.
// A NaN element measures NaN, which Lower drops in favour of the chain
// it joins, seeded with +infinity; NaN is in no band.
template <class Ops, class V = typename Ops::V>
[[gnu::always_inline]] inline auto InBandOfFour(V e0, V e1, V e2, V e3, V low, V high) {
    using T = typename Ops::Element;
    if constexpr (std::is_floating_point_v<T>) {
        const auto outside = [&](V e) { return Ops::Higher(e - high, low - e); };
        V least = Ops::Splat(std::numeric_limits<T>::infinity());
        least = Ops::Lower(Ops::Lower(Ops::Lower(Ops::Lower(least, outside(e0)), outside(e1)), outside(e2)),
                           outside(e3));
        return least <= V{};
    } else {
        return (Ops::InBand(e0, low, high) | Ops::InBand(e1, low, high)) |
               (Ops::InBand(e2, low, high) | Ops::InBand(e3, low, high));
    }
}

}  // namespace qm::scan
