#include "interop/IntVector.h"

#include <algorithm>
#include <new>
#include <stdexcept>

namespace qm {
namespace {

[[noreturn]] void ThrowTooLong() { throw std::length_error("vector<T> too long"); }

std::int32_t* Allocate(std::uint32_t count) {
    if (count == 0) return nullptr;
    return static_cast<std::int32_t*>(::operator new(std::size_t{count} * sizeof(std::int32_t)));
}

}  // namespace

IntVector::IntVector(const IntVector& other) : IntVector(other.data(), other.size()) {}

IntVector::IntVector(const std::int32_t* first, std::int32_t count) {
    begin_ = Allocate(static_cast<std::uint32_t>(count));
    end_ = capacityEnd_ = begin_ + count;
    if (count > 0) MoveInts(begin_, first, static_cast<std::size_t>(count));
}

IntVector::~IntVector() { ::operator delete(begin_); }

IntVector IntVector::Repeated(std::int32_t value, std::int32_t count) {
    IntVector result;
    result.Reserve(static_cast<std::uint32_t>(count));
    std::fill_n(result.begin_, count, value);
    result.end_ = result.begin_ + count;
    return result;
}

std::uint32_t IntVector::GrownCapacity(std::uint32_t needed) const {
    const std::uint32_t cap = static_cast<std::uint32_t>(capacity());
    if (cap > kMaxSize - cap / 2) return needed;
    return std::max(cap + cap / 2, needed);
}

void IntVector::Reallocate(std::uint32_t newCapacity) {
    std::int32_t* fresh = Allocate(newCapacity);
    const std::int32_t count = size();
    if (count > 0) MoveInts(fresh, begin_, static_cast<std::size_t>(count));
    ::operator delete(begin_);
    begin_ = fresh;
    end_ = fresh + count;
    capacityEnd_ = fresh + newCapacity;
}

void IntVector::Insert(std::int32_t index, std::int32_t value) {
    if (end_ == capacityEnd_) {
        const auto count = static_cast<std::uint32_t>(size());
        if (count == kMaxSize) ThrowTooLong();
        Reallocate(GrownCapacity(count + 1));
    }
    std::int32_t* at = begin_ + index;
    MoveInts(at + 1, at, static_cast<std::size_t>(end_ - at));
    *at = value;
    ++end_;
}

void IntVector::InsertRange(std::int32_t index, const std::int32_t* values, std::int32_t count) {
    if (count <= 0) return;
    const auto n = static_cast<std::uint32_t>(count);
    const auto oldSize = static_cast<std::uint32_t>(size());
    if (n <= static_cast<std::uint32_t>(capacityEnd_ - end_)) {
        std::int32_t* at = begin_ + index;
        MoveInts(at + n, at, static_cast<std::size_t>(end_ - at));
        MoveInts(at, values, std::size_t{n});
        end_ += n;
        return;
    }
    if (n > kMaxSize - oldSize) ThrowTooLong();
    const std::uint32_t newCapacity = GrownCapacity(oldSize + n);
    // Build the new block before freeing the old one, so that values may
    // point into this vector.
    std::int32_t* fresh = Allocate(newCapacity);
    const auto head = static_cast<std::size_t>(index);
    MoveInts(fresh, begin_, head);
    MoveInts(fresh + head, values, std::size_t{n});
    MoveInts(fresh + head + n, begin_ + head, oldSize - head);
    ::operator delete(begin_);
    begin_ = fresh;
    end_ = fresh + oldSize + n;
    capacityEnd_ = fresh + newCapacity;
}

void IntVector::Erase(std::int32_t index, std::int32_t count) {
    std::int32_t* at = begin_ + index;
    MoveInts(at, at + count, static_cast<std::size_t>(end_ - (at + count)));
    end_ -= count;
}

void IntVector::Reserve(std::uint32_t n) {
    if (n <= static_cast<std::uint32_t>(capacity())) return;
    if (n > kMaxSize) ThrowTooLong();
    Reallocate(n);
}

void IntVector::ReserveForAppend(std::int32_t count) {
    const auto current = static_cast<std::uint32_t>(size());
    const auto extra = static_cast<std::uint32_t>(count);
    const std::uint32_t wanted = extra > UINT32_MAX - current ? UINT32_MAX : current + extra;
    if (wanted <= static_cast<std::uint32_t>(capacity())) return;
    if (wanted > kMaxSize) ThrowTooLong();
    Reallocate(wanted);
}

void IntVector::Resize(std::uint32_t n) {
    const auto current = static_cast<std::uint32_t>(size());
    if (n > static_cast<std::uint32_t>(capacity())) {
        if (n > kMaxSize) ThrowTooLong();
        Reallocate(GrownCapacity(n));
    }
    if (n > current) std::fill(end_, begin_ + n, 0);
    end_ = begin_ + n;
}

}  // namespace qm
