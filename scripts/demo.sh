#!/usr/bin/env bash
# Draws a NIDS product, the sample or the file given, and says where the picture is.
#
#   scripts/demo.sh [FILE]
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
if [[ $# -gt 1 ]]; then
  echo "usage: scripts/demo.sh [FILE]" >&2
  exit 2
fi
file=$(realpath -- "${1:-$root/data/sample.nids}")
if [[ ! -r $file ]]; then
  echo "demo: cannot read $file" >&2
  exit 1
fi

cd "$root"
scripts/setup.sh
mkdir -p build/demo
{ cmake --preset release && ninja -C build/release scopeview; } >build/demo/build.log 2>&1 || {
  cat build/demo/build.log >&2
  exit 1
}

# One picture a product, named after it.
name=$(basename "$file" .nids | tr -c 'A-Za-z0-9_\n-' _ | cut -c1-40)
picture=build/demo/$name.png
rm -f "$picture"
build/release/src/scopeview -in nids "$file" -df build/release/etc -de raster -ge 960x768 -ou "png:$picture"
if [[ ! -s $picture ]]; then
  echo "demo: $file gave no picture" >&2
  exit 1
fi
echo "The picture of $file is $root/$picture"
echo "For a window with zoom (Alt-z), pan (Alt-p) and a loop, on a display:"
echo "  $root/build/release/src/scopeview -in nids $file -df $root/build/release/etc"
