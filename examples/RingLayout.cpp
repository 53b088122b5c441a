#include "RingLayout.h"

namespace demo {

RingBuffer StoreAsRing(const std::vector<double>& x, const std::vector<double>& y, std::int32_t baseIndex) {
    const auto size = static_cast<std::int32_t>(x.size());
    RingBuffer ring{std::vector<double>(x.size()), std::vector<double>(y.size()), baseIndex};
    for (std::int32_t i = 0; i < size; ++i) {
        const std::int32_t slot = RingSlot(i, baseIndex, size);
        ring.x[slot] = x[i];
        ring.y[slot] = y[i];
    }
    return ring;
}

}  // namespace demo
