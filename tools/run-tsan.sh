#!/usr/bin/env bash
# Builds the library and the interface tests with clang 14 under
# ThreadSanitizer, in their own folder, and runs the test with overlapping
# runs (SameResultsEverywhereTest.cpp): eight threads on shared engines, with
# any data race failing the run.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
"$root/tools/install-packages.sh" clang-14 libclang-rt-14-dev cmake ninja-build libgtest-dev
build="$root/build/tsan"
launcher=()
command -v ccache >/dev/null && launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache -DCMAKE_C_COMPILER_LAUNCHER=ccache)
cmake -S "$root" -B "$build" -G Ninja -DCMAKE_C_COMPILER=clang-14 -DCMAKE_CXX_COMPILER=clang++-14 \
  -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS_DEBUG="-O1 -g" -DCMAKE_C_FLAGS_DEBUG="-O1 -g" \
  -DQM_TSAN=ON -DQM_WARNINGS_AS_ERRORS=ON -DQM_BUILD_BENCHMARKS=OFF -DQM_BUILD_EXAMPLES=OFF \
  "${launcher[@]}" >/dev/null
cmake --build "$build" --target quillmap_concurrency_tests
TSAN_OPTIONS="halt_on_error=1 second_deadlock_stack=1" \
  "$build/tests/quillmap_concurrency_tests"
