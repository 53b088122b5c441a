#!/usr/bin/env bash
# Cross-builds the library for Windows x64 (mingw-w64) and Linux arm64,
# checks what each binary exports and imports, and runs the portable test
# subset under Wine and qemu-user. Prints the two artifacts at the end, at
# stable paths under build/cross/ for the packaging step:
#   build/cross/win-x64/QuillmapCore.dll
#   build/cross/linux-arm64/libQuillmapCore.so
# Gentle on a shared machine: niced, at most two jobs. QM_CROSS_JOBS changes
# the job count.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
cross="$root/build/cross"
jobs="${QM_CROSS_JOBS:-2}"
nice=(nice -n 15)

# --- what the cross builds need -------------------------------------------
"$root/tools/install-packages.sh" cmake ninja-build g++-mingw-w64-x86-64-posix wine64 qemu-user \
  g++-aarch64-linux-gnu googletest
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
  local rid="$1" toolchain="$2" dir="$cross/$1.build"
  cmake -S "$root" -B "$dir" -G Ninja --toolchain "$root/cmake/toolchains/$toolchain" \
    -DCMAKE_BUILD_TYPE=Release -DQM_WARNINGS_AS_ERRORS=ON \
    -DQM_BUILD_BENCHMARKS=OFF -DQM_BUILD_EXAMPLES=OFF \
    -DCMAKE_RUNTIME_OUTPUT_DIRECTORY="$dir/bin" -DCMAKE_LIBRARY_OUTPUT_DIRECTORY="$dir/bin" \
    "${launcher[@]}" >/dev/null
  "${nice[@]}" cmake --build "$dir" -j "$jobs" --target QuillmapCore quillmap_portable_tests quillmap_portable_internal_tests
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
    sed -n '/^\[Ordinal\/Name Pointer\] Table/,/^$/p' | grep -oE '\] [A-Za-z_][A-Za-z0-9_]*$' | cut -c3-
}

# A Windows machine has no MinGW runtime DLLs: the DLL may import only
# system DLLs.
expect_no_mingw_runtime() {
  local imports
  imports="$(x86_64-w64-mingw32-objdump -p "$1" | sed -n 's/^[[:space:]]*DLL Name: //p' | sort -u)"
  echo "QuillmapCore.dll imports: $(echo $imports)"
  if grep -qiE 'libstdc\+\+|libgcc|libwinpthread|libssp|libatomic|libgomp' <<<"$imports"; then
    echo "QuillmapCore.dll depends on a MinGW runtime DLL" >&2
    return 1
  fi
}

# --- run -------------------------------------------------------------------
win="$cross/win-x64.build"
arm="$cross/linux-arm64.build"
started=$SECONDS

build win-x64 mingw-w64-x86_64.cmake
dll_exports "$win/bin/QuillmapCore.dll" | expect_exports QuillmapCore.dll
expect_no_mingw_runtime "$win/bin/QuillmapCore.dll"

build linux-arm64 aarch64-linux-gnu.cmake
so="$(readlink -f "$arm/bin/libQuillmapCore.so")"
aarch64-linux-gnu-nm -D --defined-only "$so" | awk '{ sub(/@.*/, "", $3); print $3 }' | grep -v '^$' |
  expect_exports libQuillmapCore.so

# Allocation-failure tests replace operator new in the test program; a DLL
# keeps its own, so on Windows they cannot reach the library.
export WINEPREFIX="$cross/wine" WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml="
echo "== Windows x64 under Wine"
"${nice[@]}" "$wine64" "$win/bin/quillmap_portable_tests.exe" --gtest_brief=1 \
  --gtest_filter='-*AllocationFailure*:*FailedAllocations*'
"${nice[@]}" "$wine64" "$win/bin/quillmap_portable_internal_tests.exe" --gtest_brief=1
echo "== Linux arm64 under qemu-aarch64"
for t in quillmap_portable_tests quillmap_portable_internal_tests; do
  "${nice[@]}" qemu-aarch64 -L /usr/aarch64-linux-gnu -E LD_LIBRARY_PATH="$arm/bin" "$arm/bin/$t" --gtest_brief=1
done

mkdir -p "$cross/win-x64" "$cross/linux-arm64"
cp "$win/bin/QuillmapCore.dll" "$cross/win-x64/QuillmapCore.dll"
cp "$so" "$cross/linux-arm64/libQuillmapCore.so"
echo "Cross builds and emulated tests took $((SECONDS - started)) s"
echo "Artifacts:"
echo "  win-x64     $cross/win-x64/QuillmapCore.dll"
echo "  linux-arm64 $cross/linux-arm64/libQuillmapCore.so"
