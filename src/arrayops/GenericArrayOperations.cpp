#include "arrayops/GenericArrayOperations.h"

#include "arrayops/ScanKernels.h"

namespace qm {

template <class T>
void GenericArrayOperations<T>::Min(const T* data, std::int32_t start, std::int32_t end, T& min,
                                    std::int32_t& minIndex) const {
    scan::MinWithIndex<T> tracker{min, minIndex};
    scan::Run(tracker, data, start, end);
    min = tracker.min;
    minIndex = tracker.index;
}

template <class T>
void GenericArrayOperations<T>::Min(const T* data, std::int32_t start, std::int32_t end, T& min) const {
    scan::MinValue<T> tracker{min};
    scan::Run(tracker, data, start, end);
    min = tracker.min;
}

template <class T>
void GenericArrayOperations<T>::Max(const T* data, std::int32_t start, std::int32_t end, T& max,
                                    std::int32_t& maxIndex) const {
    scan::MaxWithIndex<T> tracker{max, maxIndex};
    scan::Run(tracker, data, start, end);
    max = tracker.max;
    maxIndex = tracker.index;
}

template <class T>
void GenericArrayOperations<T>::Max(const T* data, std::int32_t start, std::int32_t end, T& max) const {
    scan::MaxValue<T> tracker{max};
    scan::Run(tracker, data, start, end);
    max = tracker.max;
}

template <class T>
void GenericArrayOperations<T>::MinMax(const T* data, std::int32_t start, std::int32_t end,
                                       MinMaxPointSearchResult<T>& result) const {
    scan::MinMaxWithIndex<T> tracker{result};
    scan::Run(tracker, data, start, end);
    result = tracker.r;
}

template <class T>
void GenericArrayOperations<T>::MinMax(const T* data, std::int32_t start, std::int32_t end, T& min, T& max) const {
    scan::MinMaxValue<T> tracker{min, max};
    scan::Run(tracker, data, start, end);
    min = tracker.min;
    max = tracker.max;
}

template <class T>
std::int32_t GenericArrayOperations<T>::FindIndexExactInUnsortedData(const T* data, std::int32_t start,
                                                                     std::int32_t end, T value) const {
    return scan::FindExactUnsorted(data, start, end, value);
}

template <class T>
std::int32_t GenericArrayOperations<T>::FindIndexExactInSortedData(const T* data, std::int32_t start,
                                                                   std::int32_t end, T value) const {
    return scan::FindExactSorted(data, start, end, value);
}

#define QM_INSTANTIATE_ARRAY_OPERATIONS_(ctx, W, T, N) template class GenericArrayOperations<T>;
QM_Y_TYPES(QM_INSTANTIATE_ARRAY_OPERATIONS_, _)
#undef QM_INSTANTIATE_ARRAY_OPERATIONS_

}  // namespace qm
