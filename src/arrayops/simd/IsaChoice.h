#pragma once
// Which ISA's scan loops run. The best one the processor supports is chosen
// on first use; tests and benchmarks may force any supported one. Internal
// only: nothing here is exported.

#include <atomic>
#include <cstdint>

#include "arrayops/simd/IsaScans.h"

namespace qm::simd {

// Generic serves every target; the others exist on x86-64 only.
enum class Isa { Generic, Sse2, Avx2, Avx512 };

bool IsaSupported(Isa isa);
Isa ActiveIsa();
// Returns false, and changes nothing, for an ISA the processor lacks.
bool ForceIsa(Isa isa);
// Whether a read of `bytes` takes the streaming scans (ScanTable.h): where
// it comes from memory, on a processor that reads memory faster with loads
// that straddle cache lines.
bool StreamsUnaligned(std::int64_t bytes);
const char* IsaName(Isa isa);

// The tables of the chosen ISA, null until the first use chooses. Constant-
// initialised, so the library has no start-up work.
extern constinit std::atomic<const IsaScans*> gActiveScans;
const IsaScans& ChooseScans();

template <class T>
const ScanTable<T>& ScansFor(Isa isa);

// One load on every call but the first.
template <class T>
[[gnu::always_inline]] inline const ScanTable<T>& ActiveScans() {
    const IsaScans* scans = gActiveScans.load(std::memory_order_relaxed);
    return TableOf<T>(scans != nullptr ? *scans : ChooseScans());
}

// The chosen ISA's min, max and minMax for a read of `elements` (one scan,
// or a bucket walk's whole series): the streaming ones where StreamsUnaligned.
template <class T>
struct ExtremeScans {
    typename ScanTable<T>::Extreme min;
    typename ScanTable<T>::Extreme max;
    typename ScanTable<T>::Both minMax;
};
template <class T>
ExtremeScans<T> ExtremeScansFor(std::int64_t elements) {
    const ScanTable<T>& table = ActiveScans<T>();
    if (StreamsUnaligned(elements * static_cast<std::int64_t>(sizeof(T))))
        return {table.minStreaming, table.maxStreaming, table.minMaxStreaming};
    return {table.min, table.max, table.minMax};
}

}  // namespace qm::simd
