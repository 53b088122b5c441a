// The IntVector exports: the plain vector operations plus those of a managed
// list, each with the range checks and messages the managed side expects.
// A null self is reported (after the null test of a vector argument), and
// every export runs guarded: the length and allocation failures of a growing
// vector are reported, never thrown into the managed caller.

#include <algorithm>
#include <memory>
#include <stdexcept>

#include "interop/ArgumentChecks.h"
#include "interop/ExportGuards.h"
#include "interop/Handles.h"
#include "model/Int32Arithmetic.h"

namespace qm::interop {
namespace {

IntVector& Vec(QmIntVector* self) { return *FromHandle(self); }

bool IsNullSelf(const QmIntVector* self) { return IsNullPointer(self, "self"); }

void CheckIndex(const IntVector& v, std::int32_t index) {
    if (index < 0 || index >= v.size()) throw std::out_of_range("index");
}

void CheckInsertIndex(const IntVector& v, std::int32_t index) {
    if (index < 0 || index >= WrappingAdd(v.size(), 1)) throw std::out_of_range("index");
}

// The range check of GetRange, RemoveRange and Reverse. The end of the range
// is summed in 64 bits, so a count that would wrap is an invalid range too.
void CheckRange(const IntVector& v, std::int32_t index, std::int32_t count) {
    if (index < 0) throw std::out_of_range("index");
    if (count < 0) throw std::out_of_range("count");
    if (index >= WrappingAdd(v.size(), 1) || std::int64_t{index} + count > v.size())
        throw std::invalid_argument("invalid range");
}

}  // namespace
}  // namespace qm::interop

using namespace qm;
using namespace qm::interop;

extern "C" {

QM_API QmIntVector* CSharp_new_IntVector__SWIG_0(void) {
    return GeneralGuard([] { return ToHandle(new IntVector()); });
}

QM_API QmIntVector* CSharp_new_IntVector__SWIG_1(const QmIntVector* other) {
    if (IsNullReference(other, kConstVectorNull)) return nullptr;
    return GeneralGuard([&] { return ToHandle(new IntVector(*FromHandle(other))); });
}

QM_API QmIntVector* CSharp_new_IntVector__SWIG_2(int32_t capacity) {
    return RangeGuard([&] {
        if (capacity < 0) throw std::out_of_range("capacity");
        auto vector = std::make_unique<IntVector>();
        vector->Reserve(static_cast<std::uint32_t>(capacity));
        return ToHandle(vector.release());
    });
}

QM_API void CSharp_delete_IntVector(QmIntVector* self) { delete FromHandle(self); }

QM_API void CSharp_IntVector_Clear(QmIntVector* self) {
    if (!IsNullSelf(self)) Vec(self).Clear();
}

QM_API void CSharp_IntVector_Add(QmIntVector* self, int32_t value) {
    if (IsNullSelf(self)) return;
    GeneralGuard([&] { Vec(self).PushBack(value); });
}

QM_API int32_t CSharp_IntVector_size(const QmIntVector* self) {
    return IsNullSelf(self) ? 0 : FromHandle(self)->size();
}

QM_API int32_t CSharp_IntVector_capacity(const QmIntVector* self) {
    return IsNullSelf(self) ? 0 : FromHandle(self)->capacity();
}

QM_API void CSharp_IntVector_reserve(QmIntVector* self, uint32_t n) {
    if (IsNullSelf(self)) return;
    GeneralGuard([&] { Vec(self).Reserve(n); });
}

QM_API int32_t CSharp_IntVector_getitemcopy(QmIntVector* self, int32_t index) {
    if (IsNullSelf(self)) return 0;
    return RangeGuard([&] {
        CheckIndex(Vec(self), index);
        return Vec(self)[index];
    });
}

QM_API int32_t CSharp_IntVector_getitem(QmIntVector* self, int32_t index) {
    return CSharp_IntVector_getitemcopy(self, index);
}

QM_API void CSharp_IntVector_setitem(QmIntVector* self, int32_t index, int32_t value) {
    if (IsNullSelf(self)) return;
    RangeGuard([&] {
        CheckIndex(Vec(self), index);
        Vec(self)[index] = value;
    });
}

QM_API void CSharp_IntVector_AddRange(QmIntVector* self, const QmIntVector* values) {
    if (IsNullReference(values, kConstVectorNull) || IsNullSelf(self)) return;
    GeneralGuard([&] {
        const IntVector& source = *FromHandle(values);
        Vec(self).InsertRange(Vec(self).size(), source.data(), source.size());
    });
}

QM_API QmIntVector* CSharp_IntVector_GetRange(QmIntVector* self, int32_t index, int32_t count) {
    if (IsNullSelf(self)) return nullptr;
    return RangeOrArgumentGuard([&] {
        CheckRange(Vec(self), index, count);
        return ToHandle(new IntVector(Vec(self).data() + index, count));
    });
}

QM_API void CSharp_IntVector_Insert(QmIntVector* self, int32_t index, int32_t value) {
    if (IsNullSelf(self)) return;
    RangeGuard([&] {
        CheckInsertIndex(Vec(self), index);
        Vec(self).Insert(index, value);
    });
}

QM_API void CSharp_IntVector_InsertRange(QmIntVector* self, int32_t index, const QmIntVector* values) {
    if (IsNullReference(values, kConstVectorNull) || IsNullSelf(self)) return;
    RangeGuard([&] {
        CheckInsertIndex(Vec(self), index);
        const IntVector& source = *FromHandle(values);
        Vec(self).InsertRange(index, source.data(), source.size());
    });
}

QM_API void CSharp_IntVector_RemoveAt(QmIntVector* self, int32_t index) {
    if (IsNullSelf(self)) return;
    RangeGuard([&] {
        CheckIndex(Vec(self), index);
        Vec(self).Erase(index, 1);
    });
}

QM_API void CSharp_IntVector_RemoveRange(QmIntVector* self, int32_t index, int32_t count) {
    if (IsNullSelf(self)) return;
    RangeOrArgumentGuard([&] {
        CheckRange(Vec(self), index, count);
        Vec(self).Erase(index, count);
    });
}

QM_API QmIntVector* CSharp_IntVector_Repeat(int32_t value, int32_t count) {
    return RangeGuard([&] {
        if (count < 0) throw std::out_of_range("count");
        return ToHandle(new IntVector(IntVector::Repeated(value, count)));
    });
}

QM_API void CSharp_IntVector_Reverse__SWIG_0(QmIntVector* self) {
    if (IsNullSelf(self)) return;
    std::reverse(Vec(self).data(), Vec(self).data() + Vec(self).size());
}

QM_API void CSharp_IntVector_Reverse__SWIG_1(QmIntVector* self, int32_t index, int32_t count) {
    if (IsNullSelf(self)) return;
    RangeOrArgumentGuard([&] {
        CheckRange(Vec(self), index, count);
        std::reverse(Vec(self).data() + index, Vec(self).data() + index + count);
    });
}

QM_API void CSharp_IntVector_SetRange(QmIntVector* self, int32_t index, const QmIntVector* values) {
    if (IsNullReference(values, kConstVectorNull) || IsNullSelf(self)) return;
    RangeGuard([&] {
        IntVector& target = Vec(self);
        const IntVector& source = *FromHandle(values);
        if (index < 0) throw std::out_of_range("index");
        if (static_cast<std::uint32_t>(index) + static_cast<std::uint32_t>(source.size()) >
            static_cast<std::uint32_t>(target.size()))
            throw std::out_of_range("index");
        // values may be this very vector, overlapping the target.
        MoveInts(target.data() + index, source.data(), static_cast<std::size_t>(source.size()));
    });
}

QM_API int32_t CSharp_IntVector_IndexOf(QmIntVector* self, int32_t value) {
    if (IsNullSelf(self)) return -1;
    const IntVector& v = Vec(self);
    for (std::int32_t i = 0; i < v.size(); ++i)
        if (v[i] == value) return i;
    return -1;
}

QM_API int32_t CSharp_IntVector_LastIndexOf(QmIntVector* self, int32_t value) {
    if (IsNullSelf(self)) return -1;
    const IntVector& v = Vec(self);
    for (std::int32_t i = v.size() - 1; i >= 0; --i)
        if (v[i] == value) return i;
    return -1;
}

QM_API int32_t CSharp_IntVector_Contains(QmIntVector* self, int32_t value) {
    if (IsNullSelf(self)) return 0;
    return CSharp_IntVector_IndexOf(self, value) >= 0 ? 1 : 0;
}

QM_API int32_t CSharp_IntVector_Remove(QmIntVector* self, int32_t value) {
    if (IsNullSelf(self)) return 0;
    const std::int32_t at = CSharp_IntVector_IndexOf(self, value);
    if (at < 0) return 0;
    Vec(self).Erase(at, 1);
    return 1;
}

}  // extern "C"
