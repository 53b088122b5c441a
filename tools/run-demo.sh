#!/usr/bin/env bash
# Builds the library and the demo (Release) and runs the demo. Arguments go
# to the demo: a CSV file (X,Y; an empty or NaN Y is a gap) to resample your
# own data, --out PATH for the SVG picture, --points N for the size of the
# generated series. Try examples/data/timestamps.csv and
# examples/data/decimal-commas.csv.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
"$root/tools/setup-debian.sh"
build="$root/build/release"
cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release \
  -DQM_BUILD_TESTS=OFF -DQM_BUILD_BENCHMARKS=OFF -DQM_BUILD_EXAMPLES=ON >/dev/null
cmake --build "$build" --target quillmap_demo
"$build/examples/quillmap_demo" "$@"
