#pragma once
// The arrays that the scans read: made on first use (so a filtered run only
// allocates what it needs) and kept for the whole program.

#include <cstddef>

namespace bench {

// n elements of uniform random values: the full range of an integer type,
// [-1000, 1000) for floating types. Unsorted and structureless, so a scan
// can skip nothing beyond what the data's own extremes allow.
template <class T>
const T* ScanArray(std::size_t n);

}  // namespace bench
