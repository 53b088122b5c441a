#pragma once
// An array that ends right where a page the process may not touch begins, so
// a read or write one element past its end faults at once instead of
// passing unseen. Tests of bad input use it for the caller's arrays.

#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <new>
#include <vector>

namespace qmtest {

template <class T>
class GuardedArray {
public:
    GuardedArray(std::size_t count, T fill) : count_(count) {
        const std::size_t page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
        const std::size_t used = (count * sizeof(T) + page - 1) / page * page;
        length_ = used + page;
        void* block = mmap(nullptr, length_, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (block == MAP_FAILED) throw std::bad_alloc();
        base_ = static_cast<std::byte*>(block);
        mprotect(base_ + used, page, PROT_NONE);
        data_ = reinterpret_cast<T*>(base_ + used - count * sizeof(T));
        for (std::size_t i = 0; i < count; ++i) data_[i] = fill;
    }
    GuardedArray(const GuardedArray&) = delete;
    GuardedArray& operator=(const GuardedArray&) = delete;
    ~GuardedArray() { munmap(base_, length_); }

    T* data() { return data_; }
    T& operator[](std::size_t i) { return data_[i]; }
    std::vector<T> Contents() const { return std::vector<T>(data_, data_ + count_); }

private:
    std::size_t count_;
    std::size_t length_ = 0;
    std::byte* base_ = nullptr;
    T* data_ = nullptr;
};

}  // namespace qmtest
