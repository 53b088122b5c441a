#include "arrayops/simd/IsaChoice.h"

#include "quillmap/QuillmapTypes.h"

namespace qm::simd {

// Choosing twice on a race gives the same answer, so relaxed order is enough.
constinit std::atomic<const IsaScans*> gActiveScans{nullptr};

namespace {

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

const IsaScans& TablesOf(Isa isa) {
    switch (isa) {
#if QM_X86_ISAS
        case Isa::Sse2:
            return kSse2Scans;
        case Isa::Avx2:
            return kAvx2Scans;
        case Isa::Avx512:
            return kAvx512Scans;
#endif
        default:
            return kGenericScans;
    }
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

const IsaScans& ChooseScans() {
    const IsaScans& scans = TablesOf(Detect());
    gActiveScans.store(&scans, std::memory_order_relaxed);
    return scans;
}

Isa ActiveIsa() {
    const IsaScans* scans = gActiveScans.load(std::memory_order_relaxed);
    if (scans == nullptr) scans = &ChooseScans();
    for (const Isa isa : {Isa::Avx512, Isa::Avx2, Isa::Sse2})
        if (IsaSupported(isa) && scans == &TablesOf(isa)) return isa;
    return Isa::Generic;
}

bool ForceIsa(Isa isa) {
    if (!IsaSupported(isa)) return false;
    gActiveScans.store(&TablesOf(isa), std::memory_order_relaxed);
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
    return TableOf<T>(TablesOf(isa));
}

#define QM_INSTANTIATE_SCANS_FOR_(ctx, W, T, N) template const ScanTable<T>& ScansFor<T>(Isa);
QM_Y_TYPES(QM_INSTANTIATE_SCANS_FOR_, _)
#undef QM_INSTANTIATE_SCANS_FOR_

}  // namespace qm::simd
