#!/usr/bin/env bash
# Builds the Debian package and says where it is. What it needs is installed first.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh
cmake --preset package >/dev/null
cmake --build build/package
(cd build/package && rm -f scopeview_*.deb && cpack -G DEB >cpack.log 2>&1) || {
  cat build/package/cpack.log >&2
  exit 1
}
deb=$(ls build/package/scopeview_*.deb)
echo "package: $deb ($(stat -c %s "$deb") bytes)"
