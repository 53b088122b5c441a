#pragma once
// The one concrete ArrayOperations: forwards each virtual operation to the
// shared scan loops. Instantiated once per element type, in its .cpp.

#include "arrayops/ArrayOperations.h"
#include "quillmap/QuillmapTypes.h"

namespace qm {

template <class T>
class GenericArrayOperations final : public ArrayOperations<T> {
public:
    void Min(const T* data, std::int32_t start, std::int32_t end, T& min, std::int32_t& minIndex) const override;
    void Min(const T* data, std::int32_t start, std::int32_t end, T& min) const override;
    void Max(const T* data, std::int32_t start, std::int32_t end, T& max, std::int32_t& maxIndex) const override;
    void Max(const T* data, std::int32_t start, std::int32_t end, T& max) const override;
    void MinMax(const T* data, std::int32_t start, std::int32_t end, MinMaxPointSearchResult<T>& result) const override;
    void MinMax(const T* data, std::int32_t start, std::int32_t end, T& min, T& max) const override;
    std::int32_t FindIndexExactInUnsortedData(const T* data, std::int32_t start, std::int32_t end, T value) const override;
    std::int32_t FindIndexExactInSortedData(const T* data, std::int32_t start, std::int32_t end, T value) const override;
};

#define QM_EXTERN_ARRAY_OPERATIONS_(ctx, W, T, N) extern template class GenericArrayOperations<T>;
QM_Y_TYPES(QM_EXTERN_ARRAY_OPERATIONS_, _)
#undef QM_EXTERN_ARRAY_OPERATIONS_

}  // namespace qm
