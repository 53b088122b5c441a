#pragma once
// The exports of one whole run (make, UpdateIndices, Execute) for Double X
// and each Y type, picked by the Y type, as the managed side calls them.

#include <cstdint>

#include "quillmap/QuillmapCore.h"
#include "quillmap/QuillmapTypes.h"

namespace bench {

template <class YT>
struct RunExports;

#define BENCH_RUN_EXPORTS_(ctx, YW, YT, N)                                                        \
    template <>                                                                                   \
    struct RunExports<YT> {                                                                       \
        using Engine = QmExtremeResamplerDouble##YW;                                              \
        static Engine* Create() { return CSharp_new_ExtremeResamplerDouble##YW(); }               \
        static constexpr auto UpdateIndices = &CSharp_ExtremeResamplerDouble##YW##_UpdateIndices; \
        static constexpr auto Execute = &CSharp_ExtremeResamplerDouble##YW##_Execute;             \
    };
QM_Y_TYPES(BENCH_RUN_EXPORTS_, _)
#undef BENCH_RUN_EXPORTS_

}  // namespace bench
