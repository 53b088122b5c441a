#pragma once
// The caches that the library's reads plan for, read from the processor on
// first use. Internal only: nothing here is exported.

#include <cstdint>

namespace qm {

// The L2 of one core in bytes; 512 KiB where the processor does not say.
std::int64_t L2Bytes();

// How much of a range the Mid search may count on finding in cache when it
// reads the range a second time (NearestToMidScan.h): half the L2, which
// leaves the other half to what the run reads meanwhile.
std::int64_t MidCachedBytes();

// Tests make every Mid range take one path or the other with this; 0 gives
// the processor's own value back.
void ForceMidCachedBytes(std::int64_t bytes);

}  // namespace qm
