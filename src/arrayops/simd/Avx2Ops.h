#pragma once
// Lane operations on 32-byte AVX2 registers: a strict min and max for
// floating types (element first, so an unordered or equal pair keeps the
// running lane) and for 8-, 16- and 32-bit integers of either signedness.
// 64-bit integers blend on a compare (unsigned ones through the compiler's
// flipped sign bit, since AVX2 compares signed only).

#include <immintrin.h>

#include <cstdint>
#include <type_traits>

#include "arrayops/simd/LaneBasics.h"

namespace qm::simd::avx2 {

struct Tag {};

template <class T>
struct Ops : LaneBasics<Tag, T, 32> {
    using Base = LaneBasics<Tag, T, 32>;
    using V = typename Base::V;

    [[gnu::always_inline]] static V Lower(V best, V e) {
        const __m256i a = (__m256i)e, b = (__m256i)best;
        if constexpr (std::is_same_v<T, double>) return _mm256_min_pd(e, best);
        else if constexpr (std::is_same_v<T, float>) return _mm256_min_ps(e, best);
        else if constexpr (std::is_same_v<T, std::int32_t>) return (V)_mm256_min_epi32(a, b);
        else if constexpr (std::is_same_v<T, std::uint32_t>) return (V)_mm256_min_epu32(a, b);
        else if constexpr (std::is_same_v<T, std::int16_t>) return (V)_mm256_min_epi16(a, b);
        else if constexpr (std::is_same_v<T, std::uint16_t>) return (V)_mm256_min_epu16(a, b);
        else if constexpr (std::is_same_v<T, std::int8_t>) return (V)_mm256_min_epi8(a, b);
        else if constexpr (std::is_same_v<T, std::uint8_t>) return (V)_mm256_min_epu8(a, b);
        else return Base::BlendLower(best, e);
    }

    [[gnu::always_inline]] static V Higher(V best, V e) {
        const __m256i a = (__m256i)e, b = (__m256i)best;
        if constexpr (std::is_same_v<T, double>) return _mm256_max_pd(e, best);
        else if constexpr (std::is_same_v<T, float>) return _mm256_max_ps(e, best);
        else if constexpr (std::is_same_v<T, std::int32_t>) return (V)_mm256_max_epi32(a, b);
        else if constexpr (std::is_same_v<T, std::uint32_t>) return (V)_mm256_max_epu32(a, b);
        else if constexpr (std::is_same_v<T, std::int16_t>) return (V)_mm256_max_epi16(a, b);
        else if constexpr (std::is_same_v<T, std::uint16_t>) return (V)_mm256_max_epu16(a, b);
        else if constexpr (std::is_same_v<T, std::int8_t>) return (V)_mm256_max_epi8(a, b);
        else if constexpr (std::is_same_v<T, std::uint8_t>) return (V)_mm256_max_epu8(a, b);
        else return Base::BlendHigher(best, e);
    }

    template <class Mask>
    [[gnu::always_inline]] static bool Any(Mask mask) {
        return !_mm256_testz_si256((__m256i)mask, (__m256i)mask);
    }

    [[gnu::always_inline]] static auto Unordered(V a, V b) {
        if constexpr (std::is_same_v<T, double>) return (typename Base::Mask)_mm256_cmp_pd(a, b, _CMP_UNORD_Q);
        else if constexpr (std::is_same_v<T, float>) return (typename Base::Mask)_mm256_cmp_ps(a, b, _CMP_UNORD_Q);
        else return Base::Unordered(a, b);
    }

    [[gnu::always_inline]] static V Held(V v) {
        asm("" : "+x"(v));
        return v;
    }

    template <class Mask>
    [[gnu::always_inline]] static std::uint64_t ByteBits(Mask mask) {
        return static_cast<std::uint32_t>(_mm256_movemask_epi8((__m256i)mask));
    }

    template <class Mask>
    [[gnu::always_inline]] static std::uint64_t LaneBits(Mask mask) {
        if constexpr (sizeof(T) == 8) {
            return static_cast<std::uint32_t>(_mm256_movemask_pd((__m256d)mask));
        } else if constexpr (sizeof(T) == 4) {
            return static_cast<std::uint32_t>(_mm256_movemask_ps((__m256)mask));
        } else if constexpr (sizeof(T) == 2) {
            // Packed to bytes within each 128-bit half, the lanes come as
            // 0-7, 0-7, 8-15, 8-15.
            const auto bits = static_cast<std::uint32_t>(
                _mm256_movemask_epi8(_mm256_packs_epi16((__m256i)mask, (__m256i)mask)));
            return (bits & 0xFFu) | ((bits >> 8) & 0xFF00u);
        } else {
            return ByteBits(mask);
        }
    }
};

}  // namespace qm::simd::avx2
