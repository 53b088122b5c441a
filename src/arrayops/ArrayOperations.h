#pragma once
// The scan interface that every reducer and the exported scans go through.
// A scan accumulates: it starts from the caller's values (the seeds) and
// replaces them only on a strict improvement, so the earliest of equal
// extremes wins and a NaN never does.

#include <cstdint>

#include "arrayops/MinMaxPointSearchResult.h"

namespace qm {

template <class T>
class ArrayOperations {
public:
    virtual void Min(const T* data, std::int32_t start, std::int32_t end, T& min, std::int32_t& minIndex) const = 0;
    virtual void Min(const T* data, std::int32_t start, std::int32_t end, T& min) const = 0;
    virtual void Max(const T* data, std::int32_t start, std::int32_t end, T& max, std::int32_t& maxIndex) const = 0;
    virtual void Max(const T* data, std::int32_t start, std::int32_t end, T& max) const = 0;
    virtual void MinMax(const T* data, std::int32_t start, std::int32_t end, MinMaxPointSearchResult<T>& result) const = 0;
    virtual void MinMax(const T* data, std::int32_t start, std::int32_t end, T& min, T& max) const = 0;
    virtual std::int32_t FindIndexExactInUnsortedData(const T* data, std::int32_t start, std::int32_t end, T value) const = 0;
    virtual std::int32_t FindIndexExactInSortedData(const T* data, std::int32_t start, std::int32_t end, T value) const = 0;
    virtual ~ArrayOperations() = default;
};

}  // namespace qm
