#include "support/FailingAllocator.h"

#include <cstdlib>
#include <new>

namespace qmtest {
namespace {

thread_local int countdown = -1;
thread_local long allocations = 0;

void* Allocate(std::size_t size) {
    ++allocations;
    if (countdown >= 0 && countdown-- == 0) throw std::bad_alloc();
    if (void* p = std::malloc(size == 0 ? 1 : size)) return p;
    throw std::bad_alloc();
}

}  // namespace

void FailAllocation(int afterAllocations) { countdown = afterAllocations; }
void StopFailing() { countdown = -1; }
long AllocationCount() { return allocations; }
void ResetAllocationCount() { allocations = 0; }

}  // namespace qmtest

void* operator new(std::size_t size) { return qmtest::Allocate(size); }
void* operator new[](std::size_t size) { return qmtest::Allocate(size); }
void operator delete(void* p) noexcept { std::free(p); }
void operator delete[](void* p) noexcept { std::free(p); }
void operator delete(void* p, std::size_t) noexcept { std::free(p); }
void operator delete[](void* p, std::size_t) noexcept { std::free(p); }
