#include "model/CacheSizes.h"

#include <atomic>

#if defined(__x86_64__) || defined(__i386__)
#include <cpuid.h>
#endif

namespace qm {
namespace {

// 0 until the first use; choosing twice on a race gives the same answer.
constinit std::atomic<std::int64_t> gL2Bytes{0};
constinit std::atomic<std::int64_t> gMidCachedBytes{0};

// AMD and Intel both give the L2 in kilobytes in the extended leaf
// 0x80000006; 0 where there is no such leaf.
std::int64_t ReadL2Bytes() {
#if defined(__x86_64__) || defined(__i386__)
    unsigned eax = 0, ebx = 0, ecx = 0, edx = 0;
    if (__get_cpuid(0x80000006u, &eax, &ebx, &ecx, &edx) != 0) return static_cast<std::int64_t>(ecx >> 16) * 1024;
#endif
    return 0;
}

}  // namespace

std::int64_t L2Bytes() {
    std::int64_t bytes = gL2Bytes.load(std::memory_order_relaxed);
    if (bytes == 0) {
        bytes = ReadL2Bytes();
        if (bytes <= 0) bytes = 512 * 1024;
        gL2Bytes.store(bytes, std::memory_order_relaxed);
    }
    return bytes;
}

// Half the L2, within what L2 caches measure today (256 KiB to 2 MiB).
std::int64_t MidCachedBytes() {
    std::int64_t bytes = gMidCachedBytes.load(std::memory_order_relaxed);
    if (bytes == 0) {
        constexpr std::int64_t kLeast = 128 * 1024, kMost = 1024 * 1024;
        const std::int64_t half = L2Bytes() / 2;
        bytes = half < kLeast ? kLeast : half > kMost ? kMost : half;
        gMidCachedBytes.store(bytes, std::memory_order_relaxed);
    }
    return bytes;
}

void ForceMidCachedBytes(std::int64_t bytes) { gMidCachedBytes.store(bytes, std::memory_order_relaxed); }

}  // namespace qm
