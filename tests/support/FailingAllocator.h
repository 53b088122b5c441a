#pragma once
// Fault injection for allocation failures: the test program replaces the
// global operator new, which the library resolves to as well, and can make
// the n-th next allocation on this thread throw std::bad_alloc.

namespace qmtest {

// Makes the allocation `afterAllocations` from now fail (0: the very next).
void FailAllocation(int afterAllocations);
// Clears a pending failure.
void StopFailing();
// Allocations made on this thread since the last reset.
long AllocationCount();
void ResetAllocationCount();

}  // namespace qmtest
