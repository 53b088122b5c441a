// Exports of ArrayOperations<T> and MinMaxPointSearchResult<T> for the ten
// element types: thin forwarders around one generic body each.

#include <initializer_list>
#include <memory>
#include <utility>

#include "arrayops/GenericArrayOperations.h"
#include "interop/ArgumentChecks.h"
#include "interop/ExportGuards.h"
#include "interop/Handles.h"

namespace qm::interop {
namespace {

template <class T, class Handle>
ArrayOperationsHandle<T>* Self(Handle* self) {
    return reinterpret_cast<ArrayOperationsHandle<T>*>(self);
}

template <class T, class Handle>
Handle* NewArrayOperations() {
    return GeneralGuard([]() -> Handle* {
        auto operations = std::make_unique<GenericArrayOperations<T>>();
        auto* handle = new ArrayOperationsHandle<T>{operations.get()};
        operations.release();
        return reinterpret_cast<Handle*>(handle);
    });
}

template <class T, class Handle>
void DeleteArrayOperations(Handle* self) {
    if (self == nullptr) return;
    auto* handle = Self<T>(self);
    delete handle->Operations;
    delete handle;
}

// The handle, the caller's in/out variables, then the range a scan walks:
// [start, end) must be empty or lie at 0 or above, rising, over real data.
bool IsScanRefused(const void* self, std::initializer_list<std::pair<const void*, const char*>> outputs,
                   const void* data, std::int32_t start, std::int32_t end) {
    if (IsNullPointer(self, "self")) return true;
    for (const auto& [output, name] : outputs)
        if (IsNullPointer(output, name)) return true;
    return IsBadHalfOpenRange(start, end) || (start != end && IsNullPointer(data, "data"));
}

// The linear lookup reads nothing of an empty or inverted range.
bool IsUnsortedLookupRefused(const void* self, const void* data, std::int32_t start, std::int32_t end) {
    return IsNullPointer(self, "self") ||
           (start < end && (Refuses(start < 0, "start %d is below 0", start) || IsNullPointer(data, "data")));
}

// The binary search always ends by reading data[lo], lo >= start.
bool IsSortedLookupRefused(const void* self, const void* data, std::int32_t start) {
    return IsNullPointer(self, "self") || Refuses(start < 0, "start %d is below 0", start) ||
           IsNullPointer(data, "data");
}

template <class T, class Record>
MinMaxPointSearchResult<T>* RecordOf(Record* self) {
    return reinterpret_cast<MinMaxPointSearchResult<T>*>(self);
}

template <class T, class Record>
const MinMaxPointSearchResult<T>* RecordOf(const Record* self) {
    return reinterpret_cast<const MinMaxPointSearchResult<T>*>(self);
}

template <class T, class Record>
Record* NewRecord() {
    return GeneralGuard([] { return reinterpret_cast<Record*>(new MinMaxPointSearchResult<T>{}); });
}

}  // namespace
}  // namespace qm::interop

using namespace qm::interop;

#define QM_DEFINE_ARRAY_EXPORTS_(ctx, W, T, CppName)                                                          \
    QM_API QmArrayOperations##W* CSharp_new_ArrayOperations##W(void) {                                        \
        return NewArrayOperations<T, QmArrayOperations##W>();                                                 \
    }                                                                                                         \
    QM_API void CSharp_delete_ArrayOperations##W(QmArrayOperations##W* self) {                                \
        DeleteArrayOperations<T>(self);                                                                       \
    }                                                                                                         \
    QM_API void CSharp_ArrayOperations##W##_Min__SWIG_0(QmArrayOperations##W* self, const T* data,            \
                                                        int32_t start, int32_t end, T* min) {                 \
        if (IsScanRefused(self, {{min, "min"}}, data, start, end)) return;                                    \
        GeneralGuard([&] { Self<T>(self)->Operations->Min(data, start, end, *min); });                        \
    }                                                                                                         \
    QM_API void CSharp_ArrayOperations##W##_Min__SWIG_1(QmArrayOperations##W* self, const T* data,            \
                                                        int32_t start, int32_t end, T* min,                   \
                                                        int32_t* minIndex) {                                  \
        if (IsScanRefused(self, {{min, "min"}, {minIndex, "minIndex"}}, data, start, end)) return;            \
        GeneralGuard([&] { Self<T>(self)->Operations->Min(data, start, end, *min, *minIndex); });             \
    }                                                                                                         \
    QM_API void CSharp_ArrayOperations##W##_Max__SWIG_0(QmArrayOperations##W* self, const T* data,            \
                                                        int32_t start, int32_t end, T* max) {                 \
        if (IsScanRefused(self, {{max, "max"}}, data, start, end)) return;                                    \
        GeneralGuard([&] { Self<T>(self)->Operations->Max(data, start, end, *max); });                        \
    }                                                                                                         \
    QM_API void CSharp_ArrayOperations##W##_Max__SWIG_1(QmArrayOperations##W* self, const T* data,            \
                                                        int32_t start, int32_t end, T* max,                   \
                                                        int32_t* maxIndex) {                                  \
        if (IsScanRefused(self, {{max, "max"}, {maxIndex, "maxIndex"}}, data, start, end)) return;            \
        GeneralGuard([&] { Self<T>(self)->Operations->Max(data, start, end, *max, *maxIndex); });             \
    }                                                                                                         \
    QM_API void CSharp_ArrayOperations##W##_MinMax__SWIG_0(QmArrayOperations##W* self, const T* data,         \
                                                           int32_t start, int32_t end, T* min, T* max) {      \
        if (IsScanRefused(self, {{min, "min"}, {max, "max"}}, data, start, end)) return;                      \
        GeneralGuard([&] { Self<T>(self)->Operations->MinMax(data, start, end, *min, *max); });               \
    }                                                                                                         \
    QM_API void CSharp_ArrayOperations##W##_MinMax__SWIG_1(QmArrayOperations##W* self, const T* data,         \
                                                           int32_t start, int32_t end,                        \
                                                           QmMinMaxPointSearchResult##W* result) {            \
        if (IsNullReference(result, "MinMaxPointSearchResult< " CppName " > & type is null")) return;        \
        if (IsScanRefused(self, {}, data, start, end)) return;                                                \
        GeneralGuard([&] { Self<T>(self)->Operations->MinMax(data, start, end, *RecordOf<T>(result)); });     \
    }                                                                                                         \
    QM_API int32_t CSharp_ArrayOperations##W##_FindIndexExactInUnsortedData(                                  \
        QmArrayOperations##W* self, const T* data, int32_t start, int32_t end, T value) {                     \
        if (IsUnsortedLookupRefused(self, data, start, end)) return 0;                                        \
        return GeneralGuard(                                                                                  \
            [&] { return Self<T>(self)->Operations->FindIndexExactInUnsortedData(data, start, end, value); }); \
    }                                                                                                         \
    QM_API int32_t CSharp_ArrayOperations##W##_FindIndexExactInSortedData(                                    \
        QmArrayOperations##W* self, const T* data, int32_t start, int32_t end, T value) {                     \
        if (IsSortedLookupRefused(self, data, start)) return 0;                                               \
        return GeneralGuard(                                                                                  \
            [&] { return Self<T>(self)->Operations->FindIndexExactInSortedData(data, start, end, value); });   \
    }                                                                                                         \
    QM_API QmMinMaxPointSearchResult##W* CSharp_new_MinMaxPointSearchResult##W(void) {                        \
        return NewRecord<T, QmMinMaxPointSearchResult##W>();                                                  \
    }                                                                                                         \
    QM_API void CSharp_delete_MinMaxPointSearchResult##W(QmMinMaxPointSearchResult##W* self) {                \
        delete RecordOf<T>(self);                                                                             \
    }                                                                                                         \
    QM_DEFINE_RECORD_ACCESSORS_(W, T, MinIndex, int32_t)                                                      \
    QM_DEFINE_RECORD_ACCESSORS_(W, T, MaxIndex, int32_t)                                                      \
    QM_DEFINE_RECORD_ACCESSORS_(W, T, Min, T)                                                                 \
    QM_DEFINE_RECORD_ACCESSORS_(W, T, Max, T)

// Setters ignore a null record; a getter reports it and answers 0.
#define QM_DEFINE_RECORD_ACCESSORS_(W, T, Field, FieldType)                                              \
    QM_API void CSharp_MinMaxPointSearchResult##W##_##Field##_set(QmMinMaxPointSearchResult##W* self,    \
                                                                  FieldType value) {                     \
        if (self != nullptr) RecordOf<T>(self)->Field = value;                                           \
    }                                                                                                    \
    QM_API FieldType CSharp_MinMaxPointSearchResult##W##_##Field##_get(                                  \
        const QmMinMaxPointSearchResult##W* self) {                                                      \
        if (IsNullPointer(self, "self")) return FieldType();                                            \
        return RecordOf<T>(self)->Field;                                                                 \
    }

extern "C" {
QM_Y_TYPES(QM_DEFINE_ARRAY_EXPORTS_, _)
}
