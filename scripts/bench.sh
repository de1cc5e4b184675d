#!/usr/bin/env bash
# Measures whole runs of the program against their floors, and prints one table: medians of wall time and the
# largest memory of each, with ratios. Builds release first.
#
#   scripts/bench.sh [RUNS [PART...]]   RUNS of each command, at least 7 (default 9); of all parts, or of pages,
#                                       pictures, volumes, mosaics, summaries, maps, loop
#   scripts/bench.sh --parts            the Google Benchmark programs of bench/ instead
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/setup.sh
mkdir -p build/bench
{ cmake --preset release && ninja -C build/release; } >build/bench/build.log 2>&1 || {
  cat build/bench/build.log >&2
  exit 1
}
# What draws in a window does so on a display of its own.
exec 3< <(exec Xvfb -displayfd 1 -screen 0 1280x1024x24 -nolisten tcp -noreset 2>/dev/null)
xvfb=$!
trap 'kill "$xvfb" 2>/dev/null || true' EXIT
read -r -t 20 number <&3 || number=
[[ -z $number ]] && unset DISPLAY || export DISPLAY=":$number"

if [[ ${1:-} == --parts ]]; then
  for program in build/release/bench/*Bench; do
    "$program" --benchmark_min_time=0.2
  done
  exit 0
fi
python3 tools/make_bench_products.py build/bench
python3 scripts/bench.py "${1:-9}" build/release build/bench "${@:2}"
