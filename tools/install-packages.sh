#!/usr/bin/env bash
# Installs the Debian packages named on the command line that are missing,
# and nothing when they are all there already. apt-get's and dpkg's
# progress (hundreds of lines on a fresh machine) goes to a log that is
# shown only if the install fails.
set -euo pipefail
missing=()
for p in "$@"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed' || missing+=("$p")
done
if ((${#missing[@]})); then
  log=$(mktemp /tmp/quillmap-apt.XXXXXX.log)
  echo "Installing ${missing[*]} (about a minute on a fresh machine; log: $log)"
  sudo=""
  [ "$(id -u)" -eq 0 ] || sudo="sudo"
  if ! { $sudo apt-get update -qq &&
         DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends "${missing[@]}"; } \
       >"$log" 2>&1; then
    cat "$log" >&2
    echo "Installing ${missing[*]} failed (log above)" >&2
    exit 1
  fi
fi
