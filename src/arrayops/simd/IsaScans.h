#pragma once
// The scan tables each ISA's translation unit provides, one per element type.

#include "arrayops/ScanTable.h"

namespace qm::simd {

template <class T>
const ScanTable<T>& GenericScans();
template <class T>
const ScanTable<T>& Sse2Scans();
template <class T>
const ScanTable<T>& Avx2Scans();
template <class T>
const ScanTable<T>& Avx512Scans();

}  // namespace qm::simd

// Defines NAME<T>() for the ten element types from the kernels over OPS<T>.
#define QM_DEFINE_ISA_SCANS(NAME, OPS)                                              \
    namespace qm::simd {                                                            \
    template <class T>                                                              \
    const ScanTable<T>& NAME() {                                                    \
        using Entries = scan::ScanEntries<OPS<T>>;                                  \
        static constexpr ScanTable<T> kTable{&Entries::Min, &Entries::Max, &Entries::MinMax}; \
        return kTable;                                                              \
    }                                                                               \
    QM_Y_TYPES(QM_INSTANTIATE_ISA_SCANS_, NAME)                                     \
    }
#define QM_INSTANTIATE_ISA_SCANS_(NAME, W, T, N) template const ScanTable<T>& NAME<T>();
