#pragma once
// The scan tables of each ISA's translation unit, one per element type, and
// the macro with which each of those units defines its own from the kernels
// over its lane operations.

#include <type_traits>

#include "arrayops/NearestToMidScan.h"
#include "arrayops/ScanKernels.h"
#include "arrayops/ScanTable.h"
#include "quillmap/QuillmapTypes.h"

namespace qm::simd {

#define QM_ISA_SCAN_MEMBER_(ctx, W, T, N) ScanTable<T> W;
struct IsaScans {
    QM_Y_TYPES(QM_ISA_SCAN_MEMBER_, _)
};
#undef QM_ISA_SCAN_MEMBER_

extern const IsaScans kGenericScans;
extern const IsaScans kSse2Scans;
extern const IsaScans kAvx2Scans;
extern const IsaScans kAvx512Scans;

template <class T>
constexpr const ScanTable<T>& TableOf(const IsaScans& scans) {
#define QM_ISA_SCAN_PICK_(ctx, W, TT, N) \
    if constexpr (std::is_same_v<T, TT>) return scans.W;
    QM_Y_TYPES(QM_ISA_SCAN_PICK_, _)
#undef QM_ISA_SCAN_PICK_
}

// The table of the kernels over OPS<T>; the NaN variants exist for floating
// types only (no other type holds NaN).
template <template <class> class OPS, class T>
constexpr ScanTable<T> MakeTable() {
    using Entries = scan::ScanEntries<OPS<T>>;
    ScanTable<T> table{&Entries::template Min<false>,
                       &Entries::template Max<false>,
                       &Entries::template MinMax<false>,
                       &scan::NearestToMidScan<OPS<T>, false>::Run,
                       nullptr,
                       nullptr,
                       nullptr,
                       nullptr,
                       nullptr,
                       &Entries::template Min<false>,
                       &Entries::template Max<false>,
                       &Entries::template MinMax<false>};
    table.minMaxEach = &Entries::MinMaxEach;
    if constexpr (OPS<T>::kMayStreamUnaligned) {
        table.minStreaming = &Entries::template Min<false, false>;
        table.maxStreaming = &Entries::template Max<false, false>;
        table.minMaxStreaming = &Entries::template MinMax<false, false>;
    }
    if constexpr (std::is_floating_point_v<T>) {
        table.minToNaN = &Entries::template Min<true>;
        table.maxToNaN = &Entries::template Max<true>;
        table.minMaxToNaN = &Entries::template MinMax<true>;
        table.nearestToMidToNaN = &scan::NearestToMidScan<OPS<T>, true>::Run;
        table.firstNumber = &scan::FirstNumber<OPS<T>, T>;
    }
    return table;
}

}  // namespace qm::simd

// Defines NAME, the tables of the ten element types from the kernels over OPS<T>.
#define QM_DEFINE_ISA_SCANS(NAME, OPS)                                         \
    namespace qm::simd {                                                       \
    constinit const IsaScans NAME{QM_Y_TYPES(QM_ISA_SCAN_TABLE_, OPS)};       \
    }
#define QM_ISA_SCAN_TABLE_(OPS, W, T, N) MakeTable<OPS, T>(),
