#pragma once
#include <cstdint>

namespace qm {

// The result record of a combined scan; the indices come first for every T.
template <class T>
struct MinMaxPointSearchResult {
    std::int32_t MinIndex;
    std::int32_t MaxIndex;
    T Min;
    T Max;
};

}  // namespace qm
