#pragma once
// How much of a range the Mid search may count on finding in cache when it
// reads the range a second time (NearestToMidScan.h): half the L2 of one
// core, which leaves the other half to what the run reads meanwhile. Read
// from the processor on first use; internal only, nothing here is exported.

#include <cstdint>

namespace qm {

std::int64_t MidCachedBytes();

// Tests make every range take one path or the other with this; 0 gives the
// processor's own value back.
void ForceMidCachedBytes(std::int64_t bytes);

}  // namespace qm
