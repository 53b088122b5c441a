#!/usr/bin/env bash
# Builds the libFuzzer target of the exports with clang 14 under
# AddressSanitizer and UndefinedBehaviorSanitizer, then fuzzes for a bounded
# time (QM_FUZZ_SECONDS, 120 by default) from the seed corpus in fuzz/corpus.
# New inputs go to build/fuzz/corpus; a crash, hang or leak fails the script
# and leaves its reproducer in build/fuzz/.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
"$root/tools/install-packages.sh" clang-14 libclang-rt-14-dev cmake ninja-build
build="$root/build/fuzz"
launcher=()
command -v ccache >/dev/null && launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache -DCMAKE_C_COMPILER_LAUNCHER=ccache)
cmake -S "$root" -B "$build" -G Ninja -DCMAKE_C_COMPILER=clang-14 -DCMAKE_CXX_COMPILER=clang++-14 \
  -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS_DEBUG="-O1 -g" -DCMAKE_C_FLAGS_DEBUG="-O1 -g" \
  -DQM_SANITIZE=ON -DQM_FUZZ=ON -DQM_WARNINGS_AS_ERRORS=ON \
  -DQM_BUILD_TESTS=OFF -DQM_BUILD_BENCHMARKS=OFF -DQM_BUILD_EXAMPLES=OFF "${launcher[@]}" >/dev/null
cmake --build "$build" --target quillmap_fuzzer
mkdir -p "$build/corpus"
cd "$build"
./fuzz/quillmap_fuzzer -max_total_time="${QM_FUZZ_SECONDS:-120}" -timeout=10 -rss_limit_mb=2048 \
  -max_len=4096 -print_final_stats=1 "$build/corpus" "$root/fuzz/corpus"
