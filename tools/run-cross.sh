#!/usr/bin/env bash
# Cross-builds the library for Windows x64 (mingw-w64) and Linux arm64,
# checks what each binary exports and imports, and runs the portable test
# subset under Wine and qemu-user. Leaves the two libraries at stable paths
# for the packaging step (tools/run-tests.sh --cross-runtimes):
#   build/cross/win-x64/QuillmapCore.dll
#   build/cross/linux-arm64/libQuillmapCore.so
# Gentle on a shared machine: niced, at most two jobs. QM_CROSS_JOBS changes
# the job count.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
cross="$root/build/cross"
jobs="${QM_CROSS_JOBS:-2}"
nice=(nice -n 15)
started=$SECONDS

# --- what the cross builds need -------------------------------------------
"$root/tools/install-packages.sh" cmake ninja-build g++ binutils g++-mingw-w64-x86-64-posix wine64 \
  qemu-user g++-aarch64-linux-gnu googletest
# Debian keeps the 64-bit Wine loader out of PATH unless the wine package
# is installed too.
wine64="$(command -v wine64 || echo /usr/lib/wine/wine64)"
launcher=()
if command -v ccache >/dev/null; then
  launcher=(-DCMAKE_C_COMPILER_LAUNCHER=ccache -DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
  export CCACHE_BASEDIR="${CCACHE_BASEDIR:-$root}"
fi

# --- build ---------------------------------------------------------------
# Builds the library and the two portable test programs for one target into
# build/cross/<rid>.build, with every binary in its bin folder (a DLL is
# found next to the program that loads it).
build() {
  local rid="$1" toolchain="$2" dir="$cross/$1.build" from=$SECONDS
  cmake -S "$root" -B "$dir" -G Ninja --toolchain "$root/cmake/toolchains/$toolchain" \
    -DCMAKE_BUILD_TYPE=Release -DQM_WARNINGS_AS_ERRORS=ON \
    -DQM_BUILD_BENCHMARKS=OFF -DQM_BUILD_EXAMPLES=OFF -DQM_BUILD_CSHARP=OFF \
    -DCMAKE_RUNTIME_OUTPUT_DIRECTORY="$dir/bin" -DCMAKE_LIBRARY_OUTPUT_DIRECTORY="$dir/bin" \
    "${launcher[@]}" >/dev/null
  "${nice[@]}" cmake --build "$dir" -j "$jobs" --target QuillmapCore quillmap_portable_tests quillmap_portable_internal_tests
  echo "$rid: built in $((SECONDS - from)) s"
}

# --- exports and imports ---------------------------------------------------
# The functions the C header declares, one per line, sorted.
declared_functions() {
  cc -E -P -I"$root/include" "$root/include/quillmap/QuillmapCore.h" |
    grep -oE '(CSharp_[A-Za-z0-9_]+|SWIGRegister[A-Za-z]+_QuillmapCore)[[:space:]]*\(' |
    sed -E 's/[[:space:]]*\($//' | sort -u
}

# Fails unless the exported names (stdin) are exactly the 861 declared ones.
expect_exports() {
  local what="$1" exported declared
  exported="$(sort -u)"
  declared="$(declared_functions)"
  if [ "$(wc -l <<<"$declared")" -ne 861 ]; then
    echo "the header declares $(wc -l <<<"$declared") functions, expected 861" >&2
    return 1
  fi
  if [ "$exported" != "$declared" ]; then
    echo "$what: exports differ from the header (< missing, > extra):" >&2
    diff <(echo "$declared") <(echo "$exported") | grep '^[<>]' | head -20 >&2
    return 1
  fi
  echo "$what: $(wc -l <<<"$exported") exports, all declared in the header"
}

# The names in a DLL's export table: the rows of "[Ordinal/Name Pointer] Table".
dll_exports() {
  x86_64-w64-mingw32-objdump -p "$1" |
    sed -n '/^\[Ordinal\/Name Pointer\] Table/,/^$/p' | sed -nE 's/^[[:space:]]+\[ *[0-9]+\] ([A-Za-z_][A-Za-z0-9_]*)$/\1/p'
}

# A Windows machine has no MinGW runtime DLLs: the DLL may import only what
# every Windows has.
expect_system_imports() {
  local imports unexpected
  imports="$(x86_64-w64-mingw32-objdump -p "$1" | sed -n 's/^[[:space:]]*DLL Name: //p' | sort -u)"
  echo "QuillmapCore.dll imports: $(echo $imports)"
  unexpected="$(grep -viE '^(kernel32|msvcrt|ntdll|advapi32|user32|api-ms-win-[a-z0-9-]+)\.dll$' <<<"$imports" || true)"
  if [ -n "$unexpected" ]; then
    echo "QuillmapCore.dll depends on DLLs a Windows machine may lack: $(echo $unexpected)" >&2
    return 1
  fi
}

# The Windows x64 stack is 16-byte aligned only: an aligned move of a 32- or
# 64-byte vector to or from memory may fault there (see src/CMakeLists.txt).
expect_no_aligned_wide_moves() {
  local moves
  moves="$(x86_64-w64-mingw32-objdump -d --no-show-raw-insn "$1" |
    grep -E 'vmov(aps|apd|dqa|dqa32|dqa64)[[:space:]].*%[yz]mm' | grep -F '(' || true)"
  if [ -n "$moves" ]; then
    echo "QuillmapCore.dll moves wide vectors with aligned moves:" >&2
    head -5 <<<"$moves" >&2
    return 1
  fi
  echo "QuillmapCore.dll: no aligned 32- or 64-byte vector moves to or from memory"
}

# The library's architecture, from its ELF header.
expect_aarch64() {
  local machine
  machine="$(LC_ALL=C readelf -h "$1" | sed -n 's/^[[:space:]]*Machine:[[:space:]]*//p')"
  echo "libQuillmapCore.so: $machine"
  [ "$machine" = "AArch64" ] || { echo "libQuillmapCore.so is not an arm64 library" >&2; return 1; }
}

# --- run -------------------------------------------------------------------
win="$cross/win-x64.build"
arm="$cross/linux-arm64.build"
rm -rf "$cross/win-x64" "$cross/linux-arm64"

build win-x64 mingw-w64-x86_64.cmake
dll="$win/bin/QuillmapCore.dll"
dll_exports "$dll" | expect_exports QuillmapCore.dll
expect_system_imports "$dll"
expect_no_aligned_wide_moves "$dll"

build linux-arm64 aarch64-linux-gnu.cmake
so="$(readlink -f "$arm/bin/libQuillmapCore.so")"
aarch64-linux-gnu-nm -D --defined-only "$so" | awk '{ sub(/@.*/, "", $3); print $3 }' | grep -v '^$' |
  expect_exports libQuillmapCore.so
expect_aarch64 "$so"

# The tests that make the library's allocations fail (*WithoutMemory*)
# replace operator new in the test program; a DLL keeps the one of its own
# runtime, so on Windows they cannot reach the library and are left out. Wine's
# prefix lives in the build folder and is made on the first run.
export WINEPREFIX="$cross/wine" WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml="
echo "== Windows x64 under Wine"
from=$SECONDS
# A new prefix is made by wineboot in the background of the first program,
# which on a busy machine can start before kernel32 is in place; so the
# prefix is made first and waited for.
if [ ! -f "$WINEPREFIX/system.reg" ]; then
  "$wine64" wineboot --init
  "$(dirname "$(readlink -f "$wine64")")/wineserver" -w
fi
# Wine answers 0 even for a program that died (its debugger takes over), so
# a run counts only when Google Test's summary says that every test passed.
under_wine() {
  local log="$cross/wine-run.log"
  "${nice[@]}" "$wine64" "$@" 2>&1 | tee "$log"
  if ! grep -q '^\[  PASSED  \]' "$log" || grep -q -E '^\[  FAILED  \]|Unhandled' "$log"; then
    echo "$1 failed under Wine" >&2
    exit 1
  fi
}
under_wine "$win/bin/quillmap_portable_tests.exe" --gtest_brief=1 --gtest_filter='-*WithoutMemory*'
under_wine "$win/bin/quillmap_portable_internal_tests.exe" --gtest_brief=1
echo "Wine runs took $((SECONDS - from)) s"
echo "== Linux arm64 under qemu-aarch64"
from=$SECONDS
for t in quillmap_portable_tests quillmap_portable_internal_tests; do
  "${nice[@]}" qemu-aarch64 -L /usr/aarch64-linux-gnu -E LD_LIBRARY_PATH="$arm/bin" "$arm/bin/$t" --gtest_brief=1
done
echo "qemu runs took $((SECONDS - from)) s"

mkdir -p "$cross/win-x64" "$cross/linux-arm64"
cp "$dll" "$cross/win-x64/QuillmapCore.dll"
cp "$so" "$cross/linux-arm64/libQuillmapCore.so"
echo "Cross builds and emulated tests took $((SECONDS - started)) s"
echo "Artifacts:"
echo "  win-x64     $cross/win-x64/QuillmapCore.dll"
echo "  linux-arm64 $cross/linux-arm64/libQuillmapCore.so"
