#include "arrayops/simd/IsaChoice.h"

#include "quillmap/QuillmapTypes.h"

namespace qm::simd {

// Choosing twice on a race gives the same answer, so relaxed order is enough.
constinit std::atomic<const IsaScans*> gActiveScans{nullptr};
constinit std::atomic<bool> gStreamsUnaligned{false};

namespace {

Isa Detect() {
#if QM_X86_ISAS
    __builtin_cpu_init();
    // The AVX-512 loops use F (32- and 64-bit lanes), BW (8- and 16-bit) and
    // DQ (the Mid search's distances); every processor with BW has DQ. Both
    // wide ISAs also take BMI1 and BMI2, which every processor with AVX2 has
    // (a virtual machine may hide them), for their scalar work.
    if (!__builtin_cpu_supports("bmi") || !__builtin_cpu_supports("bmi2")) return Isa::Sse2;
    if (__builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512bw") &&
        __builtin_cpu_supports("avx512dq"))
        return Isa::Avx512;
    if (__builtin_cpu_supports("avx2")) return Isa::Avx2;
    return Isa::Sse2;
#else
    return Isa::Generic;
#endif
}

// Zen 4 (the AMD family 19h processors with AVX-512) runs a 64-byte load as
// two 32-byte halves. Measured there, whole runs through the AVX-512 loops
// that read memory with loads straddling two lines were 3 to 11 % faster
// than with every stretch on a line (Double, Single, Int32, Int16 and Byte;
// MinMax, Min and Max; plain, ring and uneven X), while scans of 32 Ki
// elements from cache were 3 to 15 % slower; another EPYC read memory a
// third slower straddling.
bool StreamsUnalignedOn(Isa isa) {
#if QM_X86_ISAS
    if (isa == Isa::Avx512) {
        __builtin_cpu_init();
        return __builtin_cpu_is("amd") && __builtin_cpu_is("amdfam19h");
    }
#endif
    (void)isa;
    return false;
}

// On Intel the scans ask for their lines ahead into L2, where into L1 they
// slowed MinMax by 15 to 30 % (ScanStretches.h); AMD's cores were measured
// the other way round (Zen 5), and other makers' not at all.
bool AheadToL2() {
#if QM_X86_ISAS
    __builtin_cpu_init();
    return __builtin_cpu_is("intel");
#else
    return false;
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

// The two hints only steer how fast the scans read, never what they find,
// so a thread that sees the tables before the hints loses nothing but time.
const IsaScans& Activate(Isa isa) {
    gStreamsUnaligned.store(StreamsUnalignedOn(isa), std::memory_order_relaxed);
    scan::gAheadToL2.store(AheadToL2(), std::memory_order_relaxed);
    const IsaScans& scans = TablesOf(isa);
    gActiveScans.store(&scans, std::memory_order_relaxed);
    return scans;
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

const IsaScans& ChooseScans() { return Activate(Detect()); }

Isa ActiveIsa() {
    const IsaScans* scans = gActiveScans.load(std::memory_order_relaxed);
    if (scans == nullptr) scans = &ChooseScans();
    for (const Isa isa : {Isa::Avx512, Isa::Avx2, Isa::Sse2})
        if (IsaSupported(isa) && scans == &TablesOf(isa)) return isa;
    return Isa::Generic;
}

bool ForceIsa(Isa isa) {
    if (!IsaSupported(isa)) return false;
    Activate(isa);
    return true;
}

bool StreamsUnaligned(std::int64_t bytes) {
    // More than the L2 of any core: a read of that much comes from memory.
    constexpr std::int64_t kCachedBytes = 4 << 20;
    if (bytes <= kCachedBytes) return false;
    if (gActiveScans.load(std::memory_order_relaxed) == nullptr) ChooseScans();
    return gStreamsUnaligned.load(std::memory_order_relaxed);
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
