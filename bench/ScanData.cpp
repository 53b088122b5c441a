#include "ScanData.h"

#include <cstdint>
#include <cstring>
#include <map>
#include <memory>
#include <type_traits>

namespace bench {

namespace {

std::uint64_t SplitMix(std::uint64_t& state) {
    std::uint64_t z = (state += 0x9E3779B97F4A7C15ull);
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
    return z ^ (z >> 31);
}

template <class T>
T RandomValue(std::uint64_t& state) {
    const std::uint64_t bits = SplitMix(state);
    if constexpr (std::is_floating_point_v<T>) {
        return static_cast<T>(static_cast<double>(bits >> 11) * 0x1.0p-53 * 2000.0 - 1000.0);
    } else {
        T value;
        std::memcpy(&value, &bits, sizeof value);  // the low bytes: uniform over the whole type
        return value;
    }
}

}  // namespace

template <class T>
const T* ScanArray(std::size_t n) {
    static std::map<std::size_t, std::unique_ptr<T[]>> arrays;
    auto& array = arrays[n];
    if (!array) {
        array = std::make_unique_for_overwrite<T[]>(n);
        std::uint64_t state = 0x5EED0000u + n + sizeof(T);
        for (std::size_t i = 0; i < n; ++i) array[i] = RandomValue<T>(state);
    }
    return array.get();
}

template const double* ScanArray<double>(std::size_t);
template const float* ScanArray<float>(std::size_t);
template const std::int32_t* ScanArray<std::int32_t>(std::size_t);
template const std::int16_t* ScanArray<std::int16_t>(std::size_t);
template const std::uint8_t* ScanArray<std::uint8_t>(std::size_t);

}  // namespace bench
