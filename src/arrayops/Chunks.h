#pragma once
// Packed lanes of any element type, written with the compiler's generic
// vectors so that one body serves every type.

#include <cstdint>
#include <cstring>
#include <type_traits>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace qm::scan {

// One SSE register of elements, for tests that compare many lanes at once.
template <class T>
struct ChunkOf {
    typedef T type __attribute__((vector_size(16)));
};
template <class T>
using Chunk = typename ChunkOf<T>::type;
template <class T>
inline constexpr std::int32_t kChunkLanes = static_cast<std::int32_t>(16 / sizeof(T));

template <class T>
[[gnu::always_inline]] inline Chunk<T> LoadChunk(const T* p) {
    Chunk<T> v;
    std::memcpy(&v, p, sizeof v);
    return v;
}

// Subtracting +0 leaves every value as it was (-0.0 and NaN included) and
// lets the compiler splat the scalar into all lanes at once.
template <class T>
[[gnu::always_inline]] inline Chunk<T> Broadcast(T value) {
    return value - Chunk<T>{};
}

// Lane-wise `e < best ? e : best` and `e > best ? e : best`, the strict
// replace-if-better of the scans. SSE2 has both as one instruction with
// exactly these semantics (an unordered or equal pair keeps `best`) for four
// element types; the others blend, which costs a chain of four.
#if defined(__SSE2__)
template <class T>
inline constexpr bool kNativeLaneMinMax =
    std::is_same_v<T, double> || std::is_same_v<T, float> || std::is_same_v<T, std::int16_t> ||
    std::is_same_v<T, std::uint8_t>;
#else
template <class T>
inline constexpr bool kNativeLaneMinMax = false;
#endif

template <class T>
[[gnu::always_inline]] inline Chunk<T> KeepLower(Chunk<T> best, Chunk<T> e) {
#if defined(__SSE2__)
    if constexpr (std::is_same_v<T, double>) return _mm_min_pd(e, best);
    else if constexpr (std::is_same_v<T, float>) return _mm_min_ps(e, best);
    else if constexpr (std::is_same_v<T, std::int16_t>) return (Chunk<T>)_mm_min_epi16((__m128i)e, (__m128i)best);
    else if constexpr (std::is_same_v<T, std::uint8_t>) return (Chunk<T>)_mm_min_epu8((__m128i)e, (__m128i)best);
    else
#endif
        return best > e ? e : best;
}

template <class T>
[[gnu::always_inline]] inline Chunk<T> KeepHigher(Chunk<T> best, Chunk<T> e) {
#if defined(__SSE2__)
    if constexpr (std::is_same_v<T, double>) return _mm_max_pd(e, best);
    else if constexpr (std::is_same_v<T, float>) return _mm_max_ps(e, best);
    else if constexpr (std::is_same_v<T, std::int16_t>) return (Chunk<T>)_mm_max_epi16((__m128i)e, (__m128i)best);
    else if constexpr (std::is_same_v<T, std::uint8_t>) return (Chunk<T>)_mm_max_epu8((__m128i)e, (__m128i)best);
    else
#endif
        return e > best ? e : best;
}

// True when any lane of a compare mask is set.
template <class Mask>
[[gnu::always_inline]] inline bool AnyLane(const Mask& mask) {
    static_assert(sizeof(Mask) == 16);
    std::uint64_t words[2];
    std::memcpy(words, &mask, sizeof words);
    return (words[0] | words[1]) != 0;
}

}  // namespace qm::scan
