#pragma once
// Which ISA's scan loops run. The best one the processor supports is chosen
// on first use; tests and benchmarks may force any supported one. Internal
// only: nothing here is exported.

#include "arrayops/ScanTable.h"

namespace qm::simd {

// Generic serves every target; the others exist on x86-64 only.
enum class Isa { Generic, Sse2, Avx2, Avx512 };

bool IsaSupported(Isa isa);
Isa ActiveIsa();
// Returns false, and changes nothing, for an ISA the processor lacks.
bool ForceIsa(Isa isa);
const char* IsaName(Isa isa);

template <class T>
const ScanTable<T>& ScansFor(Isa isa);

template <class T>
const ScanTable<T>& ActiveScans() {
    return ScansFor<T>(ActiveIsa());
}

}  // namespace qm::simd
