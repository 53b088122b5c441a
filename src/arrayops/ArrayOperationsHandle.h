#pragma once
// What the managed caller holds for the scans: a handle that owns the scan
// object, so the exported self is never the scan object itself.


#include "arrayops/ArrayOperations.h"

namespace qm {

template <class T>
struct ArrayOperationsHandle {
    ArrayOperations<T>* Operations;
};

}  // namespace qm
