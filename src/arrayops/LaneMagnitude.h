#pragma once
// Magnitudes of floating lanes over any ISA's lane operations: what the Mid
// searches measure an element by, its distance to a middle or a centre.

#include <cstdint>
#include <limits>
#include <type_traits>

namespace qm::scan {

// |v| lane by lane: the sign bit cleared, NaN left NaN.
template <class Ops, class V = typename Ops::V>
[[gnu::always_inline]] inline V Magnitude(V v) {
    using T = typename Ops::Element;
    using Bits = std::conditional_t<sizeof(T) == 8, std::int64_t, std::int32_t>;
    typedef Bits BitsV __attribute__((vector_size(sizeof(V))));
    return (V)((BitsV)v & (std::numeric_limits<Bits>::max() - BitsV{}));
}

// The lesser of `less` and |v| lane by lane, NaN in v keeping `less`: in
// one operation where the ISA has one.
template <class Ops, class V = typename Ops::V>
[[gnu::always_inline]] inline V LowerMagnitude(V less, V v) {
    if constexpr (requires { Ops::LowerMagnitude(less, v); }) return Ops::LowerMagnitude(less, v);
    else return Ops::Lower(less, Magnitude<Ops>(v));
}

}  // namespace qm::scan
