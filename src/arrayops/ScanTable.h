#pragma once
// The seeded scans of one element type as built for one ISA. The forms
// without an index run these too, with an index of their own.

#include <cstdint>

#include "arrayops/MinMaxPointSearchResult.h"

namespace qm {

template <class T>
struct ScanTable {
    void (*min)(const T* data, std::int32_t start, std::int32_t end, T& min, std::int32_t& minIndex);
    void (*max)(const T* data, std::int32_t start, std::int32_t end, T& max, std::int32_t& maxIndex);
    void (*minMax)(const T* data, std::int32_t start, std::int32_t end, MinMaxPointSearchResult<T>& result);
};

}  // namespace qm
