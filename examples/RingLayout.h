#pragma once
// A series stored the way a ring buffer holds it: the oldest point at slot
// baseIndex, the series running to the end of the storage and going on at
// slot 0.

#include <cstdint>
#include <vector>

namespace demo {

struct RingBuffer {
    std::vector<double> x;
    std::vector<double> y;
    std::int32_t baseIndex = 0;  // slot of logical index 0
};

RingBuffer StoreAsRing(const std::vector<double>& x, const std::vector<double>& y, std::int32_t baseIndex);

// Slot of a logical index in a full ring of `size` slots.
inline std::int32_t RingSlot(std::int32_t logical, std::int32_t baseIndex, std::int32_t size) {
    return static_cast<std::int32_t>((static_cast<std::int64_t>(logical) + baseIndex) % size);
}

}  // namespace demo
