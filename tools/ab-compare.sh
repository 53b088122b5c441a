#!/bin/sh
# Times this working tree's library against another commit's on one whole
# run, in one process, taking turns (bench/ab/AbMain.cpp):
#
#   tools/ab-compare.sh <commit> <Double|Single|Int32|Int16|Byte>
#                       <Linear|Category|Uneven|Ring|InCache> <mode> [NaN] [rounds]
#
# A is the working tree, B the commit. The commit is checked out in a git
# worktree under /tmp and its library built there with its namespace
# renamed; both builds are kept, so a second comparison builds only what
# changed. Needs the packages of tools/install-packages.sh.
set -eu
[ $# -ge 4 ] || { sed -n '2,11p' "$0"; exit 2; }
root=$(cd "$(dirname "$0")/.." && pwd)
commit=$(git -C "$root" rev-parse --short "$1")
shift
variant=/tmp/quillmap-ab-$commit
[ -d "$variant" ] || git -C "$root" worktree add --detach "$variant" "$commit" >/dev/null
cmake -S "$variant" -B "$variant/build-ab" -G Ninja -DCMAKE_BUILD_TYPE=Release -DCMAKE_CXX_FLAGS=-Dqm=qmv \
      -DQM_BUILD_TESTS=OFF -DQM_BUILD_BENCHMARKS=OFF -DQM_BUILD_EXAMPLES=OFF >/dev/null
ninja -C "$variant/build-ab" quillmap_internal >/dev/null
cmake -S "$root" -B "$root/build/ab" -G Ninja -DCMAKE_BUILD_TYPE=Release -DQM_BUILD_BENCHMARKS=ON \
      -DQM_BUILD_TESTS=OFF -DQM_BUILD_EXAMPLES=OFF -DQM_AB_VARIANT_DIR="$variant" >/dev/null
ninja -C "$root/build/ab" quillmap_ab >/dev/null
echo "B is $commit ($variant; remove it with: git worktree remove --force $variant)"
exec "$root/build/ab/bench/quillmap_ab" "$@"
