#pragma once
// The yardstick of every benchmark: a plain sum of the same elements. It
// reads each byte once and does one add per element, so its bytes per second
// are what memory (or the cache, for small arrays) gives to a loop that does
// next to nothing.
//
// Integers are summed in their own width, wrapping: only the reads matter,
// and a widening add would make the yardstick slower than the scans it
// measures. Every type gets one independent accumulator per element of four
// 64-byte cache lines, so the adds never wait on each other even in 64-byte
// registers, and each pass of the loop reads four lines whatever the width:
// the loop is bound by the loads, not by add latency (the compiler may not
// reorder floating adds, so the independence has to be written out). On
// x86-64 it is built for AVX-512, AVX2 and the baseline and runs the best
// the processor has, as the library does; a yardstick held to 16-byte
// registers would flatter the library.

#include <cstddef>
#include <cstdint>
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

#if defined(__x86_64__)
#define BENCH_ON_BEST_ISA __attribute__((target_clones("arch=x86-64-v4", "avx2", "default")))
#else
#define BENCH_ON_BEST_ISA
#endif

template <class T>
BENCH_ON_BEST_ISA typename SumAccumulator<T>::type SumAll(const T* data, std::size_t n) {
    using Acc = typename SumAccumulator<T>::type;
    constexpr std::size_t kLanes = 256 / sizeof(T);
    // Up to the first cache line one by one, into a sum of its own (one of
    // the array would keep the array in memory): the vector loads that
    // follow then never straddle two lines, which would cost a 64-byte ISA
    // about a third of its memory bandwidth (the library aligns its loops
    // too).
    Acc head = 0;
    std::size_t i = 0;
    for (; i < n && reinterpret_cast<std::uintptr_t>(data + i) % 64 != 0; ++i)
        head = static_cast<Acc>(head + static_cast<Acc>(data[i]));
    Acc acc[kLanes] = {};
    for (; i + kLanes <= n; i += kLanes)
        for (std::size_t k = 0; k < kLanes; ++k) acc[k] = static_cast<Acc>(acc[k] + static_cast<Acc>(data[i + k]));
    for (; i < n; ++i) acc[0] = static_cast<Acc>(acc[0] + static_cast<Acc>(data[i]));
    Acc total = head;
    for (Acc a : acc) total = static_cast<Acc>(total + a);
    return total;
}

}  // namespace bench
