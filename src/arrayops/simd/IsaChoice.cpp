#include "arrayops/simd/IsaChoice.h"

#include <atomic>

#include "arrayops/simd/IsaScans.h"
#include "quillmap/QuillmapTypes.h"

namespace qm::simd {

namespace {

constexpr int kUnchosen = -1;

// Constant-initialised, so the library has no start-up work. Choosing twice
// on a race gives the same answer, so a relaxed store is enough.
constinit std::atomic<int> chosen{kUnchosen};

Isa Detect() {
#if QM_X86_ISAS
    __builtin_cpu_init();
    // The AVX-512 loops use F (32- and 64-bit lanes) and BW (8- and 16-bit).
    if (__builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512bw")) return Isa::Avx512;
    if (__builtin_cpu_supports("avx2")) return Isa::Avx2;
    return Isa::Sse2;
#else
    return Isa::Generic;
#endif
}

}  // namespace

bool IsaSupported(Isa isa) {
    switch (isa) {
        case Isa::Generic:
            return true;
#if QM_X86_ISAS
        case Isa::Sse2:
            return true;
        case Isa::Avx2:
            return Detect() >= Isa::Avx2;
        case Isa::Avx512:
            return Detect() >= Isa::Avx512;
#endif
        default:
            return false;
    }
}

Isa ActiveIsa() {
    int isa = chosen.load(std::memory_order_relaxed);
    if (isa == kUnchosen) {
        isa = static_cast<int>(Detect());
        chosen.store(isa, std::memory_order_relaxed);
    }
    return static_cast<Isa>(isa);
}

bool ForceIsa(Isa isa) {
    if (!IsaSupported(isa)) return false;
    chosen.store(static_cast<int>(isa), std::memory_order_relaxed);
    return true;
}

const char* IsaName(Isa isa) {
    switch (isa) {
        case Isa::Sse2:
            return "SSE2";
        case Isa::Avx2:
            return "AVX2";
        case Isa::Avx512:
            return "AVX-512";
        default:
            return "generic";
    }
}

template <class T>
const ScanTable<T>& ScansFor(Isa isa) {
    switch (isa) {
#if QM_X86_ISAS
        case Isa::Sse2:
            return Sse2Scans<T>();
        case Isa::Avx2:
            return Avx2Scans<T>();
        case Isa::Avx512:
            return Avx512Scans<T>();
#endif
        default:
            return GenericScans<T>();
    }
}

#define QM_INSTANTIATE_SCANS_FOR_(ctx, W, T, N) template const ScanTable<T>& ScansFor<T>(Isa);
QM_Y_TYPES(QM_INSTANTIATE_SCANS_FOR_, _)
#undef QM_INSTANTIATE_SCANS_FOR_

}  // namespace qm::simd
