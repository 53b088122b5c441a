#!/usr/bin/env bash
# Installs what building and testing QuillmapCore needs on Debian 12, and
# nothing when it is all there already.
set -euo pipefail

packages=(cmake ninja-build g++ make pkg-config binutils libgtest-dev libgmock-dev libbenchmark-dev
  swig mono-mcs mono-runtime)
missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed' || missing+=("$p")
done
if ((${#missing[@]})); then
  echo "Installing: ${missing[*]}"
  sudo=""
  [ "$(id -u)" -eq 0 ] || sudo="sudo"
  $sudo apt-get update -qq
  DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi
