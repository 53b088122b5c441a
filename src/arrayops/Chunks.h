#pragma once
// Packed lanes of any element type, written with the compiler's generic
// vectors so that one body serves every type.

#include <cstdint>
#include <cstring>

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

// True when any lane of a compare mask is set.
template <class Mask>
[[gnu::always_inline]] inline bool AnyLane(const Mask& mask) {
    static_assert(sizeof(Mask) == 16);
    std::uint64_t words[2];
    std::memcpy(words, &mask, sizeof words);
    return (words[0] | words[1]) != 0;
}

}  // namespace qm::scan
