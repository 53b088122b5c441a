#include "arrayops/CacheSizes.h"

#include <atomic>

#if defined(__x86_64__) || defined(__i386__)
#include <cpuid.h>
#endif

namespace qm {
namespace {

// 0 until the first use; choosing twice on a race gives the same answer.
constinit std::atomic<std::int64_t> gMidCachedBytes{0};

// The L2 of one core in bytes, 0 where the processor does not say. AMD and
// Intel both give it in kilobytes in the extended leaf 0x80000006.
std::int64_t L2Bytes() {
#if defined(__x86_64__) || defined(__i386__)
    unsigned eax = 0, ebx = 0, ecx = 0, edx = 0;
    if (__get_cpuid(0x80000006u, &eax, &ebx, &ecx, &edx) != 0) return static_cast<std::int64_t>(ecx >> 16) * 1024;
#endif
    return 0;
}

// Half the L2, within what L2 caches measure today (256 KiB to 2 MiB), and
// 256 KiB where the size is unknown.
std::int64_t FromL2(std::int64_t l2) {
    constexpr std::int64_t kLeast = 128 * 1024, kMost = 1024 * 1024, kUnknown = 256 * 1024;
    if (l2 <= 0) return kUnknown;
    const std::int64_t half = l2 / 2;
    return half < kLeast ? kLeast : half > kMost ? kMost : half;
}

}  // namespace

std::int64_t MidCachedBytes() {
    std::int64_t bytes = gMidCachedBytes.load(std::memory_order_relaxed);
    if (bytes == 0) {
        bytes = FromL2(L2Bytes());
        gMidCachedBytes.store(bytes, std::memory_order_relaxed);
    }
    return bytes;
}

void ForceMidCachedBytes(std::int64_t bytes) { gMidCachedBytes.store(bytes, std::memory_order_relaxed); }

}  // namespace qm
