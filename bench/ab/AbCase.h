#pragma once
// One whole run for the A/B comparison, as plain data: the two runners (this
// tree's library and the variant's, each compiled against its own headers)
// share nothing else.

#include <cstdint>

namespace bench {

// The Y types of the whole-run benchmarks, in their order there.
enum class AbY : std::int32_t { Double, Single, Int32, Int16, Byte };

struct AbCase {
    AbY type;
    std::int32_t data;  // Linear 0, Category 1, UnevenlySpaced 2
    bool ring;
    bool hasNaN;
    std::int32_t mode;  // as the exports take it: MinMax 1, Min 2, Max 3, Mid 4, MinOrMax 5
    const double* x;
    const void* y;
    std::int32_t points;
    std::int32_t width;      // the viewport's pixels
    std::int32_t baseIndex;  // slot of logical index 0, for a ring
};

}  // namespace bench

// A run through UpdateIndices and Execute; answers a hash of the indices
// kept, so that the two libraries' answers can be compared.
extern "C" std::int64_t QmAbRunA(const bench::AbCase& c);
extern "C" std::int64_t QmAbRunB(const bench::AbCase& c);
