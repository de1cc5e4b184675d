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
page=build/demo/$name.ps
picture=build/demo/$name.png
rm -f "$page" "$picture"
build/release/src/scopeview -in nids "$file" -df build/release/etc -de "ps,$page,color"
if [[ ! -s $page ]]; then
  echo "demo: $file gave no picture" >&2
  exit 1
fi
gs -q -dSAFER -dBATCH -dNOPAUSE -sDEVICE=png16m -r100 -dTextAlphaBits=4 -dGraphicsAlphaBits=2 \
  -sOutputFile="$picture" "$page"
echo "The picture of $file is $root/$picture (as PostScript: $root/$page)"
