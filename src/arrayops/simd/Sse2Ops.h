#pragma once
// Lane operations on 16-byte SSE2 registers. SSE2 has a strict min and max
// with exactly the scans' semantics for four element types (the element goes
// first, so an unordered or equal pair keeps the running lane); 16- and 8-bit
// types of the other signedness get them through a flipped sign bit, which
// maps their order onto the native one. 32-bit integers blend on a compare
// (the compiler flips the sign of unsigned ones); 64-bit integers, which SSE2
// cannot compare at all, blend on a compare built from 32-bit halves.

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

    // a > b on 64-bit lanes, all bits of a lane set where it holds. The high
    // halves decide unless they are equal; then the borrow of b - a into the
    // high half is set exactly when the low half of a is above that of b.
    [[gnu::always_inline]] static __m128i Greater64(V a, V b) {
        __m128i x = (__m128i)a, y = (__m128i)b;
        if constexpr (std::is_unsigned_v<T>) {
            const __m128i top = _mm_set1_epi64x(std::numeric_limits<std::int64_t>::min());
            x = _mm_xor_si128(x, top);
            y = _mm_xor_si128(y, top);
        }
        const __m128i high = _mm_or_si128(_mm_cmpgt_epi32(x, y), _mm_and_si128(_mm_cmpeq_epi32(x, y), _mm_sub_epi64(y, x)));
        return _mm_shuffle_epi32(high, _MM_SHUFFLE(3, 3, 1, 1));
    }

    [[gnu::always_inline]] static V Select(__m128i mask, V ifSet, V otherwise) {
        return (V)_mm_or_si128(_mm_and_si128(mask, (__m128i)ifSet), _mm_andnot_si128(mask, (__m128i)otherwise));
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
        else if constexpr (sizeof(T) == 8) return Select(Greater64(best, e), e, best);
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
        else if constexpr (sizeof(T) == 8) return Select(Greater64(e, best), e, best);
        else return Base::BlendHigher(best, e);
    }

    using Mask = typename Base::Mask;

    [[gnu::always_inline]] static Mask Equal(V a, V b) {
        if constexpr (sizeof(T) == 8 && std::is_integral_v<T>) {
            const __m128i halves = _mm_cmpeq_epi32((__m128i)a, (__m128i)b);
            return (Mask)_mm_and_si128(halves, _mm_shuffle_epi32(halves, _MM_SHUFFLE(2, 3, 0, 1)));
        } else {
            return a == b;
        }
    }

    [[gnu::always_inline]] static Mask InBand(V e, V low, V high) {
        if constexpr (sizeof(T) == 8 && std::is_integral_v<T>)
            return (Mask)_mm_andnot_si128(_mm_or_si128(Greater64(low, e), Greater64(e, high)), _mm_set1_epi32(-1));
        else
            return Base::InBand(e, low, high);
    }

    [[gnu::always_inline]] static Mask Unordered(V a, V b) {
        if constexpr (std::is_same_v<T, double>) return (Mask)_mm_cmpunord_pd(a, b);
        else if constexpr (std::is_same_v<T, float>) return (Mask)_mm_cmpunord_ps(a, b);
        else return Base::Unordered(a, b);
    }

    [[gnu::always_inline]] static V Held(V v) {
        asm("" : "+x"(v));
        return v;
    }

    template <class M>
    [[gnu::always_inline]] static bool Any(M mask) {
        return _mm_movemask_epi8((__m128i)mask) != 0;
    }

    template <class M>
    [[gnu::always_inline]] static std::uint64_t ByteBits(M mask) {
        return static_cast<std::uint32_t>(_mm_movemask_epi8((__m128i)mask));
    }

    template <class M>
    [[gnu::always_inline]] static std::uint64_t LaneBits(M mask) {
        if constexpr (sizeof(T) == 8)
            return static_cast<std::uint32_t>(_mm_movemask_pd((__m128d)mask));
        else if constexpr (sizeof(T) == 4)
            return static_cast<std::uint32_t>(_mm_movemask_ps((__m128)mask));
        else if constexpr (sizeof(T) == 2)
            return static_cast<std::uint32_t>(_mm_movemask_epi8(_mm_packs_epi16((__m128i)mask, (__m128i)mask))) & 0xFFu;
        else
            return ByteBits(mask);
    }
};

}  // namespace qm::simd::sse2
