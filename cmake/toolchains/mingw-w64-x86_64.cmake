# Windows x64 from Linux with mingw-w64 (Debian: g++-mingw-w64-x86-64-posix).
# The test programs run under Wine.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR AMD64)

set(QM_MINGW_TRIPLET x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${QM_MINGW_TRIPLET}-gcc-posix)
set(CMAKE_CXX_COMPILER ${QM_MINGW_TRIPLET}-g++-posix)
set(CMAKE_RC_COMPILER ${QM_MINGW_TRIPLET}-windres)

set(CMAKE_FIND_ROOT_PATH /usr/${QM_MINGW_TRIPLET})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# Debian keeps the 64-bit loader out of PATH unless the wine package is in.
find_program(QM_WINE64 NAMES wine64 PATHS /usr/lib/wine NO_CACHE)
if(QM_WINE64)
  set(CMAKE_CROSSCOMPILING_EMULATOR ${QM_WINE64})
endif()
