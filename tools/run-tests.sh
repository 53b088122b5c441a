#!/usr/bin/env bash
# Builds everything (library, tests, demo, benchmarks, the .NET binding and
# its NuGet package) with warnings as errors and runs the whole test suite,
# the binding's C# tests under mono included. With --sanitize the build uses
# AddressSanitizer and UndefinedBehaviorSanitizer, in its own folder; mono
# cannot load an instrumented library, so the C# tests are left out there,
# and so are the benchmarks, which no test runs. With --cross-runtimes the
# NuGet package also carries the Windows x64 and Linux arm64 libraries that
# tools/run-cross.sh left in build/cross, and its check requires all three.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
"$root/tools/setup-debian.sh"
build="$root/build/test"
options=(-DCMAKE_BUILD_TYPE=Release -DQM_BUILD_CSHARP=ON)
extra_runtimes=""
for arg in "$@"; do
  case "$arg" in
    --sanitize)
      build="$root/build/sanitize"
      options=(-DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS_DEBUG="-O1 -g" -DCMAKE_C_FLAGS_DEBUG="-O1 -g" -DQM_SANITIZE=ON -DQM_BUILD_CSHARP=ON -DQM_BUILD_BENCHMARKS=OFF)
      ;;
    --cross-runtimes)
      for rid_file in win-x64/QuillmapCore.dll linux-arm64/libQuillmapCore.so; do
        if [ ! -f "$root/build/cross/$rid_file" ]; then
          echo "build/cross/$rid_file is missing: run tools/run-cross.sh first" >&2
          exit 1
        fi
        extra_runtimes+="${extra_runtimes:+;}${rid_file%%/*}=$root/build/cross/$rid_file"
      done
      ;;
    *)
      echo "usage: $0 [--sanitize] [--cross-runtimes]" >&2
      exit 2
      ;;
  esac
done
# Always given, so that a build folder never keeps the cross libraries of an
# earlier run.
options+=(-DQM_NUGET_EXTRA_RUNTIMES="$extra_runtimes")
cmake -S "$root" -B "$build" -G Ninja -DQM_WARNINGS_AS_ERRORS=ON "${options[@]}" >/dev/null
cmake --build "$build"
ctest --test-dir "$build" --output-on-failure -j "$(nproc)"
