#pragma once
// An array that ends right where a page the process may not touch begins, so
// that a read or write one element past its end faults at once instead of
// passing unseen. Tests of bad input use it for the caller's arrays.

#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <new>
#include <vector>

namespace qmtest {

template <class T>
class GuardedArray {
public:
    GuardedArray(std::size_t count, T fill) : count_(count) {
        const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE)), used = (count * sizeof(T) + page - 1) / page * page;
        length_ = used + page;
        base_ = static_cast<std::byte*>(mmap(nullptr, length_, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0));
        if (base_ == MAP_FAILED || mprotect(base_ + used, page, PROT_NONE) != 0) throw std::bad_alloc();
        data_ = reinterpret_cast<T*>(base_ + used) - count;
        for (std::size_t i = 0; i < count; ++i) data_[i] = fill;
    }
    GuardedArray(const GuardedArray&) = delete;
    ~GuardedArray() { munmap(base_, length_); }

    T* data() { return data_; }
    T& operator[](std::size_t i) { return data_[i]; }
    std::vector<T> Contents() const { return std::vector<T>(data_, data_ + count_); }

private:
    std::size_t count_, length_;
    std::byte* base_;
    T* data_;
};

}  // namespace qmtest
