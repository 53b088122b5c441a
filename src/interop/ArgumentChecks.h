#pragma once
// Checks that keep a wrong argument from the managed side from faulting,
// reading or writing outside the caller's memory, or running for ever.
// They run once per call, after the null tests of the reference arguments,
// and a refused call returns its empty result with nothing written. Each
// returns true (after one report) when the call must not go on.

#include <cstdint>

namespace qm::interop {

// A null self or array pointer: a NullReferenceException report naming it.
bool IsNullPointer(const void* pointer, const char* name);

// A refused value: an ApplicationException report with the formatted text,
// which names the argument and its value.
[[gnu::format(printf, 2, 3)]] bool Refuses(bool refused, const char* format, ...);

// [start, end) as positions of an array: refused when it is not empty and
// starts below 0 or ends below its start (a scan would then run through
// the whole address space).
bool IsBadHalfOpenRange(std::int32_t start, std::int32_t end);

}  // namespace qm::interop
