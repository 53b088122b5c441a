#pragma once
// The Mid search's band in lanes: the values that can lie nearer to the
// middle than the best distance found (BandOf, Midrange.h), tested a vector
// at a time, and the visits of the elements a test finds in it, each
// measured exactly and, if strictly nearer, narrowing the band. Written
// once over a set of lane operations `Ops` for NearestToMidScan.h.

#include <cstdint>
#include <limits>
#include <type_traits>

#include "arrayops/LaneMagnitude.h"
#include "arrayops/Midrange.h"

namespace qm::scan {

// Where the band ends are; an empty band is one no value falls in. For
// the packed test of four vectors at once (InBandOfFour), floating types
// also keep a centre c and a reach r: every element e of [low, high]
// measures |e - c| <= r in T's own arithmetic, because rounding never
// reverses an order and r is the larger of high - c and c - low rounded
// the same way. A few elements just outside the band may pass too; the
// visit tests each element exactly.
template <class Ops>
struct BandLanes {
    using T = typename Ops::Element;
    using V = typename Ops::V;

    V low, high;
    V centre, reach;  // floating types only
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
        if constexpr (std::is_floating_point_v<T>) {
            // Halves first, so that the widest band does not overflow.
            const T c = lowT / 2 + highT / 2;
            const T up = highT - c, down = c - lowT;
            centre = Ops::Splat(c);
            // No magnitude is below -infinity: an empty band passes nothing.
            reach = Ops::Splat(band.empty ? -std::numeric_limits<T>::infinity() : up > down ? up : down);
        } else {
            centre = reach = V{};
        }
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

// Lanes where one of four vectors may hold an element of the band. Floating
// types take the least magnitude of e - centre over the four and compare
// it with the reach once: two operations a vector (AVX-512 DQ's range is
// the least magnitude in one). On an Intel Xeon whose 64-byte floating
// operations issue on one port, a standalone loop of the four a vector
// this replaces (two subtracts, a max, a min) read 55 GB/s from L2, and
// one of these two 96, what L2 gives. A NaN element measures NaN, which
// the least magnitude drops in favour of the lane it joins, seeded with
// +infinity; NaN is in no band. Integer types test both ends of each
// vector: there the loop waits on L2, not on the compares.
template <class Ops, class V = typename Ops::V>
[[gnu::always_inline]] inline auto InBandOfFour(V e0, V e1, V e2, V e3, const BandLanes<Ops>& band) {
    using T = typename Ops::Element;
    if constexpr (std::is_floating_point_v<T>) {
        const V c = band.centre;
        V least = Ops::Splat(std::numeric_limits<T>::infinity());
        least = LowerMagnitude<Ops>(LowerMagnitude<Ops>(least, e0 - c), e1 - c);
        least = LowerMagnitude<Ops>(LowerMagnitude<Ops>(least, e2 - c), e3 - c);
        return least <= band.reach;
    } else {
        const V low = band.low, high = band.high;
        return (Ops::InBand(e0, low, high) | Ops::InBand(e1, low, high)) |
               (Ops::InBand(e2, low, high) | Ops::InBand(e3, low, high));
    }
}

}  // namespace qm::scan
