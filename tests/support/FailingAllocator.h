#pragma once
// Fault injection for allocation failures: the test program replaces the
// global operator new, which the library resolves to as well (ELF, not a
// DLL), and can make the n-th next allocation on this thread throw.

namespace qmtest {

void FailAllocation(int afterAllocations);  // 0: the very next one
void StopFailing();
long AllocationCount();  // on this thread since the last reset
void ResetAllocationCount();

}  // namespace qmtest
