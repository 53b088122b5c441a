#pragma once
// The few POSIX memory calls that the tests use to put an unreadable page
// right behind an array, mapped onto VirtualAlloc and VirtualProtect for the
// Windows test programs: anonymous private mappings only, and munmap
// releases a whole mapping from its start. Only Windows builds see this
// folder.

#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#include <windows.h>

#include <cstddef>

#define PROT_NONE 0
#define PROT_READ 1
#define PROT_WRITE 2
#define MAP_PRIVATE 0x02
#define MAP_ANONYMOUS 0x20
#define MAP_FAILED (reinterpret_cast<void*>(-1))

#ifndef _SC_PAGESIZE
#define _SC_PAGESIZE 30
inline long sysconf(int) {
    SYSTEM_INFO info;
    GetSystemInfo(&info);
    return static_cast<long>(info.dwPageSize);
}
#endif

inline DWORD QmPageProtection(int prot) { return prot & PROT_WRITE ? PAGE_READWRITE : prot & PROT_READ ? PAGE_READONLY : PAGE_NOACCESS; }

inline void* mmap(void*, std::size_t length, int prot, int, int, long) {
    void* block = VirtualAlloc(nullptr, length, MEM_RESERVE | MEM_COMMIT, QmPageProtection(prot));
    return block != nullptr ? block : MAP_FAILED;
}

inline int mprotect(void* address, std::size_t length, int prot) {
    DWORD old = 0;
    return VirtualProtect(address, length, QmPageProtection(prot), &old) ? 0 : -1;
}

inline int munmap(void* address, std::size_t) { return VirtualFree(address, 0, MEM_RELEASE) ? 0 : -1; }
