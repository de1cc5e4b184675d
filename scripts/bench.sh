#!/usr/bin/env bash
# Measures whole runs of the program against their floors, and prints one table: medians of wall time and the
# largest memory of each, with ratios. Builds release first.
#
#   scripts/bench.sh [RUNS]    RUNS of each command, at least 7 (default 9)
#   scripts/bench.sh --parts   the Google Benchmark programs of bench/ instead
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/setup.sh
mkdir -p build/bench
{ cmake --preset release && ninja -C build/release; } >build/bench/build.log 2>&1 || {
  cat build/bench/build.log >&2
  exit 1
}
if [[ ${1:-} == --parts ]]; then
  for program in build/release/bench/*Bench; do
    "$program" --benchmark_min_time=0.2
  done
  exit 0
fi
python3 tools/make_bench_products.py build/bench
python3 scripts/bench.py "${1:-9}" build/release build/bench
