#!/usr/bin/env bash
# Installs what building and testing QuillmapCore needs on Debian 12, and
# nothing when it is all there already.
set -euo pipefail
"$(dirname "$0")/install-packages.sh" cmake ninja-build g++ make pkg-config binutils \
  libgtest-dev libgmock-dev libbenchmark-dev swig mono-mcs mono-runtime
