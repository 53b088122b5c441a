#!/usr/bin/env bash
# Builds everything (library, tests, demo, benchmarks, the .NET binding and
# its NuGet package) with warnings as errors and runs the whole test suite,
# the binding's C# tests under mono included. With --sanitize the build uses
# AddressSanitizer and UndefinedBehaviorSanitizer, in its own folder; mono
# cannot load an instrumented library, so the C# tests are left out there,
# and so are the benchmarks, which no test runs.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
"$root/tools/setup-debian.sh"
build="$root/build/test"
options=(-DCMAKE_BUILD_TYPE=Release -DQM_BUILD_CSHARP=ON)
if [ "${1:-}" = "--sanitize" ]; then
  build="$root/build/sanitize"
  options=(-DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS_DEBUG="-O1 -g" -DCMAKE_C_FLAGS_DEBUG="-O1 -g" -DQM_SANITIZE=ON -DQM_BUILD_CSHARP=ON -DQM_BUILD_BENCHMARKS=OFF)
fi
cmake -S "$root" -B "$build" -G Ninja -DQM_WARNINGS_AS_ERRORS=ON "${options[@]}" >/dev/null
cmake --build "$build"
ctest --test-dir "$build" --output-on-failure -j "$(nproc)"
