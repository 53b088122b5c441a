#pragma once
// Lane operations in the compiler's generic vectors only: what serves on
// targets without an ISA of their own, with the same results.

#include <cstdint>
#include <cstring>

#include "arrayops/simd/LaneBasics.h"

namespace qm::simd::generic {

struct Tag {};

template <class T>
struct Ops : LaneBasics<Tag, T, 16> {
    using Base = LaneBasics<Tag, T, 16>;
    using V = typename Base::V;

    [[gnu::always_inline]] static V Lower(V best, V e) { return Base::BlendLower(best, e); }
    [[gnu::always_inline]] static V Higher(V best, V e) { return Base::BlendHigher(best, e); }

    template <class Mask>
    [[gnu::always_inline]] static bool Any(Mask mask) {
        static_assert(sizeof(Mask) == 16);
        std::uint64_t words[2];
        std::memcpy(words, &mask, sizeof words);
        return (words[0] | words[1]) != 0;
    }

    template <class Mask>
    [[gnu::always_inline]] static std::uint64_t ByteBits(Mask mask) {
        static_assert(sizeof(Mask) == 16);
        unsigned char bytes[16];
        std::memcpy(bytes, &mask, sizeof bytes);
        std::uint64_t bits = 0;
        for (int k = 0; k < 16; ++k) bits |= static_cast<std::uint64_t>(bytes[k] >> 7) << k;
        return bits;
    }

    template <class Mask>
    [[gnu::always_inline]] static std::uint64_t LaneBits(Mask mask) {
        const std::uint64_t bytes = ByteBits(mask);
        std::uint64_t bits = 0;
        for (int k = 0; k < Base::kLanes; ++k) bits |= ((bytes >> (k * sizeof(T))) & 1u) << k;
        return bits;
    }
};

}  // namespace qm::simd::generic
