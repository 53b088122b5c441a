# Linux arm64 from Linux x86-64 (Debian: g++-aarch64-linux-gnu). The test
# programs run under qemu-user with the target's libraries as sysroot.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR aarch64)

set(QM_CROSS_TRIPLET aarch64-linux-gnu)
set(CMAKE_C_COMPILER ${QM_CROSS_TRIPLET}-gcc)
set(CMAKE_CXX_COMPILER ${QM_CROSS_TRIPLET}-g++)

set(CMAKE_FIND_ROOT_PATH /usr/${QM_CROSS_TRIPLET})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

set(CMAKE_CROSSCOMPILING_EMULATOR qemu-aarch64 -L /usr/${QM_CROSS_TRIPLET})

# GCC notes wherever it passes a std::pair of floats the way GCC 10.1 began
# to; no C++ type crosses the library's boundary, so the note tells nothing.
string(APPEND CMAKE_CXX_FLAGS_INIT " -Wno-psabi")
