#pragma once
// Lane operations on 64-byte AVX-512 registers (F, BW and DQ): a strict min and
// max for every element type, 64-bit integers of either signedness included.
// The floating forms take the element first, so an unordered or equal pair
// keeps the running lane. The masked forms, with every lane selected and the
// running lanes as the source, are the plain min and max; the unmasked ones
// start from an "undefined" register that GCC 12 then warns about.

#include <immintrin.h>

#include <cstdint>
#include <type_traits>

#include "arrayops/simd/LaneBasics.h"

namespace qm::simd::avx512 {

struct Tag {};

template <class T>
struct Ops : LaneBasics<Tag, T, 64> {
    using Base = LaneBasics<Tag, T, 64>;
    using V = typename Base::V;

    template <class Mask>
    [[gnu::always_inline]] static constexpr Mask All() {
        return static_cast<Mask>(~Mask{});
    }

    [[gnu::always_inline]] static V Lower(V best, V e) {
        const __m512i a = (__m512i)e, b = (__m512i)best;
        if constexpr (std::is_same_v<T, double>) return _mm512_mask_min_pd(best, All<__mmask8>(), e, best);
        else if constexpr (std::is_same_v<T, float>) return _mm512_mask_min_ps(best, All<__mmask16>(), e, best);
        else if constexpr (std::is_same_v<T, std::int64_t>) return (V)_mm512_mask_min_epi64(b, All<__mmask8>(), a, b);
        else if constexpr (std::is_same_v<T, std::uint64_t>) return (V)_mm512_mask_min_epu64(b, All<__mmask8>(), a, b);
        else if constexpr (std::is_same_v<T, std::int32_t>) return (V)_mm512_mask_min_epi32(b, All<__mmask16>(), a, b);
        else if constexpr (std::is_same_v<T, std::uint32_t>) return (V)_mm512_mask_min_epu32(b, All<__mmask16>(), a, b);
        else if constexpr (std::is_same_v<T, std::int16_t>) return (V)_mm512_mask_min_epi16(b, All<__mmask32>(), a, b);
        else if constexpr (std::is_same_v<T, std::uint16_t>) return (V)_mm512_mask_min_epu16(b, All<__mmask32>(), a, b);
        else if constexpr (std::is_same_v<T, std::int8_t>) return (V)_mm512_mask_min_epi8(b, All<__mmask64>(), a, b);
        else if constexpr (std::is_same_v<T, std::uint8_t>) return (V)_mm512_mask_min_epu8(b, All<__mmask64>(), a, b);
        else return Base::BlendLower(best, e);
    }

    [[gnu::always_inline]] static V Higher(V best, V e) {
        const __m512i a = (__m512i)e, b = (__m512i)best;
        if constexpr (std::is_same_v<T, double>) return _mm512_mask_max_pd(best, All<__mmask8>(), e, best);
        else if constexpr (std::is_same_v<T, float>) return _mm512_mask_max_ps(best, All<__mmask16>(), e, best);
        else if constexpr (std::is_same_v<T, std::int64_t>) return (V)_mm512_mask_max_epi64(b, All<__mmask8>(), a, b);
        else if constexpr (std::is_same_v<T, std::uint64_t>) return (V)_mm512_mask_max_epu64(b, All<__mmask8>(), a, b);
        else if constexpr (std::is_same_v<T, std::int32_t>) return (V)_mm512_mask_max_epi32(b, All<__mmask16>(), a, b);
        else if constexpr (std::is_same_v<T, std::uint32_t>) return (V)_mm512_mask_max_epu32(b, All<__mmask16>(), a, b);
        else if constexpr (std::is_same_v<T, std::int16_t>) return (V)_mm512_mask_max_epi16(b, All<__mmask32>(), a, b);
        else if constexpr (std::is_same_v<T, std::uint16_t>) return (V)_mm512_mask_max_epu16(b, All<__mmask32>(), a, b);
        else if constexpr (std::is_same_v<T, std::int8_t>) return (V)_mm512_mask_max_epi8(b, All<__mmask64>(), a, b);
        else if constexpr (std::is_same_v<T, std::uint8_t>) return (V)_mm512_mask_max_epu8(b, All<__mmask64>(), a, b);
        else return Base::BlendHigher(best, e);
    }

    // Floating types: the lesser of `best` and |v| lane by lane, in one
    // operation (DQ's range, "least magnitude, sign cleared"); a NaN in v
    // keeps `best`, as Lower does. The Mid search measures every element of
    // a range it holds in cache this way, and the and that clears the sign
    // is a third of that loop's work.
    [[gnu::always_inline]] static V LowerMagnitude(V best, V v)
        requires std::is_floating_point_v<T>
    {
        if constexpr (std::is_same_v<T, double>) return _mm512_range_pd(best, v, 0x0A);
        else return _mm512_range_ps(best, v, 0x0A);
    }

    static constexpr bool kLoadsPart = true;
    // Zen 4 runs a 64-byte load as two 32-byte halves (IsaChoice.cpp).
    static constexpr bool kMayStreamUnaligned = true;

    // The n elements at p, 0 < n < kLanes, and p[0] in the lanes past them:
    // the masked load neither reads nor faults past p + n.
    [[gnu::always_inline]] static V LoadPart(const T* p, std::int32_t n) {
        const __m512i first = (__m512i)Base::Splat(p[0]);
        const std::uint64_t lanes = (std::uint64_t{1} << n) - 1;
        if constexpr (sizeof(T) == 8) return (V)_mm512_mask_loadu_epi64(first, static_cast<__mmask8>(lanes), p);
        else if constexpr (sizeof(T) == 4) return (V)_mm512_mask_loadu_epi32(first, static_cast<__mmask16>(lanes), p);
        else if constexpr (sizeof(T) == 2) return (V)_mm512_mask_loadu_epi16(first, static_cast<__mmask32>(lanes), p);
        else return (V)_mm512_mask_loadu_epi8(first, lanes, p);
    }

    template <class Mask>
    [[gnu::always_inline]] static bool Any(Mask mask) {
        if constexpr (std::is_integral_v<Mask>) return mask != 0;
        else return _mm512_test_epi64_mask((__m512i)mask, (__m512i)mask) != 0;
    }

    // Lanes where a or b is NaN, in one compare, as bits in a mask register:
    // the NaN tests of the scans that stop there run beside loops that wait
    // on memory, and two compares and a spread into lanes cost them reach.
    [[gnu::always_inline]] static auto Unordered(V a, V b) {
        if constexpr (std::is_same_v<T, double>) return _mm512_cmp_pd_mask(a, b, _CMP_UNORD_Q);
        else if constexpr (std::is_same_v<T, float>) return _mm512_cmp_ps_mask(a, b, _CMP_UNORD_Q);
        else return Base::Unordered(a, b);
    }

    [[gnu::always_inline]] static V Held(V v) {
        asm("" : "+v"(v));
        return v;
    }

    template <class Mask>
    [[gnu::always_inline]] static std::uint64_t ByteBits(Mask mask) {
        return _mm512_movepi8_mask((__m512i)mask);
    }

    // LaneBits(Equal(a, b)) in one compare into a mask register, rather
    // than a compare, a spread of its mask into lanes and a test of them.
    [[gnu::always_inline]] static std::uint64_t EqualBits(V a, V b) {
        const __m512i x = (__m512i)a, y = (__m512i)b;
        if constexpr (std::is_same_v<T, double>) return _mm512_cmp_pd_mask(a, b, _CMP_EQ_OQ);
        else if constexpr (std::is_same_v<T, float>) return _mm512_cmp_ps_mask(a, b, _CMP_EQ_OQ);
        else if constexpr (sizeof(T) == 8) return _mm512_cmpeq_epi64_mask(x, y);
        else if constexpr (sizeof(T) == 4) return _mm512_cmpeq_epi32_mask(x, y);
        else if constexpr (sizeof(T) == 2) return _mm512_cmpeq_epi16_mask(x, y);
        else return _mm512_cmpeq_epi8_mask(x, y);
    }

    template <class Mask>
    [[gnu::always_inline]] static std::uint64_t LaneBits(Mask mask) {
        const __m512i m = (__m512i)mask;
        if constexpr (sizeof(T) == 8) return _mm512_test_epi64_mask(m, m);
        else if constexpr (sizeof(T) == 4) return _mm512_test_epi32_mask(m, m);
        else if constexpr (sizeof(T) == 2) return _mm512_test_epi16_mask(m, m);
        else return _mm512_test_epi8_mask(m, m);
    }
};

}  // namespace qm::simd::avx512
