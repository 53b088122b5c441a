#pragma once
// The ArrayOperations exports of one element type, picked by that type, so
// one benchmark template serves them all. Generated from the library's own
// type list.

#include "quillmap/QuillmapCore.h"

namespace bench {

template <class T>
struct ScanExports;

#define BENCH_SCAN_EXPORTS_(ctx, W, T, N)                                                                  \
    template <>                                                                                            \
    struct ScanExports<T> {                                                                                \
        using Operations = QmArrayOperations##W;                                                           \
        using Record = QmMinMaxPointSearchResult##W;                                                       \
        static constexpr const char* kWord = #W;                                                           \
        static Operations* New() { return CSharp_new_ArrayOperations##W(); }                               \
        static void Delete(Operations* o) { CSharp_delete_ArrayOperations##W(o); }                         \
        static Record* NewRecord() { return CSharp_new_MinMaxPointSearchResult##W(); }                     \
        static void DeleteRecord(Record* r) { CSharp_delete_MinMaxPointSearchResult##W(r); }               \
        static void SeedRecord(Record* r, T value) {                                                       \
            CSharp_MinMaxPointSearchResult##W##_Min_set(r, value);                                         \
            CSharp_MinMaxPointSearchResult##W##_Max_set(r, value);                                         \
            CSharp_MinMaxPointSearchResult##W##_MinIndex_set(r, 0);                                        \
            CSharp_MinMaxPointSearchResult##W##_MaxIndex_set(r, 0);                                        \
        }                                                                                                  \
        static constexpr auto Min = &CSharp_ArrayOperations##W##_Min__SWIG_0;                              \
        static constexpr auto MinIndex = &CSharp_ArrayOperations##W##_Min__SWIG_1;                         \
        static constexpr auto Max = &CSharp_ArrayOperations##W##_Max__SWIG_0;                              \
        static constexpr auto MaxIndex = &CSharp_ArrayOperations##W##_Max__SWIG_1;                         \
        static constexpr auto MinMax = &CSharp_ArrayOperations##W##_MinMax__SWIG_0;                        \
        static constexpr auto MinMaxRecord = &CSharp_ArrayOperations##W##_MinMax__SWIG_1;                  \
    };

QM_Y_TYPES(BENCH_SCAN_EXPORTS_, _)

#undef BENCH_SCAN_EXPORTS_

}  // namespace bench
