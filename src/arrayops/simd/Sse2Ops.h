#pragma once
// Lane operations on 16-byte SSE2 registers. SSE2 has a strict min and max
// with exactly the scans' semantics for four element types (the element goes
// first, so an unordered or equal pair keeps the running lane); 16- and 8-bit
// types of the other signedness get them through a flipped sign bit, which
// maps their order onto the native one. 32- and 64-bit integers blend.

#include <emmintrin.h>

#include <cstdint>
#include <limits>
#include <type_traits>

#include "arrayops/simd/LaneBasics.h"

namespace qm::simd::sse2 {

struct Tag {};

template <class T>
struct Ops : LaneBasics<Tag, T, 16> {
    using Base = LaneBasics<Tag, T, 16>;
    using V = typename Base::V;

    // Flipping the top bit turns signed order into unsigned order and back.
    [[gnu::always_inline]] static V FlipSign(V v) {
        return v ^ Base::Splat(static_cast<T>(std::numeric_limits<std::make_unsigned_t<T>>::max() / 2 + 1));
    }

    [[gnu::always_inline]] static V Lower(V best, V e) {
        if constexpr (std::is_same_v<T, double>) return _mm_min_pd(e, best);
        else if constexpr (std::is_same_v<T, float>) return _mm_min_ps(e, best);
        else if constexpr (std::is_same_v<T, std::int16_t>) return (V)_mm_min_epi16((__m128i)e, (__m128i)best);
        else if constexpr (std::is_same_v<T, std::uint8_t>) return (V)_mm_min_epu8((__m128i)e, (__m128i)best);
        else if constexpr (std::is_same_v<T, std::uint16_t>)
            return FlipSign((V)_mm_min_epi16((__m128i)FlipSign(e), (__m128i)FlipSign(best)));
        else if constexpr (std::is_same_v<T, std::int8_t>)
            return FlipSign((V)_mm_min_epu8((__m128i)FlipSign(e), (__m128i)FlipSign(best)));
        else return Base::BlendLower(best, e);
    }

    [[gnu::always_inline]] static V Higher(V best, V e) {
        if constexpr (std::is_same_v<T, double>) return _mm_max_pd(e, best);
        else if constexpr (std::is_same_v<T, float>) return _mm_max_ps(e, best);
        else if constexpr (std::is_same_v<T, std::int16_t>) return (V)_mm_max_epi16((__m128i)e, (__m128i)best);
        else if constexpr (std::is_same_v<T, std::uint8_t>) return (V)_mm_max_epu8((__m128i)e, (__m128i)best);
        else if constexpr (std::is_same_v<T, std::uint16_t>)
            return FlipSign((V)_mm_max_epi16((__m128i)FlipSign(e), (__m128i)FlipSign(best)));
        else if constexpr (std::is_same_v<T, std::int8_t>)
            return FlipSign((V)_mm_max_epu8((__m128i)FlipSign(e), (__m128i)FlipSign(best)));
        else return Base::BlendHigher(best, e);
    }

    template <class Mask>
    [[gnu::always_inline]] static bool Any(Mask mask) {
        return _mm_movemask_epi8((__m128i)mask) != 0;
    }
};

}  // namespace qm::simd::sse2
