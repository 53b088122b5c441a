#pragma once
// The library's own growable vector of int32 indices, the one container that
// crosses the exported interface. Its growth rule (by half, capped at
// 0x3FFFFFFF elements) and its exact reservation are part of the contract
// with the managed side, which is why it is not a std::vector.

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace qm {

// Copies `count` ints, overlapping or not. An empty vector has no storage, and
// the C library does not accept a null pointer even for zero bytes.
inline void MoveInts(std::int32_t* to, const std::int32_t* from, std::size_t count) {
    if (count != 0) std::memmove(to, from, count * sizeof(std::int32_t));
}

class IntVector {
public:
    static constexpr std::uint32_t kMaxSize = 0x3FFFFFFF;

    IntVector() = default;
    IntVector(const IntVector& other);  // capacity equals the other's size
    IntVector(const std::int32_t* first, std::int32_t count);  // capacity equals count
    IntVector& operator=(const IntVector&) = delete;
    ~IntVector();

    static IntVector Repeated(std::int32_t value, std::int32_t count);

    std::int32_t size() const { return static_cast<std::int32_t>(end_ - begin_); }
    std::int32_t capacity() const { return static_cast<std::int32_t>(capacityEnd_ - begin_); }
    std::int32_t* data() { return begin_; }
    const std::int32_t* data() const { return begin_; }
    std::int32_t& operator[](std::int32_t index) { return begin_[index]; }
    std::int32_t operator[](std::int32_t index) const { return begin_[index]; }

    // Appends with growth by half; the value is taken by copy, so an element
    // of this vector may be appended. Within the capacity it is a store: the
    // NaN-aware walks append every index they keep this way.
    void PushBack(std::int32_t value) {
        if (end_ != capacityEnd_)
            *end_++ = value;
        else
            Insert(size(), value);
    }
    // Inserts before `index` (0 <= index <= size, unchecked).
    void Insert(std::int32_t index, std::int32_t value);
    void InsertRange(std::int32_t index, const std::int32_t* values, std::int32_t count);
    void Erase(std::int32_t index, std::int32_t count);
    void Clear() { end_ = begin_; }

    // Ensures a capacity of exactly n if n is above the present one.
    void Reserve(std::uint32_t n);
    // Makes room for `count` more elements behind the size, exactly. A
    // negative count reads as a huge unsigned one and fails.
    void ReserveForAppend(std::int32_t count);
    // Sets the size to n; new elements are 0; grows by half, never less than n.
    void Resize(std::uint32_t n);

private:
    void Reallocate(std::uint32_t newCapacity);
    std::uint32_t GrownCapacity(std::uint32_t needed) const;

    std::int32_t* begin_ = nullptr;
    std::int32_t* end_ = nullptr;
    std::int32_t* capacityEnd_ = nullptr;
};

}  // namespace qm
