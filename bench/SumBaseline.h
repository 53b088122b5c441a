#pragma once
// The yardstick of every benchmark: a plain sum of the same elements. It
// reads each byte once and does one add per element, so its bytes per second
// are what memory (or the cache, for small arrays) gives to a loop that does
// next to nothing.
//
// Integers are summed in their own width, wrapping: only the reads matter,
// and a widening add would make the yardstick slower than the scans it
// measures. Every type gets one independent accumulator per element of a
// 64-byte cache line, so the adds never wait on each other and each pass of
// the loop reads one line whatever the width: the loop is bound by the
// loads, not by add latency (the compiler may not reorder floating adds, so
// the independence has to be written out).

#include <cstddef>
#include <type_traits>

namespace bench {

template <class T>
struct SumAccumulator {
    using type = T;
};
template <class T>
    requires std::is_integral_v<T>
struct SumAccumulator<T> {
    using type = std::make_unsigned_t<T>;  // wraps by definition
};

template <class T>
auto SumAll(const T* data, std::size_t n) {
    using Acc = typename SumAccumulator<T>::type;
    constexpr std::size_t kLanes = 64 / sizeof(T);
    Acc acc[kLanes] = {};
    std::size_t i = 0;
    for (; i + kLanes <= n; i += kLanes)
        for (std::size_t k = 0; k < kLanes; ++k) acc[k] = static_cast<Acc>(acc[k] + static_cast<Acc>(data[i + k]));
    for (; i < n; ++i) acc[0] = static_cast<Acc>(acc[0] + static_cast<Acc>(data[i]));
    Acc total = 0;
    for (Acc a : acc) total = static_cast<Acc>(total + a);
    return total;
}

}  // namespace bench
