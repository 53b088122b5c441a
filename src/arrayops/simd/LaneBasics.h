#pragma once
// What every set of lane operations shares: the vector type of one ISA's
// width, unaligned loads, broadcasts and the compare-and-blend form of the
// strict lane min and max.
//
// `Tag` is a type of the ISA's own namespace. Every function the kernels call
// is a member of a class that depends on it, so each ISA's translation unit
// instantiates its own copies, and the linker can never hand a caller on a
// narrower processor a copy built for a wider one.

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
    static constexpr std::int32_t kLanes = static_cast<std::int32_t>(kBytes / sizeof(T));

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
};

}  // namespace qm::simd
