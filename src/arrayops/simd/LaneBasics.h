#pragma once
// What every set of lane operations shares: the vector type of one ISA's
// width, unaligned loads, broadcasts, the compare-and-blend form of the
// strict lane min and max, and the position of the first lane a compare
// selects.
//
// `Tag` is a type of the ISA's own namespace. Every function the kernels call
// is a member of a class that depends on it, so each ISA's translation unit
// instantiates its own copies, and the linker can never hand a caller on a
// narrower processor a copy built for a wider one.
//
// An ISA's Ops add Lower and Higher (the strict lane min and max: an
// unordered or equal pair keeps `best`), Any (some lane of a compare is
// set), ByteBits (one bit per byte of a compare, lowest lane first) and
// LaneBits (one bit per lane), and replace Equal, InBand, Unordered and Held
// where the compiler's own forms would fall back to scalar code or read
// memory twice. Unordered may answer one bit per lane in a mask register
// rather than lanes; Any takes both. They may add EqualBits (LaneBits of
// Equal in one step), LowerMagnitude (floating types: Lower of a lane and a
// magnitude in one step) and, with kLoadsPart, LoadPart.

#include <cstdint>
#include <cstring>

namespace qm::simd {

template <class Tag, class T, int kBytes>
struct LaneBasics {
    struct VectorOf {
        typedef T type __attribute__((vector_size(kBytes)));
    };
    using Element = T;
    using V = typename VectorOf::type;
    // What a compare of two V gives: all bits of a lane set where it holds.
    using Mask = decltype(V{} == V{});
    static constexpr std::int32_t kLanes = static_cast<std::int32_t>(kBytes / sizeof(T));
    // Whether LoadPart exists: a load of fewer than kLanes elements that
    // reads nothing past them (a masked load).
    static constexpr bool kLoadsPart = false;
    // Whether some processors with this ISA read memory faster through
    // loads that straddle cache lines (ScanTable's streaming scans).
    static constexpr bool kMayStreamUnaligned = false;

    [[gnu::always_inline]] static V Load(const T* p) {
        V v;
        std::memcpy(&v, p, sizeof v);
        return v;
    }

    // Subtracting +0 leaves every value as it was (-0.0 and NaN included) and
    // lets the compiler splat the scalar into all lanes at once.
    [[gnu::always_inline]] static V Splat(T value) { return value - V{}; }

    // `e < best ? e : best` and `e > best ? e : best`: an unordered or equal
    // pair keeps `best`.
    [[gnu::always_inline]] static V BlendLower(V best, V e) { return best > e ? e : best; }
    [[gnu::always_inline]] static V BlendHigher(V best, V e) { return e > best ? e : best; }

    // Lanes equal to `b` (floating: ordered, so -0.0 equals +0.0 and NaN
    // equals nothing), and lanes within [low, high] (NaN is in no band).
    [[gnu::always_inline]] static Mask Equal(V a, V b) { return a == b; }
    [[gnu::always_inline]] static Mask InBand(V e, V low, V high) { return (e >= low) & (e <= high); }

    // Lanes where a or b is NaN.
    [[gnu::always_inline]] static Mask Unordered(V a, V b) { return (a != a) | (b != b); }

    // A loaded vector that two chains take, kept in a register for both
    // rather than read from memory by each.
    [[gnu::always_inline]] static V Held(V v) { return v; }

    // The lane of the lowest set bit of a ByteBits answer. The top bit makes
    // an answer of 0 safe to ask about (its lane is then meaningless), so
    // that callers may compute it before they know it is needed.
    [[gnu::always_inline]] static std::int32_t LaneOf(std::uint64_t byteBits) {
        return static_cast<std::int32_t>(static_cast<unsigned>(__builtin_ctzll(byteBits | (std::uint64_t{1} << 63))) /
                                         sizeof(T));
    }
};

}  // namespace qm::simd
